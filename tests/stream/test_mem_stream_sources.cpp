// Lazy sources of the memory stream: pulled block by block only when needed, deleted when owned,
// concatenated in order, and read in streaming mode with at most two blocks held.
#include <gtest/gtest.h>

#include "stream_test_support.h"

using namespace ZtCommonNS;
using ZtStreamTest::contentOf;
using ZtStreamTest::patternBytes;
using ZtStreamTest::ProbeStream;

TEST(MemStreamSources, PulledOnlyAsFarAsReadsAndSeeksNeed) {
    std::vector<std::string> deleted;
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

    EXPECT_EQ(stream.length(), 100u); // a length query pulls everything
    EXPECT_EQ(deleted, std::vector<std::string>{"source"});
    EXPECT_EQ(stream.getMemBuffer().getSource(), nullptr);
    EXPECT_EQ(contentOf(stream), patternBytes(100));
}

TEST(MemStreamSources, EndRelativeSeekPullsEverything) {
    std::vector<std::string> deleted;
    auto* source = new ProbeStream("0123456789", &deleted, "s");
    ZtMemStream stream(source, 4, true);
    EXPECT_EQ(stream.seekg(-3, std::ios_base::end).tellg(), std::streampos(7));
    EXPECT_EQ(deleted.size(), 1u);
    EXPECT_EQ(stream.get(), '7');
}

TEST(MemStreamSources, OwnedSourcesDieWithTheBufferOrWhenEmptied) {
    std::vector<std::string> deleted;
    {
        ZtMemStream stream(new ProbeStream("abc", &deleted, "first"), 8, true);
        stream.setSource(new ProbeStream("def", &deleted, "second"), true);
        ProbeStream kept("ghi", &deleted, "not owned");
        stream.setSource(&kept, false);
        EXPECT_TRUE(deleted.empty());
        EXPECT_EQ(stream.get(), 'a'); // block 0 uses up the first two and part of the third
        EXPECT_EQ(deleted, (std::vector<std::string>{"first", "second"}));
        EXPECT_EQ(contentOf(stream), "abcdefghi");
        deleted.clear();
    }
    // The unowned source died with its scope, not with the stream.
    EXPECT_EQ(deleted, std::vector<std::string>{"not owned"});

    deleted.clear();
    { ZtMemStream stream(new ProbeStream("never read", &deleted, "queued"), 8, true); }
    EXPECT_EQ(deleted, std::vector<std::string>{"queued"});

    deleted.clear();
    ZtMemStream removed(new ProbeStream("xyz", &deleted, "removed"), 8, true);
    removed.remove();
    EXPECT_EQ(deleted, std::vector<std::string>{"removed"});
    EXPECT_TRUE(removed.empty());

    deleted.clear();
    ZtMemStream cleared(new ProbeStream("xyz", &deleted, "cleared"), 8, true);
    cleared.getMemBuffer().clear();
    EXPECT_EQ(deleted, std::vector<std::string>{"cleared"});
}

TEST(MemStreamSources, SourcesFollowEachOtherAcrossBlocks) {
    std::vector<std::string> deleted;
    ZtMemStream stream(new ProbeStream("abc", &deleted, "A"), 4, true);
    stream.setSource(new ProbeStream("defgh", &deleted, "B"), true);
    stream.setSource(new ProbeStream("", &deleted, "C"), true);
    stream.setSource(new ProbeStream("ij", &deleted, "D"), true);
    EXPECT_NE(stream.getMemBuffer().getSource(), nullptr);
    std::string all;
    for (int c = stream.get(); c != EOF; c = stream.get())
        all += static_cast<char>(c);
    EXPECT_EQ(all, "abcdefghij");
    EXPECT_EQ(deleted, (std::vector<std::string>{"A", "B", "C", "D"}));
}

TEST(MemStreamSources, SetSourceFillsAPartialLastBlockAtOnce) {
    std::vector<std::string> deleted;
    ZtMemStream stream(nullptr, 8);
    stream << "xy";
    auto* source = new ProbeStream("12345678901", &deleted, "s");
    stream.setSource(source, true);
    EXPECT_EQ(source->consumed(), 6); // up to the end of the last block
    EXPECT_EQ(stream.getMemBuffer().getSource(), source);
    EXPECT_EQ(contentOf(stream), "xy12345678901");
    EXPECT_EQ(deleted.size(), 1u);

    // A source shorter than the room left is used up and deleted at once.
    ZtMemStream other(nullptr, 8);
    other << "ab";
    other.setSource(new ProbeStream("cd", &deleted, "short"), true);
    EXPECT_EQ(deleted.back(), "short");
    EXPECT_EQ(other.getMemBuffer().getSource(), nullptr);
    EXPECT_EQ(contentOf(other), "abcd");
    other.setSource(nullptr, true); // ignored
    EXPECT_EQ(other.length(), 4u);
}

TEST(MemStreamSources, AFailedSourceEndsInsteadOfHanging) {
    auto* broken = new std::istringstream("data");
    broken->setstate(std::ios_base::failbit);
    ZtMemStream stream(broken, 4, true);
    stream.setSource(new std::istringstream("ok"), true);
    EXPECT_EQ(contentOf(stream), "ok");
}

TEST(MemStreamSources, StreamingModeHoldsAtMostTwoBlocks) {
    const std::string data = patternBytes(300000, 5);
    std::vector<std::string> deleted;
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
    std::vector<std::string> deleted;
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
        EXPECT_EQ(stream.length(), 11u);
        EXPECT_EQ(contentOf(stream), "hello world");
        stream >> word;
        EXPECT_EQ(word, "hello");
    }
    EXPECT_EQ(deleted, std::vector<std::string>{"given"});
}
