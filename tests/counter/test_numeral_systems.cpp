// The digit algorithms of the counting systems, against ICU's rule-based number formats,
// the worked examples of the CSS text and hand-computed values.
#include <cstdint>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "counter/numeral_systems.h"
#include "icu_oracle.h"

using namespace ZtCommonNS::counter_detail;
using icu::UnicodeString;

namespace {

// Characters for the indices of the Chinese and Japanese routines, typed from the CSS
// tables: digits 0-9 and the markers of ten, hundred and thousand.
const char16_t* const kSimpInformal = u"零一二三四五六七八九十百千";
const char16_t* const kTradFormal = u"零壹貳參肆伍陸柒捌玖拾佰仟";
// Japanese: digits, 十 百 千, then the group markers 万 億 兆 京.
const char16_t* const kJapanese = u"〇一二三四五六七八九十百千万億兆京";

UnicodeString chinese(uint64_t v, bool informal, const char16_t* table) {
    uint32_t indices[kMaxChineseIndices];
    UnicodeString out;
    for (int i = 0, n = chineseIndices(v, informal, indices); i < n; ++i)
        out.append(table[indices[i]]);
    return out;
}

// The readable form maps index 13 + g - 1 to the group marker g; the grouping form 10 + g - 1.
UnicodeString kansuji(uint64_t v, KansujiForm form) {
    uint32_t indices[kMaxKansujiIndices];
    int count = kansujiIndices(v, form, indices);
    UnicodeString out;
    for (int i = 0; i < count; ++i) {
        uint32_t index = indices[i];
        if (form == KansujiForm::Grouping && index >= 10)
            index += 3;
        out.append(kJapanese[index]);
    }
    return out;
}

UnicodeString ethiopic(uint64_t v) {
    char16_t numerals[kMaxEthiopicNumerals];
    int count = ethiopicNumerals(v, numerals);
    return UnicodeString(numerals, count);
}

// ICU's rule sets for Japanese and Ethiopic numerals give plain digits from 10^18 on.
constexpr uint64_t kIcuRuleLimit = 1000000000000000000ULL;

std::vector<uint64_t> sampleValues(uint64_t limit) {
    std::mt19937_64 random(20240601);
    std::vector<uint64_t> values;
    for (int digits = 5; digits <= 19; ++digits) {
        uint64_t low = 1;
        for (int i = 1; i < digits; ++i)
            low *= 10;
        for (int i = 0; i < 200; ++i) {
            uint64_t v = low + random() % (low * 9);
            if (v < limit)
                values.push_back(v);
        }
        for (uint64_t v : {low, low + 1}) {
            if (v < limit)
                values.push_back(v);
        }
    }
    return values;
}

} // namespace

TEST(NumeralSystems, PositionalDigitsMatchPrintf) {
    uint32_t digits[kMaxPositionalDigits];
    for (uint64_t v : {0ULL, 1ULL, 9ULL, 10ULL, 255ULL, 256ULL, 1234567890123ULL,
                       9223372036854775808ULL, 18446744073709551615ULL}) {
        char expected[32];
        std::snprintf(expected, sizeof expected, "%llx", static_cast<unsigned long long>(v));
        int n = positionalDigits(v, 16, digits);
        std::string got;
        for (int i = 0; i < n; ++i)
            got.push_back("0123456789abcdef"[digits[i]]);
        EXPECT_EQ(got, expected);
        n = positionalDigits(v, 10, digits);
        got.clear();
        for (int i = 0; i < n; ++i)
            got.push_back(static_cast<char>('0' + digits[i]));
        EXPECT_EQ(got, std::to_string(v));
    }
    // 2^64 - 1 in base 2 is the longest case: 64 ones.
    EXPECT_EQ(positionalDigits(UINT64_MAX, 2, digits), 64);
}

TEST(NumeralSystems, BijectiveDigitsAreTheSpreadsheetColumnNames) {
    auto letters = [](uint64_t v) {
        uint32_t digits[kMaxPositionalDigits];
        int n = bijectiveDigits(v, 26, digits);
        std::string out;
        for (int i = 0; i < n; ++i)
            out.push_back(static_cast<char>('a' + digits[i]));
        return out;
    };
    const std::pair<uint64_t, const char*> columns[] = {
        {1, "a"}, {26, "z"}, {27, "aa"}, {52, "az"}, {702, "zz"}, {703, "aaa"}, {18278, "zzz"}};
    for (auto [value, text] : columns)
        EXPECT_EQ(letters(value), text);
    // Decoding the digits gives the value back, up to the largest magnitude.
    uint32_t digits[kMaxPositionalDigits];
    for (uint64_t v : {uint64_t{1}, uint64_t{2}, uint64_t{3}, uint64_t{1000000007}, UINT64_MAX}) {
        int n = bijectiveDigits(v, 2, digits);
        uint64_t back = 0;
        for (int i = 0; i < n; ++i)
            back = back * 2 + digits[i] + 1;
        EXPECT_EQ(back, v);
    }
}

TEST(NumeralSystems, ChineseBeyondTheCssExamples) {
    // The examples of the CSS text are checked through the predefined styles; here the
    // informal forms keep the 1 before 十 outside 10..19, the formal ones always.
    EXPECT_EQ(chinese(110, true, kSimpInformal), u"一百一十");
    EXPECT_EQ(chinese(1010, true, kSimpInformal), u"一千零一十");
    EXPECT_EQ(chinese(10, false, kTradFormal), u"壹拾");
    // Beyond four digits the position markers simply continue (index 13 for 10^4).
    uint32_t indices[kMaxChineseIndices];
    ASSERT_EQ(chineseIndices(10000, true, indices), 2);
    EXPECT_EQ(indices[0], 1u);
    EXPECT_EQ(indices[1], 13u);
    EXPECT_LE(chineseIndices(UINT64_MAX, false, indices), kMaxChineseIndices);
}

TEST(NumeralSystems, KansujiReadableMatchesIcuJapaneseSpellout) {
    icu_oracle::RuleFormat ja("ja", "%spellout-cardinal");
    ASSERT_TRUE(ja.ok());
    for (uint64_t v = 0; v <= 20000; ++v)
        ASSERT_EQ(kansuji(v, KansujiForm::Readable), ja.format(static_cast<long long>(v))) << v;
    // ICU's Japanese rules stop below 10^18.
    for (uint64_t v : sampleValues(kIcuRuleLimit))
        ASSERT_EQ(kansuji(v, KansujiForm::Readable), ja.format(static_cast<long long>(v))) << v;
    EXPECT_EQ(kansuji(10000000, KansujiForm::Readable), u"千万");
    EXPECT_EQ(kansuji(1000010000, KansujiForm::Readable), u"十億一万");
}

TEST(NumeralSystems, KansujiSimpleAndGrouping) {
    UnicodeString digits = icu_oracle::numberingDigits("hanidec");
    ASSERT_EQ(digits.length(), 10);
    for (uint64_t v : {0ULL, 7ULL, 2024ULL, 1000000ULL, 9223372036854775807ULL})
        EXPECT_EQ(kansuji(v, KansujiForm::Simple),
                  icu_oracle::withDigits(digits, static_cast<long long>(v)));
    // Grouping form, by hand: groups of four digits without leading zeros, zero groups left
    // out, each followed by its marker.
    EXPECT_EQ(kansuji(0, KansujiForm::Grouping), u"〇");
    EXPECT_EQ(kansuji(2024, KansujiForm::Grouping), u"二〇二四");
    EXPECT_EQ(kansuji(12345, KansujiForm::Grouping), u"一万二三四五");
    EXPECT_EQ(kansuji(10005, KansujiForm::Grouping), u"一万五");
    EXPECT_EQ(kansuji(20030000, KansujiForm::Grouping), u"二〇〇三万");
    EXPECT_EQ(kansuji(100000000, KansujiForm::Grouping), u"一億");
    EXPECT_EQ(kansuji(1234567890123ULL, KansujiForm::Grouping), u"一兆二三四五億六七八九万一二三");
    uint32_t indices[kMaxKansujiIndices];
    EXPECT_LE(kansujiIndices(UINT64_MAX, KansujiForm::Readable, indices), kMaxKansujiIndices);
    EXPECT_LE(kansujiIndices(UINT64_MAX, KansujiForm::Grouping, indices), kMaxKansujiIndices);
}

TEST(NumeralSystems, EthiopicFollowsTheCssExamplesAndIcu) {
    EXPECT_EQ(ethiopic(1), u"፩");
    EXPECT_EQ(ethiopic(100), u"፻");
    EXPECT_EQ(ethiopic(78010092), u"፸፰፻፩፼፺፪");
    EXPECT_EQ(ethiopic(780100000092ULL), u"፸፰፻፩፼፼፺፪");
    icu_oracle::RuleFormat ethi("", "%ethiopic");
    ASSERT_TRUE(ethi.ok());
    for (uint64_t v = 1; v <= 100000; ++v)
        ASSERT_EQ(ethiopic(v), ethi.format(static_cast<long long>(v))) << v;
    for (uint64_t v : sampleValues(kIcuRuleLimit))
        ASSERT_EQ(ethiopic(v), ethi.format(static_cast<long long>(v))) << v;
    // Above ICU's limit, by hand: 10^18 is the pairs 1 00 00 ... 00 (index 9, odd).
    EXPECT_EQ(ethiopic(1000000000000000000ULL), u"፻፼፼፼፼");
    char16_t numerals[kMaxEthiopicNumerals];
    EXPECT_LE(ethiopicNumerals(UINT64_MAX, numerals), kMaxEthiopicNumerals);
}
