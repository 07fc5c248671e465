// The memory stream against its peers, side by side in one run:
// - writing 256 MiB in 4 KiB pieces into a fresh stream and reading it back in 4 KiB pieces,
//   ZtMemStream against std::stringstream (target: at least twice the throughput);
// - reading a filled stream through getBuffer (zero copy, each span copied out once) against a
//   plain memcpy of the same bytes (target: at least half the bandwidth).
// The ratios are printed after the table.
#include <cstdlib>
#include <cstring>
#include <map>
#include <sstream>
#include <vector>

#include <benchmark/benchmark.h>

#include "ztcommon/stream.h"

using namespace ZtCommonNS;

namespace {
constexpr size_t kTotal = size_t{256} << 20;
constexpr size_t kPiece = 4096;

const std::vector<char>& piece() {
    static const std::vector<char> bytes = [] {
        std::vector<char> b(kPiece);
        for (size_t i = 0; i < kPiece; ++i)
            b[i] = static_cast<char>(i * 131 + 7);
        return b;
    }();
    return bytes;
}

// A page-aligned buffer starting `shift` bytes into its first page, with every page touched once
// so that timed copies do not pay for first-touch faults.
//
// Copy speed depends heavily on how source and target are aligned to each other (a copy whose
// addresses differ by a multiple of 4096 stalls on 4K aliasing; one whose addresses differ by an
// odd part of a cache line runs far slower with "rep movsb"). Stream blocks start on page
// boundaries, so the targets start 64 bytes into a page and the memcpy baseline reads from a
// page-aligned source: both copies run under the same relation.
class Buffer {
public:
    Buffer(size_t size, size_t shift)
        : base_(static_cast<char*>(std::aligned_alloc(4096, size + 4096))), data_(base_ + shift) {
        std::memset(base_, 1, size + 4096);
    }
    Buffer(const Buffer&) = delete;
    Buffer& operator=(const Buffer&) = delete;
    ~Buffer() { std::free(base_); }
    char* data() const { return data_; }

private:
    char* base_;
    char* data_;
};

template <class Stream> void writeAndReadBack(benchmark::State& state, Stream& stream) {
    const char* data = piece().data();
    for (size_t at = 0; at < kTotal; at += kPiece)
        stream.write(data, static_cast<std::streamsize>(kPiece));
    char buffer[kPiece];
    size_t total = 0;
    while (stream.read(buffer, sizeof buffer))
        total += static_cast<size_t>(stream.gcount());
    benchmark::DoNotOptimize(buffer);
    if (total != kTotal)
        state.SkipWithError("short read");
}
} // namespace

// One untimed pass first: the very first touch of memory the machine has never handed out costs
// far more than memory recycled by the kernel, and whichever benchmark ran first would pay it.
static void BM_WriteRead_ZtMemStream(benchmark::State& state) {
    {
        ZtMemStream warmUp;
        writeAndReadBack(state, warmUp);
    }
    for (auto _ : state) {
        ZtMemStream stream;
        writeAndReadBack(state, stream);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kTotal));
}
BENCHMARK(BM_WriteRead_ZtMemStream)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

static void BM_WriteRead_StringStream(benchmark::State& state) {
    {
        std::stringstream warmUp;
        writeAndReadBack(state, warmUp);
    }
    for (auto _ : state) {
        std::stringstream stream;
        writeAndReadBack(state, stream);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kTotal));
}
BENCHMARK(BM_WriteRead_StringStream)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

static void BM_Read_ZtMemStreamGetBuffer(benchmark::State& state) {
    ZtMemStream stream;
    for (size_t at = 0; at < kTotal; at += kPiece)
        stream.write(piece().data(), static_cast<std::streamsize>(kPiece));
    Buffer target(kTotal, 64);
    for (auto _ : state) {
        stream.seekg(0);
        char* out = target.data();
        const char* p = nullptr;
        for (size_t n = stream.getBuffer(p); n > 0; n = stream.getBuffer(p)) {
            std::memcpy(out, p, n);
            out += n;
        }
        benchmark::DoNotOptimize(out);
        if (static_cast<size_t>(out - target.data()) != kTotal)
            state.SkipWithError("short read");
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kTotal));
}
BENCHMARK(BM_Read_ZtMemStreamGetBuffer)->Unit(benchmark::kMillisecond)->UseRealTime();

static void BM_Read_Memcpy(benchmark::State& state) {
    Buffer source(kTotal, 0);
    Buffer target(kTotal, 64);
    for (auto _ : state) {
        std::memcpy(target.data(), source.data(), kTotal);
        benchmark::DoNotOptimize(target.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kTotal));
}
BENCHMARK(BM_Read_Memcpy)->Unit(benchmark::kMillisecond)->UseRealTime();

namespace {
// Keeps the real time of every run so that the ratios can be printed at the end.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration && !run.error_occurred)
                seconds_[run.run_name.function_name] = run.GetAdjustedRealTime();
        ConsoleReporter::ReportRuns(runs);
    }

    void printRatio(const char* what, const char* ours, const char* theirs, double target) {
        if (!seconds_.count(ours) || !seconds_.count(theirs))
            return;
        const double ratio = seconds_[theirs] / seconds_[ours];
        std::printf("%-52s %6.2fx (target %.1fx) %s\n", what, ratio, target,
                    ratio >= target ? "ok" : "BELOW TARGET");
    }

private:
    std::map<std::string, double> seconds_;
};
} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::printf("\n");
    reporter.printRatio("write+read 256 MiB, ZtMemStream / std::stringstream",
                        "BM_WriteRead_ZtMemStream", "BM_WriteRead_StringStream", 2.0);
    reporter.printRatio("read 256 MiB, getBuffer / memcpy", "BM_Read_ZtMemStreamGetBuffer",
                        "BM_Read_Memcpy", 0.5);
    benchmark::Shutdown();
    return 0;
}
