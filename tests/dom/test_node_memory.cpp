// The node allocator: blocks reused, never handed out twice, freed from any thread, counted.
#include <algorithm>
#include <cstdint>
#include <set>
#include <thread>
#include <vector>

#include "dom/node_memory.h"
#include "dom_test_util.h"

using namespace domtest;

namespace {

// Runs body(0) ... body(count - 1) on threads of their own and waits for all of them.
template <typename Body> void onThreads(size_t count, Body body) {
    std::vector<std::thread> threads;
    for (size_t t = 0; t < count; ++t)
        threads.emplace_back(body, t);
    for (auto& th : threads)
        th.join();
}

} // namespace

TEST(NodeMemory, SizeClassesRoundUpToEightBytesFromTwentyFour) {
    EXPECT_EQ(NodeMemory::blockSize(1), 24u); // the smallest block holds three words
    EXPECT_EQ(NodeMemory::blockSize(56), 56u);
    EXPECT_EQ(NodeMemory::blockSize(57), 64u);
    EXPECT_EQ(NodeMemory::blockSize(NodeMemory::kLargestClass), NodeMemory::kLargestClass);
    EXPECT_EQ(NodeMemory::blockSize(1000), 1000u);
}

TEST(NodeMemory, CountsBlocksInUseAndReusesFreedOnes) {
    // A size no node class has, so that the free blocks of this size are all this test's.
    constexpr size_t kSize = 232;
    long long before = NodeMemory::bytesInUse();
    std::vector<void*> blocks(5000);
    for (void*& b : blocks)
        b = NodeMemory::allocate(kSize);
    void* large = NodeMemory::allocate(1000);
    EXPECT_EQ(NodeMemory::bytesInUse() - before, 5000 * static_cast<long long>(kSize) + 1000);
    for (void* b : blocks)
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(b) % 8, 0u);
    std::set<void*> seen(blocks.begin(), blocks.end());
    EXPECT_EQ(seen.size(), blocks.size());
    for (void* b : blocks)
        NodeMemory::deallocate(b, kSize);
    NodeMemory::deallocate(large, 1000);
    EXPECT_EQ(NodeMemory::bytesInUse(), before);
    if (!NodeMemory::usesChunks())
        GTEST_SKIP() << "blocks come from the system allocator in this build";
    long long reserved = NodeMemory::bytesReserved();
    for (void*& b : blocks) {
        b = NodeMemory::allocate(kSize);
        EXPECT_EQ(seen.count(b), 1u);
    }
    EXPECT_EQ(NodeMemory::bytesReserved(), reserved);
    for (void* b : blocks)
        NodeMemory::deallocate(b, kSize);
}

// Threads allocate, fill each block with a pattern of their own, hand half of their blocks to
// the next thread to free, and check that no block was given to two owners at once.
TEST(NodeMemory, ThreadsShareBlocksSafely) {
    constexpr size_t kThreads = 4;
    constexpr size_t kBlocks = 20000;
    constexpr size_t kSize = 88;
    constexpr std::ptrdiff_t kWords = kSize / 8;
    std::vector<std::vector<void*>> handed(kThreads);
    std::vector<int> corrupt(kThreads, 0);
    auto pattern = [](size_t owner, size_t i) { return (std::uint64_t{owner} << 32) | i; };
    for (int round = 0; round < 3; ++round) {
        onThreads(kThreads, [&](size_t t) {
            std::vector<std::uint64_t*> mine;
            for (size_t i = 0; i < kBlocks; ++i) {
                mine.push_back(static_cast<std::uint64_t*>(NodeMemory::allocate(kSize)));
                std::fill_n(mine.back(), kWords, pattern(t, i));
            }
            // Check the patterns, free the odd blocks here, give the even ones away.
            for (size_t i = 0; i < kBlocks; ++i) {
                if (std::count(mine[i], mine[i] + kWords, pattern(t, i)) != kWords)
                    ++corrupt[t];
                if (i % 2)
                    NodeMemory::deallocate(mine[i], kSize);
                else
                    handed[t].push_back(mine[i]);
            }
        });
        onThreads(kThreads, [&](size_t t) {
            for (void* b : handed[(t + 1) % kThreads])
                NodeMemory::deallocate(b, kSize);
            handed[(t + 1) % kThreads].clear();
        });
    }
    for (size_t t = 0; t < kThreads; ++t)
        EXPECT_EQ(corrupt[t], 0) << "thread " << t;
}

// Trees built on one thread and released on another, while other threads build their own.
TEST(NodeMemory, TreesCrossThreads) {
    constexpr size_t kThreads = 3;
    std::vector<ZtPtr<ZtDocument>> made(kThreads);
    onThreads(kThreads, [&](size_t t) {
        made[t] = newDocument();
        ZtNode* parent = made[t];
        for (int i = 0; i < 3000; ++i) {
            ZtNode* e = parent->appendChild(made[t]->createElement(ZtName(NM_block)));
            e->appendChildText(u"some text");
            if (i % 10 == 0)
                parent = e;
        }
    });
    onThreads(kThreads, [&](size_t t) {
        ZtPtr<ZtDocument> doc = made[(t + 1) % kThreads];
        made[(t + 1) % kThreads] = nullptr;
        EXPECT_EQ(doc->getDescendantNodes()->getLength(), 6000);
    });
}
