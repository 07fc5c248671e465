// The built-in name table: numbering against the published list, distinctness, exact lookups,
// namespace URIs and the generated enumerators.
#include <gtest/gtest.h>

#include <climits>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "value_test_util.h"

using namespace ZtCommonNS;
using namespace ZtCommonNS::test;

namespace {
const UnicodeString& builtin(int number) {
    return ZtNameTable::getBuiltinNameString(static_cast<ZtNameEnum>(number));
}
} // namespace

TEST(BuiltinNames, ListedNumbersHaveTheirNames) {
    const auto listed = readRows("listed_names.tsv", 2);
    ASSERT_EQ(listed.size(), 128u);
    for (const auto& row : listed) {
        const int number = std::stoi(row[0]);
        EXPECT_EQ(utf8(builtin(number)), row[1]) << number;
        EXPECT_EQ(ZtNameTable::getBuiltinNameEnum(text(row[1])), number) << row[1];
        EXPECT_EQ(ZtName(text(row[1])).getNameEnum(), number) << row[1];
    }
    EXPECT_EQ(std::u16string(ZtExtensionNamespaceBase), u"http://www.tessaly.example");
}

// The data file the table is generated from: line k is name number k (namespace URIs are
// bracketed placeholders there). Every name is distinct, finds its own number and misses when
// one unit longer.
TEST(BuiltinNames, EveryNumberMatchesItsDataFileLineAndRoundTrips) {
    std::ifstream in(ZT_SOURCE_DIR "/src/value/builtin_names.txt", std::ios::binary);
    ASSERT_TRUE(in) << "data file missing";
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    ASSERT_EQ(lines.size(), 2842u);
    std::set<std::string> seen;
    int bracketed = 0;
    for (int number = 1; number <= 2842; ++number) {
        const UnicodeString& name = builtin(number);
        const std::string& line = lines[size_t(number - 1)];
        if (line.front() == '[')
            ++bracketed;
        else
            EXPECT_EQ(utf8(name), line) << number;
        seen.insert(utf8(name));
        EXPECT_EQ(ZtNameTable::getBuiltinNameEnum(name), number) << line;
        EXPECT_EQ(ZtNameTable::getSharedNameEnum(name), number) << line;
        EXPECT_EQ(ZtNameTable::getBuiltinNameEnum(name + UnicodeString(u"\u00e9")), 0) << line;
        // Cut by one unit: no name, or that other name.
        UnicodeString shorter(name, 0, name.length() - 1);
        ZtNameEnum found = ZtNameTable::getBuiltinNameEnum(shorter);
        EXPECT_TRUE(found == 0 || builtin(found) == shorter) << line;
    }
    EXPECT_EQ(bracketed, 20);
    EXPECT_EQ(seen.size(), 2842u);
    EXPECT_FALSE(seen.count(""));
}

TEST(BuiltinNames, NumbersOutsideTheTableGiveTheEmptyString) {
    for (int number : {0, -1, -5, 2843, 999999, INT_MIN, INT_MAX}) {
        EXPECT_TRUE(builtin(number).isEmpty()) << number;
        EXPECT_FALSE(builtin(number).isBogus()) << number;
    }
    EXPECT_TRUE(ZtName(NM_EMPTY_NAME).isBuiltin());
    EXPECT_TRUE(ZtName(NM_LAST_BUILTIN).isBuiltin());
    EXPECT_FALSE(ZtName(static_cast<ZtNameEnum>(-1)).isBuiltin());
    EXPECT_FALSE(ZtName(NM_FIRST_RUNTIME).isBuiltin());
}

TEST(BuiltinNames, EnumeratorSpelling) {
    // Punctuation is spelled out; namespace URIs are named after their standard or path.
    static_assert(NM_ANSI_UNDERSCORE_X3_DOT_4 == 1 && NM_PERCENT == 177 && NM_HASH_CMYK == 178 &&
                  NM_font_size == 668 && NM_inherit == 820 && NM_xml_COLON_lang == 1594 &&
                  NM_HYPHEN_zt_HYPHEN == 1677 && NM_UNDERSCORE_zt_UNDERSCORE == 1678 &&
                  NM_HYPHEN_n == 1681 && NM_alternate_SPACE_stylesheet == 1693 &&
                  NM_application_SLASH_xslt_PLUS_xml == 1700 &&
                  NM_adobe_COLON_ns_COLON_meta_SLASH == 2198 && NM_HASH_HASH_RGBA == 2504 &&
                  NM_yemsa == 2842 && NM_LAST_BUILTIN == 2842 && NM_FIRST_RUNTIME == 2843);
    static_assert(NM_NS_EXT_RX_Layout == 756 && NM_NS_XML == 765 &&
                  NM_NS_WordprocessingML_2003 == 1907 && NM_NS_XLink == 1914 &&
                  NM_NS_RDF_syntax == 2306 && NM_NS_XInclude == 2307);
    // Names that differ only in a hyphen, an underscore or case get distinct spellings.
    const std::pair<ZtNameEnum, const char16_t*> distinct[] = {
        {NM_SHIFT_JIS, u"SHIFT-JIS"},   {NM_SHIFT_UNDERSCORE_JIS, u"SHIFT_JIS"},
        {NM_WINDOWS31J, u"WINDOWS31J"}, {NM_WINDOWS_31J, u"WINDOWS-31J"},
        {NM_scaleX, u"scaleX"},         {NM_scalex, u"scalex"}};
    for (const auto& [enumerator, name] : distinct)
        EXPECT_EQ(enumerator, ZtNameTable::getBuiltinNameEnum(name)) << utf8(name);
}

TEST(BuiltinNames, OnlyExactTextsMatch) {
    for (const char16_t* miss : {u"Inherit", u"inherit ", u" inherit", u"inheri", u"INHERIT",
                                 u"font_size", u"fontsize", u"zz-not-a-name", u""})
        EXPECT_EQ(ZtNameTable::getBuiltinNameEnum(UnicodeString(miss)), 0) << utf8(miss);
    UnicodeString bogus;
    bogus.setToBogus();
    EXPECT_EQ(ZtNameTable::getBuiltinNameEnum(bogus), 0);
    // An embedded NUL is part of the text, not its end.
    EXPECT_EQ(ZtNameTable::getBuiltinNameEnum(UnicodeString(u"no\0x", 4)), 0);
    EXPECT_EQ(ZtNameTable::getBuiltinNameEnum(UnicodeString(u"no\0", 3)), 0);
    // Far longer than any built-in name.
    EXPECT_EQ(ZtNameTable::getBuiltinNameEnum(UnicodeString(200, U'a', 200)), 0);
}
