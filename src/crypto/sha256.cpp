// SHA-256 (FIPS 180-4): the portable block function and the context. The 64 steps are written
// out with the eight words rotating through the register names; the message schedule lives in
// a 16-word ring.
#include <bit>

#include "crypto/cpu_dispatch.h"
#include "crypto/digest_constants.h"
#include "crypto/digest_engine.h"
#include "ztcommon/crypto.h"

namespace ZtCommonNS {

namespace crypto {

namespace {

#define SHA256_W(t)                                                                                \
    ((t) < 16 ? w[(t)&15]                                                                          \
              : (w[(t)&15] += (std::rotr(w[((t) + 14) & 15], 17) ^                                 \
                               std::rotr(w[((t) + 14) & 15], 19) ^ (w[((t) + 14) & 15] >> 10)) +   \
                              w[((t) + 9) & 15] +                                                  \
                              (std::rotr(w[((t) + 1) & 15], 7) ^                                   \
                               std::rotr(w[((t) + 1) & 15], 18) ^ (w[((t) + 1) & 15] >> 3))))

// h takes T1 + T2 and d takes d + T1; Ch as g ^ (e & (f ^ g)), Maj as a sum of disjoint terms.
#define SHA256_STEP(a, b, c, d, e, f, g, h, t)                                                     \
    {                                                                                              \
        const uint32_t t1 = h + (std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25)) +          \
                            (g ^ (e & (f ^ g))) + kSha256Rounds[t] + SHA256_W(t);                  \
        d += t1;                                                                                   \
        h = t1 + (std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22)) +                         \
            ((a & b) + (c & (a ^ b)));                                                             \
    }

#define SHA256_EIGHT(t)                                                                            \
    SHA256_STEP(a, b, c, d, e, f, g, h, (t))                                                       \
    SHA256_STEP(h, a, b, c, d, e, f, g, (t) + 1)                                                   \
    SHA256_STEP(g, h, a, b, c, d, e, f, (t) + 2)                                                   \
    SHA256_STEP(f, g, h, a, b, c, d, e, (t) + 3)                                                   \
    SHA256_STEP(e, f, g, h, a, b, c, d, (t) + 4)                                                   \
    SHA256_STEP(d, e, f, g, h, a, b, c, (t) + 5)                                                   \
    SHA256_STEP(c, d, e, f, g, h, a, b, (t) + 6)                                                   \
    SHA256_STEP(b, c, d, e, f, g, h, a, (t) + 7)

} // namespace

void sha256Portable(uint32_t* state, const unsigned char* data, size_t blocks) {
    uint32_t a = state[0], b = state[1], c = state[2], d = state[3];
    uint32_t e = state[4], f = state[5], g = state[6], h = state[7];
    for (; blocks != 0; --blocks, data += 64) {
        uint32_t w[16];
        for (size_t i = 0; i < 16; ++i)
            w[i] = loadBe32(data + 4 * i);
        SHA256_EIGHT(0)
        SHA256_EIGHT(8)
        SHA256_EIGHT(16)
        SHA256_EIGHT(24)
        SHA256_EIGHT(32)
        SHA256_EIGHT(40)
        SHA256_EIGHT(48)
        SHA256_EIGHT(56)
        addToState(state, a, b, c, d, e, f, g, h);
    }
}

#undef SHA256_W
#undef SHA256_STEP
#undef SHA256_EIGHT

} // namespace crypto

SHA256_CTX::SHA256_CTX() : state_{}, length_(0), buffer_{} {
    std::memcpy(state_, crypto::kSha256Initial, sizeof state_);
}

void SHA256_CTX::Update(const unsigned char* data, uint64_t length) {
    if (data == nullptr)
        return;
    crypto::digestAbsorb<64>(state_, buffer_, length_, data, length, crypto::kernels().sha256);
}

void SHA256_CTX::Final(unsigned char* digest) {
    crypto::digestFinish<64, 8, true>(state_, buffer_, length_, crypto::kernels().sha256);
    if (digest != nullptr)
        for (size_t i = 0; i < 8; ++i)
            crypto::storeBe32(digest + 4 * i, state_[i]);
    *this = SHA256_CTX();
}

} // namespace ZtCommonNS
