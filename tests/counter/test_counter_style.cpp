// ZtUtil::CounterStyle built by hand: every counting system, the range check, finishing,
// the fallback with its busy mark, the length limit, the descriptors and their errors.
// Expected texts are computed by hand from the rules they test.
#include <atomic>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "icu_oracle.h"
#include "ztcommon/counter.h"

using namespace ZtCommonNS;
using CounterStyle = ZtUtil::CounterStyle;
using Symbol = CounterStyle::Symbol;

namespace {

ZtName name(const char16_t* text) {
    return ZtName(UnicodeString(text));
}

CounterStyle style(const char16_t* system, const char* symbols = nullptr) {
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

// A lookup over a fixed set of named styles, counting its calls and checking the context.
struct Catalog {
    std::vector<std::pair<ZtName, const CounterStyle*>> entries;
    int calls = 0;

    static const CounterStyle* lookup(ZtName wanted, void* context) {
        auto* catalog = static_cast<Catalog*>(context);
        ++catalog->calls;
        for (const auto& [key, value] : catalog->entries) {
            if (key == wanted)
                return value;
        }
        return nullptr;
    }
};

} // namespace

TEST(CounterStyle, DefaultsAreThoseOfTheDefinition) {
    CounterStyle s(name(u"numeric"));
    EXPECT_EQ(s.getSystem(), name(u"numeric"));
    EXPECT_EQ(s.getFirst(), 1);
    EXPECT_EQ(s.getSymbols(), nullptr);
    EXPECT_EQ(s.getAdditiveSymbols(), nullptr);
    EXPECT_EQ(s.getNegative().first.getText(), u"-");
    EXPECT_TRUE(s.getNegative().second.isEmpty());
    EXPECT_TRUE(s.getZero().isEmpty());
    EXPECT_TRUE(s.getPrefix().isEmpty());
    EXPECT_EQ(s.getSuffix().getText(), u". ");
    EXPECT_EQ(s.getRange(), nullptr);
    EXPECT_EQ(s.getPad().getValue(), 0);
    EXPECT_TRUE(s.getPad().getSymbol().isEmpty());
    EXPECT_EQ(s.getFallback(), name(u"decimal"));
    EXPECT_FALSE(s.isPredefined());
}

TEST(CounterStyle, NumericWithPrefixSuffixAndNegativeSign) {
    CounterStyle s = style(u"numeric", "0123456789");
    EXPECT_EQ(fmt(s, 42), u"42. ");
    EXPECT_EQ(fmt(s, -42), u"-42. ");
    EXPECT_EQ(fmt(s, 42, true), u"42");
    EXPECT_EQ(fmt(s, -42, true), u"-42");
    EXPECT_EQ(fmt(s, 0), u"0. ");
    EXPECT_EQ(fmt(s, LLONG_MIN, true), u"-9223372036854775808");
    EXPECT_EQ(fmt(s, LLONG_MAX, true), u"9223372036854775807");
    s.setNegative("(", ")");
    s.setPrefix("[");
    s.setSuffix("]");
    EXPECT_EQ(fmt(s, -7), u"[(7)]");
    // Base 2 with multi-unit symbols.
    CounterStyle binary(name(u"numeric"));
    binary.addSymbol(Symbol(UnicodeString(u"o")));
    binary.addSymbol(Symbol(UnicodeString(u"\U0001D7CF"))); // 𝟏, two code units
    EXPECT_EQ(fmt(binary, 6, true), u"\U0001D7CF\U0001D7CFo");
    // One symbol is too few for a positional system.
    CounterStyle one = style(u"numeric", "0");
    EXPECT_EQ(fmt(one, 3, true), u"3");
}

TEST(CounterStyle, AlphabeticIsBijective) {
    CounterStyle s = style(u"alphabetic", "abcdefghijklmnopqrstuvwxyz");
    EXPECT_EQ(fmt(s, 1, true), u"a");
    EXPECT_EQ(fmt(s, 26, true), u"z");
    EXPECT_EQ(fmt(s, 27, true), u"aa");
    EXPECT_EQ(fmt(s, 702, true), u"zz");
    EXPECT_EQ(fmt(s, 703, true), u"aaa");
    // The automatic range starts at 1: 0 and negatives go to "decimal", with this style's
    // own suffix.
    EXPECT_EQ(fmt(s, 0), u"0. ");
    EXPECT_EQ(fmt(s, -3), u"-3. ");
    // Even an explicit range that admits them cannot make the system write them.
    s.addRange(-5, 5);
    EXPECT_EQ(fmt(s, -3, true), u"-3");
}

TEST(CounterStyle, CyclicAndFixed) {
    CounterStyle cyclic = style(u"cyclic", "xyz");
    EXPECT_EQ(fmt(cyclic, 1, true), u"x");
    EXPECT_EQ(fmt(cyclic, 4, true), u"x");
    EXPECT_EQ(fmt(cyclic, 0, true), u"z");
    EXPECT_EQ(fmt(cyclic, -1, true), u"y");
    // 2^63 leaves 2 when divided by 3, so LLONG_MIN - 1 is a multiple of 3.
    EXPECT_EQ(fmt(cyclic, LLONG_MIN, true), u"x");
    EXPECT_EQ(fmt(cyclic, LLONG_MAX, true), u"x"); // 2^63 - 2 is a multiple of 3
    // Cyclic styles have no negative sign.
    EXPECT_EQ(fmt(cyclic, -1), u"y. ");
    EXPECT_EQ(fmt(style(u"cyclic"), 1, true), u"1");

    CounterStyle fixed = style(u"fixed", "abc");
    fixed.setFirst(5);
    EXPECT_EQ(fmt(fixed, 5, true), u"a");
    EXPECT_EQ(fmt(fixed, 7, true), u"c");
    EXPECT_EQ(fmt(fixed, 4, true), u"4");
    EXPECT_EQ(fmt(fixed, 8, true), u"8");
    fixed.setFirst(INT_MAX);
    EXPECT_EQ(fmt(fixed, LLONG_MIN, true), u"-9223372036854775808");
    EXPECT_EQ(fmt(fixed, INT_MAX, true), u"a");
    fixed.setFirst(INT_MIN);
    EXPECT_EQ(fmt(fixed, LLONG_MAX, true), u"9223372036854775807");
}

TEST(CounterStyle, SymbolicRepeatsTheSymbol) {
    CounterStyle s = style(u"symbolic", "*+");
    EXPECT_EQ(fmt(s, 1, true), u"*");
    EXPECT_EQ(fmt(s, 2, true), u"+");
    EXPECT_EQ(fmt(s, 3, true), u"**");
    EXPECT_EQ(fmt(s, 6, true), u"+++");
    EXPECT_EQ(fmt(s, 0, true), u"0");
    EXPECT_EQ(fmt(s, -2, true), u"-2");
}

TEST(CounterStyle, AdditiveIsGreedy) {
    CounterStyle s(name(u"additive"));
    s.addAdditiveSymbol(10, "X");
    s.addAdditiveSymbol(5, 'V');
    s.addAdditiveSymbol(1, Symbol(UnicodeString(u"I")));
    EXPECT_EQ(fmt(s, 27, true), u"XXVII");
    EXPECT_EQ(fmt(s, 4, true), u"IIII");
    // 0 is in the automatic range, but needs a last symbol of weight 0.
    EXPECT_EQ(fmt(s, 0, true), u"0");
    // Negative values are outside the automatic range (0 and up).
    EXPECT_EQ(fmt(s, -27, true), u"-27");
    s.addRange(-100, 100);
    EXPECT_EQ(fmt(s, -27, true), u"-XXVII");
    s.addAdditiveSymbol(CounterStyle::IntSymbol(0, Symbol(UnicodeString(u"N"))));
    EXPECT_EQ(fmt(s, 0, true), u"N");
    // A value the weights cannot sum to falls back.
    CounterStyle even(name(u"additive"));
    even.addAdditiveSymbol(2, "two");
    EXPECT_EQ(fmt(even, 4, true), u"twotwo");
    EXPECT_EQ(fmt(even, 5, true), u"5");
    // Without additive symbols nothing can be written.
    EXPECT_EQ(fmt(CounterStyle(name(u"additive")), 3, true), u"3");
    ASSERT_NE(s.getAdditiveSymbols(), nullptr);
    EXPECT_EQ(s.getAdditiveSymbols()->size(), 4u);
    s.clrAdditiveSymbols();
    EXPECT_EQ(s.getAdditiveSymbols(), nullptr);
}

TEST(CounterStyle, ChineseSystems) {
    CounterStyle informal(name(u"simp-chinese-informal"));
    informal.addSymbols("零一二三四五六七八九十百千");
    CounterStyle formal(name(u"simp-chinese-formal"));
    formal.addSymbols("零壹贰叁肆伍陆柒捌玖拾佰仟");
    EXPECT_EQ(fmt(informal, 12, true), u"十二");
    EXPECT_EQ(fmt(formal, 12, true), u"壹拾贰");
    EXPECT_EQ(fmt(informal, 112, true), u"一百一十二");
    EXPECT_EQ(fmt(informal, 0, true), u"零");
    EXPECT_EQ(fmt(informal, -1001, true), u"-一千零一");
    // Ten thousand needs a fourteenth symbol.
    EXPECT_EQ(fmt(informal, 10000, true), u"10000");
    informal.addSymbols("万");
    EXPECT_EQ(fmt(informal, 20000, true), u"二万");
    // With the ten digits only, every value with a marker falls back.
    CounterStyle digits(name(u"trad-chinese-formal"));
    digits.addSymbols("零壹貳參肆伍陸柒捌玖");
    EXPECT_EQ(fmt(digits, 9, true), u"玖");
    EXPECT_EQ(fmt(digits, 10, true), u"10");
}

TEST(CounterStyle, KansujiFormsFollowTheSymbolCount) {
    const char* digits = "〇一二三四五六七八九";
    const char* groups = "万億兆京垓𥝱穣溝澗正載極";
    CounterStyle simple(name(u"kansuji"));
    simple.addSymbols(digits);
    CounterStyle grouping(name(u"kansuji"));
    grouping.addSymbols(digits);
    grouping.addSymbols(groups);
    CounterStyle readable(name(u"kansuji"));
    readable.addSymbols(digits);
    readable.addSymbols("十百千");
    readable.addSymbols(groups);
    ASSERT_EQ(grouping.getSymbols()->size(), 22u);
    ASSERT_EQ(readable.getSymbols()->size(), 25u);
    EXPECT_EQ(fmt(simple, 12345, true), u"一二三四五");
    EXPECT_EQ(fmt(grouping, 12345, true), u"一万二三四五");
    EXPECT_EQ(fmt(readable, 12345, true), u"一万二千三百四十五");
    EXPECT_EQ(fmt(readable, -20, true), u"-二十");
    EXPECT_EQ(fmt(readable, 0, true), u"〇");
    // Only the first code point of each symbol is used.
    CounterStyle long_(name(u"kansuji"));
    long_.addSymbol(Symbol(UnicodeString(u"〇x")));
    long_.addSymbols("一二三四五六七八九");
    EXPECT_EQ(fmt(long_, 101, true), u"一〇一");
    // Fewer than ten digits: values needing a missing digit fall back.
    CounterStyle few(name(u"kansuji"));
    few.addSymbols("〇一二");
    EXPECT_EQ(fmt(few, 21, true), u"二一");
    EXPECT_EQ(fmt(few, 3, true), u"3");
}

TEST(CounterStyle, EthiopicNumeric) {
    CounterStyle s(name(u"ethiopic-numeric"));
    EXPECT_EQ(fmt(s, 1, true), u"፩");
    EXPECT_EQ(fmt(s, 10000, true), u"፼");
    // Ethiopic numerals have neither zero nor negative numbers: those fall back.
    EXPECT_EQ(fmt(s, 0, true), u"0");
    EXPECT_EQ(fmt(s, -5), u"-5. ");
    EXPECT_EQ(fmt(CounterStyle(name(u"no-such-system")), 7), u"7. ");
}

TEST(CounterStyle, PadComesBeforeTheNegativeSign) {
    CounterStyle s = style(u"numeric", "0123456789");
    s.setPad(3, "0");
    EXPECT_EQ(fmt(s, 7, true), u"007");
    EXPECT_EQ(fmt(s, -7, true), u"-007");
    EXPECT_EQ(fmt(s, 1234, true), u"1234");
    // A pad symbol of two code points goes in whole: ceil((4 - 1) / 2) = 2 copies, one more
    // code point than asked for.
    s.setPad(4, "ab");
    EXPECT_EQ(fmt(s, 7, true), u"abab7");
    s.setPad(3, "ab");
    EXPECT_EQ(fmt(s, 7, true), u"ab7");
    // Lengths count code points, not code units.
    s.setPad(3, Symbol(UnicodeString(u"\U0001D7CE")));
    EXPECT_EQ(fmt(s, 7, true), u"\U0001D7CE\U0001D7CE7");
    CounterStyle wide(name(u"numeric"));
    wide.addSymbols(0x1D7CE); // 𝟎 to 𝟗
    wide.setPad(3, "0");
    EXPECT_EQ(fmt(wide, 7, true), u"00\U0001D7D5");
    // The zero symbol is padded too; an empty pad symbol pads nothing.
    s.setZero("z");
    s.setPad(2, "_");
    EXPECT_EQ(fmt(s, 0), u"_z. ");
    s.setPad(5, "");
    EXPECT_EQ(fmt(s, 0, true), u"z");
    EXPECT_EQ(s.getPad().getValue(), 5);
}

TEST(CounterStyle, ZeroSymbolComesFirst) {
    CounterStyle s = style(u"alphabetic", "ab");
    s.setZero(0x2205); // ∅
    EXPECT_EQ(fmt(s, 0), u"∅. ");
    s.setZero("");
    EXPECT_EQ(fmt(s, 0), u"0. ");
    s.setZero(Symbol(UnicodeString(u"nil")));
    s.addRange(5, 6); // the zero symbol does not ask the range
    EXPECT_EQ(fmt(s, 0, true), u"nil");
    EXPECT_EQ(s.getZero().getText(), u"nil");
}

TEST(CounterStyle, RangesAdmitListedValuesOnly) {
    CounterStyle s = style(u"cyclic", "x");
    EXPECT_TRUE(s.checkRange(LLONG_MIN));
    s.addRange(1, 3);
    s.addRange(10, 12);
    ASSERT_NE(s.getRange(), nullptr);
    EXPECT_EQ(s.getRange()->size(), 2u);
    EXPECT_TRUE(s.checkRange(1));
    EXPECT_TRUE(s.checkRange(3));
    EXPECT_FALSE(s.checkRange(4));
    EXPECT_TRUE(s.checkRange(11));
    EXPECT_FALSE(s.checkRange(13));
    EXPECT_EQ(fmt(s, 4, true), u"4");
    EXPECT_EQ(fmt(s, 12, true), u"x");
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
    // Automatic ranges by system.
    EXPECT_FALSE(style(u"alphabetic").checkRange(0));
    EXPECT_TRUE(style(u"alphabetic").checkRange(1));
    EXPECT_FALSE(style(u"symbolic").checkRange(0));
    EXPECT_TRUE(style(u"additive").checkRange(0));
    EXPECT_FALSE(style(u"additive").checkRange(-1));
    EXPECT_TRUE(style(u"numeric").checkRange(LLONG_MIN));
    EXPECT_TRUE(style(u"kansuji").checkRange(-1));
    EXPECT_TRUE(style(u"fixed").checkRange(-1));
}

TEST(CounterStyle, FallbackWithoutLookupIsAlwaysDecimal) {
    CounterStyle s = style(u"alphabetic", "ab");
    s.setFallback(name(u"upper-roman"));
    s.setPrefix("<");
    s.setSuffix(">");
    s.setPad(5, "0"); // the fallback text is not padded by this style
    EXPECT_EQ(fmt(s, 0), u"<0>");
    EXPECT_EQ(fmt(s, 0, true), u"0");
    // Through the predefined styles as lookup, the fallback name counts.
    EXPECT_EQ(s.formatNumber(-42, &ZtUtil::getPredefinedCounterStyle, nullptr, false),
              u"<-42>"); // upper-roman cannot write -42 either: its own fallback is decimal
    s.addRange(-100, 100);
    s.setFallback(name(u"lower-roman"));
    EXPECT_EQ(s.formatNumber(0, &ZtUtil::getPredefinedCounterStyle, nullptr, false), u"<0>");
    CounterStyle t = style(u"fixed", "a");
    t.setFallback(name(u"upper-roman"));
    EXPECT_EQ(t.formatNumber(42, &ZtUtil::getPredefinedCounterStyle, nullptr, false), u"XLII. ");
    EXPECT_EQ(t.formatNumber(42, nullptr, nullptr, false), u"42. ");
}

TEST(CounterStyle, FallbackLoopsEndInDecimal) {
    // a -> b -> c -> a; each style admits one value only and writes its own letter.
    CounterStyle a = style(u"cyclic", "A");
    CounterStyle b = style(u"cyclic", "B");
    CounterStyle c = style(u"cyclic", "C");
    a.addRange(1, 1);
    b.addRange(2, 2);
    c.addRange(3, 3);
    a.setFallback(name(u"b"));
    b.setFallback(name(u"c"));
    c.setFallback(name(u"a"));
    a.setPrefix("(");
    a.setSuffix(")");
    b.setPrefix("[");
    Catalog catalog{{{name(u"a"), &a}, {name(u"b"), &b}, {name(u"c"), &c}}};
    EXPECT_EQ(a.formatNumber(2, &Catalog::lookup, &catalog, false), u"(B)");
    EXPECT_EQ(a.formatNumber(3, &Catalog::lookup, &catalog, false), u"(C)");
    EXPECT_EQ(b.formatNumber(1, &Catalog::lookup, &catalog, false), u"[A. ");
    catalog.calls = 0;
    EXPECT_EQ(a.formatNumber(7, &Catalog::lookup, &catalog, false), u"(7)");
    EXPECT_EQ(catalog.calls, 3); // b, c, then a, which is busy
    // A style that names itself.
    CounterStyle self = style(u"cyclic", "S");
    self.addRange(1, 1);
    self.setFallback(name(u"self"));
    Catalog selfCatalog{{{name(u"self"), &self}}};
    EXPECT_EQ(self.formatNumber(5, &Catalog::lookup, &selfCatalog, true), u"5");
    // A lookup that knows nothing gives decimal; the busy marks are gone afterwards.
    Catalog empty;
    EXPECT_EQ(a.formatNumber(9, &Catalog::lookup, &empty, true), u"9");
    EXPECT_EQ(a.formatNumber(2, &Catalog::lookup, &catalog, true), u"B");
}

TEST(CounterStyle, BusyMarksArePerThread) {
    // "outer" falls back through "slow" (which cannot write the value either, and dawdles in
    // the lookup) to decimal; "inner" falls back to "slow", which writes its value. While a
    // thread formats outer, slow is busy on that thread only: inner on another thread must
    // still reach slow.
    CounterStyle outer = style(u"cyclic", "o");
    outer.addRange(100, 100);
    outer.setFallback(name(u"slow"));
    CounterStyle slow = style(u"cyclic", "s");
    slow.addRange(2, 2);
    slow.setFallback(name(u"outer"));
    CounterStyle inner = style(u"cyclic", "i");
    inner.addRange(100, 100);
    inner.setFallback(name(u"slow"));
    struct Context {
        Catalog catalog;
        std::atomic<int> wrong{0};
    } context{{{{name(u"outer"), &outer}, {name(u"slow"), &slow}}}, {}};
    auto lookup = [](ZtName wanted, void* p) -> const CounterStyle* {
        auto* c = static_cast<Context*>(p);
        std::this_thread::yield();
        for (const auto& [key, value] : c->catalog.entries) {
            if (key == wanted)
                return value;
        }
        return nullptr;
    };
    std::thread first([&] {
        for (int i = 0; i < 2000; ++i) {
            if (outer.formatNumber(2, lookup, &context, true) != u"s")
                ++context.wrong;
            if (outer.formatNumber(7, lookup, &context, true) != u"7")
                ++context.wrong;
        }
    });
    std::thread second([&] {
        for (int i = 0; i < 2000; ++i) {
            if (inner.formatNumber(2, lookup, &context, true) != u"s")
                ++context.wrong;
        }
    });
    first.join();
    second.join();
    EXPECT_EQ(context.wrong.load(), 0);
}

TEST(CounterStyle, TextsReachingTheLengthLimitFallBack) {
    constexpr int limit = CounterStyle::kMaxRepresentationLength;
    CounterStyle symbolic = style(u"symbolic", "x");
    EXPECT_EQ(fmt(symbolic, limit - 1, true), repeat(u"x", limit - 1));
    EXPECT_EQ(fmt(symbolic, limit, true), u"1000");
    EXPECT_EQ(fmt(symbolic, LLONG_MAX, true), u"9223372036854775807");
    CounterStyle additive(name(u"additive"));
    additive.addAdditiveSymbol(1, "ab");
    EXPECT_EQ(fmt(additive, 499, true), repeat(u"ab", 499));
    EXPECT_EQ(fmt(additive, 500, true), u"500");
    EXPECT_EQ(fmt(additive, LLONG_MAX, true), u"9223372036854775807");
    // Empty symbols never reach the limit, however often they are written.
    CounterStyle empty(name(u"additive"));
    empty.addAdditiveSymbol(1, "");
    EXPECT_EQ(fmt(empty, LLONG_MAX, true), u"");
    CounterStyle emptySymbolic(name(u"symbolic"));
    emptySymbolic.addSymbol(Symbol(UnicodeString()));
    EXPECT_EQ(fmt(emptySymbolic, LLONG_MAX), u". ");
    // Positional systems: nine digits of 100 units fit, the tenth reaches 1000.
    UnicodeString zero = repeat(u"0", 100);
    UnicodeString one = repeat(u"1", 100);
    CounterStyle wide(name(u"numeric"));
    wide.addSymbol(Symbol(zero));
    wide.addSymbol(Symbol(one));
    EXPECT_EQ(fmt(wide, 511, true), repeat(one.getTerminatedBuffer(), 9));
    EXPECT_EQ(fmt(wide, 512, true), u"512");
    // A single symbol of a cyclic style is not built in a loop and has no limit.
    CounterStyle big(name(u"cyclic"));
    big.addSymbol(Symbol(repeat(u"y", 3000)));
    EXPECT_EQ(fmt(big, 1, true).length(), 3000);
    // Neither has the pad.
    CounterStyle padded = style(u"numeric", "0123456789");
    padded.setPad(5000, "0");
    EXPECT_EQ(fmt(padded, 1, true).length(), 5000);
}

TEST(CounterStyle, SymbolsAndTheirErrors) {
    Symbol text(UnicodeString(u"ab"));
    Symbol url(UnicodeString(u"ab"), true);
    EXPECT_FALSE(text.isUrl());
    EXPECT_TRUE(url.isUrl());
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
    CounterStyle s(name(u"cyclic"));
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
    CounterStyle s(name(u"cyclic"));
    s.addSymbols("a\U0001D7CEb");
    ASSERT_EQ(s.getSymbols()->size(), 3u);
    EXPECT_EQ((*s.getSymbols())[1].getText(), u"\U0001D7CE");
    s.addSymbols(Symbol(UnicodeString(u"cd")));
    s.addSymbols(Symbol(UnicodeString(u"http://x/y.png"), true));
    ASSERT_EQ(s.getSymbols()->size(), 6u);
    EXPECT_TRUE((*s.getSymbols())[5].isUrl());
    s.addSymbols(L"xyz", 2);
    s.addSymbols(L"\U0001F600", -1);
    ASSERT_EQ(s.getSymbols()->size(), 9u);
    EXPECT_EQ((*s.getSymbols())[8].getText(), u"\U0001F600");
    s.addSymbols(static_cast<const wchar_t*>(nullptr), 3);
    s.addSymbols(static_cast<const char*>(nullptr));
    EXPECT_EQ(s.getSymbols()->size(), 9u);
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
    CounterStyle a = style(u"numeric", "01");
    a.addRange(0, 10);
    a.addAdditiveSymbol(1, "i");
    CounterStyle b = a;
    EXPECT_EQ(a, b);
    EXPECT_FALSE(a < b);
    EXPECT_FALSE(b < a);
    b.addSymbol('2');
    b.addRange(20, 30);
    EXPECT_EQ(a.getSymbols()->size(), 2u);
    EXPECT_EQ(a.getRange()->size(), 1u);
    EXPECT_NE(a, b);
    EXPECT_TRUE((a < b) != (b < a));
    CounterStyle c(name(u"cyclic"));
    c = b;
    EXPECT_EQ(c, b);
    CounterStyle moved = std::move(c);
    EXPECT_EQ(moved, b);
    // Styles differing in any one descriptor are told apart and ordered.
    std::vector<CounterStyle> variants(6, a);
    variants[1].setSuffix(")");
    variants[2].setFallback(name(u"lower-roman"));
    variants[3].setPad(2, "0");
    variants[4].setFirst(0);
    variants[5].setSystem(name(u"alphabetic"));
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
