// The run-time half of a name table: an open-addressing hash set of strings that hands out
// consecutive numbers. Not synchronised: ZtNameTable guards it with the name-table lock.
#pragma once

#include <cstdint>
#include <deque>
#include <vector>

#include "ztcommon/value.h"

namespace ZtCommonNS {

// Hidden: an implementation detail of the exported ZtNameTable.
class __attribute__((visibility("hidden"))) ZtNameTable::Storage {
public:
    explicit Storage(std::int32_t firstNumber) : first_(firstNumber) {}

    // The number of the text of `n` units with run-time hash `h`, or 0.
    std::int32_t find(const char16_t* s, std::int32_t n, std::uint64_t h) const;
    // The number of the text, adding it with the next number when it is new.
    std::int32_t intern(const char16_t* s, std::int32_t n, std::uint64_t h);
    // The string of a number of this storage, or null. Strings never move: the deque keeps its
    // elements in place as it grows, so references handed out stay valid.
    const UnicodeString* string(std::int32_t number) const;
    // The last number given out (first number - 1 when empty).
    std::int32_t last() const { return first_ + static_cast<std::int32_t>(strings_.size()) - 1; }

private:
    // A free slot has index -1; tag is the upper half of the hash, compared before the text.
    struct Slot {
        std::uint32_t tag;
        std::int32_t index;
    };

    std::int32_t probe(const char16_t* s, std::int32_t n, std::uint64_t h, size_t& at) const;
    void grow();

    std::int32_t first_;
    std::vector<Slot> slots_; // a power of two in size, at most half full
    std::deque<UnicodeString> strings_;
    std::vector<std::uint64_t> hashes_; // of strings_, for growing without rehashing text
};

} // namespace ZtCommonNS
