// ZtUtil::CounterStyle::formatNumber: the counting systems, the fallback with its per-thread
// busy mark, and finishing (pad, negative sign, prefix, suffix).
//
// The representation is built in a fixed buffer on the stack (the counting systems stop at
// kMaxRepresentationLength code units) or, for single-symbol systems, read in place; the
// only allocation of a call is that of the returned string, and none at all when the result
// fits into UnicodeString's inline storage.
#include <cstring>
#include <new>
#include <string_view>

#include <unicode/ustring.h>
#include <unicode/utf16.h>

#include "counter/counter_style_access.h"
#include "counter/numeral_systems.h"
#include "counter/predefined.h"
#include "foundation/raise_error.h"
#include "ztcommon/counter.h"

namespace ZtCommonNS {

using CounterStyle = ZtUtil::CounterStyle;
using Kind = CounterStyleAccess::Kind;
using namespace counter_detail;

namespace {

constexpr int32_t kLimit = CounterStyle::kMaxRepresentationLength;
constexpr int64_t kShortResult = 64;

std::u16string_view view(const UnicodeString& text) {
    return {text.getBuffer(), static_cast<size_t>(text.length())};
}

// The text of a counting system while it is built; appending fails (and the style falls
// back) as soon as the text would reach the limit.
class RepresentationBuffer {
public:
    bool append(std::u16string_view units) {
        if (units.size() >= static_cast<size_t>(kLimit - length_))
            return false;
        if (units.size() == 1) // most symbols are one code unit
            units_[length_] = units[0];
        else if (!units.empty())
            std::memcpy(units_ + length_, units.data(), units.size() * sizeof(char16_t));
        length_ += static_cast<int32_t>(units.size());
        return true;
    }
    // Appends `units` `count` times.
    bool appendRepeated(std::u16string_view units, uint64_t count) {
        if (units.empty() || count == 0)
            return true;
        if (count >= static_cast<uint64_t>(kLimit) ||
            count * units.size() >= static_cast<uint64_t>(kLimit - length_))
            return false;
        for (uint64_t i = 0; i < count; ++i)
            append(units);
        return true;
    }
    bool appendUnit(char16_t unit) {
        if (length_ + 1 >= kLimit)
            return false;
        units_[length_++] = unit;
        return true;
    }
    bool appendCodePoint(UChar32 c) {
        char16_t units[2];
        int32_t n = 0;
        U16_APPEND_UNSAFE(units, n, c);
        return append({units, static_cast<size_t>(n)});
    }
    std::u16string_view text() const { return {units_, static_cast<size_t>(length_)}; }

private:
    char16_t units_[kLimit];
    int32_t length_ = 0;
};

// The styles formatting through their fallback on this thread, innermost first. A style in
// this chain is "busy": a fallback that leads back to it goes to "decimal" instead.
struct BusyLink {
    const CounterStyle* style;
    const BusyLink* next;
};
thread_local const BusyLink* tBusyChain = nullptr;

bool isBusy(const CounterStyle* style) {
    for (const BusyLink* link = tBusyChain; link; link = link->next) {
        if (link->style == style)
            return true;
    }
    return false;
}

class BusyMark {
public:
    explicit BusyMark(const CounterStyle* style) : link_{style, tBusyChain} { tBusyChain = &link_; }
    BusyMark(const BusyMark&) = delete;
    BusyMark& operator=(const BusyMark&) = delete;
    ~BusyMark() { tBusyChain = link_.next; }

private:
    BusyLink link_;
};

uint64_t magnitude(long long value) {
    return value < 0 ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value);
}

} // namespace

// The counting systems. Each returns false when the style cannot represent the value, and
// otherwise leaves the representation in `out` (pointing into `buffer` or at a symbol) and
// sets `negative` when the negative sign applies.
struct CounterStyleFormatter {
    const CounterStyle& style;
    const std::vector<CounterStyle::Symbol>* symbols;
    size_t n;
    const char16_t* units; // the symbols when each is one code unit, else null

    explicit CounterStyleFormatter(const CounterStyle& s)
        : style(s), symbols(s.getSymbols()), n(symbols ? symbols->size() : 0),
          units(CounterStyleAccess::unitSymbols(s)) {}

    std::u16string_view symbol(size_t i) const { return view((*symbols)[i].getText()); }

    // Appends the symbols of `indices`; false when one is missing or the text gets too long.
    bool appendIndices(const uint32_t* indices, int count, RepresentationBuffer& buffer) const {
        if (units) {
            for (int i = 0; i < count; ++i) {
                if (indices[i] >= n || !buffer.appendUnit(units[indices[i]]))
                    return false;
            }
            return true;
        }
        for (int i = 0; i < count; ++i) {
            if (indices[i] >= n || !buffer.append(symbol(indices[i])))
                return false;
        }
        return true;
    }

    bool cyclic(long long value, std::u16string_view& out) const {
        if (n == 0)
            return false;
        auto count = static_cast<long long>(n);
        long long index = ((value % count) - 1 + count) % count;
        out = symbol(static_cast<size_t>(index));
        return true;
    }

    bool fixed(long long value, std::u16string_view& out) const {
        long long index = 0;
        if (n == 0 ||
            __builtin_sub_overflow(value, static_cast<long long>(style.getFirst()), &index))
            return false;
        if (index < 0 || static_cast<unsigned long long>(index) >= n)
            return false;
        out = symbol(static_cast<size_t>(index));
        return true;
    }

    bool symbolic(long long value, RepresentationBuffer& buffer) const {
        if (n == 0 || value < 1)
            return false;
        uint64_t k = static_cast<uint64_t>(value) - 1;
        return buffer.appendRepeated(symbol(k % n), k / n + 1);
    }

    bool alphabetic(long long value, RepresentationBuffer& buffer) const {
        if (n < 2 || value < 1)
            return false;
        uint32_t digits[kMaxPositionalDigits];
        int count = bijectiveDigits(static_cast<uint64_t>(value), n, digits);
        return appendIndices(digits, count, buffer);
    }

    bool numeric(long long value, RepresentationBuffer& buffer, bool& negative) const {
        if (n < 2)
            return false;
        uint32_t digits[kMaxPositionalDigits];
        int count = positionalDigits(magnitude(value), n, digits);
        negative = value < 0;
        return appendIndices(digits, count, buffer);
    }

    bool additive(long long value, RepresentationBuffer& buffer, bool& negative,
                  std::u16string_view& out) const {
        const std::vector<CounterStyle::IntSymbol>* tuples = style.getAdditiveSymbols();
        if (!tuples || tuples->empty())
            return false;
        negative = value < 0;
        uint64_t v = magnitude(value);
        if (v == 0) {
            if (tuples->back().getValue() != 0)
                return false;
            out = view(tuples->back().getSymbol().getText());
            return true;
        }
        for (const CounterStyle::IntSymbol& tuple : *tuples) {
            if (tuple.getValue() <= 0)
                continue;
            auto weight = static_cast<uint64_t>(tuple.getValue());
            if (v < weight)
                continue;
            // 32-bit division is cheaper, and enough for most values.
            uint64_t times = v <= UINT32_MAX
                                 ? static_cast<uint32_t>(v) / static_cast<uint32_t>(weight)
                                 : v / weight;
            if (!buffer.appendRepeated(view(tuple.getSymbol().getText()), times))
                return false;
            v -= times * weight;
            if (v == 0)
                break;
        }
        if (v != 0)
            return false;
        out = buffer.text();
        return true;
    }

    bool chinese(long long value, bool informal, RepresentationBuffer& buffer,
                 bool& negative) const {
        uint32_t indices[kMaxChineseIndices];
        int count = chineseIndices(magnitude(value), informal, indices);
        negative = value < 0;
        return appendIndices(indices, count, buffer);
    }

    // Japanese numerals; each symbol contributes its first code point.
    bool kansuji(long long value, RepresentationBuffer& buffer, bool& negative) const {
        KansujiForm form = n == 22   ? KansujiForm::Grouping
                           : n == 25 ? KansujiForm::Readable
                                     : KansujiForm::Simple;
        uint32_t indices[kMaxKansujiIndices];
        int count = kansujiIndices(magnitude(value), form, indices);
        negative = value < 0;
        for (int i = 0; i < count; ++i) {
            if (indices[i] >= n)
                return false;
            const UnicodeString& text = (*symbols)[indices[i]].getText();
            if (!text.isEmpty() && !buffer.appendCodePoint(text.char32At(0)))
                return false;
        }
        return true;
    }

    // Ethiopic numerals exist for the positive numbers only.
    static bool ethiopic(long long value, RepresentationBuffer& buffer) {
        if (value < 1)
            return false;
        char16_t numerals[kMaxEthiopicNumerals];
        int count = ethiopicNumerals(static_cast<uint64_t>(value), numerals);
        return buffer.append({numerals, static_cast<size_t>(count)});
    }

    bool represent(long long value, RepresentationBuffer& buffer, std::u16string_view& out,
                   bool& negative) const {
        negative = false;
        bool ok = false;
        switch (CounterStyleAccess::kind(style)) {
        case Kind::Cyclic:
            return cyclic(value, out);
        case Kind::Fixed:
            return fixed(value, out);
        case Kind::Additive:
            return additive(value, buffer, negative, out);
        case Kind::Symbolic:
            ok = symbolic(value, buffer);
            break;
        case Kind::Alphabetic:
            ok = alphabetic(value, buffer);
            break;
        case Kind::Numeric:
            ok = numeric(value, buffer, negative);
            break;
        case Kind::ChineseFormal:
            ok = chinese(value, false, buffer, negative);
            break;
        case Kind::ChineseInformal:
            ok = chinese(value, true, buffer, negative);
            break;
        case Kind::Kansuji:
            ok = kansuji(value, buffer, negative);
            break;
        case Kind::EthiopicNumeric:
            ok = ethiopic(value, buffer);
            break;
        case Kind::Unknown:
            return false;
        }
        out = buffer.text();
        return ok;
    }

    // Pad (unless `padded` is false), negative sign, prefix and suffix around the text.
    UnicodeString finish(std::u16string_view text, bool negative, bool plain,
                         bool padded = true) const {
        const CounterStyle::IntSymbol& pad = style.getPad();
        std::u16string_view padText;
        if (padded)
            padText = view(pad.getSymbol().getText());
        int64_t padCount = 0;
        if (!padText.empty()) {
            int64_t length = u_countChar32(text.data(), static_cast<int32_t>(text.size()));
            int64_t padUnit = u_countChar32(padText.data(), static_cast<int32_t>(padText.size()));
            if (pad.getValue() > length)
                padCount = (padUnit + pad.getValue() - length - 1) / padUnit;
        }
        std::u16string_view before;
        std::u16string_view after;
        if (negative) {
            before = view(style.getNegative().first.getText());
            after = view(style.getNegative().second.getText());
        }
        std::u16string_view prefix;
        std::u16string_view suffix;
        if (!plain) {
            prefix = view(style.getPrefix().getText());
            suffix = view(style.getSuffix().getText());
        }
        int64_t total = static_cast<int64_t>(prefix.size() + before.size() + text.size() +
                                             after.size() + suffix.size()) +
                        padCount * static_cast<int64_t>(padText.size());
        if (total > INT32_MAX) {
            std::bad_alloc tooLong;
            throw ZtError(tooLong,
                          UnicodeString(u"ZtCommonNS::ZtUtil::CounterStyle::formatNumber"));
        }
        auto assemble = [&](char16_t* p) {
            // The parts are a few code units each: a plain loop beats a call to memcpy.
            auto put = [&p](std::u16string_view part) {
                for (char16_t unit : part)
                    *p++ = unit;
            };
            put(prefix);
            put(before);
            for (int64_t i = 0; i < padCount; ++i)
                put(padText);
            put(text);
            put(after);
            put(suffix);
        };
        // Short markers are put together on the stack and copied once into the result's
        // inline buffer; that is cheaper than opening the result's buffer.
        if (total <= kShortResult) {
            char16_t local[kShortResult];
            assemble(local);
            return UnicodeString(local, static_cast<int32_t>(total));
        }
        UnicodeString result;
        char16_t* out = result.getBuffer(static_cast<int32_t>(total));
        if (!out) {
            std::bad_alloc noMemory;
            throw ZtError(noMemory,
                          UnicodeString(u"ZtCommonNS::ZtUtil::CounterStyle::formatNumber"));
        }
        assemble(out);
        result.releaseBuffer(static_cast<int32_t>(total));
        return result;
    }
};

UnicodeString CounterStyle::formatNumber(long long value, Lookup lookup, void* context,
                                         bool plain) const {
    CounterStyleFormatter formatter(*this);
    if (value == 0 && !zero_.isEmpty())
        return formatter.finish(view(zero_.getText()), false, plain);
    if (checkRange(value)) {
        RepresentationBuffer buffer;
        std::u16string_view text;
        bool negative = false;
        if (formatter.represent(value, buffer, text, negative))
            return formatter.finish(text, negative, plain);
    }

    // Fallback: this style is busy while its fallback formats the value.
    UnicodeString fallbackText;
    {
        BusyMark busy(this);
        const CounterStyle* style = lookup ? lookup(fallback_, context) : nullptr;
        if (!style || isBusy(style))
            style = predefinedDecimalStyle();
        fallbackText = style->formatNumber(value, lookup, context, true);
    }
    if (plain)
        return fallbackText;
    return formatter.finish(view(fallbackText), false, false, false);
}

} // namespace ZtCommonNS
