// ZtUtil::CounterStyle: construction, descriptors and comparison. Formatting lives in
// format_number.cpp.
#include <algorithm>
#include <climits>
#include <cstring>
#include <cwchar>

#include <unicode/utf16.h>

#include "counter/counter_style_access.h"
#include "foundation/raise_error.h"
#include "ztcommon/counter.h"

namespace ZtCommonNS {

using CounterStyle = ZtUtil::CounterStyle;

namespace {

// Argument errors of this family name the class as their source; raiseError's source table
// has no entry for it.
[[noreturn]] void raiseOutOfRange(const char* operation) {
    ZtError error = makeRaisedError(ZtErrc::OutOfRange, -1, UnicodeString(), UnicodeString());
    error.setSource(UnicodeString("ZtCommonNS::ZtUtil::CounterStyle::", -1, US_INV) +
                    UnicodeString(operation, -1, US_INV));
    throw error;
}

bool isScalarValue(long long c) {
    return c >= 0 && c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF);
}

UnicodeString fromUtf8(const char* text) {
    return text ? UnicodeString::fromUTF8(text) : UnicodeString();
}

template <class T>
int compareOptionalVectors(const std::optional<std::vector<T>>& a,
                           const std::optional<std::vector<T>>& b) {
    if (a.has_value() != b.has_value())
        return a.has_value() ? 1 : -1;
    if (!a)
        return 0;
    if (std::lexicographical_compare(a->begin(), a->end(), b->begin(), b->end()))
        return -1;
    if (std::lexicographical_compare(b->begin(), b->end(), a->begin(), a->end()))
        return 1;
    return 0;
}

template <class T> int compareValues(const T& a, const T& b) {
    if (a < b)
        return -1;
    if (b < a)
        return 1;
    return 0;
}

} // namespace

// --- Symbol, IntSymbol ---

CounterStyle::Symbol::Symbol(int codePoint) {
    if (!isScalarValue(codePoint))
        raiseOutOfRange("Symbol");
    text_.setTo(static_cast<UChar32>(codePoint));
}

CounterStyle::Symbol::Symbol(const UnicodeString& text, bool url) : text_(text), url_(url) {}

CounterStyle::Symbol::Symbol(const char* text, bool url) : text_(fromUtf8(text)), url_(url) {}

bool CounterStyle::Symbol::operator<(const Symbol& other) const {
    int8_t order = text_.compare(other.text_);
    return order != 0 ? order < 0 : (!url_ && other.url_);
}

bool CounterStyle::IntSymbol::operator<(const IntSymbol& other) const {
    return value_ != other.value_ ? value_ < other.value_ : symbol_ < other.symbol_;
}

// --- CounterStyle ---

CounterStyle::CounterStyle(ZtName system)
    : system_(system), negative_(Symbol(UnicodeString(u"-")), Symbol()),
      suffix_(UnicodeString(u". ")), fallback_(NM_decimal),
      kind_(CounterStyleAccess::kindOfSystem(system)) {}

CounterStyle::CounterStyle(const CounterStyle& other) = default;
CounterStyle& CounterStyle::operator=(const CounterStyle& other) = default;
CounterStyle::CounterStyle(CounterStyle&& other) noexcept = default;
CounterStyle& CounterStyle::operator=(CounterStyle&& other) noexcept = default;
CounterStyle::~CounterStyle() = default;

void CounterStyle::setSystem(ZtName system) {
    system_ = system;
    kind_ = CounterStyleAccess::kindOfSystem(system);
}

void CounterStyle::setNegative(const Symbol& before, const Symbol& after) {
    negative_ = {before, after};
}

void CounterStyle::setNegative(const char* before, const char* after) {
    negative_ = {Symbol(before), Symbol(after)};
}

void CounterStyle::setZero(int codePoint) {
    zero_ = Symbol(codePoint);
}
void CounterStyle::setZero(const Symbol& zero) {
    zero_ = zero;
}
void CounterStyle::setZero(const char* zero) {
    zero_ = Symbol(zero);
}

void CounterStyle::setPrefix(int codePoint) {
    prefix_ = Symbol(codePoint);
}
void CounterStyle::setPrefix(const Symbol& prefix) {
    prefix_ = prefix;
}
void CounterStyle::setPrefix(const char* prefix) {
    prefix_ = Symbol(prefix);
}

void CounterStyle::setSuffix(int codePoint) {
    suffix_ = Symbol(codePoint);
}
void CounterStyle::setSuffix(const Symbol& suffix) {
    suffix_ = suffix;
}
void CounterStyle::setSuffix(const char* suffix) {
    suffix_ = Symbol(suffix);
}

void CounterStyle::setPad(const IntSymbol& pad) {
    if (pad.getValue() < 0)
        raiseOutOfRange("setPad");
    pad_ = pad;
}

void CounterStyle::setPad(int length, const Symbol& symbol) {
    setPad(IntSymbol(length, symbol));
}

void CounterStyle::setPad(int length, const char* symbol) {
    setPad(IntSymbol(length, Symbol(symbol)));
}

void CounterStyle::addSymbol(int codePoint) {
    addSymbol(Symbol(codePoint));
}

void CounterStyle::addSymbol(const Symbol& symbol) {
    appendSymbols({symbol});
}

void CounterStyle::appendSymbols(const std::vector<Symbol>& added) {
    if (!symbols_)
        symbols_.emplace();
    bool unitsValid = unitSymbols_.size() == symbols_->size();
    symbols_->insert(symbols_->end(), added.begin(), added.end());
    for (const Symbol& symbol : added) {
        if (!unitsValid || symbol.getText().length() != 1) {
            unitsValid = false;
            break;
        }
        unitSymbols_.push_back(symbol.getText().charAt(0));
    }
    if (!unitsValid)
        unitSymbols_.clear();
}

void CounterStyle::clrSymbols() {
    symbols_.reset();
    unitSymbols_.clear();
}

void CounterStyle::addSymbols(const Symbol& symbols) {
    if (symbols.isUrl()) {
        addSymbol(symbols);
        return;
    }
    const UnicodeString& text = symbols.getText();
    std::vector<Symbol> added;
    for (int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1))
        added.emplace_back(UnicodeString(text.char32At(i)));
    appendSymbols(added);
}

void CounterStyle::addSymbols(int firstCodePoint, int count) {
    if (count < 0 || count > 0x110000)
        raiseOutOfRange("addSymbols");
    std::vector<Symbol> added;
    for (int i = 0; i < count; ++i) {
        if (!isScalarValue(static_cast<long long>(firstCodePoint) + i))
            raiseOutOfRange("addSymbols");
        added.emplace_back(firstCodePoint + i);
    }
    appendSymbols(added);
}

void CounterStyle::addSymbols(const wchar_t* text, int length) {
    if (!text)
        return;
    size_t n = length < 0 ? std::wcslen(text) : static_cast<size_t>(length);
    std::vector<Symbol> added;
    added.reserve(n);
    for (size_t i = 0; i < n; ++i) {
        // wchar_t holds UTF-32 on Linux.
        const long long c = static_cast<int32_t>(text[i]);
        if (!isScalarValue(c))
            raiseOutOfRange("addSymbols");
        added.emplace_back(static_cast<int>(c));
    }
    appendSymbols(added);
}

void CounterStyle::addSymbols(const char* text) {
    addSymbols(Symbol(text));
}

void CounterStyle::addAdditiveSymbol(const IntSymbol& symbol) {
    if (!additiveSymbols_)
        additiveSymbols_.emplace();
    additiveSymbols_->push_back(symbol);
}

void CounterStyle::addAdditiveSymbol(int weight, int codePoint) {
    addAdditiveSymbol(IntSymbol(weight, Symbol(codePoint)));
}

void CounterStyle::addAdditiveSymbol(int weight, const Symbol& symbol) {
    addAdditiveSymbol(IntSymbol(weight, symbol));
}

void CounterStyle::addAdditiveSymbol(int weight, const char* symbol) {
    addAdditiveSymbol(IntSymbol(weight, Symbol(symbol)));
}

void CounterStyle::addRange(long long lower, long long upper) {
    if (lower > upper)
        raiseOutOfRange("addRange");
    if (!range_)
        range_.emplace();
    range_->emplace_back(lower, upper);
}

CounterStyleAccess::Kind CounterStyleAccess::kindOfSystem(ZtName system) {
    switch (system.getNameEnum()) {
    case NM_cyclic:
        return Kind::Cyclic;
    case NM_fixed:
        return Kind::Fixed;
    case NM_symbolic:
        return Kind::Symbolic;
    case NM_alphabetic:
        return Kind::Alphabetic;
    case NM_numeric:
        return Kind::Numeric;
    case NM_additive:
        return Kind::Additive;
    case NM_simp_chinese_formal:
    case NM_trad_chinese_formal:
        return Kind::ChineseFormal;
    case NM_simp_chinese_informal:
    case NM_trad_chinese_informal:
        return Kind::ChineseInformal;
    case NM_kansuji:
        return Kind::Kansuji;
    case NM_ethiopic_numeric:
        return Kind::EthiopicNumeric;
    default:
        return Kind::Unknown;
    }
}

bool CounterStyle::checkRange(long long value) const {
    if (range_) {
        return std::any_of(range_->begin(), range_->end(), [value](const Range& r) {
            return value >= r.first && value <= r.second;
        });
    }
    switch (kind_) {
    case Kind::Alphabetic:
    case Kind::Symbolic:
        return value >= 1;
    case Kind::Additive:
        return value >= 0;
    default:
        return true;
    }
}

bool CounterStyle::operator<(const CounterStyle& other) const {
    int order = compareValues(system_, other.system_);
    if (order == 0)
        order = compareValues(first_, other.first_);
    if (order == 0)
        order = compareOptionalVectors(symbols_, other.symbols_);
    if (order == 0)
        order = compareOptionalVectors(additiveSymbols_, other.additiveSymbols_);
    if (order == 0)
        order = compareValues(negative_, other.negative_);
    if (order == 0)
        order = compareValues(zero_, other.zero_);
    if (order == 0)
        order = compareValues(prefix_, other.prefix_);
    if (order == 0)
        order = compareValues(suffix_, other.suffix_);
    if (order == 0)
        order = compareOptionalVectors(range_, other.range_);
    if (order == 0)
        order = compareValues(pad_, other.pad_);
    if (order == 0)
        order = compareValues(fallback_, other.fallback_);
    return order < 0;
}

bool CounterStyle::operator==(const CounterStyle& other) const {
    return system_ == other.system_ && first_ == other.first_ && symbols_ == other.symbols_ &&
           additiveSymbols_ == other.additiveSymbols_ && negative_ == other.negative_ &&
           zero_ == other.zero_ && prefix_ == other.prefix_ && suffix_ == other.suffix_ &&
           range_ == other.range_ && pad_ == other.pad_ && fallback_ == other.fallback_;
}

} // namespace ZtCommonNS
