// ZtChar conversions: full-width forms, full-size kana, mirroring and the decoding of single
// UTF-8 and UTF-16 sequences.
#include <array>

#include "ztcommon/text.h"

namespace ZtCommonNS {

namespace {

// Full-width forms of the half-width katakana block U+FF61..U+FF9F, by code point minus
// U+FF61. The voiced and semi-voiced sound marks become the spacing marks U+309B and U+309C.
constexpr std::array<UChar, 63> kHalfwidthKatakana = {
    0x3002, 0x300C, 0x300D, 0x3001, 0x30FB, 0x30F2, 0x30A1, 0x30A3, 0x30A5, 0x30A7, 0x30A9,
    0x30E3, 0x30E5, 0x30E7, 0x30C3, 0x30FC, 0x30A2, 0x30A4, 0x30A6, 0x30A8, 0x30AA, 0x30AB,
    0x30AD, 0x30AF, 0x30B1, 0x30B3, 0x30B5, 0x30B7, 0x30B9, 0x30BB, 0x30BD, 0x30BF, 0x30C1,
    0x30C4, 0x30C6, 0x30C8, 0x30CA, 0x30CB, 0x30CC, 0x30CD, 0x30CE, 0x30CF, 0x30D2, 0x30D5,
    0x30D8, 0x30DB, 0x30DE, 0x30DF, 0x30E0, 0x30E1, 0x30E2, 0x30E4, 0x30E6, 0x30E8, 0x30E9,
    0x30EA, 0x30EB, 0x30EC, 0x30ED, 0x30EF, 0x30F3, 0x309B, 0x309C};

// Full-size forms of the small katakana extensions U+31F0..U+31FF.
constexpr std::array<UChar, 16> kSmallKatakanaExtensions = {
    0x30AF, 0x30B7, 0x30B9, 0x30C8, 0x30CC, 0x30CF, 0x30D2, 0x30D5,
    0x30D8, 0x30DB, 0x30E0, 0x30E9, 0x30EA, 0x30EB, 0x30EC, 0x30ED};

// Small kana of the hiragana and katakana blocks, as offsets from U+3040 (hiragana) or U+30A0
// (katakana), with the offset of the full-size letter. The two blocks share the layout.
struct SmallKana {
    uint8_t small;
    uint8_t full;
};
constexpr std::array<SmallKana, 12> kSmallKana = {{
    {0x01, 0x02}, // a
    {0x03, 0x04}, // i
    {0x05, 0x06}, // u
    {0x07, 0x08}, // e
    {0x09, 0x0A}, // o
    {0x23, 0x24}, // tsu
    {0x43, 0x44}, // ya
    {0x45, 0x46}, // yu
    {0x47, 0x48}, // yo
    {0x4E, 0x4F}, // wa
    {0x55, 0x0B}, // small ka to ka
    {0x56, 0x11}, // small ke to ke
}};

template <UChar32 (*Convert)(UChar32)> UnicodeString convertUnits(const UnicodeString& s) {
    UnicodeString result(s);
    const int32_t n = result.length();
    UChar* p = result.getBuffer(n);
    if (p == nullptr)
        return result; // bogus input stays bogus
    for (int32_t i = 0; i < n; ++i)
        p[i] = static_cast<UChar>(Convert(p[i]));
    result.releaseBuffer(n);
    return result;
}

} // namespace

UChar32 ZtChar::toZenkaku(UChar32 c) {
    return c >= 0x21 && c <= 0x7E ? c + 0xFEE0 : c;
}

UnicodeString ZtChar::toZenkaku(const UnicodeString& s) {
    return convertUnits<static_cast<UChar32 (*)(UChar32)>(&ZtChar::toZenkaku)>(s);
}

UChar32 ZtChar::toZenkakuKana(UChar32 c) {
    return c >= 0xFF61 && c <= 0xFF9F ? kHalfwidthKatakana[static_cast<size_t>(c - 0xFF61)] : c;
}

UnicodeString ZtChar::toZenkakuKana(const UnicodeString& s) {
    return convertUnits<static_cast<UChar32 (*)(UChar32)>(&ZtChar::toZenkakuKana)>(s);
}

UChar32 ZtChar::toFullsizeKana(UChar32 c) {
    if (c >= 0x31F0 && c <= 0x31FF)
        return kSmallKatakanaExtensions[static_cast<size_t>(c - 0x31F0)];
    if (c < 0x3041 || c > 0x30F6)
        return c;
    const UChar32 base = c < 0x30A0 ? 0x3040 : 0x30A0;
    for (const SmallKana& k : kSmallKana) {
        if (c - base == k.small)
            return base + k.full;
    }
    return c;
}

UnicodeString ZtChar::toFullsizeKana(const UnicodeString& s) {
    return convertUnits<static_cast<UChar32 (*)(UChar32)>(&ZtChar::toFullsizeKana)>(s);
}

UnicodeString ZtChar::getMirrorString(const UnicodeString& s) {
    UnicodeString result;
    const int32_t n = s.length();
    for (int32_t i = 0; i < n;) {
        const UChar32 c = s.char32At(i);
        result.append(u_charMirror(c));
        i += U16_LENGTH(c);
    }
    return result;
}

UChar32 ZtChar::UTF8toUChar32(uint8_t b0, uint8_t b1, uint8_t b2, uint8_t b3) {
    constexpr UChar32 kBad = 0xFFFD;
    auto cont = [](uint8_t b) { return (b & 0xC0) == 0x80; };
    if (b0 < 0x80)
        return b0;
    if (b0 < 0xC2) // a continuation byte, or the lead of an overlong two-byte form
        return kBad;
    if (b0 < 0xE0)
        return cont(b1) ? ((b0 & 0x1F) << 6) | (b1 & 0x3F) : kBad;
    if (b0 < 0xF0) {
        // The second byte excludes overlong forms (after E0) and surrogates (after ED).
        const uint8_t lo = b0 == 0xE0 ? 0xA0 : 0x80;
        const uint8_t hi = b0 == 0xED ? 0x9F : 0xBF;
        if (b1 < lo || b1 > hi || !cont(b2))
            return kBad;
        return ((b0 & 0x0F) << 12) | ((b1 & 0x3F) << 6) | (b2 & 0x3F);
    }
    if (b0 < 0xF5) {
        // The second byte excludes overlong forms (after F0) and values beyond U+10FFFF.
        const uint8_t lo = b0 == 0xF0 ? 0x90 : 0x80;
        const uint8_t hi = b0 == 0xF4 ? 0x8F : 0xBF;
        if (b1 < lo || b1 > hi || !cont(b2) || !cont(b3))
            return kBad;
        return ((b0 & 0x07) << 18) | ((b1 & 0x3F) << 12) | ((b2 & 0x3F) << 6) | (b3 & 0x3F);
    }
    return kBad;
}

UChar32 ZtChar::UTF16toUChar32(UChar hi, UChar lo) {
    if (!U16_IS_SURROGATE(hi))
        return hi;
    if (U16_IS_LEAD(hi) && U16_IS_TRAIL(lo))
        return U16_GET_SUPPLEMENTARY(hi, lo);
    return 0xFFFD;
}

} // namespace ZtCommonNS
