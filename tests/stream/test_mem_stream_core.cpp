// ZtMemStream reading, writing and positioning: round trips over block boundaries, every rule
// of seekpos and seekoff, put-back across blocks and the bulk transfers.
#include <gtest/gtest.h>

#include "stream_test_support.h"

using namespace ZtCommonNS;
using ZtStreamTest::contentOf;
using ZtStreamTest::patternBytes;

namespace {
const std::streampos kFail = std::streampos(std::streamoff(-1));

class BlockSizes : public ::testing::TestWithParam<size_t> {};
} // namespace

TEST_P(BlockSizes, RoundTripInPiecesOfEverySize) {
    const size_t blockSize = GetParam();
    const std::string data = patternBytes(3 * 8192 + 77);
    // Pieces that start and end everywhere relative to the block boundaries.
    for (size_t piece : {size_t{1}, size_t{3}, size_t{16}, size_t{4095}, size_t{10000}}) {
        ZtMemStream stream(nullptr, blockSize);
        for (size_t at = 0; at < data.size(); at += piece)
            stream.write(data.data() + at,
                         static_cast<std::streamsize>(std::min(piece, data.size() - at)));
        ASSERT_TRUE(stream.good());
        ASSERT_EQ(stream.length(), data.size());
        ASSERT_EQ(stream.tellp(), std::streampos(static_cast<std::streamoff>(data.size())));

        // Reading without a seek starts at position 0.
        std::string back(data.size(), '\0');
        for (size_t at = 0; at < data.size(); at += piece) {
            const auto n = static_cast<std::streamsize>(std::min(piece, data.size() - at));
            ASSERT_EQ(stream.read(back.data() + at, n).gcount(), n) << "piece " << piece;
        }
        EXPECT_EQ(back, data) << "piece " << piece;
        EXPECT_EQ(stream.get(), std::char_traits<char>::eof());
        EXPECT_TRUE(stream.eof());
        EXPECT_EQ(contentOf(stream), data);
    }
}

TEST_P(BlockSizes, CharacterByCharacterThroughTheStreamBuffer) {
    const std::string data = patternBytes(1000, 7);
    ZtMemStream stream(nullptr, GetParam());
    std::streambuf* sb = stream.rdbuf();
    for (char c : data)
        ASSERT_EQ(sb->sputc(c), static_cast<unsigned char>(c));
    std::string back;
    for (int c = sb->sgetc(); c != EOF; c = sb->snextc())
        back += static_cast<char>(c);
    EXPECT_EQ(back, data);
    EXPECT_EQ(stream.length(), data.size());
}

INSTANTIATE_TEST_SUITE_P(MemStream, BlockSizes,
                         ::testing::Values(1, 2, 3, 16, ZtMemStreamBuf::DEFAULT_GROW_BYTES));

TEST(MemStream, NewStreamHoldsNoBlockUntilUsed) {
    ZtMemStream stream;
    EXPECT_EQ(stream.getMemBuffer().getBlockCount(), 0u);
    EXPECT_EQ(stream.getMemBuffer().getGrowBytes(), 8192u);
    EXPECT_TRUE(stream.empty());
    EXPECT_TRUE(stream.isEmpty());
    EXPECT_EQ(stream.size(), 0u);
    EXPECT_EQ(stream.getMemBuffer().getBlockCount(), 0u); // measuring allocates nothing
    EXPECT_EQ(stream.get(), std::char_traits<char>::eof());
    EXPECT_EQ(stream.getMemBuffer().getBlockCount(), 1u); // the first read made block 0
}

TEST(MemStream, GrowBytesOnlyBeforeTheFirstBlock) {
    ZtMemStream stream(nullptr, 16);
    stream.setGrowBytes(4);
    EXPECT_EQ(stream.getMemBuffer().getGrowBytes(), 4u);
    stream.setGrowBytes(0); // ignored
    EXPECT_EQ(stream.getMemBuffer().getGrowBytes(), 4u);
    stream << "abcdef";
    stream.setGrowBytes(64);
    EXPECT_EQ(stream.getMemBuffer().getGrowBytes(), 4u);
    EXPECT_EQ(stream.getMemBuffer().getBlockCount(), 2u);
    EXPECT_EQ(contentOf(stream), "abcdef");
    EXPECT_EQ(ZtMemStream(nullptr, 0).getMemBuffer().getGrowBytes(), 8192u);
}

TEST(MemStream, LengthOfExactlyOneBlockAndTheByteAfter) {
    ZtMemStream stream(nullptr, 8);
    stream << "12345678";
    EXPECT_EQ(stream.length(), 8u);
    const char* p = nullptr;
    stream.seekg(0);
    EXPECT_EQ(stream.getBuffer(p), 8u); // all eight bytes lie in block 0
    EXPECT_EQ(std::string(p, 8), "12345678");
    stream << "9";
    EXPECT_EQ(stream.length(), 9u);
    EXPECT_EQ(stream.getBuffer(p), 1u); // the ninth byte starts block 1
    EXPECT_EQ(*p, '9');
    EXPECT_EQ(stream.getBuffer(p), 0u);
}

TEST(MemStream, SeekRulesOfBothSides) {
    ZtMemStream stream(nullptr, 4);
    stream << "abcdefghij"; // 10 bytes over blocks of 4

    // Read side: any position up to the length, not beyond.
    ZtStreamTest::expectReadSeekLimit(stream, 10);
    stream.seekg(-1);
    EXPECT_TRUE(stream.fail());
    stream.clear();

    // Relative seeks of the read side.
    stream.seekg(4);
    EXPECT_EQ(stream.seekg(3, std::ios_base::cur).tellg(), std::streampos(7));
    EXPECT_EQ(stream.get(), 'h');
    EXPECT_EQ(stream.seekg(-2, std::ios_base::end).tellg(), std::streampos(8));
    EXPECT_EQ(stream.get(), 'i');
    stream.seekg(1, std::ios_base::end);
    EXPECT_TRUE(stream.fail());
    stream.clear();

    // Write side: beyond the end is allowed; the gap reads as zero bytes and the length
    // reaches the write position.
    EXPECT_EQ(stream.seekp(13).tellp(), std::streampos(13));
    EXPECT_EQ(stream.length(), 13u);
    stream << 'Z';
    EXPECT_EQ(stream.length(), 14u);
    EXPECT_EQ(contentOf(stream), std::string("abcdefghij\0\0\0Z", 14));
    EXPECT_EQ(stream.seekp(-4, std::ios_base::cur).tellp(), std::streampos(10));
    stream << "XY";
    EXPECT_EQ(contentOf(stream), std::string("abcdefghijXY\0Z", 14));

    // Both positions are independent.
    stream.seekg(2);
    stream.seekp(5);
    EXPECT_EQ(stream.get(), 'c');
    stream << '!';
    EXPECT_EQ(stream.tellg(), std::streampos(3));
    EXPECT_EQ(stream.tellp(), std::streampos(6));
    EXPECT_EQ(stream.get(), 'd');
    EXPECT_EQ(stream.get(), 'e');
    EXPECT_EQ(stream.get(), '!');
}

TEST(MemStream, SeekingTheWritePositionFarBeyondAddsBlocks) {
    ZtMemStream stream(nullptr, 16);
    stream << "x";
    stream.seekp(100);
    EXPECT_EQ(stream.getMemBuffer().getBlockCount(), 7u); // 100 / 16 = block 6
    stream << "end";
    std::string expected(103, '\0');
    expected[0] = 'x';
    expected.replace(100, 3, "end");
    EXPECT_EQ(contentOf(stream), expected);
    // Position 100 + 3 is also readable; 104 is not.
    EXPECT_EQ(stream.seekg(103).tellg(), std::streampos(103));
    EXPECT_EQ(stream.seekg(104).tellg(), kFail);
}

TEST(MemStream, StreamBufferSeekRules) {
    ZtMemStream stream(nullptr, 4);
    stream << "0123456789";
    std::streambuf* sb = stream.rdbuf();
    using std::ios_base;
    // Both sides at once: the write side decides whether a position beyond the end is allowed;
    // the read side then stays at the data's end.
    EXPECT_EQ(sb->pubseekpos(12, ios_base::in | ios_base::out), std::streampos(12));
    EXPECT_EQ(sb->pubseekoff(0, ios_base::cur, ios_base::in), std::streampos(12));
    EXPECT_EQ(sb->sgetc(), EOF);
    EXPECT_EQ(sb->pubseekpos(5, ios_base::in), std::streampos(5));
    EXPECT_EQ(sb->sgetc(), '5');
    // A current-relative seek of both sides measures from the write position.
    EXPECT_EQ(sb->pubseekoff(-2, ios_base::cur, ios_base::in | ios_base::out), std::streampos(10));
    EXPECT_EQ(sb->sgetc(), '\0'); // byte 10 of the gap
}

TEST(MemStream, RemainsCountsTheRestOfTheReadBlock) {
    ZtMemStream stream(nullptr, 4);
    stream << "0123456789";
    ZtMemStreamBuf& buffer = stream.getMemBuffer();
    EXPECT_EQ(buffer.getRemains(), 0u); // nothing read yet
    stream.seekg(2);
    EXPECT_EQ(buffer.getRemains(), 2u);
    stream.seekg(9);
    EXPECT_EQ(buffer.getRemains(), 1u); // the last block holds two bytes
    stream.get();
    EXPECT_EQ(buffer.getRemains(), 0u);
}

TEST(MemStream, PutBackCrossesBlocksButNotTheStart) {
    ZtMemStream stream(nullptr, 4);
    stream << "abcdefgh";
    stream.seekg(4); // start of block 1
    EXPECT_EQ(stream.get(), 'e');
    stream.putback('e');
    EXPECT_EQ(stream.tellg(), std::streampos(4));
    stream.putback('?'); // start of block 1: steps into block 0; the byte is not replaced
    ASSERT_TRUE(stream.good());
    EXPECT_EQ(stream.tellg(), std::streampos(3));
    EXPECT_EQ(stream.get(), 'd');
    stream.seekg(4);
    stream.unget(); // unget at a block start is refused (it names no character)
    EXPECT_TRUE(stream.bad());
    stream.clear();
    stream.seekg(0);
    stream.putback('a'); // nothing before position 0
    EXPECT_TRUE(stream.bad());
    stream.clear();
    EXPECT_EQ(stream.tellg(), std::streampos(0));
    EXPECT_EQ(ZtMemStream().rdbuf()->sputbackc('x'), EOF); // no get area yet
}

TEST(MemStream, WritesBecomeVisibleToTheReadSide) {
    ZtMemStream stream(nullptr, 8);
    stream << "abc";
    EXPECT_EQ(stream.get(), 'a');
    EXPECT_EQ(stream.get(), 'b');
    EXPECT_EQ(stream.get(), 'c');
    EXPECT_EQ(stream.peek(), EOF);
    stream.clear();
    stream << "defghijk"; // crosses into block 1
    std::string rest;
    std::getline(stream, rest);
    EXPECT_EQ(rest, "defghijk");
    // Overwriting bytes already in the get area is seen at once.
    stream.clear();
    stream.seekg(1);
    stream.seekp(1);
    stream << 'B';
    EXPECT_EQ(stream.get(), 'B');
}

TEST(MemStream, WritingOverPendingSourceDataOverwritesIt) {
    ZtMemStream stream(new std::istringstream("0123456789"), 4, true);
    stream << "ab"; // the first write loads block 0 from the source and writes at 0
    EXPECT_EQ(contentOf(stream), "ab23456789");
    stream.seekp(3);
    stream << "XYZ"; // crosses into block 1, still from the source
    EXPECT_EQ(contentOf(stream), "ab2XYZ6789");
}

TEST(MemStream, AppendAndWriteStrKeepEveryByte) {
    ZtMemStream stream(nullptr, 3);
    const std::string withZero("a\0b", 3);
    stream += withZero;
    stream.append("cd").writeStr("ef");
    stream.writeStr(nullptr);
    EXPECT_EQ(contentOf(stream), std::string("a\0bcdef", 7));
    EXPECT_EQ(stream.length(), 7u);
}

TEST(MemStream, BeginEraseAndRemoveRecoverAFailedStream) {
    ZtMemStream stream(nullptr, 4);
    stream << "hello world";
    stream.seekg(99);
    ASSERT_TRUE(stream.fail());
    EXPECT_EQ(stream.begin().get(), 'h');
    stream.seekg(99);
    ASSERT_TRUE(stream.fail());
    stream.erase();
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(stream.length(), 0u);
    EXPECT_EQ(stream.getMemBuffer().getBlockCount(), 1u); // one block is kept
    stream << "again";
    EXPECT_EQ(contentOf(stream), "again");
    stream.seekg(99);
    stream.remove();
    EXPECT_TRUE(stream.good());
    EXPECT_TRUE(stream.empty());
}

TEST(MemStream, LargeBulkTransfersAreExact) {
    // Blocks of odd size, transfers much larger than a block.
    const std::string data = patternBytes(1 << 20, 3);
    ZtMemStream stream(nullptr, 1000);
    stream.write(data.data(), static_cast<std::streamsize>(data.size()));
    std::string back(data.size(), '\0');
    EXPECT_EQ(stream.read(back.data(), static_cast<std::streamsize>(back.size())).gcount(),
              static_cast<std::streamsize>(data.size()));
    EXPECT_EQ(back, data);
    // The standard copy between stream buffers moves the whole content.
    ZtMemStream copy(nullptr, 4096);
    stream.seekg(0);
    copy << stream.rdbuf();
    EXPECT_EQ(contentOf(copy), data);
}
