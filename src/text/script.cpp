// ZtScript: the script of a character or a text, script names, and the script classes that
// typesetting asks about.
#include <array>
#include <cstring>

#include <unicode/uloc.h>
#include <unicode/uscript.h>

#include "ztcommon/text.h"

namespace ZtCommonNS {

using namespace ZtCharRanges;

namespace {

// The script of a language given as "lang[-Script][-COUNTRY]" (either separator), for the
// languages whose script ICU cannot tell alone: Japanese and Korean mix several scripts, and
// Chinese depends on script or country. ZT_SCRIPT_NONE when the language is none of these.
int32_t cjkLanguageScript(const char* id) {
    char language[ULOC_LANG_CAPACITY] = "";
    char script[ULOC_SCRIPT_CAPACITY] = "";
    char country[ULOC_COUNTRY_CAPACITY] = "";
    UErrorCode status = U_ZERO_ERROR;
    uloc_getLanguage(id, language, sizeof language, &status);
    uloc_getScript(id, script, sizeof script, &status);
    uloc_getCountry(id, country, sizeof country, &status);
    if (U_FAILURE(status))
        return ZT_SCRIPT_NONE;
    auto is = [&](const char* a, const char* b) { return !std::strcmp(a, b); };
    if (is(language, "ja") || is(language, "jpn"))
        return USCRIPT_JAPANESE;
    if (is(language, "ko") || is(language, "kor"))
        return USCRIPT_KOREAN;
    if (!is(language, "zh") && !is(language, "zho") && !is(language, "chi"))
        return ZT_SCRIPT_NONE;
    if (!std::strcmp(script, "Hans"))
        return USCRIPT_SIMPLIFIED_HAN;
    if (!std::strcmp(script, "Hant"))
        return USCRIPT_TRADITIONAL_HAN;
    for (const char* simplified : {"CN", "CHN", "SG", "SGP"}) {
        if (is(country, simplified))
            return USCRIPT_SIMPLIFIED_HAN;
    }
    for (const char* traditional : {"TW", "TWN", "HK", "HKG", "MO", "MAC"}) {
        if (is(country, traditional))
            return USCRIPT_TRADITIONAL_HAN;
    }
    return USCRIPT_HAN;
}

int32_t scriptFromName(const UnicodeString& name) {
    if (name.caseCompare(u"auto", 0) == 0)
        return ZT_SCRIPT_AUTO;
    if (name.caseCompare(u"none", 0) == 0 || name.isEmpty())
        return ZT_SCRIPT_NONE;
    if (name.caseCompare(u"Math", 0) == 0) // the OpenType tag of mathematical notation
        return USCRIPT_MATHEMATICAL_NOTATION;
    // Names and language codes are ASCII; anything else names no script.
    std::string id;
    for (int32_t i = 0; i < name.length(); ++i) {
        const UChar u = name.charAt(i);
        if (u == 0 || u >= 0x80)
            return ZT_SCRIPT_NONE;
        id += static_cast<char>(u);
    }
    if (const int32_t cjk = cjkLanguageScript(id.c_str()); cjk != ZT_SCRIPT_NONE)
        return cjk;
    UScriptCode codes[8];
    UErrorCode status = U_ZERO_ERROR;
    const int32_t n = uscript_getCode(id.c_str(), codes, 8, &status);
    if (U_FAILURE(status) || n < 1)
        return ZT_SCRIPT_NONE;
    return codes[0];
}

UChar32 icuSubstitute(UChar32 c) {
    return c == 0x32FF ? 0x337B : c;
}

bool isStrong(int32_t code) {
    return code != USCRIPT_COMMON && code != USCRIPT_INHERITED && code != USCRIPT_UNKNOWN &&
           code != USCRIPT_INVALID_CODE;
}

} // namespace

ZtScript::ZtScript(const UnicodeString& name) : code_(scriptFromName(name)) {}

ZtScript::ZtScript(ZtName name) {
    if (name == NM_auto)
        code_ = ZT_SCRIPT_AUTO;
    else if (name == NM_none)
        code_ = ZT_SCRIPT_NONE;
    else
        code_ = scriptFromName(name);
}

ZtScript ZtScript::getScript(UChar32 c) {
    if (c >= 0 && c < 0x80) // ASCII: Latin letters, everything else common (what ICU says too)
        return ZtChar::isAsciiLetter(c) ? USCRIPT_LATIN : USCRIPT_COMMON;
    if (ZtChar::isHebrewScript(c))
        return USCRIPT_HEBREW;
    if (ZtChar::isArabic(c)) {
        // The Arabic-Indic digits are neutral, as Unicode had them when these rules were
        // made; ICU now puts them in the Arabic script, so the answer is given here.
        return ZtChar::isArabicScript(c) ? USCRIPT_ARABIC : USCRIPT_COMMON;
    }
    if (ZtChar::isDevanagariScript(c))
        return USCRIPT_DEVANAGARI;
    if (inRanges(c, kLatinSigns))
        return USCRIPT_LATIN;
    if (inRanges(c, kKanaSoundMarks))
        return USCRIPT_KATAKANA_OR_HIRAGANA;
    c = icuSubstitute(c);
    if (ZtChar::isMathOperator(c))
        return USCRIPT_MATHEMATICAL_NOTATION;
    UErrorCode status = U_ZERO_ERROR;
    const UScriptCode code = uscript_getScript(c, &status);
    return U_SUCCESS(status) ? code : USCRIPT_UNKNOWN;
}

ZtScript ZtScript::getScriptFromText(const UnicodeString& text, bool majority) {
    // Counts per script code; the order of first appearance breaks ties.
    std::array<int32_t, USCRIPT_CODE_LIMIT> counts{};
    std::array<int32_t, USCRIPT_CODE_LIMIT> firstSeen{};
    int32_t seen = 0;
    for (int32_t i = 0, n = text.length(); i < n;) {
        const UChar32 c = text.char32At(i);
        i += U16_LENGTH(c);
        const int32_t code = getScript(c).code_;
        if (!isStrong(code) || code >= USCRIPT_CODE_LIMIT)
            continue;
        if (!majority)
            return static_cast<UScriptCode>(code);
        if (counts[static_cast<size_t>(code)]++ == 0)
            firstSeen[static_cast<size_t>(code)] = seen++;
    }
    int32_t best = USCRIPT_COMMON;
    for (int32_t code = 0; code < USCRIPT_CODE_LIMIT; ++code) {
        const auto k = static_cast<size_t>(code);
        if (counts[k] == 0)
            continue;
        const auto b = static_cast<size_t>(best);
        if (best == USCRIPT_COMMON || counts[k] > counts[b] ||
            (counts[k] == counts[b] && firstSeen[k] < firstSeen[b]))
            best = code;
    }
    auto has = [&](UScriptCode code) { return counts[static_cast<size_t>(code)] > 0; };
    const bool kana =
        has(USCRIPT_HIRAGANA) || has(USCRIPT_KATAKANA) || has(USCRIPT_KATAKANA_OR_HIRAGANA);
    if (kana && (best == USCRIPT_HAN || isKanaScript(static_cast<UScriptCode>(best))))
        return USCRIPT_JAPANESE;
    if (has(USCRIPT_HAN) && has(USCRIPT_HANGUL) && (best == USCRIPT_HAN || best == USCRIPT_HANGUL))
        return USCRIPT_KOREAN;
    return static_cast<UScriptCode>(best);
}

ZtName ZtScript::getScriptCode() const {
    if (code_ == ZT_SCRIPT_AUTO)
        return NM_auto;
    if (code_ < 0)
        return NM_none;
    const char* shortName = uscript_getShortName(static_cast<UScriptCode>(code_));
    if (shortName == nullptr)
        return NM_none;
    return ZtName(UnicodeString(shortName, -1, US_INV));
}

const UnicodeString& ZtScript::toString() const {
    return getScriptCode().getNameString();
}

UnicodeString ZtScript::getScriptName() const {
    if (code_ < 0)
        return toString();
    const char* name = uscript_getName(static_cast<UScriptCode>(code_));
    return name != nullptr ? UnicodeString(name, -1, US_INV) : toString();
}

bool ZtScript::isCJK() const {
    switch (code_) {
    case USCRIPT_BOPOMOFO:
    case USCRIPT_HAN:
    case USCRIPT_HANGUL:
    case USCRIPT_HIRAGANA:
    case USCRIPT_KATAKANA:
    case USCRIPT_KATAKANA_OR_HIRAGANA:
    case USCRIPT_SIMPLIFIED_HAN:
    case USCRIPT_TRADITIONAL_HAN:
    case USCRIPT_JAPANESE:
    case USCRIPT_KOREAN:
        return true;
    default:
        return false;
    }
}

bool ZtScript::isLatinGroup() const {
    switch (code_) {
    case USCRIPT_COMMON:
    case USCRIPT_ARMENIAN:
    case USCRIPT_CYRILLIC:
    case USCRIPT_GEORGIAN:
    case USCRIPT_GREEK:
    case USCRIPT_LATIN:
        return true;
    default:
        return false;
    }
}

bool ZtScript::isHangingBaseline() const {
    switch (code_) {
    case USCRIPT_BENGALI:
    case USCRIPT_DEVANAGARI:
    case USCRIPT_GUJARATI:
    case USCRIPT_GURMUKHI:
    case USCRIPT_TIBETAN:
        return true;
    default:
        return false;
    }
}

bool ZtScript::isZenkakuScript(UChar32 c) const {
    const UEastAsianWidth width = ZtChar::getEastAsianWidth(c);
    if (ZtChar::isZenkaku(width))
        return true;
    if (width == U_EA_AMBIGUOUS && isCJK())
        return ZtChar::isSymbolJIS(c) || getScript(c).code_ != USCRIPT_LATIN;
    return false;
}

wchar_t ZtScript::getA() const {
    switch (code_) {
    case USCRIPT_COMMON:
    case USCRIPT_LATIN:
        return L'A';
    case USCRIPT_ARABIC:
        return 0x0627;
    case USCRIPT_ARMENIAN:
        return 0x0531;
    case USCRIPT_CYRILLIC:
        return 0x0410;
    case USCRIPT_DEVANAGARI:
        return 0x0905;
    case USCRIPT_GEORGIAN:
        return 0x10A0;
    case USCRIPT_GREEK:
        return 0x0391;
    case USCRIPT_HAN:
    case USCRIPT_SIMPLIFIED_HAN:
    case USCRIPT_TRADITIONAL_HAN:
        return 0x4E9C;
    case USCRIPT_HANGUL:
    case USCRIPT_KOREAN:
        return 0xAC00;
    case USCRIPT_HEBREW:
        return 0x05D0;
    case USCRIPT_HIRAGANA:
    case USCRIPT_KATAKANA_OR_HIRAGANA:
    case USCRIPT_JAPANESE:
        return 0x3042;
    case USCRIPT_KATAKANA:
        return 0x30A2;
    case USCRIPT_THAI:
        return 0x0E01;
    case USCRIPT_TIBETAN:
        return 0x0F68;
    default:
        return 0xFFFF;
    }
}

} // namespace ZtCommonNS
