// ZtValueArray and ZtNamedValueMap, the shared containers a value can hold.
#include <algorithm>

#include "foundation/raise_error.h"
#include "ztcommon/value.h"

namespace ZtCommonNS {

namespace {
constinit const ZtValue kNullValue;
} // namespace

ZtValueArray::ZtValueArray(int count) {
    if (count > 0)
        values_.resize(static_cast<size_t>(count));
}

void ZtValueArray::checkIndex(int index, int limit, const char16_t* operation) const {
    if (index >= 0 && index < limit)
        return;
    ZtError error = makeRaisedError(ZtErrc::OutOfRange, -1, UnicodeString(), UnicodeString());
    error.setSource(UnicodeString(u"ZtCommonNS::ZtValueArray::") + operation);
    throw error;
}

const ZtValue& ZtValueArray::get(int index) const noexcept {
    if (index < 0 || index >= getCount())
        return kNullValue;
    return values_[static_cast<size_t>(index)];
}

void ZtValueArray::set(int index, const ZtValue& value) {
    checkIndex(index, getCount(), u"set");
    values_[static_cast<size_t>(index)] = value;
}

void ZtValueArray::set(int index, ZtValue&& value) {
    checkIndex(index, getCount(), u"set");
    values_[static_cast<size_t>(index)] = std::move(value);
}

void ZtValueArray::insert(int index, const ZtValue& value) {
    checkIndex(index, getCount() + 1, u"insert");
    values_.insert(values_.begin() + index, value);
}

void ZtValueArray::remove(int index) {
    checkIndex(index, getCount(), u"remove");
    values_.erase(values_.begin() + index);
}

void ZtValueArray::reserve(int count) {
    if (count > 0)
        values_.reserve(static_cast<size_t>(count));
}

int ZtValueArray::indexOf(const ZtValue& value) const {
    auto found = std::find(values_.begin(), values_.end(), value);
    return found == values_.end() ? -1 : static_cast<int>(found - values_.begin());
}

ZtPtr<ZtValueArray> ZtValueArray::clone() const {
    ZtPtr<ZtValueArray> copy(new ZtValueArray);
    copy->values_ = values_;
    return copy;
}

std::vector<ZtNamedValue>::iterator ZtNamedValueMap::find(ZtName name) noexcept {
    return std::lower_bound(entries_.begin(), entries_.end(), name,
                            [](const ZtNamedValue& entry, ZtName n) { return entry.name_ < n; });
}

ZtNamedValueMap::const_iterator ZtNamedValueMap::find(ZtName name) const noexcept {
    return std::lower_bound(entries_.begin(), entries_.end(), name,
                            [](const ZtNamedValue& entry, ZtName n) { return entry.name_ < n; });
}

bool ZtNamedValueMap::hasValue(ZtName name) const noexcept {
    auto at = find(name);
    return at != entries_.end() && at->name_ == name;
}

const ZtValue& ZtNamedValueMap::getValue(ZtName name) const noexcept {
    auto at = find(name);
    return at != entries_.end() && at->name_ == name ? at->value_ : kNullValue;
}

void ZtNamedValueMap::setValue(ZtName name, const ZtValue& value) {
    setValue(name, ZtValue(value));
}

void ZtNamedValueMap::setValue(ZtName name, ZtValue&& value) {
    auto at = find(name);
    if (at != entries_.end() && at->name_ == name)
        at->value_ = std::move(value);
    else
        entries_.insert(at, ZtNamedValue(name, std::move(value)));
}

bool ZtNamedValueMap::removeValue(ZtName name) noexcept {
    auto at = find(name);
    if (at == entries_.end() || at->name_ != name)
        return false;
    entries_.erase(at);
    return true;
}

ZtPtr<ZtNamedValueMap> ZtNamedValueMap::clone() const {
    ZtPtr<ZtNamedValueMap> copy(new ZtNamedValueMap);
    copy->entries_ = entries_;
    return copy;
}

} // namespace ZtCommonNS
