// The AES S-boxes and round tables, computed at compile time from the definitions of FIPS-197:
// the S-box is the multiplicative inverse in GF(2^8) followed by the affine map, and each round
// table entry is one S-box output multiplied by a column of (Inv)MixColumns.
//
// Columns are 32-bit words with the state's first row in the lowest byte, so a column is read
// from memory with a plain little-endian load.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace ZtCommonNS::crypto {

// Multiplication in GF(2^8) modulo x^8 + x^4 + x^3 + x + 1.
constexpr uint8_t gfMul(uint8_t a, uint8_t b) {
    uint8_t product = 0;
    while (b != 0) {
        if (b & 1)
            product ^= a;
        a = static_cast<uint8_t>((a << 1) ^ ((a & 0x80) ? 0x1B : 0));
        b >>= 1;
    }
    return product;
}

constexpr uint8_t gfInverse(uint8_t a) {
    // a^254 is the inverse of a (and 0 for 0).
    uint8_t result = 1;
    uint8_t power = a;
    for (int e = 254; e != 0; e >>= 1) {
        if (e & 1)
            result = gfMul(result, power);
        power = gfMul(power, power);
    }
    return a == 0 ? 0 : result;
}

constexpr uint8_t rotl8(uint8_t v, int s) {
    return static_cast<uint8_t>((v << s) | (v >> (8 - s)));
}

constexpr std::array<uint8_t, 256> makeSbox() {
    std::array<uint8_t, 256> box{};
    for (int i = 0; i < 256; ++i) {
        const uint8_t b = gfInverse(static_cast<uint8_t>(i));
        box[static_cast<size_t>(i)] =
            b ^ rotl8(b, 1) ^ rotl8(b, 2) ^ rotl8(b, 3) ^ rotl8(b, 4) ^ 0x63;
    }
    return box;
}

constexpr std::array<uint8_t, 256> invert(const std::array<uint8_t, 256>& box) {
    std::array<uint8_t, 256> inverse{};
    for (int i = 0; i < 256; ++i)
        inverse[box[static_cast<size_t>(i)]] = static_cast<uint8_t>(i);
    return inverse;
}

constexpr uint32_t column(uint8_t r0, uint8_t r1, uint8_t r2, uint8_t r3) {
    return r0 | (uint32_t{r1} << 8) | (uint32_t{r2} << 16) | (uint32_t{r3} << 24);
}

inline constexpr std::array<uint8_t, 256> kSbox = makeSbox();
inline constexpr std::array<uint8_t, 256> kInvSbox = invert(kSbox);

// Forward round table: MixColumns column (2, 1, 1, 3) times S(x). The tables for the other
// rows are byte rotations of it.
inline constexpr std::array<uint32_t, 256> kEncTable = [] {
    std::array<uint32_t, 256> t{};
    for (size_t i = 0; i < 256; ++i) {
        const uint8_t s = kSbox[i];
        t[i] = column(gfMul(s, 2), s, s, gfMul(s, 3));
    }
    return t;
}();

// Inverse round table: InvMixColumns column (14, 9, 13, 11) times InvS(x).
inline constexpr std::array<uint32_t, 256> kDecTable = [] {
    std::array<uint32_t, 256> t{};
    for (size_t i = 0; i < 256; ++i) {
        const uint8_t s = kInvSbox[i];
        t[i] = column(gfMul(s, 14), gfMul(s, 9), gfMul(s, 13), gfMul(s, 11));
    }
    return t;
}();

// The four tables of a direction: row r's table is the first one with its bytes rotated left
// by r places, so that a byte of row r lands in the right row of the output column.
constexpr std::array<std::array<uint32_t, 256>, 4> rotations(const std::array<uint32_t, 256>& t) {
    std::array<std::array<uint32_t, 256>, 4> out{};
    for (size_t r = 0; r < 4; ++r)
        for (size_t i = 0; i < 256; ++i)
            out[r][i] = r == 0 ? t[i] : (t[i] << (8 * r)) | (t[i] >> (32 - 8 * r));
    return out;
}
alignas(64) inline constexpr std::array<std::array<uint32_t, 256>, 4> kEncTables =
    rotations(kEncTable);
alignas(64) inline constexpr std::array<std::array<uint32_t, 256>, 4> kDecTables =
    rotations(kDecTable);

// InvMixColumns of one column word, for the decryption key schedule.
constexpr uint32_t invMixColumn(uint32_t w) {
    const uint8_t a0 = static_cast<uint8_t>(w), a1 = static_cast<uint8_t>(w >> 8);
    const uint8_t a2 = static_cast<uint8_t>(w >> 16), a3 = static_cast<uint8_t>(w >> 24);
    return column(gfMul(a0, 14) ^ gfMul(a1, 11) ^ gfMul(a2, 13) ^ gfMul(a3, 9),
                  gfMul(a0, 9) ^ gfMul(a1, 14) ^ gfMul(a2, 11) ^ gfMul(a3, 13),
                  gfMul(a0, 13) ^ gfMul(a1, 9) ^ gfMul(a2, 14) ^ gfMul(a3, 11),
                  gfMul(a0, 11) ^ gfMul(a1, 13) ^ gfMul(a2, 9) ^ gfMul(a3, 14));
}

} // namespace ZtCommonNS::crypto
