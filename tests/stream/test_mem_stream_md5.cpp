// The MD5 digest of a memory stream's content from its read position: published vectors, and
// the library's own MD5 of the same bytes over tiny blocks and lazy sources.
#include <gtest/gtest.h>

#include "stream_test_support.h"

using namespace ZtCommonNS;
using ZtStreamTest::md5Of;

namespace {
std::string hex(const std::string& bytes) {
    static const char digits[] = "0123456789abcdef";
    std::string out;
    for (unsigned char c : bytes) {
        out += digits[c >> 4];
        out += digits[c & 15];
    }
    return out;
}
} // namespace

TEST(MemStreamMD5, PublishedVectors) {
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
            ZtMemStream stream(nullptr, blockSize);
            stream << text;
            const std::string md5 = stream.getMD5();
            EXPECT_EQ(md5.size(), 16u); // raw bytes, not hexadecimal
            EXPECT_EQ(hex(md5), digest) << text << ", block size " << blockSize;
        }
    }
}

TEST(MemStreamMD5, EmptyStreamHasNoDigestButAnExhaustedOneHas) {
    ZtMemStream empty;
    EXPECT_EQ(empty.getMD5(), "");
    ZtMemStream emptySource(new std::istringstream(""), 16, true);
    EXPECT_EQ(emptySource.getMD5(), "");

    ZtMemStream read(nullptr, 4);
    read << "abc";
    read.seekg(3);
    EXPECT_EQ(hex(read.getMD5()), "d41d8cd98f00b204e9800998ecf8427e"); // MD5 of no bytes
}

TEST(MemStreamMD5, FromTheReadPositionOverBlocksAndSources) {
    const std::string head = ZtStreamTest::patternBytes(1000, 21);
    const std::string tail = ZtStreamTest::patternBytes(777, 22);
    for (size_t blockSize : {1, 3, 16, 8192}) {
        ZtMemStream stream(nullptr, blockSize);
        stream.write(head.data(), static_cast<std::streamsize>(head.size()));
        stream.setSource(new std::istringstream(tail), true);
        for (size_t from : {size_t{0}, size_t{1}, size_t{999}, size_t{1500}}) {
            stream.seekg(static_cast<std::streamoff>(from));
            EXPECT_EQ(stream.getMD5(), md5Of((head + tail).substr(from)))
                << "from " << from << ", block size " << blockSize;
            EXPECT_EQ(stream.tellg(), std::streampos(static_cast<std::streamoff>(from)));
        }
    }
}
