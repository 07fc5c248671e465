// ZtCStr: a text and its cached byte encoding.
#include <cstring>
#include <memory>

#include "ztcommon/foundation.h"

namespace ZtCommonNS {

namespace {

char* copyCharset(const char* charset) {
    if (!charset)
        return nullptr;
    size_t n = std::strlen(charset) + 1;
    char* copy = new char[n];
    std::memcpy(copy, charset, n);
    return copy;
}

UnicodeString decode(const char* bytes, size_t length, const char* charset) {
    return UnicodeString(bytes, static_cast<int32_t>(length), charset);
}

} // namespace

ZtCStr::ZtCStr(const UnicodeString& text) : UnicodeString(text) {}

ZtCStr::ZtCStr(const std::string& bytes, const char* charset)
    : UnicodeString(decode(bytes.data(), bytes.size(), charset)), bytes_(bytes),
      charset_(copyCharset(charset)), snapshot_(*this) {}

ZtCStr::ZtCStr(const char* bytes, const char* charset)
    : ZtCStr(std::string(bytes ? bytes : ""), charset) {}

ZtCStr::ZtCStr(const char16_t* units, int32_t length)
    : UnicodeString(units ? UnicodeString(units, length) : UnicodeString()) {}

ZtCStr::ZtCStr(const ZtCStr& other)
    : UnicodeString(other), bytes_(other.bytes_), charset_(copyCharset(other.charset_)),
      snapshot_(other.snapshot_) {}

ZtCStr& ZtCStr::operator=(const ZtCStr& other) {
    if (this != &other) {
        UnicodeString::operator=(other);
        bytes_ = other.bytes_;
        setCharset(other.charset_);
        snapshot_ = other.snapshot_;
    }
    return *this;
}

ZtCStr& ZtCStr::operator=(const UnicodeString& text) {
    UnicodeString::operator=(text);
    return *this;
}

ZtCStr::~ZtCStr() {
    delete[] charset_;
}

void ZtCStr::setCharset(const char* charset) const {
    char* copy = copyCharset(charset);
    delete[] charset_;
    charset_ = copy;
}

const std::string& ZtCStr::getBytes(const char* charset) const {
    // The cached bytes stand while the text equals the snapshot taken when they were made and
    // the charset is the same name, byte for byte.
    if (charset_ && charset && std::strcmp(charset_, charset) == 0 && snapshot_ == *this &&
        !snapshot_.isBogus())
        return bytes_;

    int32_t needed = extract(0, length(), nullptr, 0, charset);
    if (needed <= 0) {
        bytes_.clear();
    } else {
        // extract() writes a terminating NUL when there is room for it.
        std::unique_ptr<char[]> buffer(new char[static_cast<size_t>(needed) + 1]);
        extract(0, length(), buffer.get(), static_cast<uint32_t>(needed) + 1, charset);
        bytes_.assign(buffer.get(), static_cast<size_t>(needed));
    }
    setCharset(charset);
    snapshot_ = *this;
    return bytes_;
}

ZtUtfStr::~ZtUtfStr() = default;

} // namespace ZtCommonNS
