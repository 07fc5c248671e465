// The ZtChar queries backed by ICU, compared with ICU itself over the whole code space. The
// expected values are computed here directly from ICU's own functions; the width, category,
// cluster, block and zero-width queries ask ICU about U+337B in place of U+32FF, the category
// tests and the line-breaking queries about the character itself.
#include <algorithm>

#include <gtest/gtest.h>

#include <unicode/uchar.h>

#include "text_test_util.h"
#include "ztcommon/text.h"

using namespace ZtCommonNS;

namespace {

UChar32 sub(UChar32 c) {
    return c == 0x32FF ? 0x337B : c;
}

bool typeIs(UChar32 c, std::initializer_list<int8_t> types) {
    return std::find(types.begin(), types.end(), u_charType(c)) != types.end();
}

bool isPunctCategory(int t) {
    return t == U_DASH_PUNCTUATION || t == U_START_PUNCTUATION || t == U_END_PUNCTUATION ||
           t == U_CONNECTOR_PUNCTUATION || t == U_OTHER_PUNCTUATION || t == U_INITIAL_PUNCTUATION ||
           t == U_FINAL_PUNCTUATION;
}

bool zeroWidthControl(UChar32 c) {
    if (c == 0xAD)
        return false;
    if ((c >= 0xFE00 && c < 0xFE10) || (c >= 0xE0100 && c < 0xE01F0))
        return true;
    if (c >= 0x10000 || (c >= 0x20A0 && c < 0x20D0))
        return false;
    if (u_iscntrl(sub(c)))
        return true;
    return !u_isgraph(sub(c)) && !u_isblank(sub(c));
}

} // namespace

#define CHECK_AT(actual, expected) ASSERT_EQ(actual, expected) << #actual << " U+" << std::hex << c

TEST(CharIcu, QueriesWithTheU32FFSubstitution) {
    for (UChar32 c = 0; c <= 0x10FFFF; ++c) {
        const auto w =
            static_cast<UEastAsianWidth>(u_getIntPropertyValue(sub(c), UCHAR_EAST_ASIAN_WIDTH));
        CHECK_AT(ZtChar::getEastAsianWidth(c), w);
        CHECK_AT(ZtChar::isZenkaku(c), w == U_EA_FULLWIDTH || w == U_EA_WIDE);
        CHECK_AT(ZtChar::isZenkakuAmbiguous(c),
                 w == U_EA_AMBIGUOUS || w == U_EA_FULLWIDTH || w == U_EA_WIDE);
        CHECK_AT(ZtChar::isHankaku(c), w == U_EA_HALFWIDTH);
        CHECK_AT(ZtChar::getCategory(c), u_charType(sub(c)));
        CHECK_AT(ZtChar::isGraphemeCluster(c),
                 !typeIs(sub(c), {U_NON_SPACING_MARK, U_ENCLOSING_MARK, U_COMBINING_SPACING_MARK,
                                  U_CONTROL_CHAR, U_FORMAT_CHAR}));
        CHECK_AT(ZtChar::isUndefined(c), !u_isdefined(sub(c)) && !ZtChar::isCurrencySymbol(c));
        CHECK_AT(ZtChar::getIntPropertyValue(c, UCHAR_BLOCK),
                 u_getIntPropertyValue(sub(c), UCHAR_BLOCK));
        CHECK_AT(ZtChar::isZeroWidthControlCode(c), zeroWidthControl(c));
    }
    // The width-value forms.
    for (int v = 0; v < U_EA_COUNT; ++v) {
        const auto w = static_cast<UEastAsianWidth>(v);
        EXPECT_EQ(ZtChar::isZenkaku(w), w == U_EA_FULLWIDTH || w == U_EA_WIDE) << v;
        EXPECT_EQ(ZtChar::isZenkakuAmbiguous(w),
                  w == U_EA_AMBIGUOUS || w == U_EA_FULLWIDTH || w == U_EA_WIDE)
            << v;
        EXPECT_EQ(ZtChar::isHankaku(w), w == U_EA_HALFWIDTH) << v;
    }
    // ICU 72 knows U+32FF; the substitution shows in its block and its orientation.
    EXPECT_EQ(ZtChar::getIntPropertyValue(0x32FF, UCHAR_BLOCK), UBLOCK_CJK_COMPATIBILITY);
    EXPECT_EQ(ZtChar::getIntPropertyValue(0x32FE, UCHAR_BLOCK),
              UBLOCK_ENCLOSED_CJK_LETTERS_AND_MONTHS);
    EXPECT_EQ(ZtChar::getIntPropertyValue(0x32FF, UCHAR_VERTICAL_ORIENTATION),
              U_VO_TRANSFORMED_UPRIGHT);
    EXPECT_FALSE(ZtChar::isZeroWidthControlCode(-1));
}

TEST(CharIcu, CategoryAndLineBreakTestsUseTheCharacterItself) {
    for (UChar32 c = 0; c <= 0x10FFFF; ++c) {
        CHECK_AT(ZtChar::isControl(c), typeIs(c, {U_CONTROL_CHAR, U_FORMAT_CHAR, U_PRIVATE_USE_CHAR,
                                                  U_SURROGATE, U_UNASSIGNED}));
        const bool letter = typeIs(c, {U_UPPERCASE_LETTER, U_LOWERCASE_LETTER, U_TITLECASE_LETTER,
                                       U_MODIFIER_LETTER, U_OTHER_LETTER});
        const bool number = typeIs(c, {U_DECIMAL_DIGIT_NUMBER, U_LETTER_NUMBER, U_OTHER_NUMBER});
        const bool punct = isPunctCategory(u_charType(c)) || c == 0xFF5E;
        CHECK_AT(ZtChar::isLetter(c), letter);
        CHECK_AT(ZtChar::isNumber(c), number);
        CHECK_AT(ZtChar::isLetterNumber(c), letter || number);
        CHECK_AT(ZtChar::isPunct(c), punct);
        CHECK_AT(ZtChar::isSymbol(c),
                 typeIs(c, {U_MATH_SYMBOL, U_CURRENCY_SYMBOL, U_MODIFIER_SYMBOL, U_OTHER_SYMBOL}));
        CHECK_AT(ZtChar::isAlphabetic(c), u_hasBinaryProperty(c, UCHAR_ALPHABETIC) != 0);
        const int lb = u_getIntPropertyValue(c, UCHAR_LINE_BREAK);
        CHECK_AT(ZtChar::getLineBreak(c), lb);
        const bool open = (punct && lb == U_LB_OPEN_PUNCTUATION) || c == 0x2018 || c == 0x201C;
        const bool close =
            (punct && (lb == U_LB_CLOSE_PUNCTUATION || lb == U_LB_CLOSE_PARENTHESIS)) ||
            c == 0x2019 || c == 0x201D;
        CHECK_AT(ZtChar::isOpenParenEtc(c), open);
        CHECK_AT(ZtChar::isCloseParenEtc(c), close);
        CHECK_AT(ZtChar::isHalfPunct(c),
                 open || close || c == 0x30FB || c == 0xFF1A || c == 0xFF1B);
    }
    // The category-value form tests the value alone: U+FF5E is a math symbol.
    for (int t = 0; t < U_CHAR_CATEGORY_COUNT; ++t) {
        EXPECT_EQ(ZtChar::isPunct(static_cast<UCharCategory>(t)), isPunctCategory(t)) << t;
    }
    // Hand-picked: corner brackets count as brackets, the comma does not.
    EXPECT_TRUE(ZtChar::isOpenParenEtc(0x300C));
    EXPECT_TRUE(ZtChar::isCloseParenEtc(0x300D));
    EXPECT_FALSE(ZtChar::isOpenParenEtc(','));
}
