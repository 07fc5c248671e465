// Reading hexadecimal numbers no larger than the last code point, for ZtUtil::parseHexNum and
// the unicode-range parser.
#pragma once

#include <cstdint>

namespace ZtCommonNS {

inline constexpr int32_t kMaxCodePoint = 0x10FFFF;

// The value of a hexadecimal digit, -1 for any other character.
template <typename CharT> constexpr int hexDigitValue(CharT ch) noexcept {
    if (ch >= CharT('0') && ch <= CharT('9'))
        return static_cast<int>(ch - CharT('0'));
    if (ch >= CharT('a') && ch <= CharT('f'))
        return static_cast<int>(ch - CharT('a')) + 10;
    if (ch >= CharT('A') && ch <= CharT('F'))
        return static_cast<int>(ch - CharT('A')) + 10;
    return -1;
}

// Reads the digits at `pos`, stopping at `limit` or at the first other character (so a null
// `limit` reads a NUL-terminated text). On success moves `pos` past the digits; on failure (no
// digit, or a value beyond U+10FFFF) changes nothing.
template <typename CharT>
bool readHexNumber(const CharT*& pos, const CharT* limit, int32_t& value) noexcept {
    const CharT* p = pos;
    int32_t number = 0;
    int digit = 0;
    while (p != limit && (digit = hexDigitValue(*p)) >= 0) {
        number = number * 16 + digit;
        if (number > kMaxCodePoint)
            return false;
        ++p;
    }
    if (p == pos)
        return false;
    value = number;
    pos = p;
    return true;
}

} // namespace ZtCommonNS
