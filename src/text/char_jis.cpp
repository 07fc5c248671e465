// ZtChar::isSymbolJIS: membership in the symbol rows of JIS X 0208, from a table generated
// out of ICU's Japanese converters (scripts/gen_jis_symbols.cpp).
#include <algorithm>
#include <iterator>

#include "ztcommon/text.h"

namespace ZtCommonNS {

namespace {
constexpr UChar kJisSymbols[] = {
#include "text/jis_symbols.inc"
};
} // namespace

bool ZtChar::isSymbolJIS(UChar32 c) {
    if (c < kJisSymbols[0] || c > kJisSymbols[std::size(kJisSymbols) - 1])
        return false;
    return std::binary_search(std::begin(kJisSymbols), std::end(kJisSymbols),
                              static_cast<UChar>(c));
}

} // namespace ZtCommonNS
