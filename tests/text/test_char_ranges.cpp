// The fixed-range classifications of ZtChar: every range boundary of every set, a sample of
// answers written by hand (data/char_ranges_sample.tsv), inputs outside the code space, and
// the small helpers decided by fixed lists.
#include <functional>
#include <map>
#include <span>
#include <string>

#include <gtest/gtest.h>

#include "text_test_util.h"
#include "ztcommon/text.h"
#include "ztcommon/text_ranges.h"

using namespace ZtCommonNS;
using ZtCharRanges::CharRange;

namespace {

struct RangeSet {
    std::function<bool(UChar32)> test;
    std::span<const CharRange> ranges; // empty: not decided by a range list
};

const std::map<std::string, RangeSet>& allSets() {
    using namespace ZtCharRanges;
    static const std::map<std::string, RangeSet> sets = {
        {"isValidChar", {ZtChar::isValidChar, kValidChar}},
        {"isValidChar11", {ZtChar::isValidChar11, kValidChar11}},
        {"isNCNameStartChar", {ZtChar::isNCNameStartChar, kNCNameStartChar}},
        {"isNCNameChar", {ZtChar::isNCNameChar, kNCNameChar}},
        {"isNCNameCharForCSSExp", {ZtChar::isNCNameCharForCSSExp, kNCNameCharForCSSExp}},
        {"isNameStartChar", {ZtChar::isNameStartChar, kNameStartChar}},
        {"isNameChar", {ZtChar::isNameChar, kNameChar}},
        {"isMIMETokenChar", {ZtChar::isMIMETokenChar, kMIMETokenChar}},
        {"isWhitespace", {[](UChar32 c) { return ZtChar::isWhitespace(c); }, kWhitespace}},
        {"isCssWhitespace", {ZtChar::isCssWhitespace, kCssWhitespace}},
        {"isCssWhitespaceWoNewline", {ZtChar::isCssWhitespaceWoNewline, kCssWhitespaceWoNewline}},
        {"isCssNewline", {ZtChar::isCssNewline, kCssNewline}},
        {"isSpaceChar", {ZtChar::isSpaceChar, kSpaceChar}},
        {"isSpaceChar2", {ZtChar::isSpaceChar2, kSpaceChar2}},
        {"isHardBreak", {ZtChar::isHardBreak, kHardBreak}},
        {"isHardBreakOrInvalid", {ZtChar::isHardBreakOrInvalid, kHardBreakOrInvalid}},
        {"isFixedWidthSpaceChar", {ZtChar::isFixedWidthSpaceChar, kFixedWidthSpaceChar}},
        {"isZeroWidthSpaceChar", {ZtChar::isZeroWidthSpaceChar, kZeroWidthSpaceChar}},
        {"isAsciiDigit", {ZtChar::isAsciiDigit, kAsciiDigit}},
        {"isAsciiDigitNonzero", {ZtChar::isAsciiDigitNonzero, kAsciiDigitNonzero}},
        {"isAsciiLetter", {ZtChar::isAsciiLetter, kAsciiLetter}},
        {"isHexDigit", {ZtChar::isHexDigit, kHexDigit}},
        {"isHankakuChar", {ZtChar::isHankakuChar, kHankakuChar}},
        {"isHankakuKana", {ZtChar::isHankakuKana, kHankakuKana}},
        {"isHalf", {ZtChar::isHalf, kHalf}},
        {"isHyphen", {[](UChar32 c) { return ZtChar::isHyphen(c); }, kHyphen}},
        {"isHyphen(noSoftHyphen)",
         {[](UChar32 c) { return ZtChar::isHyphen(c, true); }, kHyphenNoSoftHyphen}},
        {"isMathOperator", {ZtChar::isMathOperator, kMathOperator}},
        {"isArabic", {ZtChar::isArabic, kArabic}},
        {"isArabicScript", {ZtChar::isArabicScript, kArabicScript}},
        {"isHebrewScript", {ZtChar::isHebrewScript, kHebrewScript}},
        {"isDevanagariScript", {ZtChar::isDevanagariScript, kDevanagariScript}},
        {"isPUA", {ZtChar::isPUA, kPUA}},
        {"isZenkakuMidDotEtc", {ZtChar::isZenkakuMidDotEtc, kZenkakuMidDotEtc}},
        {"isFullStopChar", {ZtChar::isFullStopChar, kFullStopChar}},
        {"isVariationSelectorCharacter",
         {ZtChar::isVariationSelectorCharacter, kVariationSelector}},
        {"isIdeographicVariationSelectorCharacter",
         {ZtChar::isIdeographicVariationSelectorCharacter, kIdeographicVariationSelector}},
        {"isCurrencySymbol", {ZtChar::isCurrencySymbol, kCurrencySymbol}},
        {"isBullet", {ZtChar::isBullet, kBullet}},
        {"isAmbiguousHan", {ZtChar::isAmbiguousHan, kAmbiguousHan}},
        {"isKanaKanjiCJK", {ZtChar::isKanaKanjiCJK, kKanaKanjiCJK}},
        {"isNonStarterJIS", {ZtChar::isNonStarterJIS, kNonStarterJIS}},
        {"isNoVerticalChar", {ZtChar::isNoVerticalChar, kNoVertical}},
        {"isSymbolJIS", {ZtChar::isSymbolJIS, {}}},
    };
    return sets;
}

} // namespace

TEST(CharRanges, EveryListIsSortedAndHoldsOnBothSidesOfEachBoundary) {
    for (const auto& [name, set] : allSets()) {
        SCOPED_TRACE(name);
        for (size_t i = 0; i < set.ranges.size(); ++i) {
            const CharRange& r = set.ranges[i];
            ASSERT_TRUE(r.first >= 0 && r.first <= r.last && r.last <= 0x10FFFF);
            if (i > 0) { // neither overlapping nor touching the previous one
                ASSERT_GT(r.first, set.ranges[i - 1].last + 1);
            }
            EXPECT_FALSE(set.test(r.first - 1)) << std::hex << r.first - 1;
            EXPECT_TRUE(set.test(r.first)) << std::hex << r.first;
            EXPECT_TRUE(set.test(r.first + (r.last - r.first) / 2)) << std::hex << r.first;
            EXPECT_TRUE(set.test(r.last)) << std::hex << r.last;
            EXPECT_FALSE(set.test(r.last + 1)) << std::hex << r.last + 1;
        }
        for (UChar32 c : {-1, -0x80, INT32_MIN, 0x110000, 0x7FFFFFFF})
            EXPECT_FALSE(set.test(c)) << c;
    }
}

TEST(CharRanges, HandWrittenSample) {
    for (const Row& row : dataRows("char_ranges_sample.tsv")) {
        ASSERT_EQ(allSets().count(row.at(0)), 1u) << row[0];
        for (UChar32 c : hexList(row.at(2)))
            EXPECT_EQ(allSets().at(row[0]).test(c), row[1] == "1")
                << row[0] << " " << std::hex << c;
    }
}

TEST(CharRanges, InseparablePairsByMethod) {
    const std::map<std::string, int> methods = {{"NONE", INSEPARABLECHAR_NONE},
                                                {"JIS", INSEPARABLECHAR_JIS},
                                                {"UAX14", INSEPARABLECHAR_UAX14},
                                                {"ALL", INSEPARABLECHAR_ALL},
                                                {"BOGUS", 99}};
    for (const Row& row : dataRows("inseparable.tsv")) {
        const UChar32 c = hex(row.at(1)), next = hex(row.at(2));
        const bool expected = row.at(3) == "1";
        const auto method = static_cast<INSEPARABLECHAR_METHOD>(methods.at(row[0]));
        EXPECT_EQ(ZtChar::isInseparableCharEx(c, next, method), expected) << row[0] << row[1];
        if (row[0] == "JIS") {
            EXPECT_EQ(ZtChar::isInseparableChar(c, next), expected) << row[1] << " " << row[2];
        }
    }
}

TEST(CharRanges, Hex2digMakesNoCheckAndLastReadsTheEnd) {
    const std::pair<char, int> digits[] = {{'0', 0},  {'9', 9},  {'A', 10}, {'a', 10},
                                           {'F', 15}, {'f', 15}, {'g', 16}, {'G', 16}};
    for (auto [c, value] : digits)
        EXPECT_EQ(ZtChar::hex2dig(c), value) << c;
    EXPECT_EQ(ZtChar::last(u"ab"), 0x62);
    EXPECT_EQ(ZtChar::last32(u"ab"), U'b');
    EXPECT_EQ(int(ZtChar::last(u"a\U00020000")), 0xDC00);
    EXPECT_EQ(ZtChar::last32(u"a\U00020000"), 0x20000);
    EXPECT_EQ(int(ZtChar::last(u"")), 0xFFFF);
    EXPECT_EQ(ZtChar::last32(u""), 0xFFFF);
}
