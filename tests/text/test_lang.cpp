// ZtLang: the alias table, the null language, the text forms and the ordering.
#include <map>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "text/language_aliases.h"
#include "text_test_util.h"
#include "ztcommon/text.h"
#include "ztcommon/util.h"
#include "ztcommon/value.h"

using namespace ZtCommonNS;

TEST(Lang, BibliographicCodesBecomeTerminologyCodes) {
    const std::pair<const char*, const char*> aliases[] = {
        {"wel", "cym"}, {"tib", "bod"}, {"slo", "slk"}, {"scc", "srp"}, {"rum", "ron"},
        {"per", "fas"}, {"mao", "mri"}, {"may", "msa"}, {"mac", "mkd"}, {"jav", "jaw"},
        {"ice", "isl"}, {"gre", "ell"}, {"ger", "deu"}, {"geo", "kat"}, {"fre", "fra"},
        {"dut", "nld"}, {"cze", "ces"}, {"scr", "hrv"}, {"chi", "zho"}, {"bur", "mya"},
        {"baq", "eus"}, {"arm", "hye"}, {"alb", "sqi"}};
    for (auto [from, to] : aliases) {
        EXPECT_EQ(ZtLang(from), ZtLang(to)) << from;
        // ICU stores the language as its two-letter code where there is one.
        EXPECT_EQ(ZtLang(from).getLanguage(),
                  UnicodeString(icu::Locale(to).getLanguage(), -1, US_INV))
            << from;
        EXPECT_NE(ZtLang(from), ZtLang(icu::Locale(from))) << from;
    }
    EXPECT_EQ(ZtLang(u"ger"), ZtLang(u"deu"));
    EXPECT_EQ(ZtLang(u"ger"), ZtLang(u"de"));
    EXPECT_EQ(ZtLang(u"ger").getISO3Language(), UnicodeString(u"deu"));
    // The language part of a longer code is aliased too.
    EXPECT_EQ(ZtLang(u"ger-CH"), ZtLang(u"de-CH"));
    EXPECT_EQ(ZtLang(u"fre", u"CA").toString(), UnicodeString(u"fr-CA"));
    EXPECT_EQ(ZtLang(u"gre_GR").toISO3String(), UnicodeString(u"ell-GRC"));
    // Only whole language codes are aliased.
    EXPECT_EQ(ZtLang(u"germ").getLanguage(), UnicodeString(u"germ"));
}

TEST(Lang, NullLanguage) {
    EXPECT_TRUE(ZtLang().isNullLang());
    EXPECT_TRUE(ZtLang(u"none").isNullLang());
    EXPECT_TRUE(ZtLang("none").isNullLang());
    EXPECT_TRUE(ZtLang(u"").isNullLang());
    EXPECT_TRUE(ZtLang(static_cast<const char*>(nullptr)).isNullLang());
    EXPECT_TRUE(ZtLang(ZtName(NM_none)).isNullLang());
    EXPECT_TRUE(ZtLang(NM_none).isNullLang());
    EXPECT_TRUE(ZtLang(ZtName()).isNullLang());
    EXPECT_FALSE(ZtLang().isInvalid());
    EXPECT_EQ(ZtLang(u"none"), ZtLang());
    EXPECT_EQ(ZtLang().toString(), UnicodeString());
    EXPECT_EQ(ZtLang().toISO3String(), UnicodeString());
    EXPECT_FALSE(ZtLang(u"en").isNullLang());
    // A name other than "none" goes through its text.
    EXPECT_EQ(ZtLang(ZtName(NM_ja)), ZtLang(u"ja"));
    EXPECT_EQ(ZtLang(NM_zh_TW).getCountry(), UnicodeString(u"TW"));
}

TEST(Lang, InvalidLanguages) {
    EXPECT_TRUE(ZtLang(u"xx").isInvalid());
    EXPECT_FALSE(ZtLang(u"ja").isInvalid());
    EXPECT_FALSE(ZtLang(u"jpn").isInvalid());
    EXPECT_FALSE(ZtLang(u"en-US").isInvalid());
}

TEST(Lang, Parts) {
    const ZtLang zh(u"zh-Hant-TW");
    EXPECT_EQ(zh.getLanguage(), UnicodeString(u"zh"));
    EXPECT_EQ(zh.getLangScript(), UnicodeString(u"Hant"));
    EXPECT_EQ(zh.getCountry(), UnicodeString(u"TW"));
    EXPECT_EQ(zh.getISO3Language(), UnicodeString(u"zho"));
    EXPECT_EQ(zh.getISO3Country(), UnicodeString(u"TWN"));
    EXPECT_EQ(zh.getLanguageName(), ZtName(NM_zh));
    EXPECT_EQ(zh.toString(), UnicodeString(u"zh-Hant-TW"));
    EXPECT_EQ(zh.toISO3String(), UnicodeString(u"zho-Hant-TWN"));
    EXPECT_EQ(zh.toFullString(), UnicodeString(u"zh_Hant_TW"));
    EXPECT_EQ(ZtLang(u"ja_JP").toString(), UnicodeString(u"ja-JP"));
    EXPECT_EQ(ZtLang(u"ja", u"JP").toISO3String(), UnicodeString(u"jpn-JPN"));
    EXPECT_EQ(ZtLang(u"de-DE@collation=phonebook").toFullString(),
              UnicodeString(u"de_DE@collation=phonebook"));
    EXPECT_EQ(ZtLang(u"xx-YY").toISO3String(), UnicodeString(u"xx-YY"));
    EXPECT_EQ(ZtLang(u"ja-JP").getLCID(), LANGID_JAPANESE);
    EXPECT_EQ(ZtLang(u"en-US").getLCID(), LANGID_ENGLISH_US);
}

TEST(Lang, ToScript) {
    EXPECT_EQ(ZtLang(u"ja").toScript().getCode(), USCRIPT_JAPANESE);
    EXPECT_EQ(ZtLang(u"ko-KR").toScript().getCode(), USCRIPT_KOREAN);
    EXPECT_EQ(ZtLang(u"zh-CN").toScript().getCode(), USCRIPT_SIMPLIFIED_HAN);
    EXPECT_EQ(ZtLang(u"zh-HK").toScript().getCode(), USCRIPT_TRADITIONAL_HAN);
    EXPECT_EQ(ZtLang(u"zh-Hant").toScript().getCode(), USCRIPT_TRADITIONAL_HAN);
    EXPECT_EQ(ZtLang(u"chi").toScript().getCode(), USCRIPT_HAN);
    EXPECT_EQ(ZtLang(u"ru").toScript().getCode(), USCRIPT_CYRILLIC);
    EXPECT_EQ(ZtLang(u"en-GB").toScript().getCode(), USCRIPT_LATIN);
    EXPECT_EQ(ZtLang().toScript().getCode(), ZT_SCRIPT_NONE);
}

TEST(Lang, OrderingIgnoresTheScript) {
    const ZtLang hans(u"zh-Hans-CN"), hant(u"zh-Hant-CN");
    EXPECT_NE(hans, hant);
    EXPECT_FALSE(hans < hant);
    EXPECT_FALSE(hant < hans);
    EXPECT_TRUE(ZtLang(u"de") < ZtLang(u"en"));
    EXPECT_TRUE(ZtLang(u"en") < ZtLang(u"en-GB"));
    EXPECT_TRUE(ZtLang(u"en-GB") < ZtLang(u"en-US"));
    EXPECT_FALSE(ZtLang(u"en-US") < ZtLang(u"en-GB"));
    EXPECT_TRUE(ZtLang() < ZtLang(u"aa"));
    std::map<ZtLang, int> byLanguage;
    byLanguage[hans] = 1;
    byLanguage[hant] = 2; // the same key as far as the map knows
    EXPECT_EQ(byLanguage.size(), 1u);
    EXPECT_EQ(byLanguage.begin()->second, 2);
}

TEST(Lang, DefaultLocale) {
    const icu::Locale saved = icu::Locale::getDefault();
    UErrorCode status = U_ZERO_ERROR;
    icu::Locale::setDefault(icu::Locale("ja_JP"), status);
    EXPECT_TRUE(ZtLang::isDefaultLocaleJapanese());
    EXPECT_EQ(ZtLang::getDefaultLocale().toString(), UnicodeString(u"ja-JP"));
    icu::Locale::setDefault(icu::Locale("en_US"), status);
    EXPECT_FALSE(ZtLang::isDefaultLocaleJapanese());
    icu::Locale::setDefault(saved, status);
}

TEST(Lang, AliasTableIsBuiltOnceAndReleasedByCleanup) {
    ZtLang::cleanup();
    EXPECT_FALSE(languageAliasTableBuilt());
    // Many threads make languages at once: the table is built once and every answer agrees.
    std::vector<std::thread> threads;
    std::vector<int> wrong(8, 0);
    for (int t = 0; t < 8; ++t) {
        threads.emplace_back([t, &wrong] {
            for (int i = 0; i < 200; ++i) {
                if (ZtLang(u"ger") != ZtLang(u"deu") || !ZtLang(u"none").isNullLang())
                    ++wrong[static_cast<size_t>(t)];
            }
        });
    }
    for (std::thread& t : threads)
        t.join();
    EXPECT_EQ(wrong, std::vector<int>(8, 0));
    EXPECT_TRUE(languageAliasTableBuilt());
    ZtLang::cleanup();
    EXPECT_FALSE(languageAliasTableBuilt());
    EXPECT_EQ(ZtLang(u"fre"), ZtLang(u"fra")); // rebuilt on demand
    EXPECT_TRUE(languageAliasTableBuilt());
    ZtUtil::cleanup(); // the library-wide cleanup releases it too
    EXPECT_FALSE(languageAliasTableBuilt());
}
