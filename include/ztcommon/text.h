// Text and language: character classification (ZtChar), scripts (ZtScript), languages
// (ZtLang) and sets of code points (ZtUnicodeRange, in text_unicode_range.h).
#pragma once

#include <cstdint>
#include <unordered_map>

#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/uscript.h>

#include "ztcommon/export.h"
#include "ztcommon/foundation.h"
#include "ztcommon/text_ranges.h"
#include "ztcommon/text_unicode_range.h"
#include "ztcommon/value.h"

namespace ZtCommonNS {

using icu::UnicodeString;

// Vertical orientation classes of Unicode's Vertical_Orientation property (UAX #50). The
// numbers equal ICU's UVerticalOrientation values.
enum TR50Property : int8_t {
    TR50_R = 0,  // rotated 90 degrees clockwise
    TR50_TR = 1, // a vertical form, falling back to rotated
    TR50_TU = 2, // a vertical form, falling back to upright
    TR50_U = 3,  // upright, as in the code charts
};

// A code point's vertical orientation in the two contexts a layout engine meets:
// `svo` when the character is set on its own (a single letter or digit among vertical
// Japanese text, or text that is set upright throughout), `mvo` when it is part of a run of
// characters set together (a Latin word, which is turned sideways as a whole).
struct TR50VO {
    TR50Property svo;
    TR50Property mvo;
    bool operator==(const TR50VO&) const = default;
};

// Caller-supplied overrides of the vertical orientation, keyed by code point.
using TR50VOMap = std::unordered_map<UChar32, TR50VO>;

// How isInseparableCharEx judges whether a pair of characters may be broken between.
enum INSEPARABLECHAR_METHOD : int {
    INSEPARABLECHAR_NONE = 0,  // every pair may be broken
    INSEPARABLECHAR_JIS = 1,   // the pairs of isInseparableChar (Japanese typesetting)
    INSEPARABLECHAR_UAX14 = 2, // the pairs Unicode line breaking never breaks by class alone:
                               // anything before an inseparable (IN), and B2 followed by B2
    INSEPARABLECHAR_ALL = 3,   // either of the two
};

// Classification of Unicode code points (signed 32-bit; negative values and values above
// U+10FFFF are never characters). A class of static functions without state.
//
// Functions backed by ICU properties look up U+337B wherever they are asked about U+32FF
// (getEastAsianWidth, getCategory, getIntPropertyValue, the code-point forms of isZenkaku,
// isZenkakuAmbiguous and isHankaku, isGraphemeCluster, isUndefined, isZeroWidthControlCode):
// host programs rely on the answers of that substitution. getLineBreak and the category
// tests (isControl, isLetter, isPunct, ...) ask ICU about the character itself. All other
// functions are decided by fixed ranges and never call ICU.
class ZT_EXPORT ZtChar {
public:
    ZtChar& operator=(const ZtChar&) = default;

    // ---- XML characters and names
    static bool isValidChar(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kValidChar);
    } // XML 1.0 Char
    static bool isValidChar11(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kValidChar11);
    } // XML 1.1 Char without the restricted controls
    // Name start characters stop before U+F0000 (planes 15 and 16 are excluded on purpose).
    static bool isNCNameStartChar(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kNCNameStartChar);
    }
    static bool isNCNameChar(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kNCNameChar);
    }
    static bool isNCNameCharForCSSExp(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kNCNameCharForCSSExp);
    } // isNCNameChar without "-"
    static bool isNameStartChar(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kNameStartChar);
    } // the NC forms plus ":"
    static bool isNameChar(UChar32 c) { return ZtCharRanges::inRanges(c, ZtCharRanges::kNameChar); }
    static bool isNCNameStr(const UnicodeString& s); // non-empty and a valid NCName
    static bool isNameStr(const UnicodeString& s);
    static bool isMIMETokenChar(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kMIMETokenChar);
    }

    // ---- White space and breaks
    static bool isWhitespace(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kWhitespace);
    } // TAB, LF, CR, SPACE
    static bool isCssWhitespace(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kCssWhitespace);
    }
    static bool isCssWhitespaceWoNewline(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kCssWhitespaceWoNewline);
    }
    static bool isCssNewline(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kCssNewline);
    }
    static bool isSpaceChar(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kSpaceChar);
    } // SPACE, NO-BREAK SPACE
    static bool isSpaceChar2(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kSpaceChar2);
    } // isWhitespace or NO-BREAK SPACE
    static bool isHardBreak(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kHardBreak);
    }
    static bool isHardBreakOrInvalid(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kHardBreakOrInvalid);
    } // also U+FFFF, what reading past a text gives
    static bool isFixedWidthSpaceChar(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kFixedWidthSpaceChar);
    }
    static bool isZeroWidthSpaceChar(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kZeroWidthSpaceChar);
    }
    static bool isEmptyOrWhitespace(const UnicodeString& s);
    static bool isWhitespace(const UnicodeString& s); // non-empty and only white space
    static bool isZeroWidthControlCode(UChar32 c);

    // ---- ASCII
    static bool isAsciiDigit(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kAsciiDigit);
    }
    static bool isAsciiDigitNonzero(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kAsciiDigitNonzero);
    }
    static bool isAsciiLetter(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kAsciiLetter);
    }
    static bool isHexDigit(UChar32 c) { return ZtCharRanges::inRanges(c, ZtCharRanges::kHexDigit); }
    // Value of a hexadecimal digit. No check is made: "g" gives 16.
    static int hex2dig(UChar32 c) { return c >= '0' && c <= '9' ? c - '0' : ((c - 1) & 15) + 10; }

    // ---- East Asian width
    static UEastAsianWidth getEastAsianWidth(UChar32 c);
    static bool isZenkaku(UChar32 c); // full-width or wide
    static bool isZenkaku(UEastAsianWidth width);
    static bool isZenkakuAmbiguous(UChar32 c); // ambiguous, full-width or wide
    static bool isZenkakuAmbiguous(UEastAsianWidth width);
    static bool isHankaku(UChar32 c); // half-width only
    static bool isHankaku(UEastAsianWidth width);
    static bool isHankakuChar(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kHankakuChar);
    } // ASCII or half-width katakana
    static bool isHankakuKana(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kHankakuKana);
    }
    static bool isHalf(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kHalf);
    } // the Windows Latin-1 repertoire, plus U+2010

    // ---- General category
    static UCharCategory getCategory(UChar32 c);
    static bool isControl(UChar32 c); // Cc, Cf, Co, Cs, Cn
    static bool isLetter(UChar32 c);
    static bool isNumber(UChar32 c);
    static bool isLetterNumber(UChar32 c);
    static bool isPunct(UChar32 c); // the P categories, and U+FF5E
    static bool isPunct(UCharCategory category);
    static bool isSymbol(UChar32 c);
    static bool isAlphabetic(UChar32 c);
    static bool isGraphemeCluster(UChar32 c); // can start a grapheme cluster
    static bool isUndefined(UChar32 c);       // unassigned and not a known currency sign

    // ---- Line breaking
    static ULineBreak getLineBreak(UChar32 c);
    static bool isOpenParenEtc(UChar32 c);
    static bool isCloseParenEtc(UChar32 c);
    static bool isHalfPunct(UChar32 c);

    // ---- Other fixed sets
    static bool isHyphen(UChar32 c, bool noSoftHyphen = false) {
        return noSoftHyphen ? ZtCharRanges::inRanges(c, ZtCharRanges::kHyphenNoSoftHyphen)
                            : ZtCharRanges::inRanges(c, ZtCharRanges::kHyphen);
    }
    static bool isMathOperator(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kMathOperator);
    }
    static bool isArabic(UChar32 c) { return ZtCharRanges::inRanges(c, ZtCharRanges::kArabic); }
    static bool isArabicScript(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kArabicScript);
    } // without the Arabic digits
    static bool isHebrewScript(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kHebrewScript);
    }
    static bool isDevanagariScript(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kDevanagariScript);
    }
    static bool isPUA(UChar32 c) { return ZtCharRanges::inRanges(c, ZtCharRanges::kPUA); }
    static bool isZenkakuMidDotEtc(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kZenkakuMidDotEtc);
    }
    static bool isFullStopChar(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kFullStopChar);
    }
    static bool isVariationSelectorCharacter(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kVariationSelector);
    }
    static bool isIdeographicVariationSelectorCharacter(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kIdeographicVariationSelector);
    }
    static bool isCurrencySymbol(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kCurrencySymbol);
    }
    static bool isBullet(UChar32 c) { return ZtCharRanges::inRanges(c, ZtCharRanges::kBullet); }
    static bool isAmbiguousHan(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kAmbiguousHan);
    }
    static bool isKanaKanjiCJK(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kKanaKanjiCJK);
    }
    static bool isNonStarterJIS(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kNonStarterJIS);
    }
    static bool isNoVerticalChar(UChar32 c) {
        return ZtCharRanges::inRanges(c, ZtCharRanges::kNoVertical);
    }
    // The symbols of JIS X 0208 rows 1, 2 and 8 (punctuation, signs, box drawing) under every
    // Japanese mapping ICU knows, so that variants such as U+301C and U+FF5E both count.
    static bool isSymbolJIS(UChar32 c);
    static bool isInseparableChar(UChar32 c, UChar32 next) {
        if (ZtCharRanges::inRanges(c, ZtCharRanges::kInseparableRepeated))
            return next == c;
        return next == 0x3035 && ZtCharRanges::inRanges(c, ZtCharRanges::kKunojitenUpper);
    }
    static bool isInseparableCharEx(UChar32 c, UChar32 next, INSEPARABLECHAR_METHOD method);

    // ---- Conversions
    static UChar32 toZenkaku(UChar32 c); // printable ASCII to the full-width forms
    static UnicodeString toZenkaku(const UnicodeString& s);
    static UChar32 toZenkakuKana(UChar32 c); // half-width katakana to full-width
    static UnicodeString toZenkakuKana(const UnicodeString& s);
    static UChar32 toFullsizeKana(UChar32 c); // small kana to full size
    static UnicodeString toFullsizeKana(const UnicodeString& s);
    static UnicodeString getMirrorString(const UnicodeString& s);
    // The last code unit / code point; U+FFFF for an empty text.
    static UChar last(const UnicodeString& s) { return s.charAt(s.length() - 1); }
    static UChar32 last32(const UnicodeString& s) { return s.char32At(s.length() - 1); }
    // One UTF-8 sequence of 1 to 4 bytes (the lead byte tells how many are used); anything
    // ill-formed (bad lead, bad continuation, overlong form, surrogate, beyond U+10FFFF)
    // gives U+FFFD.
    static UChar32 UTF8toUChar32(uint8_t b0, uint8_t b1 = 0, uint8_t b2 = 0, uint8_t b3 = 0);
    // A non-surrogate `hi` as it is; a surrogate pair combined; a high surrogate without a low
    // one, or a lone low surrogate, gives U+FFFD.
    static UChar32 UTF16toUChar32(UChar hi, UChar lo);

    // Turns any text into a valid NCName and back. `escape` must be an ASCII letter or "_"
    // (anything else raises ZtError code 4). Every UTF-16 unit that cannot stand at its place
    // in an NCName, and the escape character itself, becomes the escape character followed by
    // the unit's four upper-case hexadecimal digits; the empty text becomes the escape
    // character alone. Lone surrogates are escaped unit by unit, so every text round-trips.
    // unescapeNCNameStr decodes such sequences and keeps any other character as it stands.
    static UnicodeString escapeNCNameStr(const UnicodeString& s, char escape = '_');
    static UnicodeString unescapeNCNameStr(const UnicodeString& s, char escape = '_');
    // Replaces, code point by code point, what cannot stand in a CSS identifier by
    // `replacement`: a leading "-" is kept (also a second one), a digit cannot come first,
    // and letters, "_", digits, "-", U+00B7, the non-ASCII identifier ranges of CSS and
    // everything from U+10000 up are kept. The length in code points does not change.
    static UnicodeString replaceToCSSIdentTokenStr(const UnicodeString& s, char replacement = '_');

    // ---- Vertical orientation
    // Unicode's Vertical_Orientation of c.
    static TR50Property getTR50Property(UChar32 c);
    // The orientation of c set on its own: the map's record when it has one, else upright
    // for the characters Unicode rotates (TR50_TU for those with a rotated vertical form).
    static TR50Property getTR50SVO(UChar32 c, const TR50VOMap& map);
    // The orientation of c within a run of characters: the map's record when it has one,
    // else Unicode's Vertical_Orientation.
    static TR50Property getTR50MVO(UChar32 c, const TR50VOMap& map);

    // ICU's u_getIntPropertyValue, asked about U+337B in place of U+32FF.
    static int32_t getIntPropertyValue(UChar32 c, UProperty property);
};

// Script codes the library gives itself, beside ICU's UScriptCode values (which are never
// negative apart from USCRIPT_INVALID_CODE).
enum ZtScriptCode : int32_t {
    ZT_SCRIPT_NONE = -1, // no script ("none"; also what an unknown name gives)
    ZT_SCRIPT_AUTO = -2, // automatic: the script is to be found from the text ("auto")
};

// A writing system, as an ICU script code or one of the library's own codes, with the
// typesetting questions that depend on it. A small value class.
class ZT_EXPORT ZtScript {
public:
    ZtScript() = default; // automatic
    ZtScript(UScriptCode code) : code_(code) {}
    // A script from its name: "auto" and "none" (in any case); an ISO 15924 code or an ICU
    // script name ("Latn", "Jpan", "Hrkt", "Zmth", "Latin", also "Math" for Zmth); or a language,
    // whose script it takes: Japanese ("ja", "jpn") gives Jpan, Korean ("ko", "kor") Kore,
    // Chinese Hans or Hant by its script or country ("zh-CN", "zho-TWN", "zh-Hant") and Hani
    // without either, other languages the script ICU gives them ("ru" Cyrl, "ara" Arab).
    // Anything else gives ZT_SCRIPT_NONE.
    explicit ZtScript(const UnicodeString& name);
    explicit ZtScript(ZtName name);

    // The script of one character (the library's rules first, then ICU).
    static ZtScript getScript(UChar32 c);
    // The script of a text. With `majority` false: the script of the first character that
    // has one of its own (not Common, Inherited or Unknown). With `majority` true: the script
    // most of those characters have (the first one seen wins a tie), where Han or kana in a
    // text that holds kana count as Jpan, and Han or Hangul in a text that holds both as
    // Kore. A text without such characters gives Common.
    static ZtScript getScriptFromText(const UnicodeString& text, bool majority = true);

    int32_t getCode() const { return code_; }
    // The name of the script: "auto", "none", or ICU's ISO 15924 code ("Latn", "Jpan").
    ZtName getScriptCode() const;
    // The string of getScriptCode(); valid while the shared name table lives.
    const UnicodeString& toString() const;
    // ICU's long name ("Latin", "Japanese"); "auto" or "none" for the library's codes.
    UnicodeString getScriptName() const;

    bool isAuto() const { return code_ == ZT_SCRIPT_AUTO; }
    bool isKanaScript() const { return isKanaScript(static_cast<UScriptCode>(code_)); }
    static bool isKanaScript(UScriptCode code) {
        return code == USCRIPT_HIRAGANA || code == USCRIPT_KATAKANA ||
               code == USCRIPT_KATAKANA_OR_HIRAGANA;
    }
    bool isJA() const { return isKanaScript() || code_ == USCRIPT_JAPANESE; }
    bool isSC() const { return code_ == USCRIPT_SIMPLIFIED_HAN; }
    bool isTC() const { return code_ == USCRIPT_TRADITIONAL_HAN; }
    bool isCJK() const;
    bool isCJKorAuto() const { return isAuto() || isCJK(); }
    bool isCJKJustify() const {
        return isCJK() && code_ != USCRIPT_HANGUL && code_ != USCRIPT_KOREAN;
    }
    bool isLatinGroup() const;
    bool isHangingBaseline() const;
    // Whether c is set full-width in text of this script: full-width and wide characters
    // always; ambiguous ones in CJK scripts when they are JIS symbols or not Latin.
    bool isZenkakuScript(UChar32 c) const;
    // A representative letter of the script (U+FFFF when there is none).
    wchar_t getA() const;

    bool operator==(const ZtScript& other) const { return code_ == other.code_; }

private:
    int32_t code_ = ZT_SCRIPT_AUTO;
};

// Windows locale identifiers, as ICU's Locale::getLCID gives them.
enum LanguageID : uint32_t {
    LANGID_NONE = 0,
    LANGID_ENGLISH_US = 0x0409,
    LANGID_JAPANESE = 0x0411,
    LANGID_KOREAN = 0x0412,
    LANGID_CHINESE_TW = 0x0404,
    LANGID_CHINESE_CN = 0x0804,
};

// A language, as an ICU locale, made from the forms style sheets and documents use: two- and
// three-letter codes (both ISO 639-2 code sets, the bibliographic ones mapped to the
// terminology ones), with script and country ("zh-Hant-TW", "ja_JP"), and the keyword "none"
// for no language. Adds no members to Locale.
class ZT_EXPORT ZtLang : public icu::Locale {
public:
    ZtLang(); // the null language
    ZtLang(const UnicodeString& language);
    ZtLang(const char* language);
    ZtLang(const UnicodeString& language, const UnicodeString& country);
    explicit ZtLang(ZtName name);
    explicit ZtLang(ZtNameEnum name);
    ZtLang(const icu::Locale& locale) : Locale(locale) {}
    ZtLang(const ZtLang& other) = default;
    ZtLang& operator=(const ZtLang& other) = default;
    ~ZtLang() override;

    static ZtLang getDefaultLocale();
    // True when the default locale's language is Japanese (by ISO 639-2 code).
    static bool isDefaultLocaleJapanese();
    // Frees the process-wide alias table (it is built again when needed). Also run by
    // ZtUtil::cleanup. Call it when no other thread is making languages.
    static void cleanup();

    UnicodeString getLanguage() const;
    UnicodeString getLangScript() const;
    UnicodeString getCountry() const;
    ZtName getLanguageName() const;
    UnicodeString getISO3Country() const;
    UnicodeString getISO3Language() const;

    // "language[-Script][-COUNTRY][-variant]" as the locale holds them ("ja-JP", "zh-Hant-TW");
    // empty for the null language.
    UnicodeString toString() const;
    // The three-letter forms: "language[-Script][-COUNTRY]" ("jpn-JPN", "zho-Hant-TWN"); a part
    // without a three-letter code is given as it stands.
    UnicodeString toISO3String() const;
    // ICU's complete locale identifier, keywords included ("de_DE@collation=phonebook").
    UnicodeString toFullString() const;
    ZtScript toScript() const { return ZtScript(toISO3String()); }
    LanguageID getLCID() const { return static_cast<LanguageID>(Locale::getLCID()); }

    bool isNullLang() const { return *Locale::getLanguage() == '\0'; }
    // A language part that ICU has no three-letter code for.
    bool isInvalid() const { return !isNullLang() && *Locale::getISO3Language() == '\0'; }

    bool operator==(const ZtLang& other) const { return Locale::operator==(other); }
    bool operator!=(const ZtLang& other) const { return !(*this == other); }
    // Orders by language, then country; the script is ignored on purpose, so locales that
    // differ only in script are equivalent in ordered containers.
    bool operator<(const ZtLang& other) const;
};

} // namespace ZtCommonNS
