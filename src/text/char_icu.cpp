// ZtChar: the queries answered by ICU's character properties. The width, category-value and
// integer-property queries look up U+337B when asked about U+32FF; host programs depend on
// the answers of that substitution. Line-break classes and the category tests use the
// character itself.
#include "ztcommon/text.h"

namespace ZtCommonNS {

namespace {

UChar32 icuSubstitute(UChar32 c) {
    return c == 0x32FF ? 0x337B : c;
}

// Category tests on the general-category mask of the character itself.
bool categoryIn(UChar32 c, uint32_t mask) {
    return (U_GET_GC_MASK(c) & mask) != 0;
}

constexpr uint32_t kPunctMask = U_GC_PD_MASK | U_GC_PS_MASK | U_GC_PE_MASK | U_GC_PC_MASK |
                                U_GC_PO_MASK | U_GC_PI_MASK | U_GC_PF_MASK;

} // namespace

int32_t ZtChar::getIntPropertyValue(UChar32 c, UProperty property) {
    return u_getIntPropertyValue(icuSubstitute(c), property);
}

UEastAsianWidth ZtChar::getEastAsianWidth(UChar32 c) {
    return static_cast<UEastAsianWidth>(
        u_getIntPropertyValue(icuSubstitute(c), UCHAR_EAST_ASIAN_WIDTH));
}

bool ZtChar::isZenkaku(UEastAsianWidth width) {
    return width == U_EA_FULLWIDTH || width == U_EA_WIDE;
}
bool ZtChar::isZenkakuAmbiguous(UEastAsianWidth width) {
    return width == U_EA_AMBIGUOUS || isZenkaku(width);
}
bool ZtChar::isHankaku(UEastAsianWidth width) {
    return width == U_EA_HALFWIDTH;
}
bool ZtChar::isZenkaku(UChar32 c) {
    return isZenkaku(getEastAsianWidth(c));
}
bool ZtChar::isZenkakuAmbiguous(UChar32 c) {
    return isZenkakuAmbiguous(getEastAsianWidth(c));
}
bool ZtChar::isHankaku(UChar32 c) {
    return isHankaku(getEastAsianWidth(c));
}

UCharCategory ZtChar::getCategory(UChar32 c) {
    return static_cast<UCharCategory>(u_charType(icuSubstitute(c)));
}

bool ZtChar::isControl(UChar32 c) {
    return categoryIn(c, U_GC_CC_MASK | U_GC_CF_MASK | U_GC_CO_MASK | U_GC_CS_MASK | U_GC_CN_MASK);
}
bool ZtChar::isLetter(UChar32 c) {
    return categoryIn(c, U_GC_L_MASK);
}
bool ZtChar::isNumber(UChar32 c) {
    return categoryIn(c, U_GC_N_MASK);
}
bool ZtChar::isLetterNumber(UChar32 c) {
    return categoryIn(c, U_GC_L_MASK | U_GC_N_MASK);
}
bool ZtChar::isPunct(UChar32 c) {
    return c == 0xFF5E || categoryIn(c, kPunctMask);
}
bool ZtChar::isPunct(UCharCategory category) {
    return (U_MASK(category) & kPunctMask) != 0;
}
bool ZtChar::isSymbol(UChar32 c) {
    return categoryIn(c, U_GC_S_MASK);
}
bool ZtChar::isAlphabetic(UChar32 c) {
    return u_isUAlphabetic(c);
}

bool ZtChar::isGraphemeCluster(UChar32 c) {
    const uint32_t mask = U_MASK(getCategory(c));
    return (mask & (U_GC_MN_MASK | U_GC_ME_MASK | U_GC_MC_MASK | U_GC_CC_MASK | U_GC_CF_MASK)) == 0;
}

bool ZtChar::isUndefined(UChar32 c) {
    return !u_isdefined(icuSubstitute(c)) && !isCurrencySymbol(c);
}

bool ZtChar::isZeroWidthControlCode(UChar32 c) {
    if (c < 0 || c == 0xAD)
        return false;
    if (isVariationSelectorCharacter(c) || isIdeographicVariationSelectorCharacter(c))
        return true;
    if (c >= 0x10000 || (c >= 0x20A0 && c < 0x20D0))
        return false;
    c = icuSubstitute(c);
    if (u_iscntrl(c))
        return true;
    if (u_isgraph(c))
        return false;
    return !u_isblank(c);
}

ULineBreak ZtChar::getLineBreak(UChar32 c) {
    return static_cast<ULineBreak>(u_getIntPropertyValue(c, UCHAR_LINE_BREAK));
}

bool ZtChar::isOpenParenEtc(UChar32 c) {
    if (c == 0x2018 || c == 0x201C)
        return true;
    return isPunct(c) && getLineBreak(c) == U_LB_OPEN_PUNCTUATION;
}

bool ZtChar::isCloseParenEtc(UChar32 c) {
    if (c == 0x2019 || c == 0x201D)
        return true;
    if (!isPunct(c))
        return false;
    const ULineBreak lb = getLineBreak(c);
    return lb == U_LB_CLOSE_PUNCTUATION || lb == U_LB_CLOSE_PARENTHESIS;
}

bool ZtChar::isHalfPunct(UChar32 c) {
    return isOpenParenEtc(c) || isCloseParenEtc(c) || isZenkakuMidDotEtc(c);
}

} // namespace ZtCommonNS
