// SHA-512 with the message schedule in vector registers. The rounds are scalar (there is no
// SHA-512 instruction to use), and they keep the integer units busy; the schedule, two words
// at a time in 128-bit registers, runs on the vector units beside them. To give the processor
// both kinds of work at once, the schedule of the next block is computed in slices between
// the groups of eight rounds of the current one. BMI2 gives the rounds rorx and andn.
#include <immintrin.h>

#include "crypto/cpu_dispatch.h"
#include "crypto/digest_constants.h"
#include "crypto/digest_engine.h"
#include "crypto/sha512_round.h"

namespace ZtCommonNS::crypto {

namespace {

#define ZT_SHA512_TARGET __attribute__((target("avx,bmi,bmi2")))
#define ZT_SHA512_INLINE ZT_SHA512_TARGET __attribute__((always_inline)) inline

ZT_SHA512_INLINE __m128i rotr(__m128i x, int n) {
    return _mm_or_si128(_mm_srli_epi64(x, n), _mm_slli_epi64(x, 64 - n));
}

// The schedule words 2p and 2p + 1 of `block`, stored in w (plain) and wk (plus K). Words 16
// and up come from those stored before: w[t-2], w[t-7], w[t-15], w[t-16].
ZT_SHA512_INLINE void schedulePair(uint64_t* w, uint64_t* wk, const unsigned char* block,
                                   size_t p) {
    __m128i v;
    if (p < 8) {
        const __m128i swap = _mm_set_epi64x(0x08090a0b0c0d0e0fLL, 0x0001020304050607LL);
        v = _mm_shuffle_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(block) + p), swap);
    } else {
        const size_t t = 2 * p;
        const __m128i w2 = _mm_load_si128(reinterpret_cast<const __m128i*>(w + t - 2));
        const __m128i w7 = _mm_loadu_si128(reinterpret_cast<const __m128i*>(w + t - 7));
        const __m128i w15 = _mm_loadu_si128(reinterpret_cast<const __m128i*>(w + t - 15));
        const __m128i w16 = _mm_load_si128(reinterpret_cast<const __m128i*>(w + t - 16));
        const __m128i s1 =
            _mm_xor_si128(_mm_xor_si128(rotr(w2, 19), rotr(w2, 61)), _mm_srli_epi64(w2, 6));
        const __m128i s0 =
            _mm_xor_si128(_mm_xor_si128(rotr(w15, 1), rotr(w15, 8)), _mm_srli_epi64(w15, 7));
        v = _mm_add_epi64(_mm_add_epi64(s1, w7), _mm_add_epi64(s0, w16));
    }
    _mm_store_si128(reinterpret_cast<__m128i*>(w + 2 * p), v);
    _mm_store_si128(
        reinterpret_cast<__m128i*>(wk + 2 * p),
        _mm_add_epi64(v, _mm_load_si128(reinterpret_cast<const __m128i*>(kSha512Rounds + 2 * p))));
}

#define ZT_SHA512_CURRENT(t) current[t]

// Rounds 8q..8q+7 of the current block, then a tenth of the next block's schedule.
#define ZT_SHA512_GROUP(q)                                                                         \
    ZT_SHA512_EIGHT_ROUNDS(8 * size_t{q}, ZT_SHA512_CURRENT)                                       \
    if (more) {                                                                                    \
        schedulePair(w, next, data + 128, 4 * size_t{q});                                          \
        schedulePair(w, next, data + 128, 4 * size_t{q} + 1);                                      \
        schedulePair(w, next, data + 128, 4 * size_t{q} + 2);                                      \
        schedulePair(w, next, data + 128, 4 * size_t{q} + 3);                                      \
    }

} // namespace

ZT_SHA512_TARGET void sha512Avx(uint64_t* state, const unsigned char* data, size_t blocks) {
    alignas(16) uint64_t w[80];
    alignas(16) uint64_t wk[2][80];
    for (size_t p = 0; p < 40; ++p)
        schedulePair(w, wk[0], data, p);

    uint64_t a = state[0], b = state[1], c = state[2], d = state[3];
    uint64_t e = state[4], f = state[5], g = state[6], h = state[7];
    for (size_t i = 0; i < blocks; ++i, data += 128) {
        const uint64_t* const current = wk[i & 1];
        uint64_t* const next = wk[(i + 1) & 1];
        const bool more = i + 1 < blocks;
        uint64_t bc = b ^ c;
        ZT_SHA512_GROUP(0)
        ZT_SHA512_GROUP(1)
        ZT_SHA512_GROUP(2)
        ZT_SHA512_GROUP(3)
        ZT_SHA512_GROUP(4)
        ZT_SHA512_GROUP(5)
        ZT_SHA512_GROUP(6)
        ZT_SHA512_GROUP(7)
        ZT_SHA512_GROUP(8)
        ZT_SHA512_GROUP(9)
        addToState(state, a, b, c, d, e, f, g, h);
    }
}

#undef ZT_SHA512_GROUP
#undef ZT_SHA512_CURRENT

} // namespace ZtCommonNS::crypto
