// The document tree at scale: a tree of 1,000,000 elements (fan-out 8), each with 3 attributes
// and a text child, built through the factory and appendChild, walked in every order and
// destroyed; libxml2 builds, walks and frees the same tree with xmlNewNode, xmlNewProp,
// xmlNewText and xmlAddChild in the same run (when it was found at build time), and the
// ratios are printed at the end.
//
// Memory is measured after the timings, outside them: node blocks by the node allocator's own
// count, everything else (strings of values, libxml2's nodes) by the C library's count of bytes
// in use (mallinfo2, which includes each block's header), so every byte is counted once.
//
// ZT_BENCH_DOM_ELEMENTS changes the number of elements (for quick runs).
#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "dom/node_memory.h"
#include "ztcommon/dom.h"

#ifdef ZT_BENCH_HAVE_LIBXML2
#include <libxml/tree.h>
#endif

using namespace ZtCommonNS;

namespace {

constexpr int kFanOut = 8;

int elementCount() {
    static const int count = [] {
        const char* env = std::getenv("ZT_BENCH_DOM_ELEMENTS");
        int n = env ? std::atoi(env) : 0;
        return n > 0 ? n : 1000000;
    }();
    return count;
}

// The texts every element gets, the same for both libraries: two that stay strings and one
// keyword, which the loader's setAttributeEx stores as a name.
const UnicodeString kId(u"x7");
const UnicodeString kFontSize(u"12pt");
const UnicodeString kAlign(u"center");
const UnicodeString kText(u"Some text of a block");

// The shape of every tree: a complete tree of fan-out kFanOut in which element k (from 0, the
// document element) has the children kFanOut*k+1 to kFanOut*k+kFanOut. Elements are made and
// appended in document order, as a parser makes them.
template <class Make, class Append> void buildShape(int n, Make make, Append append) {
    std::vector<void*> elements(static_cast<size_t>(n));
    std::vector<int> pending{0};
    while (!pending.empty()) {
        int k = pending.back();
        pending.pop_back();
        void* e = make();
        append(k == 0 ? nullptr : elements[static_cast<size_t>((k - 1) / kFanOut)], e);
        elements[static_cast<size_t>(k)] = e;
        for (int c = kFanOut; c >= 1; --c) {
            if (kFanOut * k + c < n)
                pending.push_back(kFanOut * k + c);
        }
    }
}

// How the elements get their three attributes: none; from the texts, as the loader sets them
// (two strings and a keyword); or as values that need no heap (a number, a length, a keyword).
enum class Attributes { NONE, LOADED, INLINE };

ZtPtr<ZtDocument> buildZt(int n, Attributes attributes = Attributes::LOADED, bool withText = true) {
    ZtPtr<ZtDocument> doc(new ZtDocument());
    ZtDocument* d = doc;
    const ZtName fo(NM_NS_XSL_FO), prefix(NM_fo), block(NM_block), none;
    buildShape(
        n,
        [&]() -> void* {
            ZtPtr<ZtElement> e = d->createElementNS(fo, prefix, block);
            if (attributes == Attributes::LOADED) {
                e->setAttributeEx(none, none, ZtName(NM_id), kId);
                e->setAttributeEx(none, none, ZtName(NM_font_size), kFontSize);
                e->setAttributeEx(none, none, ZtName(NM_text_align), kAlign);
            } else if (attributes == Attributes::INLINE) {
                e->setAttributeNS(none, none, ZtName(NM_id), ZtValue(7));
                e->setAttributeNS(none, none, ZtName(NM_font_size), ZtValue(12, ZT_UNIT_PT));
                e->setAttributeNS(none, none, ZtName(NM_text_align), ZtValue(NM_center));
            }
            if (withText)
                e->appendChild(d->createTextNode(kText));
            return e.detach(); // the parent takes this reference over below
        },
        [&](void* parent, void* child) {
            auto* c = static_cast<ZtElement*>(child);
            (parent ? static_cast<ZtNode*>(parent) : static_cast<ZtNode*>(d))->appendChild(c);
            c->release();
        });
    return doc;
}

// Bytes in use as the C library counts them (headers included) plus node blocks.
struct Usage {
    long long heap;
    long long nodes;
    static Usage now() {
        struct mallinfo2 info = mallinfo2();
        return {static_cast<long long>(info.uordblks + info.hblkhd), NodeMemory::bytesInUse()};
    }
    long long operator-(const Usage& o) const { return heap - o.heap + nodes - o.nodes; }
};

#ifdef ZT_BENCH_HAVE_LIBXML2

xmlDocPtr buildLibXml2(int n, bool withAttributes = true, bool withText = true) {
    xmlDocPtr doc = xmlNewDoc(BAD_CAST "1.0");
    xmlNsPtr ns = nullptr;
    std::string id, size, align, text;
    kId.toUTF8String(id);
    kFontSize.toUTF8String(size);
    kAlign.toUTF8String(align);
    kText.toUTF8String(text);
    buildShape(
        n,
        [&]() -> void* {
            xmlNodePtr e = xmlNewNode(ns, BAD_CAST "block");
            if (!ns) { // the first element declares the namespace, all use it
                ns = xmlNewNs(e, BAD_CAST "http://www.w3.org/1999/XSL/Format", BAD_CAST "fo");
                xmlSetNs(e, ns);
            }
            if (withAttributes) {
                xmlNewProp(e, BAD_CAST "id", BAD_CAST id.c_str());
                xmlNewProp(e, BAD_CAST "font-size", BAD_CAST size.c_str());
                xmlNewProp(e, BAD_CAST "text-align", BAD_CAST align.c_str());
            }
            if (withText)
                xmlAddChild(e, xmlNewText(BAD_CAST text.c_str()));
            return e;
        },
        [&](void* parent, void* child) {
            auto* c = static_cast<xmlNodePtr>(child);
            if (parent)
                xmlAddChild(static_cast<xmlNodePtr>(parent), c);
            else
                xmlDocSetRootElement(doc, c);
        });
    return doc;
}

#endif

// ---- Memory, measured once and printed with the ratios ----

struct MemoryFigures {
    std::vector<std::pair<std::string, double>> rows;
    void add(const std::string& label, double bytes) { rows.emplace_back(label, bytes); }
};

MemoryFigures& memory() {
    static MemoryFigures figures;
    return figures;
}

void measureMemory() {
    const int n = elementCount();
    auto perElement = [n](auto build) {
        Usage before = Usage::now();
        auto tree = build();
        Usage after = Usage::now();
        return std::pair(tree, static_cast<double>(after - before) / n);
    };
    {
        auto [doc, bytes] = perElement([n] { return buildZt(n, Attributes::LOADED, false); });
        memory().add("ZtCommon element with 3 attributes and their values", bytes);
    }
    {
        auto [doc, bytes] = perElement([n] { return buildZt(n, Attributes::INLINE, false); });
        memory().add("  the same with values that need no heap", bytes);
    }
    {
        auto [doc, bytes] = perElement([n] { return buildZt(n, Attributes::NONE, false); });
        memory().add("ZtCommon element alone (node and attribute map)", bytes);
    }
    {
        auto [doc, bytes] = perElement([n] { return buildZt(n, Attributes::LOADED, true); });
        memory().add("ZtCommon element, 3 attributes, text child", bytes);
    }
#ifdef ZT_BENCH_HAVE_LIBXML2
    {
        auto [doc, bytes] = perElement([n] { return buildLibXml2(n, true, false); });
        memory().add("libxml2 element with 3 attributes and their values", bytes);
        xmlFreeDoc(doc);
    }
    {
        auto [doc, bytes] = perElement([n] { return buildLibXml2(n, true, true); });
        memory().add("libxml2 element, 3 attributes, text child", bytes);
        xmlFreeDoc(doc);
    }
#endif
}

// ---- Timings ----

void setPerElement(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * elementCount());
    // Seconds per element, printed with an SI prefix ("530n" is 530 ns).
    state.counters["per_element"] = benchmark::Counter(
        static_cast<double>(elementCount()),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void BM_Build_Zt(benchmark::State& state) {
    for (auto _ : state) {
        ZtPtr<ZtDocument> doc = buildZt(elementCount());
        state.PauseTiming();
        doc = nullptr;
        state.ResumeTiming();
    }
    setPerElement(state);
}

void BM_Destroy_Zt(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        ZtPtr<ZtDocument> doc = buildZt(elementCount());
        state.ResumeTiming();
        doc = nullptr;
    }
    setPerElement(state);
}

// Walks over trees built once: 2 nodes per element (the element and its text). The fresh tree
// is built before anything was freed (as in a process that loads its first document); the
// reused one after trees were built and destroyed, on memory given back by them.
const ZtDocument* walkTree(bool reused) {
    static const ZtPtr<ZtDocument> fresh = buildZt(elementCount());
    static const ZtPtr<ZtDocument> again = buildZt(elementCount());
    return reused ? again.get() : fresh.get();
}

void BM_Walk_Zt(benchmark::State& state) {
    const ZtDocument* doc = walkTree(state.range(1) != 0);
    auto order = static_cast<ZtTreeIterator::TraversalOrder>(state.range(0));
    for (auto _ : state) {
        ZtTreeIterator it(doc, nullptr, false, order);
        long visits = 0;
        while (it.nextNode())
            ++visits;
        benchmark::DoNotOptimize(visits);
    }
    setPerElement(state);
}

void BM_WalkBackward_Zt(benchmark::State& state) {
    const ZtDocument* doc = walkTree(false);
    for (auto _ : state) {
        ZtTreeIterator it(doc, nullptr, true, ZtTreeIterator::PRE_ORDER);
        long visits = 0;
        while (it.previousNode())
            ++visits;
        benchmark::DoNotOptimize(visits);
    }
    setPerElement(state);
}

void BM_WalkNodeIterator_Zt(benchmark::State& state) {
    const ZtDocument* doc = walkTree(false);
    for (auto _ : state) {
        ZtNodeIterator it = doc->getIterator();
        long visits = 0;
        while (it.nextNode())
            ++visits;
        benchmark::DoNotOptimize(visits);
    }
    setPerElement(state);
}

#ifdef ZT_BENCH_HAVE_LIBXML2

void BM_Build_LibXml2(benchmark::State& state) {
    for (auto _ : state) {
        xmlDocPtr doc = buildLibXml2(elementCount());
        state.PauseTiming();
        xmlFreeDoc(doc);
        state.ResumeTiming();
    }
    setPerElement(state);
}

void BM_Destroy_LibXml2(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        xmlDocPtr doc = buildLibXml2(elementCount());
        state.ResumeTiming();
        xmlFreeDoc(doc);
    }
    setPerElement(state);
}

// libxml2 has no iterator: the same pre-order walk through its links.
void BM_Walk_LibXml2(benchmark::State& state) {
    static xmlDocPtr fresh = buildLibXml2(elementCount());
    static xmlDocPtr again = nullptr;
    if (state.range(0) && !again)
        again = buildLibXml2(elementCount());
    xmlDocPtr doc = state.range(0) ? again : fresh;
    for (auto _ : state) {
        long visits = 0;
        xmlNodePtr root = xmlDocGetRootElement(doc);
        xmlNodePtr n = root;
        while (n) {
            ++visits;
            if (n->children) {
                n = n->children;
                continue;
            }
            while (n && n != root && !n->next)
                n = n->parent;
            n = n && n != root ? n->next : nullptr;
        }
        benchmark::DoNotOptimize(visits);
    }
    setPerElement(state);
}

#endif

// Keeps the CPU time of each benchmark (the median with repetitions) to print ratios after the
// run; the machine is shared and runs in phases, so only ratios within one run are compared.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
            bool single = run.run_type == Run::RT_Iteration && run.repetitions <= 1;
            if (median || single)
                cpu_[median ? run.run_name.str() : run.benchmark_name()] = run.GetAdjustedCPUTime();
        }
        ConsoleReporter::ReportRuns(runs);
    }
    void ratio(const char* label, const std::string& peer, const std::string& ours) const {
        auto p = cpu_.find(peer);
        auto o = cpu_.find(ours);
        if (p != cpu_.end() && o != cpu_.end() && o->second > 0)
            std::printf("%-44s %6.2fx  (%s / %s)\n", label, p->second / o->second, peer.c_str(),
                        ours.c_str());
    }

private:
    std::map<std::string, double> cpu_;
};

} // namespace

// Walks of trees in fresh memory first, then building and destroying, then walks of trees
// built in memory that those freed.
BENCHMARK(BM_Walk_Zt)
    ->ArgNames({"order", "reused"})
    ->Args({ZtTreeIterator::PRE_ORDER, 0})
    ->Args({ZtTreeIterator::POST_ORDER, 0})
    ->Args({ZtTreeIterator::PRE_AND_POST_ORDER, 0})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WalkBackward_Zt)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WalkNodeIterator_Zt)->Unit(benchmark::kMillisecond);
#ifdef ZT_BENCH_HAVE_LIBXML2
BENCHMARK(BM_Walk_LibXml2)->ArgName("reused")->Arg(0)->Unit(benchmark::kMillisecond);
#endif
BENCHMARK(BM_Build_Zt)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_Destroy_Zt)->Unit(benchmark::kMillisecond)->Iterations(3);
#ifdef ZT_BENCH_HAVE_LIBXML2
BENCHMARK(BM_Build_LibXml2)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_Destroy_LibXml2)->Unit(benchmark::kMillisecond)->Iterations(3);
#endif
BENCHMARK(BM_Walk_Zt)
    ->ArgNames({"order", "reused"})
    ->Args({ZtTreeIterator::PRE_ORDER, 1})
    ->Unit(benchmark::kMillisecond);
#ifdef ZT_BENCH_HAVE_LIBXML2
BENCHMARK(BM_Walk_LibXml2)->ArgName("reused")->Arg(1)->Unit(benchmark::kMillisecond);
#endif

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    measureMemory();
    std::printf("\nBytes per element (%d elements, fan-out %d; node blocks plus C library heap "
                "with headers):\n",
                elementCount(), kFanOut);
    for (const auto& [label, bytes] : memory().rows)
        std::printf("  %-56s %8.1f\n", label.c_str(), bytes);
    std::printf("\nRatios of CPU time, libxml2 over ZtCommon (above 1: ZtCommon is faster):\n");
    reporter.ratio("build (factory, attributes, appendChild)", "BM_Build_LibXml2/iterations:3",
                   "BM_Build_Zt/iterations:3");
    reporter.ratio("destroy", "BM_Destroy_LibXml2/iterations:3", "BM_Destroy_Zt/iterations:3");
    reporter.ratio("pre-order walk, fresh memory", "BM_Walk_LibXml2/reused:0",
                   "BM_Walk_Zt/order:1/reused:0");
    reporter.ratio("pre-order walk, reused memory", "BM_Walk_LibXml2/reused:1",
                   "BM_Walk_Zt/order:1/reused:1");
    benchmark::Shutdown();
    return 0;
}
