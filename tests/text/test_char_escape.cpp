// Escaping any text into an NCName and back, and the CSS identifier repair.
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

TEST(CharEscape, Format) {
    EXPECT_EQ(ZtChar::escapeNCNameStr(u"", '_'), UnicodeString(u"_"));
    EXPECT_EQ(ZtChar::unescapeNCNameStr(u"_", '_'), UnicodeString(u""));
    EXPECT_EQ(ZtChar::escapeNCNameStr(u"abc", '_'), UnicodeString(u"abc"));
    EXPECT_EQ(ZtChar::escapeNCNameStr(u"a_b", '_'), UnicodeString(u"a_005Fb"));
    EXPECT_EQ(ZtChar::escapeNCNameStr(u"1a", '_'), UnicodeString(u"_0031a"));
    EXPECT_EQ(ZtChar::escapeNCNameStr(u"a1", '_'), UnicodeString(u"a1"));
    EXPECT_EQ(ZtChar::escapeNCNameStr(u"a b:c", '_'), UnicodeString(u"a_0020b_003Ac"));
    EXPECT_EQ(ZtChar::escapeNCNameStr(u"-", '_'), UnicodeString(u"_002D"));
    // A supplementary name character stays whole; one of plane 15 is escaped unit by unit.
    EXPECT_EQ(ZtChar::escapeNCNameStr(u"\U00020000", '_'), UnicodeString(u"\U00020000"));
    EXPECT_EQ(ZtChar::escapeNCNameStr(u"a\U000F0000", '_'), UnicodeString(u"a_DB80_DC00"));
    // A hex-letter escape works because an escape always takes exactly four digits.
    EXPECT_EQ(ZtChar::escapeNCNameStr(u"BAD", 'A'), UnicodeString(u"BA0041D"));
    EXPECT_EQ(ZtChar::unescapeNCNameStr(u"BA0041D", 'A'), UnicodeString(u"BAD"));
}

TEST(CharEscape, UnescapeKeepsWhatIsNoEscape) {
    EXPECT_EQ(ZtChar::unescapeNCNameStr(u"a_b", '_'), UnicodeString(u"a_b"));
    EXPECT_EQ(ZtChar::unescapeNCNameStr(u"a_00", '_'), UnicodeString(u"a_00"));
    EXPECT_EQ(ZtChar::unescapeNCNameStr(u"_004g", '_'), UnicodeString(u"_004g"));
    EXPECT_EQ(ZtChar::unescapeNCNameStr(u"_004a_", '_'), UnicodeString(u"J_"));
    EXPECT_EQ(ZtChar::unescapeNCNameStr(u"__0041", '_'), UnicodeString(u"_A"));
    EXPECT_EQ(ZtChar::unescapeNCNameStr(u"", '_'), UnicodeString(u""));
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

TEST(CharEscape, CssIdentifierRepair) {
    auto css = [](const UnicodeString& s) { return ZtChar::replaceToCSSIdentTokenStr(s, '_'); };
    EXPECT_EQ(css(u""), UnicodeString(u""));
    EXPECT_EQ(css(u"abc"), UnicodeString(u"abc"));
    EXPECT_EQ(css(u"-abc"), UnicodeString(u"-abc"));
    EXPECT_EQ(css(u"--x"), UnicodeString(u"--x"));
    EXPECT_EQ(css(u"1a"), UnicodeString(u"_a"));
    EXPECT_EQ(css(u"-1a"), UnicodeString(u"-_a"));
    EXPECT_EQ(css(u"a1-b_c"), UnicodeString(u"a1-b_c"));
    EXPECT_EQ(css(u"a b.c:d"), UnicodeString(u"a_b_c_d"));
    EXPECT_EQ(css(u"\u00B7\u00D7\u00E9"), UnicodeString(u"\u00B7_\u00E9"));
    EXPECT_EQ(css(u"x\u037E\u3000\u3001"), UnicodeString(u"x__\u3001"));
    // Everything from U+10000 up is allowed, plane 16 too; a lone surrogate is not.
    EXPECT_EQ(css(u"\U0010FFFDx"), UnicodeString(u"\U0010FFFDx"));
    EXPECT_EQ(css(UnicodeString(u"a").append(UChar(0xDC00)).append(u"b")), UnicodeString(u"a_b"));
    EXPECT_EQ(ZtChar::replaceToCSSIdentTokenStr(u"a%b", '-'), UnicodeString(u"a-b"));
}
