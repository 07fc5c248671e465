// AES with the AES-NI instructions. The round count is a template parameter so that every
// loop is unrolled. Modes that allow it (ECB both ways, CBC and CFB-128 decryption) keep eight
// blocks in flight: AESENC/AESDEC have a latency of several cycles but issue every cycle, so
// independent blocks hide each other's latency. CBC and CFB-128 encryption are serial by
// definition and run one block at a time.
#include <type_traits>

#include <immintrin.h>

#include "crypto/cpu_dispatch.h"

namespace ZtCommonNS::crypto {

namespace {

#define ZT_AESNI_TARGET __attribute__((target("aes,sse2,ssse3,sse4.1")))
#define ZT_AESNI_INLINE ZT_AESNI_TARGET __attribute__((always_inline)) inline

constexpr size_t kLanes = 8;

template <int Rounds> struct Keys {
    __m128i k[Rounds + 1];
    ZT_AESNI_INLINE explicit Keys(const AesKeys& keys) {
        for (int r = 0; r <= Rounds; ++r)
            k[r] = _mm_load_si128(reinterpret_cast<const __m128i*>(keys.bytes) + r);
    }
};

ZT_AESNI_INLINE __m128i loadBlock(const unsigned char* p) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}
ZT_AESNI_INLINE void storeBlock(unsigned char* p, __m128i v) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v);
}

// One block through the cipher (inverse cipher when Decrypt); `last` is the final round key,
// possibly already combined with a value to be added to the result.
template <bool Decrypt, int Rounds>
ZT_AESNI_INLINE __m128i cipherOne(const Keys<Rounds>& k, __m128i x, __m128i last) {
    x = _mm_xor_si128(x, k.k[0]);
#pragma GCC unroll 16
    for (int r = 1; r < Rounds; ++r)
        x = Decrypt ? _mm_aesdec_si128(x, k.k[r]) : _mm_aesenc_si128(x, k.k[r]);
    return Decrypt ? _mm_aesdeclast_si128(x, last) : _mm_aesenclast_si128(x, last);
}

// Eight blocks through the cipher side by side; last[i] is block i's final round key.
template <bool Decrypt, int Rounds>
ZT_AESNI_INLINE void cipherLanes(const Keys<Rounds>& k, __m128i* x, const __m128i* last) {
    for (size_t i = 0; i < kLanes; ++i)
        x[i] = _mm_xor_si128(x[i], k.k[0]);
#pragma GCC unroll 16
    for (int r = 1; r < Rounds; ++r)
#pragma GCC unroll 8
        for (size_t i = 0; i < kLanes; ++i)
            x[i] = Decrypt ? _mm_aesdec_si128(x[i], k.k[r]) : _mm_aesenc_si128(x[i], k.k[r]);
    for (size_t i = 0; i < kLanes; ++i)
        x[i] = Decrypt ? _mm_aesdeclast_si128(x[i], last[i]) : _mm_aesenclast_si128(x[i], last[i]);
}

template <bool Decrypt, int Rounds>
ZT_AESNI_TARGET void ecb(const AesKeys& keys, const unsigned char* in, unsigned char* out,
                         size_t n) {
    const Keys<Rounds> k(keys);
    __m128i last[kLanes];
    for (auto& l : last)
        l = k.k[Rounds];
    for (; n >= kLanes; n -= kLanes, in += 16 * kLanes, out += 16 * kLanes) {
        __m128i x[kLanes];
        for (size_t i = 0; i < kLanes; ++i)
            x[i] = loadBlock(in + 16 * i);
        cipherLanes<Decrypt>(k, x, last);
        for (size_t i = 0; i < kLanes; ++i)
            storeBlock(out + 16 * i, x[i]);
    }
    for (; n != 0; --n, in += 16, out += 16) {
        const __m128i x = loadBlock(in);
        storeBlock(out, cipherOne<Decrypt>(k, x, k.k[Rounds]));
    }
}

template <int Rounds>
ZT_AESNI_TARGET void cbcEncrypt(const AesKeys& keys, const unsigned char* iv,
                                const unsigned char* in, unsigned char* out, size_t n) {
    const Keys<Rounds> k(keys);
    __m128i chain = loadBlock(iv);
    for (; n != 0; --n, in += 16, out += 16) {
        chain = cipherOne<false>(k, _mm_xor_si128(loadBlock(in), chain), k.k[Rounds]);
        storeBlock(out, chain);
    }
}

template <int Rounds>
ZT_AESNI_TARGET void cfbEncrypt(const AesKeys& keys, const unsigned char* iv,
                                const unsigned char* in, unsigned char* out, size_t n) {
    const Keys<Rounds> k(keys);
    __m128i chain = loadBlock(iv);
    for (; n != 0; --n, in += 16, out += 16) {
        chain = cipherOne<false>(k, chain, _mm_xor_si128(k.k[Rounds], loadBlock(in)));
        storeBlock(out, chain);
    }
}

// CBC decryption: P[i] = D(C[i]) ^ C[i-1]. CFB-128 decryption: P[i] = E(C[i-1]) ^ C[i].
// Both read every ciphertext block of a group before writing any plaintext, so that in-place
// operation works. The final exclusive-or is folded into the last round key.
template <bool Cbc, int Rounds>
ZT_AESNI_TARGET void chainedDecrypt(const AesKeys& keys, const unsigned char* iv,
                                    const unsigned char* in, unsigned char* out, size_t n) {
    const Keys<Rounds> k(keys);
    __m128i chain = loadBlock(iv);
    for (; n >= kLanes; n -= kLanes, in += 16 * kLanes, out += 16 * kLanes) {
        __m128i c[kLanes], x[kLanes], last[kLanes];
        for (size_t i = 0; i < kLanes; ++i)
            c[i] = loadBlock(in + 16 * i);
        for (size_t i = 0; i < kLanes; ++i) {
            const __m128i previous = i == 0 ? chain : c[i - 1];
            x[i] = Cbc ? c[i] : previous;
            last[i] = _mm_xor_si128(k.k[Rounds], Cbc ? previous : c[i]);
        }
        cipherLanes<Cbc>(k, x, last);
        chain = c[kLanes - 1];
        for (size_t i = 0; i < kLanes; ++i)
            storeBlock(out + 16 * i, x[i]);
    }
    for (; n != 0; --n, in += 16, out += 16) {
        const __m128i c = loadBlock(in);
        const __m128i last = _mm_xor_si128(k.k[Rounds], Cbc ? chain : c);
        storeBlock(out, cipherOne<Cbc>(k, Cbc ? c : chain, last));
        chain = c;
    }
}

// Entry points: each runs the body unrolled for the key's round count.
template <class Body> void withRounds(int rounds, const Body& body) {
    if (rounds == 10)
        body(std::integral_constant<int, 10>());
    else if (rounds == 12)
        body(std::integral_constant<int, 12>());
    else
        body(std::integral_constant<int, 14>());
}

void ecbEncryptNi(const AesKeys& k, const unsigned char* in, unsigned char* out, size_t n) {
    withRounds(k.rounds, [&](auto r) { ecb<false, r()>(k, in, out, n); });
}
void ecbDecryptNi(const AesKeys& k, const unsigned char* in, unsigned char* out, size_t n) {
    withRounds(k.rounds, [&](auto r) { ecb<true, r()>(k, in, out, n); });
}
void cbcEncryptNi(const AesKeys& k, const unsigned char* iv, const unsigned char* in,
                  unsigned char* out, size_t n) {
    withRounds(k.rounds, [&](auto r) { cbcEncrypt<r()>(k, iv, in, out, n); });
}
void cbcDecryptNi(const AesKeys& k, const unsigned char* iv, const unsigned char* in,
                  unsigned char* out, size_t n) {
    withRounds(k.rounds, [&](auto r) { chainedDecrypt<true, r()>(k, iv, in, out, n); });
}
void cfbEncryptNi(const AesKeys& k, const unsigned char* iv, const unsigned char* in,
                  unsigned char* out, size_t n) {
    withRounds(k.rounds, [&](auto r) { cfbEncrypt<r()>(k, iv, in, out, n); });
}
void cfbDecryptNi(const AesKeys& k, const unsigned char* iv, const unsigned char* in,
                  unsigned char* out, size_t n) {
    withRounds(k.rounds, [&](auto r) { chainedDecrypt<false, r()>(k, iv, in, out, n); });
}

} // namespace

const AesKernels aesNiKernels = {&ecbEncryptNi, &ecbDecryptNi, &cbcEncryptNi,
                                 &cbcDecryptNi, &cfbEncryptNi, &cfbDecryptNi};

} // namespace ZtCommonNS::crypto
