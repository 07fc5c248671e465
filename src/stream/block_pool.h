// Memory for the blocks of one memory stream.
#pragma once

#include <cstddef>
#include <vector>

namespace ZtCommonNS {

// Hands out blocks of one fixed size and takes them back for reuse.
//
// Fresh memory is expensive to touch, page by page, so a stream that grows beyond a megabyte
// takes its further blocks from large regions aligned to 2 MiB that ask the kernel for huge
// pages; smaller streams use the ordinary heap, where a huge page would mostly be wasted. Released
// blocks are kept for the next request (the pattern of a stream that is written, read and abandoned
// over and over) until releaseSpare() gives the spare memory back.
class ZtBlockPool {
public:
    explicit ZtBlockPool(size_t blockSize);
    ZtBlockPool(const ZtBlockPool&) = delete;
    ZtBlockPool& operator=(const ZtBlockPool&) = delete;
    // Frees everything; blocks still handed out become invalid.
    ~ZtBlockPool();

    size_t blockSize() const { return blockSize_; }
    // Changes the size of future blocks. Only allowed when no block is handed out.
    void setBlockSize(size_t blockSize);

    // A block of blockSize() bytes; throws std::bad_alloc when memory is exhausted, or when the
    // blocks in use would exceed the machine's physical memory (so that a write position sought
    // absurdly far fails as an allocation instead of drawing the out-of-memory killer).
    char* allocate();
    // Throws std::bad_alloc now when `count` more blocks could never be held.
    void checkRoomFor(size_t count) const;
    void release(char* block);
    // Frees the spare heap blocks and unmaps every region none of whose blocks is in use.
    void releaseSpare();

    // Bytes handed out from the heap before regions are used.
    static constexpr size_t kHeapBytes = size_t{1} << 20;
    static constexpr size_t kHugePage = size_t{2} << 20;
    static constexpr size_t kMaxRegionBytes = size_t{64} << 20;

private:
    struct Region {
        char* base;
        size_t bytes;
        size_t carved; // bytes handed out so far from the start
        size_t live;   // blocks of this region currently in use
    };

    Region* regionOf(const char* block);
    char* carve();
    void mapRegion();

    size_t blockSize_;
    size_t heapLive_ = 0; // heap blocks in use
    size_t live_ = 0;     // all blocks in use
    size_t nextRegionBytes_ = kHugePage;
    std::vector<char*> spare_;
    std::vector<Region> regions_; // sorted by base address
};

} // namespace ZtCommonNS
