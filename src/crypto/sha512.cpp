// SHA-512 and SHA-384 (FIPS 180-4): the portable block function and the contexts. The 80
// rounds are written out with the eight words rotating through the register names; the
// message schedule lives in a 16-word ring. Processors with AVX and BMI2 use sha512_avx.cpp.
#include <bit>

#include "crypto/cpu_dispatch.h"
#include "crypto/digest_constants.h"
#include "crypto/digest_engine.h"
#include "crypto/sha512_round.h"
#include "ztcommon/crypto.h"

namespace ZtCommonNS {

namespace crypto {

#define SHA512_W(t)                                                                                \
    ((t) < 16 ? w[(t)&15]                                                                          \
              : (w[(t)&15] += (std::rotr(w[((t) + 14) & 15], 19) ^                                 \
                               std::rotr(w[((t) + 14) & 15], 61) ^ (w[((t) + 14) & 15] >> 6)) +    \
                              w[((t) + 9) & 15] +                                                  \
                              (std::rotr(w[((t) + 1) & 15], 1) ^ std::rotr(w[((t) + 1) & 15], 8) ^ \
                               (w[((t) + 1) & 15] >> 7))))

#define SHA512_WK(t) (kSha512Rounds[t] + SHA512_W(t))

void sha512Portable(uint64_t* state, const unsigned char* data, size_t blocks) {
    uint64_t a = state[0], b = state[1], c = state[2], d = state[3];
    uint64_t e = state[4], f = state[5], g = state[6], h = state[7];
    for (; blocks != 0; --blocks, data += 128) {
        uint64_t w[16];
        for (size_t i = 0; i < 16; ++i)
            w[i] = loadBe64(data + 8 * i);
        uint64_t bc = b ^ c;
        ZT_SHA512_EIGHT_ROUNDS(0, SHA512_WK)
        ZT_SHA512_EIGHT_ROUNDS(8, SHA512_WK)
        ZT_SHA512_EIGHT_ROUNDS(16, SHA512_WK)
        ZT_SHA512_EIGHT_ROUNDS(24, SHA512_WK)
        ZT_SHA512_EIGHT_ROUNDS(32, SHA512_WK)
        ZT_SHA512_EIGHT_ROUNDS(40, SHA512_WK)
        ZT_SHA512_EIGHT_ROUNDS(48, SHA512_WK)
        ZT_SHA512_EIGHT_ROUNDS(56, SHA512_WK)
        ZT_SHA512_EIGHT_ROUNDS(64, SHA512_WK)
        ZT_SHA512_EIGHT_ROUNDS(72, SHA512_WK)
        addToState(state, a, b, c, d, e, f, g, h);
    }
}

#undef SHA512_W
#undef SHA512_WK

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
        for (size_t i = 0; i < 8; ++i)
            crypto::storeBe64(full + 8 * i, state_[i]);
        std::memcpy(digest, full, static_cast<size_t>(digestLength_));
    }
    restart();
}

SHA384_CTX::SHA384_CTX() : SHA512_CTX(crypto::kSha384Initial, DIGEST_LENGTH) {}

} // namespace ZtCommonNS
