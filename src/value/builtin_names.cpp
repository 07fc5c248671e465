// Lookup in the generated built-in name table. A text is hashed once; the top bits of the hash
// pick a bucket whose displacement leads to the one slot the text can occupy, so a lookup is
// one hash, two table reads and one comparison, hit or miss.
#include "value/builtin_names.h"

#include "value/name_hash.h"
#include "ztcommon/value_names.h"

namespace ZtCommonNS::BuiltinNames {

namespace {

#include "value/builtin_names_table.inc"

static_assert(kBuiltinCount == NM_LAST_BUILTIN, "the enumeration and the table disagree");

// One UnicodeString per number, aliasing the pool (no copy, no allocation), built before any
// default-priority static initialiser of the library so that those may already use names.
struct BuiltinStrings {
    BuiltinStrings() {
        for (int number = 1; number <= kBuiltinCount; ++number)
            items[number].setTo(false, kPool + kOffset[number], kLength[number]);
    }
    UnicodeString items[kBuiltinCount + 1];
};

__attribute__((init_priority(102))) const BuiltinStrings builtinStrings;

} // namespace

std::int32_t find(const char16_t* s, std::int32_t n) {
    if (n <= 0 || n > kBuiltinMaxLength)
        return 0;
    std::uint64_t h = NameHash::hashUnits(s, n, kBuiltinSeed);
    std::uint64_t displacement = kDisplacement[h >> (64 - kBucketBits)];
    std::uint64_t slot =
        ((h ^ (displacement * NameHash::kMulDisplace)) * NameHash::kMulBlock) >> (64 - kSlotBits);
    std::int32_t number = kSlotName[slot];
    if (number == 0 || kLength[number] != n)
        return 0;
    if (!NameHash::sameUnits(kPool + kOffset[number], s, n))
        return 0;
    return number;
}

const UnicodeString& string(std::int32_t number) {
    return builtinStrings.items[number];
}

} // namespace ZtCommonNS::BuiltinNames
