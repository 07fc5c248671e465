// The built-in name table: numbering against the published list, distinctness, exact lookups,
// namespace URIs and the generated enumerators.
#include <gtest/gtest.h>

#include <climits>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "ztcommon/value.h"

using namespace ZtCommonNS;

namespace {

std::string utf8(const UnicodeString& text) {
    std::string out;
    return text.toUTF8String(out);
}

struct Listed {
    int number;
    const char16_t* name;
};

// Read off the published list: the first, middle and last entry of every group of 100, and
// entries whose spelling is easy to get wrong.
const Listed kListed[] = {
    {1, u"ANSI_X3.4"},
    {51, u"FlowReferenceArea"},
    {100, u"Latn"},
    {101, u"Layout_related_Properties"},
    {151, u"TableCellArea"},
    {200, u"adjacent"},
    {201, u"afr"},
    {251, u"auto-even"},
    {300, u"bleed"},
    {301, u"bleed-bottom"},
    {351, u"border-spacing"},
    {400, u"center-left"},
    {401, u"center-right"},
    {451, u"condense"},
    {500, u"darksalmon"},
    {501, u"darkseagreen"},
    {551, u"emboss"},
    {588, u"false"},
    {600, u"field-button-icon"},
    {601, u"field-button-icon-down"},
    {651, u"flow-map-reference"},
    {668, u"font-size"},
    {700, u"from-table-column"},
    {701, u"fuchsia"},
    {751, u"honeydew"},
    {800, u"inactivecaptionText"},
    {801, u"ind"},
    {820, u"inherit"},
    {851, u"italic"},
    {900, u"lawngreen"},
    {901, u"layout-master-set"},
    {951, u"line-continued-mark-font-size"},
    {1000, u"lr-tb"},
    {1001, u"lt"},
    {1051, u"minimum"},
    {1078, u"no"},
    {1100, u"not-first"},
    {1101, u"not-last"},
    {1151, u"overline-score"},
    {1200, u"pdf-settings"},
    {1201, u"peachpuff"},
    {1251, u"ref-index-key"},
    {1300, u"revision-bar-width"},
    {1301, u"rgb"},
    {1351, u"shift-direction"},
    {1400, u"springgreen"},
    {1401, u"sqi"},
    {1451, u"table-row"},
    {1500, u"through-score-position"},
    {1501, u"through-score-style"},
    {1517, u"true"},
    {1551, u"vie"},
    {1594, u"xml:lang"},
    {1600, u"xsl-any"},
    {1601, u"xsl-before-float"},
    {1628, u"yes"},
    {1651, u"ISO-8859-14"},
    {1677, u"-zt-"},
    {1678, u"_zt_"},
    {1681, u"-n"},
    {1693, u"alternate stylesheet"},
    {1700, u"application/xslt+xml"},
    {1701, u"arabic-indic"},
    {1751, u"bottom-left-corner"},
    {1800, u"compact"},
    {1801, u"contain"},
    {1816, u"default"},
    {1851, u"ethiopic-halehame-ti-er"},
    {1900, u"hebrew"},
    {1901, u"hide-unless-room"},
    {1933, u"initial"},
    {1951, u"katakana-iroha"},
    {2000, u"nfkc"},
    {2001, u"nfkd"},
    {2051, u"relative-position-top"},
    {2100, u"table-column-span"},
    {2101, u"table-footer-group"},
    {2113, u"text/css"},
    {2151, u"upper-norwegian"},
    {2198, u"adobe:ns:meta/"},
    {2200, u"all-small-caps"},
    {2201, u"alpha"},
    {2251, u"em-box"},
    {2300, u"historical-forms"},
    {2301, u"historical-ligatures"},
    {2351, u"nlckanji"},
    {2400, u"ruby-base"},
    {2401, u"ruby-base-align"},
    {2451, u"technical"},
    {2500, u"xpacket"},
    {2501, u"xpointer"},
    {2504, u"##RGBA"},
    {2506, u"#HSL"},
    {2551, u"dyu"},
    {2600, u"kik"},
    {2601, u"kin"},
    {2651, u"ori"},
    {2700, u"tel"},
    {2701, u"tem"},
    {2725, u"and korean-hanja-formal"},
    {2726, u"and trad-chinese-formal"},
    {2751, u"greek"},
    {2766, u"korean-hanja-formal"},
    {2800, u"persian-abjad"},
    {2801, u"persian-alphabetic"},
    {2819, u"system"},
    {2822, u"tab-alignment-character"},
    {2842, u"yemsa"},
};

} // namespace

TEST(BuiltinNames, ListedNumbersHaveTheirNames) {
    for (const Listed& entry : kListed) {
        UnicodeString name(entry.name);
        EXPECT_EQ(utf8(ZtNameTable::getBuiltinNameString(static_cast<ZtNameEnum>(entry.number))),
                  utf8(name))
            << "number " << entry.number;
        EXPECT_EQ(ZtNameTable::getBuiltinNameEnum(name), entry.number) << utf8(name);
    }
}

TEST(BuiltinNames, EveryNumberRoundTripsAndIsDistinct) {
    std::set<std::u16string> seen;
    for (int number = 1; number <= 2842; ++number) {
        const UnicodeString& name =
            ZtNameTable::getBuiltinNameString(static_cast<ZtNameEnum>(number));
        ASSERT_FALSE(name.isEmpty()) << number;
        EXPECT_EQ(ZtNameTable::getBuiltinNameEnum(name), number) << utf8(name);
        EXPECT_EQ(ZtNameTable::getSharedNameEnum(name), number) << utf8(name);
        EXPECT_TRUE(ZtName(static_cast<ZtNameEnum>(number)).isBuiltin());
        seen.insert(std::u16string(name.getBuffer(), static_cast<size_t>(name.length())));
    }
    EXPECT_EQ(seen.size(), 2842u);
    EXPECT_EQ(NM_LAST_BUILTIN, 2842);
    EXPECT_EQ(NM_FIRST_RUNTIME, 2843);
}

TEST(BuiltinNames, NumbersOutsideTheTableGiveTheEmptyString) {
    for (int number : {0, -1, -5, 2843, 999999, INT_MIN, INT_MAX}) {
        EXPECT_TRUE(ZtNameTable::getBuiltinNameString(static_cast<ZtNameEnum>(number)).isEmpty())
            << number;
        EXPECT_FALSE(ZtNameTable::getBuiltinNameString(static_cast<ZtNameEnum>(number)).isBogus());
    }
    EXPECT_FALSE(ZtName(static_cast<ZtNameEnum>(-1)).isBuiltin());
    EXPECT_FALSE(ZtName(NM_FIRST_RUNTIME).isBuiltin());
}

// The data file the table is generated from: line k is name number k.
TEST(BuiltinNames, TableMatchesItsDataFile) {
    std::ifstream in(ZT_SOURCE_DIR "/src/value/builtin_names.txt", std::ios::binary);
    ASSERT_TRUE(in) << "data file missing";
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    ASSERT_EQ(lines.size(), 2842u);
    int bracketed = 0;
    for (int number = 1; number <= 2842; ++number) {
        const std::string& line = lines[static_cast<size_t>(number - 1)];
        if (line.front() == '[') {
            ++bracketed; // namespace placeholders, checked by NamespaceUris
            continue;
        }
        EXPECT_EQ(utf8(ZtNameTable::getBuiltinNameString(static_cast<ZtNameEnum>(number))), line)
            << number;
    }
    EXPECT_EQ(bracketed, 20);
}

TEST(BuiltinNames, NamespaceUris) {
    const std::u16string base(ZtExtensionNamespaceBase);
    EXPECT_EQ(base, u"http://www.tessaly.example");
    const struct {
        ZtNameEnum number;
        std::u16string uri;
    } expected[] = {
        {NM_NS_EXT_RX_Layout, base + u"/names/RX/Layout"},
        {NM_NS_EXT_XSL_AreaTree, base + u"/names/XSL/AreaTree"},
        {NM_NS_EXT_XSL_Extensions, base + u"/names/XSL/Extensions"},
        {NM_NS_EXT_XSL_XFO, base + u"/names/XSL/XFO"},
        {NM_NS_MathML, u"http://www.w3.org/1998/Math/MathML"},
        {NM_NS_XSL_FO, u"http://www.w3.org/1999/XSL/Format"},
        {NM_NS_XSLT, u"http://www.w3.org/1999/XSL/Transform"},
        {NM_NS_SVG, u"http://www.w3.org/2000/svg"},
        {NM_NS_XMLNS, u"http://www.w3.org/2000/xmlns/"},
        {NM_NS_XML, u"http://www.w3.org/XML/1998/namespace"},
        {NM_NS_WordprocessingML_2003, u"http://schemas.microsoft.com/office/word/2003/wordml"},
        {NM_NS_DrawingML_chart, u"http://schemas.openxmlformats.org/drawingml/2006/chart"},
        {NM_NS_EXT_CSS, base + u"/names/CSS"},
        {NM_NS_EXT_ChartML, base + u"/names/ChartML"},
        {NM_NS_EXT_XSL_Hyphenations, base + u"/names/XSL/Hyphenations"},
        {NM_NS_EXT_XSL_Settings, base + u"/names/XSL/Settings"},
        {NM_NS_XHTML, u"http://www.w3.org/1999/xhtml"},
        {NM_NS_XLink, u"http://www.w3.org/1999/xlink"},
        {NM_NS_RDF_syntax, u"http://www.w3.org/1999/02/22-rdf-syntax-ns#"},
        {NM_NS_XInclude, u"http://www.w3.org/2001/XInclude"},
    };
    // Positions in the list: 756 to 765, 1907 to 1914, 2306 and 2307.
    const int positions[] = {756,  757,  758,  759,  760,  761,  762,  763,  764,  765,
                             1907, 1908, 1909, 1910, 1911, 1912, 1913, 1914, 2306, 2307};
    for (size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_EQ(expected[i].number, positions[i]);
        UnicodeString uri(expected[i].uri.data(), static_cast<int32_t>(expected[i].uri.size()));
        EXPECT_EQ(utf8(ZtNameTable::getBuiltinNameString(expected[i].number)), utf8(uri));
        EXPECT_EQ(ZtName(uri), expected[i].number);
    }
}

TEST(BuiltinNames, EnumeratorSpelling) {
    EXPECT_EQ(NM_EMPTY_NAME, 0);
    EXPECT_EQ(NM_ANSI_UNDERSCORE_X3_DOT_4, 1);
    EXPECT_EQ(NM_font_size, 668);
    EXPECT_EQ(NM_inherit, 820);
    EXPECT_EQ(NM_PERCENT, 177);
    EXPECT_EQ(NM_HASH_CMYK, 178);
    EXPECT_EQ(NM_xml_COLON_lang, 1594);
    EXPECT_EQ(NM_HYPHEN_zt_HYPHEN, 1677);
    EXPECT_EQ(NM_UNDERSCORE_zt_UNDERSCORE, 1678);
    EXPECT_EQ(NM_HYPHEN_n, 1681);
    EXPECT_EQ(NM_alternate_SPACE_stylesheet, 1693);
    EXPECT_EQ(NM_application_SLASH_xslt_PLUS_xml, 1700);
    EXPECT_EQ(NM_adobe_COLON_ns_COLON_meta_SLASH, 2198);
    EXPECT_EQ(NM_HASH_HASH_RGBA, 2504);
    // Names that differ only in a hyphen, an underscore or case get distinct spellings.
    EXPECT_EQ(NM_SHIFT_JIS, ZtNameTable::getBuiltinNameEnum(u"SHIFT-JIS"));
    EXPECT_EQ(NM_SHIFT_UNDERSCORE_JIS, ZtNameTable::getBuiltinNameEnum(u"SHIFT_JIS"));
    EXPECT_EQ(NM_WINDOWS31J, ZtNameTable::getBuiltinNameEnum(u"WINDOWS31J"));
    EXPECT_EQ(NM_WINDOWS_31J, ZtNameTable::getBuiltinNameEnum(u"WINDOWS-31J"));
    EXPECT_EQ(NM_scaleX, ZtNameTable::getBuiltinNameEnum(u"scaleX"));
    EXPECT_EQ(NM_scalex, ZtNameTable::getBuiltinNameEnum(u"scalex"));
    EXPECT_EQ(NM_LAST_BUILTIN, NM_yemsa);
}

TEST(BuiltinNames, OnlyExactTextsMatch) {
    const char16_t* misses[] = {u"Inherit", u"inherit ",  u" inherit", u"inheri",       u"inheritt",
                                u"INHERIT", u"font_size", u"fontsize", u"zz-not-a-name"};
    for (const char16_t* text : misses)
        EXPECT_EQ(ZtNameTable::getBuiltinNameEnum(UnicodeString(text)), 0)
            << utf8(UnicodeString(text));
    EXPECT_EQ(ZtNameTable::getBuiltinNameEnum(UnicodeString()), 0);
    UnicodeString bogus;
    bogus.setToBogus();
    EXPECT_EQ(ZtNameTable::getBuiltinNameEnum(bogus), 0);
    // An embedded NUL is part of the text, not its end.
    EXPECT_EQ(ZtNameTable::getBuiltinNameEnum(UnicodeString(u"no\0x", 4)), 0);
    EXPECT_EQ(ZtNameTable::getBuiltinNameEnum(UnicodeString(u"no\0", 3)), 0);
    // Every built-in name extended or cut by one unit misses (or finds that other name).
    for (int number = 1; number <= 2842; ++number) {
        UnicodeString name = ZtNameTable::getBuiltinNameString(static_cast<ZtNameEnum>(number));
        UnicodeString longer = name + UnicodeString(u"\u00e9");
        EXPECT_EQ(ZtNameTable::getBuiltinNameEnum(longer), 0) << number;
        UnicodeString shorter(name, 0, name.length() - 1);
        ZtNameEnum found = ZtNameTable::getBuiltinNameEnum(shorter);
        if (found != 0) {
            EXPECT_EQ(ZtNameTable::getBuiltinNameString(found), shorter);
        }
    }
    // Far longer than any built-in name.
    EXPECT_EQ(ZtNameTable::getBuiltinNameEnum(UnicodeString(200, U'a', 200)), 0);
}
