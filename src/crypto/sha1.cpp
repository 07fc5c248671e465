// SHA-1 (FIPS 180-4): the portable block function and the context. The 80 steps are written
// out with the five words rotating through the register names; the message schedule lives in a
// 16-word ring.
#include <bit>

#include "crypto/cpu_dispatch.h"
#include "crypto/digest_engine.h"
#include "ztcommon/crypto.h"

namespace ZtCommonNS {

namespace crypto {

namespace {

inline uint32_t choose(uint32_t b, uint32_t c, uint32_t d) {
    return d ^ (b & (c ^ d));
}
inline uint32_t parity(uint32_t b, uint32_t c, uint32_t d) {
    return b ^ c ^ d;
}
// (b & c) | (b & d) | (c & d); the two terms share no bit, so they may be added.
inline uint32_t majority(uint32_t b, uint32_t c, uint32_t d) {
    return (b & c) + (d & (b ^ c));
}

// Word t of the schedule; from t = 16 on it replaces word t - 16 in the ring.
#define SHA1_W(t)                                                                                  \
    ((t) < 16 ? w[(t)&15]                                                                          \
              : (w[(t)&15] = std::rotl(                                                            \
                     w[((t) + 13) & 15] ^ w[((t) + 8) & 15] ^ w[((t) + 2) & 15] ^ w[(t)&15], 1)))

#define SHA1_STEP(f, k, a, b, c, d, e, t)                                                          \
    e += std::rotl(a, 5) + f(b, c, d) + (k) + SHA1_W(t);                                           \
    b = std::rotl(b, 30);

#define SHA1_FIVE(f, k, t)                                                                         \
    SHA1_STEP(f, k, a, b, c, d, e, t)                                                              \
    SHA1_STEP(f, k, e, a, b, c, d, (t) + 1)                                                        \
    SHA1_STEP(f, k, d, e, a, b, c, (t) + 2)                                                        \
    SHA1_STEP(f, k, c, d, e, a, b, (t) + 3)                                                        \
    SHA1_STEP(f, k, b, c, d, e, a, (t) + 4)

} // namespace

void sha1Portable(uint32_t* state, const unsigned char* data, size_t blocks) {
    uint32_t a = state[0], b = state[1], c = state[2], d = state[3], e = state[4];
    for (; blocks != 0; --blocks, data += 64) {
        uint32_t w[16];
        for (size_t i = 0; i < 16; ++i)
            w[i] = loadBe32(data + 4 * i);
        const uint32_t a0 = a, b0 = b, c0 = c, d0 = d, e0 = e;
        SHA1_FIVE(choose, 0x5a827999u, 0)
        SHA1_FIVE(choose, 0x5a827999u, 5)
        SHA1_FIVE(choose, 0x5a827999u, 10)
        SHA1_FIVE(choose, 0x5a827999u, 15)
        SHA1_FIVE(parity, 0x6ed9eba1u, 20)
        SHA1_FIVE(parity, 0x6ed9eba1u, 25)
        SHA1_FIVE(parity, 0x6ed9eba1u, 30)
        SHA1_FIVE(parity, 0x6ed9eba1u, 35)
        SHA1_FIVE(majority, 0x8f1bbcdcu, 40)
        SHA1_FIVE(majority, 0x8f1bbcdcu, 45)
        SHA1_FIVE(majority, 0x8f1bbcdcu, 50)
        SHA1_FIVE(majority, 0x8f1bbcdcu, 55)
        SHA1_FIVE(parity, 0xca62c1d6u, 60)
        SHA1_FIVE(parity, 0xca62c1d6u, 65)
        SHA1_FIVE(parity, 0xca62c1d6u, 70)
        SHA1_FIVE(parity, 0xca62c1d6u, 75)
        a += a0;
        b += b0;
        c += c0;
        d += d0;
        e += e0;
    }
    state[0] = a;
    state[1] = b;
    state[2] = c;
    state[3] = d;
    state[4] = e;
}

#undef SHA1_W
#undef SHA1_STEP
#undef SHA1_FIVE

} // namespace crypto

namespace {
constexpr uint32_t kSha1Initial[5] = {0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476, 0xc3d2e1f0};
} // namespace

SHA1_CTX::SHA1_CTX() : state_{}, length_(0), buffer_{} {
    std::memcpy(state_, kSha1Initial, sizeof state_);
}

int SHA1_CTX::Update(const unsigned char* data, uint32_t length) {
    if (length == 0)
        return SHA1_SUCCESS;
    if (data == nullptr)
        return SHA1_NULL;
    crypto::digestAbsorb<64>(state_, buffer_, length_, data, length, crypto::kernels().sha1);
    return SHA1_SUCCESS;
}

int SHA1_CTX::Final(unsigned char* digest) {
    crypto::digestFinish<64, 8, true>(state_, buffer_, length_, crypto::kernels().sha1);
    if (digest != nullptr)
        for (size_t i = 0; i < 5; ++i)
            crypto::storeBe32(digest + 4 * i, state_[i]);
    *this = SHA1_CTX();
    return digest != nullptr ? SHA1_SUCCESS : SHA1_NULL;
}

} // namespace ZtCommonNS
