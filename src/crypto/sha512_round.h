// One SHA-512 round, shared by the scalar and the vector-scheduled block functions. `wk` is
// K[t] + W[t]. The rounds are bound by two chains, from e to the next e and from a to the next
// a, so the sums are ordered to put the late terms last: h + wk is ready early, Ch(e,f,g) one
// step after e (its two terms share no bit, so they are added), Sigma1(e) two steps after; on
// the a side Sigma0(a) + Maj(a,b,c) is summed before T1 joins it. bc carries b ^ c from the
// round before (where it was a ^ b), which makes Maj(a,b,c) = b ^ ((a ^ b) & (b ^ c)).
#pragma once

#include <bit>
#include <cstdint>

#define ZT_SHA512_ROUND(a, b, c, d, e, f, g, h, wk)                                                \
    {                                                                                              \
        const uint64_t choose = (e & f) + (~e & g);                                                \
        const uint64_t sigma1 = std::rotr(e, 14) ^ std::rotr(e, 18) ^ std::rotr(e, 41);            \
        h += (wk);                                                                                 \
        h += choose;                                                                               \
        h += sigma1;                                                                               \
        d += h;                                                                                    \
        const uint64_t ab = a ^ b;                                                                 \
        const uint64_t sigma0 = std::rotr(a, 28) ^ std::rotr(a, 34) ^ std::rotr(a, 39);            \
        h += sigma0 + (b ^ (ab & bc));                                                             \
        bc = ab;                                                                                   \
    }

// Eight rounds from round t on; WK(t) gives K[t] + W[t].
#define ZT_SHA512_EIGHT_ROUNDS(t, WK)                                                              \
    ZT_SHA512_ROUND(a, b, c, d, e, f, g, h, WK(t))                                                 \
    ZT_SHA512_ROUND(h, a, b, c, d, e, f, g, WK((t) + 1))                                           \
    ZT_SHA512_ROUND(g, h, a, b, c, d, e, f, WK((t) + 2))                                           \
    ZT_SHA512_ROUND(f, g, h, a, b, c, d, e, WK((t) + 3))                                           \
    ZT_SHA512_ROUND(e, f, g, h, a, b, c, d, WK((t) + 4))                                           \
    ZT_SHA512_ROUND(d, e, f, g, h, a, b, c, WK((t) + 5))                                           \
    ZT_SHA512_ROUND(c, d, e, f, g, h, a, b, WK((t) + 6))                                           \
    ZT_SHA512_ROUND(b, c, d, e, f, g, h, a, WK((t) + 7))
