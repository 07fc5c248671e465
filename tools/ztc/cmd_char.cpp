// ztc char: what the library thinks of each character of a text: its script, East Asian
// width, line-break class, vertical orientation and the library's own character classes.
#include <iomanip>
#include <iostream>
#include <sstream>

#include <unicode/uchar.h>

#include "command.h"
#include "ztcommon/text.h"

namespace {

using namespace ZtCommonNS;

const char* shortValueName(UProperty property, int32_t value) {
    const char* name = u_getPropertyValueName(property, value, U_SHORT_PROPERTY_NAME);
    return name != nullptr ? name : "?";
}

const char* orientationName(TR50Property p) {
    switch (p) {
    case TR50_U:
        return "U";
    case TR50_R:
        return "R";
    case TR50_TU:
        return "Tu";
    case TR50_TR:
        return "Tr";
    }
    return "?";
}

std::string classes(UChar32 c) {
    struct Class {
        const char* name;
        bool member;
    };
    const ZtScript japanese(USCRIPT_JAPANESE);
    const Class all[] = {
        {"xml-char", ZtChar::isValidChar(c)},
        {"name-start", ZtChar::isNCNameStartChar(c)},
        {"name-char", ZtChar::isNCNameChar(c)},
        {"whitespace", ZtChar::isWhitespace(c)},
        {"css-whitespace", ZtChar::isCssWhitespace(c)},
        {"space", ZtChar::isSpaceChar(c)},
        {"hard-break", ZtChar::isHardBreak(c)},
        {"fixed-width-space", ZtChar::isFixedWidthSpaceChar(c)},
        {"zero-width-space", ZtChar::isZeroWidthSpaceChar(c)},
        {"zero-width-control", ZtChar::isZeroWidthControlCode(c)},
        {"letter", ZtChar::isLetter(c)},
        {"number", ZtChar::isNumber(c)},
        {"punct", ZtChar::isPunct(c)},
        {"symbol", ZtChar::isSymbol(c)},
        {"control", ZtChar::isControl(c)},
        {"undefined", ZtChar::isUndefined(c)},
        {"cluster-start", ZtChar::isGraphemeCluster(c)},
        {"zenkaku", ZtChar::isZenkaku(c)},
        {"zenkaku-ambiguous", ZtChar::isZenkakuAmbiguous(c) && !ZtChar::isZenkaku(c)},
        {"zenkaku-in-Jpan", japanese.isZenkakuScript(c)},
        {"hankaku", ZtChar::isHankaku(c)},
        {"hankaku-char", ZtChar::isHankakuChar(c)},
        {"half", ZtChar::isHalf(c)},
        {"open-paren", ZtChar::isOpenParenEtc(c)},
        {"close-paren", ZtChar::isCloseParenEtc(c)},
        {"half-punct", ZtChar::isHalfPunct(c)},
        {"hyphen", ZtChar::isHyphen(c)},
        {"math-operator", ZtChar::isMathOperator(c)},
        {"arabic-script", ZtChar::isArabicScript(c)},
        {"hebrew-script", ZtChar::isHebrewScript(c)},
        {"devanagari-script", ZtChar::isDevanagariScript(c)},
        {"pua", ZtChar::isPUA(c)},
        {"full-stop", ZtChar::isFullStopChar(c)},
        {"variation-selector", ZtChar::isVariationSelectorCharacter(c) ||
                                   ZtChar::isIdeographicVariationSelectorCharacter(c)},
        {"currency", ZtChar::isCurrencySymbol(c)},
        {"bullet", ZtChar::isBullet(c)},
        {"kana-kanji-cjk", ZtChar::isKanaKanjiCJK(c)},
        {"ambiguous-han", ZtChar::isAmbiguousHan(c)},
        {"non-starter", ZtChar::isNonStarterJIS(c)},
        {"no-vertical", ZtChar::isNoVerticalChar(c)},
        {"jis-symbol", ZtChar::isSymbolJIS(c)},
    };
    std::string out;
    for (const Class& k : all) {
        if (k.member)
            out.append(out.empty() ? "" : " ").append(k.name);
    }
    return out.empty() ? "-" : out;
}

void describe(UChar32 c) {
    char name[256] = "";
    UErrorCode status = U_ZERO_ERROR;
    u_charName(c, U_EXTENDED_CHAR_NAME, name, sizeof name, &status);
    std::cout << "U+" << std::hex << std::uppercase << std::setw(4) << std::setfill('0') << c
              << std::dec;
    if (ZtChar::isValidChar(c) && !ZtChar::isControl(c))
        std::cout << " '" << UnicodeString(c) << "'";
    std::cout << ' ' << name << '\n';
    const TR50VOMap noOverrides;
    std::cout << "    script " << ZtScript::getScript(c).toString() << "  width "
              << shortValueName(UCHAR_EAST_ASIAN_WIDTH, ZtChar::getEastAsianWidth(c))
              << "  line-break " << shortValueName(UCHAR_LINE_BREAK, ZtChar::getLineBreak(c))
              << "  vertical " << orientationName(ZtChar::getTR50MVO(c, noOverrides)) << " (alone "
              << orientationName(ZtChar::getTR50SVO(c, noOverrides)) << ")\n"
              << "    " << classes(c) << '\n';
}

// "3042", "U+3042" or "0x3042".
bool parseCodePoint(std::string text, UChar32& c) {
    if (text.size() > 2 && (text.compare(0, 2, "U+") == 0 || text.compare(0, 2, "u+") == 0))
        text.erase(0, 2);
    size_t used = 0;
    unsigned long value = 0;
    try {
        value = std::stoul(text, &used, 16);
    } catch (const std::exception&) {
        return false;
    }
    if (used != text.size() || value > 0x10FFFF)
        return false;
    c = static_cast<UChar32>(value);
    return true;
}

int run(const std::vector<std::string>& args) {
    bool codePoints = false;
    std::vector<UChar32> chars;
    std::vector<std::string> texts;
    for (const std::string& arg : args) {
        if (arg == "-u" || arg == "--code-points")
            codePoints = true;
        else
            texts.push_back(arg);
    }
    if (texts.empty())
        return ztcUsageError("char", "give a text, or code points after -u");
    for (const std::string& text : texts) {
        if (codePoints) {
            UChar32 c = 0;
            if (!parseCodePoint(text, c))
                return ztcUsageError("char", "'" + text + "' is not a code point in hex");
            chars.push_back(c);
            continue;
        }
        const UnicodeString s = UnicodeString::fromUTF8(text);
        for (int32_t i = 0; i < s.length(); i += U16_LENGTH(s.char32At(i)))
            chars.push_back(s.char32At(i));
    }
    for (UChar32 c : chars)
        describe(c);
    return 0;
}

ZtcCommand command{"char", "[-u] TEXT...",
                   "Shows script, width, line-break class, vertical orientation and the "
                   "library's classes of every character (with -u: of code points in hex).",
                   &run};
} // namespace
