// Vertical orientation, the JIS symbol rows and the inseparable pairs.
#include <set>

#include <gtest/gtest.h>

#include <unicode/ucnv.h>

#include "text_test_util.h"
#include "ztcommon/text.h"

using namespace ZtCommonNS;

TEST(CharVertical, UnicodePropertyFromUax50) {
    // Values read from the Vertical_Orientation data of UAX #50.
    struct Case {
        UChar32 c;
        TR50Property vo;
    };
    const Case cases[] = {
        {'A', TR50_R},      {0x00A7, TR50_U},   {0x00D7, TR50_U},  {0x2016, TR50_U},
        {0x2329, TR50_TR},  {0x3001, TR50_TU},  {0x3008, TR50_TR}, {0x3042, TR50_U},
        {0x3041, TR50_TU},  {0x30FC, TR50_TR},  {0x337B, TR50_TU}, {0x4E00, TR50_U},
        {0xAC00, TR50_U},   {0xFF01, TR50_TU},  {0xFF08, TR50_TR}, {0xFF0D, TR50_R},
        {0xFF61, TR50_R},   {0x1F200, TR50_TU}, {0x20000, TR50_U}, {0xE0001, TR50_R},
        {0x10FFFD, TR50_U},
    };
    for (const Case& k : cases)
        EXPECT_EQ(ZtChar::getTR50Property(k.c), k.vo) << std::hex << k.c;
}

TEST(CharVertical, DefaultsForSingleAndMultipleCharacterContexts) {
    const TR50VOMap none;
    for (UChar32 c = 0; c <= 0x10FFFF; ++c) {
        const auto vo =
            static_cast<UVerticalOrientation>(u_getIntPropertyValue(c, UCHAR_VERTICAL_ORIENTATION));
        TR50Property single;
        TR50Property multiple;
        switch (vo) {
        case U_VO_ROTATED:
            single = TR50_U;
            multiple = TR50_R;
            break;
        case U_VO_TRANSFORMED_ROTATED:
            single = TR50_TU;
            multiple = TR50_TR;
            break;
        case U_VO_TRANSFORMED_UPRIGHT:
            single = multiple = TR50_TU;
            break;
        default:
            single = multiple = TR50_U;
            break;
        }
        ASSERT_EQ(ZtChar::getTR50MVO(c, none), multiple) << std::hex << c;
        ASSERT_EQ(ZtChar::getTR50SVO(c, none), single) << std::hex << c;
    }
}

TEST(CharVertical, CallerMapOverridesTheDefaults) {
    TR50VOMap map;
    map['A'] = {TR50_R, TR50_U};
    map[0x3001] = {TR50_U, TR50_R};
    EXPECT_EQ(ZtChar::getTR50SVO('A', map), TR50_R);
    EXPECT_EQ(ZtChar::getTR50MVO('A', map), TR50_U);
    EXPECT_EQ(ZtChar::getTR50SVO(0x3001, map), TR50_U);
    EXPECT_EQ(ZtChar::getTR50MVO(0x3001, map), TR50_R);
    EXPECT_EQ(ZtChar::getTR50SVO('B', map), TR50_U); // not in the map
    EXPECT_EQ(ZtChar::getTR50MVO('B', map), TR50_R);
}

namespace {
// The symbol rows as ICU's Japanese converters decode them, cell by cell, using the EUC form
// (the JIS bytes with the high bit set) and the ISO-2022-JP form.
std::set<UChar32> jisSymbolRowsFromIcu() {
    std::set<UChar32> result;
    for (const char* name :
         {"EUC-JP", "ibm-33722", "ISO-2022-JP", "Shift_JIS", "ibm-943_P130-1999"}) {
        UErrorCode status = U_ZERO_ERROR;
        UConverter* cnv = ucnv_open(name, &status);
        EXPECT_TRUE(U_SUCCESS(status)) << name;
        if (U_FAILURE(status))
            continue;
        ucnv_setToUCallBack(cnv, UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
        const bool iso = std::string(name) == "ISO-2022-JP";
        const bool sjis = name[0] == 'S' || std::string(name).starts_with("ibm-943");
        for (int row : {1, 2, 8}) {
            for (int cell = 1; cell <= 94; ++cell) {
                std::string bytes;
                if (iso) {
                    bytes = "\x1b$B";
                    bytes += static_cast<char>(0x20 + row);
                    bytes += static_cast<char>(0x20 + cell);
                    bytes += "\x1b(B";
                } else if (sjis) {
                    // Shift_JIS: rows pair up under one lead byte; odd rows take the low
                    // trail bytes (skipping 0x7F), even rows the high ones.
                    const int lead = 0x81 + (row - 1) / 2;
                    int trail = row % 2 == 1 ? 0x3F + cell : 0x9E + cell;
                    if (row % 2 == 1 && trail >= 0x7F)
                        ++trail;
                    bytes = {static_cast<char>(lead), static_cast<char>(trail)};
                } else {
                    bytes = {static_cast<char>(0xA0 + row), static_cast<char>(0xA0 + cell)};
                }
                UChar out[4];
                status = U_ZERO_ERROR;
                ucnv_reset(cnv);
                const int32_t n = ucnv_toUChars(cnv, out, 4, bytes.data(),
                                                static_cast<int32_t>(bytes.size()), &status);
                if (U_SUCCESS(status) && n == 1 && out[0] != 0xFFFD && out[0] != 0x1A)
                    result.insert(out[0]);
            }
        }
        ucnv_close(cnv);
    }
    return result;
}
} // namespace

TEST(CharVertical, SymbolJisMatchesTheConvertersForEveryCodePoint) {
    const std::set<UChar32> expected = jisSymbolRowsFromIcu();
    ASSERT_GT(expected.size(), 170u);
    for (UChar32 c = 0; c <= 0x10FFFF; ++c)
        ASSERT_EQ(ZtChar::isSymbolJIS(c), expected.count(c) == 1) << std::hex << c;
}

TEST(CharVertical, SymbolJisSample) {
    // Row 1 cell 1 is the ideographic space; both mappings of the wave dash count; section
    // sign, box drawing; kana (rows 4, 5), Greek (row 6), digits (row 3) are no symbols.
    for (UChar32 c : {0x3000, 0x301C, 0xFF5E, 0x00A7, 0x00B4, 0x2500, 0x254B, 0x25EF, 0x2015})
        EXPECT_TRUE(ZtChar::isSymbolJIS(c)) << std::hex << c;
    for (UChar32 c : {0x41, 0x3042, 0x30A2, 0x0391, 0x0410, 0xFF10, 0xFF21, 0x4E00, -1, 0x110000})
        EXPECT_FALSE(ZtChar::isSymbolJIS(c)) << std::hex << c;
}

TEST(CharVertical, InseparableMethods) {
    // Japanese pairs.
    EXPECT_TRUE(ZtChar::isInseparableCharEx(0x2015, 0x2015, INSEPARABLECHAR_JIS));
    EXPECT_TRUE(ZtChar::isInseparableCharEx(0x3033, 0x3035, INSEPARABLECHAR_JIS));
    EXPECT_FALSE(ZtChar::isInseparableCharEx(0x2015, 0x2015, INSEPARABLECHAR_UAX14)); // AL AL
    EXPECT_TRUE(ZtChar::isInseparableCharEx(0x2015, 0x2015, INSEPARABLECHAR_ALL));
    // Line-breaking classes: anything before IN (U+2026), and B2 (U+2014) twice.
    EXPECT_TRUE(ZtChar::isInseparableCharEx('a', 0x2026, INSEPARABLECHAR_UAX14));
    EXPECT_FALSE(ZtChar::isInseparableCharEx('a', 0x2026, INSEPARABLECHAR_JIS));
    EXPECT_TRUE(ZtChar::isInseparableCharEx(0x2014, 0x2014, INSEPARABLECHAR_UAX14));
    EXPECT_FALSE(ZtChar::isInseparableCharEx(0x2014, 'a', INSEPARABLECHAR_UAX14));
    EXPECT_FALSE(ZtChar::isInseparableCharEx(0x2026, 'a', INSEPARABLECHAR_UAX14));
    EXPECT_TRUE(ZtChar::isInseparableCharEx('a', 0x2026, INSEPARABLECHAR_ALL));
    // No method: nothing is inseparable.
    EXPECT_FALSE(ZtChar::isInseparableCharEx(0x2026, 0x2026, INSEPARABLECHAR_NONE));
    EXPECT_FALSE(
        ZtChar::isInseparableCharEx(0x2026, 0x2026, static_cast<INSEPARABLECHAR_METHOD>(99)));
}
