// The block memory behind the memory stream: heap blocks first, then huge-page regions, reuse of
// released blocks and return of spare memory.
#include <cstdint>
#include <cstring>
#include <set>

#include <gtest/gtest.h>

#include "stream/block_pool.h"
#include "stream_test_support.h"

using namespace ZtCommonNS;

TEST(BlockPool, LargeStreamsUseAlignedRegionsAndReleasedBlocksComeBack) {
    const size_t blockSize = 8192;
    ZtBlockPool pool(blockSize);
    std::vector<char*> blocks;
    const size_t count = (ZtBlockPool::kHeapBytes + 3 * ZtBlockPool::kHugePage) / blockSize;
    for (size_t i = 0; i < count; ++i) {
        blocks.push_back(pool.allocate());
        std::memset(blocks.back(), static_cast<int>(i), blockSize); // every byte is usable
    }
    // No two blocks overlap.
    std::set<char*> sorted(blocks.begin(), blocks.end());
    ASSERT_EQ(sorted.size(), count);
    for (auto it = sorted.begin(); std::next(it) != sorted.end(); ++it)
        ASSERT_GE(*std::next(it) - *it, static_cast<std::ptrdiff_t>(blockSize));
    // The first block after the heap allowance starts a region on a huge-page boundary.
    const size_t firstCarved = ZtBlockPool::kHeapBytes / blockSize;
    EXPECT_EQ(reinterpret_cast<uintptr_t>(blocks[firstCarved]) % ZtBlockPool::kHugePage, 0u);
    for (size_t i = 0; i < count; ++i)
        ASSERT_EQ(blocks[i][blockSize - 1], static_cast<char>(i));

    // The last block released is the next one handed out.
    pool.release(blocks[5]);
    EXPECT_EQ(pool.allocate(), blocks[5]);
    pool.release(blocks.back());
    EXPECT_EQ(pool.allocate(), blocks.back());

    for (char* block : blocks)
        pool.release(block);
    pool.releaseSpare();
    // Everything was given back; new blocks work as before.
    char* fresh = pool.allocate();
    std::memset(fresh, 1, blockSize);
    pool.release(fresh);
}

TEST(BlockPool, ChangingTheBlockSizeAfterEverythingIsReleased) {
    ZtBlockPool pool(100);
    char* a = pool.allocate();
    pool.release(a);
    pool.setBlockSize(size_t{3} << 20); // larger than a huge page: a region of its own
    EXPECT_EQ(pool.blockSize(), 3u * 1024 * 1024);
    char* big = pool.allocate();
    std::memset(big, 7, pool.blockSize());
    EXPECT_EQ(reinterpret_cast<uintptr_t>(big) % ZtBlockPool::kHugePage, 0u);
    pool.release(big);
}

TEST(BlockPool, AMemoryStreamOfManyMegabytesReadsBackExactly) {
    // Crosses from heap blocks into several regions of growing size.
    const std::string data = ZtStreamTest::patternBytes(9 << 20, 11);
    ZtMemStream stream;
    for (size_t at = 0; at < data.size(); at += 4096)
        stream.write(data.data() + at, 4096);
    std::string back;
    stream.appendToString(back);
    EXPECT_EQ(back, data);
    stream.trim(1 << 20); // gives the regions back
    stream << "end";
    back.clear();
    stream.appendToString(back);
    EXPECT_EQ(back, data.substr(0, 1 << 20) + "end");
}

TEST(BlockPool, AWritePositionBeyondAllMemoryFailsAsAnAllocation) {
    ZtMemStream stream(nullptr, 4096);
    stream << "x";
    // A petabyte of blocks cannot exist: the seek fails with the standard allocation failure
    // before anything changes.
    EXPECT_THROW(stream.rdbuf()->pubseekpos(std::streamoff{1} << 50, std::ios_base::out),
                 std::bad_alloc);
    EXPECT_EQ(stream.getMemBuffer().getBlockCount(), 1u);
    EXPECT_EQ(stream.length(), 1u);
    EXPECT_EQ(ZtStreamTest::contentOf(stream), "x");
}
