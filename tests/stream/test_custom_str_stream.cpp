// Custom streams driven by a controller, and string streams over a block of memory.
#include <cstring>

#include <gtest/gtest.h>

#include "stream_test_support.h"

using namespace ZtCommonNS;

namespace {
// Serves `input` in pieces of at most `piece` bytes and collects what is written, remembering
// the size of every request.
class RecordingController : public ZtCustomStreamController {
public:
    std::string input;
    size_t piece = 100000;
    size_t served = 0;
    long long failReadAfter = -1; // serve this many reads, then report failure
    size_t acceptLimit = static_cast<size_t>(-1);
    std::string output;
    std::vector<size_t> readRequests;
    std::vector<size_t> writeRequests;
    int openCalls = 0;
    int closeCalls = 0;

    bool open() override {
        ++openCalls;
        return true;
    }
    void close() override { ++closeCalls; }
    long long read(char* buffer, size_t size) override {
        readRequests.push_back(size);
        if (failReadAfter >= 0 && static_cast<long long>(readRequests.size()) > failReadAfter)
            return -1;
        const size_t n = std::min({size, piece, input.size() - served});
        std::memcpy(buffer, input.data() + served, n);
        served += n;
        return static_cast<long long>(n);
    }
    long long write(const char* buffer, size_t size) override {
        writeRequests.push_back(size);
        const size_t n = std::min(size, acceptLimit);
        output.append(buffer, n);
        return static_cast<long long>(n);
    }
};
} // namespace

TEST(CustomStream, ReadsEverythingInPiecesOf8192) {
    RecordingController controller;
    controller.input = ZtStreamTest::patternBytes(20000);
    ZtCustomStream stream(&controller);
    EXPECT_TRUE(stream.is_open());
    std::string back((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    EXPECT_EQ(back, controller.input);
    ASSERT_FALSE(controller.readRequests.empty());
    for (size_t request : controller.readRequests)
        EXPECT_EQ(request, 8192u);
    // The stream never opens or closes the resource itself.
    EXPECT_EQ(controller.openCalls, 0);
    EXPECT_EQ(controller.closeCalls, 0);
}

TEST(CustomStream, ANegativeReadEndsTheStreamAtOnce) {
    RecordingController controller;
    controller.input = "never seen";
    controller.failReadAfter = 0;
    ZtCustomStream stream(&controller);
    EXPECT_EQ(stream.get(), EOF);
    EXPECT_TRUE(stream.eof());
    EXPECT_EQ(controller.readRequests.size(), 1u);
}

TEST(CustomStream, KeepsTenBytesForPutBackAcrossRefills) {
    RecordingController controller;
    controller.input = "0123456789abcdefghijklmnop";
    controller.piece = 13; // refills at "d"
    ZtCustomStream stream(&controller);
    char head[16];
    stream.read(head, 16); // "0123456789abcdef": the second piece is in use
    for (int i = 0; i < 10; ++i)
        ASSERT_TRUE(stream.unget()) << i;
    EXPECT_EQ(stream.get(), '6');
    stream.seekg(16);
    EXPECT_TRUE(stream.fail()); // cannot seek
    stream.clear();
    EXPECT_EQ(stream.tellg(), std::streampos(std::streamoff(-1)));
    stream.clear();
    // Five bytes into a fresh piece, 10 kept from the one before: 15 steps back, not 16.
    RecordingController more;
    more.input = std::string(30, 'x');
    more.piece = 15;
    ZtCustomStream again(&more);
    char skip[20];
    again.read(skip, 20);
    for (int i = 0; i < 15; ++i)
        ASSERT_TRUE(again.unget()) << i;
    again.unget();
    EXPECT_TRUE(again.bad());
}

TEST(CustomStream, WritesIn8201ByteUnitsAndOnFlush) {
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
    // Pending bytes are handed over when the stream goes away.
    EXPECT_EQ(controller.output, data + "tail");
}

TEST(CustomStream, AShortWriteFailsTheStream) {
    RecordingController controller;
    controller.acceptLimit = 100;
    ZtCustomStream stream(&controller);
    stream << std::string(50, 'a');
    EXPECT_TRUE(stream.good()); // still buffered
    stream.flush();
    EXPECT_TRUE(stream.good()); // 50 accepted
    stream << std::string(9000, 'b');
    EXPECT_TRUE(stream.bad());
}

TEST(CustomStream, WithoutAControllerNothingIsOpen) {
    ZtCustomStream stream(nullptr);
    EXPECT_FALSE(stream.is_open());
    EXPECT_EQ(stream.rdbuf()->sgetc(), EOF);
    EXPECT_EQ(stream.rdbuf()->sputc('x'), EOF);
}

TEST(StrStream, ReadsInPlaceOrFromACopy) {
    char data[] = "in place";
    ZtStrStream shared(data, 8);
    ZtStrStream copied(data, 8, true);
    data[0] = 'I';
    std::string a;
    std::string b;
    std::getline(shared, a);
    std::getline(copied, b);
    EXPECT_EQ(a, "In place"); // the caller's bytes, as they are now
    EXPECT_EQ(b, "in place"); // the bytes as they were

    ZtStrStream none(nullptr, 5);
    EXPECT_EQ(none.get(), EOF);
}

TEST(StrStream, SeeksWithinTheBlock) {
    const std::string text("0123456789");
    ZtStrStream stream(text.data(), text.size());
    EXPECT_EQ(stream.rdbuf()->in_avail(), 10);
    EXPECT_EQ(stream.seekg(4).get(), '4');
    EXPECT_EQ(stream.seekg(-2, std::ios_base::end).get(), '8');
    EXPECT_EQ(stream.seekg(-3, std::ios_base::cur).get(), '6');
    EXPECT_EQ(stream.tellg(), std::streampos(7));
    ZtStreamTest::expectReadSeekLimit(stream, 10);
    EXPECT_EQ(stream.rdbuf()->pubseekpos(2, std::ios_base::out), std::streampos(-1));
    EXPECT_EQ(stream.rdbuf()->sputc('x'), EOF); // read only
    stream.seekg(3);
    stream.putback('2'); // the same byte: allowed
    EXPECT_TRUE(stream.good());
    stream.putback('z'); // another byte: refused, nothing is written
    EXPECT_TRUE(stream.bad());
    EXPECT_EQ(text, "0123456789");
}
