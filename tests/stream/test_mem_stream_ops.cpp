// Memory stream operations beyond iostreams: searching and skipping across blocks and lazy
// sources, zero-copy reads, abandoning, the table checksum and the MD5 digest, and copying
// whole streams. Bulk copies in and trimming are left to the random model test.
#include <gtest/gtest.h>

#include "stream_test_support.h"

using namespace ZtCommonNS;
using ZtStreamTest::contentOf;
using ZtStreamTest::patternBytes;

namespace {
std::string rest(ZtMemStream& stream) {
    std::string out((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    stream.clear();
    return out;
}
} // namespace

// The random model test covers searches, skips and line ends at large; these are the rules.
TEST(MemStreamSearch, PatternsStraddlingBlocks) {
    for (size_t blockSize : {1, 2, 3, 5, 16}) {
        SCOPED_TRACE(blockSize);
        ZtMemStream stream(nullptr, blockSize);
        stream << "xxaaab--needle--needle";
        EXPECT_TRUE(stream.searchSeek("aab")); // after a partial "aa"
        EXPECT_EQ(stream.tellg(), std::streampos(3));
        EXPECT_TRUE(stream.searchSeek("aab")); // found where it stands: not skipped
        EXPECT_EQ(stream.tellg(), std::streampos(3));
        stream.seekg(9);
        EXPECT_TRUE(stream.searchSeek("needle"));   // length 0: up to the terminating zero
        EXPECT_FALSE(stream.searchSeek("needles")); // not found: the position stays
        EXPECT_FALSE(stream.skipSeek("needle!"));   // runs past the end
        EXPECT_EQ(stream.tellg(), std::streampos(16));
        for (const char* nothing : {"", static_cast<const char*>(nullptr)}) {
            EXPECT_FALSE(stream.searchSeek(nothing));
            EXPECT_FALSE(stream.skipSeek(nothing));
        }
        EXPECT_TRUE(stream.skipSeek("needle"));
        EXPECT_EQ(stream.get(), EOF);
    }
}

TEST(MemStreamSearch, PullsSourcesOnlyAsFarAsTheMatchNeeds) {
    auto* source = new ZtStreamTest::ProbeStream(std::string(50, '.') + "<mark>tail", nullptr, "");
    ZtMemStream stream(source, 8, true);
    EXPECT_TRUE(stream.searchSeek("<mark>"));
    EXPECT_EQ(stream.tellg(), std::streampos(50));
    EXPECT_EQ(source->consumed(), 56);
    EXPECT_TRUE(stream.skipSeek("<mark>"));
    EXPECT_EQ(rest(stream), "tail");
    // A pattern with a zero byte, given by length.
    ZtMemStream binary(nullptr, 2);
    binary.write("ab\0cd\0ef", 8);
    EXPECT_TRUE(binary.searchSeek("d\0e", 3));
    EXPECT_EQ(binary.tellg(), std::streampos(4));
}

TEST(MemStreamCopy, GetBufferHandsOutTheRestOfEachBlock) {
    const std::string data = patternBytes(10000, 4);
    ZtMemStream stream(new std::istringstream(data), 1024, true);
    EXPECT_EQ(stream.getMemBuffer().getRemains(), 0u); // nothing read yet
    stream.seekg(100);
    EXPECT_EQ(stream.getMemBuffer().getRemains(), 924u);
    std::string back;
    std::vector<size_t> sizes;
    const char* p = nullptr;
    for (size_t n = stream.getBuffer(p); n > 0; n = stream.getBuffer(p)) {
        sizes.push_back(n);
        back.append(p, n);
    }
    EXPECT_EQ(back, data.substr(100));
    EXPECT_EQ(sizes,
              (std::vector<size_t>{924, 1024, 1024, 1024, 1024, 1024, 1024, 1024, 1024, 784}));
    EXPECT_EQ(stream.tellg(), std::streampos(10000));
    EXPECT_EQ(ZtMemStream().getBuffer(p), 0u);
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
    stream.abandonBuffer(); // already in block 0: nothing happens
    EXPECT_EQ(stream.getMemBuffer().getBlockCount(), 2u);
}

TEST(MemStreamChecksum, TableChecksumOfBigEndianWords) {
    const struct {
        std::string bytes;
        size_t blockSize;
        uint32_t sum;
    } cases[] = {
        {"", 8192, 0},
        {std::string("\0\0\0\1\2", 5), 8192, 0x00000001u + 0x02000000u}, // last word padded
        {"ABCDEFGHIJ", 4, 0x41424344u + 0x45464748u + 0x494A0000u},
        {std::string("\xFF\xFF\xFF\xFF\0\0\0\2", 8), 8192, 1u}, // modulo 2^32
        // Blocks whose size is no multiple of 4 give whole words only: "ABCD" and "GHIJ".
        {"ABCDEFGHIJKL", 6, 0x41424344u + 0x4748494Au},
    };
    for (const auto& c : cases) {
        ZtMemStream stream(nullptr, c.blockSize);
        stream << c.bytes;
        EXPECT_EQ(stream.calcOTFTableChecksum(), c.sum) << c.bytes;
    }
    // Sources are pulled first; the read position plays no part.
    ZtMemStream sourced(new std::istringstream(std::string("\0\0\0\1\2", 5)), 8192, true);
    sourced.seekg(0, std::ios_base::end);
    EXPECT_EQ(sourced.calcOTFTableChecksum(), 0x02000001u);
}

TEST(MemStreamChecksum, Md5OfTheRestAgainstPublishedVectors) {
    // RFC 1321, appendix A.5.
    const std::pair<std::string, std::string> vectors[] = {
        {"a", "0cc175b9c0f1b6a831c399e269772661"},
        {"abc", "900150983cd24fb0d6963f7d28e17f72"},
        {"message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
        {"abcdefghijklmnopqrstuvwxyz", "c3fcd3d76192e4007dfb496cca67e13b"},
        {"12345678901234567890123456789012345678901234567890123456789012345678901234567890",
         "57edf4a22be3c955ac49da2e2107b67a"},
    };
    for (size_t blockSize : {1, 7, 64, 8192}) {
        for (const auto& [text, digest] : vectors) {
            // Raw bytes from the read position; the position does not move.
            ZtMemStream stream(nullptr, blockSize);
            stream << "skipped" << text;
            stream.seekg(7);
            EXPECT_EQ(ZtStreamTest::hex(stream.getMD5()), digest) << text << ", " << blockSize;
            EXPECT_EQ(stream.tellg(), std::streampos(7));
        }
    }
    // No digest for an empty stream, even one with an empty source; that of no bytes at the end.
    EXPECT_EQ(ZtMemStream().getMD5(), "");
    EXPECT_EQ(ZtMemStream(new std::istringstream(""), 16, true).getMD5(), "");
    ZtMemStream read(nullptr, 4);
    read << "abc";
    read.seekg(3);
    EXPECT_EQ(ZtStreamTest::hex(read.getMD5()), "d41d8cd98f00b204e9800998ecf8427e");
}

TEST(MemStreamCopying, StreamCopiesTakeContentAndPositions) {
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
    EXPECT_EQ(original.get(), 'd'); // the original's read position is restored

    // Assignment appends at the write position and takes the positions, never erasing; an
    // empty stream or the stream itself changes nothing.
    ZtMemStream target(nullptr, 4);
    target << "XYZ";
    target.seekg(1);
    const ZtMemStream empty(nullptr, 16);
    target = empty;
    EXPECT_EQ(target.tellg(), std::streampos(1));
    ZtMemStream source(nullptr, 8);
    source << "abc";
    source.seekg(2);
    target = source;
    EXPECT_EQ(contentOf(target), "XYZabc");
    EXPECT_EQ(target.tellg(), std::streampos(2));
    EXPECT_EQ(target.tellp(), std::streampos(3));
    EXPECT_EQ(target.getMemBuffer().getGrowBytes(), 4u);
    ZtMemStream& same = target;
    target = same;
    EXPECT_EQ(contentOf(target), "XYZabc");
    ZtMemStream fromEmpty(empty);
    EXPECT_TRUE(fromEmpty.empty());
    EXPECT_EQ(fromEmpty.getMemBuffer().getGrowBytes(), 16u);
}

TEST(MemStreamCopying, BufferCopiesTakeSettingsOnly) {
    ZtMemStreamBuf a(nullptr, 4);
    a.sputn("0123456789", 10);
    ZtMemStreamBuf copied(a); // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(copied.getGrowBytes(), 4u);
    EXPECT_EQ(copied.length(), 0u);

    ZtMemStreamBuf b(nullptr, 16);
    b.setKeepMemory(false);
    a = b;
    EXPECT_EQ(a.length(), 0u);
    EXPECT_FALSE(a.getKeepMemory());
    EXPECT_EQ(a.getBlockCount(), 1u); // the first block is kept, in the new size
    EXPECT_EQ(a.sputn("0123456789ABCDE", 15), 15);
    EXPECT_EQ(a.getBlockCount(), 1u);
    std::string out;
    a.appendToString(out);
    EXPECT_EQ(out, "0123456789ABCDE");
}
