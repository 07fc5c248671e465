// The predefined counter styles: built from the generated table on first use, read-only and
// shared by all threads for the life of the process. ZtUtil::cleanup leaves them alone, as
// host programs hold pointers to them.
#include "counter/predefined.h"

#include <cstdint>
#include <vector>

#include "counter/counter_style_access.h"
#include "counter/predefined_data.h"

namespace ZtCommonNS {

using CounterStyle = ZtUtil::CounterStyle;
using namespace counter_detail;

namespace {

// The generated texts are literals with static storage: the symbols alias them.
UnicodeString literal(const char16_t* text) {
    return UnicodeString(true, text, -1);
}

CounterStyle::Symbol symbolOf(const char16_t* text) {
    return CounterStyle::Symbol(literal(text));
}

CounterStyle makeStyle(const PredefinedStyleData& data) {
    CounterStyle style{ZtName(data.system)};
    style.setFirst(data.first);
    for (int i = 0; i < data.symbolCount; ++i)
        style.addSymbol(symbolOf(data.symbols[i]));
    for (int i = 0; i < data.additiveCount; ++i)
        style.addAdditiveSymbol(data.additive[i].weight, symbolOf(data.additive[i].symbol));
    for (int i = 0; i < data.rangeCount; ++i)
        style.addRange(data.ranges[i].lower, data.ranges[i].upper);
    style.setNegative(symbolOf(data.negativeBefore), symbolOf(data.negativeAfter));
    style.setPrefix(symbolOf(data.prefix));
    style.setSuffix(symbolOf(data.suffix));
    style.setPad(data.padLength, symbolOf(data.padSymbol));
    style.setFallback(ZtName(data.fallback));
    CounterStyleAccess::markPredefined(style);
    return style;
}

struct PredefinedTable {
    std::vector<CounterStyle> styles;
    // Index into `styles` by built-in name number; -1 where no style has that name.
    std::vector<int16_t> byName;
    const CounterStyle* decimal = nullptr;

    PredefinedTable() : byName(static_cast<size_t>(NM_LAST_BUILTIN) + 1, -1) {
        styles.reserve(static_cast<size_t>(kPredefinedStyleCount));
        for (int i = 0; i < kPredefinedStyleCount; ++i) {
            styles.push_back(makeStyle(kPredefinedStyles[i]));
            byName[static_cast<size_t>(kPredefinedStyles[i].name)] = static_cast<int16_t>(i);
        }
        decimal = find(NM_decimal);
    }

    const CounterStyle* find(ZtNameEnum number) const {
        if (number < 0 || number > NM_LAST_BUILTIN || byName[static_cast<size_t>(number)] < 0)
            return nullptr;
        return &styles[static_cast<size_t>(byName[static_cast<size_t>(number)])];
    }
};

const PredefinedTable& table() {
    static const PredefinedTable instance;
    return instance;
}

} // namespace

const CounterStyle* predefinedDecimalStyle() {
    return table().decimal;
}

// The context is not used: the table is the same for every caller. It is there so that this
// function has the type of CounterStyle::Lookup and can serve as one.
const CounterStyle* ZtUtil::getPredefinedCounterStyle(ZtName name, void* /*context*/) {
    return table().find(name.getNameEnum());
}

} // namespace ZtCommonNS
