// Utility statics that several families share. ZtUtil and ZtXmlUtil are classes of static
// members only; each family declares its members in its own section below, and larger nested
// types (such as ZtUtil::CounterStyle) are only declared here and defined in their family's
// header.
#pragma once

#include "ztcommon/foundation.h"

namespace ZtCommonNS {

class ZtName;

class ZT_EXPORT ZtUtil {
public:
    ZtUtil() = delete;

    // Releases the process-wide tables that the library builds on first use.
    static void cleanup();

    // --- Counter styles (counter.h) ---

    class CounterStyle;
    // The predefined counter style of that name (one of the 130 of the table), or null for
    // any other name. The table is the same for every caller, so `context` is not used; it
    // is there so that this function can serve as a CounterStyle::Lookup.
    static const CounterStyle* getPredefinedCounterStyle(ZtName name, void* context = nullptr);

    // --- Numbers and Unicode ranges (text.h) ---

    // --- Compression (stream.h) ---
};

class ZT_EXPORT ZtXmlUtil {
public:
    ZtXmlUtil() = delete;

    // --- Qualified names (dom.h) ---
};

} // namespace ZtCommonNS
