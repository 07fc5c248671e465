// The text forms of values and their order.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "ztcommon/value.h"

using namespace ZtCommonNS;

namespace {

std::string utf8(const UnicodeString& text) {
    std::string out;
    return text.toUTF8String(out);
}

std::string plain(const ZtValue& v) {
    return utf8(v.toString());
}
std::string quoted(const ZtValue& v) {
    return utf8(v.toQuotedString());
}
std::string css(const ZtValue& v) {
    return utf8(v.toCssText());
}

class Probe : public ZtRCObject {
    ZT_DECLARE_TYPE(Probe, ZtRCObject, 0x7E570102u)
};

} // namespace

TEST(ValueText, Numbers) {
    EXPECT_EQ(plain(ZtValue(12, ZT_UNIT_PT)), "12pt");
    EXPECT_EQ(plain(ZtValue(50, ZT_UNIT_PERCENT)), "50%");
    EXPECT_EQ(plain(ZtValue(1.5f, ZT_UNIT_EM)), "1.5em");
    EXPECT_EQ(plain(ZtValue(7)), "7");
    EXPECT_EQ(plain(ZtValue(-7)), "-7");
    EXPECT_EQ(plain(ZtValue(0.1f)), "0.1");
    EXPECT_EQ(plain(ZtValue(-0.0f)), "0");
    EXPECT_EQ(plain(ZtValue(1e10f)), "1e+10");
    EXPECT_EQ(plain(ZtValue(16777217.0)), "16777216"); // narrowed to float
    EXPECT_EQ(plain(ZtValue(NAN, ZT_UNIT_PT)), "nan");
    EXPECT_EQ(plain(ZtValue(-INFINITY, ZT_UNIT_PT)), "-inf");
    EXPECT_EQ(plain(ZtValue(ZtLength(1, ZT_UNIT_IN))), "72pt");
    EXPECT_EQ(css(ZtValue(12, ZT_UNIT_PT)), "12pt");
    EXPECT_EQ(quoted(ZtValue(3, ZT_UNIT_VW)), "3vw");
    EXPECT_EQ(plain(ZtValue(3, static_cast<ZtUnitType>(16))), "3"); // no keyword for this code
}

TEST(ValueText, EveryUnitKeyword) {
    const struct {
        ZtUnitType unit;
        const char* keyword;
    } keywords[] = {
        {ZT_UNIT_NUMBER, ""}, {ZT_UNIT_PERCENT, "%"},   {ZT_UNIT_EM, "em"},
        {ZT_UNIT_EX, "ex"},   {ZT_UNIT_PX, "px"},       {ZT_UNIT_CM, "cm"},
        {ZT_UNIT_MM, "mm"},   {ZT_UNIT_IN, "in"},       {ZT_UNIT_PT, "pt"},
        {ZT_UNIT_PC, "pc"},   {ZT_UNIT_JPT, "jpt"},     {ZT_UNIT_Q, "q"},
        {ZT_UNIT_DEG, "deg"}, {ZT_UNIT_RAD, "rad"},     {ZT_UNIT_GRAD, "grad"},
        {ZT_UNIT_DD, "dd"},   {ZT_UNIT_CC, "cc"},       {ZT_UNIT_TWIP, "twip"},
        {ZT_UNIT_REM, "rem"}, {ZT_UNIT_CH, "ch"},       {ZT_UNIT_VW, "vw"},
        {ZT_UNIT_VH, "vh"},   {ZT_UNIT_VMIN, "vmin"},   {ZT_UNIT_VMAX, "vmax"},
        {ZT_UNIT_LH, "lh"},   {ZT_UNIT_RLH, "rlh"},     {ZT_UNIT_PVW, "pvw"},
        {ZT_UNIT_PVH, "pvh"}, {ZT_UNIT_PVMIN, "pvmin"}, {ZT_UNIT_PVMAX, "pvmax"},
        {ZT_UNIT_VI, "vi"},   {ZT_UNIT_VB, "vb"},       {ZT_UNIT_IC, "ic"},
        {ZT_UNIT_CAP, "cap"}, {ZT_UNIT_EMU, "emu"},     {ZT_UNIT_PC2, "pc"},
    };
    for (const auto& k : keywords) {
        EXPECT_EQ(plain(ZtValue(3, k.unit)), std::string("3") + k.keyword) << int(k.unit);
        EXPECT_EQ(plain(ZtValue(2.25f, k.unit)), std::string("2.25") + k.keyword) << int(k.unit);
    }
}

TEST(ValueText, CharactersAndColours) {
    EXPECT_EQ(plain(ZtValue(0x41, ZT_UNIT_CHARACTER)), "A");
    EXPECT_EQ(plain(ZtValue(0x1F600, ZT_UNIT_CHARACTER)), "\U0001F600");
    EXPECT_EQ(plain(ZtValue(-1, ZT_UNIT_CHARACTER)), "\uFFFD");
    EXPECT_EQ(css(ZtValue(0x2D, ZT_UNIT_CHARACTER)), "\"-\"");
    EXPECT_EQ(css(ZtValue(0x22, ZT_UNIT_CHARACTER)), "\"\\\"\"");
    EXPECT_EQ(plain(ZtValue(0xFF8000, ZT_UNIT_COLOR)), "#FF8000");
    EXPECT_EQ(plain(ZtValue(0x0000FF, ZT_UNIT_COLOR)), "#0000FF");
    EXPECT_EQ(css(ZtValue(static_cast<int>(0x80FF8000u), ZT_UNIT_COLOR)), "#80FF8000");
}

TEST(ValueText, NamesAndStrings) {
    EXPECT_EQ(plain(ZtValue(NM_auto)), "auto");
    EXPECT_EQ(css(ZtValue(NM_xml_COLON_lang)), "xml:lang");
    EXPECT_EQ(quoted(ZtValue(NM_auto)), "auto");
    EXPECT_EQ(plain(ZtValue()), "");
    EXPECT_EQ(css(ZtValue()), "");

    ZtValue text(u"say \"hi\"\\", ZT_UNIT_LITERAL);
    EXPECT_EQ(plain(text), "say \"hi\"\\");
    EXPECT_EQ(quoted(text), "\"say \\\"hi\\\"\\\\\"");
    EXPECT_EQ(css(text), "\"say \\\"hi\\\"\\\\\"");
    EXPECT_EQ(css(ZtValue(u"a\nb\tc\u007f")), "\"a\\a b\\9 c\\7f \"");
    EXPECT_EQ(css(ZtValue(u"caf\u00e9")), "\"caf\u00e9\"");
    EXPECT_EQ(quoted(ZtValue(u"")), "\"\"");

    ZtValue uri(u"img/a b.png", ZT_UNIT_URI);
    EXPECT_EQ(plain(uri), "img/a b.png");
    EXPECT_EQ(quoted(uri), "\"img/a b.png\"");
    EXPECT_EQ(css(uri), "url(\"img/a b.png\")");
    EXPECT_EQ(utf8(static_cast<UnicodeString>(ZtValue(5, ZT_UNIT_MM))), "5mm");
}

TEST(ValueText, Containers) {
    ZtPtr<ZtValueArray> inner(new ZtValueArray{ZtValue(1), ZtValue(2)});
    ZtPtr<ZtValueArray> outer(new ZtValueArray{ZtValue(12, ZT_UNIT_PT), ZtValue(NM_auto),
                                               ZtValue(u"x y"), ZtValue(inner.get())});
    ZtValue list(outer.get());
    EXPECT_EQ(plain(list), "12pt auto x y (1 2)");
    EXPECT_EQ(quoted(list), "12pt auto \"x y\" (1 2)");
    EXPECT_EQ(css(ZtValue(new ZtValueArray{ZtValue(u"a.png", ZT_UNIT_URI), ZtValue(NM_no_repeat)})),
              "url(\"a.png\") no-repeat");
    EXPECT_EQ(plain(ZtValue(new ZtValueArray)), "");

    ZtPtr<ZtNamedValueMap> map(new ZtNamedValueMap);
    map->setValue(NM_font_size, ZtValue(12, ZT_UNIT_PT));      // 668
    map->setValue(NM_color, ZtValue(u"red", ZT_UNIT_LITERAL)); // 435
    EXPECT_EQ(plain(ZtValue(map.get())), "{color: red; font-size: 12pt}");
    EXPECT_EQ(quoted(ZtValue(map.get())), "{color: \"red\"; font-size: 12pt}");

    ZtPtr<Probe> probe(new Probe);
    EXPECT_EQ(plain(ZtValue(probe.get())), "Probe");
}

TEST(ValueText, SelfContainingArrayTerminates) {
    ZtPtr<ZtValueArray> array(new ZtValueArray{ZtValue(1)});
    array->append(ZtValue(array.get()));
    std::string text = plain(ZtValue(array.get()));
    EXPECT_EQ(text.substr(0, 6), "1 (1 (");
    EXPECT_NE(text.find("..."), std::string::npos);
    EXPECT_EQ(ZtValue(array.get()), ZtValue(array.get()));
    array->clear(); // break the cycle so that the array can go
}

TEST(ValueOrder, AcrossTypes) {
    ZtPtr<Probe> probe(new Probe);
    ZtPtr<ZtValueArray> array(new ZtValueArray);
    ZtPtr<ZtNamedValueMap> map(new ZtNamedValueMap);
    const std::vector<ZtValue> ascending = {
        ZtValue(),
        ZtValue(-5, ZT_UNIT_NUMBER),
        ZtValue(2.5f, ZT_UNIT_NUMBER),
        ZtValue(NAN, ZT_UNIT_NUMBER),
        ZtValue(-100, ZT_UNIT_PERCENT), // unit 2 after unit 1
        ZtValue(1, ZT_UNIT_PT),
        ZtValue(NM_ANSI_UNDERSCORE_X3_DOT_4),
        ZtValue(NM_yemsa),
        ZtValue(u"b"),
        ZtValue(u"a", ZT_UNIT_LITERAL), // unit 21 after unit 0
        ZtValue(u"b", ZT_UNIT_LITERAL),
        ZtValue(probe.get()),
        ZtValue(array.get()),
        ZtValue(map.get()),
    };
    for (size_t i = 0; i < ascending.size(); ++i)
        for (size_t j = 0; j < ascending.size(); ++j) {
            EXPECT_EQ(ascending[i] < ascending[j], i < j) << i << " " << j;
            EXPECT_EQ(ascending[i] <= ascending[j], i <= j) << i << " " << j;
            EXPECT_EQ(ascending[i] == ascending[j], i == j) << i << " " << j;
        }
}

TEST(ValueOrder, NumbersAndTies) {
    EXPECT_EQ(ZtValue(5, ZT_UNIT_PT), ZtValue(5.0f, ZT_UNIT_PT));
    EXPECT_LT(ZtValue(5, ZT_UNIT_PT), ZtValue(5.5f, ZT_UNIT_PT));
    EXPECT_NE(ZtValue(12, ZT_UNIT_PT), ZtValue(1, ZT_UNIT_PC)); // units are not converted
    EXPECT_EQ(ZtValue(NAN), ZtValue(NAN));
    EXPECT_LT(ZtValue(1e30f), ZtValue(NAN));
    EXPECT_EQ(ZtValue(0.0f), ZtValue(-0.0f));
    EXPECT_LT(ZtValue(INT_MAX - 1), ZtValue(INT_MAX)); // compared exactly, not as floats
    EXPECT_EQ(ZtValue(true), ZtValue(NM_true));
    EXPECT_EQ(ZtValue(u"same"), ZtValue(UnicodeString(u"same")));
    EXPECT_LT(ZtValue(u"Z"), ZtValue(u"a")); // code-unit order
    ZtValue qualified(5);
    qualified.setQualifier(NM_font_size);
    EXPECT_NE(qualified, ZtValue(5));
    EXPECT_LT(ZtValue(5), qualified);
    EXPECT_LT(qualified, ZtValue(6));
}

TEST(ValueOrder, ContainersItemByItem) {
    auto arrayOf = [](std::initializer_list<ZtValue> values) {
        return ZtValue(new ZtValueArray(values));
    };
    EXPECT_EQ(arrayOf({ZtValue(1), ZtValue(u"x")}), arrayOf({ZtValue(1.0f), ZtValue(u"x")}));
    EXPECT_LT(arrayOf({ZtValue(1)}), arrayOf({ZtValue(1), ZtValue(0)}));
    EXPECT_LT(arrayOf({ZtValue(1), ZtValue(9)}), arrayOf({ZtValue(2)}));
    EXPECT_LT(arrayOf({}), arrayOf({ZtValue()}));

    ZtPtr<ZtNamedValueMap> a(new ZtNamedValueMap);
    ZtPtr<ZtNamedValueMap> b(new ZtNamedValueMap);
    a->setValue(NM_width, ZtValue(1));
    b->setValue(NM_width, ZtValue(1));
    EXPECT_EQ(ZtValue(a.get()), ZtValue(b.get()));
    b->setValue(NM_height, ZtValue(1)); // 740 before width (1568)
    EXPECT_LT(ZtValue(b.get()), ZtValue(a.get()));

    std::vector<ZtValue> values = {ZtValue(3),       ZtValue(u"s"), ZtValue(),
                                   ZtValue(NM_auto), ZtValue(1.5f), ZtValue(2, ZT_UNIT_PT)};
    std::sort(values.begin(), values.end());
    EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
    EXPECT_TRUE(values.front().isNull());
    EXPECT_TRUE(values.back().isString());
}
