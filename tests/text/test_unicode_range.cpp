// ZtUnicodeRange and ZtUtil::parseHexNum: random range sequences against a bit per code point,
// the shortest text forms (data/unicode_range_forms.tsv), round trips through the text, and
// where parsing stops (data/unicode_range_parse.tsv).
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <string>
#include <vector>

#include "text_test_util.h"
#include "ztcommon/text.h"
#include "ztcommon/util.h"

using namespace ZtCommonNS;
using URange = ZtUnicodeRange::URange;

namespace {

constexpr int32_t kCodePoints = 0x110000;

// The plain model: one flag per code point.
class BitOracle {
public:
    BitOracle() : bits_(kCodePoints, false) {}
    void add(int32_t first, int32_t last) {
        for (int32_t c = std::max(first, 0); c <= std::min(last, kCodePoints - 1); ++c)
            bits_[size_t(c)] = true;
    }
    bool has(int32_t c) const { return c >= 0 && c < kCodePoints && bits_[size_t(c)]; }
    // The maximal runs of set flags within [from, to).
    std::vector<URange> runs(int32_t from, int32_t to) const {
        std::vector<URange> out;
        for (int32_t c = from; c < to; ++c) {
            if (!bits_[size_t(c)])
                continue;
            if (!out.empty() && out.back().last == c - 1)
                out.back().last = c;
            else
                out.push_back({c, c});
        }
        return out;
    }

private:
    std::vector<bool> bits_;
};

std::vector<URange> rangesOf(const ZtUnicodeRange& set) {
    return {set.begin(), set.end()};
}

// "20 41-10FFFF" to ranges.
std::vector<URange> rangesFrom(const std::string& cell) {
    std::vector<URange> out;
    std::istringstream in(cell);
    for (std::string item; in >> item;) {
        const size_t dash = item.find('-');
        out.push_back({hex(item.substr(0, dash)),
                       hex(item.substr(dash == std::string::npos ? 0 : dash + 1))});
    }
    return out;
}

} // namespace

TEST(UnicodeRange, RandomAddsMatchABitPerCodePoint) {
    std::mt19937 rng(4711);
    // Windows of 600 code points at the start, in the middle and at the end of Unicode, with
    // ranges that often touch, overlap or swallow each other; the ranges may stick out of
    // the window only where Unicode ends.
    for (int32_t base : {0, 0xFF00, 0x10FDA8}) {
        for (int sequence = 0; sequence < 40; ++sequence) {
            ZtUnicodeRange set;
            BitOracle oracle;
            const int32_t window = 600;
            std::uniform_int_distribution<int32_t> start(0, window - 1);
            std::uniform_int_distribution<int32_t> length(0, sequence % 4 == 0 ? 200 : 12);
            for (int add = 0; add < 60; ++add) {
                const int32_t first = base + start(rng);
                const int32_t last = std::min(first + length(rng), base + window - 1);
                set.addRange(URange{first, last});
                oracle.add(first, last);
                ASSERT_EQ(rangesOf(set), oracle.runs(base, base + window))
                    << "base " << base << " sequence " << sequence << " add " << add;
            }
            for (int32_t c = base - 2; c < base + window + 2; ++c)
                ASSERT_EQ(set.inRange(c), oracle.has(c)) << c;
        }
    }
}

TEST(UnicodeRange, UnionMatchesTheOracleOverAllOfUnicode) {
    std::mt19937 rng(99);
    std::uniform_int_distribution<int32_t> anywhere(-100, 0x110100);
    std::uniform_int_distribution<int32_t> length(0, 40000);
    ZtUnicodeRange a, b;
    BitOracle oracle;
    for (int i = 0; i < 40; ++i) {
        const int32_t first = anywhere(rng);
        const int32_t last = first + length(rng);
        (i % 2 == 0 ? a : b).addRange(first, last);
        oracle.add(first, last);
    }
    ZtUnicodeRange both = a;
    both.addRange(b);
    EXPECT_EQ(rangesOf(both), oracle.runs(0, kCodePoints));
    b.addRange(a);
    EXPECT_EQ(b, both);
    // Every boundary of every range, both sides.
    for (const URange& r : both) {
        for (int32_t c : {r.first - 1, r.first, r.last, r.last + 1})
            EXPECT_EQ(both.inRange(c), oracle.has(c)) << c;
    }
}

TEST(UnicodeRange, ClippingEmptyFullCopyAndCompare) {
    ZtUnicodeRange set;
    EXPECT_TRUE(set.isEmpty());
    EXPECT_FALSE(set.inRange(0));
    EXPECT_EQ(set.toString(), UnicodeString());
    set.addRange(-5, 3);
    set.addRange(0x10FFF0, INT_MAX);
    set.addRange(5, 3);               // empty
    set.addRange(0x110000, 0x120000); // wholly beyond Unicode
    set.addRange(INT_MIN, -1);
    EXPECT_EQ(rangesOf(set), (std::vector<URange>{{0, 3}, {0x10FFF0, 0x10FFFF}}));
    EXPECT_FALSE(set.inRange(-1));
    EXPECT_FALSE(set.inRange(0x110000));
    EXPECT_FALSE(set.isFullRange());
    set.addRange(INT_MIN, INT_MAX);
    EXPECT_TRUE(set.isFullRange());

    ZtUnicodeRange copy = set;
    copy.clearRange();
    EXPECT_TRUE(copy.isEmpty());
    EXPECT_TRUE(set.isFullRange()); // the copy had its own ranges
    EXPECT_EQ(copy, ZtUnicodeRange());
    EXPECT_NE(copy, set);
    copy.fullRange();
    EXPECT_EQ(copy, set);
    ZtUnicodeRange moved = std::move(copy);
    EXPECT_TRUE(moved.isFullRange());
    ZtUnicodeRange small;
    small.addRange(0x41, 0x41);
    moved = small;
    small.addRange(small); // the union with itself changes nothing
    EXPECT_EQ(rangesOf(small), (std::vector<URange>{{0x41, 0x41}}));
    EXPECT_EQ(moved, small);
    moved = ZtUnicodeRange();
    EXPECT_TRUE(moved.isEmpty());
}

TEST(UnicodeRange, ShortestForms) {
    for (const Row& row : dataRows("unicode_range_forms.tsv")) {
        ZtUnicodeRange set, back;
        for (const URange& r : rangesFrom(row.at(0)))
            set.addRange(r);
        EXPECT_EQ(set.toString(), text(row.at(1)));
        EXPECT_TRUE(back.parseUnicodeRange(text(row[1])));
        EXPECT_EQ(back, set) << row[1];
    }
}

TEST(UnicodeRange, ParsingStopsAtTheOffendingCharacter) {
    for (const Row& row : dataRows("unicode_range_parse.tsv")) {
        const UnicodeString input = text(row.at(0));
        const bool ok = row.at(1) == "1";
        const int32_t stop = row.at(2) == "end" ? input.length() : std::stoi(row[2]);
        ZtUnicodeRange set;
        int32_t at = -1;
        EXPECT_EQ(set.parseUnicodeRange(input, &at), ok) << row[0];
        EXPECT_EQ(at, stop) << row[0];
        if (row.at(3) != "*") {
            EXPECT_EQ(rangesOf(set), rangesFrom(row[3])) << row[0];
        }
        // The wide form stops at the same character, counted in code points.
        std::wstring wide;
        for (int32_t i = 0; i < input.length(); i = input.moveIndex32(i, 1))
            wide.push_back(static_cast<wchar_t>(input.char32At(i)));
        const wchar_t* end = nullptr;
        ZtUnicodeRange wideSet;
        EXPECT_EQ(wideSet.parseUnicodeRange(wide.c_str(), &end), ok) << row[0];
        EXPECT_EQ(end - wide.c_str(), input.countChar32(0, stop)) << row[0];
        EXPECT_EQ(wideSet, set) << row[0];
    }
    // A wide character that is no code point stops the item; no text is no error.
    const wchar_t beyond[] = {L'\'', L'A', static_cast<wchar_t>(0x110000), L'\'', 0};
    ZtUnicodeRange set;
    const wchar_t* end = nullptr;
    EXPECT_FALSE(set.parseUnicodeRange(beyond, &end));
    EXPECT_EQ(end, beyond + 2);
    EXPECT_EQ(rangesOf(set), (std::vector<URange>{{0x41, 0x41}}));
    EXPECT_TRUE(set.parseUnicodeRange(static_cast<const wchar_t*>(nullptr), &end));
    EXPECT_EQ(end, nullptr);
}

TEST(UnicodeRange, RandomSetsSurviveTheirTextForm) {
    std::mt19937 rng(31337);
    std::uniform_int_distribution<int32_t> anywhere(0, 0x10FFFF);
    std::uniform_int_distribution<int> shape(0, 5);
    for (int round = 0; round < 300; ++round) {
        ZtUnicodeRange set;
        for (int i = 0; i < 1 + round % 12; ++i) {
            int32_t first = anywhere(rng);
            int32_t last = first; // shape 2: one code point
            const int s = shape(rng);
            if (s == 0) { // a wildcard block of 1 to 4 digits
                const int bits = 4 * (1 + round % 4);
                first &= ~((1 << bits) - 1);
                last = first | ((1 << bits) - 1);
            } else if (s == 1) {
                last = first + int32_t(rng() % 5000);
            } else if (s > 2) {
                first &= 0xFFF;
                last = first + int32_t(rng() % 40);
            }
            set.addRange(first, std::min(last, 0x10FFFF));
        }
        const UnicodeString text = set.toString();
        ZtUnicodeRange back;
        int32_t stop = -1;
        ASSERT_TRUE(back.parseUnicodeRange(text, &stop)) << utf8(text) << " stop " << stop;
        ASSERT_EQ(back, set) << utf8(text);
        EXPECT_EQ(back.toString(), text);
        EXPECT_EQ(text.indexOf(u' '), -1);
    }
}

TEST(UnicodeRange, Values) {
    ZtUnicodeRange all;
    EXPECT_TRUE(all.parseUnicodeRange(ZtValue(NM_all)));
    EXPECT_TRUE(all.isFullRange());

    ZtUnicodeRange literal;
    EXPECT_TRUE(literal.parseUnicodeRange(ZtValue(u"a\"\\b", ZT_UNIT_LITERAL)));
    EXPECT_EQ(rangesOf(literal), (std::vector<URange>{{0x22, 0x22}, {0x5C, 0x5C}, {0x61, 0x62}}));

    ZtUnicodeRange named;
    EXPECT_TRUE(named.parseUnicodeRange(ZtValue(ZtName(u"U+0030-0039"))));
    EXPECT_EQ(rangesOf(named), (std::vector<URange>{{0x30, 0x39}}));

    ZtPtr<ZtValueArray> items(new ZtValueArray{ZtValue(u"A"), ZtValue(ZtName(u"U+0042-0043"))});
    ZtUnicodeRange fromArray;
    EXPECT_TRUE(fromArray.parseUnicodeRange(ZtValue(items.get())));
    EXPECT_EQ(rangesOf(fromArray), (std::vector<URange>{{0x41, 0x43}}));
    items->append(ZtValue(12));
    EXPECT_FALSE(fromArray.parseUnicodeRange(ZtValue(items.get())));

    ZtUnicodeRange number;
    EXPECT_FALSE(number.parseUnicodeRange(ZtValue(12)));
    EXPECT_TRUE(number.isEmpty());
}

TEST(ParseHexNum, ReadsDigitsUpToTheLastCodePoint) {
    // The three forms on the same texts: a failure, overflow among them, changes neither the
    // position nor the value.
    const std::tuple<const char16_t*, bool, int32_t, int32_t> cases[] = {
        {u"1F600x", true, 5, 0x1F600}, {u"00000000010ffff", true, 15, 0x10FFFF},
        {u"aBc,", true, 3, 0xABC},     {u"", false, 0, 7},
        {u"g1", false, 0, 7},          {u"110000", false, 0, 7},
        {u"FFFFFFFFF", false, 0, 7},   {u"ABCDEF", false, 0, 7},
        {u"-1", false, 0, 7},          {u" 1", false, 0, 7}};
    for (const auto& [text, ok, stop, expected] : cases) {
        const UnicodeString s(text);
        int32_t value = 7, index = 0;
        const char16_t* pos = text;
        EXPECT_EQ(ZtUtil::parseHexNum(pos, text + s.length(), value), ok) << utf8(s);
        EXPECT_EQ(pos - text, stop) << utf8(s);
        EXPECT_EQ(value, expected) << utf8(s);
        value = 7;
        EXPECT_EQ(ZtUtil::parseHexNum(s, index, value), ok) << utf8(s);
        EXPECT_EQ(index, stop) << utf8(s);
        EXPECT_EQ(value, expected) << utf8(s);
        std::wstring wide(text, text + s.length());
        const wchar_t* wpos = wide.c_str();
        value = 7;
        EXPECT_EQ(ZtUtil::parseHexNum(wpos, value), ok) << utf8(s);
        EXPECT_EQ(wpos - wide.c_str(), stop) << utf8(s);
        EXPECT_EQ(value, expected) << utf8(s);
    }
    // The limit and the index bounds are kept to.
    const char16_t* limited = u"1234";
    const char16_t* pos = limited;
    int32_t value = 0, index = 1;
    EXPECT_TRUE(ZtUtil::parseHexNum(pos, limited + 2, value));
    EXPECT_EQ(value, 0x12);
    EXPECT_EQ(pos, limited + 2);
    EXPECT_FALSE(ZtUtil::parseHexNum(pos, limited + 2, value)); // nothing before the limit
    const UnicodeString s(u"x1F;");
    EXPECT_TRUE(ZtUtil::parseHexNum(s, index, value));
    EXPECT_EQ(index, 3);
    for (int32_t outside : {-1, 4, 100}) {
        index = outside;
        EXPECT_FALSE(ZtUtil::parseHexNum(s, index, value));
        EXPECT_EQ(index, outside);
    }
    const wchar_t* none = nullptr;
    EXPECT_FALSE(ZtUtil::parseHexNum(none, value));
}
