// ZtWritingMode and ZtOrientation: the mode table, the edges of each mode as XSL 1.1 and CSS
// Writing Modes place them, keyword pairs as CSS reads them, page sides and quarter turns.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <string>

#include "ztcommon/writing_mode.h"

using namespace ZtCommonNS;

namespace {

std::string str(ZtName name) {
    std::string out;
    return name.getNameString().toUTF8String(out);
}

ZtName nm(const char* text) {
    return ZtName(UnicodeString::fromUTF8(text));
}

// Each mode as the XSL 1.1 writing-mode property describes it: inline and block progression,
// shift and paging direction, and where the before, after, start and end edges of an area lie
// (before where blocks begin, start where lines begin).
struct ModeFacts {
    int code;
    const char* keyword;
    const char* ip;
    const char* bp;
    const char* shift;
    const char* paging;
    const char* before;
    const char* after;
    const char* start;
    const char* end;
};

const ModeFacts kModes[] = {
    {0, "lr-tb", "left-to-right", "top-to-bottom", "bottom-to-top", "left-to-right", "top",
     "bottom", "left", "right"},
    {1, "rl-tb", "right-to-left", "top-to-bottom", "bottom-to-top", "right-to-left", "top",
     "bottom", "right", "left"},
    {2, "tb-rl", "top-to-bottom", "right-to-left", "left-to-right", "right-to-left", "right",
     "left", "top", "bottom"},
    {3, "bt-rl", "bottom-to-top", "right-to-left", "left-to-right", "right-to-left", "right",
     "left", "bottom", "top"},
    {4, "lr-bt", "left-to-right", "bottom-to-top", "bottom-to-top", "left-to-right", "bottom",
     "top", "left", "right"},
    {5, "rl-bt", "right-to-left", "bottom-to-top", "bottom-to-top", "right-to-left", "bottom",
     "top", "right", "left"},
    {6, "tb-lr", "top-to-bottom", "left-to-right", "right-to-left", "left-to-right", "left",
     "right", "top", "bottom"},
    {7, "bt-lr", "bottom-to-top", "left-to-right", "right-to-left", "left-to-right", "left",
     "right", "bottom", "top"},
};

bool isOneOf(const std::string& s, const char* a, const char* b) {
    return s == a || s == b;
}

} // namespace

TEST(WritingMode, EveryCodeGivesItsRowOfTheTable) {
    for (const ModeFacts& m : kModes) {
        SCOPED_TRACE(m.keyword);
        const ZtWritingMode mode(nm(m.keyword));
        EXPECT_EQ(mode.getCode(), m.code);
        EXPECT_EQ(ZtWritingMode::fromCode(m.code), mode);
        EXPECT_EQ(str(mode.getName()), m.keyword);
        EXPECT_EQ(str(ZtName(ZtNameEnum(mode))), m.keyword);
        EXPECT_EQ(str(mode.getIPDirection()), m.ip);
        EXPECT_EQ(str(mode.getBPDirection()), m.bp);
        EXPECT_EQ(str(mode.getShiftDirection()), m.shift);
        EXPECT_EQ(str(mode.getPagingDirection()), m.paging);

        // The predicates, read off the progressions rather than the code.
        const std::string ip = m.ip;
        const std::string bp = m.bp;
        EXPECT_EQ(mode.isLTR(), ip == "left-to-right");
        EXPECT_EQ(mode.isRTL(), ip == "right-to-left");
        EXPECT_EQ(mode.isTTB(), ip == "top-to-bottom");
        EXPECT_EQ(mode.isBTT(), ip == "bottom-to-top");
        EXPECT_EQ(mode.isRtlOrBtt(), isOneOf(ip, "right-to-left", "bottom-to-top"));
        EXPECT_EQ(mode.isVerticalText(), isOneOf(ip, "top-to-bottom", "bottom-to-top"));
        EXPECT_EQ(mode.isBPDirLtrOrBtt(), isOneOf(bp, "left-to-right", "bottom-to-top"));
        EXPECT_EQ(mode.isBPDirRtlOrBtt(), isOneOf(bp, "right-to-left", "bottom-to-top"));
        EXPECT_EQ(str(mode.getDirectionName()), mode.isRtlOrBtt() ? "rtl" : "ltr");
        const char* shortBp = bp == "top-to-bottom"   ? "tb"
                              : bp == "right-to-left" ? "rl"
                              : bp == "bottom-to-top" ? "bt"
                                                      : "lr";
        EXPECT_EQ(str(mode.getBlockProgressionName()), shortBp);

        const ZtValue value = mode;
        EXPECT_TRUE(value.isName());
        EXPECT_EQ(str(value.getNameValue()), m.keyword);
        EXPECT_EQ(ZtWritingMode(value), mode);
    }
}

TEST(WritingMode, EdgesLieWhereXslAndCssPutThem) {
    for (const ModeFacts& m : kModes) {
        SCOPED_TRACE(m.keyword);
        const ZtWritingMode mode = ZtWritingMode::fromCode(m.code);
        const std::pair<const char*, const char*> edges[] = {
            {"before", m.before}, {"after", m.after}, {"start", m.start}, {"end", m.end}};
        for (const auto& [relative, absolute] : edges) {
            EXPECT_EQ(str(mode.relative2absolute(nm(relative))), absolute) << relative;
            EXPECT_EQ(str(mode.absolute2relative(nm(absolute))), relative) << absolute;
        }
        // Other names pass through both ways.
        EXPECT_EQ(mode.relative2absolute(nm("center")), nm("center"));
        EXPECT_EQ(mode.absolute2relative(nm("inside")), nm("inside"));
        EXPECT_EQ(mode.relative2absolute(ZtName()), ZtName());
    }
}

TEST(WritingMode, OneKeywordKnowsOnlyTheXslNamesAndLrRlIsAsymmetric) {
    EXPECT_EQ(ZtWritingMode(nm("lr")).getCode(), 0);
    EXPECT_EQ(ZtWritingMode(nm("rl")).getCode(), 1);
    EXPECT_EQ(ZtWritingMode(nm("tb")).getCode(), 2);
    EXPECT_EQ(ZtWritingMode(NM_rl).getCode(), 1);
    for (const char* other : {"bt", "horizontal-tb", "vertical-rl", "vertical-lr", "sideways-lr",
                              "lr-alternating-rl-bt", "inherit", "", "no-such-mode"})
        EXPECT_EQ(ZtWritingMode(nm(other)).getCode(), 0) << other;
    EXPECT_EQ(ZtWritingMode().getCode(), 0);
    // Only name values count.
    EXPECT_EQ(ZtWritingMode(ZtValue(u"tb-rl")).getCode(), 0);
    EXPECT_EQ(ZtWritingMode(ZtValue(2)).getCode(), 0);
    EXPECT_EQ(ZtWritingMode(ZtValue(nm("bt-lr"))).getCode(), 7);
    // fromCode keeps three bits.
    EXPECT_EQ(ZtWritingMode::fromCode(10).getCode(), 2);
    EXPECT_EQ(ZtWritingMode::fromCode(-1).getCode(), 7);
}

TEST(WritingMode, CssWritingModeAndDirectionGiveTheModesOfCssWritingModes) {
    // CSS Writing Modes 4: writing-mode decides the block flow, direction the inline base
    // direction; in sideways-lr the text is turned counter-clockwise and ltr runs upwards.
    const struct {
        const char* mode;
        const char* ltr;
        const char* rtl;
    } css[] = {
        {"horizontal-tb", "lr-tb", "rl-tb"}, {"vertical-rl", "tb-rl", "bt-rl"},
        {"vertical-lr", "tb-lr", "bt-lr"},   {"sideways-rl", "tb-rl", "bt-rl"},
        {"sideways-lr", "bt-lr", "tb-lr"},
    };
    for (const auto& row : css) {
        EXPECT_EQ(str(ZtWritingMode(nm(row.mode), nm("ltr")).getName()), row.ltr) << row.mode;
        EXPECT_EQ(str(ZtWritingMode(nm(row.mode), nm("rtl")).getName()), row.rtl) << row.mode;
    }
}

TEST(WritingMode, KeywordWithDirection) {
    const auto code = [](const char* mode, const char* direction) {
        return ZtWritingMode(nm(mode), nm(direction)).getCode();
    };
    // The rows the definition gives.
    EXPECT_EQ(code("tb-rl", "bottom-to-top"), 3);
    EXPECT_EQ(code("tb-rl", "rtl"), 3);
    for (const char* other : {"ltr", "top-to-bottom", "", "inherit", "right-to-left", "up"})
        EXPECT_EQ(code("tb-rl", other), 2) << other;
    EXPECT_EQ(code("top-to-bottom", "right-to-left"), 1);
    EXPECT_EQ(code("top-to-bottom", "rtl"), 1);
    for (const char* other : {"ltr", "left-to-right", "", "bottom-to-top"})
        EXPECT_EQ(code("top-to-bottom", other), 0) << other;
    // Unknown first names give 0 whatever the direction.
    EXPECT_EQ(code("no-such-mode", "rtl"), 0);
    EXPECT_EQ(code("", "bottom-to-top"), 0);
    // The direction overrides the inline sense the keyword spells; an unrelated one keeps it.
    EXPECT_EQ(code("rl-tb", "ltr"), 0);
    EXPECT_EQ(code("rl-tb", "top-to-bottom"), 1);
    EXPECT_EQ(code("bt-rl", ""), 3);
    EXPECT_EQ(code("bt-rl", "ltr"), 2);
    EXPECT_EQ(code("lr-bt", "rtl"), 5);
    EXPECT_EQ(code("tb", "rtl"), 3);
    EXPECT_EQ(code("rl", ""), 1);
    // Block-progression keywords stand for the mode with that block progression.
    EXPECT_EQ(code("bottom-to-top", "rtl"), 5);
    EXPECT_EQ(code("right-to-left", "ltr"), 2);
    EXPECT_EQ(code("left-to-right", "bottom-to-top"), 7);
    // The XSL 1.1 modes whose lines alternate, read by their first line.
    EXPECT_EQ(code("lr-alternating-rl-bt", ""), 4);
    EXPECT_EQ(code("lr-inverting-rl-tb", "rtl"), 1);
    EXPECT_EQ(code("tb-lr-in-lr-pairs", ""), 6);
}

TEST(WritingMode, KeywordPairsRebuildEveryMode) {
    for (int code = 0; code < 8; ++code) {
        const ZtWritingMode mode = ZtWritingMode::fromCode(code);
        SCOPED_TRACE(str(mode.getName()));
        EXPECT_EQ(ZtWritingMode(mode.getName(), ZtName()), mode);
        EXPECT_EQ(ZtWritingMode(mode.getName(), mode.getDirectionName()), mode);
        EXPECT_EQ(ZtWritingMode(mode.getName(), mode.getIPDirection()), mode);
        EXPECT_EQ(ZtWritingMode(mode.getBPDirection(), mode.getDirectionName()), mode);
    }
}

TEST(WritingMode, PageSidesFollowThePagingDirection) {
    for (const ModeFacts& m : kModes) {
        SCOPED_TRACE(m.keyword);
        const ZtWritingMode mode = ZtWritingMode::fromCode(m.code);
        // A book bound on the right (pages turn right-to-left) starts with an odd page on the
        // left.
        const bool rightToLeft = std::string(m.paging) == "right-to-left";
        EXPECT_EQ(str(mode.leftRight2oddEven(nm("left"))), rightToLeft ? "odd" : "even");
        EXPECT_EQ(str(mode.leftRight2oddEven(nm("right"))), rightToLeft ? "even" : "odd");
        EXPECT_EQ(str(mode.oddEven2leftRight(nm("odd"))), rightToLeft ? "left" : "right");
        EXPECT_EQ(str(mode.oddEven2leftRight(nm("even"))), rightToLeft ? "right" : "left");
        for (const char* side : {"left", "right"})
            EXPECT_EQ(mode.oddEven2leftRight(mode.leftRight2oddEven(nm(side))), nm(side));
        EXPECT_EQ(mode.leftRight2oddEven(nm("odd")), nm("odd"));
        EXPECT_EQ(mode.leftRight2oddEven(nm("top")), nm("top"));
        EXPECT_EQ(mode.oddEven2leftRight(nm("left")), nm("left"));
    }
}

TEST(WritingMode, PerpendicularModes) {
    const ZtWritingMode horizontal(NM_lr_tb), horizontal2(NM_rl_bt);
    const ZtWritingMode vertical(NM_tb_rl), vertical2(NM_bt_lr);
    for (int degrees : {0, 180}) {
        EXPECT_FALSE(horizontal.isPerpendicularTo(horizontal2, degrees));
        EXPECT_FALSE(vertical.isPerpendicularTo(vertical2, degrees));
        EXPECT_TRUE(horizontal.isPerpendicularTo(vertical, degrees));
        EXPECT_TRUE(vertical2.isPerpendicularTo(horizontal2, degrees));
    }
    for (int degrees : {90, 270, -90}) {
        EXPECT_TRUE(horizontal.isPerpendicularTo(horizontal2, degrees));
        EXPECT_TRUE(vertical.isPerpendicularTo(vertical2, degrees));
        EXPECT_FALSE(horizontal.isPerpendicularTo(vertical, degrees));
    }
}

TEST(Orientation, RoundsToQuarterTurnsWithHalvesAwayFromZero) {
    const std::pair<int, int> cases[] = {
        {0, 0},     {44, 0},     {45, 90},    {90, 90},  {134, 90}, {135, 180},
        {225, 270}, {314, 270},  {315, 0},    {360, 0},  {-44, 0},  {-45, 270},
        {-90, 270}, {-135, 180}, {-180, 180}, {-315, 0}, {720, 0},  {-405, 270},
    };
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
}

TEST(Orientation, ValuesAndQuarterTurns) {
    EXPECT_EQ(ZtOrientation(ZtValue(-90)).getDegrees(), 270);
    EXPECT_EQ(ZtOrientation(ZtValue(134.6f)).getDegrees(), 180); // rounds to 135 first
    EXPECT_EQ(ZtOrientation(ZtValue(nm("auto"))).getDegrees(), 0);
    const ZtValue value = ZtOrientation(450);
    EXPECT_TRUE(value.isInteger());
    EXPECT_EQ(value.getIntegerValue(), 90);
    EXPECT_TRUE(ZtOrientation(90).isPerpendicular());
    EXPECT_TRUE(ZtOrientation(-90).isPerpendicular());
    EXPECT_FALSE(ZtOrientation(180).isPerpendicular());
    EXPECT_FALSE(ZtOrientation().isPerpendicular());
    EXPECT_EQ(ZtOrientation(-270), ZtOrientation(90));
}
