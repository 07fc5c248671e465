// AES with the AES-NI instructions. The round count is a template parameter so that every
// loop is unrolled. Modes that allow it (ECB both ways, CBC and CFB-128 decryption) keep eight
// blocks in flight: AESENC/AESDEC have a latency of several cycles but issue every cycle, so
// independent blocks hide each other's latency. CBC and CFB-128 encryption are serial by
// definition and run one block at a time.
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

// Forward cipher of one block; `last` is the final round key, possibly already combined with a
// value to be added to the result.
template <int Rounds>
ZT_AESNI_INLINE __m128i encryptOne(const Keys<Rounds>& k, __m128i x, __m128i last) {
    x = _mm_xor_si128(x, k.k[0]);
#pragma GCC unroll 16
    for (int r = 1; r < Rounds; ++r)
        x = _mm_aesenc_si128(x, k.k[r]);
    return _mm_aesenclast_si128(x, last);
}

template <int Rounds>
ZT_AESNI_INLINE __m128i decryptOne(const Keys<Rounds>& k, __m128i x, __m128i last) {
    x = _mm_xor_si128(x, k.k[0]);
#pragma GCC unroll 16
    for (int r = 1; r < Rounds; ++r)
        x = _mm_aesdec_si128(x, k.k[r]);
    return _mm_aesdeclast_si128(x, last);
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
        storeBlock(out, Decrypt ? decryptOne(k, x, k.k[Rounds]) : encryptOne(k, x, k.k[Rounds]));
    }
}

template <int Rounds>
ZT_AESNI_TARGET void cbcEncrypt(const AesKeys& keys, const unsigned char* iv,
                                const unsigned char* in, unsigned char* out, size_t n) {
    const Keys<Rounds> k(keys);
    __m128i chain = loadBlock(iv);
    for (; n != 0; --n, in += 16, out += 16) {
        chain = encryptOne(k, _mm_xor_si128(loadBlock(in), chain), k.k[Rounds]);
        storeBlock(out, chain);
    }
}

template <int Rounds>
ZT_AESNI_TARGET void cfbEncrypt(const AesKeys& keys, const unsigned char* iv,
                                const unsigned char* in, unsigned char* out, size_t n) {
    const Keys<Rounds> k(keys);
    __m128i chain = loadBlock(iv);
    for (; n != 0; --n, in += 16, out += 16) {
        chain = encryptOne(k, chain, _mm_xor_si128(k.k[Rounds], loadBlock(in)));
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
        storeBlock(out, Cbc ? decryptOne(k, c, last) : encryptOne(k, chain, last));
        chain = c;
    }
}

// Entry points: choose the unrolled body for the key's round count.
#define ZT_BY_ROUNDS(call)                                                                         \
    switch (keys.rounds) {                                                                         \
    case 10:                                                                                       \
        call(10);                                                                                  \
        break;                                                                                     \
    case 12:                                                                                       \
        call(12);                                                                                  \
        break;                                                                                     \
    default:                                                                                       \
        call(14);                                                                                  \
        break;                                                                                     \
    }

void ecbEncryptNi(const AesKeys& keys, const unsigned char* in, unsigned char* out, size_t n) {
#define ZT_CALL(r) ecb<false, r>(keys, in, out, n)
    ZT_BY_ROUNDS(ZT_CALL)
#undef ZT_CALL
}

void ecbDecryptNi(const AesKeys& keys, const unsigned char* in, unsigned char* out, size_t n) {
#define ZT_CALL(r) ecb<true, r>(keys, in, out, n)
    ZT_BY_ROUNDS(ZT_CALL)
#undef ZT_CALL
}

void cbcEncryptNi(const AesKeys& keys, const unsigned char* iv, const unsigned char* in,
                  unsigned char* out, size_t n) {
#define ZT_CALL(r) cbcEncrypt<r>(keys, iv, in, out, n)
    ZT_BY_ROUNDS(ZT_CALL)
#undef ZT_CALL
}

void cbcDecryptNi(const AesKeys& keys, const unsigned char* iv, const unsigned char* in,
                  unsigned char* out, size_t n) {
#define ZT_CALL(r) chainedDecrypt<true, r>(keys, iv, in, out, n)
    ZT_BY_ROUNDS(ZT_CALL)
#undef ZT_CALL
}

void cfbEncryptNi(const AesKeys& keys, const unsigned char* iv, const unsigned char* in,
                  unsigned char* out, size_t n) {
#define ZT_CALL(r) cfbEncrypt<r>(keys, iv, in, out, n)
    ZT_BY_ROUNDS(ZT_CALL)
#undef ZT_CALL
}

void cfbDecryptNi(const AesKeys& keys, const unsigned char* iv, const unsigned char* in,
                  unsigned char* out, size_t n) {
#define ZT_CALL(r) chainedDecrypt<false, r>(keys, iv, in, out, n)
    ZT_BY_ROUNDS(ZT_CALL)
#undef ZT_CALL
}

#undef ZT_BY_ROUNDS

} // namespace

const AesKernels aesNiKernels = {&ecbEncryptNi, &ecbDecryptNi, &cbcEncryptNi,
                                 &cbcDecryptNi, &cfbEncryptNi, &cfbDecryptNi};

} // namespace ZtCommonNS::crypto
