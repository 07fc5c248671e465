// SHA-256 with the x86 SHA extensions. SHA256RNDS2 does two rounds on the state held as the
// register pair ABEF / CDGH; SHA256MSG1 and SHA256MSG2 compute four schedule words at a time.
#include <immintrin.h>

#include "crypto/cpu_dispatch.h"
#include "crypto/digest_constants.h"

namespace ZtCommonNS::crypto {

namespace {

#define ZT_SHANI_TARGET __attribute__((target("sha,sse2,ssse3,sse4.1")))

// Four rounds with schedule words `msg` (already byte-swapped).
ZT_SHANI_TARGET __attribute__((always_inline)) inline void fourRounds(__m128i& abef, __m128i& cdgh,
                                                                      __m128i msg, size_t quad) {
    __m128i wk = _mm_add_epi32(
        msg, _mm_load_si128(reinterpret_cast<const __m128i*>(kSha256Rounds + 4 * quad)));
    cdgh = _mm_sha256rnds2_epu32(cdgh, abef, wk);
    wk = _mm_shuffle_epi32(wk, 0x0E);
    abef = _mm_sha256rnds2_epu32(abef, cdgh, wk);
}

// The next four schedule words from the sixteen before them (m0 oldest, m3 newest).
ZT_SHANI_TARGET __attribute__((always_inline)) inline __m128i nextWords(__m128i m0, __m128i m1,
                                                                        __m128i m2, __m128i m3) {
    __m128i x = _mm_sha256msg1_epu32(m0, m1);
    x = _mm_add_epi32(x, _mm_alignr_epi8(m3, m2, 4));
    return _mm_sha256msg2_epu32(x, m3);
}

} // namespace

ZT_SHANI_TARGET void sha256ShaNi(uint32_t* state, const unsigned char* data, size_t blocks) {
    const __m128i byteSwap = _mm_set_epi64x(0x0c0d0e0f08090a0bLL, 0x0405060700010203LL);

    // Rearrange A..H into the ABEF / CDGH pair the instructions use.
    __m128i abcd = _mm_loadu_si128(reinterpret_cast<const __m128i*>(state));
    __m128i efgh = _mm_loadu_si128(reinterpret_cast<const __m128i*>(state + 4));
    abcd = _mm_shuffle_epi32(abcd, 0xB1);             // CDAB
    efgh = _mm_shuffle_epi32(efgh, 0x1B);             // HGFE
    __m128i abef = _mm_alignr_epi8(abcd, efgh, 8);    // ABEF
    __m128i cdgh = _mm_blend_epi16(efgh, abcd, 0xF0); // CDGH

    for (; blocks != 0; --blocks, data += 64) {
        const __m128i abefSaved = abef, cdghSaved = cdgh;
        const auto* p = reinterpret_cast<const __m128i*>(data);
        __m128i m0 = _mm_shuffle_epi8(_mm_loadu_si128(p), byteSwap);
        __m128i m1 = _mm_shuffle_epi8(_mm_loadu_si128(p + 1), byteSwap);
        __m128i m2 = _mm_shuffle_epi8(_mm_loadu_si128(p + 2), byteSwap);
        __m128i m3 = _mm_shuffle_epi8(_mm_loadu_si128(p + 3), byteSwap);
        fourRounds(abef, cdgh, m0, 0);
        fourRounds(abef, cdgh, m1, 1);
        fourRounds(abef, cdgh, m2, 2);
        fourRounds(abef, cdgh, m3, 3);
        for (size_t quad = 4; quad < 16; quad += 4) {
            m0 = nextWords(m0, m1, m2, m3);
            fourRounds(abef, cdgh, m0, quad);
            m1 = nextWords(m1, m2, m3, m0);
            fourRounds(abef, cdgh, m1, quad + 1);
            m2 = nextWords(m2, m3, m0, m1);
            fourRounds(abef, cdgh, m2, quad + 2);
            m3 = nextWords(m3, m0, m1, m2);
            fourRounds(abef, cdgh, m3, quad + 3);
        }
        abef = _mm_add_epi32(abef, abefSaved);
        cdgh = _mm_add_epi32(cdgh, cdghSaved);
    }

    // Back from ABEF / CDGH to A..H.
    __m128i feba = _mm_shuffle_epi32(abef, 0x1B);
    __m128i dchg = _mm_shuffle_epi32(cdgh, 0xB1);
    __m128i outAbcd = _mm_blend_epi16(feba, dchg, 0xF0);
    __m128i outEfgh = _mm_alignr_epi8(dchg, feba, 8);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(state), outAbcd);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(state + 4), outEfgh);
}

} // namespace ZtCommonNS::crypto
