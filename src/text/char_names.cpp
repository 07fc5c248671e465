// ZtChar: XML characters and names, MIME tokens, white space, ASCII classes and the other
// fixed sets. None of these calls ICU: each is a lookup in its range list.
#include "text/char_tables.h"
#include "ztcommon/text.h"

namespace ZtCommonNS {

using namespace CharTables;

bool ZtChar::isValidChar(UChar32 c) {
    return inRanges(c, kValidChar);
}
bool ZtChar::isValidChar11(UChar32 c) {
    return inRanges(c, kValidChar11);
}
bool ZtChar::isNCNameStartChar(UChar32 c) {
    return inRanges(c, kNCNameStartChar);
}
bool ZtChar::isNCNameChar(UChar32 c) {
    return inRanges(c, kNCNameChar);
}
bool ZtChar::isNCNameCharForCSSExp(UChar32 c) {
    return inRanges(c, kNCNameCharForCSSExp);
}
bool ZtChar::isNameStartChar(UChar32 c) {
    return inRanges(c, kNameStartChar);
}
bool ZtChar::isNameChar(UChar32 c) {
    return inRanges(c, kNameChar);
}
bool ZtChar::isMIMETokenChar(UChar32 c) {
    return inRanges(c, kMIMETokenChar);
}

namespace {
// A name: non-empty, a start character first and name characters after it. A lone surrogate
// is a code point outside every name range, so it fails the test.
template <bool (*IsStart)(UChar32), bool (*IsChar)(UChar32)>
bool isNameText(const UnicodeString& s) {
    const int32_t n = s.length();
    if (n == 0)
        return false;
    UChar32 c = s.char32At(0);
    if (!IsStart(c))
        return false;
    for (int32_t i = U16_LENGTH(c); i < n; i += U16_LENGTH(c)) {
        c = s.char32At(i);
        if (!IsChar(c))
            return false;
    }
    return true;
}
} // namespace

bool ZtChar::isNCNameStr(const UnicodeString& s) {
    return isNameText<&ZtChar::isNCNameStartChar, &ZtChar::isNCNameChar>(s);
}
bool ZtChar::isNameStr(const UnicodeString& s) {
    return isNameText<&ZtChar::isNameStartChar, &ZtChar::isNameChar>(s);
}

bool ZtChar::isWhitespace(UChar32 c) {
    return inRanges(c, kWhitespace);
}
bool ZtChar::isCssWhitespace(UChar32 c) {
    return inRanges(c, kCssWhitespace);
}
bool ZtChar::isCssWhitespaceWoNewline(UChar32 c) {
    return inRanges(c, kCssWhitespaceWoNewline);
}
bool ZtChar::isCssNewline(UChar32 c) {
    return inRanges(c, kCssNewline);
}
bool ZtChar::isSpaceChar(UChar32 c) {
    return inRanges(c, kSpaceChar);
}
bool ZtChar::isSpaceChar2(UChar32 c) {
    return inRanges(c, kSpaceChar2);
}
bool ZtChar::isHardBreak(UChar32 c) {
    return inRanges(c, kHardBreak);
}
bool ZtChar::isHardBreakOrInvalid(UChar32 c) {
    return inRanges(c, kHardBreakOrInvalid);
}
bool ZtChar::isFixedWidthSpaceChar(UChar32 c) {
    return inRanges(c, kFixedWidthSpaceChar);
}
bool ZtChar::isZeroWidthSpaceChar(UChar32 c) {
    return inRanges(c, kZeroWidthSpaceChar);
}

bool ZtChar::isEmptyOrWhitespace(const UnicodeString& s) {
    const UChar* p = s.getBuffer();
    for (int32_t i = 0, n = s.length(); i < n; ++i) {
        if (!isWhitespace(p[i]))
            return false;
    }
    return true;
}

bool ZtChar::isWhitespace(const UnicodeString& s) {
    return !s.isEmpty() && isEmptyOrWhitespace(s);
}

bool ZtChar::isAsciiDigit(UChar32 c) {
    return inRanges(c, kAsciiDigit);
}
bool ZtChar::isAsciiDigitNonzero(UChar32 c) {
    return inRanges(c, kAsciiDigitNonzero);
}
bool ZtChar::isAsciiLetter(UChar32 c) {
    return inRanges(c, kAsciiLetter);
}
bool ZtChar::isHexDigit(UChar32 c) {
    return inRanges(c, kHexDigit);
}

bool ZtChar::isHankakuChar(UChar32 c) {
    return inRanges(c, kHankakuChar);
}
bool ZtChar::isHankakuKana(UChar32 c) {
    return inRanges(c, kHankakuKana);
}
bool ZtChar::isHalf(UChar32 c) {
    return inRanges(c, kHalf);
}

bool ZtChar::isHyphen(UChar32 c, bool noSoftHyphen) {
    return noSoftHyphen ? inRanges(c, kHyphenNoSoftHyphen) : inRanges(c, kHyphen);
}
bool ZtChar::isMathOperator(UChar32 c) {
    return inRanges(c, kMathOperator);
}
bool ZtChar::isArabic(UChar32 c) {
    return inRanges(c, kArabic);
}
bool ZtChar::isArabicScript(UChar32 c) {
    return inRanges(c, kArabicScript);
}
bool ZtChar::isHebrewScript(UChar32 c) {
    return inRanges(c, kHebrewScript);
}
bool ZtChar::isDevanagariScript(UChar32 c) {
    return inRanges(c, kDevanagariScript);
}
bool ZtChar::isPUA(UChar32 c) {
    return inRanges(c, kPUA);
}
bool ZtChar::isZenkakuMidDotEtc(UChar32 c) {
    return inRanges(c, kZenkakuMidDotEtc);
}
bool ZtChar::isFullStopChar(UChar32 c) {
    return inRanges(c, kFullStopChar);
}
bool ZtChar::isVariationSelectorCharacter(UChar32 c) {
    return inRanges(c, kVariationSelector);
}
bool ZtChar::isIdeographicVariationSelectorCharacter(UChar32 c) {
    return inRanges(c, kIdeographicVariationSelector);
}
bool ZtChar::isCurrencySymbol(UChar32 c) {
    return inRanges(c, kCurrencySymbol);
}
bool ZtChar::isBullet(UChar32 c) {
    return inRanges(c, kBullet);
}
bool ZtChar::isAmbiguousHan(UChar32 c) {
    return inRanges(c, kAmbiguousHan);
}
bool ZtChar::isKanaKanjiCJK(UChar32 c) {
    return inRanges(c, kKanaKanjiCJK);
}
bool ZtChar::isNonStarterJIS(UChar32 c) {
    return inRanges(c, kNonStarterJIS);
}
bool ZtChar::isNoVerticalChar(UChar32 c) {
    return inRanges(c, kNoVertical);
}

bool ZtChar::isInseparableChar(UChar32 c, UChar32 next) {
    if (inRanges(c, kInseparableRepeated))
        return next == c;
    return next == 0x3035 && inRanges(c, kKunojitenUpper);
}

} // namespace ZtCommonNS
