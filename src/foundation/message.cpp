// ZtMessage: parameterised texts formatted with ICU MessageFormat.
#include <unicode/fmtable.h>
#include <unicode/msgfmt.h>

#include "ztcommon/foundation.h"

namespace ZtCommonNS {

ZtMessage::ZtMessage(const UnicodeString& pattern, const UnicodeString& a0, const UnicodeString& a1,
                     const UnicodeString& a2, const UnicodeString& a3, const UnicodeString& a4) {
    const icu::Formattable args[5] = {a0, a1, a2, a3, a4};
    UErrorCode status = U_ZERO_ERROR;
    // A broken pattern leaves whatever ICU produced; the status is deliberately not examined.
    icu::MessageFormat::format(pattern, args, 5, text_, status);
}

ZtMessage::ZtMessage(const char* pattern, const UnicodeString& a0, const UnicodeString& a1,
                     const UnicodeString& a2, const UnicodeString& a3, const UnicodeString& a4)
    : ZtMessage(UnicodeString::fromUTF8(pattern ? pattern : ""), a0, a1, a2, a3, a4) {}

} // namespace ZtCommonNS
