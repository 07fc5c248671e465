// Name lookup against std::unordered_map<std::u16string, int> holding the same names, in one
// run so that the ratios printed at the end compare like with like:
//   built-in:  ZtNameTable::getBuiltinNameEnum  vs  the map            (target: at least 2x faster)
//   run-time:  ZtNameTable::getSharedNameEnum of an interned name
//              vs  the map plus one uncontended ZtLock lock/unlock    (target: no slower)
// Run: build-bench/bench/bench_value --benchmark_repetitions=5
#include <benchmark/benchmark.h>

#include <algorithm>
#include <iostream>
#include <map>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

#include "ztcommon/value.h"

using namespace ZtCommonNS;

namespace {

std::u16string toU16(const UnicodeString& text) {
    return std::u16string(text.getBuffer(), static_cast<size_t>(text.length()));
}

// The same texts as UnicodeString (for the library) and std::u16string (for the map), in a
// shuffled order so that consecutive lookups do not walk the tables in order.
struct Corpus {
    std::vector<UnicodeString> texts;
    std::vector<std::u16string> keys;
    std::unordered_map<std::u16string, int> map;

    void add(const UnicodeString& text, int number) {
        texts.push_back(text);
        keys.push_back(toU16(text));
        map.emplace(keys.back(), number);
    }
    void shuffle() {
        std::mt19937 random(42);
        std::vector<size_t> order(texts.size());
        for (size_t i = 0; i < order.size(); ++i)
            order[i] = i;
        std::shuffle(order.begin(), order.end(), random);
        std::vector<UnicodeString> t;
        std::vector<std::u16string> k;
        for (size_t i : order) {
            t.push_back(texts[i]);
            k.push_back(keys[i]);
        }
        texts.swap(t);
        keys.swap(k);
    }
};

const Corpus& builtinCorpus() {
    static const Corpus corpus = [] {
        Corpus c;
        for (int n = 1; n <= NM_LAST_BUILTIN; ++n)
            c.add(ZtNameTable::getBuiltinNameString(static_cast<ZtNameEnum>(n)), n);
        c.shuffle();
        return c;
    }();
    return corpus;
}

// As many run-time names, of the same lengths as the built-in ones, interned in the shared table.
const Corpus& runtimeCorpus() {
    static const Corpus corpus = [] {
        Corpus c;
        for (int n = 1; n <= NM_LAST_BUILTIN; ++n) {
            UnicodeString text = ZtNameTable::getBuiltinNameString(static_cast<ZtNameEnum>(n));
            text.setCharAt(0, u'~'); // no built-in name starts with "~"
            c.add(text, ZtNameTable::getSharedNameEnum(text));
        }
        c.shuffle();
        return c;
    }();
    return corpus;
}

// Runs lookup(i) for i cycling over 0..count-1, one call per iteration.
template <class Lookup> void cycle(benchmark::State& state, size_t count, Lookup lookup) {
    size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(lookup(i));
        i = i + 1 == count ? 0 : i + 1;
    }
}

void BM_Builtin_ZtNameTable(benchmark::State& state) {
    const Corpus& c = builtinCorpus();
    cycle(state, c.texts.size(),
          [&](size_t i) { return ZtNameTable::getBuiltinNameEnum(c.texts[i]); });
}
BENCHMARK(BM_Builtin_ZtNameTable);

void BM_Builtin_UnorderedMap(benchmark::State& state) {
    const Corpus& c = builtinCorpus();
    cycle(state, c.keys.size(), [&](size_t i) { return c.map.find(c.keys[i])->second; });
}
BENCHMARK(BM_Builtin_UnorderedMap);

// Through ZtName, as the document tree interns element and attribute names.
void BM_Builtin_ZtName(benchmark::State& state) {
    const Corpus& c = builtinCorpus();
    cycle(state, c.texts.size(), [&](size_t i) { return ZtName(c.texts[i]).getNameEnum(); });
}
BENCHMARK(BM_Builtin_ZtName);

void BM_Runtime_ZtNameTable(benchmark::State& state) {
    const Corpus& c = runtimeCorpus();
    cycle(state, c.texts.size(),
          [&](size_t i) { return ZtNameTable::getSharedNameEnum(c.texts[i]); });
}
BENCHMARK(BM_Runtime_ZtNameTable);

void BM_Runtime_UnorderedMapAndLock(benchmark::State& state) {
    const Corpus& c = runtimeCorpus();
    ZtLock lock;
    cycle(state, c.keys.size(), [&](size_t i) {
        ZtMutex guard(lock);
        return c.map.find(c.keys[i])->second;
    });
}
BENCHMARK(BM_Runtime_UnorderedMapAndLock);

void BM_StringOfRuntimeName(benchmark::State& state) {
    const Corpus& c = runtimeCorpus();
    std::vector<ZtName> names;
    names.reserve(c.texts.size());
    for (const UnicodeString& text : c.texts)
        names.emplace_back(text);
    cycle(state, names.size(),
          [&](size_t i) { return static_cast<const UnicodeString&>(names[i]).length(); });
}
BENCHMARK(BM_StringOfRuntimeName);

// Keeps every result so that the ratios can be printed after the run. With repetitions
// (--benchmark_repetitions=N) the medians are compared, which steadies the ratios on a machine
// that runs in slow and fast phases. CPU times are compared: the benchmarks are single-threaded
// and the machine is shared, so wall time also counts other processes.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median")
                nanoseconds_[run.run_name.str()] = run.GetAdjustedCPUTime();
            else if (run.run_type == Run::RT_Iteration && run.iterations > 0 &&
                     run.repetitions <= 1)
                nanoseconds_[run.benchmark_name()] = run.GetAdjustedCPUTime();
        }
        ConsoleReporter::ReportRuns(runs);
    }
    void printRatio(const char* label, const char* slow, const char* fast) const {
        auto a = nanoseconds_.find(slow);
        auto b = nanoseconds_.find(fast);
        if (a == nanoseconds_.end() || b == nanoseconds_.end() || b->second <= 0)
            return;
        std::cout << label << ": " << a->second / b->second << "x (" << slow << " / " << fast
                  << ")\n";
    }

private:
    std::map<std::string, double> nanoseconds_;
};

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::cout << '\n';
    reporter.printRatio("built-in lookup, map CPU time over ZtNameTable CPU time (target >= 2)",
                        "BM_Builtin_UnorderedMap", "BM_Builtin_ZtNameTable");
    reporter.printRatio(
        "run-time lookup, map+lock CPU time over ZtNameTable CPU time (target >= 1)",
        "BM_Runtime_UnorderedMapAndLock", "BM_Runtime_ZtNameTable");
    benchmark::Shutdown();
    return 0;
}
