// ZtChar conversions, checked against ICU's normalizer, ICU's UTF-8/UTF-16 macros and the
// character mappings of the definition.
#include <gtest/gtest.h>

#include <unicode/normalizer2.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include "text_test_util.h"
#include "ztcommon/text.h"

using namespace ZtCommonNS;

namespace {
const icu::Normalizer2& nfkc() {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* n = icu::Normalizer2::getNFKCInstance(status);
    EXPECT_TRUE(U_SUCCESS(status));
    return *n;
}
} // namespace

TEST(CharConvert, ToZenkakuIsTheInverseOfCompatibilityFolding) {
    for (UChar32 c = 0; c <= 0xFFFF; ++c) {
        const UChar32 z = ZtChar::toZenkaku(c);
        if (c >= 0x21 && c <= 0x7E) {
            UnicodeString folded;
            ASSERT_TRUE(nfkc().getDecomposition(z, folded)) << std::hex << c;
            EXPECT_EQ(folded, UnicodeString(c)) << std::hex << c;
            EXPECT_EQ(ZtChar::getEastAsianWidth(z), U_EA_FULLWIDTH);
        } else {
            ASSERT_EQ(z, c) << std::hex << c;
        }
    }
    EXPECT_EQ(ZtChar::toZenkaku(UnicodeString(u"A1 b~")), UnicodeString(u"Ａ１ ｂ～"));
    EXPECT_EQ(ZtChar::toZenkaku(UnicodeString(u"")), UnicodeString(u""));
}

TEST(CharConvert, HalfwidthKatakanaToFullWidth) {
    for (UChar32 c = 0xFF61; c <= 0xFF9F; ++c) {
        const UChar32 z = ZtChar::toZenkakuKana(c);
        if (c == 0xFF9E) {
            EXPECT_EQ(z, 0x309B); // the spacing voiced sound mark, not the combining one
        } else if (c == 0xFF9F) {
            EXPECT_EQ(z, 0x309C);
        } else {
            UnicodeString folded;
            ASSERT_TRUE(nfkc().getDecomposition(c, folded)) << std::hex << c;
            EXPECT_EQ(UnicodeString(z), folded) << std::hex << c;
        }
    }
    // Hand-picked from the table of the definition.
    EXPECT_EQ(ZtChar::toZenkakuKana(0xFF61), 0x3002);
    EXPECT_EQ(ZtChar::toZenkakuKana(0xFF65), 0x30FB);
    EXPECT_EQ(ZtChar::toZenkakuKana(0xFF66), 0x30F2);
    EXPECT_EQ(ZtChar::toZenkakuKana(0xFF70), 0x30FC);
    // Outside the block nothing changes.
    EXPECT_EQ(ZtChar::toZenkakuKana(0xFF60), 0xFF60);
    EXPECT_EQ(ZtChar::toZenkakuKana(0xFFA0), 0xFFA0);
    EXPECT_EQ(ZtChar::toZenkakuKana(UnicodeString(u"ｶﾞｯｺｳ!")), UnicodeString(u"カ゛ッコウ!"));
}

TEST(CharConvert, SmallKanaToFullSize) {
    // Every small kana of the two blocks is its full-size letter's name with "SMALL" added;
    // ICU's character names tell which letter that is.
    int changed = 0;
    for (UChar32 c = 0x3041; c <= 0x30F6; ++c) {
        char name[128];
        UErrorCode status = U_ZERO_ERROR;
        u_charName(c, U_UNICODE_CHAR_NAME, name, sizeof name, &status);
        std::string n(name);
        const size_t pos = n.find(" LETTER SMALL ");
        const UChar32 full = ZtChar::toFullsizeKana(c);
        if (pos == std::string::npos) {
            EXPECT_EQ(full, c) << name;
            continue;
        }
        n.erase(pos + 7, 6); // drop "SMALL "
        status = U_ZERO_ERROR;
        EXPECT_EQ(full, u_charFromName(U_UNICODE_CHAR_NAME, n.c_str(), &status)) << name;
        ++changed;
    }
    EXPECT_EQ(changed, 24);
    for (UChar32 c = 0x31F0; c <= 0x31FF; ++c) {
        char name[128];
        UErrorCode status = U_ZERO_ERROR;
        u_charName(c, U_UNICODE_CHAR_NAME, name, sizeof name, &status);
        std::string n(name); // "KATAKANA LETTER SMALL KU"
        n.erase(n.find("SMALL "), 6);
        EXPECT_EQ(ZtChar::toFullsizeKana(c),
                  u_charFromName(U_UNICODE_CHAR_NAME, n.c_str(), &status))
            << name;
    }
    EXPECT_EQ(ZtChar::toFullsizeKana(0x3095), 0x304B); // small ka
    EXPECT_EQ(ZtChar::toFullsizeKana(0x30F6), 0x30B1); // small ke
    EXPECT_EQ(ZtChar::toFullsizeKana(0x3040), 0x3040);
    EXPECT_EQ(ZtChar::toFullsizeKana(0x30F7), 0x30F7);
    EXPECT_EQ(ZtChar::toFullsizeKana(0x1B132), 0x1B132); // not handled: supplementary
    EXPECT_EQ(ZtChar::toFullsizeKana(UnicodeString(u"ぁァㇰx")), UnicodeString(u"あアクx"));
}

TEST(CharConvert, MirrorString) {
    EXPECT_EQ(ZtChar::getMirrorString(u"(a[b]<c>)"), UnicodeString(u")a]b[>c<("));
    EXPECT_EQ(ZtChar::getMirrorString(u"「x」"), UnicodeString(u"」x「"));
    // A supplementary character with a mirror and a lone surrogate stay intact.
    const UnicodeString odd = UnicodeString(u"\U0001D6DB").append(UChar(0xD800));
    EXPECT_EQ(ZtChar::getMirrorString(odd),
              UnicodeString(u_charMirror(0x1D6DB)).append(UChar(0xD800)));
    EXPECT_EQ(ZtChar::getMirrorString(u""), UnicodeString());
}

TEST(CharConvert, LastUnitAndCodePoint) {
    EXPECT_EQ(ZtChar::last(u"ab"), 0x62);
    EXPECT_EQ(ZtChar::last32(u"ab"), U'b');
    EXPECT_EQ(int(ZtChar::last(u"a\U00020000")), 0xDC00);
    EXPECT_EQ(ZtChar::last32(u"a\U00020000"), 0x20000);
    EXPECT_EQ(int(ZtChar::last(u"")), 0xFFFF);
    EXPECT_EQ(ZtChar::last32(u""), 0xFFFF);
    EXPECT_TRUE(ZtChar::isHardBreakOrInvalid(ZtChar::last(u"")));
}

TEST(CharConvert, Utf8SequencesAgreeWithIcu) {
    // Every lead byte with every second byte, and boundary values for the third and fourth.
    const uint8_t tails[] = {0x00, 0x3F, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF, 0xC0, 0xFF};
    for (int b0 = 0; b0 < 256; ++b0) {
        for (int b1 = 0; b1 < 256; ++b1) {
            for (uint8_t b2 : tails) {
                for (uint8_t b3 : tails) {
                    const uint8_t bytes[4] = {static_cast<uint8_t>(b0), static_cast<uint8_t>(b1),
                                              b2, b3};
                    int32_t i = 0;
                    UChar32 expected;
                    U8_NEXT_OR_FFFD(bytes, i, 4, expected);
                    ASSERT_EQ(ZtChar::UTF8toUChar32(bytes[0], bytes[1], b2, b3), expected)
                        << std::hex << b0 << ' ' << b1 << ' ' << int(b2) << ' ' << int(b3);
                }
            }
        }
    }
    EXPECT_EQ(ZtChar::UTF8toUChar32('A'), 'A');
    EXPECT_EQ(ZtChar::UTF8toUChar32(0xE3, 0x81, 0x82), 0x3042);
    EXPECT_EQ(ZtChar::UTF8toUChar32(0xF4, 0x8F, 0xBF, 0xBF), 0x10FFFF);
    EXPECT_EQ(ZtChar::UTF8toUChar32(0xF4, 0x90, 0x80, 0x80), 0xFFFD);
    EXPECT_EQ(ZtChar::UTF8toUChar32(0xED, 0xA0, 0x80), 0xFFFD); // a surrogate
    EXPECT_EQ(ZtChar::UTF8toUChar32(0xC0, 0x80), 0xFFFD);       // overlong NUL
}

TEST(CharConvert, Utf16PairsAgreeWithIcu) {
    const UChar probes[] = {0x0000, 0x0041, 0xD7FF, 0xD800, 0xDBFF, 0xDC00,
                            0xDFFF, 0xE000, 0xFFFD, 0xFFFF, 0xD834, 0xDD1E};
    for (UChar hi : probes) {
        for (UChar lo : probes) {
            UChar32 expected;
            if (!U16_IS_SURROGATE(hi))
                expected = hi;
            else if (U16_IS_LEAD(hi) && U16_IS_TRAIL(lo))
                expected = U16_GET_SUPPLEMENTARY(hi, lo);
            else
                expected = 0xFFFD;
            EXPECT_EQ(ZtChar::UTF16toUChar32(hi, lo), expected)
                << std::hex << int(hi) << ' ' << int(lo);
        }
    }
    EXPECT_EQ(ZtChar::UTF16toUChar32(0xD834, 0xDD1E), 0x1D11E);
    EXPECT_EQ(ZtChar::UTF16toUChar32(0xDC00, 0xDC00), 0xFFFD);
    EXPECT_EQ(ZtChar::UTF16toUChar32('x', 0xDC00), 'x');
}
