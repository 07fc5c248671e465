// ZtChar: name and white-space tests on whole texts. The per-character tests they use are
// inline lookups in the range lists of ztcommon/text_ranges.h.
#include "ztcommon/text.h"

namespace ZtCommonNS {

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

} // namespace ZtCommonNS
