// The text functions of ZtChar: escaping any text into an NCName and back, the CSS identifier
// repair, name and white-space tests of whole texts, and the width and mirror conversions of
// texts, against the hand-written table data/text_functions.tsv.
#include <functional>
#include <map>
#include <random>

#include <gtest/gtest.h>

#include "text_test_util.h"
#include "ztcommon/foundation.h"
#include "ztcommon/text.h"

using namespace ZtCommonNS;

namespace {

// A random text drawn from the awkward places of the code space: ASCII (with the escape
// characters), name and non-name punctuation, combining marks, surrogates alone and in
// pairs, plane 15 and the non-characters.
UnicodeString randomText(std::mt19937& rng) {
    static const UChar32 pool[] = {
        'a',    'Z',     '_',     'x',     'A',      '0',    '9',    '-',    '.',    ':',
        ' ',    '\t',    0,       0xB7,    0x300,    0x37E,  0x2040, 0x3000, 0x3042, 0xFFFE,
        0xFFFF, 0x10000, 0xEFFFF, 0xF0000, 0x10FFFF, 0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0x1F600};
    std::uniform_int_distribution<int> length(0, 12);
    std::uniform_int_distribution<size_t> pick(0, std::size(pool) - 1);
    UnicodeString s;
    for (int n = length(rng); n > 0; --n) {
        const UChar32 c = pool[pick(rng)];
        if (c >= 0xD800 && c <= 0xDFFF)
            s.append(static_cast<UChar>(c)); // a lone surrogate unit
        else
            s.append(c);
    }
    return s;
}

} // namespace

TEST(CharEscape, RoundTripsRandomTextsIntoValidNames) {
    std::mt19937 rng(20240601);
    for (char escape : {'_', 'x', 'A', 'Z'}) {
        for (int i = 0; i < 3000; ++i) {
            const UnicodeString s = randomText(rng);
            const UnicodeString name = ZtChar::escapeNCNameStr(s, escape);
            ASSERT_TRUE(ZtChar::isNCNameStr(name)) << i;
            ASSERT_EQ(ZtChar::unescapeNCNameStr(name, escape), s) << i;
        }
    }
}

TEST(CharEscape, EscapeCharacterMustStartAName) {
    for (char bad : {'-', '.', '1', ':', ' ', '\0', '%', static_cast<char>(0xE9)}) {
        try {
            ZtChar::escapeNCNameStr(u"x", bad);
            FAIL() << "accepted " << int(bad);
        } catch (const ZtError& e) {
            EXPECT_EQ(e.getErrorCode(), 4);
            EXPECT_EQ(e.getRawMessage(), UnicodeString(u"SYSTEM ERROR: Argument is out of range."));
            EXPECT_EQ(e.getSource(), UnicodeString(u"ZtCommonNS::ZtChar::escapeNCNameStr"));
        }
        EXPECT_THROW(ZtChar::unescapeNCNameStr(u"x", bad), ZtError);
    }
}

TEST(CharEscape, TextFunctionsMatchTheTable) {
    using Function = std::function<UnicodeString(const UnicodeString&, char)>;
    auto yesNo = [](bool b) { return UnicodeString(b ? u"true" : u"false"); };
    const std::map<std::string, Function> functions = {
        {"isNCNameStr", [&](auto& s, char) { return yesNo(ZtChar::isNCNameStr(s)); }},
        {"isNameStr", [&](auto& s, char) { return yesNo(ZtChar::isNameStr(s)); }},
        {"isEmptyOrWhitespace",
         [&](auto& s, char) { return yesNo(ZtChar::isEmptyOrWhitespace(s)); }},
        {"isWhitespace", [&](auto& s, char) { return yesNo(ZtChar::isWhitespace(s)); }},
        {"escape", [](auto& s, char c) { return ZtChar::escapeNCNameStr(s, c); }},
        {"unescape", [](auto& s, char c) { return ZtChar::unescapeNCNameStr(s, c); }},
        {"css", [](auto& s, char c) { return ZtChar::replaceToCSSIdentTokenStr(s, c); }},
        {"toZenkaku", [](auto& s, char) { return ZtChar::toZenkaku(s); }},
        {"toZenkakuKana", [](auto& s, char) { return ZtChar::toZenkakuKana(s); }},
        {"toFullsizeKana", [](auto& s, char) { return ZtChar::toFullsizeKana(s); }},
        {"mirror", [](auto& s, char) { return ZtChar::getMirrorString(s); }},
    };
    for (const Row& row : dataRows("text_functions.tsv")) {
        const size_t colon = row.at(0).find(':');
        const char argument = colon == std::string::npos ? '_' : row[0].at(colon + 1);
        EXPECT_EQ(functions.at(row[0].substr(0, colon))(text(row.at(1)), argument), text(row.at(2)))
            << row[0] << " " << row[1];
    }
}
