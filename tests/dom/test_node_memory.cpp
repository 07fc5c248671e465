// The node allocator: blocks reused, never handed out twice, freed from any thread, counted.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <set>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "dom/node_memory.h"
#include "dom_test_util.h"

using namespace ZtCommonNS;

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
    std::vector<void*> blocks;
    blocks.reserve(5000);
    for (int i = 0; i < 5000; ++i)
        blocks.push_back(NodeMemory::allocate(kSize));
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
    int reused = 0;
    for (int i = 0; i < 5000; ++i) {
        blocks[static_cast<size_t>(i)] = NodeMemory::allocate(kSize);
        reused += seen.count(blocks[static_cast<size_t>(i)]) ? 1 : 0;
    }
    EXPECT_EQ(reused, 5000);
    EXPECT_EQ(NodeMemory::bytesReserved(), reserved);
    for (void* b : blocks)
        NodeMemory::deallocate(b, kSize);
}

// Threads allocate, fill each block with a pattern of their own, hand half of their blocks to
// the next thread to free, and check that no block was given to two owners at once.
TEST(NodeMemory, ThreadsShareBlocksSafely) {
    constexpr int kThreads = 4;
    constexpr int kBlocks = 20000;
    constexpr size_t kSize = 88;
    std::vector<std::vector<void*>> handed(kThreads);
    std::vector<int> corrupt(kThreads, 0);
    auto fill = [](void* b, int owner, int i) {
        auto* words = static_cast<std::uint64_t*>(b);
        for (size_t w = 0; w < kSize / 8; ++w)
            words[w] = (static_cast<std::uint64_t>(owner) << 32) | static_cast<unsigned>(i);
    };
    auto intact = [](void* b, int owner, int i) {
        auto* words = static_cast<std::uint64_t*>(b);
        for (size_t w = 0; w < kSize / 8; ++w) {
            if (words[w] != ((static_cast<std::uint64_t>(owner) << 32) | static_cast<unsigned>(i)))
                return false;
        }
        return true;
    };
    for (int round = 0; round < 3; ++round) {
        std::vector<std::thread> threads;
        threads.reserve(kThreads);
        for (int t = 0; t < kThreads; ++t) {
            threads.emplace_back([&, t] {
                std::vector<void*> mine;
                for (int i = 0; i < kBlocks; ++i) {
                    mine.push_back(NodeMemory::allocate(kSize));
                    fill(mine.back(), t, i);
                }
                for (int i = 0; i < kBlocks; ++i) {
                    if (!intact(mine[static_cast<size_t>(i)], t, i))
                        ++corrupt[static_cast<size_t>(t)];
                }
                // Free the odd ones here, give the even ones to be freed elsewhere.
                std::vector<void*> give;
                for (int i = 0; i < kBlocks; ++i) {
                    if (i % 2)
                        NodeMemory::deallocate(mine[static_cast<size_t>(i)], kSize);
                    else
                        give.push_back(mine[static_cast<size_t>(i)]);
                }
                handed[static_cast<size_t>(t)] = std::move(give);
            });
        }
        for (auto& th : threads)
            th.join();
        threads.clear();
        for (int t = 0; t < kThreads; ++t) {
            threads.emplace_back([&, t] {
                for (void* b : handed[static_cast<size_t>((t + 1) % kThreads)])
                    NodeMemory::deallocate(b, kSize);
            });
        }
        for (auto& th : threads)
            th.join();
    }
    for (int t = 0; t < kThreads; ++t)
        EXPECT_EQ(corrupt[static_cast<size_t>(t)], 0) << "thread " << t;
}

// Trees built on one thread and released on another, while other threads build their own.
TEST(NodeMemory, TreesCrossThreads) {
    using namespace domtest;
    constexpr int kThreads = 3;
    std::vector<ZtPtr<ZtDocument>> made(kThreads);
    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            ZtPtr<ZtDocument> doc = newDocument();
            ZtNode* parent = doc;
            for (int i = 0; i < 3000; ++i) {
                ZtNode* e = parent->appendChild(doc->createElement(ZtName(NM_block)));
                e->appendChildText(u"some text");
                if (i % 10 == 0)
                    parent = e;
            }
            made[static_cast<size_t>(t)] = doc;
        });
    }
    for (auto& th : threads)
        th.join();
    threads.clear();
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            ZtPtr<ZtDocument> doc = made[static_cast<size_t>((t + 1) % kThreads)];
            made[static_cast<size_t>((t + 1) % kThreads)] = nullptr;
            EXPECT_EQ(doc->getDescendantNodes()->getLength(), 6000);
        });
    }
    for (auto& th : threads)
        th.join();
}
