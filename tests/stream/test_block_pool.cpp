// The block memory behind the memory stream: heap blocks first, then huge-page regions, reuse of
// released blocks, return of spare memory, and streams of many megabytes.
#include <cstdint>
#include <cstring>
#include <set>

#include <gtest/gtest.h>

#include "stream/block_pool.h"
#include "stream_test_support.h"

using namespace ZtCommonNS;

namespace {
bool hugePageAligned(const char* p) {
    return reinterpret_cast<uintptr_t>(p) % ZtBlockPool::kHugePage == 0;
}
} // namespace

TEST(BlockPool, LargeStreamsUseAlignedRegionsAndReleasedBlocksComeBack) {
    const size_t blockSize = 8192;
    ZtBlockPool pool(blockSize);
    std::vector<char*> blocks;
    const size_t count = (ZtBlockPool::kHeapBytes + 3 * ZtBlockPool::kHugePage) / blockSize;
    for (size_t i = 0; i < count; ++i) {
        blocks.push_back(pool.allocate());
        std::memset(blocks.back(), static_cast<int>(i), blockSize); // every byte is usable
    }
    // No two blocks overlap, and none was overwritten by another.
    std::set<char*> sorted(blocks.begin(), blocks.end());
    ASSERT_EQ(sorted.size(), count);
    for (auto it = sorted.begin(); std::next(it) != sorted.end(); ++it)
        ASSERT_GE(*std::next(it) - *it, static_cast<std::ptrdiff_t>(blockSize));
    for (size_t i = 0; i < count; ++i)
        ASSERT_EQ(blocks[i][blockSize - 1], static_cast<char>(i));
    // The first block after the heap allowance starts a region on a huge-page boundary.
    EXPECT_TRUE(hugePageAligned(blocks[ZtBlockPool::kHeapBytes / blockSize]));

    // The last block released is the next one handed out, from the heap or from a region.
    for (char* block : {blocks[5], blocks.back()}) {
        pool.release(block);
        EXPECT_EQ(pool.allocate(), block);
    }
    for (char* block : blocks)
        pool.release(block);
    pool.releaseSpare();
    // Everything was given back; new blocks work as before, also of another size (larger than
    // a huge page: a region of its own).
    std::memset(blocks[0] = pool.allocate(), 1, blockSize);
    pool.release(blocks[0]);
    pool.setBlockSize(size_t{3} << 20);
    char* big = pool.allocate();
    std::memset(big, 7, pool.blockSize());
    EXPECT_TRUE(hugePageAligned(big));
    pool.release(big);
}

TEST(BlockPool, ManyMegabytesInBulkReadBackExactly) {
    // Crosses from heap blocks into several regions of growing size, in blocks of odd size, with
    // transfers much larger than a block.
    const std::string data = ZtStreamTest::patternBytes(9 << 20, 11);
    ZtMemStream stream(nullptr, 1000);
    stream.write(data.data(), static_cast<std::streamsize>(data.size()));
    std::string back(data.size(), '\0');
    EXPECT_EQ(stream.read(back.data(), static_cast<std::streamsize>(back.size())).gcount(),
              static_cast<std::streamsize>(data.size()));
    EXPECT_EQ(back, data);
    // The standard copy between stream buffers moves the whole content.
    ZtMemStream copy;
    stream.seekg(0);
    copy << stream.rdbuf();
    EXPECT_EQ(ZtStreamTest::contentOf(copy), data);
    copy.trim(1 << 20); // gives the regions back
    copy << "end";
    EXPECT_EQ(ZtStreamTest::contentOf(copy), data.substr(0, 1 << 20) + "end");
}

TEST(BlockPool, AWritePositionBeyondAllMemoryFailsAsAnAllocation) {
    ZtMemStream stream(nullptr, 4096);
    stream << "x";
    // A petabyte of blocks cannot exist: the seek fails with the standard allocation failure
    // before anything changes.
    EXPECT_THROW(stream.rdbuf()->pubseekpos(std::streamoff{1} << 50, std::ios_base::out),
                 std::bad_alloc);
    EXPECT_EQ(stream.getMemBuffer().getBlockCount(), 1u);
    EXPECT_EQ(ZtStreamTest::contentOf(stream), "x");
}
