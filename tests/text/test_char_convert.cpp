// ZtChar conversions of single characters, checked against ICU's normalizer, ICU's character
// names and ICU's UTF-8/UTF-16 macros (the text forms are in data/text_functions.tsv).
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
}

TEST(CharConvert, HalfwidthKatakanaToFullWidth) {
    for (UChar32 c = 0xFF61; c <= 0xFF9F; ++c) {
        UnicodeString folded;
        ASSERT_TRUE(nfkc().getDecomposition(c, folded)) << std::hex << c;
        // The sound marks become the spacing marks, not the combining ones of the folding.
        if (c >= 0xFF9E)
            folded = UnicodeString(static_cast<UChar32>(c == 0xFF9E ? 0x309B : 0x309C));
        EXPECT_EQ(UnicodeString(ZtChar::toZenkakuKana(c)), folded) << std::hex << c;
    }
    EXPECT_EQ(ZtChar::toZenkakuKana(0xFF60), 0xFF60);
    EXPECT_EQ(ZtChar::toZenkakuKana(0xFFA0), 0xFFA0);
}

TEST(CharConvert, SmallKanaToFullSize) {
    // Every small kana of the two blocks is its full-size letter's name with "SMALL" added;
    // ICU's character names tell which letter that is.
    int changed = 0;
    for (UChar32 c = 0x3041; c <= 0x31FF; c = c == 0x30F6 ? 0x31F0 : c + 1) {
        char name[128];
        UErrorCode status = U_ZERO_ERROR;
        u_charName(c, U_UNICODE_CHAR_NAME, name, sizeof name, &status);
        std::string n(name);
        const size_t pos = n.find(" LETTER SMALL ");
        if (pos == std::string::npos) {
            EXPECT_EQ(ZtChar::toFullsizeKana(c), c) << name;
            continue;
        }
        n.erase(pos + 7, 6); // drop "SMALL "
        EXPECT_EQ(ZtChar::toFullsizeKana(c),
                  u_charFromName(U_UNICODE_CHAR_NAME, n.c_str(), &status))
            << name;
        ++changed;
    }
    EXPECT_EQ(changed, 24 + 16);
    for (UChar32 c : {0x3040, 0x30F7, 0x31EF, 0x3200, 0x1B132}) // 0x1B132: supplementary
        EXPECT_EQ(ZtChar::toFullsizeKana(c), c) << std::hex << c;
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
    EXPECT_EQ(ZtChar::UTF8toUChar32('A'), 'A'); // the default arguments
    EXPECT_EQ(ZtChar::UTF8toUChar32(0xE3, 0x81, 0x82), 0x3042);
}

TEST(CharConvert, Utf16PairsAgreeWithIcu) {
    const UChar probes[] = {0x0000, 0x0041, 0xD7FF, 0xD800, 0xDBFF, 0xDC00,
                            0xDFFF, 0xE000, 0xFFFD, 0xFFFF, 0xD834, 0xDD1E};
    for (UChar hi : probes) {
        for (UChar lo : probes) {
            UChar32 expected = hi;
            if (U16_IS_SURROGATE(hi))
                expected =
                    U16_IS_LEAD(hi) && U16_IS_TRAIL(lo) ? U16_GET_SUPPLEMENTARY(hi, lo) : 0xFFFD;
            EXPECT_EQ(ZtChar::UTF16toUChar32(hi, lo), expected)
                << std::hex << int(hi) << ' ' << int(lo);
        }
    }
}
