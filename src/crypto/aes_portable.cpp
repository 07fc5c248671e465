// Portable AES: four 1 KiB round tables per direction, one per row of the state (each a byte
// rotation of the first, computed at compile time), and the S-boxes for the last round. Used where
// the processor has no AES instructions, and by the tests to check the hardware path against.

#include "crypto/aes_tables.h"
#include "crypto/byte_order.h"
#include "crypto/cpu_dispatch.h"

namespace ZtCommonNS::crypto {

namespace {

struct Block {
    uint32_t c[4]; // columns, first row in the low byte
};

inline Block load(const unsigned char* p) {
    return {{loadLe32(p), loadLe32(p + 4), loadLe32(p + 8), loadLe32(p + 12)}};
}
inline void store(unsigned char* p, const Block& b) {
    for (size_t i = 0; i < 4; ++i)
        storeLe32(p + 4 * i, b.c[i]);
}
inline Block operator^(const Block& a, const Block& b) {
    return {{a.c[0] ^ b.c[0], a.c[1] ^ b.c[1], a.c[2] ^ b.c[2], a.c[3] ^ b.c[3]}};
}

inline uint32_t byteOf(uint32_t w, int row) {
    return (w >> (8 * row)) & 0xFF;
}

// One forward round for output column j: row r comes from column j + r (ShiftRows).
inline uint32_t encColumn(const uint32_t* s, size_t j, uint32_t key) {
    return kEncTables[0][byteOf(s[j], 0)] ^ kEncTables[1][byteOf(s[(j + 1) & 3], 1)] ^
           kEncTables[2][byteOf(s[(j + 2) & 3], 2)] ^ kEncTables[3][byteOf(s[(j + 3) & 3], 3)] ^
           key;
}
inline uint32_t encLastColumn(const uint32_t* s, size_t j, uint32_t key) {
    return column(kSbox[byteOf(s[j], 0)], kSbox[byteOf(s[(j + 1) & 3], 1)],
                  kSbox[byteOf(s[(j + 2) & 3], 2)], kSbox[byteOf(s[(j + 3) & 3], 3)]) ^
           key;
}
// One inverse round: row r comes from column j - r (InvShiftRows).
inline uint32_t decColumn(const uint32_t* s, size_t j, uint32_t key) {
    return kDecTables[0][byteOf(s[j], 0)] ^ kDecTables[1][byteOf(s[(j + 3) & 3], 1)] ^
           kDecTables[2][byteOf(s[(j + 2) & 3], 2)] ^ kDecTables[3][byteOf(s[(j + 1) & 3], 3)] ^
           key;
}
inline uint32_t decLastColumn(const uint32_t* s, size_t j, uint32_t key) {
    return column(kInvSbox[byteOf(s[j], 0)], kInvSbox[byteOf(s[(j + 3) & 3], 1)],
                  kInvSbox[byteOf(s[(j + 2) & 3], 2)], kInvSbox[byteOf(s[(j + 1) & 3], 3)]) ^
           key;
}

template <bool Decrypt> Block cipher(const AesKeys& k, Block in) {
    const unsigned char* rk = k.bytes;
    uint32_t s[4], t[4];
    for (size_t j = 0; j < 4; ++j)
        s[j] = in.c[j] ^ loadLe32(rk + 4 * j);
    for (int r = 1; r < k.rounds; ++r) {
        rk += 16;
        for (size_t j = 0; j < 4; ++j)
            t[j] = Decrypt ? decColumn(s, j, loadLe32(rk + 4 * j))
                           : encColumn(s, j, loadLe32(rk + 4 * j));
        for (size_t j = 0; j < 4; ++j)
            s[j] = t[j];
    }
    rk += 16;
    Block out;
    for (size_t j = 0; j < 4; ++j)
        out.c[j] = Decrypt ? decLastColumn(s, j, loadLe32(rk + 4 * j))
                           : encLastColumn(s, j, loadLe32(rk + 4 * j));
    return out;
}

void ecbEncrypt(const AesKeys& k, const unsigned char* in, unsigned char* out, size_t n) {
    for (size_t i = 0; i < n; ++i)
        store(out + 16 * i, cipher<false>(k, load(in + 16 * i)));
}

void ecbDecrypt(const AesKeys& k, const unsigned char* in, unsigned char* out, size_t n) {
    for (size_t i = 0; i < n; ++i)
        store(out + 16 * i, cipher<true>(k, load(in + 16 * i)));
}

void cbcEncrypt(const AesKeys& k, const unsigned char* iv, const unsigned char* in,
                unsigned char* out, size_t n) {
    Block chain = load(iv);
    for (size_t i = 0; i < n; ++i) {
        chain = cipher<false>(k, load(in + 16 * i) ^ chain);
        store(out + 16 * i, chain);
    }
}

void cbcDecrypt(const AesKeys& k, const unsigned char* iv, const unsigned char* in,
                unsigned char* out, size_t n) {
    Block chain = load(iv);
    for (size_t i = 0; i < n; ++i) {
        const Block c = load(in + 16 * i); // read before the write: in and out may coincide
        store(out + 16 * i, cipher<true>(k, c) ^ chain);
        chain = c;
    }
}

void cfbEncrypt(const AesKeys& k, const unsigned char* iv, const unsigned char* in,
                unsigned char* out, size_t n) {
    Block chain = load(iv);
    for (size_t i = 0; i < n; ++i) {
        chain = cipher<false>(k, chain) ^ load(in + 16 * i);
        store(out + 16 * i, chain);
    }
}

void cfbDecrypt(const AesKeys& k, const unsigned char* iv, const unsigned char* in,
                unsigned char* out, size_t n) {
    Block chain = load(iv);
    for (size_t i = 0; i < n; ++i) {
        const Block c = load(in + 16 * i);
        store(out + 16 * i, cipher<false>(k, chain) ^ c);
        chain = c;
    }
}

} // namespace

const AesKernels aesPortableKernels = {&ecbEncrypt, &ecbDecrypt, &cbcEncrypt,
                                       &cbcDecrypt, &cfbEncrypt, &cfbDecrypt};

} // namespace ZtCommonNS::crypto
