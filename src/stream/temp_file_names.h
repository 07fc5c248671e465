// Shared pieces of the temporary-file code.
#pragma once

#include <string>

#include "ztcommon/foundation.h"

namespace ZtCommonNS {

// A path or name as the UTF-8 bytes the file functions take.
inline std::string utf8(const UnicodeString& text) {
    std::string out;
    return text.toUTF8String(out);
}

// The system's text for an errno value.
UnicodeString systemErrorText(int error);

// Raises `code` (77 or 78) from ZtTempFile with the text: name, `what`, a line feed and the
// system's text for `error`.
[[noreturn]] void raiseTempFileError(int code, const std::string& name, const char* what,
                                     int error);

// The directory with a trailing '/'; an empty one means the temporary directory.
std::string tempFileDirectory(const std::string& directory);

// Creates a new empty file named base + uniquePart() + extension, drawing new unique parts
// while names exist, and returns its name.
ZtCStr createUniqueFile(const std::string& base, const std::string& extension,
                        std::string (*uniquePart)());

} // namespace ZtCommonNS
