// Costs of the foundation's hot operations: copying and dropping ZtPtr (atomic count changes),
// the checked down-cast through isA, and the cached byte conversion of ZtCStr.
#include <benchmark/benchmark.h>

#include "ztcommon/foundation.h"

using namespace ZtCommonNS;

namespace {
class Base : public ZtRCObject {
    ZT_DECLARE_TYPE(Base, ZtRCObject, 0x8E000001u)
};
class Middle : public Base {
    ZT_DECLARE_TYPE(Middle, Base, 0x8E000002u)
};
class Leaf : public Middle {
    ZT_DECLARE_TYPE(Leaf, Middle, 0x8E000003u)
};
} // namespace

static void BM_PtrCopyDrop(benchmark::State& state) {
    ZtPtr<Leaf> p(new Leaf);
    for (auto _ : state) {
        ZtPtr<Leaf> copy(p);
        benchmark::DoNotOptimize(copy.get());
    }
}
BENCHMARK(BM_PtrCopyDrop);

static void BM_PtrCopyDropContended(benchmark::State& state) {
    static ZtPtr<Leaf> shared(new Leaf);
    for (auto _ : state) {
        ZtPtr<Leaf> copy(shared);
        benchmark::DoNotOptimize(copy.get());
    }
}
BENCHMARK(BM_PtrCopyDropContended)->Threads(2);

static void BM_IsAChain(benchmark::State& state) {
    ZtPtr<ZtRCObject> p(new Leaf);
    const ZtRCObject* raw = p.get();
    benchmark::DoNotOptimize(raw);
    for (auto _ : state) {
        // Deepest match, a middle one and a miss that walks the whole chain.
        bool a = raw->isA(ZtObjectBase::getStaticTypeID());
        bool b = raw->isA(Middle::getStaticTypeID());
        bool c = raw->isA(ZtTypeId::Document);
        benchmark::DoNotOptimize(a);
        benchmark::DoNotOptimize(b);
        benchmark::DoNotOptimize(c);
    }
}
BENCHMARK(BM_IsAChain);

static void BM_CheckedDownCast(benchmark::State& state) {
    ZtPtr<ZtRCObject> p(new Leaf);
    for (auto _ : state) {
        ZtPtr<Middle> m;
        m = p.get();
        benchmark::DoNotOptimize(m.get());
    }
}
BENCHMARK(BM_CheckedDownCast);

static void BM_CStrCachedBytes(benchmark::State& state) {
    ZtCStr text(UnicodeString(u"/home/user/documents/report-2026.xml"));
    text.getBytes("UTF-8");
    for (auto _ : state)
        benchmark::DoNotOptimize(text.getBytes("UTF-8").data());
}
BENCHMARK(BM_CStrCachedBytes);

BENCHMARK_MAIN();
