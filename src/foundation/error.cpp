// ZtError: the library's exception type, and error levels.
#include "ztcommon/foundation.h"

namespace ZtCommonNS {

ZtErrorLevel getErrorLevel(unsigned short code) {
    if (!(code & ZT_ERROR_NONFATAL_BIT))
        return ZT_ERROR_LEVEL_FATAL;
    if (!(code & ZT_ERROR_LOWER_BIT))
        return ZT_ERROR_LEVEL_ERROR;
    return static_cast<ZtErrorLevel>(0x300 | (code & ZT_ERROR_LOWEST_BIT));
}

ZtError::ZtError() = default;

ZtError::ZtError(unsigned short code, const UnicodeString& rawMessage, const UnicodeString& source,
                 int line, int column, const UnicodeString& uri)
    : code_(code), rawMessage_(rawMessage), source_(source), line_(line), column_(column),
      uri_(uri) {}

ZtError::ZtError(std::bad_alloc&, const UnicodeString& source)
    : code_(1), rawMessage_(u"SYSTEM ERROR: Out of memory."), source_(source) {}

ZtError::ZtError(std::exception& e, const UnicodeString& source)
    : code_(2), rawMessage_(UnicodeString(u"SYSTEM ERROR: C++ exception: ") +
                            UnicodeString::fromUTF8(e.what() ? e.what() : "")),
      source_(source) {}

ZtError::ZtError(const ZtError& other)
    : std::exception(other), code_(other.code_), rawMessage_(other.rawMessage_),
      source_(other.source_), line_(other.line_), column_(other.column_), uri_(other.uri_) {}

ZtError& ZtError::operator=(const ZtError& other) {
    if (this != &other) {
        code_ = other.code_;
        rawMessage_ = other.rawMessage_;
        source_ = other.source_;
        line_ = other.line_;
        column_ = other.column_;
        uri_ = other.uri_;
        what_.clear();
    }
    return *this;
}

ZtError::~ZtError() = default;

UnicodeString ZtError::getPositionDescription() const {
    UnicodeString description;
    if (line_ > 0) {
        description.append(u"Line ");
        description.append(UnicodeString::fromUTF8(std::to_string(line_)));
        description.append(u", ");
    }
    if (column_ > 0) {
        description.append(u"Col ");
        description.append(UnicodeString::fromUTF8(std::to_string(column_)));
        description.append(u", ");
    }
    description.append(uri_);
    return description;
}

UnicodeString ZtError::getMessage() const {
    UnicodeString message(rawMessage_);
    UnicodeString position = getPositionDescription();
    if (!position.isEmpty())
        message.append(u'\n').append(position);
    return message;
}

void ZtError::setMessage(const UnicodeString& text) {
    rawMessage_ = text;
    UnicodeString position = getPositionDescription();
    if (position.isEmpty())
        return;
    UnicodeString ending = UnicodeString(u'\n') + position;
    if (rawMessage_.endsWith(ending))
        rawMessage_.truncate(rawMessage_.length() - ending.length());
}

void ZtError::appendMessage(const UnicodeString& text) {
    if (text.isEmpty())
        return;
    if (!rawMessage_.isEmpty())
        rawMessage_.append(u'\n');
    rawMessage_.append(text);
}

void ZtError::throwFatalError() const {
    if (code_ != 0 && !(code_ & ZT_ERROR_NONFATAL_BIT))
        throw ZtError(*this);
}

const char* ZtError::what() const noexcept {
    try {
        what_.clear();
        getMessage().toUTF8String(what_);
        return what_.c_str();
    } catch (...) {
        return "ZtError";
    }
}

} // namespace ZtCommonNS
