// ZtWritingMode: keywords to codes and the directions read from a code.
#include <array>

#include "ztcommon/writing_mode.h"

namespace ZtCommonNS {

namespace {

struct ModeRow {
    ZtNameEnum keyword;
    ZtNameEnum inlineProgression;
    ZtNameEnum blockProgression;
    ZtNameEnum shift;
    ZtNameEnum paging;
};

// Indexed by code.
constexpr std::array<ModeRow, 8> kModes = {{
    {NM_lr_tb, NM_left_to_right, NM_top_to_bottom, NM_bottom_to_top, NM_left_to_right},
    {NM_rl_tb, NM_right_to_left, NM_top_to_bottom, NM_bottom_to_top, NM_right_to_left},
    {NM_tb_rl, NM_top_to_bottom, NM_right_to_left, NM_left_to_right, NM_right_to_left},
    {NM_bt_rl, NM_bottom_to_top, NM_right_to_left, NM_left_to_right, NM_right_to_left},
    {NM_lr_bt, NM_left_to_right, NM_bottom_to_top, NM_bottom_to_top, NM_left_to_right},
    {NM_rl_bt, NM_right_to_left, NM_bottom_to_top, NM_bottom_to_top, NM_right_to_left},
    {NM_tb_lr, NM_top_to_bottom, NM_left_to_right, NM_right_to_left, NM_left_to_right},
    {NM_bt_lr, NM_bottom_to_top, NM_left_to_right, NM_right_to_left, NM_left_to_right},
}};

constexpr int kReversedInline = 1;

// The keywords that name a writing mode: the code each spells, and whether the one-keyword
// constructor knows it (the XSL keywords and their short forms "rl" and "tb"; "lr" gives 0 in
// either case). The others are read only together with a direction.
struct ModeKeyword {
    ZtNameEnum name;
    int code;
    bool alone;
};

constexpr ModeKeyword kKeywords[] = {
    {NM_lr_tb, ZtWritingMode::LR_TB, true},
    {NM_rl_tb, ZtWritingMode::RL_TB, true},
    {NM_tb_rl, ZtWritingMode::TB_RL, true},
    {NM_bt_rl, ZtWritingMode::BT_RL, true},
    {NM_lr_bt, ZtWritingMode::LR_BT, true},
    {NM_rl_bt, ZtWritingMode::RL_BT, true},
    {NM_tb_lr, ZtWritingMode::TB_LR, true},
    {NM_bt_lr, ZtWritingMode::BT_LR, true},
    {NM_lr, ZtWritingMode::LR_TB, true},
    {NM_rl, ZtWritingMode::RL_TB, true},
    {NM_tb, ZtWritingMode::TB_RL, true},
    // CSS writing modes and block-progression directions.
    {NM_horizontal_tb, ZtWritingMode::LR_TB, false},
    {NM_vertical_rl, ZtWritingMode::TB_RL, false},
    {NM_vertical_lr, ZtWritingMode::TB_LR, false},
    {NM_top_to_bottom, ZtWritingMode::LR_TB, false},
    {NM_bottom_to_top, ZtWritingMode::LR_BT, false},
    {NM_right_to_left, ZtWritingMode::TB_RL, false},
    {NM_left_to_right, ZtWritingMode::TB_LR, false},
    // XSL 1.1 modes whose lines alternate or pair up, read by their first line.
    {NM_lr_alternating_rl_tb, ZtWritingMode::LR_TB, false},
    {NM_lr_inverting_rl_tb, ZtWritingMode::LR_TB, false},
    {NM_lr_alternating_rl_bt, ZtWritingMode::LR_BT, false},
    {NM_lr_inverting_rl_bt, ZtWritingMode::LR_BT, false},
    {NM_tb_lr_in_lr_pairs, ZtWritingMode::TB_LR, false},
};

const ModeKeyword* findKeyword(ZtNameEnum name) {
    for (const ModeKeyword& keyword : kKeywords) {
        if (keyword.name == name)
            return &keyword;
    }
    return nullptr;
}

// The code the first name of the two-name constructor spells on its own (-1 when it names no
// mode), and whether "ltr" runs against the axis's usual sense (text turned counter-clockwise).
struct PairedMode {
    int code;
    bool ltrRunsBackwards;
};

PairedMode readModeKeyword(ZtName mode) {
    if (const ModeKeyword* keyword = findKeyword(mode.getNameEnum()))
        return {keyword->code, false};
    // The sideways modes of CSS are not in the built-in vocabulary: compare their text.
    if (!mode.isBuiltin()) {
        const UnicodeString& text = mode.getNameString();
        if (text == u"sideways-rl")
            return {ZtWritingMode::TB_RL, false};
        if (text == u"sideways-lr")
            return {ZtWritingMode::BT_LR, true};
    }
    return {-1, false};
}

} // namespace

ZtWritingMode::ZtWritingMode(ZtNameEnum keyword) noexcept {
    const ModeKeyword* known = findKeyword(keyword);
    code_ = known != nullptr && known->alone ? known->code : LR_TB;
}

ZtWritingMode::ZtWritingMode(ZtName mode, ZtName direction) {
    const PairedMode keyword = readModeKeyword(mode);
    if (keyword.code < 0)
        return; // lr-tb
    const bool vertical = (keyword.code & 2) != 0;
    int reversed = -1; // -1: the direction does not decide
    switch (direction.getNameEnum()) {
    case NM_ltr:
        reversed = keyword.ltrRunsBackwards ? 1 : 0;
        break;
    case NM_rtl:
        reversed = keyword.ltrRunsBackwards ? 0 : 1;
        break;
    case NM_left_to_right:
        reversed = vertical ? -1 : 0;
        break;
    case NM_right_to_left:
        reversed = vertical ? -1 : 1;
        break;
    case NM_top_to_bottom:
        reversed = vertical ? 0 : -1;
        break;
    case NM_bottom_to_top:
        reversed = vertical ? 1 : -1;
        break;
    default:
        break;
    }
    code_ = reversed < 0 ? keyword.code : (keyword.code & ~kReversedInline) | reversed;
}

ZtWritingMode::ZtWritingMode(const ZtValue& value) noexcept
    : ZtWritingMode(value.getNameValue().getNameEnum()) {}

ZtName ZtWritingMode::getName() const noexcept {
    return kModes[code_].keyword;
}
ZtName ZtWritingMode::getIPDirection() const noexcept {
    return kModes[code_].inlineProgression;
}
ZtName ZtWritingMode::getBPDirection() const noexcept {
    return kModes[code_].blockProgression;
}
ZtName ZtWritingMode::getShiftDirection() const noexcept {
    return kModes[code_].shift;
}
ZtName ZtWritingMode::getPagingDirection() const noexcept {
    return kModes[code_].paging;
}

ZtName ZtWritingMode::getDirectionName() const noexcept {
    return isRtlOrBtt() ? NM_rtl : NM_ltr;
}

ZtName ZtWritingMode::getBlockProgressionName() const noexcept {
    static constexpr std::array<ZtNameEnum, 4> kShort = {NM_tb, NM_rl, NM_bt, NM_lr};
    return kShort[code_ >> 1];
}

ZtName ZtWritingMode::leftRight2oddEven(ZtName side) const noexcept {
    const bool leftIsOdd = kModes[code_].paging == NM_right_to_left;
    if (side == NM_left)
        return leftIsOdd ? NM_odd : NM_even;
    if (side == NM_right)
        return leftIsOdd ? NM_even : NM_odd;
    return side;
}

ZtName ZtWritingMode::oddEven2leftRight(ZtName side) const noexcept {
    const bool leftIsOdd = kModes[code_].paging == NM_right_to_left;
    if (side == NM_odd)
        return leftIsOdd ? NM_left : NM_right;
    if (side == NM_even)
        return leftIsOdd ? NM_right : NM_left;
    return side;
}

namespace {

// The edge a progression starts from, and the one it runs towards.
ZtNameEnum startEdge(ZtNameEnum progression) {
    switch (progression) {
    case NM_left_to_right:
        return NM_left;
    case NM_right_to_left:
        return NM_right;
    case NM_top_to_bottom:
        return NM_top;
    default:
        return NM_bottom;
    }
}

ZtNameEnum oppositeEdge(ZtNameEnum edge) {
    switch (edge) {
    case NM_left:
        return NM_right;
    case NM_right:
        return NM_left;
    case NM_top:
        return NM_bottom;
    default:
        return NM_top;
    }
}

} // namespace

ZtName ZtWritingMode::relative2absolute(ZtName side) const noexcept {
    const ModeRow& row = kModes[code_];
    switch (side.getNameEnum()) {
    case NM_before:
        return startEdge(row.blockProgression);
    case NM_after:
        return oppositeEdge(startEdge(row.blockProgression));
    case NM_start:
        return startEdge(row.inlineProgression);
    case NM_end:
        return oppositeEdge(startEdge(row.inlineProgression));
    default:
        return side;
    }
}

ZtName ZtWritingMode::absolute2relative(ZtName side) const noexcept {
    const ZtNameEnum edge = side.getNameEnum();
    if (edge != NM_top && edge != NM_bottom && edge != NM_left && edge != NM_right)
        return side;
    for (ZtNameEnum relative : {NM_before, NM_after, NM_start, NM_end}) {
        if (relative2absolute(relative) == edge)
            return relative;
    }
    return side; // not reached: the four relative edges cover the four absolute ones
}

bool ZtWritingMode::isPerpendicularTo(ZtWritingMode other,
                                      ZtOrientation orientation) const noexcept {
    const bool sameAxis = isVerticalText() == other.isVerticalText();
    return orientation.isPerpendicular() ? sameAxis : !sameAxis;
}

} // namespace ZtCommonNS
