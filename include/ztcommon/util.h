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

    // Reads a hexadecimal number (digits 0-9, a-f, A-F, any number of leading zeros) at `pos`.
    // On success stores it in `value`, moves `pos` past the last digit and returns true. Fails,
    // changing neither `pos` nor `value`, when no hexadecimal digit stands at `pos` or when the
    // number exceeds 0x10FFFF, the last Unicode code point.
    // UTF-16 text up to `limit`:
    static bool parseHexNum(const char16_t*& pos, const char16_t* limit, int32_t& value) noexcept;
    // A NUL-terminated wide text:
    static bool parseHexNum(const wchar_t*& pos, int32_t& value) noexcept;
    // From the UTF-16 index `index` of `text` (an index outside the text fails):
    static bool parseHexNum(const UnicodeString& text, int32_t& index, int32_t& value) noexcept;

    // --- Compression (stream.h) ---
};

class ZT_EXPORT ZtXmlUtil {
public:
    ZtXmlUtil() = delete;

    // --- Qualified names (dom.h) ---
};

} // namespace ZtCommonNS
