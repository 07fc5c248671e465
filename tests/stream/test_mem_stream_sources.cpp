// Lazy sources of the memory stream: pulled block by block only when needed, deleted when owned,
// concatenated in order, and read in streaming mode with at most two blocks held.
#include <gtest/gtest.h>

#include "stream_test_support.h"

using namespace ZtCommonNS;
using ZtStreamTest::contentOf;
using ZtStreamTest::patternBytes;
using ZtStreamTest::ProbeStream;
using Names = std::vector<std::string>;

TEST(MemStreamSources, PulledOnlyAsFarAsReadsAndSeeksNeed) {
    Names deleted;
    auto* source = new ProbeStream(patternBytes(100), &deleted, "source");
    ZtMemStream stream(source, 16, true);
    EXPECT_EQ(source->consumed(), 0);
    char buffer[17];
    stream.read(buffer, 10);
    EXPECT_EQ(source->consumed(), 16); // one block
    stream.read(buffer, 7);            // position 17 lies in the second block
    EXPECT_EQ(source->consumed(), 32);
    stream.seekg(50);
    EXPECT_EQ(source->consumed(), 64); // enough blocks to hold position 50
    EXPECT_TRUE(deleted.empty());
    // An end-relative seek pulls everything, and the used-up source is deleted.
    EXPECT_EQ(stream.seekg(-3, std::ios_base::end).tellg(), std::streampos(97));
    EXPECT_EQ(deleted, Names{"source"});
    EXPECT_EQ(stream.getMemBuffer().getSource(), nullptr);
    EXPECT_EQ(contentOf(stream), patternBytes(100));
}

TEST(MemStreamSources, FollowEachOtherAndOwnedOnesAreDeleted) {
    Names deleted;
    {
        ZtMemStream stream(new ProbeStream("abc", &deleted, "A"), 4, true);
        stream.setSource(new ProbeStream("defgh", &deleted, "B"), true);
        stream.setSource(new ProbeStream("", &deleted, "C"), true);
        ProbeStream kept("ij", &deleted, "not owned");
        stream.setSource(&kept, false);
        EXPECT_TRUE(deleted.empty());
        EXPECT_EQ(stream.get(), 'a'); // block 0 uses up the first and part of the second
        EXPECT_EQ(deleted, Names{"A"});
        std::string all = "a";
        for (int c = stream.get(); c != EOF; c = stream.get())
            all += static_cast<char>(c);
        EXPECT_EQ(all, "abcdefghij");
        EXPECT_EQ(deleted, (Names{"A", "B", "C"}));
    }
    // The unowned source died with its scope, not with the stream.
    EXPECT_EQ(deleted.back(), "not owned");

    // Sources never read die with the stream, with remove() and with clear().
    deleted.clear();
    { ZtMemStream stream(new ProbeStream("never read", &deleted, "queued"), 8, true); }
    ZtMemStream removed(new ProbeStream("xyz", &deleted, "removed"), 8, true);
    removed.remove();
    EXPECT_TRUE(removed.empty());
    ZtMemStream cleared(new ProbeStream("xyz", &deleted, "cleared"), 8, true);
    cleared.getMemBuffer().clear();
    EXPECT_EQ(deleted, (Names{"queued", "removed", "cleared"}));
}

TEST(MemStreamSources, SetSourceFillsAPartialLastBlockAtOnce) {
    Names deleted;
    ZtMemStream stream(nullptr, 8);
    stream << "xy";
    auto* source = new ProbeStream("12345678901", &deleted, "long");
    stream.setSource(source, true);
    EXPECT_EQ(source->consumed(), 6); // up to the end of the last block
    EXPECT_EQ(stream.getMemBuffer().getSource(), source);
    EXPECT_EQ(contentOf(stream), "xy12345678901");

    // A source shorter than the room left is used up and deleted at once.
    ZtMemStream other(nullptr, 8);
    other << "ab";
    other.setSource(new ProbeStream("cd", &deleted, "short"), true);
    EXPECT_EQ(deleted, (Names{"long", "short"}));
    EXPECT_EQ(other.getMemBuffer().getSource(), nullptr);
    other.setSource(nullptr, true); // ignored
    EXPECT_EQ(contentOf(other), "abcd");

    // A failed source ends instead of hanging.
    auto* broken = new std::istringstream("data");
    broken->setstate(std::ios_base::failbit);
    ZtMemStream afterBroken(broken, 4, true);
    afterBroken.setSource(new std::istringstream("ok"), true);
    EXPECT_EQ(contentOf(afterBroken), "ok");
}

TEST(MemStreamSources, StreamingModeHoldsAtMostTwoBlocks) {
    const std::string data = patternBytes(300000, 5);
    Names deleted;
    ZtMemStream stream(new ProbeStream(data, &deleted, "big"), 1024, true);
    stream.setKeepMemory(false);
    std::string back;
    char buffer[700];
    size_t most = 0;
    while (stream.read(buffer, sizeof buffer) || stream.gcount() > 0) {
        back.append(buffer, static_cast<size_t>(stream.gcount()));
        most = std::max(most, stream.getMemBuffer().getBlockCount());
    }
    EXPECT_EQ(back, data);
    EXPECT_EQ(most, 2u);
    EXPECT_EQ(deleted.size(), 1u);
    // clear() brings keep-memory back.
    stream.getMemBuffer().clear();
    EXPECT_TRUE(stream.getMemBuffer().getKeepMemory());
}

TEST(MemStreamSources, StreamOnAGivenStreamBufferOwnsTheStream) {
    Names deleted;
    auto* source = new ProbeStream("hello world", &deleted, "given");
    {
        ZtMemStream stream(*source);
        EXPECT_EQ(stream.rdbuf(), source->rdbuf()); // reads go straight to it
        EXPECT_EQ(stream.length(), 11u);            // measured by seeking, position kept
        std::string word;
        stream >> word;
        EXPECT_EQ(word, "hello");
        EXPECT_EQ(source->consumed(), 5);

        // Back to the own memory buffer, which reads the source from its start.
        stream.resetBuffer();
        EXPECT_EQ(stream.rdbuf(), &stream.getMemBuffer());
        EXPECT_EQ(contentOf(stream), "hello world");
        stream >> word;
        EXPECT_EQ(word, "hello");
    }
    EXPECT_EQ(deleted, Names{"given"});
}
