// Utility statics that several families share. ZtUtil and ZtXmlUtil are classes of static
// members only; each family declares its members in its own section below, and larger nested
// types (such as ZtUtil::CounterStyle) are only declared here and defined in their family's
// header.
#pragma once

#include "ztcommon/foundation.h"

namespace ZtCommonNS {

class ZT_EXPORT ZtUtil {
public:
    ZtUtil() = delete;

    // Releases the process-wide tables that the library builds on first use.
    static void cleanup();

    // --- Counter styles (counter.h) ---

    // --- Numbers and Unicode ranges (text.h) ---

    // --- Compression (stream.h) ---
};

class ZT_EXPORT ZtXmlUtil {
public:
    ZtXmlUtil() = delete;

    // --- Qualified names (dom.h) ---
};

} // namespace ZtCommonNS
