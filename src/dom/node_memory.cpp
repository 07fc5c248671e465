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
constexpr std::size_t kClassCount = kLargestClass / kGranule; // the largest class number
// The smallest block holds the links of a batch (see BatchHead).
constexpr std::size_t kSmallestClass = 3;

constexpr std::size_t classOf(std::size_t size) {
    std::size_t cls = (size + kGranule - 1) / kGranule;
    return cls < kSmallestClass ? kSmallestClass : cls;
}
constexpr std::size_t classBytes(std::size_t cls) {
    return cls * kGranule;
}

#ifndef ZT_NODE_MEMORY_SYSTEM
constexpr std::size_t kHugePage = std::size_t{2} << 20;
constexpr std::size_t kFirstChunk = kHugePage;
constexpr std::size_t kLargestChunk = std::size_t{64} << 20;
// A thread carves blocks from a span of its own, so carving needs no lock.
constexpr std::size_t kSpan = std::size_t{256} << 10;
// Blocks move between a thread and the depot in batches of about this many bytes.
constexpr std::size_t kBatchBytes = std::size_t{32} << 10;

constexpr unsigned batchCount(std::size_t cls) {
    std::size_t n = kBatchBytes / classBytes(cls);
    return static_cast<unsigned>(n < 32 ? 32 : n);
}
#endif

std::atomic<long long> g_retiredBytes{0};
std::atomic<long long> g_reservedBytes{0};

struct FreeBlock {
    FreeBlock* next;
};

// A thread's free blocks of one class, last freed first. Once the list holds more than a
// batch, `cut` is the block just above the oldest batch (the block that made the count one
// more than a batch), so that the oldest batch can leave without a walk down the list: a block
// below `cut` is never taken before `cut` itself, which clears the mark.
struct ClassList {
    FreeBlock* head;
    FreeBlock* cut;
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

// The first block of a batch in a depot carries the batch's count and the link to the next
// batch, so that the depots themselves never allocate (an allocation in the middle of freeing
// millions of blocks would also make the C library sort its own free lists).
struct BatchHead {
    FreeBlock* next; // the rest of the batch, as in every free block
    BatchHead* nextBatch;
    unsigned count;
};
static_assert(sizeof(BatchHead) <= kSmallestClass * kGranule);

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
        BatchHead* batches = nullptr;
        // Single blocks freed after their thread ended, gathered until they make a batch.
        FreeBlock* loose = nullptr;
        unsigned looseCount = 0;

        void push(FreeBlock* head, unsigned count) {
            auto* batch = reinterpret_cast<BatchHead*>(head);
            batch->nextBatch = batches;
            batch->count = count;
            batches = batch;
        }
        // The top batch (or the loose blocks); false when there is none.
        bool pop(FreeBlock** head, unsigned* count) {
            if (batches) {
                BatchHead* batch = batches;
                batches = batch->nextBatch;
                *head = reinterpret_cast<FreeBlock*>(batch);
                *count = batch->count;
                return true;
            }
            if (looseCount == 0)
                return false;
            *head = loose;
            *count = looseCount;
            loose = nullptr;
            looseCount = 0;
            return true;
        }
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
    // The mapping is one huge page longer than asked for: cut off what lies before the first
    // boundary and after the region.
    char* base = static_cast<char*>(raw);
    std::size_t misalignment = reinterpret_cast<std::uintptr_t>(base) % kHugePage;
    std::size_t head = misalignment ? kHugePage - misalignment : 0;
    char* aligned = base + head;
    if (head)
        munmap(base, head);
    if (span > head + size)
        munmap(aligned + size, span - head - size);
    madvise(aligned, size, MADV_HUGEPAGE);
    g_reservedBytes.fetch_add(static_cast<long long>(size), std::memory_order_relaxed);
    return aligned;
}

// Takes `bytes` from the current chunk, mapping a new one when it is used up. Chunks grow with
// use, so that large trees take few system calls. Called under the arena lock.
char* takeFromChunk(Shared& s, std::size_t bytes) {
    if (static_cast<std::size_t>(s.chunkEnd - s.chunkCur) < bytes) {
        std::size_t size = s.nextChunk;
        s.chunkCur = mapChunk(size);
        s.chunkEnd = s.chunkCur + size;
        if (s.nextChunk < kLargestChunk)
            s.nextChunk *= 2;
    }
    char* region = s.chunkCur;
    s.chunkCur += bytes;
    return region;
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
    tc.spanCur = takeFromChunk(s, kSpan);
    tc.spanEnd = tc.spanCur + kSpan;
}

void* carve(ThreadCache& tc, std::size_t bytes) {
    if (static_cast<std::size_t>(tc.spanEnd - tc.spanCur) < bytes)
        refillSpan(tc);
    char* block = tc.spanCur;
    tc.spanCur += bytes;
    return block;
}

// Moves the whole list into the depot (when a thread ends).
void spillAll(ClassList& list, std::size_t cls) {
    Shared::Depot& depot = shared().depots[cls];
    std::lock_guard<std::mutex> guard(depot.lock);
    depot.push(list.head, list.count);
    list = {nullptr, nullptr, 0};
}

// Moves the oldest batch (the blocks below `cut`) into the depot.
void spillOldest(ClassList& list, std::size_t cls) {
    Shared::Depot& depot = shared().depots[cls];
    unsigned count = batchCount(cls);
    FreeBlock* batch = list.cut->next;
    list.cut->next = nullptr;
    list.cut = nullptr;
    list.count -= count;
    std::lock_guard<std::mutex> guard(depot.lock);
    depot.push(batch, count);
}

bool takeBatch(ClassList& list, std::size_t cls) {
    Shared::Depot& depot = shared().depots[cls];
    std::lock_guard<std::mutex> guard(depot.lock);
    FreeBlock* head = nullptr;
    unsigned count = 0;
    if (!depot.pop(&head, &count))
        return false;
    list = {head, nullptr, count};
    return true;
}

// Paths for a thread whose cache has been retired (its thread-local objects are going away).
void* allocateRetired(std::size_t cls) {
    Shared::Depot& depot = shared().depots[cls];
    {
        std::lock_guard<std::mutex> guard(depot.lock);
        if (depot.looseCount == 0)
            depot.pop(&depot.loose, &depot.looseCount);
        if (depot.looseCount > 0) {
            FreeBlock* block = depot.loose;
            depot.loose = block->next;
            --depot.looseCount;
            return block;
        }
    }
    // A private span would be lost when this thread ends, so carve under the arena lock.
    Shared& s = shared();
    std::lock_guard<std::mutex> guard(s.arenaLock);
    return takeFromChunk(s, classBytes(cls));
}

void deallocateRetired(void* block, std::size_t cls) {
    Shared::Depot& depot = shared().depots[cls];
    std::lock_guard<std::mutex> guard(depot.lock);
    auto* b = static_cast<FreeBlock*>(block);
    b->next = depot.loose;
    depot.loose = b;
    if (++depot.looseCount >= batchCount(cls)) {
        depot.push(depot.loose, depot.looseCount);
        depot.loose = nullptr;
        depot.looseCount = 0;
    }
}

// Runs when a thread ends: its free blocks and the rest of its span go back for others.
void retire(ThreadCache& tc) {
    for (std::size_t cls = kSmallestClass; cls <= kClassCount; ++cls) {
        if (tc.lists[cls].count > 0)
            spillAll(tc.lists[cls], cls);
    }
    if (tc.spanEnd - tc.spanCur >= 4096) {
        Shared& s = shared();
        std::lock_guard<std::mutex> guard(s.arenaLock);
        try {
            s.leftoverSpans.emplace_back(tc.spanCur, tc.spanEnd);
        } catch (...) {
            // No memory for the record: the rest of the span stays unused.
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
    std::size_t cls = classOf(size);
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
        if (--list.count == batchCount(cls))
            list.cut = nullptr; // the marked block was the one just taken
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
    std::size_t cls = classOf(size);
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
    unsigned batch = batchCount(cls);
    if (++list.count == batch + 1)
        list.cut = b;
    else if (list.count >= 2 * batch) [[unlikely]]
        spillOldest(list, cls);
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
