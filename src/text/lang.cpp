// ZtLang: languages as ICU locales, made through the library's alias table.
#include <cstring>
#include <string>
#include <unordered_map>

#include "text/language_aliases.h"
#include "util/cleanup_registry.h"
#include "ztcommon/text.h"

namespace ZtCommonNS {

namespace {

using AliasTable = std::unordered_map<std::string, std::string>;

ZtLock& aliasLock() {
    static ZtLock instance;
    return instance;
}

// Built on first use and read-only afterwards; freed by ZtLang::cleanup.
AliasTable*& aliasTable() {
    static AliasTable* instance = nullptr;
    return instance;
}

AliasTable* buildAliasTable() {
    // "none" is no language. The ISO 639-2 bibliographic codes go to the terminology codes;
    // jav, scc and scr go to the codes ICU itself returns for those languages.
    return new AliasTable{{"none", ""},   {"wel", "cym"}, {"tib", "bod"}, {"slo", "slk"},
                          {"scc", "srp"}, {"rum", "ron"}, {"per", "fas"}, {"mao", "mri"},
                          {"may", "msa"}, {"mac", "mkd"}, {"jav", "jaw"}, {"ice", "isl"},
                          {"gre", "ell"}, {"ger", "deu"}, {"geo", "kat"}, {"fre", "fra"},
                          {"dut", "nld"}, {"cze", "ces"}, {"scr", "hrv"}, {"chi", "zho"},
                          {"bur", "mya"}, {"baq", "eus"}, {"arm", "hye"}, {"alb", "sqi"}};
}

// ZtUtil::cleanup releases the table too.
[[maybe_unused]] const bool kCleanupRegistered = [] {
    registerCleanupHandler(&ZtLang::cleanup);
    return true;
}();

std::string toInvariant(const UnicodeString& text) {
    std::string out;
    text.toUTF8String(out);
    return out;
}

// The locale code for a language text: the alias of the whole text, else the text with the
// alias of its language part ("ger-CH" becomes "deu-CH"), else the text as it is.
std::string resolveAlias(const std::string& text) {
    std::string code;
    if (lookupLanguageAlias(text, code))
        return code;
    const size_t end = text.find_first_of("-_");
    if (end != std::string::npos && lookupLanguageAlias(text.substr(0, end), code) && !code.empty())
        return code + text.substr(end);
    return text;
}

icu::Locale makeLocale(const std::string& text) {
    const std::string code = resolveAlias(text);
    if (code.empty())
        return icu::Locale("");
    return icu::Locale(code.c_str());
}

UnicodeString invariant(const char* s) {
    return UnicodeString(s, -1, US_INV);
}

// Joins the non-empty parts with "-".
UnicodeString joinParts(std::initializer_list<const char*> parts) {
    UnicodeString out;
    for (const char* part : parts) {
        if (part == nullptr || *part == '\0')
            continue;
        if (!out.isEmpty())
            out.append(u'-');
        out.append(UnicodeString(part, -1, US_INV));
    }
    return out;
}

} // namespace

bool lookupLanguageAlias(const std::string& text, std::string& code) {
    ZtMutex guard(aliasLock());
    if (aliasTable() == nullptr)
        aliasTable() = buildAliasTable();
    const auto found = aliasTable()->find(text);
    if (found == aliasTable()->end())
        return false;
    code = found->second;
    return true;
}

void releaseLanguageAliases() {
    ZtMutex guard(aliasLock());
    delete aliasTable();
    aliasTable() = nullptr;
}

bool languageAliasTableBuilt() {
    ZtMutex guard(aliasLock());
    return aliasTable() != nullptr;
}

ZtLang::ZtLang() : Locale("") {}

ZtLang::ZtLang(const UnicodeString& language) : Locale(makeLocale(toInvariant(language))) {}

ZtLang::ZtLang(const char* language) : Locale(makeLocale(language != nullptr ? language : "")) {}

ZtLang::ZtLang(const UnicodeString& language, const UnicodeString& country)
    : Locale(makeLocale(country.isEmpty() || language.isEmpty()
                            ? toInvariant(language)
                            : toInvariant(language) + "-" + toInvariant(country))) {}

ZtLang::ZtLang(ZtName name)
    : Locale(name == NM_none ? icu::Locale("") : makeLocale(toInvariant(name))) {}

ZtLang::ZtLang(ZtNameEnum name) : ZtLang(ZtName(name)) {}

ZtLang::~ZtLang() = default;

ZtLang ZtLang::getDefaultLocale() {
    return ZtLang(icu::Locale::getDefault());
}

bool ZtLang::isDefaultLocaleJapanese() {
    return std::strcmp(icu::Locale::getDefault().getISO3Language(),
                       icu::Locale::getJapanese().getISO3Language()) == 0;
}

void ZtLang::cleanup() {
    releaseLanguageAliases();
}

UnicodeString ZtLang::getLanguage() const {
    return invariant(Locale::getLanguage());
}
UnicodeString ZtLang::getLangScript() const {
    return invariant(Locale::getScript());
}
UnicodeString ZtLang::getCountry() const {
    return invariant(Locale::getCountry());
}
ZtName ZtLang::getLanguageName() const {
    return ZtName(getLanguage());
}
UnicodeString ZtLang::getISO3Country() const {
    return invariant(Locale::getISO3Country());
}
UnicodeString ZtLang::getISO3Language() const {
    return invariant(Locale::getISO3Language());
}

UnicodeString ZtLang::toString() const {
    return joinParts(
        {Locale::getLanguage(), Locale::getScript(), Locale::getCountry(), Locale::getVariant()});
}

UnicodeString ZtLang::toISO3String() const {
    auto orSelf = [](const char* iso3, const char* part) { return *iso3 ? iso3 : part; };
    return joinParts({orSelf(Locale::getISO3Language(), Locale::getLanguage()), Locale::getScript(),
                      orSelf(Locale::getISO3Country(), Locale::getCountry())});
}

UnicodeString ZtLang::toFullString() const {
    return invariant(Locale::getName());
}

bool ZtLang::operator<(const ZtLang& other) const {
    const int byLanguage = std::strcmp(Locale::getLanguage(), other.Locale::getLanguage());
    if (byLanguage != 0)
        return byLanguage < 0;
    return std::strcmp(Locale::getCountry(), other.Locale::getCountry()) < 0;
}

} // namespace ZtCommonNS
