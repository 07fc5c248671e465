// MD5 (RFC 1321). The 64 steps are written out so that the four state words rotate through
// the register names and never move; each round function is arranged so that only one or two
// operations wait for the word produced by the step before, which sets the speed of MD5.
#include <bit>

#include "crypto/cpu_dispatch.h"
#include "crypto/digest_constants.h"
#include "crypto/digest_engine.h"
#include "ztcommon/crypto.h"

namespace ZtCommonNS {

namespace crypto {

namespace {

// Round 1, F(b,c,d) = (b & c) | (~b & d), computed as d ^ (b & (c ^ d)).
#define MD5_F(a, b, c, d, k, s, i)                                                                 \
    a += x[k] + kMd5Sine[i];                                                                       \
    a += d ^ (b & (c ^ d));                                                                        \
    a = std::rotl(a, s) + b;

// Round 2, G(b,c,d) = (b & d) | (c & ~d): the two terms share no bit, so they are added
// separately and only b & d waits for b.
#define MD5_G(a, b, c, d, k, s, i)                                                                 \
    a += x[k] + kMd5Sine[i];                                                                       \
    a += c & ~d;                                                                                   \
    a += b & d;                                                                                    \
    a = std::rotl(a, s) + b;

// Round 3, H(b,c,d) = b ^ c ^ d.
#define MD5_H(a, b, c, d, k, s, i)                                                                 \
    a += x[k] + kMd5Sine[i];                                                                       \
    a += b ^ (c ^ d);                                                                              \
    a = std::rotl(a, s) + b;

// Round 4, I(b,c,d) = c ^ (b | ~d).
#define MD5_I(a, b, c, d, k, s, i)                                                                 \
    a += x[k] + kMd5Sine[i];                                                                       \
    a += c ^ (b | ~d);                                                                             \
    a = std::rotl(a, s) + b;

} // namespace

void md5Blocks(uint32_t* state, const unsigned char* data, size_t blocks) {
    uint32_t a = state[0], b = state[1], c = state[2], d = state[3];
    for (; blocks != 0; --blocks, data += 64) {
        uint32_t x[16];
        for (size_t i = 0; i < 16; ++i)
            x[i] = loadLe32(data + 4 * i);
        const uint32_t a0 = a, b0 = b, c0 = c, d0 = d;

        MD5_F(a, b, c, d, 0, 7, 0) MD5_F(d, a, b, c, 1, 12, 1);
        MD5_F(c, d, a, b, 2, 17, 2) MD5_F(b, c, d, a, 3, 22, 3);
        MD5_F(a, b, c, d, 4, 7, 4) MD5_F(d, a, b, c, 5, 12, 5);
        MD5_F(c, d, a, b, 6, 17, 6) MD5_F(b, c, d, a, 7, 22, 7);
        MD5_F(a, b, c, d, 8, 7, 8) MD5_F(d, a, b, c, 9, 12, 9);
        MD5_F(c, d, a, b, 10, 17, 10) MD5_F(b, c, d, a, 11, 22, 11);
        MD5_F(a, b, c, d, 12, 7, 12) MD5_F(d, a, b, c, 13, 12, 13);
        MD5_F(c, d, a, b, 14, 17, 14) MD5_F(b, c, d, a, 15, 22, 15);

        MD5_G(a, b, c, d, 1, 5, 16) MD5_G(d, a, b, c, 6, 9, 17);
        MD5_G(c, d, a, b, 11, 14, 18) MD5_G(b, c, d, a, 0, 20, 19);
        MD5_G(a, b, c, d, 5, 5, 20) MD5_G(d, a, b, c, 10, 9, 21);
        MD5_G(c, d, a, b, 15, 14, 22) MD5_G(b, c, d, a, 4, 20, 23);
        MD5_G(a, b, c, d, 9, 5, 24) MD5_G(d, a, b, c, 14, 9, 25);
        MD5_G(c, d, a, b, 3, 14, 26) MD5_G(b, c, d, a, 8, 20, 27);
        MD5_G(a, b, c, d, 13, 5, 28) MD5_G(d, a, b, c, 2, 9, 29);
        MD5_G(c, d, a, b, 7, 14, 30) MD5_G(b, c, d, a, 12, 20, 31);

        MD5_H(a, b, c, d, 5, 4, 32) MD5_H(d, a, b, c, 8, 11, 33);
        MD5_H(c, d, a, b, 11, 16, 34) MD5_H(b, c, d, a, 14, 23, 35);
        MD5_H(a, b, c, d, 1, 4, 36) MD5_H(d, a, b, c, 4, 11, 37);
        MD5_H(c, d, a, b, 7, 16, 38) MD5_H(b, c, d, a, 10, 23, 39);
        MD5_H(a, b, c, d, 13, 4, 40) MD5_H(d, a, b, c, 0, 11, 41);
        MD5_H(c, d, a, b, 3, 16, 42) MD5_H(b, c, d, a, 6, 23, 43);
        MD5_H(a, b, c, d, 9, 4, 44) MD5_H(d, a, b, c, 12, 11, 45);
        MD5_H(c, d, a, b, 15, 16, 46) MD5_H(b, c, d, a, 2, 23, 47);

        MD5_I(a, b, c, d, 0, 6, 48) MD5_I(d, a, b, c, 7, 10, 49);
        MD5_I(c, d, a, b, 14, 15, 50) MD5_I(b, c, d, a, 5, 21, 51);
        MD5_I(a, b, c, d, 12, 6, 52) MD5_I(d, a, b, c, 3, 10, 53);
        MD5_I(c, d, a, b, 10, 15, 54) MD5_I(b, c, d, a, 1, 21, 55);
        MD5_I(a, b, c, d, 8, 6, 56) MD5_I(d, a, b, c, 15, 10, 57);
        MD5_I(c, d, a, b, 6, 15, 58) MD5_I(b, c, d, a, 13, 21, 59);
        MD5_I(a, b, c, d, 4, 6, 60) MD5_I(d, a, b, c, 11, 10, 61);
        MD5_I(c, d, a, b, 2, 15, 62) MD5_I(b, c, d, a, 9, 21, 63);

        a += a0;
        b += b0;
        c += c0;
        d += d0;
    }
    state[0] = a;
    state[1] = b;
    state[2] = c;
    state[3] = d;
}

#undef MD5_F
#undef MD5_G
#undef MD5_H
#undef MD5_I

} // namespace crypto

namespace {
constexpr uint32_t kMd5Initial[4] = {0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476};
} // namespace

MD5_CTX::MD5_CTX() : state_{}, length_(0), buffer_{} {
    std::memcpy(state_, kMd5Initial, sizeof state_);
}

void MD5_CTX::Update(const unsigned char* data, uint64_t length) {
    if (data == nullptr)
        return;
    crypto::digestAbsorb<64>(state_, buffer_, length_, data, length, &crypto::md5Blocks);
}

void MD5_CTX::Final(unsigned char* digest) {
    crypto::digestFinish<64, 8, false>(state_, buffer_, length_, &crypto::md5Blocks);
    if (digest != nullptr)
        for (size_t i = 0; i < 4; ++i)
            crypto::storeLe32(digest + 4 * i, state_[i]);
    *this = MD5_CTX();
}

} // namespace ZtCommonNS
