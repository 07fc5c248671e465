// The predefined counter styles as constant data, generated from the style sheets in
// src/counter/styles by scripts/gen_counter_styles.py. Texts are NUL-terminated UTF-16
// literals, names built-in name numbers; predefined.cpp turns each entry into a CounterStyle
// on first use.
#pragma once

#include <cstdint>

#include "ztcommon/value_names.h"

namespace ZtCommonNS::counter_detail {

struct PredefinedAdditive {
    int weight;
    const char16_t* symbol;
};

struct PredefinedRange {
    int64_t lower;
    int64_t upper;
};

struct PredefinedStyleData {
    ZtNameEnum name;
    ZtNameEnum system;
    int first;
    const char16_t* const* symbols;
    int symbolCount;
    const PredefinedAdditive* additive;
    int additiveCount;
    const PredefinedRange* ranges;
    int rangeCount; // -1: automatic range
    const char16_t* negativeBefore;
    const char16_t* negativeAfter;
    const char16_t* prefix;
    const char16_t* suffix;
    int padLength;
    const char16_t* padSymbol;
    ZtNameEnum fallback;
};

extern const PredefinedStyleData kPredefinedStyles[];
extern const int kPredefinedStyleCount;

} // namespace ZtCommonNS::counter_detail
