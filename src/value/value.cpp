// ZtValue: construction, ownership of the payload, type changes, predicates and accessors.
#include <cmath>
#include <limits>
#include <utility>

#include "ztcommon/value.h"

namespace ZtCommonNS {

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

// Degrees per unit of the angle units.
float degreesPer(ZtUnitType unit) {
    switch (unit) {
    case ZT_UNIT_DEG:
        return 1.0f;
    case ZT_UNIT_RAD:
        return static_cast<float>(180.0 / 3.14159265358979323846);
    case ZT_UNIT_GRAD:
        return 0.9f;
    default:
        return kNaN;
    }
}

} // namespace

ZtValue::ZtValue(int value, ZtUnitType unit) noexcept : word_(bitfield(ZT_VALUE_INTEGER, unit)) {
    payload_.integer = value;
}

ZtValue::ZtValue(float value, ZtUnitType unit) noexcept : word_(bitfield(ZT_VALUE_REAL, unit)) {
    payload_.real = value;
}

ZtValue::ZtValue(double value, ZtUnitType unit) noexcept
    : ZtValue(static_cast<float>(value), unit) {}

ZtValue::ZtValue(const ZtLength& length) noexcept
    : ZtValue(static_cast<float>(length), ZT_UNIT_PT) {}

ZtValue::ZtValue(ZtName name) noexcept : ZtValue(name.getNameEnum()) {}

ZtValue::ZtValue(ZtNameEnum name) noexcept : word_(bitfield(ZT_VALUE_NAME, ZT_UNIT_NAME)) {
    payload_.name = name;
}

ZtValue::ZtValue(bool value) noexcept : ZtValue(value ? NM_true : NM_false) {}

ZtValue::ZtValue(const UnicodeString& text, ZtUnitType unit) {
    payload_.string = new UnicodeString(text);
    word_ = bitfield(ZT_VALUE_STRING, unit);
}

ZtValue::ZtValue(const char16_t* text, ZtUnitType unit)
    : ZtValue(text ? UnicodeString(text) : UnicodeString(), unit) {}

ZtValue::ZtValue(ZtRCObject* object) noexcept {
    if (object) {
        object->addRef();
        payload_.object = object;
        word_ = bitfield(ZT_VALUE_OBJECT, ZT_UNIT_UNKNOWN);
    }
}

ZtValue::ZtValue(ZtValueArray* array) noexcept {
    if (array) {
        array->addRef();
        payload_.array = array;
        word_ = bitfield(ZT_VALUE_ARRAY, ZT_UNIT_UNKNOWN);
    }
}

ZtValue::ZtValue(ZtNamedValueMap* map) noexcept {
    if (map) {
        map->addRef();
        payload_.map = map;
        word_ = bitfield(ZT_VALUE_COMPOUND, ZT_UNIT_UNKNOWN);
    }
}

ZtValue::ZtValue(const ZtValue& other) {
    copyFrom(other);
}

ZtValue::ZtValue(ZtValue&& other) noexcept
    : payload_(std::exchange(other.payload_, Payload{.bits = 0})),
      word_(std::exchange(other.word_, 0u)) {}

ZtValue& ZtValue::operator=(const ZtValue& other) {
    if (this != &other) {
        // Copy before dropping: `other` may live inside what this value holds.
        ZtValue copy(other);
        *this = std::move(copy);
    }
    return *this;
}

ZtValue& ZtValue::operator=(ZtValue&& other) noexcept {
    if (this != &other) {
        ZtValue old(std::move(*this));
        payload_ = std::exchange(other.payload_, Payload{.bits = 0});
        word_ = std::exchange(other.word_, 0u);
    }
    return *this;
}

// Takes the payload of `other` (this value holds nothing), copying a string and taking one
// more reference of a shared object. The payload is prepared before anything is stored, so a
// failed allocation leaves this value null.
void ZtValue::copyFrom(const ZtValue& other) {
    Payload p = other.payload_;
    switch (other.getValueType()) {
    case ZT_VALUE_STRING:
        if (p.string)
            p.string = new UnicodeString(*p.string);
        break;
    case ZT_VALUE_OBJECT:
    case ZT_VALUE_ARRAY:
    case ZT_VALUE_COMPOUND:
        if (p.object)
            p.object->addRef();
        break;
    default:
        break;
    }
    payload_ = p;
    word_ = other.word_;
}

// Drops what the payload owns and clears it; the word is left as it is.
void ZtValue::release() noexcept {
    switch (getValueType()) {
    case ZT_VALUE_STRING:
        delete payload_.string;
        break;
    case ZT_VALUE_OBJECT:
    case ZT_VALUE_ARRAY:
    case ZT_VALUE_COMPOUND:
        // Arrays and maps are ZtRCObjects too; release() runs the right destructor.
        if (payload_.object)
            payload_.object->release();
        break;
    default:
        break;
    }
    payload_.bits = 0;
}

void ZtValue::clear() noexcept {
    release();
    word_ = 0;
}

void ZtValue::setWord(std::uint32_t word) noexcept {
    auto type = static_cast<ZtValueType>(word & 7u);
    if (type != getValueType() && (ownsPayload(type) || ownsPayload(getValueType())))
        release();
    word_ = word;
}

void ZtValue::setValueType(ZtValueType type) noexcept {
    setWord((word_ & ~7u) | (type & 7u));
}

void ZtValue::setUnitType(ZtUnitType unit) noexcept {
    word_ = (word_ & ~(63u << 3)) | (unit & 63u) << 3;
}

void ZtValue::setQualifier(ZtNameEnum qualifier) noexcept {
    word_ = (word_ & 511u) | static_cast<std::uint32_t>(qualifier) << 9;
}

void ZtValue::setValueUnitType(ZtValueType type) noexcept {
    setWord(bitfield(type, ZT_UNIT_UNKNOWN));
}

void ZtValue::setValueUnitType(ZtValueType type, ZtUnitType unit) noexcept {
    setWord(bitfield(type, unit));
}

bool ZtValue::isEmpty() const noexcept {
    switch (getValueType()) {
    case ZT_VALUE_NULL:
        return true;
    case ZT_VALUE_NAME:
        return payload_.name == NM_EMPTY_NAME;
    case ZT_VALUE_STRING:
        return !payload_.string || payload_.string->isEmpty();
    default:
        return false;
    }
}

bool ZtValue::isNumberZero() const noexcept {
    if (!isNumber())
        return false;
    return isInteger() ? payload_.integer == 0 : payload_.real == 0.0f;
}

bool ZtValue::isAbsoluteLength() const noexcept {
    return isNumeric() && ZtLength::isAbsoluteUnit(getUnitType());
}

bool ZtValue::isRelativeLength() const noexcept {
    ZtUnitType unit = getUnitType();
    return isNumeric() && ((unit >= ZT_UNIT_EM && unit <= ZT_UNIT_PX) ||
                           (unit >= ZT_UNIT_REM && unit <= ZT_UNIT_CAP));
}

int ZtValue::getIntegerValue() const noexcept {
    if (isInteger())
        return payload_.integer;
    if (!isReal())
        return 0;
    double rounded = std::floor(static_cast<double>(payload_.real) + 0.5);
    if (std::isnan(rounded))
        return INT_MIN;
    if (rounded >= 2147483647.0)
        return INT_MAX;
    if (rounded <= -2147483648.0)
        return INT_MIN;
    return static_cast<int>(rounded);
}

float ZtValue::getRealValue(ZtUnitType target) const noexcept {
    if (!isNumeric())
        return kNaN;
    float value = isInteger() ? static_cast<float>(payload_.integer) : payload_.real;
    ZtUnitType unit = getUnitType();
    if (unit == target)
        return value;
    if (ZtLength::isAbsoluteUnit(unit) && ZtLength::isAbsoluteUnit(target))
        return ZtLength(value, unit).getRealValue(target);
    return value * degreesPer(unit) / degreesPer(target); // NaN unless both are angles
}

const UnicodeString& ZtValue::getStringValue() const {
    if (isString() && payload_.string)
        return *payload_.string;
    if (isName())
        return ZtName(payload_.name).getNameString();
    return ZtEmptyString::getEmptyString();
}

ZtLength ZtValue::getLengthValue(bool numberAsPoints) const noexcept {
    if (!isNumeric())
        return ZtLength();
    float value = isInteger() ? static_cast<float>(payload_.integer) : payload_.real;
    ZtUnitType unit = getUnitType();
    if (ZtLength::isAbsoluteUnit(unit))
        return ZtLength(value, unit);
    if (unit == ZT_UNIT_NUMBER && (value == 0.0f || numberAsPoints))
        return ZtLength(value);
    return ZtLength();
}

ZtLength::ZtLength(const ZtValue& value) : ZtLength(value.getLengthValue(false)) {}

ZtName::ZtName(const ZtValue& value)
    : number_(value.isName() ? value.getNameValue().getNameEnum()
                             : ZtNameTable::getSharedNameEnum(value.toString())) {}

} // namespace ZtCommonNS
