// SHA-1 with the x86 SHA extensions. SHA1RNDS4 does four rounds on A..D held in one register
// (A in the top lane); SHA1NEXTE derives the next E from the A of four rounds before and adds
// it to the schedule words; SHA1MSG1 and SHA1MSG2 compute four schedule words at a time.
#include <immintrin.h>

#include "crypto/cpu_dispatch.h"

namespace ZtCommonNS::crypto {

namespace {

#define ZT_SHANI_TARGET __attribute__((target("sha,sse2,ssse3,sse4.1")))

// Four schedule words from the sixteen before them (m0 oldest, m3 newest).
ZT_SHANI_TARGET __attribute__((always_inline)) inline __m128i nextWords(__m128i m0, __m128i m1,
                                                                        __m128i m2, __m128i m3) {
    return _mm_sha1msg2_epu32(_mm_xor_si128(_mm_sha1msg1_epu32(m0, m1), m2), m3);
}

// Rounds 4q..4q+3 with function and constant `Func` (0 to 3). `abcd` enters as the state
// before the rounds; `prevAbcd` receives it, for the E of the next group.
template <int Func>
ZT_SHANI_TARGET __attribute__((always_inline)) inline void
fourRounds(__m128i& abcd, __m128i& prevAbcd, __m128i msg) {
    const __m128i e = _mm_sha1nexte_epu32(prevAbcd, msg);
    prevAbcd = abcd;
    abcd = _mm_sha1rnds4_epu32(abcd, e, Func);
}

} // namespace

ZT_SHANI_TARGET void sha1ShaNi(uint32_t* state, const unsigned char* data, size_t blocks) {
    // Reverses the 16 bytes: big-endian words, first word in the top lane.
    const __m128i byteSwap = _mm_set_epi64x(0x0001020304050607LL, 0x08090a0b0c0d0e0fLL);
    __m128i abcd =
        _mm_shuffle_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(state)), 0x1B);
    __m128i e0 = _mm_set_epi32(static_cast<int>(state[4]), 0, 0, 0);

    for (; blocks != 0; --blocks, data += 64) {
        const __m128i abcdSaved = abcd, eSaved = e0;
        const auto* p = reinterpret_cast<const __m128i*>(data);
        __m128i m0 = _mm_shuffle_epi8(_mm_loadu_si128(p), byteSwap);
        __m128i m1 = _mm_shuffle_epi8(_mm_loadu_si128(p + 1), byteSwap);
        __m128i m2 = _mm_shuffle_epi8(_mm_loadu_si128(p + 2), byteSwap);
        __m128i m3 = _mm_shuffle_epi8(_mm_loadu_si128(p + 3), byteSwap);

        // Rounds 0-3 take E straight from the state; every later group derives it.
        __m128i prev = abcd;
        abcd = _mm_sha1rnds4_epu32(abcd, _mm_add_epi32(e0, m0), 0);
        fourRounds<0>(abcd, prev, m1);
        fourRounds<0>(abcd, prev, m2);
        fourRounds<0>(abcd, prev, m3);
        m0 = nextWords(m0, m1, m2, m3); // rounds 16-19
        fourRounds<0>(abcd, prev, m0);
        m1 = nextWords(m1, m2, m3, m0);
        fourRounds<1>(abcd, prev, m1);
        m2 = nextWords(m2, m3, m0, m1);
        fourRounds<1>(abcd, prev, m2);
        m3 = nextWords(m3, m0, m1, m2);
        fourRounds<1>(abcd, prev, m3);
        m0 = nextWords(m0, m1, m2, m3);
        fourRounds<1>(abcd, prev, m0);
        m1 = nextWords(m1, m2, m3, m0); // rounds 36-39
        fourRounds<1>(abcd, prev, m1);
        m2 = nextWords(m2, m3, m0, m1);
        fourRounds<2>(abcd, prev, m2);
        m3 = nextWords(m3, m0, m1, m2);
        fourRounds<2>(abcd, prev, m3);
        m0 = nextWords(m0, m1, m2, m3);
        fourRounds<2>(abcd, prev, m0);
        m1 = nextWords(m1, m2, m3, m0);
        fourRounds<2>(abcd, prev, m1);
        m2 = nextWords(m2, m3, m0, m1); // rounds 56-59
        fourRounds<2>(abcd, prev, m2);
        m3 = nextWords(m3, m0, m1, m2);
        fourRounds<3>(abcd, prev, m3);
        m0 = nextWords(m0, m1, m2, m3);
        fourRounds<3>(abcd, prev, m0);
        m1 = nextWords(m1, m2, m3, m0);
        fourRounds<3>(abcd, prev, m1);
        m2 = nextWords(m2, m3, m0, m1);
        fourRounds<3>(abcd, prev, m2);
        m3 = nextWords(m3, m0, m1, m2); // rounds 76-79
        fourRounds<3>(abcd, prev, m3);

        e0 = _mm_sha1nexte_epu32(prev, eSaved);
        abcd = _mm_add_epi32(abcd, abcdSaved);
    }

    _mm_storeu_si128(reinterpret_cast<__m128i*>(state), _mm_shuffle_epi32(abcd, 0x1B));
    state[4] = static_cast<uint32_t>(_mm_extract_epi32(e0, 3));
}

} // namespace ZtCommonNS::crypto
