// Text and language: character classification (ZtChar).
#pragma once

#include <cstdint>
#include <unordered_map>

#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include "ztcommon/export.h"
#include "ztcommon/foundation.h"
#include "ztcommon/text_ranges.h"

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

} // namespace ZtCommonNS
