// Memory stream operations beyond iostreams: searching and skipping across blocks, line ends,
// bulk copies in, zero-copy reads, abandoning, trimming, the table checksum and copying.
#include <gtest/gtest.h>

#include "stream_test_support.h"

using namespace ZtCommonNS;
using ZtStreamTest::contentOf;
using ZtStreamTest::patternBytes;
using ZtStreamTest::ProbeStream;

namespace {
std::string rest(ZtMemStream& stream) {
    std::string out;
    for (int c = stream.get(); c != EOF; c = stream.get())
        out += static_cast<char>(c);
    stream.clear();
    return out;
}
} // namespace

TEST(MemStreamSearch, FindsPatternsStraddlingBlocksAndStopsOnThem) {
    for (size_t blockSize : {1, 2, 3, 5, 16}) {
        ZtMemStream stream(nullptr, blockSize);
        stream << "xxaaab--needle--needle";
        EXPECT_TRUE(stream.searchSeek("aab")) << blockSize; // a partial "aa" first
        EXPECT_EQ(stream.tellg(), std::streampos(3));
        EXPECT_TRUE(stream.searchSeek("aab")); // found where it stands: not skipped
        EXPECT_EQ(stream.tellg(), std::streampos(3));
        EXPECT_TRUE(stream.searchSeek("needle", 6));
        EXPECT_EQ(stream.tellg(), std::streampos(8));
        stream.seekg(9);
        EXPECT_TRUE(stream.searchSeek("need")); // len 0 means up to the terminating zero
        EXPECT_EQ(stream.tellg(), std::streampos(16));
        EXPECT_FALSE(stream.searchSeek("needles"));
        EXPECT_EQ(stream.tellg(), std::streampos(16)); // unchanged when not found
        EXPECT_FALSE(stream.searchSeek(""));
        EXPECT_FALSE(stream.searchSeek(nullptr));
        EXPECT_EQ(rest(stream), "needle");
    }
}

TEST(MemStreamSearch, PullsSourcesWhileSearching) {
    std::vector<std::string> deleted;
    std::string data(50, '.');
    data += "<mark>";
    auto* source = new ProbeStream(data + "tail", &deleted, "s");
    ZtMemStream stream(source, 8, true);
    EXPECT_TRUE(stream.searchSeek("<mark>"));
    EXPECT_EQ(stream.tellg(), std::streampos(50));
    EXPECT_EQ(source->consumed(), 56); // only as far as the match needed
    EXPECT_TRUE(stream.skipSeek("<mark>"));
    EXPECT_EQ(rest(stream), "tail");
    // A pattern with a zero byte, given by length.
    ZtMemStream binary(nullptr, 2);
    binary.write("ab\0cd\0ef", 8);
    EXPECT_TRUE(binary.searchSeek("d\0e", 3));
    EXPECT_EQ(binary.tellg(), std::streampos(4));
}

TEST(MemStreamSearch, SkipSeekMovesOnlyOnAFullMatch) {
    ZtMemStream stream(nullptr, 3);
    stream << "<?xml version?>";
    EXPECT_FALSE(stream.skipSeek("<?xmx"));
    EXPECT_EQ(stream.tellg(), std::streampos(0));
    EXPECT_TRUE(stream.skipSeek("<?xml"));
    EXPECT_EQ(stream.tellg(), std::streampos(5));
    EXPECT_FALSE(stream.skipSeek(" version?>!")); // runs past the end
    EXPECT_EQ(stream.tellg(), std::streampos(5));
    EXPECT_TRUE(stream.skipSeek(" version?>"));
    EXPECT_EQ(stream.tellg(), std::streampos(15));
    EXPECT_FALSE(stream.skipSeek(""));
}

TEST(MemStreamSearch, SeekEOLSkipsTheLineEndAndFollowingEmptyLines) {
    for (size_t blockSize : {1, 2, 8192}) {
        ZtMemStream stream(nullptr, blockSize);
        stream << "a\r\n\r\nb";
        EXPECT_TRUE(stream.seekEOL());
        EXPECT_EQ(stream.get(), 'b');

        ZtMemStream lines(nullptr, blockSize);
        lines << "first\n\n\r\rsecond\nthird";
        lines.seekg(2);
        EXPECT_TRUE(lines.seekEOL());
        EXPECT_EQ(lines.tellg(), std::streampos(9));
        EXPECT_TRUE(lines.seekEOL());
        EXPECT_EQ(rest(lines), "third");

        ZtMemStream none(nullptr, blockSize);
        none << "no line end";
        EXPECT_FALSE(none.seekEOL());
        EXPECT_EQ(none.tellg(), std::streampos(11));

        ZtMemStream trailing(nullptr, blockSize);
        trailing << "x\n\n";
        EXPECT_TRUE(trailing.seekEOL());
        EXPECT_EQ(trailing.tellg(), std::streampos(3));
    }
}

TEST(MemStreamCopy, CopyStreamWritesStraightIntoTheBlocks) {
    const std::string data = patternBytes(5000, 9);
    for (size_t blockSize : {1, 7, 4096, 8192}) {
        ZtMemStream stream(nullptr, blockSize);
        stream << "head";
        std::istringstream in(data);
        EXPECT_EQ(stream.copyStream(in, 3000), 3000u) << blockSize;
        EXPECT_EQ(stream.tellp(), std::streampos(3004));
        EXPECT_EQ(stream.copyStream(in, 99999), 2000u); // up to the end of the input
        stream << "tail";                               // the write position follows
        EXPECT_EQ(contentOf(stream), "head" + data + "tail");
        EXPECT_EQ(stream.copyStream(in, 10), 0u); // the input is no longer good
    }
    // Copying over existing content at the write position.
    ZtMemStream stream(nullptr, 4);
    stream << "0123456789";
    stream.seekp(2);
    std::istringstream in("abcdef");
    EXPECT_EQ(stream.copyStream(in, 6), 6u);
    EXPECT_EQ(contentOf(stream), "01abcdef89");
}

TEST(MemStreamCopy, GetBufferHandsOutEveryBlockWithoutCopying) {
    const std::string data = patternBytes(10000, 4);
    ZtMemStream stream(new std::istringstream(data), 1024, true);
    stream.seekg(100);
    std::string back;
    const char* p = nullptr;
    size_t first = stream.getBuffer(p);
    EXPECT_EQ(first, 1024u - 100u); // the rest of the current block
    back.append(p, first);
    for (size_t n = stream.getBuffer(p); n > 0; n = stream.getBuffer(p)) {
        EXPECT_LE(n, 1024u);
        back.append(p, n);
    }
    EXPECT_EQ(back, data.substr(100));
    EXPECT_EQ(stream.tellg(), std::streampos(10000));

    ZtMemStream empty;
    EXPECT_EQ(empty.getBuffer(p), 0u);
}

TEST(MemStreamCopy, AbandonBufferFreesTheBlocksAlreadyRead) {
    ZtMemStream stream(nullptr, 4);
    stream << "0123456789AB";
    stream.seekg(9);
    stream.abandonBuffer(); // blocks 0 and 1 go
    EXPECT_EQ(stream.getMemBuffer().getBlockCount(), 2u);
    // Positions now count from the first block kept.
    EXPECT_EQ(stream.tellg(), std::streampos(1));
    EXPECT_EQ(rest(stream), "9AB");
    stream.seekg(0);
    EXPECT_EQ(stream.get(), '8');
    stream.abandonBuffer(); // already at block 0: nothing happens
    EXPECT_EQ(stream.getMemBuffer().getBlockCount(), 2u);
}

TEST(MemStreamCopy, TrimCutsTheContentAndPullsPositionsBack) {
    ZtMemStream stream(nullptr, 4);
    stream << "0123456789";
    stream.seekg(9);
    stream.trim(6);
    EXPECT_EQ(stream.length(), 6u);
    EXPECT_EQ(stream.tellg(), std::streampos(6));
    EXPECT_EQ(stream.tellp(), std::streampos(6));
    EXPECT_EQ(stream.getMemBuffer().getBlockCount(), 2u);
    stream << "xy";
    EXPECT_EQ(contentOf(stream), "012345xy");

    stream.seekg(1);
    stream.trim(8); // not shorter: nothing happens
    stream.trim(100);
    EXPECT_EQ(contentOf(stream), "012345xy");
    EXPECT_EQ(stream.tellg(), std::streampos(1));

    stream.trim(4); // exactly one block
    EXPECT_EQ(contentOf(stream), "0123");
    EXPECT_EQ(stream.tellg(), std::streampos(1));
    EXPECT_EQ(stream.tellp(), std::streampos(4));
    stream << "Z";
    EXPECT_EQ(contentOf(stream), "0123Z");

    stream.trim(0);
    EXPECT_EQ(stream.length(), 0u);
    EXPECT_EQ(stream.tellg(), std::streampos(0));
    stream << "new";
    EXPECT_EQ(contentOf(stream), "new");

    // Sources are pulled before trimming.
    ZtMemStream sourced(new std::istringstream("abcdefghij"), 3, true);
    sourced.trim(5);
    EXPECT_EQ(contentOf(sourced), "abcde");
}

TEST(MemStreamChecksum, TableChecksumOfBigEndianWords) {
    ZtMemStream five;
    five.write("\x00\x00\x00\x01\x02", 5);
    EXPECT_EQ(five.calcOTFTableChecksum(), 0x00000001u + 0x02000000u);

    ZtMemStream text(nullptr, 4);
    text << "ABCDEFGHIJ"; // 0x41424344 + 0x45464748 + 0x494A0000
    EXPECT_EQ(text.calcOTFTableChecksum(), 0xCFD28A8Cu);

    ZtMemStream wraps;
    wraps.write("\xFF\xFF\xFF\xFF\x00\x00\x00\x02", 8); // modulo 2^32
    EXPECT_EQ(wraps.calcOTFTableChecksum(), 1u);

    EXPECT_EQ(ZtMemStream().calcOTFTableChecksum(), 0u);

    // Blocks whose size is no multiple of 4 contribute whole words only: of the blocks
    // "ABCDEF" and "GHIJKL" the words "ABCD" and "GHIJ".
    ZtMemStream odd(nullptr, 6);
    odd << "ABCDEFGHIJKL";
    EXPECT_EQ(odd.calcOTFTableChecksum(), 0x41424344u + 0x4748494Au);

    // Sources are pulled first; the read position plays no part.
    ZtMemStream sourced(new std::istringstream(std::string("\x00\x00\x00\x01\x02", 5)), 8192, true);
    sourced.seekg(0, std::ios_base::end);
    EXPECT_EQ(sourced.calcOTFTableChecksum(), 0x02000001u);
}

TEST(MemStreamCopying, CopyConstructorTakesContentAndPositions) {
    ZtMemStream original(nullptr, 4);
    original << "abcdefgh";
    original.seekg(3);
    original.seekp(5);
    original.setKeepMemory(false);
    ZtMemStream copy(original);
    EXPECT_EQ(contentOf(copy), "abcdefgh");
    EXPECT_EQ(copy.tellg(), std::streampos(3));
    EXPECT_EQ(copy.tellp(), std::streampos(5));
    EXPECT_EQ(copy.getMemBuffer().getGrowBytes(), 4u);
    EXPECT_FALSE(copy.getMemBuffer().getKeepMemory());
    EXPECT_EQ(original.tellg(), std::streampos(3)); // restored
    EXPECT_EQ(original.get(), 'd');

    ZtMemStream empty(nullptr, 16);
    ZtMemStream fromEmpty(empty);
    EXPECT_TRUE(fromEmpty.empty());
    EXPECT_EQ(fromEmpty.getMemBuffer().getGrowBytes(), 16u);
}

TEST(MemStreamCopying, AssignmentAppendsAtTheWritePositionAndNeverErases) {
    ZtMemStream target(nullptr, 4);
    target << "XYZ";
    target.seekg(1);
    const ZtMemStream empty;
    target = empty; // nothing at all happens
    EXPECT_EQ(contentOf(target), "XYZ");
    EXPECT_EQ(target.tellg(), std::streampos(1));
    EXPECT_EQ(target.tellp(), std::streampos(3));

    ZtMemStream source(nullptr, 8);
    source << "abc";
    source.seekg(2);
    target = source;
    EXPECT_EQ(contentOf(target), "XYZabc");
    EXPECT_EQ(target.tellg(), std::streampos(2)); // the source's positions
    EXPECT_EQ(target.tellp(), std::streampos(3));
    EXPECT_EQ(target.getMemBuffer().getGrowBytes(), 4u); // the buffer's settings stay

    ZtMemStream& same = target;
    target = same; // a stream assigned to itself is left alone
    EXPECT_EQ(contentOf(target), "XYZabc");
}

TEST(MemStreamCopying, BufferCopyAndAssignmentTakeSettingsOnly) {
    ZtMemStreamBuf a(nullptr, 4);
    a.sputn("0123456789", 10);
    ZtMemStreamBuf copied(a);
    EXPECT_EQ(copied.getGrowBytes(), 4u);
    EXPECT_EQ(copied.length(), 0u);

    ZtMemStreamBuf b(nullptr, 16);
    b.setKeepMemory(false);
    a = b;
    EXPECT_EQ(a.length(), 0u);
    EXPECT_EQ(a.getGrowBytes(), 16u);
    EXPECT_FALSE(a.getKeepMemory());
    EXPECT_EQ(a.getBlockCount(), 1u); // the first block is kept, in the new size
    EXPECT_EQ(a.sputn("0123456789ABCDE", 15), 15);
    EXPECT_EQ(a.getBlockCount(), 1u); // 15 bytes fit one block of 16
    std::string out;
    a.appendToString(out);
    EXPECT_EQ(out, "0123456789ABCDE");
}
