// Operations on the shared name table for the library's own use (ZtName), with texts given as
// UTF-16 units.
#pragma once

#include <cstdint>

#include "ztcommon/value.h"

namespace ZtCommonNS {

struct NameTableInternal {
    // The lock under which every run-time name of every table is read or added.
    static ZtLock& lock();
    // The number of the n units (n > 0) in the shared table, interning them when new.
    static ZtNameEnum internShared(const char16_t* s, std::int32_t n);
    // The number of the n units (n > 0) in the shared table, or 0; never interns.
    static ZtNameEnum findShared(const char16_t* s, std::int32_t n);
    // The shared table's last number (NM_LAST_BUILTIN when there is no shared table).
    static ZtNameEnum sharedLast();
};

} // namespace ZtCommonNS
