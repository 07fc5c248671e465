// The ZtChar queries backed by ICU, compared with ICU itself over the whole code space. The
// expected values are computed here directly from ICU's own functions, applying the U+32FF
// substitution exactly where the definition does.
#include <gtest/gtest.h>

#include <unicode/uchar.h>
#include <unicode/uscript.h>

#include "text_test_util.h"
#include "ztcommon/text.h"

using namespace ZtCommonNS;

namespace {

UChar32 sub(UChar32 c) {
    return c == 0x32FF ? 0x337B : c;
}

bool typeIs(UChar32 c, std::initializer_list<int8_t> types) {
    const int8_t t = u_charType(c);
    for (int8_t x : types) {
        if (t == x)
            return true;
    }
    return false;
}

bool isPunctType(UChar32 c) {
    return typeIs(c, {U_DASH_PUNCTUATION, U_START_PUNCTUATION, U_END_PUNCTUATION,
                      U_CONNECTOR_PUNCTUATION, U_OTHER_PUNCTUATION, U_INITIAL_PUNCTUATION,
                      U_FINAL_PUNCTUATION});
}

} // namespace

TEST(CharIcu, WidthQueriesSubstituteU32FF) {
    for (UChar32 c = 0; c <= 0x10FFFF; ++c) {
        const auto w =
            static_cast<UEastAsianWidth>(u_getIntPropertyValue(sub(c), UCHAR_EAST_ASIAN_WIDTH));
        ASSERT_EQ(ZtChar::getEastAsianWidth(c), w) << std::hex << c;
        ASSERT_EQ(ZtChar::isZenkaku(c), w == U_EA_FULLWIDTH || w == U_EA_WIDE) << std::hex << c;
        ASSERT_EQ(ZtChar::isZenkakuAmbiguous(c),
                  w == U_EA_AMBIGUOUS || w == U_EA_FULLWIDTH || w == U_EA_WIDE)
            << std::hex << c;
        ASSERT_EQ(ZtChar::isHankaku(c), w == U_EA_HALFWIDTH) << std::hex << c;
    }
    // The width-value forms.
    EXPECT_TRUE(ZtChar::isZenkaku(U_EA_WIDE));
    EXPECT_TRUE(ZtChar::isZenkaku(U_EA_FULLWIDTH));
    EXPECT_FALSE(ZtChar::isZenkaku(U_EA_AMBIGUOUS));
    EXPECT_TRUE(ZtChar::isZenkakuAmbiguous(U_EA_AMBIGUOUS));
    EXPECT_FALSE(ZtChar::isZenkakuAmbiguous(U_EA_NARROW));
    EXPECT_TRUE(ZtChar::isHankaku(U_EA_HALFWIDTH));
    EXPECT_FALSE(ZtChar::isHankaku(U_EA_NARROW));
    EXPECT_FALSE(ZtChar::isHankaku(U_EA_NEUTRAL));
}

TEST(CharIcu, CategoryValueAndClusterStartSubstituteU32FF) {
    for (UChar32 c = 0; c <= 0x10FFFF; ++c) {
        ASSERT_EQ(ZtChar::getCategory(c), u_charType(sub(c))) << std::hex << c;
        const bool mark = typeIs(sub(c), {U_NON_SPACING_MARK, U_ENCLOSING_MARK,
                                          U_COMBINING_SPACING_MARK, U_CONTROL_CHAR, U_FORMAT_CHAR});
        ASSERT_EQ(ZtChar::isGraphemeCluster(c), !mark) << std::hex << c;
        ASSERT_EQ(ZtChar::isUndefined(c), !u_isdefined(sub(c)) && !ZtChar::isCurrencySymbol(c))
            << std::hex << c;
    }
}

TEST(CharIcu, CategoryTestsUseTheCharacterItself) {
    for (UChar32 c = 0; c <= 0x10FFFF; ++c) {
        ASSERT_EQ(ZtChar::isControl(c), typeIs(c, {U_CONTROL_CHAR, U_FORMAT_CHAR,
                                                   U_PRIVATE_USE_CHAR, U_SURROGATE, U_UNASSIGNED}))
            << std::hex << c;
        const bool letter = typeIs(c, {U_UPPERCASE_LETTER, U_LOWERCASE_LETTER, U_TITLECASE_LETTER,
                                       U_MODIFIER_LETTER, U_OTHER_LETTER});
        const bool number = typeIs(c, {U_DECIMAL_DIGIT_NUMBER, U_LETTER_NUMBER, U_OTHER_NUMBER});
        ASSERT_EQ(ZtChar::isLetter(c), letter) << std::hex << c;
        ASSERT_EQ(ZtChar::isNumber(c), number) << std::hex << c;
        ASSERT_EQ(ZtChar::isLetterNumber(c), letter || number) << std::hex << c;
        ASSERT_EQ(ZtChar::isPunct(c), isPunctType(c) || c == 0xFF5E) << std::hex << c;
        ASSERT_EQ(ZtChar::isSymbol(c),
                  typeIs(c, {U_MATH_SYMBOL, U_CURRENCY_SYMBOL, U_MODIFIER_SYMBOL, U_OTHER_SYMBOL}))
            << std::hex << c;
        ASSERT_EQ(ZtChar::isAlphabetic(c), u_hasBinaryProperty(c, UCHAR_ALPHABETIC))
            << std::hex << c;
    }
    // The category-value form tests the value alone: U+FF5E is a math symbol.
    EXPECT_FALSE(ZtChar::isPunct(static_cast<UCharCategory>(u_charType(0xFF5E))));
    EXPECT_TRUE(ZtChar::isPunct(0xFF5E));
    EXPECT_TRUE(ZtChar::isPunct(U_INITIAL_PUNCTUATION));
    EXPECT_FALSE(ZtChar::isPunct(U_MATH_SYMBOL));
}

TEST(CharIcu, LineBreakClassesUseTheCharacterItself) {
    for (UChar32 c = 0; c <= 0x10FFFF; ++c) {
        const int lb = u_getIntPropertyValue(c, UCHAR_LINE_BREAK);
        ASSERT_EQ(ZtChar::getLineBreak(c), lb) << std::hex << c;
        const bool open = (isPunctType(c) || c == 0xFF5E) && lb == U_LB_OPEN_PUNCTUATION;
        const bool close = (isPunctType(c) || c == 0xFF5E) &&
                           (lb == U_LB_CLOSE_PUNCTUATION || lb == U_LB_CLOSE_PARENTHESIS);
        ASSERT_EQ(ZtChar::isOpenParenEtc(c), open || c == 0x2018 || c == 0x201C) << std::hex << c;
        ASSERT_EQ(ZtChar::isCloseParenEtc(c), close || c == 0x2019 || c == 0x201D) << std::hex << c;
        ASSERT_EQ(ZtChar::isHalfPunct(c), ZtChar::isOpenParenEtc(c) || ZtChar::isCloseParenEtc(c) ||
                                              c == 0x30FB || c == 0xFF1A || c == 0xFF1B)
            << std::hex << c;
    }
    // Hand-picked: quotation marks count as brackets, the comma does not.
    EXPECT_TRUE(ZtChar::isOpenParenEtc(0x300C));
    EXPECT_TRUE(ZtChar::isCloseParenEtc(0x300D));
    EXPECT_TRUE(ZtChar::isCloseParenEtc(')'));
    EXPECT_TRUE(ZtChar::isOpenParenEtc(0x201C));
    EXPECT_FALSE(ZtChar::isOpenParenEtc(','));
    EXPECT_TRUE(ZtChar::isHalfPunct(0xFF1A));
}

TEST(CharIcu, ZeroWidthControlCodes) {
    for (UChar32 c = 0; c <= 0x10FFFF; ++c) {
        bool expected;
        if (c == 0xAD)
            expected = false;
        else if ((c >= 0xFE00 && c < 0xFE10) || (c >= 0xE0100 && c < 0xE01F0))
            expected = true;
        else if (c >= 0x10000 || (c >= 0x20A0 && c < 0x20D0))
            expected = false;
        else if (u_iscntrl(sub(c)))
            expected = true;
        else if (u_isgraph(sub(c)))
            expected = false;
        else
            expected = !u_isblank(sub(c));
        ASSERT_EQ(ZtChar::isZeroWidthControlCode(c), expected) << std::hex << c;
    }
    EXPECT_TRUE(ZtChar::isZeroWidthControlCode(0x200B)); // a format character
    EXPECT_TRUE(ZtChar::isZeroWidthControlCode(0x0000));
    EXPECT_FALSE(ZtChar::isZeroWidthControlCode(' '));
    EXPECT_FALSE(ZtChar::isZeroWidthControlCode('A'));
    EXPECT_FALSE(ZtChar::isZeroWidthControlCode(-1));
}

TEST(CharIcu, IntegerPropertiesSubstituteU32FF) {
    for (UChar32 c = 0; c <= 0x10FFFF; ++c) {
        ASSERT_EQ(ZtChar::getIntPropertyValue(c, UCHAR_BLOCK),
                  u_getIntPropertyValue(sub(c), UCHAR_BLOCK))
            << std::hex << c;
    }
    // ICU 72 knows U+32FF; the substitution shows in its block and its orientation.
    EXPECT_EQ(ZtChar::getIntPropertyValue(0x32FF, UCHAR_BLOCK), UBLOCK_CJK_COMPATIBILITY);
    EXPECT_EQ(ZtChar::getIntPropertyValue(0x32FE, UCHAR_BLOCK),
              UBLOCK_ENCLOSED_CJK_LETTERS_AND_MONTHS);
    EXPECT_EQ(ZtChar::getIntPropertyValue(0x32FF, UCHAR_VERTICAL_ORIENTATION),
              U_VO_TRANSFORMED_UPRIGHT);
    EXPECT_EQ(ZtChar::getEastAsianWidth(0x32FF), ZtChar::getEastAsianWidth(0x337B));
}
