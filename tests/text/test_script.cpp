// ZtScript: the script rules of getScript at their boundaries (data/script_rules.tsv) and
// against ICU elsewhere, text statistics (data/script_from_text.tsv), names (data/script_names.tsv)
// and the script classes (data/script_classes.tsv).
#include <gtest/gtest.h>

#include <unicode/uscript.h>

#include "text_test_util.h"
#include "ztcommon/text.h"
#include "ztcommon/value.h"

using namespace ZtCommonNS;

namespace {
int script(UChar32 c) {
    return ZtScript::getScript(c).getCode();
}
int icuScript(UChar32 c) {
    UErrorCode status = U_ZERO_ERROR;
    return uscript_getScript(c, &status);
}
// A script short name of the tables, or the library's own "auto" and "none".
int code(const std::string& name) {
    if (name == "auto" || name == "none")
        return name == "auto" ? ZT_SCRIPT_AUTO : ZT_SCRIPT_NONE;
    EXPECT_NE(scriptCode(name), -1) << name;
    return scriptCode(name);
}
} // namespace

TEST(Script, RulesAtTheirBoundaries) {
    for (const Row& row : dataRows("script_rules.tsv")) {
        for (UChar32 c : hexList(row.at(1))) {
            const std::string& e = row[0];
            const int expected =
                e[0] != '=' ? code(e) : icuScript(e.size() > 1 ? hex(e.substr(1)) : c);
            EXPECT_EQ(script(c), expected) << e << " U+" << std::hex << c;
        }
    }
}

TEST(Script, EveryOtherCodePointIsIcus) {
    auto ruled = [](UChar32 c) {
        return (c >= 0x590 && c < 0x700) || (c >= 0x900 && c <= 0x97F) ||
               (c >= 0xA2 && c <= 0xBA) || (c >= 0x3099 && c <= 0x309C) || c == 0x30FC ||
               c == 0x32FF || (c >= 0x2200 && c < 0x2300) || (c >= 0x27C0 && c < 0x2800) ||
               (c >= 0x2980 && c < 0x2B00) || (c >= 0x1D400 && c < 0x1D800);
    };
    for (UChar32 c = 0; c <= 0x10FFFF; ++c) {
        if (!ruled(c)) {
            ASSERT_EQ(script(c), icuScript(c)) << std::hex << c;
        }
    }
}

TEST(Script, FromText) {
    for (const Row& row : dataRows("script_from_text.tsv")) {
        EXPECT_EQ(ZtScript::getScriptFromText(text(row.at(0)), row.at(1) == "1").getCode(),
                  code(row.at(2)))
            << row[0];
    }
}

TEST(Script, Names) {
    // From texts and from names; a canonical name is what the code gives back.
    for (const Row& row : dataRows("script_names.tsv")) {
        const int expected = code(row.at(1));
        EXPECT_EQ(ZtScript(text(row.at(0))).getCode(), expected) << row[0];
        EXPECT_EQ(ZtScript(ZtName(text(row[0]))).getCode(), expected) << row[0];
        if (row[0] == row[1]) {
            EXPECT_EQ(ZtScript(static_cast<UScriptCode>(expected)).toString(), text(row[0]));
        }
    }
    EXPECT_EQ(ZtScript(USCRIPT_INVALID_CODE).getScriptCode(), ZtName(NM_none));
    EXPECT_EQ(ZtScript(static_cast<UScriptCode>(-7)).getScriptCode(), ZtName(NM_none));
    EXPECT_EQ(ZtScript(USCRIPT_ETHIOPIC).toString(), UnicodeString(u"Ethi")); // a run-time name
    EXPECT_EQ(ZtScript(USCRIPT_HIRAGANA).getScriptName(), UnicodeString(u"Hiragana"));
    EXPECT_EQ(ZtScript().getScriptName(), UnicodeString(u"auto"));
    // Every ICU code survives the trip through its name.
    for (int c = 0; c < USCRIPT_CODE_LIMIT; ++c) {
        const ZtScript s(static_cast<UScriptCode>(c));
        if (uscript_getShortName(static_cast<UScriptCode>(c)) != nullptr) {
            EXPECT_EQ(ZtScript(s.getScriptCode()).getCode(), c) << utf8(s.toString());
        }
    }
}

TEST(Script, ClassesAndRepresentativeLetters) {
    for (const Row& row : dataRows("script_classes.tsv")) {
        const int c = code(row.at(0));
        const ZtScript s(static_cast<UScriptCode>(c));
        auto flag = [&](size_t column) { return row.at(column) == "1"; };
        SCOPED_TRACE(row[0]);
        EXPECT_EQ(s.isKanaScript(), flag(1));
        EXPECT_EQ(ZtScript::isKanaScript(static_cast<UScriptCode>(c)), flag(1));
        EXPECT_EQ(s.isJA(), flag(2));
        EXPECT_EQ(s.isCJK(), flag(3));
        EXPECT_EQ(s.isCJKJustify(), flag(4));
        EXPECT_EQ(s.isCJKorAuto(), flag(3) || c == ZT_SCRIPT_AUTO);
        EXPECT_EQ(s.isLatinGroup(), flag(5));
        EXPECT_EQ(s.isHangingBaseline(), flag(6));
        EXPECT_EQ(static_cast<UChar32>(s.getA()), hex(row.at(7)));
        EXPECT_EQ(s.isAuto(), c == ZT_SCRIPT_AUTO);
        EXPECT_EQ(s.isSC(), c == USCRIPT_SIMPLIFIED_HAN);
        EXPECT_EQ(s.isTC(), c == USCRIPT_TRADITIONAL_HAN);
    }
    EXPECT_TRUE(ZtScript().isAuto());
}

TEST(Script, ZenkakuInScript) {
    const ZtScript ja(USCRIPT_JAPANESE), latin(USCRIPT_LATIN), hangul(USCRIPT_HANGUL);
    // Ambiguous characters depend on the script: section sign (Latin by rule 4, but a JIS
    // symbol), e-acute (Latin, no JIS symbol), Greek alpha (not Latin), degree (common).
    EXPECT_TRUE(ja.isZenkakuScript(0x00A7));
    EXPECT_FALSE(ja.isZenkakuScript(0x00E9));
    EXPECT_TRUE(ja.isZenkakuScript(0x03B1));
    EXPECT_TRUE(ja.isZenkakuScript(0x00B0));
    EXPECT_TRUE(hangul.isZenkakuScript(0x03B1));
    EXPECT_FALSE(latin.isZenkakuScript(0x03B1));
    // Over the whole code space, against the rule written with ICU's width, for a CJK
    // script and for one that is not.
    for (UChar32 c = 0; c <= 0x10FFFF; ++c) {
        const UChar32 w = u_getIntPropertyValue(c == 0x32FF ? 0x337B : c, UCHAR_EAST_ASIAN_WIDTH);
        const bool wide = w == U_EA_FULLWIDTH || w == U_EA_WIDE;
        ASSERT_EQ(latin.isZenkakuScript(c), wide) << std::hex << c;
        ASSERT_EQ(
            ja.isZenkakuScript(c),
            wide || (w == U_EA_AMBIGUOUS &&
                     (ZtChar::isSymbolJIS(c) || ZtScript::getScript(c).getCode() != USCRIPT_LATIN)))
            << std::hex << c;
    }
}
