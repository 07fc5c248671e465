// The text forms of values and their order.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

#include "value_test_util.h"

using namespace ZtCommonNS;
using namespace ZtCommonNS::test;

namespace {
class Probe : public ZtRCObject {
    ZT_DECLARE_TYPE(Probe, ZtRCObject, 0x7E570102u)
};
} // namespace

TEST(ValueText, PlainQuotedAndCssForms) {
    ZtPtr<ZtValueArray> inner(new ZtValueArray{ZtValue(1), ZtValue(2)});
    ZtPtr<ZtNamedValueMap> map(new ZtNamedValueMap);
    map->setValue(NM_font_size, ZtValue(12, ZT_UNIT_PT));      // 668
    map->setValue(NM_color, ZtValue(u"red", ZT_UNIT_LITERAL)); // 435
    const struct {
        ZtValue value;
        const char* plain;
        const char* quoted;
        const char* css;
    } forms[] = {
        {ZtValue(-7), "-7", "-7", "-7"},
        {ZtValue(0.1f), "0.1", "0.1", "0.1"},
        {ZtValue(-0.0f), "0", "0", "0"},
        {ZtValue(1e10f), "1e+10", "1e+10", "1e+10"},
        {ZtValue(16777217.0), "16777216", "16777216", "16777216"}, // narrowed to float
        {ZtValue(NAN, ZT_UNIT_PT), "nan", "nan", "nan"},
        {ZtValue(-INFINITY, ZT_UNIT_PT), "-inf", "-inf", "-inf"},
        {ZtValue(ZtLength(1, ZT_UNIT_IN)), "72pt", "72pt", "72pt"},
        {ZtValue(0x41, ZT_UNIT_CHARACTER), "A", "A", "\"A\""},
        {ZtValue(0x1F600, ZT_UNIT_CHARACTER), "\U0001F600", "\U0001F600", "\"\U0001F600\""},
        {ZtValue(-1, ZT_UNIT_CHARACTER), "\uFFFD", "\uFFFD", "\"\uFFFD\""},
        {ZtValue(0x22, ZT_UNIT_CHARACTER), "\"", "\"", "\"\\\"\""},
        {ZtValue(0x0000FF, ZT_UNIT_COLOR), "#0000FF", "#0000FF", "#0000FF"},
        {ZtValue(int(0x80FF8000u), ZT_UNIT_COLOR), "#80FF8000", "#80FF8000", "#80FF8000"},
        {ZtValue(), "", "", ""},
        {ZtValue(NM_xml_COLON_lang), "xml:lang", "xml:lang", "xml:lang"},
        {ZtValue(u""), "", "\"\"", "\"\""},
        {ZtValue(u"say \"hi\"\\", ZT_UNIT_LITERAL), "say \"hi\"\\", "\"say \\\"hi\\\"\\\\\"",
         "\"say \\\"hi\\\"\\\\\""},
        {ZtValue(u"a\nb\tc\u007f\u00e9"), "a\nb\tc\u007f\u00e9", "\"a\\a b\\9 c\\7f \u00e9\"",
         "\"a\\a b\\9 c\\7f \u00e9\""},
        {ZtValue(u"img/a b.png", ZT_UNIT_URI), "img/a b.png", "\"img/a b.png\"",
         "url(\"img/a b.png\")"},
        {ZtValue(new ZtValueArray{ZtValue(12, ZT_UNIT_PT), ZtValue(NM_auto), ZtValue(u"x y"),
                                  ZtValue(inner.get())}),
         "12pt auto x y (1 2)", "12pt auto \"x y\" (1 2)", "12pt auto \"x y\" (1 2)"},
        {ZtValue(new ZtValueArray{ZtValue(u"a.png", ZT_UNIT_URI), ZtValue(NM_no_repeat)}),
         "a.png no-repeat", "\"a.png\" no-repeat", "url(\"a.png\") no-repeat"},
        {ZtValue(new ZtValueArray), "", "", ""},
        {ZtValue(map.get()), "{color: red; font-size: 12pt}", "{color: \"red\"; font-size: 12pt}",
         "{color: \"red\"; font-size: 12pt}"},
        {ZtValue(new Probe), "Probe", "Probe", "Probe"}};
    for (const auto& form : forms) {
        EXPECT_EQ(utf8(form.value.toString()), form.plain);
        EXPECT_EQ(utf8(form.value.toQuotedString()), form.quoted) << form.plain;
        EXPECT_EQ(utf8(form.value.toCssText()), form.css) << form.plain;
    }
    EXPECT_EQ(utf8(static_cast<UnicodeString>(ZtValue(5, ZT_UNIT_MM))), "5mm");
}

TEST(ValueText, EveryUnitKeyword) {
    // Codes not listed are written as bare numbers.
    const std::map<int, std::string> keywords = {
        {2, "%"},    {3, "em"},    {4, "ex"},   {5, "px"},     {6, "cm"},     {7, "mm"},
        {8, "in"},   {9, "pt"},    {10, "pc"},  {11, "jpt"},   {12, "q"},     {13, "deg"},
        {14, "rad"}, {15, "grad"}, {26, "dd"},  {27, "cc"},    {29, "twip"},  {32, "rem"},
        {33, "ch"},  {34, "vw"},   {35, "vh"},  {36, "vmin"},  {37, "vmax"},  {38, "lh"},
        {39, "rlh"}, {40, "pvw"},  {41, "pvh"}, {42, "pvmin"}, {43, "pvmax"}, {44, "vi"},
        {45, "vb"},  {46, "ic"},   {47, "cap"}, {50, "emu"},   {51, "pc"}};
    for (int code = 0; code < 64; ++code) {
        const auto unit = static_cast<ZtUnitType>(code);
        const auto found = keywords.find(code);
        const std::string keyword = found == keywords.end() ? "" : found->second;
        EXPECT_EQ(utf8(ZtValue(2.25f, unit).toString()), "2.25" + keyword) << code;
        if (code != ZT_UNIT_CHARACTER && code != ZT_UNIT_COLOR) {
            EXPECT_EQ(utf8(ZtValue(3, unit).toString()), "3" + keyword) << code;
        }
    }
}

TEST(ValueText, SelfContainingArrayTerminates) {
    ZtPtr<ZtValueArray> array(new ZtValueArray{ZtValue(1)});
    array->append(ZtValue(array.get()));
    std::string text = utf8(ZtValue(array.get()).toString());
    EXPECT_EQ(text.substr(0, 6), "1 (1 (");
    EXPECT_NE(text.find("..."), std::string::npos);
    EXPECT_EQ(ZtValue(array.get()), ZtValue(array.get()));
    array->clear(); // break the cycle so that the array can go
}

TEST(ValueOrder, AcrossTypesAndWithinThem) {
    ZtPtr<Probe> probe(new Probe);
    ZtPtr<ZtNamedValueMap> map(new ZtNamedValueMap);
    ZtValue qualified(5);
    qualified.setQualifier(NM_font_size);
    const auto arrayOf = [](std::initializer_list<ZtValue> values) {
        return ZtValue(new ZtValueArray(values));
    };
    const std::vector<ZtValue> ascending = {
        ZtValue(),
        ZtValue(-5),
        ZtValue(2.5f),
        ZtValue(5),
        qualified, // the qualifier breaks the tie, before the next number
        ZtValue(INT_MAX - 1),
        ZtValue(INT_MAX), // compared exactly, not as floats
        ZtValue(NAN),
        ZtValue(-100, ZT_UNIT_PERCENT), // unit 2 after unit 1
        ZtValue(1, ZT_UNIT_PT),
        ZtValue(NM_ANSI_UNDERSCORE_X3_DOT_4),
        ZtValue(NM_yemsa),
        ZtValue(u"Z"),
        ZtValue(u"a"),                  // code-unit order
        ZtValue(u"a", ZT_UNIT_LITERAL), // unit 21 after unit 0
        ZtValue(u"b", ZT_UNIT_LITERAL),
        ZtValue(probe.get()),
        arrayOf({}),
        arrayOf({ZtValue()}),
        arrayOf({ZtValue(1)}),
        arrayOf({ZtValue(1), ZtValue(9)}),
        arrayOf({ZtValue(2)}),
        ZtValue(map.get())};
    for (size_t i = 0; i < ascending.size(); ++i)
        for (size_t j = 0; j < ascending.size(); ++j) {
            EXPECT_EQ(ascending[i] < ascending[j], i < j) << i << " " << j;
            EXPECT_EQ(ascending[i] == ascending[j], i == j) << i << " " << j;
        }

    // Equivalent across representations; units are not converted.
    EXPECT_EQ(ZtValue(5, ZT_UNIT_PT), ZtValue(5.0f, ZT_UNIT_PT));
    EXPECT_NE(ZtValue(12, ZT_UNIT_PT), ZtValue(1, ZT_UNIT_PC));
    EXPECT_EQ(ZtValue(NAN), ZtValue(NAN));
    EXPECT_EQ(ZtValue(0.0f), ZtValue(-0.0f));
    EXPECT_EQ(ZtValue(true), ZtValue(NM_true));
    EXPECT_EQ(arrayOf({ZtValue(1), ZtValue(u"x")}), arrayOf({ZtValue(1.0f), ZtValue(u"x")}));
    // Maps entry by entry, names by number: height (740) comes before width (1568).
    ZtPtr<ZtNamedValueMap> a(new ZtNamedValueMap);
    ZtPtr<ZtNamedValueMap> b(new ZtNamedValueMap);
    a->setValue(NM_width, ZtValue(1));
    b->setValue(NM_width, ZtValue(1));
    EXPECT_EQ(ZtValue(a.get()), ZtValue(b.get()));
    b->setValue(NM_height, ZtValue(1));
    EXPECT_LT(ZtValue(b.get()), ZtValue(a.get()));
}
