// Counter styles: the conversion of integers (list-item numbers, page numbers) into marker
// text in the manner of CSS counter styles, with the library's own Chinese, Japanese and
// Ethiopic counting systems, and the table of predefined styles.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "ztcommon/util.h"
#include "ztcommon/value.h"

namespace ZtCommonNS {

// One counter style: a counting system with its symbols, a range, padding, a negative sign,
// a prefix, a suffix and the fallback style used for values it cannot represent.
//
// What each system can write (anything else falls back): "cyclic", "fixed", "symbolic",
// "alphabetic", "numeric" and "additive" as in CSS; the four Chinese systems use the symbols
// 0-9 as digits and 10 + p - 1 as the marker of decimal position p (10 ten, 11 hundred,
// 12 thousand, further ones only if given); "kansuji" writes Japanese numerals with the
// first code point of each symbol, in the simple (10 symbols), grouping (22) or readable
// (25) form; "ethiopic-numeric" needs no symbols and writes values of 1 and up; an unknown
// system writes nothing. A copy of a predefined style keeps its predefined mark.
//
// A style is a plain value; copies are deep. Formatting never changes a style, so one style
// (the predefined ones in particular) may format on several threads at once. The busy mark
// that stops fallback loops is therefore kept per thread, as the chain of styles that are
// formatting through their fallback on the calling thread, rather than in the style.
class ZT_EXPORT ZtUtil::CounterStyle {
public:
    // A symbol: a text, or the URL of an image when the URL flag is set. Formatting writes
    // a URL symbol's text as it stands; hosts that draw image markers look at the symbols.
    class ZT_EXPORT Symbol {
    public:
        Symbol() = default;
        // The one code point; ZtError code 4 (out of range) when it is not a Unicode scalar
        // value.
        explicit Symbol(int codePoint);
        Symbol(const UnicodeString& text, bool url = false);
        // UTF-8 text; null gives the empty symbol.
        explicit Symbol(const char* text, bool url = false);

        const UnicodeString& getText() const { return text_; }
        bool isUrl() const { return url_; }
        bool isEmpty() const { return text_.isEmpty(); }

        bool operator==(const Symbol& other) const {
            return url_ == other.url_ && text_ == other.text_;
        }
        bool operator!=(const Symbol& other) const { return !(*this == other); }
        // By text (code-unit order), then text symbols before URL symbols.
        bool operator<(const Symbol& other) const;

    private:
        UnicodeString text_;
        bool url_ = false;
    };

    // An integer with a symbol: an additive symbol (the integer is its weight) or the pad
    // descriptor (the integer is the minimum length in code points).
    class ZT_EXPORT IntSymbol {
    public:
        IntSymbol() = default;
        IntSymbol(int value, const Symbol& symbol) : value_(value), symbol_(symbol) {}

        int getValue() const { return value_; }
        const Symbol& getSymbol() const { return symbol_; }

        bool operator==(const IntSymbol& other) const {
            return value_ == other.value_ && symbol_ == other.symbol_;
        }
        bool operator!=(const IntSymbol& other) const { return !(*this == other); }
        bool operator<(const IntSymbol& other) const;

    private:
        int value_ = 0;
        Symbol symbol_;
    };

    // Inclusive bounds of one range.
    using Range = std::pair<long long, long long>;

    // Resolves a fallback name to a style of the caller's; `context` is passed through.
    // ZtUtil::getPredefinedCounterStyle has this type and may serve as the lookup.
    using Lookup = const CounterStyle* (*)(ZtName name, void* context);

    // Results of the counting systems reach at most this many UTF-16 code units: a system
    // whose text reaches it falls back instead.
    static constexpr int kMaxRepresentationLength = 1000;

    // A style of `system` ("numeric", "kansuji", ...) with the defaults: first symbol value
    // 1, no symbols, negative "-", suffix ". ", automatic range, no pad, fallback "decimal".
    explicit CounterStyle(ZtName system);
    CounterStyle(const CounterStyle& other);
    CounterStyle& operator=(const CounterStyle& other);
    CounterStyle(CounterStyle&& other) noexcept;
    CounterStyle& operator=(CounterStyle&& other) noexcept;
    ~CounterStyle();

    // Orders styles by every descriptor (system and fallback by name number), so that
    // styles can be kept in sorted containers; equal styles are those that format alike.
    bool operator<(const CounterStyle& other) const;
    bool operator==(const CounterStyle& other) const;
    bool operator!=(const CounterStyle& other) const { return !(*this == other); }

    void setSystem(ZtName system);
    ZtName getSystem() const { return system_; }
    void setFallback(ZtName fallback) { fallback_ = fallback; }
    ZtName getFallback() const { return fallback_; }
    // The value of the first symbol of the "fixed" system.
    void setFirst(int first) { first_ = first; }
    int getFirst() const { return first_; }

    // The signs written before and after the text of a negative value.
    void setNegative(const Symbol& before, const Symbol& after);
    void setNegative(const char* before, const char* after);
    const std::pair<Symbol, Symbol>& getNegative() const { return negative_; }

    // The text of the value 0 when it is not empty, whatever the system.
    void setZero(int codePoint);
    void setZero(const Symbol& zero);
    void setZero(const char* zero);
    const Symbol& getZero() const { return zero_; }

    void setPrefix(int codePoint);
    void setPrefix(const Symbol& prefix);
    void setPrefix(const char* prefix);
    const Symbol& getPrefix() const { return prefix_; }

    void setSuffix(int codePoint);
    void setSuffix(const Symbol& suffix);
    void setSuffix(const char* suffix);
    const Symbol& getSuffix() const { return suffix_; }

    // Minimum length in code points and the symbol prepended to reach it. A negative length
    // gives ZtError code 4 (out of range).
    void setPad(const IntSymbol& pad);
    void setPad(int length, const Symbol& symbol);
    void setPad(int length, const char* symbol);
    const IntSymbol& getPad() const { return pad_; }

    // One symbol.
    void addSymbol(int codePoint);
    void addSymbol(const Symbol& symbol);
    // Several symbols at once, one per code point of the text (a URL symbol is added whole).
    void addSymbols(const Symbol& symbols);
    // `count` symbols of consecutive code points from `firstCodePoint` on: the ten digits of
    // a script by default (addSymbols(0x0660) adds the Arabic-Indic digits).
    void addSymbols(int firstCodePoint, int count = 10);
    // One symbol per character of a wide (UTF-32) text of `length` characters, or up to its
    // terminating 0 when `length` is negative.
    void addSymbols(const wchar_t* text, int length);
    // One symbol per code point of a UTF-8 text.
    void addSymbols(const char* text);
    void clrSymbols();
    // Null when there are none.
    const std::vector<Symbol>* getSymbols() const { return symbols_ ? &*symbols_ : nullptr; }

    // Additive symbols, in the order in which they are tried (falling weights).
    void addAdditiveSymbol(const IntSymbol& symbol);
    void addAdditiveSymbol(int weight, int codePoint);
    void addAdditiveSymbol(int weight, const Symbol& symbol);
    void addAdditiveSymbol(int weight, const char* symbol);
    void clrAdditiveSymbols() { additiveSymbols_.reset(); }
    // Null when there are none.
    const std::vector<IntSymbol>* getAdditiveSymbols() const {
        return additiveSymbols_ ? &*additiveSymbols_ : nullptr;
    }

    // Adds the inclusive range lower..upper; lower above upper gives ZtError code 4.
    // Without any range the range is automatic (see checkRange); after clrRange it is
    // automatic again.
    void addRange(long long lower, long long upper);
    void clrRange() { range_.reset(); }
    // Null when the range is automatic.
    const std::vector<Range>* getRange() const { return range_ ? &*range_ : nullptr; }

    bool isPredefined() const { return predefined_; }

    // True when `value` lies in the style's range: an explicit range list must contain it;
    // the automatic range is 1 and up for "alphabetic" and "symbolic", 0 and up for
    // "additive", and every value for the other systems.
    bool checkRange(long long value) const;

    // The marker text of `value`: the representation in the style's system, padded, with
    // the negative sign where the system uses one, between prefix and suffix unless `plain`.
    // Values the style cannot represent are formatted by its fallback style, found through
    // `lookup` (with `context`), or by the predefined "decimal" style when there is no
    // lookup, the lookup knows no such style, or that style is itself falling back on this
    // thread; the result keeps this style's prefix and suffix.
    UnicodeString formatNumber(long long value, Lookup lookup = nullptr, void* context = nullptr,
                               bool plain = false) const;

private:
    // Which algorithm the system name selects, kept up to date by setSystem.
    enum class Kind : unsigned char {
        Unknown,
        Cyclic,
        Fixed,
        Symbolic,
        Alphabetic,
        Numeric,
        Additive,
        ChineseFormal,
        ChineseInformal,
        Kansuji,
        EthiopicNumeric,
    };
    // The formatting routines and the predefined table reach the members through it.
    friend struct CounterStyleAccess;

    void appendSymbols(const std::vector<Symbol>& added);

    ZtName system_;
    int first_ = 1;
    std::optional<std::vector<Symbol>> symbols_;
    // The symbols as one text while each is a single UTF-16 code unit (most digit and letter
    // styles), so that formatting can index them directly; shorter than the symbol list
    // otherwise.
    std::u16string unitSymbols_;
    std::optional<std::vector<IntSymbol>> additiveSymbols_;
    std::pair<Symbol, Symbol> negative_;
    Symbol zero_;
    Symbol prefix_;
    Symbol suffix_;
    std::optional<std::vector<Range>> range_;
    IntSymbol pad_;
    ZtName fallback_;
    bool predefined_ = false;
    Kind kind_ = Kind::Unknown;
};

} // namespace ZtCommonNS
