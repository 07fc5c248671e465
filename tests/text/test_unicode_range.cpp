// ZtUnicodeRange and ZtUtil::parseHexNum: random range sequences against a bit per code point,
// the shortest text forms, round trips through the text, and where parsing stops.
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

void expectInvariant(const ZtUnicodeRange& set) {
    const URange* previous = nullptr;
    for (const URange& r : set) {
        EXPECT_LE(r.first, r.last);
        EXPECT_GE(r.first, 0);
        EXPECT_LE(r.last, 0x10FFFF);
        if (previous != nullptr) {
            EXPECT_LT(previous->last + 1, r.first) << "ranges touch or overlap";
        }
        previous = &r;
    }
}

ZtUnicodeRange parsed(const UnicodeString& text) {
    ZtUnicodeRange set;
    EXPECT_TRUE(set.parseUnicodeRange(text)) << utf8(text);
    return set;
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
                expectInvariant(set);
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
    expectInvariant(both);
    EXPECT_EQ(rangesOf(both), oracle.runs(0, kCodePoints));
    b.addRange(a);
    EXPECT_EQ(b, both);
    // Every boundary of every range, both sides.
    for (const URange& r : both) {
        for (int32_t c : {r.first - 1, r.first, r.last, r.last + 1})
            EXPECT_EQ(both.inRange(c), oracle.has(c)) << c;
    }
}

TEST(UnicodeRange, MergingAndClipping) {
    ZtUnicodeRange set;
    set.addRange(0x20, 0x2F);
    set.addRange(0x30, 0x39); // touches: one range
    EXPECT_EQ(rangesOf(set), (std::vector<URange>{{0x20, 0x39}}));
    set.addRange(0x50, 0x60);
    set.addRange(0x70, 0x80);
    set.addRange(0x3B, 0x3B);
    set.addRange(0x3A, 0x75); // fills the gaps, swallows two ranges, reaches into the last
    EXPECT_EQ(rangesOf(set), (std::vector<URange>{{0x20, 0x80}}));
    set.addRange(0x10, 0x1E); // one short of touching
    EXPECT_EQ(set.getRangeCount(), 2);
    set.addRange(0x1F, 0x1F);
    EXPECT_EQ(rangesOf(set), (std::vector<URange>{{0x10, 0x80}}));

    ZtUnicodeRange clipped;
    clipped.addRange(-5, 3);
    clipped.addRange(0x10FFF0, INT_MAX);
    clipped.addRange(5, 3);               // empty
    clipped.addRange(0x110000, 0x120000); // wholly beyond Unicode
    clipped.addRange(INT_MIN, -1);
    EXPECT_EQ(rangesOf(clipped), (std::vector<URange>{{0, 3}, {0x10FFF0, 0x10FFFF}}));
    EXPECT_FALSE(clipped.inRange(-1));
    EXPECT_FALSE(clipped.inRange(0x110000));
    EXPECT_FALSE(clipped.isFullRange());
    clipped.addRange(INT_MIN, INT_MAX);
    EXPECT_TRUE(clipped.isFullRange());
}

TEST(UnicodeRange, EmptyFullCopyAndCompare) {
    ZtUnicodeRange set;
    EXPECT_TRUE(set.isEmpty());
    EXPECT_FALSE(set.isFullRange());
    EXPECT_FALSE(set.inRange(0));
    EXPECT_EQ(set.toString(), UnicodeString());
    EXPECT_EQ(set.begin(), set.end());
    set.fullRange();
    EXPECT_TRUE(set.isFullRange());
    EXPECT_TRUE(set.inRange(0));
    EXPECT_TRUE(set.inRange(0x10FFFF));

    ZtUnicodeRange copy = set;
    copy.clearRange();
    EXPECT_TRUE(copy.isEmpty());
    EXPECT_TRUE(set.isFullRange()); // the copy had its own ranges
    EXPECT_EQ(copy, ZtUnicodeRange());
    EXPECT_NE(copy, set);
    copy = set;
    EXPECT_EQ(copy, set);
    ZtUnicodeRange moved = std::move(copy);
    EXPECT_TRUE(moved.isFullRange());
    ZtUnicodeRange small;
    small.addRange(0x41, 0x41);
    moved = small;
    EXPECT_EQ(rangesOf(moved), (std::vector<URange>{{0x41, 0x41}}));
    moved = ZtUnicodeRange();
    EXPECT_TRUE(moved.isEmpty());
    small.addRange(small); // the union with itself changes nothing
    EXPECT_EQ(rangesOf(small), (std::vector<URange>{{0x41, 0x41}}));
}

TEST(UnicodeRange, ShortestForms) {
    const struct {
        int32_t first, last;
        const char16_t* text;
    } cases[] = {
        {0x41, 0x41, u"U+0041"},           {0x1F600, 0x1F600, u"U+1F600"},
        {0x0, 0xFFFF, u"U+????"},          {0x10000, 0x1FFFF, u"U+1????"},
        {0x100000, 0x10FFFF, u"U+10????"}, {0x1000, 0x1FFF, u"U+1???"},
        {0x0, 0xFFF, u"U+0???"},           {0x20000, 0x20FFF, u"U+20???"},
        {0x400, 0x4FF, u"U+04??"},         {0x0, 0xFF, u"U+00??"},
        {0x12300, 0x123FF, u"U+123??"},    {0x40, 0x4F, u"U+004?"},
        {0x1F600, 0x1F60F, u"U+1F60?"},    {0x25, 0xFF, u"U+0025-00FF"},
        {0x400, 0x5FF, u"U+0400-05FF"},    {0x0, 0x1FFFF, u"U+0000-1FFFF"},
        {0x0, 0x10FFFF, u"U+0000-10FFFF"}, {0x10000, 0x10FFFF, u"U+10000-10FFFF"},
        {0x1, 0xFFFF, u"U+0001-FFFF"},
    };
    for (const auto& c : cases) {
        ZtUnicodeRange set;
        set.addRange(c.first, c.last);
        EXPECT_EQ(set.toString(), UnicodeString(c.text));
        EXPECT_EQ(parsed(c.text), set) << utf8(c.text);
    }
    ZtUnicodeRange several;
    several.addRange(0x400, 0x4FF);
    several.addRange(0x25, 0xFF);
    several.addRange(0x1F600, 0x1F600);
    EXPECT_EQ(several.toString(), UnicodeString(u"U+0025-00FF,U+04??,U+1F600"));
}

TEST(UnicodeRange, ParsesTheCssSyntaxAndQuotedCharacters) {
    const ZtUnicodeRange css = parsed(u"U+0025-00FF, U+4??");
    EXPECT_EQ(rangesOf(css), (std::vector<URange>{{0x25, 0xFF}, {0x400, 0x4FF}}));
    EXPECT_EQ(css.toString(), UnicodeString(u"U+0025-00FF,U+04??"));

    EXPECT_EQ(rangesOf(parsed(u"U+0041-")), (std::vector<URange>{{0x41, 0x10FFFF}}));
    EXPECT_EQ(rangesOf(parsed(u"U+41-,U+20")),
              (std::vector<URange>{{0x20, 0x20}, {0x41, 0x10FFFF}}));
    EXPECT_EQ(rangesOf(parsed(u"U+??")), (std::vector<URange>{{0, 0xFF}}));
    EXPECT_TRUE(parsed(u"U+??????").isFullRange());
    EXPECT_EQ(rangesOf(parsed(u"U+1?????")), (std::vector<URange>{{0x100000, 0x10FFFF}}));
    EXPECT_EQ(rangesOf(parsed(u"U+0000000041,U+00e9-00EA")),
              (std::vector<URange>{{0x41, 0x41}, {0xE9, 0xEA}}));
    EXPECT_EQ(rangesOf(parsed(u"\t\r\n U+41 \n, U+0041-0041 ")),
              (std::vector<URange>{{0x41, 0x41}}));

    const ZtUnicodeRange ab = parsed(u"'AB'");
    EXPECT_EQ(rangesOf(ab), (std::vector<URange>{{0x41, 0x42}}));
    EXPECT_EQ(ab.toString(), UnicodeString(u"U+0041-0042"));
    EXPECT_EQ(rangesOf(parsed(u"\"A'B\", 'x\"'")),
              (std::vector<URange>{{0x22, 0x22}, {0x27, 0x27}, {0x41, 0x42}, {0x78, 0x78}}));
    EXPECT_TRUE(parsed(u"''").isEmpty());
    // A surrogate pair is one code point; a lone surrogate stands for itself.
    EXPECT_EQ(rangesOf(parsed(u"'\U0001F600'")), (std::vector<URange>{{0x1F600, 0x1F600}}));
    const char16_t lone[] = {u'\'', 0xDC00, u'a', u'\'', 0};
    EXPECT_EQ(rangesOf(parsed(lone)), (std::vector<URange>{{0x61, 0x61}, {0xDC00, 0xDC00}}));
}

TEST(UnicodeRange, ParsingStopsAtTheOffendingCharacter) {
    const struct {
        const char16_t* text;
        bool ok;
        int32_t stop;
    } cases[] = {
        {u"", true, 0},
        {u"   ", true, 3},
        {u"U+41,", true, 5}, // a trailing comma
        {u"U+41 , ", true, 7},
        {u"U+", true, 2},      // the item fails at the very end
        {u"'AB", true, 3},     // an unclosed quote, at the end too
        {u"u+0041", false, 0}, // lower-case u
        {u"U0041", false, 1},  // no plus
        {u"U+G", false, 2},    // no digit
        {u"U+-41", false, 2},
        {u"U+0042-0041", false, 7}, // the end below the start
        {u"U+110000", false, 2},    // beyond Unicode
        {u"U+0041-110000", false, 7},
        {u"U+11????", false, 7}, // the fourth "?" would start past U+10FFFF
        {u"U+4?\?-4FF", false, 5},
        {u"U+41 U+42", false, 5}, // no comma
        {u"U+41,,U+42", false, 5},
        {u"U+41;U+42", false, 4},
        {u"U+41,x", false, 5},
        {u"'A',U+41-0040", false, 9},
    };
    for (const auto& c : cases) {
        ZtUnicodeRange set;
        int32_t stop = -1;
        EXPECT_EQ(set.parseUnicodeRange(UnicodeString(c.text), &stop), c.ok) << utf8(c.text);
        EXPECT_EQ(stop, c.stop) << utf8(c.text);
    }
    // Items before the error stay in the set.
    ZtUnicodeRange set;
    EXPECT_FALSE(set.parseUnicodeRange(u"U+41, 'B', U+43-42"));
    EXPECT_EQ(rangesOf(set), (std::vector<URange>{{0x41, 0x42}}));
    EXPECT_TRUE(parsed(u"'AB").isEmpty());
}

TEST(UnicodeRange, WideTexts) {
    const struct {
        const wchar_t* text;
        bool ok;
        long stop;
    } cases[] = {
        {L"U+0025-00FF, U+4??", true, 18},
        {L"U+0042-0041", false, 7},
        {L"u+41", false, 0},
        {L"U+41,", true, 5},
        {L"'\U0001F600'", true, 3},
    };
    for (const auto& c : cases) {
        ZtUnicodeRange set;
        const wchar_t* end = nullptr;
        EXPECT_EQ(set.parseUnicodeRange(c.text, &end), c.ok);
        EXPECT_EQ(end - c.text, c.stop);
    }
    ZtUnicodeRange emoji;
    EXPECT_TRUE(emoji.parseUnicodeRange(L"'\U0001F600'"));
    EXPECT_EQ(rangesOf(emoji), (std::vector<URange>{{0x1F600, 0x1F600}}));
    // A wide character that is no code point stops the item.
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
            int32_t last = first;
            switch (shape(rng)) {
            case 0: // a wildcard block of 1 to 4 digits
            {
                const int bits = 4 * (1 + round % 4);
                first &= ~((1 << bits) - 1);
                last = first | ((1 << bits) - 1);
                break;
            }
            case 1:
                last = std::min(first + int32_t(rng() % 5000), 0x10FFFF);
                break;
            case 2:
                break; // one code point
            default:
                first &= 0xFFF;
                last = std::min(first + int32_t(rng() % 40), 0x10FFFF);
                break;
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
    const char16_t text[] = u"1F600x";
    const char16_t* pos = text;
    int32_t value = -1;
    EXPECT_TRUE(ZtUtil::parseHexNum(pos, text + 6, value));
    EXPECT_EQ(value, 0x1F600);
    EXPECT_EQ(pos, text + 5);

    const char16_t limited[] = u"1234";
    pos = limited;
    EXPECT_TRUE(ZtUtil::parseHexNum(pos, limited + 2, value));
    EXPECT_EQ(value, 0x12);
    EXPECT_EQ(pos, limited + 2);
    EXPECT_FALSE(ZtUtil::parseHexNum(pos, limited + 2, value)); // nothing left before the limit

    // Failures change neither the position nor the value.
    for (const char16_t* bad : {u"", u"g1", u"110000", u"FFFFFFFFF", u"-1", u" 1"}) {
        pos = bad;
        value = 7;
        EXPECT_FALSE(ZtUtil::parseHexNum(pos, bad + std::char_traits<char16_t>::length(bad), value))
            << utf8(bad);
        EXPECT_EQ(pos, bad);
        EXPECT_EQ(value, 7);
    }
    const char16_t* largest = u"00000000010ffff";
    pos = largest;
    EXPECT_TRUE(ZtUtil::parseHexNum(pos, largest + 15, value));
    EXPECT_EQ(value, 0x10FFFF);

    const wchar_t* wide = L"aBc,";
    EXPECT_TRUE(ZtUtil::parseHexNum(wide, value));
    EXPECT_EQ(value, 0xABC);
    EXPECT_EQ(*wide, L',');
    const wchar_t* tooLarge = L"ABCDEF";
    EXPECT_FALSE(ZtUtil::parseHexNum(tooLarge, value));
    const wchar_t* none = nullptr;
    EXPECT_FALSE(ZtUtil::parseHexNum(none, value));

    const UnicodeString s(u"x1F;");
    int32_t index = 1;
    EXPECT_TRUE(ZtUtil::parseHexNum(s, index, value));
    EXPECT_EQ(value, 0x1F);
    EXPECT_EQ(index, 3);
    for (int32_t outside : {-1, 4, 100}) {
        index = outside;
        EXPECT_FALSE(ZtUtil::parseHexNum(s, index, value));
        EXPECT_EQ(index, outside);
    }
}
