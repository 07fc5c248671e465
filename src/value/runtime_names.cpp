// Open addressing with linear probing over a table kept at most half full; the slots carry half
// of the hash so that most mismatches are rejected without touching the text.
#include "value/runtime_names.h"

#include "value/name_hash.h"

#include <limits>
#include <new>

namespace ZtCommonNS {

namespace {
constexpr size_t kInitialSlots = 64;

bool sameText(const UnicodeString& stored, const char16_t* s, std::int32_t n) {
    return stored.length() == n && NameHash::sameUnits(stored.getBuffer(), s, n);
}
} // namespace

std::int32_t ZtNameTable::Storage::probe(const char16_t* s, std::int32_t n, std::uint64_t h,
                                         size_t& at) const {
    const size_t mask = slots_.size() - 1;
    const auto tag = static_cast<std::uint32_t>(h >> 32);
    for (at = static_cast<size_t>(h) & mask;; at = (at + 1) & mask) {
        const Slot& slot = slots_[at];
        if (slot.index < 0)
            return 0;
        if (slot.tag == tag && sameText(strings_[static_cast<size_t>(slot.index)], s, n))
            return first_ + slot.index;
    }
}

std::int32_t ZtNameTable::Storage::find(const char16_t* s, std::int32_t n, std::uint64_t h) const {
    if (slots_.empty())
        return 0;
    size_t at = 0;
    return probe(s, n, h, at);
}

std::int32_t ZtNameTable::Storage::intern(const char16_t* s, std::int32_t n, std::uint64_t h) {
    if (slots_.empty())
        grow();
    size_t at = 0;
    if (std::int32_t number = probe(s, n, h, at))
        return number;
    if (last() == std::numeric_limits<std::int32_t>::max())
        throw std::bad_alloc(); // no number left to give
    if ((strings_.size() + 1) * 2 > slots_.size()) {
        grow();
        probe(s, n, h, at);
    }
    // Append the text first: if that throws, the slots still describe the old contents.
    strings_.emplace_back(s, n);
    try {
        hashes_.push_back(h);
    } catch (...) {
        strings_.pop_back();
        throw;
    }
    slots_[at] = {static_cast<std::uint32_t>(h >> 32),
                  static_cast<std::int32_t>(strings_.size() - 1)};
    return last();
}

void ZtNameTable::Storage::grow() {
    std::vector<Slot> bigger(slots_.empty() ? kInitialSlots : slots_.size() * 2, Slot{0, -1});
    const size_t mask = bigger.size() - 1;
    for (size_t index = 0; index < hashes_.size(); ++index) {
        std::uint64_t h = hashes_[index];
        size_t at = static_cast<size_t>(h) & mask;
        while (bigger[at].index >= 0)
            at = (at + 1) & mask;
        bigger[at] = {static_cast<std::uint32_t>(h >> 32), static_cast<std::int32_t>(index)};
    }
    slots_.swap(bigger);
}

const UnicodeString* ZtNameTable::Storage::string(std::int32_t number) const {
    if (number < first_ || number > last())
        return nullptr;
    return &strings_[static_cast<size_t>(number - first_)];
}

} // namespace ZtCommonNS
