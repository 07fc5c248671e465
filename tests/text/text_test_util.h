// Readable failure messages for ICU strings in the text tests.
#pragma once

#include <ostream>
#include <string>

#include <unicode/unistr.h>

U_NAMESPACE_BEGIN
inline void PrintTo(const UnicodeString& s, std::ostream* out) {
    std::string utf8;
    s.toUTF8String(utf8);
    *out << '"' << utf8 << '"';
}
U_NAMESPACE_END

// The text in UTF-8, for messages.
inline std::string utf8(const icu::UnicodeString& s) {
    std::string out;
    return s.toUTF8String(out);
}
