// The hash of name strings: a 64-bit multiply-fold hash over UTF-16 code units, four units
// a block. The built-in table was generated with a fixed seed (scripts/gen_builtin_names.py
// computes the same function); run-time tables hash with a seed drawn at load, so that a hostile
// document cannot predict which of its names collide.
#pragma once

#include <cstdint>
#include <cstring>

namespace ZtCommonNS::NameHash {

inline constexpr std::uint64_t kMulLength = 0x9E3779B97F4A7C15u;
inline constexpr std::uint64_t kMulBlock = 0xBF58476D1CE4E5B9u;
inline constexpr std::uint64_t kMulFinal = 0x94D049BB133111EBu;
inline constexpr std::uint64_t kMulDisplace = 0xD6E8FEB86659FD93u;

inline std::uint64_t block(const char16_t* s) {
    return std::uint64_t(s[0]) | std::uint64_t(s[1]) << 16 | std::uint64_t(s[2]) << 32 |
           std::uint64_t(s[3]) << 48;
}

// The last, partial block of 1 to 3 units, zero-filled.
inline std::uint64_t tail(const char16_t* s, std::int32_t count) {
    std::uint64_t b = 0;
    for (std::int32_t k = 0; k < count; ++k)
        b |= std::uint64_t(s[k]) << (16 * k);
    return b;
}

// The full 128-bit product folded to 64 bits. Unlike a plain 64-bit multiply, whose top bit
// difference passes through unchanged whatever the state, the carries into the high half make
// every input difference depend on the (seeded) state.
__extension__ using Uint128 = unsigned __int128;

inline std::uint64_t fold(std::uint64_t a, std::uint64_t b) {
    Uint128 p = static_cast<Uint128>(a) * b;
    return static_cast<std::uint64_t>(p) ^ static_cast<std::uint64_t>(p >> 64);
}

inline std::uint64_t step(std::uint64_t h, std::uint64_t b) {
    return fold(h ^ b, kMulBlock);
}

inline std::uint64_t finish(std::uint64_t h) {
    return fold(h, kMulFinal);
}

inline std::uint64_t hashUnits(const char16_t* s, std::int32_t n, std::uint64_t seed) {
    std::uint64_t h = seed ^ (std::uint64_t(n) * kMulLength);
    std::int32_t i = 0;
    for (; n - i >= 4; i += 4)
        h = step(h, block(s + i));
    if (i < n)
        h = step(h, tail(s + i, n - i));
    return finish(h);
}

inline std::uint64_t load64(const char16_t* p) {
    std::uint64_t word;
    std::memcpy(&word, p, sizeof word);
    return word;
}

// Equality of two texts of n units. Names are short: an inline comparison, four units at a
// time, beats a call to memcmp.
inline bool sameUnits(const char16_t* a, const char16_t* b, std::int32_t n) {
    std::int32_t i = 0;
    for (; n - i >= 4; i += 4)
        if (load64(a + i) != load64(b + i))
            return false;
    for (; i < n; ++i)
        if (a[i] != b[i])
            return false;
    return true;
}

} // namespace ZtCommonNS::NameHash
