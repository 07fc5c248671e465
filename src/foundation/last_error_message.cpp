// The system's wording of an error number: strerror for errno values, libcurl for its codes.
#include <cstring>

#include <curl/curl.h>

#include "ztcommon/foundation.h"

namespace ZtCommonNS {

namespace {
// Any unique address serves as the tag; callers compare it, never dereference it.
char curlModuleTag;

// GNU strerror_r returns the text (possibly a static one); the XSI form fills the buffer.
[[maybe_unused]] const char* strerrorText(int result, const char* buffer) {
    return result == 0 ? buffer : nullptr;
}
[[maybe_unused]] const char* strerrorText(const char* result, const char*) {
    return result;
}

UnicodeString trimmed(const char* text) {
    if (!text)
        return UnicodeString();
    UnicodeString result = UnicodeString::fromUTF8(text);
    result.trim();
    return result;
}
} // namespace

void* const ZtError::CURL_MODULE = &curlModuleTag;

UnicodeString ZtError::getLastErrorMessage(unsigned long errorNumber, void* module) {
    if (module == CURL_MODULE)
        return trimmed(curl_easy_strerror(static_cast<CURLcode>(errorNumber)));
    if (module != nullptr || errorNumber > 0x7FFFFFFFul)
        return UnicodeString();
    char buffer[256] = {};
    const char* text =
        strerrorText(strerror_r(static_cast<int>(errorNumber), buffer, sizeof buffer), buffer);
    UnicodeString result = trimmed(text);
    // glibc answers "Unknown error N" for numbers it does not know: that is no text.
    if (result.startsWith(UnicodeString(u"Unknown error")))
        return UnicodeString();
    return result;
}

} // namespace ZtCommonNS
