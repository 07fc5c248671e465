// ZtChar: vertical orientation (Unicode's Vertical_Orientation property, UAX #50) with
// caller-supplied overrides, and the pairs that must not be broken in a line.
#include "ztcommon/text.h"

namespace ZtCommonNS {

TR50Property ZtChar::getTR50Property(UChar32 c) {
    // TR50Property shares its numbers with ICU's UVerticalOrientation.
    return static_cast<TR50Property>(u_getIntPropertyValue(c, UCHAR_VERTICAL_ORIENTATION));
}

TR50Property ZtChar::getTR50SVO(UChar32 c, const TR50VOMap& map) {
    if (auto it = map.find(c); it != map.end())
        return it->second.svo;
    // Alone, a character is stood upright; one with a rotated vertical form uses that form.
    const TR50Property unicode = getTR50Property(c);
    switch (unicode) {
    case TR50_R:
        return TR50_U;
    case TR50_TR:
        return TR50_TU;
    default:
        return unicode;
    }
}

TR50Property ZtChar::getTR50MVO(UChar32 c, const TR50VOMap& map) {
    if (auto it = map.find(c); it != map.end())
        return it->second.mvo;
    return getTR50Property(c);
}

bool ZtChar::isInseparableCharEx(UChar32 c, UChar32 next, INSEPARABLECHAR_METHOD method) {
    auto byClasses = [&] {
        const ULineBreak nextClass = getLineBreak(next);
        return nextClass == U_LB_INSEPARABLE ||
               (nextClass == U_LB_BREAK_BOTH && getLineBreak(c) == U_LB_BREAK_BOTH);
    };
    switch (method) {
    case INSEPARABLECHAR_JIS:
        return isInseparableChar(c, next);
    case INSEPARABLECHAR_UAX14:
        return byClasses();
    case INSEPARABLECHAR_ALL:
        return isInseparableChar(c, next) || byClasses();
    case INSEPARABLECHAR_NONE:
        break;
    }
    return false;
}

} // namespace ZtCommonNS
