// Character classification over 10 million code points of mixed Japanese, Latin and Arabic
// text: the fixed-range family of ZtChar against the ICU property lookups a caller would use
// in its place, timed interleaved in the same run and reported as a ratio per call; and the
// script of each code point by ZtScript::getScript and by ICU.
#include <ctime>
#include <vector>

#include <benchmark/benchmark.h>

#include <unicode/uchar.h>
#include <unicode/uscript.h>

#include "ztcommon/text.h"

using namespace ZtCommonNS;

namespace {

constexpr size_t kCodePoints = 10'000'000;

const std::vector<UChar32>& mixedText() {
    static const std::vector<UChar32> text = [] {
        const UnicodeString sample(
            u"縦書きの組版では、句読点（。、）や括弧「」が回転せずに置かれる。"
            u"Die Schriftsätze, the quick brown fox — “quoted” text, 3.14 × 2 = 6.28! "
            u"اللغة العربية تكتب من اليمين إلى اليسار ١٢٣ "
            u"ｶﾀｶﾅ ＡＢＣ１２３ 𠀋𡈽 ");
        std::vector<UChar32> out;
        out.reserve(kCodePoints);
        while (out.size() < kCodePoints) {
            for (int32_t i = 0; i < sample.length() && out.size() < kCodePoints;) {
                const UChar32 c = sample.char32At(i);
                out.push_back(c);
                i += U16_LENGTH(c);
            }
        }
        return out;
    }();
    return text;
}

// Every fixed-range classification of a code point.
inline unsigned fixedRangeFamily(UChar32 c) {
    unsigned n = 0;
    n += ZtChar::isValidChar(c);
    n += ZtChar::isValidChar11(c);
    n += ZtChar::isNCNameStartChar(c);
    n += ZtChar::isNameStartChar(c);
    n += ZtChar::isNCNameChar(c);
    n += ZtChar::isNameChar(c);
    n += ZtChar::isNCNameCharForCSSExp(c);
    n += ZtChar::isMIMETokenChar(c);
    n += ZtChar::isWhitespace(c);
    n += ZtChar::isCssWhitespace(c);
    n += ZtChar::isCssWhitespaceWoNewline(c);
    n += ZtChar::isCssNewline(c);
    n += ZtChar::isSpaceChar(c);
    n += ZtChar::isSpaceChar2(c);
    n += ZtChar::isHardBreak(c);
    n += ZtChar::isHardBreakOrInvalid(c);
    n += ZtChar::isFixedWidthSpaceChar(c);
    n += ZtChar::isZeroWidthSpaceChar(c);
    n += ZtChar::isAsciiDigit(c);
    n += ZtChar::isAsciiDigitNonzero(c);
    n += ZtChar::isAsciiLetter(c);
    n += ZtChar::isHexDigit(c);
    n += ZtChar::isHankakuChar(c);
    n += ZtChar::isHankakuKana(c);
    n += ZtChar::isHalf(c);
    n += ZtChar::isHyphen(c);
    n += ZtChar::isMathOperator(c);
    n += ZtChar::isArabic(c);
    n += ZtChar::isArabicScript(c);
    n += ZtChar::isHebrewScript(c);
    n += ZtChar::isDevanagariScript(c);
    n += ZtChar::isPUA(c);
    n += ZtChar::isZenkakuMidDotEtc(c);
    n += ZtChar::isFullStopChar(c);
    n += ZtChar::isVariationSelectorCharacter(c);
    n += ZtChar::isIdeographicVariationSelectorCharacter(c);
    n += ZtChar::isCurrencySymbol(c);
    n += ZtChar::isBullet(c);
    n += ZtChar::isAmbiguousHan(c);
    n += ZtChar::isKanaKanjiCJK(c);
    n += ZtChar::isNonStarterJIS(c);
    n += ZtChar::isNoVerticalChar(c);
    return n;
}
constexpr int kFamilySize = 42;

// For each function above, the ICU lookup that answers the nearest Unicode question.
inline unsigned icuCounterparts(UChar32 c) {
    unsigned n = 0;
    UErrorCode status = U_ZERO_ERROR;
    n += u_isdefined(c);                                               // isValidChar
    n += u_isdefined(c);                                               // isValidChar11
    n += u_hasBinaryProperty(c, UCHAR_XID_START);                      // isNCNameStartChar
    n += u_hasBinaryProperty(c, UCHAR_XID_START);                      // isNameStartChar
    n += u_hasBinaryProperty(c, UCHAR_XID_CONTINUE);                   // isNCNameChar
    n += u_hasBinaryProperty(c, UCHAR_XID_CONTINUE);                   // isNameChar
    n += u_hasBinaryProperty(c, UCHAR_XID_CONTINUE);                   // isNCNameCharForCSSExp
    n += u_isgraph(c);                                                 // isMIMETokenChar
    n += u_isUWhiteSpace(c);                                           // isWhitespace
    n += u_isUWhiteSpace(c);                                           // isCssWhitespace
    n += u_isblank(c);                                                 // isCssWhitespaceWoNewline
    n += u_getIntPropertyValue(c, UCHAR_LINE_BREAK) == U_LB_LINE_FEED; // isCssNewline
    n += u_isspace(c);                                                 // isSpaceChar
    n += u_isspace(c);                                                 // isSpaceChar2
    n += u_getIntPropertyValue(c, UCHAR_LINE_BREAK) == U_LB_MANDATORY_BREAK; // isHardBreak
    n += u_getIntPropertyValue(c, UCHAR_LINE_BREAK) == U_LB_MANDATORY_BREAK; // ...OrInvalid
    n += u_charType(c) == U_SPACE_SEPARATOR;                              // isFixedWidthSpaceChar
    n += u_hasBinaryProperty(c, UCHAR_DEFAULT_IGNORABLE_CODE_POINT);      // isZeroWidthSpaceChar
    n += u_isdigit(c);                                                    // isAsciiDigit
    n += u_isdigit(c);                                                    // isAsciiDigitNonzero
    n += u_isalpha(c);                                                    // isAsciiLetter
    n += u_isxdigit(c);                                                   // isHexDigit
    n += u_getIntPropertyValue(c, UCHAR_EAST_ASIAN_WIDTH) == U_EA_NARROW; // isHankakuChar
    n += u_getIntPropertyValue(c, UCHAR_EAST_ASIAN_WIDTH) == U_EA_HALFWIDTH; // isHankakuKana
    n += u_getIntPropertyValue(c, UCHAR_EAST_ASIAN_WIDTH) == U_EA_NARROW;    // isHalf
    n += u_hasBinaryProperty(c, UCHAR_DASH);                                 // isHyphen
    n += u_hasBinaryProperty(c, UCHAR_MATH);                                 // isMathOperator
    n += uscript_getScript(c, &status) == USCRIPT_ARABIC;                    // isArabic
    n += uscript_getScript(c, &status) == USCRIPT_ARABIC;                    // isArabicScript
    n += uscript_getScript(c, &status) == USCRIPT_HEBREW;                    // isHebrewScript
    n += uscript_getScript(c, &status) == USCRIPT_DEVANAGARI;                // isDevanagariScript
    n += u_charType(c) == U_PRIVATE_USE_CHAR;                                // isPUA
    n += u_hasBinaryProperty(c, UCHAR_TERMINAL_PUNCTUATION);                 // isZenkakuMidDotEtc
    n += u_hasBinaryProperty(c, UCHAR_TERMINAL_PUNCTUATION);                 // isFullStopChar
    n += u_hasBinaryProperty(c, UCHAR_VARIATION_SELECTOR); // isVariationSelectorCharacter
    n += u_hasBinaryProperty(c, UCHAR_VARIATION_SELECTOR); // isIdeographicVariation...
    n += u_charType(c) == U_CURRENCY_SYMBOL;               // isCurrencySymbol
    n += u_charType(c) == U_OTHER_PUNCTUATION;             // isBullet
    n += u_hasBinaryProperty(c, UCHAR_IDEOGRAPHIC);        // isAmbiguousHan
    n += u_hasBinaryProperty(c, UCHAR_UNIFIED_IDEOGRAPH);  // isKanaKanjiCJK
    n += u_getIntPropertyValue(c, UCHAR_LINE_BREAK) == U_LB_NONSTARTER;        // isNonStarterJIS
    n += u_getIntPropertyValue(c, UCHAR_VERTICAL_ORIENTATION) == U_VO_ROTATED; // isNoVertical
    return n;
}

// CPU time of this thread: the machine is shared, so wall time would count other work too.
double threadCpuNanoseconds() {
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) * 1e9 + static_cast<double>(t.tv_nsec);
}

template <unsigned (*Classify)(UChar32)>
double nanosecondsPerCall(const std::vector<UChar32>& text) {
    const double start = threadCpuNanoseconds();
    unsigned sum = 0;
    for (UChar32 c : text)
        sum += Classify(c);
    benchmark::DoNotOptimize(sum);
    return (threadCpuNanoseconds() - start) / (static_cast<double>(text.size()) * kFamilySize);
}

} // namespace

// Both families over the same 10 million code points, interleaved so that slow and fast
// phases of the machine hit both; `ratio` is ICU's time per call over ours.
static void BM_FixedRangeVsIcu(benchmark::State& state) {
    const auto& text = mixedText();
    double zt = 0, icu = 0;
    for (auto _ : state) {
        zt += nanosecondsPerCall<fixedRangeFamily>(text);
        icu += nanosecondsPerCall<icuCounterparts>(text);
    }
    state.counters["zt_ns_per_call"] = zt / static_cast<double>(state.iterations());
    state.counters["icu_ns_per_call"] = icu / static_cast<double>(state.iterations());
    state.counters["ratio"] = icu / zt;
}
BENCHMARK(BM_FixedRangeVsIcu)->Unit(benchmark::kMillisecond)->Iterations(3);

namespace {

unsigned ztScript(UChar32 c) {
    return static_cast<unsigned>(ZtScript::getScript(c).getCode());
}

unsigned icuScript(UChar32 c) {
    UErrorCode status = U_ZERO_ERROR;
    return static_cast<unsigned>(uscript_getScript(c, &status));
}

// One pass of `Classify` over the text per iteration.
template <unsigned (*Classify)(UChar32)> void overText(benchmark::State& state) {
    const auto& text = mixedText();
    for (auto _ : state) {
        unsigned sum = 0;
        for (UChar32 c : text)
            sum += Classify(c);
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}

} // namespace

// Each family alone.
BENCHMARK(overText<fixedRangeFamily>)->Name("BM_FixedRangeFamily")->Unit(benchmark::kMillisecond);
BENCHMARK(overText<icuCounterparts>)->Name("BM_IcuCounterparts")->Unit(benchmark::kMillisecond);
// The script of every code point: ZtScript's rules in front of ICU against ICU alone.
BENCHMARK(overText<ztScript>)->Name("BM_GetScript")->Unit(benchmark::kMillisecond);
BENCHMARK(overText<icuScript>)->Name("BM_IcuGetScript")->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
