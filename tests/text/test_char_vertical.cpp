// Vertical orientation (UAX #50 and the defaults for single and multiple characters) and the
// JIS symbol rows, checked against ICU's converters.
#include <map>
#include <set>

#include <gtest/gtest.h>

#include <unicode/ucnv.h>

#include "text_test_util.h"
#include "ztcommon/text.h"

using namespace ZtCommonNS;

TEST(CharVertical, UnicodePropertyFromUax50) {
    const std::map<std::string, TR50Property> values = {
        {"R", TR50_R}, {"U", TR50_U}, {"TR", TR50_TR}, {"TU", TR50_TU}};
    for (const Row& row : dataRows("vertical_orientation.tsv")) {
        for (UChar32 c : hexList(row.at(1)))
            EXPECT_EQ(ZtChar::getTR50Property(c), values.at(row[0])) << std::hex << c;
    }
}

TEST(CharVertical, DefaultsForSingleAndMultipleCharacterContexts) {
    const TR50VOMap none;
    for (UChar32 c = 0; c <= 0x10FFFF; ++c) {
        TR50Property single = TR50_U, multiple = TR50_U;
        switch (u_getIntPropertyValue(c, UCHAR_VERTICAL_ORIENTATION)) {
        case U_VO_ROTATED:
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
// The symbol rows 1, 2 and 8 as ICU's Japanese converters decode them, cell by cell, in the
// EUC form (the JIS bytes with the high bit set), the ISO-2022-JP form and Shift_JIS.
std::set<UChar32> jisSymbolRowsFromIcu() {
    std::set<UChar32> result;
    for (const std::string name :
         {"EUC-JP", "ibm-33722", "ISO-2022-JP", "Shift_JIS", "ibm-943_P130-1999"}) {
        UErrorCode status = U_ZERO_ERROR;
        UConverter* cnv = ucnv_open(name.c_str(), &status);
        EXPECT_TRUE(U_SUCCESS(status)) << name;
        if (U_FAILURE(status))
            continue;
        ucnv_setToUCallBack(cnv, UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
        for (int row : {1, 2, 8}) {
            for (int cell = 1; cell <= 94; ++cell) {
                std::string bytes = {static_cast<char>(0xA0 + row), static_cast<char>(0xA0 + cell)};
                if (name == "ISO-2022-JP") {
                    bytes = "\x1b$B" + std::string{char(0x20 + row), char(0x20 + cell)} + "\x1b(B";
                } else if (name == "Shift_JIS" || name.starts_with("ibm-943")) {
                    // Rows pair up under one lead byte; odd rows take the low trail bytes
                    // (skipping 0x7F), even rows the high ones.
                    int trail = row % 2 == 1 ? 0x3F + cell : 0x9E + cell;
                    trail += row % 2 == 1 && trail >= 0x7F ? 1 : 0;
                    bytes = {static_cast<char>(0x81 + (row - 1) / 2), static_cast<char>(trail)};
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
