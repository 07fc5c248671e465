// Counter-style formatting speed: one million numbers per run in decimal, lower-roman and
// cjk-ideographic, reported per call, beside ICU's formatters for the same texts (its
// DecimalFormat, and its rule-based Roman and Traditional Chinese spell-out rules).
// Allocations are counted by interposing the C allocator (glibc): a call should allocate
// nothing but its result, and nothing at all when the result fits into UnicodeString's
// inline buffer.
#include <atomic>
#include <cstddef>

#include <benchmark/benchmark.h>
#include <unicode/decimfmt.h>
#include <unicode/rbnf.h>

#include "ztcommon/counter.h"

using namespace ZtCommonNS;

namespace {

constexpr long long kCalls = 1000000;

std::atomic<long long> gAllocations{0};

const ZtUtil::CounterStyle* style(const char16_t* name) {
    return ZtUtil::getPredefinedCounterStyle(ZtName(UnicodeString(name)), nullptr);
}

// Formats values cycling through 1..period, kCalls per run, and reports time and
// allocations per call.
template <class Format> void run(benchmark::State& state, long long period, Format format) {
    long long before = gAllocations.load();
    for (auto _ : state) {
        for (long long i = 0; i < kCalls; ++i) {
            UnicodeString text = format(i % period + 1);
            benchmark::DoNotOptimize(text);
        }
    }
    auto calls = static_cast<double>(state.iterations()) * kCalls;
    state.SetItemsProcessed(static_cast<int64_t>(calls));
    state.counters["per_call"] =
        benchmark::Counter(calls, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
    state.counters["allocs_per_call"] = static_cast<double>(gAllocations.load() - before) / calls;
}

void ZtDecimal(benchmark::State& state) {
    const ZtUtil::CounterStyle* decimal = style(u"decimal");
    run(state, kCalls, [decimal](long long v) { return decimal->formatNumber(v); });
}

void ZtLowerRoman(benchmark::State& state) {
    const ZtUtil::CounterStyle* roman = style(u"lower-roman");
    run(state, 3999, [roman](long long v) { return roman->formatNumber(v); });
}

void ZtCjkIdeographic(benchmark::State& state) {
    const ZtUtil::CounterStyle* cjk = style(u"cjk-ideographic");
    run(state, 9999, [cjk](long long v) { return cjk->formatNumber(v); });
}

void IcuDecimalFormat(benchmark::State& state) {
    UErrorCode status = U_ZERO_ERROR;
    icu::DecimalFormat format(UnicodeString(u"0"), status);
    run(state, kCalls, [&format](long long v) {
        UnicodeString out;
        return format.format(static_cast<int64_t>(v), out);
    });
}

void icuRules(benchmark::State& state, const char* locale, icu::URBNFRuleSetTag tag,
              const char16_t* ruleSet, long long period) {
    UErrorCode status = U_ZERO_ERROR;
    icu::RuleBasedNumberFormat format(tag, icu::Locale(locale), status);
    if (U_FAILURE(status)) {
        state.SkipWithError("ICU rules not available");
        return;
    }
    UnicodeString rules(ruleSet);
    run(state, period, [&](long long v) {
        UnicodeString out;
        icu::FieldPosition position;
        UErrorCode error = U_ZERO_ERROR;
        return format.format(static_cast<int64_t>(v), rules, out, position, error);
    });
}

void IcuRomanLower(benchmark::State& state) {
    icuRules(state, "root", icu::URBNF_NUMBERING_SYSTEM, u"%roman-lower", 3999);
}

void IcuTraditionalChinese(benchmark::State& state) {
    icuRules(state, "zh_Hant", icu::URBNF_SPELLOUT, u"%spellout-cardinal", 9999);
}

} // namespace

// Every allocation of the process (ICU's and the library's included) passes through these.
extern "C" {
// glibc's own entry points, which the interposed functions forward to.
void* __libc_malloc(size_t size);               // NOLINT(bugprone-reserved-identifier)
void* __libc_calloc(size_t count, size_t size); // NOLINT(bugprone-reserved-identifier)
void* __libc_realloc(void* p, size_t size);     // NOLINT(bugprone-reserved-identifier)

void* malloc(size_t size) {
    gAllocations.fetch_add(1, std::memory_order_relaxed);
    return __libc_malloc(size);
}
void* calloc(size_t count, size_t size) {
    gAllocations.fetch_add(1, std::memory_order_relaxed);
    return __libc_calloc(count, size);
}
void* realloc(void* p, size_t size) {
    gAllocations.fetch_add(1, std::memory_order_relaxed);
    return __libc_realloc(p, size);
}
}

BENCHMARK(ZtDecimal)->Unit(benchmark::kMillisecond);
BENCHMARK(IcuDecimalFormat)->Unit(benchmark::kMillisecond);
BENCHMARK(ZtLowerRoman)->Unit(benchmark::kMillisecond);
BENCHMARK(IcuRomanLower)->Unit(benchmark::kMillisecond);
BENCHMARK(ZtCjkIdeographic)->Unit(benchmark::kMillisecond);
BENCHMARK(IcuTraditionalChinese)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
