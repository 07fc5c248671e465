// The value model of ZtCommon: interned names and the name tables with their built-in
// vocabulary, the tagged value variant with its containers, units and lengths.
#pragma once

#include <climits>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <limits>
#include <vector>

#include "ztcommon/foundation.h"
#include "ztcommon/value_names.h"

namespace ZtCommonNS {

class ZtValue;

// An interned name: a 32-bit number standing for one string, copied, compared and hashed as an
// integer. 0 is the empty name, 1 to NM_LAST_BUILTIN the built-in names (ZtNameEnum), higher
// numbers the strings interned at run time in the shared name table. Comparisons order by
// number, not by text: a fast, stable order for ordered containers.
class ZT_EXPORT ZtName {
public:
    constexpr ZtName() noexcept = default;
    constexpr ZtName(ZtNameEnum number) noexcept : number_(number) {}
    // The number of `text` in the shared table, interning it when new. Built-in names are found
    // without locking; the empty (or bogus) text gives the empty name.
    explicit ZtName(const UnicodeString& text);
    // The same for a NUL-terminated text (null: the empty name).
    explicit ZtName(const char16_t* text);
    // The name of a name value; any other value is written with toString() and interned.
    explicit ZtName(const ZtValue& value);

    // The string of the name; the empty string for 0 or a number no table knows. The reference
    // stays valid while the shared table lives (until ZtNameTable::cleanup).
    operator const UnicodeString&() const { return getNameString(); }
    const UnicodeString& getNameString() const;
    constexpr ZtNameEnum getNameEnum() const noexcept { return number_; }

    constexpr bool isEmpty() const noexcept { return number_ == NM_EMPTY_NAME; }
    // True for the empty name and the built-in names.
    constexpr bool isBuiltin() const noexcept {
        return number_ >= NM_EMPTY_NAME && number_ <= NM_LAST_BUILTIN;
    }

    friend constexpr bool operator==(ZtName a, ZtName b) noexcept { return a.number_ == b.number_; }
    friend constexpr bool operator==(ZtName a, ZtNameEnum b) noexcept { return a.number_ == b; }
    friend constexpr std::strong_ordering operator<=>(ZtName a, ZtName b) noexcept {
        return a.number_ <=> b.number_;
    }

    // True for "inherit", "default" and "initial".
    static bool isInheritEtc(ZtName name) {
        return name.number_ == NM_inherit || name.number_ == NM_default ||
               name.number_ == NM_initial;
    }
    // True when every character lies in U+0020..U+0040 or U+005B..U+007E (printable ASCII
    // without capitals); true for the empty name.
    bool isLowerName() const;
    // The string lower-cased by ICU in the default locale.
    UnicodeString toLowerString() const;
    // This name when it is already lower case, else the interned lower-case string.
    ZtName lowerName() const;

    // A fresh name that no XML name can equal: "-", then `prefix` ("N" when empty), then the
    // next free run-time number of the shared table in decimal; the result is interned.
    static ZtName generateID(const UnicodeString& prefix = ZtEmptyString::getEmptyString());

private:
    ZtNameEnum number_ = NM_EMPTY_NAME;
};

// A table of run-time names: strings interned here get the numbers from NM_FIRST_RUNTIME up, in
// the order they first arrive, and keep them (and their strings) for the table's life. The
// built-in names are shared by every table. One process-wide table, the shared one, serves all
// ZtName objects. All run-time work happens under one process-wide name-table lock, so tables
// may be used from any thread.
class ZT_EXPORT ZtNameTable : public ZtRCObject {
    ZT_DECLARE_TYPE(ZtNameTable, ZtRCObject, ZtTypeId::NameTable)

public:
    ZtNameTable();
    ZtNameTable(const ZtNameTable&) = delete;
    ZtNameTable& operator=(const ZtNameTable&) = delete;

    // The number of `text`, interning it in this table when it is new; 0 for the empty text.
    ZtNameEnum getNameEnum(const UnicodeString& text);
    // The number of `text` without interning: built-in, else this table's, else 0.
    ZtNameEnum lookupName(const UnicodeString& text) const;
    // The string of a number: built-in, or this table's up to getNameLast(); the empty string
    // for anything else. Valid while the table lives.
    const UnicodeString& getNameString(ZtNameEnum number) const;
    // The last number given out (NM_LAST_BUILTIN in a new table).
    ZtNameEnum getNameLast() const;

    // The built-in number of `text`, 0 when it is not built in. No lock, no allocation.
    static ZtNameEnum getBuiltinNameEnum(const UnicodeString& text);
    // The string of a built-in number, the empty string for any other number.
    static const UnicodeString& getBuiltinNameString(ZtNameEnum number);

    // getNameEnum and getNameString on the shared table. getSharedNameEnum creates the table
    // when needed; getSharedNameString of a run-time number without a shared table gives the
    // empty string.
    static ZtNameEnum getSharedNameEnum(const UnicodeString& text);
    static const UnicodeString& getSharedNameString(ZtNameEnum number);

    // The shared table, created when needed, without taking a reference.
    static ZtNameTable* getSharedNameTable();
    // The same, taking one reference for the caller.
    static ZtNameTable* addRefSharedNameTable();
    // Drops one reference of the shared table; it is destroyed when its count falls below 1.
    static void releaseSharedNameTable();
    // Destroys the shared table whatever its count (run-time names start again from
    // NM_FIRST_RUNTIME). Also run by ZtUtil::cleanup.
    static void cleanup();

protected:
    ~ZtNameTable() override;

private:
    friend struct NameTableInternal;
    class Storage;
    Storage* storage_;
};

// A read-only view of an array of name numbers.
class ZT_EXPORT ZtNameList {
public:
    ZtNameList() = default;
    // Views `count` items (none when `items` is null or `count` is not positive).
    ZtNameList(const ZtNameEnum* items, int count);
    // Views the items before the first 0 entry.
    explicit ZtNameList(const ZtNameEnum* items);
    ZtNameList(const ZtNameList&) = default;
    ZtNameList& operator=(const ZtNameList&) = default;
    ~ZtNameList() = default;

    int getCount() const { return count_; }
    // The item at `index`; the empty name outside 0..getCount()-1.
    ZtName getItem(int index) const {
        return index >= 0 && index < count_ ? ZtName(items_[index]) : ZtName();
    }
    // The index of the first item equal to `name`, -1 when there is none.
    int indexOf(ZtName name) const;
    bool hasItem(ZtName name) const { return indexOf(name) >= 0; }

    const ZtNameEnum* begin() const { return items_; }
    const ZtNameEnum* end() const { return items_ + count_; }

protected:
    const ZtNameEnum* items_ = nullptr;
    int count_ = 0;
};

// An array of names that owns its items (all empty names when made).
class ZT_EXPORT ZtNameListInstance : public ZtNameList {
public:
    // `count` items; none for 0 or less.
    explicit ZtNameListInstance(int count);
    ZtNameListInstance(const ZtNameListInstance&) = delete;
    ZtNameListInstance& operator=(const ZtNameListInstance&) = delete;
    ~ZtNameListInstance();

    // Stores `name` at `index`. An index outside 0..getCount()-1 raises ZtError code 4
    // (argument out of range) and changes nothing.
    void setItem(ZtName name, int index);

private:
    ZtNameEnum* owned_ = nullptr;
};

// Unit codes carried by every numeric value (6 bits). The absolute lengths have fixed factors
// (see ZtLength); the relative lengths need a font size or a viewport that the formatter
// supplies. Codes not listed are unassigned.
enum ZtUnitType : std::uint8_t {
    ZT_UNIT_UNKNOWN = 0, // a string of no particular kind
    ZT_UNIT_NUMBER = 1,  // a plain number
    ZT_UNIT_PERCENT = 2,
    // Relative lengths, first group.
    ZT_UNIT_EM = 3,
    ZT_UNIT_EX = 4,
    ZT_UNIT_PX = 5,
    // Absolute lengths.
    ZT_UNIT_CM = 6,
    ZT_UNIT_MM = 7,
    ZT_UNIT_IN = 8,
    ZT_UNIT_PT = 9, // the unit a ZtLength is stored in
    ZT_UNIT_PC = 10,
    ZT_UNIT_JPT = 11, // Japanese point, 0.3514 mm
    ZT_UNIT_Q = 12,   // 0.25 mm
    // Angles.
    ZT_UNIT_DEG = 13,
    ZT_UNIT_RAD = 14,
    ZT_UNIT_GRAD = 15,
    ZT_UNIT_CHARACTER = 20, // an integer holding a code point
    ZT_UNIT_LITERAL = 21,   // a quoted string
    ZT_UNIT_URI = 22,       // a URI string
    ZT_UNIT_NAME = 23,      // carried by every name value
    ZT_UNIT_COLOR = 24,     // an integer holding a colour
    ZT_UNIT_DD = 26,        // Didot point
    ZT_UNIT_CC = 27,        // cicero, 12 Didot points
    ZT_UNIT_TWIP = 29,      // a twentieth of a point
    // Relative lengths, second group.
    ZT_UNIT_REM = 32,
    ZT_UNIT_CH = 33,
    ZT_UNIT_VW = 34,
    ZT_UNIT_VH = 35,
    ZT_UNIT_VMIN = 36,
    ZT_UNIT_VMAX = 37,
    ZT_UNIT_LH = 38,
    ZT_UNIT_RLH = 39,
    ZT_UNIT_PVW = 40, // page-relative viewport units
    ZT_UNIT_PVH = 41,
    ZT_UNIT_PVMIN = 42,
    ZT_UNIT_PVMAX = 43,
    ZT_UNIT_VI = 44,
    ZT_UNIT_VB = 45,
    ZT_UNIT_IC = 46,
    ZT_UNIT_CAP = 47,
    // More absolute lengths.
    ZT_UNIT_EMU = 50,   // English Metric Unit, 1/12700 point
    ZT_UNIT_PC2 = 51,   // a second code for the pica
    ZT_UNIT_LIMIT = 64, // one past the largest code
};

// The kind of a value (3 bits).
enum ZtValueType : std::uint8_t {
    ZT_VALUE_NULL = 0,
    ZT_VALUE_INTEGER = 1,
    ZT_VALUE_REAL = 2,
    ZT_VALUE_NAME = 3,
    ZT_VALUE_STRING = 4,   // owns a heap UnicodeString
    ZT_VALUE_OBJECT = 5,   // holds a reference to a ZtRCObject
    ZT_VALUE_ARRAY = 6,    // holds a reference to a ZtValueArray
    ZT_VALUE_COMPOUND = 7, // holds a reference to a ZtNamedValueMap
};

// A 32-bit integer with an undefined state, -2147483648, which therefore cannot be held as a
// number. Arithmetic is plain 32-bit integer arithmetic: sums, differences and products wrap;
// division by zero and -2147483648 / -1 fault as the processor does.
class ZT_EXPORT ZtInt {
public:
    static constexpr int UNDEFINED = INT_MIN;

    constexpr ZtInt() noexcept = default;
    constexpr ZtInt(int value) noexcept : value_(value) {}
    constexpr operator int() const noexcept { return value_; }

    constexpr bool isUndef() const noexcept { return value_ == UNDEFINED; }
    constexpr void setUndef() noexcept { value_ = UNDEFINED; }

    constexpr ZtInt& operator+=(int n) noexcept { return *this = *this + n; }
    constexpr ZtInt& operator-=(int n) noexcept { return *this = *this - n; }
    constexpr ZtInt& operator*=(int n) noexcept { return *this = *this * n; }
    constexpr ZtInt& operator/=(int n) noexcept { return *this = *this / n; }
    constexpr ZtInt operator+() const noexcept { return *this; }
    constexpr ZtInt operator-() const noexcept { return wrap(0u - unsigned(value_)); }
    constexpr ZtInt operator+(int n) const noexcept { return wrap(unsigned(value_) + unsigned(n)); }
    constexpr ZtInt operator-(int n) const noexcept { return wrap(unsigned(value_) - unsigned(n)); }
    constexpr ZtInt operator*(int n) const noexcept { return wrap(unsigned(value_) * unsigned(n)); }
    constexpr ZtInt operator/(int n) const noexcept { return ZtInt(value_ / n); }
    constexpr ZtInt& operator++() noexcept { return *this += 1; }
    constexpr ZtInt& operator--() noexcept { return *this -= 1; }
    constexpr ZtInt operator++(int) noexcept {
        ZtInt old = *this;
        *this += 1;
        return old;
    }
    constexpr ZtInt operator--(int) noexcept {
        ZtInt old = *this;
        *this -= 1;
        return old;
    }

private:
    static constexpr ZtInt wrap(unsigned bits) noexcept { return ZtInt(static_cast<int>(bits)); }

    int value_ = UNDEFINED;
};

// A boolean that may be undefined (the default).
class ZT_EXPORT ZtBool {
public:
    constexpr ZtBool() noexcept = default;
    constexpr ZtBool(bool value) noexcept : value_(value), undefined_(false) {}

    constexpr bool isUndef() const noexcept { return undefined_; }
    constexpr void setUndef() noexcept {
        value_ = false;
        undefined_ = true;
    }
    // The value, or `defaultValue` when undefined.
    constexpr bool isTrue(bool defaultValue) const noexcept {
        return undefined_ ? defaultValue : value_;
    }

    // Equal when both are undefined, or both defined with the same value.
    friend constexpr bool operator==(ZtBool a, ZtBool b) noexcept {
        return a.undefined_ == b.undefined_ && (a.undefined_ || a.value_ == b.value_);
    }
    // Equal when defined and holding `b`.
    friend constexpr bool operator==(ZtBool a, bool b) noexcept {
        return !a.undefined_ && a.value_ == b;
    }

private:
    bool value_ = false;
    bool undefined_ = true;
};

// A length in points (1/72 inch) held in one float; NaN stands for auto. Absolute units convert
// through fixed single-precision factors; other unit codes cannot be turned into a length here.
class ZT_EXPORT ZtLength {
public:
    // Auto.
    constexpr ZtLength() noexcept = default;
    constexpr ZtLength(float points) noexcept : points_(points) {}
    constexpr ZtLength(double points) noexcept : points_(static_cast<float>(points)) {}
    constexpr ZtLength(int points) noexcept : points_(static_cast<float>(points)) {}
    constexpr ZtLength(unsigned int points) noexcept : points_(static_cast<float>(points)) {}
    // `value` times the points per unit of `unit`; auto for a code that is not an absolute length.
    ZtLength(float value, ZtUnitType unit) noexcept;
    // The value's getLengthValue(false).
    explicit ZtLength(const ZtValue& value);

    static constexpr ZtLength autoLength() noexcept { return ZtLength(); }
    // Points per unit (NaN for a code that is not an absolute length).
    static float getUnitFactor(ZtUnitType unit) noexcept;
    static bool isAbsoluteUnit(ZtUnitType unit) noexcept;

    constexpr operator float() const noexcept { return points_; }

    // The length in `unit`; NaN for a code that is not an absolute length.
    float getRealValue(ZtUnitType unit) const noexcept;
    // getRealValue(unit) + 0.5, truncated toward zero (-2.5 gives -2). An auto length, a code
    // that is not an absolute length or a result beyond the int range gives -2147483648 (what an
    // invalid float-to-integer conversion yields), which callers test for.
    int getIntegerValue(ZtUnitType unit) const noexcept;
    // dpi × points / 72, rounded half away from zero (-2147483648 for auto).
    int getPixelCount(float dpi) const noexcept;

    constexpr bool isZero() const noexcept { return points_ == 0.0f; }
    constexpr bool isPositive() const noexcept { return points_ > 0.0f; }
    constexpr bool isNegative() const noexcept { return points_ < 0.0f; }
    constexpr bool isAlmostZero(float eps) const noexcept {
        return -eps <= points_ && points_ <= eps;
    }
    constexpr bool isAlmostZeroOrPositive(float eps) const noexcept { return points_ >= -eps; }
    constexpr bool isAlmostZeroOrNegative(float eps) const noexcept { return points_ <= eps; }
    constexpr bool isAlmostEqual(ZtLength other, float eps) const noexcept {
        float d = points_ - other.points_;
        return -eps <= d && d <= eps;
    }
    constexpr bool isAuto() const noexcept { return points_ != points_; }
    // Beyond ±100000 mm; auto is not invalid.
    bool isInvalid() const noexcept;
    // Both auto, or neither and equal.
    constexpr bool eq(ZtLength other) const noexcept {
        return isAuto() ? other.isAuto() : points_ == other.points_;
    }

    // Compound assignments leave auto unchanged: auto absorbs arithmetic.
    ZtLength& operator+=(ZtLength other) noexcept { return apply(points_ + other.points_); }
    ZtLength& operator+=(float n) noexcept { return apply(points_ + n); }
    ZtLength& operator-=(ZtLength other) noexcept { return apply(points_ - other.points_); }
    ZtLength& operator-=(float n) noexcept { return apply(points_ - n); }
    ZtLength& operator*=(float n) noexcept { return apply(points_ * n); }
    ZtLength& operator/=(float n) noexcept { return apply(points_ / n); }

    // Binary operators compute on the float as it is.
    constexpr ZtLength operator-() const noexcept { return ZtLength(-points_); }
    constexpr ZtLength operator+(float n) const noexcept { return ZtLength(points_ + n); }
    constexpr ZtLength operator-(float n) const noexcept { return ZtLength(points_ - n); }
    constexpr ZtLength operator*(float n) const noexcept { return ZtLength(points_ * n); }
    constexpr ZtLength operator/(float n) const noexcept { return ZtLength(points_ / n); }
    constexpr ZtLength operator+(double n) const noexcept { return ZtLength(points_ + n); }
    constexpr ZtLength operator-(double n) const noexcept { return ZtLength(points_ - n); }
    constexpr ZtLength operator*(double n) const noexcept { return ZtLength(points_ * n); }
    constexpr ZtLength operator/(double n) const noexcept { return ZtLength(points_ / n); }
    constexpr ZtLength operator+(int n) const noexcept { return ZtLength(points_ + float(n)); }
    constexpr ZtLength operator-(int n) const noexcept { return ZtLength(points_ - float(n)); }
    constexpr ZtLength operator*(int n) const noexcept { return ZtLength(points_ * float(n)); }
    constexpr ZtLength operator/(int n) const noexcept { return ZtLength(points_ / float(n)); }
    constexpr ZtLength operator+(long n) const noexcept { return ZtLength(points_ + float(n)); }
    constexpr ZtLength operator-(long n) const noexcept { return ZtLength(points_ - float(n)); }

private:
    ZtLength& apply(float result) noexcept {
        if (!isAuto())
            points_ = result;
        return *this;
    }

    float points_ = std::numeric_limits<float>::quiet_NaN();
};

class ZtValueArray;
class ZtNamedValueMap;

// The tagged value: a 64-bit payload and a 32-bit type word (bits 0-2 the ZtValueType, bits 3-8
// the ZtUnitType, bits 9 and up a ZtNameEnum qualifier, 0 in every value the constructors
// build). Strings are owned and copied with the value; objects, arrays and compounds are
// shared and reference-counted. Accessors of the wrong type never throw: they give 0, the empty
// name, NaN or null.
//
// Text forms: toString() writes numbers in their shortest exact form followed by the unit
// keyword ("12pt", "50%", "1.5em"; plain numbers bare; non-finite reals as "nan", "inf",
// "-inf" without unit), names and strings as they are, characters as the character, colours as
// "#RRGGBB" (or "#AARRGGBB" beyond 24 bits), objects as their type name, arrays as their items
// separated by spaces (nested arrays in parentheses) and compounds as "{name: value; ...}".
// toQuotedString() (toString(true)) is the same with strings quoted and escaped as CSS strings;
// toCssText() additionally writes URI strings as url("...") and characters as quoted strings.
//
// Order (operator<=>, ==): null < numbers < names < strings < objects < arrays < compounds.
// Numbers order by unit code, then numerically (an integer and a real of equal value and unit
// are equivalent; NaN after every number, equal to NaN); names by number; strings by unit, then
// by UTF-16 code units; objects by address; arrays and compounds item by item; the qualifier
// breaks remaining ties.
class ZT_EXPORT ZtValue {
public:
    constexpr ZtValue() noexcept = default;
    ZtValue(int value, ZtUnitType unit = ZT_UNIT_NUMBER) noexcept;
    ZtValue(float value, ZtUnitType unit = ZT_UNIT_NUMBER) noexcept;
    // Narrowed to float.
    ZtValue(double value, ZtUnitType unit = ZT_UNIT_NUMBER) noexcept;
    // A real in points (unit ZT_UNIT_PT); auto gives NaN.
    ZtValue(const ZtLength& length) noexcept;
    ZtValue(ZtName name) noexcept;
    ZtValue(ZtNameEnum name) noexcept;
    // The name "true" or "false".
    ZtValue(bool value) noexcept;
    // A string: ZT_UNIT_UNKNOWN, ZT_UNIT_LITERAL or ZT_UNIT_URI.
    ZtValue(const UnicodeString& text, ZtUnitType unit = ZT_UNIT_UNKNOWN);
    ZtValue(const char16_t* text, ZtUnitType unit = ZT_UNIT_UNKNOWN);
    ZtValue(const char*) = delete; // would otherwise become a boolean
    ZtValue(const void*) = delete;
    // A shared object, taking a reference; a null pointer gives the null value.
    ZtValue(ZtRCObject* object) noexcept;
    ZtValue(ZtValueArray* array) noexcept;
    ZtValue(ZtNamedValueMap* map) noexcept;
    constexpr ZtValue(std::nullptr_t) noexcept {}
    ZtValue(const ZtValue& other);
    ZtValue(ZtValue&& other) noexcept;
    ZtValue& operator=(const ZtValue& other);
    ZtValue& operator=(ZtValue&& other) noexcept;
    ~ZtValue() { release(); }

    ZtValueType getValueType() const noexcept { return static_cast<ZtValueType>(word_ & 7u); }
    ZtUnitType getUnitType() const noexcept { return static_cast<ZtUnitType>((word_ >> 3) & 63u); }
    // The qualifier bits (9 and up) as a name.
    ZtNameEnum getQualifier() const noexcept { return static_cast<ZtNameEnum>(word_ >> 9); }
    // Replaces the value type only. A change to or from a type that owns its payload (string,
    // object, array, compound) first drops what is held and clears the payload, so that no
    // number is ever taken for a pointer.
    void setValueType(ZtValueType type) noexcept;
    // Replaces the unit only (codes are taken modulo 64).
    void setUnitType(ZtUnitType unit) noexcept;
    void setQualifier(ZtNameEnum qualifier) noexcept;
    // Replace the whole word (qualifier 0), with the same care as setValueType.
    void setValueUnitType(ZtValueType type) noexcept;
    void setValueUnitType(ZtValueType type, ZtUnitType unit) noexcept;

    bool isNull() const noexcept { return getValueType() == ZT_VALUE_NULL; }
    bool isEmpty() const noexcept;
    bool isInteger() const noexcept { return getValueType() == ZT_VALUE_INTEGER; }
    bool isReal() const noexcept { return getValueType() == ZT_VALUE_REAL; }
    bool isNumeric() const noexcept { return isInteger() || isReal(); }
    bool isName() const noexcept { return getValueType() == ZT_VALUE_NAME; }
    bool isString() const noexcept { return getValueType() == ZT_VALUE_STRING; }
    bool isObject() const noexcept {
        return getValueType() == ZT_VALUE_OBJECT && payload_.object != nullptr;
    }
    bool isArray() const noexcept {
        return getValueType() == ZT_VALUE_ARRAY && payload_.array != nullptr;
    }
    bool isCompound() const noexcept {
        return getValueType() >= ZT_VALUE_COMPOUND && payload_.map != nullptr;
    }
    bool isNumber() const noexcept { return isNumeric() && getUnitType() == ZT_UNIT_NUMBER; }
    bool isNumberZero() const noexcept;
    bool isUnitNumber() const noexcept { return isNumeric() && getUnitType() != ZT_UNIT_NUMBER; }
    bool isPercentage() const noexcept { return isNumeric() && getUnitType() == ZT_UNIT_PERCENT; }
    bool isNumberOrPercentage() const noexcept {
        return isNumeric() && (getUnitType() == ZT_UNIT_NUMBER || getUnitType() == ZT_UNIT_PERCENT);
    }
    // Units 6 to 12, 26, 27, 29, 50 and 51.
    bool isAbsoluteLength() const noexcept;
    // Units 3 to 5 and 32 to 47.
    bool isRelativeLength() const noexcept;
    // Units 13 to 15.
    bool isAngle() const noexcept {
        return isNumeric() && getUnitType() >= ZT_UNIT_DEG && getUnitType() <= ZT_UNIT_GRAD;
    }
    bool isCharacter() const noexcept { return isInteger() && getUnitType() == ZT_UNIT_CHARACTER; }
    bool isNumericalValue() const noexcept {
        return isNumeric() && getUnitType() != ZT_UNIT_CHARACTER;
    }
    bool isUnknownString() const noexcept { return isString() && getUnitType() == ZT_UNIT_UNKNOWN; }
    bool isLiteralString() const noexcept { return isString() && getUnitType() == ZT_UNIT_LITERAL; }
    bool isUriString() const noexcept { return isString() && getUnitType() == ZT_UNIT_URI; }
    // A name value "true" or "yes".
    bool isTrue() const noexcept { return isName() && isTrue(payload_.name); }
    // A name value "false" or "no".
    bool isFalse() const noexcept {
        return isName() && (payload_.name == NM_false || payload_.name == NM_no);
    }
    static bool isTrue(ZtNameEnum name) noexcept { return name == NM_true || name == NM_yes; }

    // An integer as it is; a real rounded by floor(x + 0.5) and clamped to the int range (NaN
    // gives -2147483648); 0 for other types.
    int getIntegerValue() const noexcept;
    // A number in `target` units: the value itself when the units agree, converted through the
    // length factors between absolute lengths and between angles; NaN otherwise and for other
    // types.
    float getRealValue(ZtUnitType target) const noexcept;
    ZtName getNameValue() const noexcept { return isName() ? ZtName(payload_.name) : ZtName(); }
    ZtName getLowerNameValue() const { return getNameValue().lowerName(); }
    // The text of a string, the string of a name, else the empty string.
    const UnicodeString& getStringValue() const;
    // An absolute length as a ZtLength; a plain number 0 as 0; another plain number as points
    // when `numberAsPoints`; auto for everything else.
    ZtLength getLengthValue(bool numberAsPoints) const noexcept;
    ZtRCObject* getObjectValue() const noexcept {
        return getValueType() == ZT_VALUE_OBJECT ? payload_.object : nullptr;
    }
    ZtValueArray* getValueArray() const noexcept {
        return getValueType() == ZT_VALUE_ARRAY ? payload_.array : nullptr;
    }
    ZtNamedValueMap* getNamedValueMap() const noexcept {
        return getValueType() == ZT_VALUE_COMPOUND ? payload_.map : nullptr;
    }

    // Back to the null value, releasing what was held.
    void clear() noexcept;

    UnicodeString toString() const { return toString(false); }
    // With `quoteStrings`, strings are written as quoted, escaped CSS strings.
    UnicodeString toString(bool quoteStrings) const;
    UnicodeString toQuotedString() const { return toString(true); }
    UnicodeString toCssText() const;
    explicit operator UnicodeString() const { return toString(); }

    friend ZT_EXPORT std::weak_ordering operator<=>(const ZtValue& a, const ZtValue& b);
    friend bool operator==(const ZtValue& a, const ZtValue& b) { return std::is_eq(a <=> b); }

private:
    static constexpr std::uint32_t bitfield(ZtValueType type, ZtUnitType unit,
                                            ZtNameEnum qualifier = NM_EMPTY_NAME) noexcept {
        return static_cast<std::uint32_t>(qualifier) << 9 | (unit & 63u) << 3 | (type & 7u);
    }
    static bool ownsPayload(ZtValueType type) noexcept { return type >= ZT_VALUE_STRING; }
    void release() noexcept;
    void copyFrom(const ZtValue& other);
    void setWord(std::uint32_t word) noexcept;

    union Payload {
        std::int32_t integer;
        float real;
        ZtNameEnum name;
        UnicodeString* string; // may be null after a change of type
        ZtRCObject* object;
        ZtValueArray* array;
        ZtNamedValueMap* map;
        std::uint64_t bits;
    };
    Payload payload_{.bits = 0};
    std::uint32_t word_ = 0;
};

static_assert(sizeof(ZtValue) == 16, "a value is a 64-bit payload and a 32-bit word");

// A shared, growable array of values. Values are copied in and out by ZtValue's rules (strings
// copied, arrays and objects shared). Reading outside the array gives the null value; writing
// outside raises ZtError code 4 (argument out of range) and changes nothing.
class ZT_EXPORT ZtValueArray : public ZtRCObject {
    ZT_DECLARE_TYPE(ZtValueArray, ZtRCObject, ZtTypeId::ValueArray)

public:
    using const_iterator = std::vector<ZtValue>::const_iterator;
    using iterator = std::vector<ZtValue>::iterator;

    ZtValueArray() = default;
    // `count` null values.
    explicit ZtValueArray(int count);
    ZtValueArray(std::initializer_list<ZtValue> values) : values_(values) {}

    int getCount() const noexcept { return static_cast<int>(values_.size()); }
    int size() const noexcept { return getCount(); }
    bool isEmpty() const noexcept { return values_.empty(); }
    const ZtValue& get(int index) const noexcept;
    const ZtValue& operator[](int index) const noexcept { return get(index); }
    void set(int index, const ZtValue& value);
    void set(int index, ZtValue&& value);
    void append(const ZtValue& value) { values_.push_back(value); }
    void append(ZtValue&& value) { values_.push_back(std::move(value)); }
    // Inserts before `index` (0 to getCount()).
    void insert(int index, const ZtValue& value);
    void remove(int index);
    void clear() noexcept { values_.clear(); }
    void reserve(int count);
    // The index of the first value equal to `value`, -1 when there is none.
    int indexOf(const ZtValue& value) const;

    const_iterator begin() const noexcept { return values_.begin(); }
    const_iterator end() const noexcept { return values_.end(); }
    iterator begin() noexcept { return values_.begin(); }
    iterator end() noexcept { return values_.end(); }

    // A new array holding copies of the values.
    ZtPtr<ZtValueArray> clone() const;

private:
    void checkIndex(int index, int limit, const char16_t* operation) const;

    std::vector<ZtValue> values_;
};

// One entry of a ZtNamedValueMap.
class ZT_EXPORT ZtNamedValue {
public:
    ZtNamedValue(ZtName name, ZtValue value) : name_(name), value_(std::move(value)) {}
    ZtName getName() const noexcept { return name_; }
    const ZtValue& getValue() const noexcept { return value_; }

private:
    friend class ZtNamedValueMap;
    ZtName name_;
    ZtValue value_;
};

// A shared map from names to values, walked in the order of the name numbers.
class ZT_EXPORT ZtNamedValueMap : public ZtRCObject {
    ZT_DECLARE_TYPE(ZtNamedValueMap, ZtRCObject, ZtTypeId::NamedValueMap)

public:
    using const_iterator = std::vector<ZtNamedValue>::const_iterator;

    ZtNamedValueMap() = default;

    int getCount() const noexcept { return static_cast<int>(entries_.size()); }
    bool isEmpty() const noexcept { return entries_.empty(); }
    bool hasValue(ZtName name) const noexcept;
    // The value of `name`, the null value when there is none.
    const ZtValue& getValue(ZtName name) const noexcept;
    // Sets (adds or replaces) the value of `name`.
    void setValue(ZtName name, const ZtValue& value);
    void setValue(ZtName name, ZtValue&& value);
    // Removes the entry of `name`; false when there was none.
    bool removeValue(ZtName name) noexcept;
    void clear() noexcept { entries_.clear(); }

    const_iterator begin() const noexcept { return entries_.begin(); }
    const_iterator end() const noexcept { return entries_.end(); }

    // A new map holding copies of the entries.
    ZtPtr<ZtNamedValueMap> clone() const;

private:
    std::vector<ZtNamedValue>::iterator find(ZtName name) noexcept;
    const_iterator find(ZtName name) const noexcept;

    std::vector<ZtNamedValue> entries_; // ordered by name number
};

} // namespace ZtCommonNS

template <> struct std::hash<ZtCommonNS::ZtName> {
    std::size_t operator()(ZtCommonNS::ZtName name) const noexcept {
        return std::hash<std::int32_t>()(name.getNameEnum());
    }
};
