// The fixed-range classifications of ZtChar: every range boundary of every set, a hand-written
// sample of answers taken from the definition, and inputs outside the code space.
#include <algorithm>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "text_test_util.h"
#include "ztcommon/text.h"
#include "ztcommon/text_ranges.h"

using namespace ZtCommonNS;
using ZtCharRanges::CharRange;

namespace {

struct RangeSet {
    const char* name;
    std::function<bool(UChar32)> test;
    std::span<const CharRange> ranges;
};

std::vector<RangeSet> allSets() {
    using namespace ZtCharRanges;
    return {
        {"isValidChar", ZtChar::isValidChar, kValidChar},
        {"isValidChar11", ZtChar::isValidChar11, kValidChar11},
        {"isNCNameStartChar", ZtChar::isNCNameStartChar, kNCNameStartChar},
        {"isNCNameChar", ZtChar::isNCNameChar, kNCNameChar},
        {"isNCNameCharForCSSExp", ZtChar::isNCNameCharForCSSExp, kNCNameCharForCSSExp},
        {"isNameStartChar", ZtChar::isNameStartChar, kNameStartChar},
        {"isNameChar", ZtChar::isNameChar, kNameChar},
        {"isMIMETokenChar", ZtChar::isMIMETokenChar, kMIMETokenChar},
        {"isWhitespace", [](UChar32 c) { return ZtChar::isWhitespace(c); }, kWhitespace},
        {"isCssWhitespace", ZtChar::isCssWhitespace, kCssWhitespace},
        {"isCssWhitespaceWoNewline", ZtChar::isCssWhitespaceWoNewline, kCssWhitespaceWoNewline},
        {"isCssNewline", ZtChar::isCssNewline, kCssNewline},
        {"isSpaceChar", ZtChar::isSpaceChar, kSpaceChar},
        {"isSpaceChar2", ZtChar::isSpaceChar2, kSpaceChar2},
        {"isHardBreak", ZtChar::isHardBreak, kHardBreak},
        {"isHardBreakOrInvalid", ZtChar::isHardBreakOrInvalid, kHardBreakOrInvalid},
        {"isFixedWidthSpaceChar", ZtChar::isFixedWidthSpaceChar, kFixedWidthSpaceChar},
        {"isZeroWidthSpaceChar", ZtChar::isZeroWidthSpaceChar, kZeroWidthSpaceChar},
        {"isAsciiDigit", ZtChar::isAsciiDigit, kAsciiDigit},
        {"isAsciiDigitNonzero", ZtChar::isAsciiDigitNonzero, kAsciiDigitNonzero},
        {"isAsciiLetter", ZtChar::isAsciiLetter, kAsciiLetter},
        {"isHexDigit", ZtChar::isHexDigit, kHexDigit},
        {"isHankakuChar", ZtChar::isHankakuChar, kHankakuChar},
        {"isHankakuKana", ZtChar::isHankakuKana, kHankakuKana},
        {"isHalf", ZtChar::isHalf, kHalf},
        {"isHyphen", [](UChar32 c) { return ZtChar::isHyphen(c); }, kHyphen},
        {"isHyphen(noSoftHyphen)", [](UChar32 c) { return ZtChar::isHyphen(c, true); },
         kHyphenNoSoftHyphen},
        {"isMathOperator", ZtChar::isMathOperator, kMathOperator},
        {"isArabic", ZtChar::isArabic, kArabic},
        {"isArabicScript", ZtChar::isArabicScript, kArabicScript},
        {"isHebrewScript", ZtChar::isHebrewScript, kHebrewScript},
        {"isDevanagariScript", ZtChar::isDevanagariScript, kDevanagariScript},
        {"isPUA", ZtChar::isPUA, kPUA},
        {"isZenkakuMidDotEtc", ZtChar::isZenkakuMidDotEtc, kZenkakuMidDotEtc},
        {"isFullStopChar", ZtChar::isFullStopChar, kFullStopChar},
        {"isVariationSelectorCharacter", ZtChar::isVariationSelectorCharacter, kVariationSelector},
        {"isIdeographicVariationSelectorCharacter", ZtChar::isIdeographicVariationSelectorCharacter,
         kIdeographicVariationSelector},
        {"isCurrencySymbol", ZtChar::isCurrencySymbol, kCurrencySymbol},
        {"isBullet", ZtChar::isBullet, kBullet},
        {"isAmbiguousHan", ZtChar::isAmbiguousHan, kAmbiguousHan},
        {"isKanaKanjiCJK", ZtChar::isKanaKanjiCJK, kKanaKanjiCJK},
        {"isNonStarterJIS", ZtChar::isNonStarterJIS, kNonStarterJIS},
        {"isNoVerticalChar", ZtChar::isNoVerticalChar, kNoVertical},
    };
}

} // namespace

TEST(CharRanges, ListsAreSortedAndNeitherOverlapNorTouch) {
    for (const RangeSet& set : allSets()) {
        SCOPED_TRACE(set.name);
        ASSERT_FALSE(set.ranges.empty());
        for (size_t i = 0; i < set.ranges.size(); ++i) {
            EXPECT_LE(set.ranges[i].first, set.ranges[i].last);
            EXPECT_GE(set.ranges[i].first, 0);
            EXPECT_LE(set.ranges[i].last, 0x10FFFF);
            if (i > 0) {
                EXPECT_GT(set.ranges[i].first, set.ranges[i - 1].last + 1);
            }
        }
    }
}

TEST(CharRanges, EveryBoundaryOnBothSides) {
    for (const RangeSet& set : allSets()) {
        SCOPED_TRACE(set.name);
        for (const CharRange& r : set.ranges) {
            EXPECT_FALSE(set.test(r.first - 1)) << std::hex << r.first - 1;
            EXPECT_TRUE(set.test(r.first)) << std::hex << r.first;
            EXPECT_TRUE(set.test(r.first + (r.last - r.first) / 2)) << std::hex << r.first;
            EXPECT_TRUE(set.test(r.last)) << std::hex << r.last;
            EXPECT_FALSE(set.test(r.last + 1)) << std::hex << r.last + 1;
        }
    }
}

TEST(CharRanges, OutsideTheCodeSpaceNothingMatches) {
    for (const RangeSet& set : allSets()) {
        SCOPED_TRACE(set.name);
        for (UChar32 c : {-1, -0x80, INT32_MIN, 0x110000, 0x7FFFFFFF})
            EXPECT_FALSE(set.test(c)) << c;
    }
}

// Expectations written by hand from the definition of each set, independent of the range
// lists above.
TEST(CharRanges, HandWrittenSample) {
    struct Case {
        const char* name;
        UChar32 c;
        bool expected;
    };
    const Case cases[] = {
        {"isValidChar", 0xFFFE, false},
        {"isValidChar", 0x10FFFF, true},
        {"isValidChar", 0x110000, false},
        {"isValidChar", 0x1F, false},
        {"isValidChar", 0xD800, false},
        {"isValidChar", 0x85, true},
        {"isValidChar11", 0x85, true},
        {"isValidChar11", 0x7F, false},
        {"isValidChar11", 0x86, false},
        {"isValidChar11", 0x9F, false},
        {"isNCNameStartChar", 0xF0000, false},
        {"isNCNameStartChar", 0xEFFFF, true},
        {"isNCNameStartChar", ':', false},
        {"isNCNameStartChar", '-', false},
        {"isNCNameStartChar", 0xD7, false},
        {"isNCNameStartChar", 0x37E, false},
        {"isNCNameStartChar", 0x3000, false},
        {"isNCNameStartChar", 0x3001, true},
        {"isNCNameChar", '-', true},
        {"isNCNameChar", 0xB7, true},
        {"isNCNameChar", 0x300, true},
        {"isNCNameChar", 0x2040, true},
        {"isNCNameChar", 0x2041, false},
        {"isNCNameCharForCSSExp", '-', false},
        {"isNCNameCharForCSSExp", '.', true},
        {"isNameStartChar", ':', true},
        {"isNameChar", ':', true},
        {"isMIMETokenChar", '!', true},
        {"isMIMETokenChar", '"', false},
        {"isMIMETokenChar", '{', true},
        {"isMIMETokenChar", '~', true},
        {"isMIMETokenChar", '@', false},
        {"isMIMETokenChar", '\\', false},
        {"isMIMETokenChar", ' ', false},
        {"isMIMETokenChar", 0x7F, false},
        {"isWhitespace", 0xC, false},
        {"isWhitespace", 0xA0, false},
        {"isCssWhitespace", 0xC, true},
        {"isCssWhitespaceWoNewline", '\n', false},
        {"isCssNewline", '\r', true},
        {"isSpaceChar", 0xA0, true},
        {"isSpaceChar", '\t', false},
        {"isSpaceChar2", '\t', true},
        {"isHardBreak", 0xD, false},
        {"isHardBreak", 0x2029, true},
        {"isHardBreakOrInvalid", 0xFFFF, true},
        {"isFixedWidthSpaceChar", 0x200B, false},
        {"isFixedWidthSpaceChar", 0x205F, true},
        {"isZeroWidthSpaceChar", 0xFEFF, true},
        {"isAsciiDigitNonzero", '0', false},
        {"isHexDigit", 'f', true},
        {"isHexDigit", 'G', false},
        {"isHexDigit", 0xFF10, false},
        {"isHankakuChar", 0x7F, true},
        {"isHankakuChar", 0xFF9F, true},
        {"isHankakuChar", 0xFFA0, false},
        {"isHankakuKana", 0xFF60, false},
        {"isHalf", 0xFF, true},
        {"isHalf", 0x100, false},
        {"isHalf", 0x2010, true},
        {"isHalf", 0x2011, false},
        {"isHalf", 0x20AC, true},
        {"isHalf", 0x2122, true},
        {"isHalf", 0x2015, false},
        {"isHyphen", 0xAD, true},
        {"isHyphen(noSoftHyphen)", 0xAD, false},
        {"isHyphen", 0x2012, false},
        {"isMathOperator", 0x1D7FF, true},
        {"isMathOperator", 0x2B00, false},
        {"isArabicScript", 0x0661, false},
        {"isArabicScript", 0x0627, true},
        {"isArabicScript", 0x06F9, false},
        {"isArabicScript", 0x06FA, true},
        {"isArabic", 0x0661, true},
        {"isCurrencySymbol", '$', true},
        {"isCurrencySymbol", 0xA6, false},
        {"isCurrencySymbol", 0x20BD, true},
        {"isCurrencySymbol", 0x20BE, false},
        {"isCurrencySymbol", 0xFFE6, true},
        {"isBullet", 0x2219, true},
        {"isBullet", 0x2024, false},
        {"isAmbiguousHan", 0x4DB5, true},
        {"isAmbiguousHan", 0x4DB6, false},
        {"isAmbiguousHan", 0xFF61, false},
        {"isKanaKanjiCJK", 0x3000, true},
        {"isKanaKanjiCJK", 0xFFE8, false},
        {"isNonStarterJIS", 0xFF70, true},
        {"isNonStarterJIS", 0xFF71, false},
        {"isNonStarterJIS", 0x3042, false},
        {"isNonStarterJIS", 0x30FC, true},
        {"isNoVerticalChar", 0x2018, false},
        {"isNoVerticalChar", 0x2019, false},
        {"isNoVerticalChar", 0x201A, true},
        {"isNoVerticalChar", 0x1100, false},
        {"isNoVerticalChar", 0x3042, false},
        {"isNoVerticalChar", 'A', true},
        {"isNoVerticalChar", 0x1FFFF, true},
        {"isNoVerticalChar", 0x20000, false},
    };
    const auto sets = allSets();
    for (const Case& k : cases) {
        auto it = std::find_if(sets.begin(), sets.end(),
                               [&](const RangeSet& s) { return std::string(s.name) == k.name; });
        ASSERT_NE(it, sets.end()) << k.name;
        EXPECT_EQ(it->test(k.c), k.expected) << k.name << " U+" << std::hex << k.c;
    }
}

TEST(CharNames, NameStrings) {
    EXPECT_TRUE(ZtChar::isNCNameStr(u"a"));
    EXPECT_TRUE(ZtChar::isNCNameStr(u"_x-1.y\u00B7"));
    EXPECT_FALSE(ZtChar::isNCNameStr(u""));
    EXPECT_FALSE(ZtChar::isNCNameStr(u"1a"));
    EXPECT_FALSE(ZtChar::isNCNameStr(u"a:b"));
    EXPECT_TRUE(ZtChar::isNameStr(u"a:b"));
    EXPECT_TRUE(ZtChar::isNameStr(u":"));
    EXPECT_FALSE(ZtChar::isNameStr(u"-a"));
    // A supplementary start character, then one from plane 15, which is not a name character.
    EXPECT_TRUE(ZtChar::isNCNameStr(u"\U00020000x"));
    EXPECT_FALSE(ZtChar::isNCNameStr(u"x\U000F0000"));
    // Lone surrogates are no name characters, wherever they stand.
    EXPECT_FALSE(ZtChar::isNCNameStr(UnicodeString(u"a").append(UChar(0xD800))));
    EXPECT_FALSE(ZtChar::isNCNameStr(UnicodeString(UChar(0xDC00))));
}

TEST(CharNames, WhitespaceStrings) {
    EXPECT_TRUE(ZtChar::isEmptyOrWhitespace(u""));
    EXPECT_TRUE(ZtChar::isEmptyOrWhitespace(u" \t\r\n"));
    EXPECT_FALSE(ZtChar::isEmptyOrWhitespace(u" \u00A0"));
    EXPECT_FALSE(ZtChar::isWhitespace(UnicodeString(u"")));
    EXPECT_TRUE(ZtChar::isWhitespace(UnicodeString(u"\n")));
    EXPECT_FALSE(ZtChar::isWhitespace(UnicodeString(u" x ")));
}

TEST(CharNames, Hex2digMakesNoCheck) {
    EXPECT_EQ(ZtChar::hex2dig('0'), 0);
    EXPECT_EQ(ZtChar::hex2dig('9'), 9);
    EXPECT_EQ(ZtChar::hex2dig('A'), 10);
    EXPECT_EQ(ZtChar::hex2dig('a'), 10);
    EXPECT_EQ(ZtChar::hex2dig('F'), 15);
    EXPECT_EQ(ZtChar::hex2dig('f'), 15);
    EXPECT_EQ(ZtChar::hex2dig('g'), 16);
    EXPECT_EQ(ZtChar::hex2dig('G'), 16);
}

TEST(CharNames, InseparablePairs) {
    for (UChar32 c : {0x2014, 0x2015, 0x2024, 0x2025, 0x2026}) {
        EXPECT_TRUE(ZtChar::isInseparableChar(c, c)) << std::hex << c;
        EXPECT_FALSE(ZtChar::isInseparableChar(c, c == 0x2014 ? 0x2015 : 0x2014)) << c;
    }
    EXPECT_FALSE(ZtChar::isInseparableChar(0x2013, 0x2013));
    EXPECT_FALSE(ZtChar::isInseparableChar(0x2027, 0x2027));
    EXPECT_TRUE(ZtChar::isInseparableChar(0x3033, 0x3035));
    EXPECT_TRUE(ZtChar::isInseparableChar(0x3034, 0x3035));
    EXPECT_FALSE(ZtChar::isInseparableChar(0x3035, 0x3035));
    EXPECT_FALSE(ZtChar::isInseparableChar(0x3033, 0x3033));
    EXPECT_FALSE(ZtChar::isInseparableChar(0x3032, 0x3035));
}
