// ZtMemStream reading, writing and positioning: round trips over block boundaries, every rule
// of seekpos and seekoff, put-back across blocks, when blocks are made, and the convenience
// calls that append, rewind and empty.
#include <gtest/gtest.h>

#include "stream_test_support.h"

using namespace ZtCommonNS;
using ZtStreamTest::contentOf;

namespace {
class BlockSizes : public ::testing::TestWithParam<size_t> {};
} // namespace

TEST_P(BlockSizes, RoundTripInPiecesOfEverySize) {
    const std::string data = ZtStreamTest::patternBytes(3 * 8192 + 77);
    // Pieces that start and end everywhere relative to the block boundaries; single bytes go
    // through sputc and sbumpc, that is through overflow and underflow.
    for (size_t piece : {1, 3, 16, 4095, 10000}) {
        SCOPED_TRACE(piece);
        ZtMemStream stream(nullptr, GetParam());
        std::streambuf* sb = stream.rdbuf();
        for (size_t at = 0; at < data.size(); at += piece) {
            if (piece == 1)
                ASSERT_EQ(sb->sputc(data[at]), static_cast<unsigned char>(data[at]));
            else
                stream.write(data.data() + at,
                             static_cast<std::streamsize>(std::min(piece, data.size() - at)));
        }
        ASSERT_TRUE(stream.good());
        ASSERT_EQ(stream.length(), data.size());
        ASSERT_EQ(stream.tellp(), std::streampos(static_cast<std::streamoff>(data.size())));

        // Reading without a seek starts at position 0.
        std::string back(data.size(), '\0');
        for (size_t at = 0; at < data.size(); at += piece) {
            const auto n = static_cast<std::streamsize>(std::min(piece, data.size() - at));
            if (piece == 1)
                back[at] = static_cast<char>(sb->sbumpc());
            else
                ASSERT_EQ(stream.read(back.data() + at, n).gcount(), n);
        }
        EXPECT_EQ(back, data);
        EXPECT_EQ(stream.get(), EOF);
        EXPECT_TRUE(stream.eof());
        EXPECT_EQ(contentOf(stream), data);
    }
}

INSTANTIATE_TEST_SUITE_P(MemStream, BlockSizes,
                         ::testing::Values(1, 2, 3, 16, ZtMemStreamBuf::DEFAULT_GROW_BYTES));

TEST(MemStream, BlocksAreMadeOnFirstUseInTheSizeSetBefore) {
    ZtMemStream stream;
    EXPECT_TRUE(stream.empty());
    EXPECT_EQ(stream.getMemBuffer().getBlockCount(), 0u); // measuring allocates nothing
    EXPECT_EQ(stream.get(), EOF);
    EXPECT_EQ(stream.getMemBuffer().getBlockCount(), 1u); // the first read made block 0

    EXPECT_EQ(ZtMemStream(nullptr, 0).getMemBuffer().getGrowBytes(), 8192u);
    ZtMemStream small(nullptr, 16);
    small.setGrowBytes(4);
    small.setGrowBytes(0); // ignored
    small << "abcdef";
    small.setGrowBytes(64); // too late: blocks exist
    EXPECT_EQ(small.getMemBuffer().getGrowBytes(), 4u);
    EXPECT_EQ(small.getMemBuffer().getBlockCount(), 2u);
    EXPECT_EQ(contentOf(small), "abcdef");
}

TEST(MemStream, SeekRules) {
    using std::ios_base;
    ZtMemStream stream(nullptr, 4);
    stream << "abcdefghij"; // 10 bytes over blocks of 4
    std::streambuf* sb = stream.rdbuf();
    auto seek = [sb](std::streamoff off, ios_base::seekdir way, ios_base::openmode which) {
        return std::streamoff(sb->pubseekoff(off, way, which));
    };

    // Read side: from 0 to the length, from the start, the current position or the end.
    ZtStreamTest::expectReadSeekLimit(stream, 10);
    EXPECT_EQ(seek(-1, ios_base::beg, ios_base::in), -1);
    EXPECT_EQ(seek(1, ios_base::end, ios_base::in), -1);
    EXPECT_EQ(seek(4, ios_base::beg, ios_base::in), 4);
    EXPECT_EQ(seek(3, ios_base::cur, ios_base::in), 7);
    EXPECT_EQ(sb->sgetc(), 'h');
    EXPECT_EQ(seek(-2, ios_base::end, ios_base::in), 8);
    EXPECT_EQ(sb->sgetc(), 'i');

    // Both sides at once: the write side allows a position beyond the end, the gap becomes
    // data, and a current-relative seek measures from the write position.
    EXPECT_EQ(seek(12, ios_base::beg, ios_base::in | ios_base::out), 12);
    EXPECT_EQ(seek(0, ios_base::cur, ios_base::in), 12);
    EXPECT_EQ(sb->sgetc(), EOF);
    EXPECT_EQ(seek(5, ios_base::beg, ios_base::in), 5);
    EXPECT_EQ(seek(-2, ios_base::cur, ios_base::in | ios_base::out), 10);
    EXPECT_EQ(sb->sgetc(), '\0');

    // Write side alone: beyond the end adds the blocks up to it, and the gap reads as zeros.
    EXPECT_EQ(seek(17, ios_base::beg, ios_base::out), 17);
    EXPECT_EQ(stream.getMemBuffer().getBlockCount(), 5u);
    EXPECT_EQ(stream.length(), 17u);
    stream << 'Z';
    EXPECT_EQ(seek(-8, ios_base::cur, ios_base::out), 10);
    stream << "XY";
    EXPECT_EQ(contentOf(stream), std::string("abcdefghijXY\0\0\0\0\0Z", 18));
    ZtStreamTest::expectReadSeekLimit(stream, 18);
}

TEST(MemStream, PutBackCrossesBlocksButNotTheStart) {
    ZtMemStream stream(nullptr, 4);
    stream << "abcdefgh";
    stream.seekg(4); // start of block 1
    EXPECT_EQ(stream.get(), 'e');
    stream.putback('e');
    stream.putback('?'); // steps into block 0; the stream's byte is kept, not replaced
    ASSERT_TRUE(stream.good());
    EXPECT_EQ(stream.tellg(), std::streampos(3));
    EXPECT_EQ(stream.get(), 'd');
    EXPECT_TRUE(stream.seekg(4).unget().bad()); // at a block start unget names no character
    stream.clear();
    EXPECT_TRUE(stream.seekg(0).putback('a').bad()); // nothing before position 0
    stream.clear();
    EXPECT_EQ(stream.tellg(), std::streampos(0));
    EXPECT_EQ(ZtMemStream().rdbuf()->sputbackc('x'), EOF); // no get area yet
}

TEST(MemStream, AppendRewindAndEmpty) {
    ZtMemStream stream(nullptr, 3);
    stream += std::string("a\0b", 3);
    stream.append("cd").writeStr("ef");
    stream.writeStr(nullptr);
    EXPECT_EQ(contentOf(stream), std::string("a\0bcdef", 7));

    // begin, erase and remove also recover a failed stream; erase keeps one block.
    ASSERT_TRUE(stream.seekg(99).fail());
    EXPECT_EQ(stream.begin().get(), 'a');
    ASSERT_TRUE(stream.seekg(99).fail());
    EXPECT_TRUE(stream.erase().good());
    EXPECT_EQ(stream.length(), 0u);
    EXPECT_EQ(stream.getMemBuffer().getBlockCount(), 1u);
    stream << "again";
    EXPECT_EQ(contentOf(stream), "again");
    stream.seekg(99);
    stream.remove();
    EXPECT_TRUE(stream.good());
    EXPECT_TRUE(stream.empty());
}
