// ZtWritingMode and ZtOrientation: the mode table, the edges of each mode as XSL 1.1 and CSS
// Writing Modes place them, keyword pairs as CSS reads them, page sides and quarter turns.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <string>

#include "value_test_util.h"
#include "ztcommon/writing_mode.h"

using namespace ZtCommonNS;
using namespace ZtCommonNS::test;

namespace {

std::string str(ZtName name) {
    return utf8(name.getNameString());
}

ZtName nm(const std::string& s) {
    return ZtName(text(s));
}

bool isOneOf(const std::string& s, const char* a, const char* b) {
    return s == a || s == b;
}

// Columns of data/writing_modes.tsv.
enum { Code, Keyword, Ip, Bp, Shift, Paging, Before, After, Start, End, Columns };

} // namespace

TEST(WritingMode, EveryCodeGivesItsRowOfTheXslTable) {
    const auto modes = readRows("writing_modes.tsv", Columns);
    ASSERT_EQ(modes.size(), 8u);
    for (const auto& m : modes) {
        SCOPED_TRACE(m[Keyword]);
        const ZtWritingMode mode(nm(m[Keyword]));
        EXPECT_EQ(mode.getCode(), std::stoi(m[Code]));
        EXPECT_EQ(ZtWritingMode::fromCode(mode.getCode()), mode);
        EXPECT_EQ(str(mode.getName()), m[Keyword]);
        EXPECT_EQ(str(ZtName(ZtNameEnum(mode))), m[Keyword]);
        EXPECT_EQ(str(mode.getIPDirection()), m[Ip]);
        EXPECT_EQ(str(mode.getBPDirection()), m[Bp]);
        EXPECT_EQ(str(mode.getShiftDirection()), m[Shift]);
        EXPECT_EQ(str(mode.getPagingDirection()), m[Paging]);

        // The predicates, read off the progressions rather than the code.
        const std::string& ip = m[Ip];
        const std::string& bp = m[Bp];
        EXPECT_EQ(mode.isLTR(), ip == "left-to-right");
        EXPECT_EQ(mode.isRTL(), ip == "right-to-left");
        EXPECT_EQ(mode.isTTB(), ip == "top-to-bottom");
        EXPECT_EQ(mode.isBTT(), ip == "bottom-to-top");
        EXPECT_EQ(mode.isRtlOrBtt(), isOneOf(ip, "right-to-left", "bottom-to-top"));
        EXPECT_EQ(mode.isVerticalText(), isOneOf(ip, "top-to-bottom", "bottom-to-top"));
        EXPECT_EQ(mode.isBPDirLtrOrBtt(), isOneOf(bp, "left-to-right", "bottom-to-top"));
        EXPECT_EQ(mode.isBPDirRtlOrBtt(), isOneOf(bp, "right-to-left", "bottom-to-top"));
        EXPECT_EQ(str(mode.getDirectionName()), mode.isRtlOrBtt() ? "rtl" : "ltr");
        // "top-to-bottom" in short is "tb": the first letters of its two words.
        EXPECT_EQ(str(mode.getBlockProgressionName()),
                  (std::string{bp[0], bp[bp.find("-to-") + 4]}));
        const ZtValue value = mode;
        EXPECT_EQ(str(value.getNameValue()), m[Keyword]);
        EXPECT_EQ(ZtWritingMode(value), mode);

        // The edges, both ways; other names pass through.
        for (int edge : {Before, After, Start, End}) {
            const char* relative[] = {"before", "after", "start", "end"};
            EXPECT_EQ(str(mode.relative2absolute(nm(relative[edge - Before]))), m[edge]);
            EXPECT_EQ(str(mode.absolute2relative(nm(m[edge]))), relative[edge - Before]);
        }
        EXPECT_EQ(mode.relative2absolute(nm("center")), nm("center"));
        EXPECT_EQ(mode.absolute2relative(nm("inside")), nm("inside"));

        // A book bound on the right (pages turn right-to-left) starts with an odd page on the
        // left.
        const bool rightToLeft = m[Paging] == "right-to-left";
        EXPECT_EQ(str(mode.leftRight2oddEven(nm("left"))), rightToLeft ? "odd" : "even");
        EXPECT_EQ(str(mode.leftRight2oddEven(nm("right"))), rightToLeft ? "even" : "odd");
        EXPECT_EQ(str(mode.oddEven2leftRight(nm("odd"))), rightToLeft ? "left" : "right");
        EXPECT_EQ(str(mode.oddEven2leftRight(nm("even"))), rightToLeft ? "right" : "left");
        EXPECT_EQ(mode.leftRight2oddEven(nm("top")), nm("top"));
        EXPECT_EQ(mode.oddEven2leftRight(nm("left")), nm("left"));

        // Keyword pairs rebuild the mode.
        EXPECT_EQ(ZtWritingMode(mode.getName(), ZtName()), mode);
        EXPECT_EQ(ZtWritingMode(mode.getName(), mode.getDirectionName()), mode);
        EXPECT_EQ(ZtWritingMode(mode.getName(), mode.getIPDirection()), mode);
        EXPECT_EQ(ZtWritingMode(mode.getBPDirection(), mode.getDirectionName()), mode);
    }
}

TEST(WritingMode, OneKeywordKnowsOnlyTheXslNamesAndLrRlIsAsymmetric) {
    EXPECT_EQ(ZtWritingMode(nm("lr")).getCode(), 0);
    EXPECT_EQ(ZtWritingMode(nm("rl")).getCode(), 1);
    EXPECT_EQ(ZtWritingMode(nm("tb")).getCode(), 2);
    for (const char* other : {"bt", "horizontal-tb", "vertical-rl", "vertical-lr", "sideways-lr",
                              "lr-alternating-rl-bt", "inherit", "", "no-such-mode"})
        EXPECT_EQ(ZtWritingMode(nm(other)).getCode(), 0) << other;
    // Only name values count.
    EXPECT_EQ(ZtWritingMode(ZtValue(u"tb-rl")).getCode(), 0);
    EXPECT_EQ(ZtWritingMode(ZtValue(2)).getCode(), 0);
    // fromCode keeps three bits.
    EXPECT_EQ(ZtWritingMode::fromCode(10).getCode(), 2);
    EXPECT_EQ(ZtWritingMode::fromCode(-1).getCode(), 7);
}

TEST(WritingMode, KeywordWithDirection) {
    const auto pairs = readRows("writing_mode_pairs.tsv", 3);
    ASSERT_EQ(pairs.size(), 39u);
    for (const auto& p : pairs)
        EXPECT_EQ(str(ZtWritingMode(nm(p[0]), nm(p[1])).getName()), p[2]) << p[0] << ", " << p[1];
}

TEST(WritingMode, PerpendicularModes) {
    const ZtWritingMode horizontal(NM_lr_tb), horizontal2(NM_rl_bt);
    const ZtWritingMode vertical(NM_tb_rl), vertical2(NM_bt_lr);
    for (int degrees : {0, 180, 90, 270, -90}) {
        const bool turned = degrees % 180 != 0; // a quarter turn
        EXPECT_EQ(horizontal.isPerpendicularTo(horizontal2, degrees), turned) << degrees;
        EXPECT_EQ(vertical.isPerpendicularTo(vertical2, degrees), turned) << degrees;
        EXPECT_EQ(horizontal.isPerpendicularTo(vertical, degrees), !turned) << degrees;
        EXPECT_EQ(vertical2.isPerpendicularTo(horizontal2, degrees), !turned) << degrees;
    }
}

TEST(Orientation, RoundsToQuarterTurnsWithHalvesAwayFromZero) {
    const std::pair<int, int> cases[] = {
        {0, 0},     {44, 0},     {45, 90},    {90, 90},  {134, 90}, {135, 180},
        {225, 270}, {314, 270},  {315, 0},    {360, 0},  {-44, 0},  {-45, 270},
        {-90, 270}, {-135, 180}, {-180, 180}, {-315, 0}, {720, 0},  {-405, 270}};
    for (const auto& [degrees, expected] : cases)
        EXPECT_EQ(ZtOrientation(degrees).getDegrees(), expected) << degrees;
    // Against an independent formula: the nearest multiple of 90 (halves away from zero),
    // reduced modulo 360, over a span of inputs and at the ends of int.
    const auto reference = [](long long degrees) {
        const long long quarters = std::llround(static_cast<double>(degrees) / 90.0);
        return static_cast<int>(((quarters % 4) + 4) % 4 * 90);
    };
    for (int degrees = -2000; degrees <= 2000; ++degrees)
        ASSERT_EQ(ZtOrientation(degrees).getDegrees(), reference(degrees)) << degrees;
    for (int degrees : {INT_MAX, INT_MAX - 44, INT_MIN, INT_MIN + 1, INT_MIN + 45})
        EXPECT_EQ(ZtOrientation(degrees).getDegrees(), reference(degrees)) << degrees;
    // From values by their rounded integer; as a value, an integer.
    EXPECT_EQ(ZtOrientation(ZtValue(134.6f)).getDegrees(), 180); // rounds to 135 first
    EXPECT_EQ(ZtOrientation(ZtValue(nm("auto"))).getDegrees(), 0);
    const ZtValue value = ZtOrientation(450);
    EXPECT_TRUE(value.isInteger());
    EXPECT_EQ(value.getIntegerValue(), 90);
    EXPECT_TRUE(ZtOrientation(-90).isPerpendicular());
    EXPECT_FALSE(ZtOrientation(180).isPerpendicular());
}
