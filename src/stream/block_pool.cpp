// Block memory of the memory stream: heap blocks for small streams, huge-page regions for
// large ones, and a list of spare blocks for reuse.
#include "stream/block_pool.h"

#include <algorithm>
#include <cstdint>
#include <new>

#include <sys/mman.h>
#include <unistd.h>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZT_POOL_ASAN 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define ZT_POOL_ASAN 1
#endif
#ifdef ZT_POOL_ASAN
#include <sanitizer/asan_interface.h>
// Memory of a region that is not handed out is poisoned, so that the sanitizer reports any use
// of a released block as it does for heap memory.
#define ZT_POISON(p, n) ASAN_POISON_MEMORY_REGION(p, n)
#define ZT_UNPOISON(p, n) ASAN_UNPOISON_MEMORY_REGION(p, n)
#else
#define ZT_POISON(p, n) ((void)(p), (void)(n))
#define ZT_UNPOISON(p, n) ((void)(p), (void)(n))
#endif

namespace ZtCommonNS {

namespace {
size_t roundUp(size_t n, size_t unit) {
    return (n + unit - 1) / unit * unit;
}

size_t physicalMemory() {
    static const size_t bytes = [] {
        const long pages = sysconf(_SC_PHYS_PAGES);
        const long pageSize = sysconf(_SC_PAGESIZE);
        return pages > 0 && pageSize > 0
                   ? static_cast<size_t>(pages) * static_cast<size_t>(pageSize)
                   : SIZE_MAX;
    }();
    return bytes;
}
} // namespace

ZtBlockPool::ZtBlockPool(size_t blockSize) : blockSize_(blockSize) {}

ZtBlockPool::~ZtBlockPool() {
    for (char* block : spare_)
        if (!regionOf(block))
            delete[] block;
    for (const Region& region : regions_) {
        ZT_UNPOISON(region.base, region.bytes);
        munmap(region.base, region.bytes);
    }
}

void ZtBlockPool::setBlockSize(size_t blockSize) {
    if (blockSize == blockSize_)
        return;
    releaseSpare();
    // Spare blocks of regions still in use would have the old size: drop them.
    spare_.clear();
    blockSize_ = blockSize;
    nextRegionBytes_ = kHugePage;
    for (Region& region : regions_)
        region.carved = region.bytes; // nothing more is carved from regions of the old size
}

ZtBlockPool::Region* ZtBlockPool::regionOf(const char* block) {
    auto it = std::upper_bound(regions_.begin(), regions_.end(), block,
                               [](const char* p, const Region& r) { return p < r.base; });
    if (it == regions_.begin())
        return nullptr;
    --it;
    return block < it->base + it->bytes ? &*it : nullptr;
}

void ZtBlockPool::checkRoomFor(size_t count) const {
    // Each block also costs its place in the block list.
    const size_t most = physicalMemory() / (blockSize_ + sizeof(char*));
    if (count > most || live_ > most - count)
        throw std::bad_alloc();
}

char* ZtBlockPool::allocate() {
    checkRoomFor(1);
    char* block;
    if (!spare_.empty()) {
        block = spare_.back();
        spare_.pop_back();
        if (Region* region = regionOf(block)) {
            ++region->live;
            ZT_UNPOISON(block, blockSize_);
        } else {
            ++heapLive_;
        }
    } else if ((heapLive_ + 1) * blockSize_ <= kHeapBytes) {
        block = new char[blockSize_];
        ++heapLive_;
    } else {
        block = carve();
    }
    ++live_;
    return block;
}

char* ZtBlockPool::carve() {
    // The newest region is the one being carved; it is not always the last by address.
    for (Region& region : regions_)
        if (region.bytes - region.carved >= blockSize_) {
            char* block = region.base + region.carved;
            region.carved += blockSize_;
            ++region.live;
            ZT_UNPOISON(block, blockSize_);
            return block;
        }
    mapRegion();
    return carve();
}

void ZtBlockPool::mapRegion() {
    const size_t bytes = std::max(nextRegionBytes_, roundUp(blockSize_, kHugePage));
    // Map one huge page more than needed and cut the ends so that the region is aligned.
    const size_t mapped = bytes + kHugePage;
    void* mapping =
        mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapping == MAP_FAILED)
        throw std::bad_alloc();
    char* raw = static_cast<char*>(mapping);
    const auto misalignment = reinterpret_cast<uintptr_t>(raw) % kHugePage;
    const size_t head = misalignment == 0 ? 0 : kHugePage - misalignment;
    char* base = raw + head;
    if (head > 0)
        munmap(raw, head);
    munmap(base + bytes, mapped - head - bytes);
    madvise(base, bytes, MADV_HUGEPAGE);
    ZT_POISON(base, bytes);
    Region region{base, bytes, 0, 0};
    regions_.insert(std::upper_bound(regions_.begin(), regions_.end(), base,
                                     [](const char* p, const Region& r) { return p < r.base; }),
                    region);
    nextRegionBytes_ = std::min(nextRegionBytes_ * 2, kMaxRegionBytes);
}

void ZtBlockPool::release(char* block) {
    --live_;
    if (Region* region = regionOf(block)) {
        --region->live;
        ZT_POISON(block, blockSize_);
    } else {
        --heapLive_;
    }
    spare_.push_back(block);
}

void ZtBlockPool::releaseSpare() {
    std::vector<char*> kept;
    for (char* block : spare_) {
        if (!regionOf(block))
            delete[] block;
        else
            kept.push_back(block);
    }
    spare_.swap(kept);
    auto unused = [](const Region& r) { return r.live == 0; };
    if (std::none_of(regions_.begin(), regions_.end(), unused))
        return;
    std::erase_if(spare_, [this](char* block) { return regionOf(block)->live == 0; });
    for (Region& region : regions_)
        if (region.live == 0) {
            ZT_UNPOISON(region.base, region.bytes);
            munmap(region.base, region.bytes);
        }
    std::erase_if(regions_, unused);
    if (regions_.empty())
        nextRegionBytes_ = kHugePage;
}

} // namespace ZtCommonNS
