// SHA-512 and SHA-384 (FIPS 180-4). There is no SHA-512 instruction on x86 processors, so the
// scalar rounds are the hot path: the 80 steps are written out with the eight words rotating
// through the register names, and the same body is compiled a second time for processors with
// BMI2, whose three-operand rotate (rorx) and and-not (andn) spare most register copies.
#include <bit>

#include "crypto/cpu_dispatch.h"
#include "crypto/digest_constants.h"
#include "crypto/digest_engine.h"
#include "ztcommon/crypto.h"

namespace ZtCommonNS {

namespace crypto {

namespace {

#define SHA512_W(t)                                                                                \
    ((t) < 16 ? w[(t)&15]                                                                          \
              : (w[(t)&15] += (std::rotr(w[((t) + 14) & 15], 19) ^                                 \
                               std::rotr(w[((t) + 14) & 15], 61) ^ (w[((t) + 14) & 15] >> 6)) +    \
                              w[((t) + 9) & 15] +                                                  \
                              (std::rotr(w[((t) + 1) & 15], 1) ^ std::rotr(w[((t) + 1) & 15], 8) ^ \
                               (w[((t) + 1) & 15] >> 7))))

// Ch(e,f,g) = (e & f) | (~e & g): the terms share no bit and are added into t1 separately, so
// neither waits for the other. Maj(a,b,c) is likewise (a & b) + (c & (a ^ b)).
#define SHA512_STEP(a, b, c, d, e, f, g, h, t)                                                     \
    {                                                                                              \
        h += kSha512Rounds[t] + SHA512_W(t);                                                       \
        h += std::rotr(e, 14) ^ std::rotr(e, 18) ^ std::rotr(e, 41);                               \
        h += (e & f);                                                                              \
        h += (~e & g);                                                                             \
        d += h;                                                                                    \
        h += std::rotr(a, 28) ^ std::rotr(a, 34) ^ std::rotr(a, 39);                               \
        h += (a & b) + (c & (a ^ b));                                                              \
    }

#define SHA512_EIGHT(t)                                                                            \
    SHA512_STEP(a, b, c, d, e, f, g, h, (t))                                                       \
    SHA512_STEP(h, a, b, c, d, e, f, g, (t) + 1)                                                   \
    SHA512_STEP(g, h, a, b, c, d, e, f, (t) + 2)                                                   \
    SHA512_STEP(f, g, h, a, b, c, d, e, (t) + 3)                                                   \
    SHA512_STEP(e, f, g, h, a, b, c, d, (t) + 4)                                                   \
    SHA512_STEP(d, e, f, g, h, a, b, c, (t) + 5)                                                   \
    SHA512_STEP(c, d, e, f, g, h, a, b, (t) + 6)                                                   \
    SHA512_STEP(b, c, d, e, f, g, h, a, (t) + 7)

__attribute__((always_inline)) inline void sha512Body(uint64_t* state, const unsigned char* data,
                                                      size_t blocks) {
    uint64_t a = state[0], b = state[1], c = state[2], d = state[3];
    uint64_t e = state[4], f = state[5], g = state[6], h = state[7];
    for (; blocks != 0; --blocks, data += 128) {
        uint64_t w[16];
        for (int i = 0; i < 16; ++i)
            w[i] = loadBe64(data + 8 * i);
        SHA512_EIGHT(0)
        SHA512_EIGHT(8)
        SHA512_EIGHT(16)
        SHA512_EIGHT(24)
        SHA512_EIGHT(32)
        SHA512_EIGHT(40)
        SHA512_EIGHT(48)
        SHA512_EIGHT(56)
        SHA512_EIGHT(64)
        SHA512_EIGHT(72)
        a = state[0] += a;
        b = state[1] += b;
        c = state[2] += c;
        d = state[3] += d;
        e = state[4] += e;
        f = state[5] += f;
        g = state[6] += g;
        h = state[7] += h;
    }
}

#undef SHA512_W
#undef SHA512_STEP
#undef SHA512_EIGHT

} // namespace

void sha512Portable(uint64_t* state, const unsigned char* data, size_t blocks) {
    sha512Body(state, data, blocks);
}

__attribute__((target("bmi,bmi2"))) void sha512Bmi2(uint64_t* state, const unsigned char* data,
                                                    size_t blocks) {
    sha512Body(state, data, blocks);
}

} // namespace crypto

SHA512_CTX::SHA512_CTX() : SHA512_CTX(crypto::kSha512Initial, DIGEST_LENGTH) {}

SHA512_CTX::SHA512_CTX(const uint64_t* initialState, int digestLength)
    : initial_(initialState), digestLength_(digestLength), state_{}, length_(0), buffer_{} {
    restart();
}

void SHA512_CTX::restart() {
    std::memcpy(state_, initial_, sizeof state_);
    length_ = 0;
    std::memset(buffer_, 0, sizeof buffer_);
}

void SHA512_CTX::Update(const unsigned char* data, uint64_t length) {
    if (data == nullptr)
        return;
    crypto::digestAbsorb<128>(state_, buffer_, length_, data, length, crypto::kernels().sha512);
}

void SHA512_CTX::Final(unsigned char* digest) {
    crypto::digestFinish<128, 16, true>(state_, buffer_, length_, crypto::kernels().sha512);
    if (digest != nullptr) {
        unsigned char full[64];
        for (int i = 0; i < 8; ++i)
            crypto::storeBe64(full + 8 * i, state_[i]);
        std::memcpy(digest, full, static_cast<size_t>(digestLength_));
    }
    restart();
}

SHA384_CTX::SHA384_CTX() : SHA512_CTX(crypto::kSha384Initial, DIGEST_LENGTH) {}

} // namespace ZtCommonNS
