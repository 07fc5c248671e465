// ZtLang: the alias table, the null language, the text forms (data/lang_parts.tsv), the
// ordering that ignores the script, and the alias table's life cycle.
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
    // The language part of a longer code is aliased too, but only whole language codes.
    EXPECT_EQ(ZtLang(u"ger-CH"), ZtLang(u"de-CH"));
    EXPECT_EQ(ZtLang(u"fre", u"CA").toString(), UnicodeString(u"fr-CA"));
    EXPECT_EQ(ZtLang(u"gre_GR").toISO3String(), UnicodeString(u"ell-GRC"));
    EXPECT_EQ(ZtLang(u"germ").getLanguage(), UnicodeString(u"germ"));
}

TEST(Lang, NullAndInvalidLanguages) {
    for (const ZtLang& none : {ZtLang(), ZtLang(u"none"), ZtLang("none"), ZtLang(u""),
                               ZtLang(static_cast<const char*>(nullptr)), ZtLang(ZtName(NM_none)),
                               ZtLang(NM_none), ZtLang(ZtName())}) {
        EXPECT_TRUE(none.isNullLang());
        EXPECT_FALSE(none.isInvalid());
        EXPECT_EQ(none, ZtLang());
    }
    EXPECT_FALSE(ZtLang(u"en").isNullLang());
    // A name other than "none" goes through its text.
    EXPECT_EQ(ZtLang(ZtName(NM_ja)), ZtLang(u"ja"));
    EXPECT_EQ(ZtLang(NM_zh_TW).getCountry(), UnicodeString(u"TW"));
    EXPECT_TRUE(ZtLang(u"xx").isInvalid());
    for (const char16_t* valid : {u"ja", u"jpn", u"en-US"})
        EXPECT_FALSE(ZtLang(valid).isInvalid()) << utf8(valid);
}

TEST(Lang, PartsAndTextForms) {
    for (const Row& row : dataRows("lang_parts.tsv")) {
        const ZtLang lang(row.at(0) == "none" ? UnicodeString() : text(row[0]));
        const UnicodeString parts[] = {
            lang.toString(),        lang.toISO3String(),   lang.toFullString(),
            lang.getLanguage(),     lang.getLangScript(),  lang.getCountry(),
            lang.getISO3Language(), lang.getISO3Country(), lang.toScript().toString()};
        for (size_t i = 0; i < std::size(parts); ++i) {
            if (row.at(i + 1) != "*") {
                EXPECT_EQ(parts[i], text(row[i + 1])) << row[0] << " column " << i + 1;
            }
        }
    }
    EXPECT_EQ(ZtLang(u"zh-Hant").getLanguageName(), ZtName(NM_zh));
    EXPECT_EQ(ZtLang(u"ja-JP").getLCID(), LANGID_JAPANESE);
    EXPECT_EQ(ZtLang(u"en-US").getLCID(), LANGID_ENGLISH_US);
}

TEST(Lang, OrderingIgnoresTheScript) {
    const ZtLang hans(u"zh-Hans-CN"), hant(u"zh-Hant-CN");
    EXPECT_NE(hans, hant);
    EXPECT_FALSE(hans < hant);
    EXPECT_FALSE(hant < hans);
    const ZtLang ordered[] = {ZtLang(),      ZtLang(u"aa"),    ZtLang(u"de"),
                              ZtLang(u"en"), ZtLang(u"en-GB"), ZtLang(u"en-US")};
    for (size_t i = 0; i + 1 < std::size(ordered); ++i) {
        EXPECT_TRUE(ordered[i] < ordered[i + 1]) << i;
        EXPECT_FALSE(ordered[i + 1] < ordered[i]) << i;
    }
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
    threads.reserve(8);
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
