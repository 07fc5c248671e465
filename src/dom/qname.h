// Splitting qualified names, shared by the factory and the attribute code.
#pragma once

#include "ztcommon/value.h"

namespace ZtCommonNS {

// Splits `qname` at its first colon into prefix and local name. A name without a colon, or
// whose only colons are at its ends, has an empty prefix and is its own local name. Returns
// whether there was a prefix.
bool splitQName(ZtName qname, ZtName* prefix, ZtName* local);

} // namespace ZtCommonNS
