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

    // --- Numbers and Unicode ranges (text.h) ---

    // --- Compression (stream.h) ---
};

class ZT_EXPORT ZtXmlUtil {
public:
    ZtXmlUtil() = delete;

    // --- Qualified names (dom.h) ---

    // "prefix:local", or the local name alone when the prefix is empty.
    static ZtName makeQName(ZtName prefix, ZtName local);
    // The parts of a qualified name split at its first colon. A name without a colon (or with
    // a colon only at its start or end) has an empty prefix and is its own local part.
    static ZtName getPrefixFromQName(ZtName qname);
    static ZtName getLocalPartFromQName(ZtName qname);
};

} // namespace ZtCommonNS
