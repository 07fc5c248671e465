// Library-internal access to the members of ZtUtil::CounterStyle, for the formatting
// routines and the predefined table.
#pragma once

#include "ztcommon/counter.h"

namespace ZtCommonNS {

struct CounterStyleAccess {
    using Kind = ZtUtil::CounterStyle::Kind;

    static Kind kind(const ZtUtil::CounterStyle& style) { return style.kind_; }
    static void markPredefined(ZtUtil::CounterStyle& style) { style.predefined_ = true; }
    // The symbols as code units, when each is one code unit; null otherwise.
    static const char16_t* unitSymbols(const ZtUtil::CounterStyle& style) {
        return style.symbols_ && style.unitSymbols_.size() == style.symbols_->size()
                   ? style.unitSymbols_.data()
                   : nullptr;
    }

    // The algorithm a system name selects.
    static Kind kindOfSystem(ZtName system);
};

} // namespace ZtCommonNS
