// The table of predefined counter styles, built on first use and kept for the life of the
// process (pointers to its styles are handed out and must stay valid).
#pragma once

#include "ztcommon/counter.h"

namespace ZtCommonNS {

// The predefined "decimal" style, the last resort of every fallback.
const ZtUtil::CounterStyle* predefinedDecimalStyle();

} // namespace ZtCommonNS
