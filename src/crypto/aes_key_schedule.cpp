// AES key expansion, shared by the portable and the AES-NI kernels (it runs once per key, so
// it needs no hardware path of its own).
#include "crypto/aes_key_schedule.h"

#include <bit>

#include "crypto/aes_tables.h"
#include "crypto/byte_order.h"

namespace ZtCommonNS::crypto {

namespace {
uint32_t subWord(uint32_t w) {
    return column(kSbox[w & 0xFF], kSbox[(w >> 8) & 0xFF], kSbox[(w >> 16) & 0xFF], kSbox[w >> 24]);
}
} // namespace

void expandEncryptionKeys(const unsigned char* key, int keyLength, AesKeys& keys) {
    const size_t nk = static_cast<size_t>(keyLength) / 4;
    keys.rounds = static_cast<int>(nk) + 6;
    const size_t total = 4 * static_cast<size_t>(keys.rounds + 1);
    uint32_t w[60];
    for (size_t i = 0; i < nk; ++i)
        w[i] = loadLe32(key + 4 * i);
    uint8_t rcon = 1;
    for (size_t i = nk; i < total; ++i) {
        uint32_t t = w[i - 1];
        if (i % nk == 0) {
            // RotWord moves the first byte to the end: in a little-endian word, a right
            // rotation by 8. The round constant goes into the first byte.
            t = subWord(std::rotr(t, 8)) ^ rcon;
            rcon = gfMul(rcon, 2);
        } else if (nk > 6 && i % nk == 4) {
            t = subWord(t);
        }
        w[i] = w[i - nk] ^ t;
    }
    for (size_t i = 0; i < total; ++i)
        storeLe32(keys.bytes + 4 * i, w[i]);
}

void makeDecryptionKeys(const AesKeys& encryption, AesKeys& decryption) {
    const size_t rounds = static_cast<size_t>(encryption.rounds);
    decryption.rounds = encryption.rounds;
    for (size_t r = 0; r <= rounds; ++r) {
        const unsigned char* from = encryption.bytes + 16 * (rounds - r);
        unsigned char* to = decryption.bytes + 16 * r;
        for (size_t c = 0; c < 4; ++c) {
            uint32_t w = loadLe32(from + 4 * c);
            if (r != 0 && r != rounds)
                w = invMixColumn(w);
            storeLe32(to + 4 * c, w);
        }
    }
}

} // namespace ZtCommonNS::crypto
