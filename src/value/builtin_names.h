// The table of built-in names: numbers 1 to 2842, immutable from load to unload, looked up
// through a minimal perfect hash without locking or allocating.
#pragma once

#include <cstdint>

#include "ztcommon/foundation.h"

namespace ZtCommonNS::BuiltinNames {

// The number of the text, or 0.
std::int32_t find(const char16_t* s, std::int32_t n);

// The string of a number from 0 to NM_LAST_BUILTIN (0: the empty string). The strings alias
// the generated pool and live until the library is unloaded.
const UnicodeString& string(std::int32_t number);

} // namespace ZtCommonNS::BuiltinNames
