// Size-class block allocator for tree nodes; see node_memory.h for the design.
#include "dom/node_memory.h"

#include <sys/mman.h>

#include <atomic>
#include <cstdint>
#include <mutex>
#include <new>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
#define ZT_NODE_MEMORY_SYSTEM 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(memory_sanitizer)
#define ZT_NODE_MEMORY_SYSTEM 1
#endif
#endif

namespace ZtCommonNS::NodeMemory {

namespace {

constexpr std::size_t kGranule = 8;
constexpr std::size_t kClassCount = kLargestClass / kGranule; // classes 1..kClassCount
constexpr std::size_t kHugePage = std::size_t{2} << 20;
constexpr std::size_t kFirstChunk = kHugePage;
constexpr std::size_t kLargestChunk = std::size_t{64} << 20;
// A thread carves blocks from a span of its own, so carving needs no lock.
constexpr std::size_t kSpan = std::size_t{256} << 10;
// Blocks move between a thread and the depot in batches of about this many bytes.
constexpr std::size_t kBatchBytes = std::size_t{32} << 10;

constexpr std::size_t classOf(std::size_t size) {
    return (size + kGranule - 1) / kGranule;
}
constexpr std::size_t classBytes(std::size_t cls) {
    return cls * kGranule;
}
constexpr unsigned batchCount(std::size_t cls) {
    std::size_t n = kBatchBytes / classBytes(cls);
    return static_cast<unsigned>(n < 32 ? 32 : n);
}

std::atomic<long long> g_retiredBytes{0};
std::atomic<long long> g_reservedBytes{0};

struct FreeBlock {
    FreeBlock* next;
};

struct ClassList {
    FreeBlock* head;
    unsigned count;
};

// Per-thread state. Trivially destructible and zero-initialised, so it stays usable even while
// the thread's other thread-local objects are being destroyed; `retired` then sends every
// request to the shared paths.
struct ThreadCache {
    ClassList lists[kClassCount + 1];
    char* spanCur;
    char* spanEnd;
    long long bytes;
    bool registered;
    bool retired;
};

thread_local ThreadCache t_cache;

#ifndef ZT_NODE_MEMORY_SYSTEM

struct Batch {
    FreeBlock* head;
    unsigned count;
};

// Shared state: the chunk arena, spans left over by ended threads, and one depot of free
// batches per size class. Never destroyed: blocks may be freed during static destruction.
struct Shared {
    std::mutex arenaLock;
    char* chunkCur = nullptr;
    char* chunkEnd = nullptr;
    std::size_t nextChunk = kFirstChunk;
    std::vector<std::pair<char*, char*>> leftoverSpans;

    struct Depot {
        std::mutex lock;
        std::vector<Batch> batches;
        // Single blocks freed after their thread ended, gathered until they make a batch.
        Batch loose{nullptr, 0};
    };
    Depot depots[kClassCount + 1];
};

Shared& shared() {
    static Shared* s = new Shared;
    return *s;
}

// A 2 MiB-aligned region of `size` bytes that asks for huge pages.
char* mapChunk(std::size_t size) {
    std::size_t span = size + kHugePage;
    void* raw = mmap(nullptr, span, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (raw == MAP_FAILED)
        throw std::bad_alloc();
    auto base = reinterpret_cast<std::uintptr_t>(raw);
    std::uintptr_t aligned = (base + kHugePage - 1) & ~(kHugePage - 1);
    if (aligned > base)
        munmap(raw, aligned - base);
    std::uintptr_t tail = aligned + size;
    if (base + span > tail)
        munmap(reinterpret_cast<void*>(tail), base + span - tail);
    madvise(reinterpret_cast<void*>(aligned), size, MADV_HUGEPAGE);
    g_reservedBytes.fetch_add(static_cast<long long>(size), std::memory_order_relaxed);
    return reinterpret_cast<char*>(aligned);
}

// Gives the calling thread a fresh span to carve from.
void refillSpan(ThreadCache& tc) {
    Shared& s = shared();
    std::lock_guard<std::mutex> guard(s.arenaLock);
    if (!s.leftoverSpans.empty()) {
        auto [cur, end] = s.leftoverSpans.back();
        s.leftoverSpans.pop_back();
        tc.spanCur = cur;
        tc.spanEnd = end;
        return;
    }
    if (static_cast<std::size_t>(s.chunkEnd - s.chunkCur) < kSpan) {
        // Chunks grow with use, so that large trees take few system calls.
        std::size_t size = s.nextChunk;
        s.chunkCur = mapChunk(size);
        s.chunkEnd = s.chunkCur + size;
        if (s.nextChunk < kLargestChunk)
            s.nextChunk *= 2;
    }
    tc.spanCur = s.chunkCur;
    tc.spanEnd = s.chunkCur + kSpan;
    s.chunkCur += kSpan;
}

void* carve(ThreadCache& tc, std::size_t bytes) {
    if (static_cast<std::size_t>(tc.spanEnd - tc.spanCur) < bytes)
        refillSpan(tc);
    char* block = tc.spanCur;
    tc.spanCur += bytes;
    return block;
}

// Moves `count` blocks from the front of the thread's list into the depot. When the depot
// cannot grow, the list is left as it was and std::bad_alloc passes on.
void spill(ClassList& list, std::size_t cls, unsigned count) {
    FreeBlock* head = list.head;
    FreeBlock* tail = head;
    for (unsigned i = 1; i < count; ++i)
        tail = tail->next;
    Shared::Depot& depot = shared().depots[cls];
    std::lock_guard<std::mutex> guard(depot.lock);
    depot.batches.push_back({head, count});
    list.head = tail->next;
    list.count -= count;
    tail->next = nullptr;
}

bool takeBatch(ClassList& list, std::size_t cls) {
    Shared::Depot& depot = shared().depots[cls];
    std::lock_guard<std::mutex> guard(depot.lock);
    Batch batch{nullptr, 0};
    if (!depot.batches.empty()) {
        batch = depot.batches.back();
        depot.batches.pop_back();
    } else if (depot.loose.count > 0) {
        batch = depot.loose;
        depot.loose = {nullptr, 0};
    } else {
        return false;
    }
    list.head = batch.head;
    list.count = batch.count;
    return true;
}

// Paths for a thread whose cache has been retired (its thread-local objects are going away).
void* allocateRetired(std::size_t cls) {
    Shared::Depot& depot = shared().depots[cls];
    {
        std::lock_guard<std::mutex> guard(depot.lock);
        Batch* batch = depot.loose.count > 0   ? &depot.loose
                       : depot.batches.empty() ? nullptr
                                               : &depot.batches.back();
        if (batch) {
            FreeBlock* block = batch->head;
            batch->head = block->next;
            if (--batch->count == 0 && batch != &depot.loose)
                depot.batches.pop_back();
            return block;
        }
    }
    // A private span would be lost when this thread ends, so carve under the arena lock.
    Shared& s = shared();
    std::lock_guard<std::mutex> guard(s.arenaLock);
    std::size_t bytes = classBytes(cls);
    if (static_cast<std::size_t>(s.chunkEnd - s.chunkCur) < bytes) {
        std::size_t size = s.nextChunk;
        s.chunkCur = mapChunk(size);
        s.chunkEnd = s.chunkCur + size;
    }
    char* block = s.chunkCur;
    s.chunkCur += bytes;
    return block;
}

void deallocateRetired(void* block, std::size_t cls) {
    Shared::Depot& depot = shared().depots[cls];
    std::lock_guard<std::mutex> guard(depot.lock);
    auto* b = static_cast<FreeBlock*>(block);
    b->next = depot.loose.head;
    depot.loose.head = b;
    if (++depot.loose.count >= batchCount(cls)) {
        depot.batches.push_back(depot.loose);
        depot.loose = {nullptr, 0};
    }
}

// Runs when a thread ends: its free blocks and the rest of its span go back for others.
void retire(ThreadCache& tc) {
    for (std::size_t cls = 1; cls <= kClassCount; ++cls) {
        ClassList& list = tc.lists[cls];
        if (list.count > 0) {
            try {
                spill(list, cls, list.count);
            } catch (...) {
                // No memory for the depot's record: these blocks stay unused.
            }
        }
    }
    if (tc.spanEnd - tc.spanCur >= 4096) {
        Shared& s = shared();
        std::lock_guard<std::mutex> guard(s.arenaLock);
        try {
            s.leftoverSpans.emplace_back(tc.spanCur, tc.spanEnd);
        } catch (...) {
            // As above: the rest of the span stays unused.
        }
    }
    tc.spanCur = tc.spanEnd = nullptr;
    g_retiredBytes.fetch_add(tc.bytes, std::memory_order_relaxed);
    tc.bytes = 0;
    tc.retired = true;
}

#else // ZT_NODE_MEMORY_SYSTEM

void retire(ThreadCache& tc) {
    g_retiredBytes.fetch_add(tc.bytes, std::memory_order_relaxed);
    tc.bytes = 0;
    tc.retired = true;
}

#endif

struct Retirer {
    ~Retirer() { retire(t_cache); }
    void touch() {}
};

thread_local Retirer t_retirer;

inline ThreadCache& cache() {
    ThreadCache& tc = t_cache;
    if (!tc.registered) [[unlikely]] {
        tc.registered = true;
        t_retirer.touch(); // constructs the thread's retirer, which runs at thread end
    }
    return tc;
}

} // namespace

std::size_t blockSize(std::size_t size) noexcept {
    if (size == 0)
        size = 1;
    return size <= kLargestClass ? classBytes(classOf(size)) : size;
}

#ifndef ZT_NODE_MEMORY_SYSTEM

void* allocate(std::size_t size) {
    if (size > kLargestClass) {
        void* block = ::operator new(size);
        if (!t_cache.retired)
            cache().bytes += static_cast<long long>(size);
        return block;
    }
    std::size_t cls = classOf(size == 0 ? 1 : size);
    ThreadCache& tc = cache();
    if (tc.retired) [[unlikely]]
        return allocateRetired(cls);
    ClassList& list = tc.lists[cls];
    void* block;
    if (list.head == nullptr && !takeBatch(list, cls)) {
        block = carve(tc, classBytes(cls));
    } else {
        block = list.head;
        list.head = list.head->next;
        --list.count;
    }
    tc.bytes += static_cast<long long>(classBytes(cls));
    return block;
}

void deallocate(void* block, std::size_t size) noexcept {
    if (block == nullptr)
        return;
    if (size > kLargestClass) {
        ::operator delete(block);
        if (!t_cache.retired)
            t_cache.bytes -= static_cast<long long>(size);
        return;
    }
    std::size_t cls = classOf(size == 0 ? 1 : size);
    ThreadCache& tc = t_cache;
    if (tc.retired || !tc.registered) [[unlikely]] {
        // A thread that never allocated still needs a cache to free into.
        if (!tc.retired) {
            cache();
        } else {
            deallocateRetired(block, cls);
            return;
        }
    }
    tc.bytes -= static_cast<long long>(classBytes(cls));
    ClassList& list = tc.lists[cls];
    auto* b = static_cast<FreeBlock*>(block);
    b->next = list.head;
    list.head = b;
    if (++list.count >= 2 * batchCount(cls)) [[unlikely]] {
        try {
            spill(list, cls, batchCount(cls));
        } catch (...) {
            // The depot could not grow: keep the blocks here.
        }
    }
}

bool usesChunks() noexcept {
    return true;
}

#else

void* allocate(std::size_t size) {
    void* block = ::operator new(size == 0 ? 1 : size);
    ThreadCache& tc = cache();
    if (!tc.retired)
        tc.bytes += static_cast<long long>(blockSize(size));
    return block;
}

void deallocate(void* block, std::size_t size) noexcept {
    if (block == nullptr)
        return;
    ::operator delete(block);
    if (!t_cache.retired)
        t_cache.bytes -= static_cast<long long>(blockSize(size));
}

bool usesChunks() noexcept {
    return false;
}

#endif

long long bytesInUse() noexcept {
    return g_retiredBytes.load(std::memory_order_relaxed) + t_cache.bytes;
}

long long bytesReserved() noexcept {
    return g_reservedBytes.load(std::memory_order_relaxed);
}

} // namespace ZtCommonNS::NodeMemory
