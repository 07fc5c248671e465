// The counting systems of counter styles as pure digit algorithms. Each routine turns a
// magnitude into a sequence of symbol indices (or, for Ethiopic, characters) in writing
// order; the counter style maps the indices onto its own symbols. Keeping the arithmetic
// apart from the symbols lets one routine serve every style of a system and keeps the
// formatting loop free of allocation.
#pragma once

#include <cstdint>

namespace ZtCommonNS::counter_detail {

// Upper bounds of the sequences below for any 64-bit magnitude.
inline constexpr int kMaxPositionalDigits = 64; // base 2
inline constexpr int kMaxChineseIndices = 40;   // 19 digits, each with a marker
inline constexpr int kMaxKansujiIndices = 48;   // 5 groups of 4 digits with markers
inline constexpr int kMaxEthiopicNumerals = 32; // 10 pairs of digits with separators

// Base-`base` digits of `v` (base >= 2), most significant first; 0 gives the single digit 0.
int positionalDigits(uint64_t v, uint64_t base, uint32_t* out);

// Bijective base-`base` digits of `v` (v >= 1, base >= 2), most significant first: the
// alphabetic system, where digit 0 stands for the first symbol and there is no zero.
int bijectiveDigits(uint64_t v, uint64_t base, uint32_t* out);

// Chinese longhand numerals of `v` as indices: 0 to 9 digits, 10 + p - 1 the marker of the
// decimal position p (10 ten, 11 hundred, 12 thousand; higher positions follow on). Trailing
// zeros are dropped and runs of zeros collapse into one; the informal forms leave out the
// digit 1 before the ten marker for 10 to 19. 0 gives the digit 0.
int chineseIndices(uint64_t v, bool informal, uint32_t* out);

// The three written forms of Japanese numerals (kansuji).
enum class KansujiForm {
    // Digit by digit: 2024 is 二〇二四.
    Simple,
    // Groups of four digits, each followed by its group marker (万, 億, ...); a group is
    // written digit by digit without its leading zeros, groups of 0 are left out:
    // 12345 is 一万二三四五, 10005 is 一万五.
    Grouping,
    // Groups of four digits written with the markers 十, 百, 千 (the digit 1 is left out
    // before them) and followed by the group marker: 12345 is 一万二千三百四十五,
    // 10000000 is 千万.
    Readable,
};

// Japanese numerals of `v` as indices into the style's symbols: 0 to 9 the digits; in the
// grouping form 10 + g - 1 the marker of group g (10^4g); in the readable form 10, 11, 12
// the markers of ten, hundred and thousand and 13 + g - 1 the marker of group g.
// 0 gives the digit 0.
int kansujiIndices(uint64_t v, KansujiForm form, uint32_t* out);

// Ethiopic numerals of `v` (v >= 1): pairs of decimal digits written with the tens and
// units numerals, odd pairs followed by ፻ (hundred) unless they are 0, even pairs other
// than the last followed by ፼ (ten thousand); a pair of 1 drops its digit when it leads or
// stands at an odd position.
int ethiopicNumerals(uint64_t v, char16_t* out);

} // namespace ZtCommonNS::counter_detail
