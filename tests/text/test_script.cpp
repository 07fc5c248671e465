// ZtScript: the script rules of getScript at their boundaries and against ICU elsewhere, text
// statistics, names and the script classes.
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
} // namespace

TEST(Script, RulesAtTheirBoundaries) {
    // Rule 1: Hebrew block.
    EXPECT_EQ(script(0x058F), USCRIPT_ARMENIAN);
    EXPECT_EQ(script(0x0590), USCRIPT_HEBREW);
    EXPECT_EQ(script(0x05FF), USCRIPT_HEBREW);
    // Rule 2: Arabic block without its digits (which are neutral).
    EXPECT_EQ(script(0x0600), USCRIPT_ARABIC);
    EXPECT_EQ(script(0x065F), USCRIPT_ARABIC);
    EXPECT_EQ(script(0x0660), USCRIPT_COMMON);
    EXPECT_EQ(script(0x0661), USCRIPT_COMMON);
    EXPECT_EQ(script(0x0669), USCRIPT_COMMON);
    EXPECT_EQ(script(0x066A), USCRIPT_ARABIC);
    EXPECT_EQ(script(0x0627), USCRIPT_ARABIC);
    EXPECT_EQ(script(0x06EF), USCRIPT_ARABIC);
    EXPECT_EQ(script(0x06F0), USCRIPT_COMMON);
    EXPECT_EQ(script(0x06F9), USCRIPT_COMMON);
    EXPECT_EQ(script(0x06FA), USCRIPT_ARABIC);
    EXPECT_EQ(script(0x06FF), USCRIPT_ARABIC);
    EXPECT_EQ(script(0x0700), USCRIPT_SYRIAC);
    // Rule 3: Devanagari block, both ends inclusive.
    EXPECT_EQ(script(0x08FF), icuScript(0x08FF));
    EXPECT_EQ(script(0x0900), USCRIPT_DEVANAGARI);
    EXPECT_EQ(script(0x097F), USCRIPT_DEVANAGARI);
    EXPECT_EQ(script(0x0980), USCRIPT_BENGALI);
    // Rule 4: Latin-1 signs that count as Latin; their neighbours keep ICU's answer.
    for (UChar32 c :
         {0xA2, 0xA3, 0xA4, 0xA5, 0xA7, 0xA8, 0xA9, 0xAA, 0xAE, 0xAF, 0xB4, 0xB5, 0xB8, 0xBA})
        EXPECT_EQ(script(c), USCRIPT_LATIN) << std::hex << c;
    for (UChar32 c : {0xA1, 0xA6, 0xAB, 0xAD, 0xB0, 0xB3, 0xB6, 0xB7, 0xB9, 0xBB})
        EXPECT_EQ(script(c), USCRIPT_COMMON) << std::hex << c;
    // Rule 5: kana sound marks and the prolonged sound mark.
    EXPECT_EQ(script(0x3098), icuScript(0x3098));
    for (UChar32 c : {0x3099, 0x309A, 0x309B, 0x309C, 0x30FC})
        EXPECT_EQ(script(c), USCRIPT_KATAKANA_OR_HIRAGANA) << std::hex << c;
    EXPECT_EQ(script(0x309D), USCRIPT_HIRAGANA);
    EXPECT_EQ(script(0x30FB), USCRIPT_COMMON);
    EXPECT_EQ(script(0x30FD), USCRIPT_KATAKANA);
    // Rule 6: U+32FF answers as U+337B.
    EXPECT_EQ(script(0x32FF), icuScript(0x337B));
    // Rule 7: mathematical operators, at both ends of each range.
    for (UChar32 c : {0x2200, 0x22FF, 0x27C0, 0x27FF, 0x2980, 0x2AFF, 0x1D400, 0x1D7FF})
        EXPECT_EQ(script(c), USCRIPT_MATHEMATICAL_NOTATION) << std::hex << c;
    for (UChar32 c : {0x21FF, 0x2300, 0x27BF, 0x2800, 0x297F, 0x2B00, 0x1D3FF, 0x1D800})
        EXPECT_EQ(script(c), icuScript(c)) << std::hex << c;
    // Rule 8: everything else is ICU's.
    EXPECT_EQ(script('A'), USCRIPT_LATIN);
    EXPECT_EQ(script('1'), USCRIPT_COMMON);
    EXPECT_EQ(script(0x4E00), USCRIPT_HAN);
    EXPECT_EQ(script(0x3042), USCRIPT_HIRAGANA);
    EXPECT_EQ(script(0x0301), USCRIPT_INHERITED);
    EXPECT_EQ(script(-1), USCRIPT_UNKNOWN);
    EXPECT_EQ(script(0x110000), USCRIPT_UNKNOWN);
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
    auto fromText = [](const char16_t* s, bool majority = true) {
        return ZtScript::getScriptFromText(s, majority).getCode();
    };
    EXPECT_EQ(fromText(u"日本語のテキスト"), USCRIPT_JAPANESE);
    EXPECT_EQ(fromText(u"漢字"), USCRIPT_HAN);
    EXPECT_EQ(fromText(u"カタカナ"), USCRIPT_JAPANESE);
    EXPECT_EQ(fromText(u"한국어 漢字"), USCRIPT_KOREAN);
    EXPECT_EQ(fromText(u"한국어"), USCRIPT_HANGUL);
    EXPECT_EQ(fromText(u"Hello, мир!"), USCRIPT_LATIN); // 5 Latin against 3 Cyrillic
    EXPECT_EQ(fromText(u"ab вг"), USCRIPT_LATIN);       // a tie: the first seen wins
    EXPECT_EQ(fromText(u"вг ab"), USCRIPT_CYRILLIC);
    EXPECT_EQ(fromText(u"123 ١٢٣ ..."), USCRIPT_COMMON); // nothing strong
    EXPECT_EQ(fromText(u""), USCRIPT_COMMON);
    EXPECT_EQ(fromText(u"12 мир hello world", false), USCRIPT_CYRILLIC); // the first strong
    EXPECT_EQ(fromText(u"\u0301\u05D0abc", false), USCRIPT_HEBREW);      // marks are skipped
    EXPECT_EQ(fromText(u"漢字かな", false), USCRIPT_HAN);
}

TEST(Script, Names) {
    EXPECT_EQ(ZtScript(u"Latn").getCode(), USCRIPT_LATIN);
    EXPECT_EQ(ZtScript(u"latin").getCode(), USCRIPT_LATIN);
    EXPECT_EQ(ZtScript(u"Jpan").getCode(), USCRIPT_JAPANESE);
    EXPECT_EQ(ZtScript(u"Hrkt").getCode(), USCRIPT_KATAKANA_OR_HIRAGANA);
    EXPECT_EQ(ZtScript(u"Zmth").getCode(), USCRIPT_MATHEMATICAL_NOTATION);
    EXPECT_EQ(ZtScript(u"Math").getCode(), USCRIPT_MATHEMATICAL_NOTATION);
    EXPECT_EQ(ZtScript(u"Qaai").getCode(), USCRIPT_INHERITED);
    EXPECT_EQ(ZtScript(u"auto").getCode(), ZT_SCRIPT_AUTO);
    EXPECT_EQ(ZtScript(u"AUTO").getCode(), ZT_SCRIPT_AUTO);
    EXPECT_EQ(ZtScript(u"none").getCode(), ZT_SCRIPT_NONE);
    EXPECT_EQ(ZtScript(u"").getCode(), ZT_SCRIPT_NONE);
    EXPECT_EQ(ZtScript(u"nonsense-name").getCode(), ZT_SCRIPT_NONE);
    EXPECT_EQ(ZtScript(u"Lat\u00E9").getCode(), ZT_SCRIPT_NONE);
    // Languages.
    EXPECT_EQ(ZtScript(u"ja").getCode(), USCRIPT_JAPANESE);
    EXPECT_EQ(ZtScript(u"jpn-JPN").getCode(), USCRIPT_JAPANESE);
    EXPECT_EQ(ZtScript(u"ko_KR").getCode(), USCRIPT_KOREAN);
    EXPECT_EQ(ZtScript(u"zh").getCode(), USCRIPT_HAN);
    EXPECT_EQ(ZtScript(u"zh-CN").getCode(), USCRIPT_SIMPLIFIED_HAN);
    EXPECT_EQ(ZtScript(u"zho-CHN").getCode(), USCRIPT_SIMPLIFIED_HAN);
    EXPECT_EQ(ZtScript(u"zh-TW").getCode(), USCRIPT_TRADITIONAL_HAN);
    EXPECT_EQ(ZtScript(u"zho-HKG").getCode(), USCRIPT_TRADITIONAL_HAN);
    EXPECT_EQ(ZtScript(u"zh-Hant").getCode(), USCRIPT_TRADITIONAL_HAN);
    EXPECT_EQ(ZtScript(u"zh-Hans-TW").getCode(), USCRIPT_SIMPLIFIED_HAN); // script first
    EXPECT_EQ(ZtScript(u"ru").getCode(), USCRIPT_CYRILLIC);
    EXPECT_EQ(ZtScript(u"ara").getCode(), USCRIPT_ARABIC);
    // From names of the name table.
    EXPECT_EQ(ZtScript(ZtName(NM_Jpan)).getCode(), USCRIPT_JAPANESE);
    EXPECT_EQ(ZtScript(ZtName(NM_auto)).getCode(), ZT_SCRIPT_AUTO);
    EXPECT_EQ(ZtScript(ZtName(NM_none)).getCode(), ZT_SCRIPT_NONE);
    EXPECT_EQ(ZtScript(ZtName(NM_zh_TWN)).getCode(), USCRIPT_TRADITIONAL_HAN);
    // And back.
    EXPECT_EQ(ZtScript(USCRIPT_JAPANESE).getScriptCode(), ZtName(NM_Jpan));
    EXPECT_EQ(ZtScript(USCRIPT_MATHEMATICAL_NOTATION).getScriptCode(), ZtName(NM_Zmth));
    EXPECT_EQ(ZtScript(USCRIPT_KATAKANA_OR_HIRAGANA).toString(), UnicodeString(u"Hrkt"));
    EXPECT_EQ(ZtScript().getScriptCode(), ZtName(NM_auto));
    EXPECT_EQ(ZtScript(USCRIPT_INVALID_CODE).getScriptCode(), ZtName(NM_none));
    EXPECT_EQ(ZtScript(static_cast<UScriptCode>(-7)).getScriptCode(), ZtName(NM_none));
    EXPECT_EQ(ZtScript(USCRIPT_ETHIOPIC).toString(), UnicodeString(u"Ethi")); // a run-time name
    EXPECT_EQ(ZtScript(USCRIPT_LATIN).getScriptName(), UnicodeString(u"Latin"));
    EXPECT_EQ(ZtScript(USCRIPT_HIRAGANA).getScriptName(), UnicodeString(u"Hiragana"));
    EXPECT_EQ(ZtScript().getScriptName(), UnicodeString(u"auto"));
    // Every ICU code survives the trip through its name.
    for (int code = 0; code < USCRIPT_CODE_LIMIT; ++code) {
        const ZtScript s(static_cast<UScriptCode>(code));
        if (uscript_getShortName(static_cast<UScriptCode>(code)) != nullptr) {
            EXPECT_EQ(ZtScript(s.getScriptCode()).getCode(), code) << utf8(s.toString());
        }
    }
}

TEST(Script, Classes) {
    struct Expect {
        int code;
        bool kana, ja, cjk, cjkJustify, latinGroup, hanging;
    };
    const Expect table[] = {
        {USCRIPT_COMMON, false, false, false, false, true, false},
        {USCRIPT_LATIN, false, false, false, false, true, false},
        {USCRIPT_GREEK, false, false, false, false, true, false},
        {USCRIPT_CYRILLIC, false, false, false, false, true, false},
        {USCRIPT_ARMENIAN, false, false, false, false, true, false},
        {USCRIPT_GEORGIAN, false, false, false, false, true, false},
        {USCRIPT_ARABIC, false, false, false, false, false, false},
        {USCRIPT_BOPOMOFO, false, false, true, true, false, false},
        {USCRIPT_HAN, false, false, true, true, false, false},
        {USCRIPT_HANGUL, false, false, true, false, false, false},
        {USCRIPT_KOREAN, false, false, true, false, false, false},
        {USCRIPT_HIRAGANA, true, true, true, true, false, false},
        {USCRIPT_KATAKANA, true, true, true, true, false, false},
        {USCRIPT_KATAKANA_OR_HIRAGANA, true, true, true, true, false, false},
        {USCRIPT_JAPANESE, false, true, true, true, false, false},
        {USCRIPT_SIMPLIFIED_HAN, false, false, true, true, false, false},
        {USCRIPT_TRADITIONAL_HAN, false, false, true, true, false, false},
        {USCRIPT_BENGALI, false, false, false, false, false, true},
        {USCRIPT_DEVANAGARI, false, false, false, false, false, true},
        {USCRIPT_GUJARATI, false, false, false, false, false, true},
        {USCRIPT_GURMUKHI, false, false, false, false, false, true},
        {USCRIPT_TIBETAN, false, false, false, false, false, true},
        {USCRIPT_THAI, false, false, false, false, false, false},
        {ZT_SCRIPT_AUTO, false, false, false, false, false, false},
        {ZT_SCRIPT_NONE, false, false, false, false, false, false},
    };
    for (const Expect& e : table) {
        const ZtScript s(static_cast<UScriptCode>(e.code));
        SCOPED_TRACE(e.code);
        EXPECT_EQ(s.isKanaScript(), e.kana);
        EXPECT_EQ(ZtScript::isKanaScript(static_cast<UScriptCode>(e.code)), e.kana);
        EXPECT_EQ(s.isJA(), e.ja);
        EXPECT_EQ(s.isCJK(), e.cjk);
        EXPECT_EQ(s.isCJKJustify(), e.cjkJustify);
        EXPECT_EQ(s.isCJKorAuto(), e.cjk || e.code == ZT_SCRIPT_AUTO);
        EXPECT_EQ(s.isLatinGroup(), e.latinGroup);
        EXPECT_EQ(s.isHangingBaseline(), e.hanging);
        EXPECT_EQ(s.isAuto(), e.code == ZT_SCRIPT_AUTO);
        EXPECT_EQ(s.isSC(), e.code == USCRIPT_SIMPLIFIED_HAN);
        EXPECT_EQ(s.isTC(), e.code == USCRIPT_TRADITIONAL_HAN);
    }
    EXPECT_TRUE(ZtScript().isAuto());
}

TEST(Script, RepresentativeLetters) {
    EXPECT_EQ(ZtScript(USCRIPT_COMMON).getA(), L'A');
    EXPECT_EQ(ZtScript(USCRIPT_LATIN).getA(), L'A');
    EXPECT_EQ(ZtScript(USCRIPT_ARABIC).getA(), 0x0627);
    EXPECT_EQ(ZtScript(USCRIPT_ARMENIAN).getA(), 0x0531);
    EXPECT_EQ(ZtScript(USCRIPT_CYRILLIC).getA(), 0x0410);
    EXPECT_EQ(ZtScript(USCRIPT_DEVANAGARI).getA(), 0x0905);
    EXPECT_EQ(ZtScript(USCRIPT_GEORGIAN).getA(), 0x10A0);
    EXPECT_EQ(ZtScript(USCRIPT_GREEK).getA(), 0x0391);
    for (auto code : {USCRIPT_HAN, USCRIPT_SIMPLIFIED_HAN, USCRIPT_TRADITIONAL_HAN})
        EXPECT_EQ(ZtScript(code).getA(), 0x4E9C);
    EXPECT_EQ(ZtScript(USCRIPT_HANGUL).getA(), 0xAC00);
    EXPECT_EQ(ZtScript(USCRIPT_KOREAN).getA(), 0xAC00);
    EXPECT_EQ(ZtScript(USCRIPT_HEBREW).getA(), 0x05D0);
    for (auto code : {USCRIPT_HIRAGANA, USCRIPT_KATAKANA_OR_HIRAGANA, USCRIPT_JAPANESE})
        EXPECT_EQ(ZtScript(code).getA(), 0x3042);
    EXPECT_EQ(ZtScript(USCRIPT_KATAKANA).getA(), 0x30A2);
    EXPECT_EQ(ZtScript(USCRIPT_THAI).getA(), 0x0E01);
    EXPECT_EQ(ZtScript(USCRIPT_TIBETAN).getA(), 0x0F68);
    EXPECT_EQ(ZtScript(USCRIPT_BENGALI).getA(), 0xFFFF);
    EXPECT_EQ(ZtScript().getA(), 0xFFFF);
}

TEST(Script, ZenkakuInScript) {
    const ZtScript ja(USCRIPT_JAPANESE), latin(USCRIPT_LATIN), hangul(USCRIPT_HANGUL);
    // Wide and full-width: always.
    for (const ZtScript* s : {&ja, &latin, &hangul}) {
        EXPECT_TRUE(s->isZenkakuScript(0x3042));
        EXPECT_TRUE(s->isZenkakuScript(0xFF21));
        EXPECT_FALSE(s->isZenkakuScript('A'));
        EXPECT_FALSE(s->isZenkakuScript(0xFF71)); // half-width katakana
    }
    // Ambiguous characters depend on the script: section sign (Latin by rule 4, but a JIS
    // symbol), e-acute (Latin, no JIS symbol), Greek alpha (not Latin), degree (common).
    EXPECT_TRUE(ja.isZenkakuScript(0x00A7));
    EXPECT_FALSE(ja.isZenkakuScript(0x00E9));
    EXPECT_TRUE(ja.isZenkakuScript(0x03B1));
    EXPECT_TRUE(ja.isZenkakuScript(0x00B0));
    EXPECT_TRUE(hangul.isZenkakuScript(0x03B1));
    for (UChar32 c : {0x00A7, 0x00E9, 0x03B1, 0x00B0})
        EXPECT_FALSE(latin.isZenkakuScript(c)) << std::hex << c;
    // Over the whole code space, against the definition written with ICU's width.
    for (UChar32 c = 0; c <= 0x10FFFF; ++c) {
        const UChar32 w = u_getIntPropertyValue(c == 0x32FF ? 0x337B : c, UCHAR_EAST_ASIAN_WIDTH);
        const bool expected =
            w == U_EA_FULLWIDTH || w == U_EA_WIDE ||
            (w == U_EA_AMBIGUOUS &&
             (ZtChar::isSymbolJIS(c) || ZtScript::getScript(c).getCode() != USCRIPT_LATIN));
        ASSERT_EQ(ja.isZenkakuScript(c), expected) << std::hex << c;
    }
}
