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
