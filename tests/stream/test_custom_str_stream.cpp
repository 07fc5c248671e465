// Custom streams driven by a controller, and string streams over a block of memory.
#include <cstring>

#include <gtest/gtest.h>

#include "stream_test_support.h"

using namespace ZtCommonNS;

namespace {
// Serves `input` in pieces of at most `piece` bytes, or fails every read when `piece` is 0;
// accepts at most `acceptLimit` bytes of each write. Records the size of every request.
class RecordingController : public ZtCustomStreamController {
public:
    std::string input, output;
    size_t piece = 100000, served = 0, acceptLimit = 100000;
    std::vector<size_t> readRequests, writeRequests;
    int openOrCloseCalls = 0;

    bool open() override { return ++openOrCloseCalls > 0; }
    void close() override { ++openOrCloseCalls; }
    long long read(char* buffer, size_t size) override {
        readRequests.push_back(size);
        if (piece == 0)
            return -1;
        const size_t n = std::min({size, piece, input.size() - served});
        std::memcpy(buffer, input.data() + served, n);
        served += n;
        return static_cast<long long>(n);
    }
    long long write(const char* buffer, size_t size) override {
        writeRequests.push_back(size);
        output.append(buffer, std::min(size, acceptLimit));
        return static_cast<long long>(std::min(size, acceptLimit));
    }
};
} // namespace

TEST(CustomStream, ReadsInPiecesOf8192UntilTheControllerEndsOrFails) {
    RecordingController controller;
    controller.input = ZtStreamTest::patternBytes(20000);
    ZtCustomStream stream(&controller);
    EXPECT_TRUE(stream.is_open());
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), controller.input);
    EXPECT_EQ(controller.readRequests, std::vector<size_t>(4, 8192)); // the last one gets 0
    EXPECT_EQ(controller.openOrCloseCalls, 0); // the resource is the controller's business

    RecordingController failing;
    failing.input = "never seen";
    failing.piece = 0;
    ZtCustomStream failed(&failing);
    EXPECT_EQ(failed.get(), EOF);
    EXPECT_EQ(failing.readRequests.size(), 1u);

    ZtCustomStream none(nullptr);
    EXPECT_FALSE(none.is_open());
    EXPECT_EQ(none.rdbuf()->sgetc(), EOF);
    EXPECT_EQ(none.rdbuf()->sputc('x'), EOF);
    EXPECT_EQ(none.rdbuf()->pubsync(), -1);
}

TEST(CustomStream, KeepsTenBytesForPutBackAcrossRefillsAndCannotSeek) {
    RecordingController controller;
    controller.input = "0123456789abcdefghijklmnop";
    controller.piece = 13; // refills at "d"
    ZtCustomStream stream(&controller);
    char head[16];
    stream.read(head, 16); // "0123456789abcdef": the second piece is in use
    for (int i = 0; i < 10; ++i)
        ASSERT_TRUE(stream.unget()) << i;
    EXPECT_EQ(stream.get(), '6');
    EXPECT_TRUE(stream.seekg(16).fail());
    stream.clear();
    EXPECT_EQ(stream.tellg(), std::streampos(std::streamoff(-1)));

    // Five bytes into a fresh piece, 10 kept from the one before: 15 steps back, not 16.
    RecordingController more;
    more.input = std::string(30, 'x');
    more.piece = 15;
    ZtCustomStream again(&more);
    again.read(head, 16);
    again.ignore(4);
    for (int i = 0; i < 15; ++i)
        ASSERT_TRUE(again.unget()) << i;
    EXPECT_TRUE(again.unget().bad());
}

TEST(CustomStream, WritesIn8201ByteUnitsOnFlushAndAtTheEnd) {
    RecordingController controller;
    const std::string data = ZtStreamTest::patternBytes(20000, 2);
    {
        ZtCustomStream stream(&controller);
        stream.write(data.data(), static_cast<std::streamsize>(data.size()));
        EXPECT_EQ(controller.writeRequests, (std::vector<size_t>{8201, 8201}));
        stream.flush();
        EXPECT_EQ(controller.writeRequests.size(), 3u);
        EXPECT_EQ(controller.output, data);
        stream << "tail";
    }
    EXPECT_EQ(controller.output, data + "tail");

    // A controller that takes fewer bytes than offered fails the stream.
    RecordingController partial;
    partial.acceptLimit = 100;
    ZtCustomStream stream(&partial);
    stream << std::string(50, 'a');
    EXPECT_TRUE(stream.flush().good()); // 50 accepted
    stream << std::string(9000, 'b');
    EXPECT_TRUE(stream.bad());
}

TEST(StrStream, ReadsInPlaceOrFromACopyAndSeeksWithinTheBlock) {
    char data[] = "0123456789";
    ZtStrStream stream(data, 10);
    ZtStrStream copied(data, 10, true);
    data[0] = 'A';
    EXPECT_EQ(stream.get(), 'A'); // the caller's bytes, as they are now
    EXPECT_EQ(copied.get(), '0'); // the bytes as they were
    EXPECT_EQ(ZtStrStream(nullptr, 5).get(), EOF);

    EXPECT_EQ(stream.rdbuf()->in_avail(), 9);
    EXPECT_EQ(stream.seekg(4).get(), '4');
    EXPECT_EQ(stream.seekg(-2, std::ios_base::end).get(), '8');
    EXPECT_EQ(stream.seekg(-3, std::ios_base::cur).get(), '6');
    ZtStreamTest::expectReadSeekLimit(stream, 10);
    EXPECT_EQ(stream.rdbuf()->in_avail(), -1);
    EXPECT_EQ(stream.rdbuf()->pubseekpos(2, std::ios_base::out), std::streampos(-1));
    EXPECT_EQ(stream.rdbuf()->sputc('x'), EOF); // read only
    stream.seekg(3);
    EXPECT_TRUE(stream.putback('2').good()); // the same byte: allowed
    EXPECT_TRUE(stream.putback('z').bad());  // another byte: refused, nothing is written
    EXPECT_STREQ(data, "A123456789");
}
