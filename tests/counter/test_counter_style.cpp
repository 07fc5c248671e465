// ZtUtil::CounterStyle built by hand: every counting system, the range check, finishing, the
// fallback with its busy mark, the length limit, the descriptors and their errors. The styles
// of data/hand_styles.css are built through the setters and their markers compared with the
// hand-computed table data/hand_markers.tsv.
#include <atomic>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "counter_test_util.h"
#include "css_reference.h"
#include "icu_oracle.h"
#include "ztcommon/counter.h"

using namespace ZtCommonNS;
using CounterStyle = ZtUtil::CounterStyle;
using Symbol = CounterStyle::Symbol;

namespace {

const std::string kData = std::string(ZT_SOURCE_DIR) + "/tests/counter/data/";

ZtName name(const std::string& text) {
    return ZtName(UnicodeString::fromUTF8(text));
}

CounterStyle style(const char* system, const char* symbols = nullptr) {
    CounterStyle s(name(system));
    if (symbols)
        s.addSymbols(symbols);
    return s;
}

UnicodeString fmt(const CounterStyle& s, long long value, bool plain = false) {
    return s.formatNumber(value, nullptr, nullptr, plain);
}

UnicodeString repeat(const char16_t* unit, int times) {
    UnicodeString out;
    for (int i = 0; i < times; ++i)
        out.append(unit);
    return out;
}

// A rule of the hand-made style sheet, built through the setters; descriptors the rule does
// not state keep the library's defaults.
CounterStyle build(const css_reference::Rule& r) {
    auto symbol = [](const std::u16string& s) { return Symbol(counter_test::fromU16(s)); };
    CounterStyle s(name(r.system));
    if (r.first != 1)
        s.setFirst(static_cast<int>(r.first));
    for (const std::u16string& text : r.symbols)
        s.addSymbol(symbol(text));
    for (const auto& [weight, text] : r.additive)
        s.addAdditiveSymbol(CounterStyle::IntSymbol(static_cast<int>(weight), symbol(text)));
    for (const std::string& d : r.given) {
        if (d == "negative")
            s.setNegative(symbol(r.negativeBefore), symbol(r.negativeAfter));
        else if (d == "prefix")
            s.setPrefix(symbol(r.prefix));
        else if (d == "suffix")
            s.setSuffix(symbol(r.suffix));
        else if (d == "pad")
            s.setPad(static_cast<int>(r.padLength), symbol(r.padSymbol));
        else if (d == "fallback")
            s.setFallback(name(r.fallback));
        else if (d == "zero")
            s.setZero(symbol(r.zero));
    }
    for (const auto& [lower, upper] :
         r.ranges.value_or(std::vector<std::pair<long long, long long>>{}))
        s.addRange(lower, upper);
    return s;
}

// The styles of data/hand_styles.css by name, as a lookup that counts its calls.
struct Catalog {
    std::map<std::string, CounterStyle> styles;
    int calls = 0;

    Catalog() {
        for (const auto& rule :
             css_reference::parseStyleSheet(counter_test::readFile(kData + "hand_styles.css")))
            styles.emplace(rule.name, build(rule));
    }
    static const CounterStyle* lookup(ZtName wanted, void* context) {
        auto* catalog = static_cast<Catalog*>(context);
        ++catalog->calls;
        std::string key;
        auto found = catalog->styles.find(wanted.getNameString().toUTF8String(key));
        return found == catalog->styles.end() ? nullptr : &found->second;
    }
};

} // namespace

TEST(CounterStyle, HandMadeStylesWriteTheHandComputedMarkers) {
    Catalog catalog;
    ASSERT_EQ(catalog.styles.size(), 46u);
    int checked = 0;
    for (const auto& row : counter_test::readTable(kData + "hand_markers.tsv")) {
        const CounterStyle& s = catalog.styles.at(row.at("style"));
        const std::string& lookup = row.at("lookup");
        const CounterStyle::Lookup function = lookup == "test" ? &Catalog::lookup
                                              : lookup == "predefined"
                                                  ? &ZtUtil::getPredefinedCounterStyle
                                                  : nullptr;
        const UnicodeString got =
            s.formatNumber(std::stoll(row.at("value")), function, &catalog, row.at("plain") == "1");
        EXPECT_EQ(got, UnicodeString::fromUTF8(row.at("expected")).unescape())
            << row.at("style") << " " << row.at("value");
        ++checked;
    }
    EXPECT_EQ(checked, 100); // every row of the table
    // The loop a -> b -> c -> a asks b, c, then a, which is busy.
    catalog.calls = 0;
    EXPECT_EQ(catalog.styles.at("loop-a").formatNumber(7, &Catalog::lookup, &catalog, false),
              u"(7)");
    EXPECT_EQ(catalog.calls, 3);
}

TEST(CounterStyle, OverloadsAndDefaults) {
    // The text and character forms of the setters build the same styles as the Symbol forms.
    Catalog catalog;
    CounterStyle paren = style("numeric", "0123456789");
    paren.setNegative("(", ")");
    paren.setPrefix('[');
    paren.setSuffix("]");
    EXPECT_EQ(paren, catalog.styles.at("paren"));
    CounterStyle roman(name("additive"));
    roman.addAdditiveSymbol(10, "X");
    roman.addAdditiveSymbol(5, 'V');
    roman.addAdditiveSymbol(1, Symbol(UnicodeString(u"I")));
    EXPECT_EQ(roman, catalog.styles.at("roman-ish"));
    CounterStyle zero = style("alphabetic", "ab");
    zero.setZero(0x2205);
    EXPECT_EQ(zero, catalog.styles.at("zero-set"));
    zero.setZero("");
    EXPECT_EQ(zero, catalog.styles.at("zero-empty"));
    CounterStyle padded = style("numeric", "0123456789");
    padded.setPad(3, "0");
    EXPECT_EQ(padded, catalog.styles.at("padded"));
    // Documented defaults that no marker shows.
    CounterStyle s(name("numeric"));
    EXPECT_EQ(s.getFirst(), 1);
    EXPECT_EQ(s.getFallback(), name("decimal"));
    EXPECT_FALSE(s.isPredefined());
    EXPECT_EQ(s.getSymbols(), nullptr);
    EXPECT_EQ(s.getAdditiveSymbols(), nullptr);
    EXPECT_EQ(s.getRange(), nullptr);
    ASSERT_NE(roman.getAdditiveSymbols(), nullptr);
    EXPECT_EQ(roman.getAdditiveSymbols()->size(), 3u);
    roman.clrAdditiveSymbols();
    EXPECT_EQ(roman.getAdditiveSymbols(), nullptr);
}

TEST(CounterStyle, RangesAdmitListedValuesOnly) {
    CounterStyle s = style("cyclic", "x");
    EXPECT_TRUE(s.checkRange(LLONG_MIN));
    s.addRange(1, 3);
    s.addRange(10, 12);
    for (long long v : {0, 1, 3, 4, 9, 10, 12, 13})
        EXPECT_EQ(s.checkRange(v), (v >= 1 && v <= 3) || (v >= 10 && v <= 12)) << v;
    s.addRange(LLONG_MIN, LLONG_MIN);
    EXPECT_TRUE(s.checkRange(LLONG_MIN));
    // A reversed range is refused before anything changes.
    try {
        s.addRange(5, 1);
        FAIL() << "no error";
    } catch (const ZtError& e) {
        EXPECT_EQ(e.getErrorCode(), 4);
        EXPECT_EQ(e.getRawMessage(), u"SYSTEM ERROR: Argument is out of range.");
        EXPECT_EQ(e.getSource(), u"ZtCommonNS::ZtUtil::CounterStyle::addRange");
    }
    EXPECT_EQ(s.getRange()->size(), 3u);
    s.clrRange();
    EXPECT_EQ(s.getRange(), nullptr);
    // Automatic ranges by system: 1 and up, 0 and up, or everything.
    const std::pair<const char*, long long> lowest[] = {
        {"alphabetic", 1},      {"symbolic", 1},        {"additive", 0},
        {"numeric", LLONG_MIN}, {"kansuji", LLONG_MIN}, {"fixed", LLONG_MIN}};
    for (auto [system, low] : lowest) {
        EXPECT_TRUE(style(system).checkRange(low)) << system;
        EXPECT_TRUE(low == LLONG_MIN || !style(system).checkRange(low - 1)) << system;
    }
}

TEST(CounterStyle, BusyMarksArePerThread) {
    // "outer" falls back through "slow" (which cannot write the value either, and dawdles in
    // the lookup) to decimal; "inner" falls back to "slow", which writes its value. While a
    // thread formats outer, slow is busy on that thread only: inner on another thread must
    // still reach slow.
    CounterStyle outer = style("cyclic", "o");
    outer.addRange(100, 100);
    outer.setFallback(name("slow"));
    CounterStyle slow = style("cyclic", "s");
    slow.addRange(2, 2);
    slow.setFallback(name("outer"));
    CounterStyle inner = style("cyclic", "i");
    inner.addRange(100, 100);
    inner.setFallback(name("slow"));
    auto lookup = [](ZtName wanted, void* context) -> const CounterStyle* {
        std::this_thread::yield();
        auto* styles = static_cast<std::pair<const CounterStyle*, const CounterStyle*>*>(context);
        return wanted == name("outer")  ? styles->first
               : wanted == name("slow") ? styles->second
                                        : nullptr;
    };
    std::pair<const CounterStyle*, const CounterStyle*> styles{&outer, &slow};
    std::atomic<int> wrong{0};
    std::thread first([&] {
        for (int i = 0; i < 2000; ++i) {
            wrong += outer.formatNumber(2, lookup, &styles, true) != u"s";
            wrong += outer.formatNumber(7, lookup, &styles, true) != u"7";
        }
    });
    std::thread second([&] {
        for (int i = 0; i < 2000; ++i)
            wrong += inner.formatNumber(2, lookup, &styles, true) != u"s";
    });
    first.join();
    second.join();
    EXPECT_EQ(wrong.load(), 0);
}

TEST(CounterStyle, TextsReachingTheLengthLimitFallBack) {
    constexpr int limit = CounterStyle::kMaxRepresentationLength;
    CounterStyle symbolic = style("symbolic", "x");
    EXPECT_EQ(fmt(symbolic, limit - 1, true), repeat(u"x", limit - 1));
    EXPECT_EQ(fmt(symbolic, limit, true), u"1000");
    EXPECT_EQ(fmt(symbolic, LLONG_MAX, true), u"9223372036854775807");
    CounterStyle additive(name("additive"));
    additive.addAdditiveSymbol(1, "ab");
    EXPECT_EQ(fmt(additive, 499, true), repeat(u"ab", 499));
    EXPECT_EQ(fmt(additive, 500, true), u"500");
    EXPECT_EQ(fmt(additive, LLONG_MAX, true), u"9223372036854775807");
    // Empty symbols never reach the limit, however often they are written.
    CounterStyle empty(name("additive"));
    empty.addAdditiveSymbol(1, "");
    EXPECT_EQ(fmt(empty, LLONG_MAX, true), u"");
    CounterStyle emptySymbolic(name("symbolic"));
    emptySymbolic.addSymbol(Symbol(UnicodeString()));
    EXPECT_EQ(fmt(emptySymbolic, LLONG_MAX), u". ");
    // Positional systems: nine digits of 100 units fit, the tenth reaches 1000.
    CounterStyle wide(name("numeric"));
    wide.addSymbol(Symbol(repeat(u"0", 100)));
    wide.addSymbol(Symbol(repeat(u"1", 100)));
    EXPECT_EQ(fmt(wide, 511, true), repeat(u"1", 900));
    EXPECT_EQ(fmt(wide, 512, true), u"512");
    // A single symbol of a cyclic style is not built in a loop and has no limit; nor has the pad.
    CounterStyle big(name("cyclic"));
    big.addSymbol(Symbol(repeat(u"y", 3000)));
    EXPECT_EQ(fmt(big, 1, true).length(), 3000);
    CounterStyle padded = style("numeric", "0123456789");
    padded.setPad(5000, "0");
    EXPECT_EQ(fmt(padded, 1, true).length(), 5000);
}

TEST(CounterStyle, SymbolsAndTheirErrors) {
    Symbol text(UnicodeString(u"ab"));
    Symbol url(UnicodeString(u"ab"), true);
    EXPECT_TRUE(url.isUrl() && !text.isUrl());
    EXPECT_NE(text, url);
    EXPECT_TRUE(text < url);
    EXPECT_FALSE(url < text);
    EXPECT_TRUE(Symbol(UnicodeString(u"a")) < text);
    EXPECT_EQ(Symbol(0x1F600).getText(), u"\U0001F600");
    EXPECT_TRUE(Symbol(static_cast<const char*>(nullptr)).isEmpty());
    EXPECT_EQ(Symbol("café").getText(), u"café");
    for (int bad : {-1, 0xD800, 0xDFFF, 0x110000}) {
        try {
            Symbol s(bad);
            FAIL() << bad;
        } catch (const ZtError& e) {
            EXPECT_EQ(e.getErrorCode(), 4);
            EXPECT_EQ(e.getSource(), u"ZtCommonNS::ZtUtil::CounterStyle::Symbol");
        }
    }
    CounterStyle s(name("cyclic"));
    EXPECT_THROW(s.setZero(0x110000), ZtError);
    EXPECT_THROW(s.addSymbols(0xD7FF, 2), ZtError); // would reach a surrogate
    EXPECT_THROW(s.addSymbols(0x30, -1), ZtError);
    const wchar_t bad[] = {L'a', static_cast<wchar_t>(0xDC00), 0};
    EXPECT_THROW(s.addSymbols(bad, -1), ZtError);
    EXPECT_THROW(s.setPad(-1, "0"), ZtError);
    EXPECT_EQ(s.getSymbols(), nullptr); // nothing was added by the failed calls
    EXPECT_EQ(s.getPad().getValue(), 0);
    // A URL symbol is written as its text.
    s.addSymbol(url);
    EXPECT_EQ(fmt(s, 1, true), u"ab");
}

TEST(CounterStyle, AddingSeveralSymbols) {
    CounterStyle s(name("cyclic"));
    s.addSymbols("a\U0001D7CEb");
    s.addSymbols(Symbol(UnicodeString(u"cd"))); // one symbol per code point
    s.addSymbols(Symbol(UnicodeString(u"http://x/y.png"), true));
    s.addSymbols(L"xyz", 2);
    s.addSymbols(L"\U0001F600", -1);
    s.addSymbols(static_cast<const wchar_t*>(nullptr), 3);
    s.addSymbols(static_cast<const char*>(nullptr));
    ASSERT_EQ(s.getSymbols()->size(), 9u);
    UnicodeString all;
    for (const Symbol& symbol : *s.getSymbols())
        all.append(symbol.getText()).append(u'|');
    EXPECT_EQ(all, u"a|\U0001D7CE|b|c|d|http://x/y.png|x|y|\U0001F600|");
    EXPECT_TRUE((*s.getSymbols())[5].isUrl());
    s.clrSymbols();
    EXPECT_EQ(s.getSymbols(), nullptr);
    // The ten digits of a script from the first one: compare with ICU's Arabic-Indic digits.
    s.addSymbols(0x0660);
    UnicodeString digits;
    for (const Symbol& symbol : *s.getSymbols())
        digits.append(symbol.getText());
    EXPECT_EQ(digits, icu_oracle::numberingDigits("arab"));
    s.addSymbols(0x41, 0);
    EXPECT_EQ(s.getSymbols()->size(), 10u);
}

TEST(CounterStyle, CopiesAreDeepAndComparisonsConsistent) {
    CounterStyle a = style("numeric", "01");
    a.addRange(0, 10);
    a.addAdditiveSymbol(1, "i");
    CounterStyle b = a;
    EXPECT_EQ(a, b);
    EXPECT_FALSE(a < b || b < a);
    b.addSymbol('2');
    b.addRange(20, 30);
    EXPECT_EQ(a.getSymbols()->size(), 2u);
    EXPECT_EQ(a.getRange()->size(), 1u);
    EXPECT_NE(a, b);
    EXPECT_TRUE((a < b) != (b < a));
    CounterStyle c(name("cyclic"));
    c = b;
    CounterStyle moved = std::move(c);
    EXPECT_EQ(moved, b);
    // Styles differing in any one descriptor are told apart and ordered.
    std::vector<CounterStyle> variants(6, a);
    variants[1].setSuffix(")");
    variants[2].setFallback(name("lower-roman"));
    variants[3].setPad(2, "0");
    variants[4].setFirst(0);
    variants[5].setSystem(name("alphabetic"));
    std::set<CounterStyle> set(variants.begin(), variants.end());
    EXPECT_EQ(set.size(), variants.size());
    for (const CounterStyle& x : variants) {
        for (const CounterStyle& y : variants)
            EXPECT_EQ(&x == &y || x == y, !(x < y) && !(y < x));
    }
    // Changing the system changes the algorithm.
    variants[5].addRange(1, 1);
    EXPECT_EQ(fmt(variants[5], 1, true), u"0");
}
