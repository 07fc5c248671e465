// ZtChar: turning any text into a valid NCName and back, and into a CSS identifier.
#include "foundation/raise_error.h"
#include "ztcommon/text.h"

namespace ZtCommonNS {

using namespace ZtCharRanges;

namespace {

// The escape character starts every escaped text (the empty text becomes the escape character
// alone), so it has to be an ASCII name start character.
void checkEscapeChar(char escape, const char16_t* operation) {
    const auto c = static_cast<unsigned char>(escape);
    if (c < 0x80 && (ZtChar::isAsciiLetter(c) || c == '_'))
        return;
    ZtError error = makeRaisedError(ZtErrc::OutOfRange, -1, UnicodeString(), UnicodeString());
    error.setSource(UnicodeString(u"ZtCommonNS::ZtChar::") + operation);
    throw error;
}

constexpr char16_t kHexDigits[] = u"0123456789ABCDEF";

void appendEscaped(UnicodeString& out, UChar escape, UChar unit) {
    const UChar text[5] = {escape, kHexDigits[unit >> 12], kHexDigits[(unit >> 8) & 15],
                           kHexDigits[(unit >> 4) & 15], kHexDigits[unit & 15]};
    out.append(text, 5);
}

bool isCssIdentChar(UChar32 c) {
    return ZtChar::isAsciiLetter(c) || ZtChar::isAsciiDigit(c) || c == '_' || c == '-' ||
           inRanges(c, kCssNonAsciiIdent);
}

} // namespace

UnicodeString ZtChar::escapeNCNameStr(const UnicodeString& s, char escape) {
    checkEscapeChar(escape, u"escapeNCNameStr");
    const auto e = static_cast<UChar>(escape);
    const int32_t n = s.length();
    if (n == 0)
        return UnicodeString(e);
    UnicodeString out;
    out.getBuffer(n + 8); // reserve: most texts need few escapes
    out.releaseBuffer(0);
    for (int32_t i = 0; i < n;) {
        const UChar32 c = s.char32At(i);
        const int32_t units = U16_LENGTH(c);
        const bool keep = c != e && (i == 0 ? isNCNameStartChar(c) : isNCNameChar(c));
        if (keep) {
            out.append(c);
        } else {
            for (int32_t k = 0; k < units; ++k)
                appendEscaped(out, e, s.charAt(i + k));
        }
        i += units;
    }
    return out;
}

UnicodeString ZtChar::unescapeNCNameStr(const UnicodeString& s, char escape) {
    checkEscapeChar(escape, u"unescapeNCNameStr");
    const auto e = static_cast<UChar>(escape);
    const int32_t n = s.length();
    if (n == 1 && s.charAt(0) == e)
        return UnicodeString();
    UnicodeString out;
    const UChar* p = s.getBuffer();
    int32_t plainStart = 0;
    for (int32_t i = 0; i + 5 <= n; ++i) {
        if (p[i] != e)
            continue;
        int value = 0;
        bool hex = true;
        for (int32_t k = 1; k <= 4 && hex; ++k) {
            hex = isHexDigit(p[i + k]);
            value = value * 16 + hex2dig(p[i + k]);
        }
        if (!hex)
            continue;
        out.append(p + plainStart, i - plainStart);
        out.append(static_cast<UChar>(value));
        i += 4;
        plainStart = i + 1;
    }
    out.append(p + plainStart, n - plainStart);
    return out;
}

UnicodeString ZtChar::replaceToCSSIdentTokenStr(const UnicodeString& s, char replacement) {
    const auto r = static_cast<UChar>(static_cast<unsigned char>(replacement));
    UnicodeString out;
    const int32_t n = s.length();
    int32_t i = 0;
    if (n > 0 && s.charAt(0) == '-') {
        out.append(UChar('-'));
        i = 1;
    }
    const int32_t identStart = i; // where a digit may not stand
    while (i < n) {
        const UChar32 c = s.char32At(i);
        const bool keep =
            i == identStart ? isCssIdentChar(c) && !isAsciiDigit(c) : isCssIdentChar(c);
        if (keep)
            out.append(c);
        else
            out.append(r);
        i += U16_LENGTH(c);
    }
    return out;
}

} // namespace ZtCommonNS
