// ZtName and the name lists.
#include <string>

#include "foundation/raise_error.h"
#include "value/name_table_internal.h"

namespace ZtCommonNS {

ZtName::ZtName(const UnicodeString& text) : number_(ZtNameTable::getSharedNameEnum(text)) {}

ZtName::ZtName(const char16_t* text) {
    auto n = static_cast<int32_t>(text ? std::char_traits<char16_t>::length(text) : 0);
    if (n > 0)
        number_ = NameTableInternal::internShared(text, n);
}

const UnicodeString& ZtName::getNameString() const {
    return ZtNameTable::getSharedNameString(number_);
}

bool ZtName::isLowerName() const {
    const UnicodeString& text = getNameString();
    const char16_t* s = text.getBuffer();
    for (int32_t i = 0, n = text.length(); i < n; ++i) {
        char16_t c = s[i];
        if (!((c >= 0x20 && c <= 0x40) || (c >= 0x5B && c <= 0x7E)))
            return false;
    }
    return true;
}

UnicodeString ZtName::toLowerString() const {
    UnicodeString lower(getNameString());
    lower.toLower();
    return lower;
}

ZtName ZtName::lowerName() const {
    return isLowerName() ? *this : ZtName(toLowerString());
}

ZtName ZtName::generateID(const UnicodeString& prefix) {
    // Held across reading the last number and interning, so that two threads cannot be given
    // the same text.
    ZtMutex guard(NameTableInternal::lock());
    UnicodeString stem(u"-");
    stem += prefix.isEmpty() ? UnicodeString(u"N") : prefix;
    // The next number normally gives a new text; should someone have interned that very text
    // already, the following numbers are tried until a new one comes up.
    for (int64_t next = int64_t(NameTableInternal::sharedLast()) + 1;; ++next) {
        UnicodeString candidate(stem);
        std::string digits = std::to_string(next);
        candidate += UnicodeString(digits.c_str(), static_cast<int32_t>(digits.size()), US_INV);
        if (!NameTableInternal::findShared(candidate.getBuffer(), candidate.length()))
            return NameTableInternal::internShared(candidate.getBuffer(), candidate.length());
    }
}

ZtNameList::ZtNameList(const ZtNameEnum* items, int count)
    : items_(items && count > 0 ? items : nullptr), count_(items && count > 0 ? count : 0) {}

ZtNameList::ZtNameList(const ZtNameEnum* items) : items_(items) {
    if (items)
        while (items[count_] != NM_EMPTY_NAME)
            ++count_;
}

int ZtNameList::indexOf(ZtName name) const {
    for (int i = 0; i < count_; ++i)
        if (items_[i] == name.getNameEnum())
            return i;
    return -1;
}

ZtNameListInstance::ZtNameListInstance(int count) {
    if (count > 0) {
        owned_ = new ZtNameEnum[static_cast<size_t>(count)]();
        items_ = owned_;
        count_ = count;
    }
}

ZtNameListInstance::~ZtNameListInstance() {
    delete[] owned_;
}

void ZtNameListInstance::setItem(ZtName name, int index) {
    if (index < 0 || index >= count_) {
        ZtError error = makeRaisedError(ZtErrc::OutOfRange, -1, UnicodeString(), UnicodeString());
        error.setSource(u"ZtCommonNS::ZtNameListInstance::setItem");
        throw error;
    }
    owned_[index] = name.getNameEnum();
}

} // namespace ZtCommonNS
