// ZtUnicodeRange against ICU's UnicodeSet holding the same code points, timed interleaved in
// one run (CPU time of this thread) and reported as ratios, UnicodeSet's time over ours:
//   membership: inRange vs UnicodeSet::contains for 1 million code points of mixed text, on
//               the ranges of a web font split into subsets (about 100 ranges)
//   building:   addRange vs UnicodeSet::add of 2000 random ranges in random order
// The text form (parse and toString) is timed alone, as no peer reads this syntax.
// Run: build-bench/bench/bench_unicode_range --benchmark_repetitions=5
#include <ctime>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>

#include <unicode/uniset.h>

#include "ztcommon/text.h"

using namespace ZtCommonNS;

namespace {

double threadCpuNanoseconds() {
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) * 1e9 + static_cast<double>(t.tv_nsec);
}

// About a hundred ranges, as in the subsets a web font serves: Latin, Greek and Cyrillic
// blocks, punctuation, and scattered CJK blocks.
std::vector<ZtUnicodeRange::URange> fontRanges() {
    std::vector<ZtUnicodeRange::URange> ranges = {
        {0x0000, 0x00FF}, {0x0131, 0x0131}, {0x0152, 0x0153}, {0x02BB, 0x02BC}, {0x02C6, 0x02C6},
        {0x02DA, 0x02DA}, {0x02DC, 0x02DC}, {0x0370, 0x03FF}, {0x0400, 0x045F}, {0x0490, 0x0491},
        {0x04B0, 0x04B1}, {0x2000, 0x206F}, {0x2074, 0x2074}, {0x20AC, 0x20AC}, {0x2122, 0x2122},
        {0x2191, 0x2191}, {0x2193, 0x2193}, {0x2212, 0x2212}, {0x2215, 0x2215}, {0xFEFF, 0xFEFF},
        {0xFFFD, 0xFFFD},
    };
    for (int32_t block = 0x4E00; block < 0x9FFF; block += 0x100)
        ranges.push_back({block + 0x10, block + 0x5F}); // every block of Han, in part
    return ranges;
}

std::vector<int32_t> mixedCodePoints() {
    std::mt19937 rng(5);
    std::vector<int32_t> out(1'000'000);
    std::uniform_int_distribution<int32_t> latin(0x20, 0x17F), han(0x4E00, 0x9FFF),
        other(0, 0x2FFFF);
    for (size_t i = 0; i < out.size(); ++i) {
        const unsigned kind = rng() % 4;
        out[i] = kind < 2 ? latin(rng) : kind == 2 ? han(rng) : other(rng);
    }
    return out;
}

} // namespace

static void BM_MembershipVsUnicodeSet(benchmark::State& state) {
    ZtUnicodeRange ours;
    icu::UnicodeSet icuSet;
    for (const auto& r : fontRanges()) {
        ours.addRange(r);
        icuSet.add(r.first, r.last);
    }
    icuSet.freeze(); // ICU's fastest form for lookups
    const std::vector<int32_t> text = mixedCodePoints();
    double zt = 0, icu = 0;
    for (auto _ : state) {
        double start = threadCpuNanoseconds();
        unsigned hits = 0;
        for (int32_t c : text)
            hits += ours.inRange(c);
        benchmark::DoNotOptimize(hits);
        zt += threadCpuNanoseconds() - start;
        start = threadCpuNanoseconds();
        unsigned icuHits = 0;
        for (int32_t c : text)
            icuHits += icuSet.contains(c);
        benchmark::DoNotOptimize(icuHits);
        icu += threadCpuNanoseconds() - start;
        if (hits != icuHits)
            state.SkipWithError("the two sets disagree");
    }
    const double calls = static_cast<double>(state.iterations()) * static_cast<double>(text.size());
    state.counters["zt_ns_per_call"] = zt / calls;
    state.counters["icu_ns_per_call"] = icu / calls;
    state.counters["ratio"] = icu / zt;
}
BENCHMARK(BM_MembershipVsUnicodeSet)->Unit(benchmark::kMillisecond)->Iterations(5);

static void BM_BuildingVsUnicodeSet(benchmark::State& state) {
    std::mt19937 rng(11);
    std::uniform_int_distribution<int32_t> start(0, 0x10FFFF);
    std::vector<ZtUnicodeRange::URange> ranges(2000);
    for (auto& r : ranges) {
        r.first = start(rng);
        r.last = std::min(r.first + static_cast<int32_t>(rng() % 64), 0x10FFFF);
    }
    double zt = 0, icu = 0;
    for (auto _ : state) {
        double begin = threadCpuNanoseconds();
        ZtUnicodeRange ours;
        for (const auto& r : ranges)
            ours.addRange(r);
        benchmark::DoNotOptimize(ours.getRangeCount());
        zt += threadCpuNanoseconds() - begin;
        begin = threadCpuNanoseconds();
        icu::UnicodeSet icuSet;
        for (const auto& r : ranges)
            icuSet.add(r.first, r.last);
        benchmark::DoNotOptimize(icuSet.getRangeCount());
        icu += threadCpuNanoseconds() - begin;
        if (ours.getRangeCount() != icuSet.getRangeCount())
            state.SkipWithError("the two sets disagree");
    }
    state.counters["zt_us"] = zt / static_cast<double>(state.iterations()) / 1e3;
    state.counters["icu_us"] = icu / static_cast<double>(state.iterations()) / 1e3;
    state.counters["ratio"] = icu / zt;
}
BENCHMARK(BM_BuildingVsUnicodeSet)->Unit(benchmark::kMicrosecond)->Iterations(200);

// The font's ranges written out and read back.
static void BM_TextForm(benchmark::State& state) {
    ZtUnicodeRange set;
    for (const auto& r : fontRanges())
        set.addRange(r);
    const UnicodeString text = set.toString();
    for (auto _ : state) {
        ZtUnicodeRange back;
        back.parseUnicodeRange(text);
        benchmark::DoNotOptimize(back.toString().length());
    }
    state.SetBytesProcessed(state.iterations() * text.length() * 2);
}
BENCHMARK(BM_TextForm);

BENCHMARK_MAIN();
