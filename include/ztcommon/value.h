// The value model of ZtCommon: interned names and the name tables with their built-in
// vocabulary.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>

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

} // namespace ZtCommonNS

template <> struct std::hash<ZtCommonNS::ZtName> {
    std::size_t operator()(ZtCommonNS::ZtName name) const noexcept {
        return std::hash<std::int32_t>()(name.getNameEnum());
    }
};
