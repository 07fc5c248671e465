// The private temporary directory of the stream tests and shared helpers.
#include "stream_test_support.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include <gtest/gtest.h>

#include "ztcommon/crypto.h"

namespace ZtStreamTest {

namespace {
std::string& directoryName() {
    static std::string name;
    return name;
}

// Points $TMPDIR at a directory of this process before any test runs, so that test processes
// running in parallel never see each other's temporary files, and removes it at the end.
class PrivateTempDirectory : public ::testing::Environment {
public:
    void SetUp() override {
        std::string pattern = (std::filesystem::temp_directory_path() / "zt-stream-XXXXXX");
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        directoryName() = pattern;
        setenv("TMPDIR", pattern.c_str(), 1);
    }
    void TearDown() override {
        std::error_code ignored;
        std::filesystem::remove_all(directoryName(), ignored);
    }
};

[[maybe_unused]] ::testing::Environment* const environment =
    ::testing::AddGlobalTestEnvironment(new PrivateTempDirectory);
} // namespace

const std::string& privateTempDirectory() {
    return directoryName();
}

std::string patternBytes(size_t n, unsigned seed) {
    std::string out(n, '\0');
    uint32_t x = seed * 2654435761u + 1;
    for (size_t i = 0; i < n; ++i) {
        x ^= x << 13;
        x ^= x >> 17;
        x ^= x << 5;
        out[i] = static_cast<char>(x >> 24);
    }
    return out;
}

void expectReadSeekLimit(std::istream& stream, std::streamoff length) {
    EXPECT_EQ(stream.seekg(length).tellg(), std::streampos(length));
    EXPECT_EQ(stream.get(), EOF);
    stream.clear();
    stream.seekg(length + 1);
    EXPECT_TRUE(stream.fail());
    stream.clear();
    EXPECT_EQ(stream.tellg(), std::streampos(length));
}

std::string md5Of(const std::string& bytes) {
    ZtCommonNS::MD5_CTX md5;
    md5.Update(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
    unsigned char digest[16];
    md5.Final(digest);
    return std::string(reinterpret_cast<const char*>(digest), 16);
}

std::string hex(const std::string& bytes) {
    std::string out;
    char pair[3];
    for (unsigned char c : bytes)
        out.append(pair, static_cast<size_t>(std::snprintf(pair, sizeof pair, "%02x", c)));
    return out;
}

std::string contentOf(ZtCommonNS::ZtMemStream& stream) {
    std::string out;
    stream.appendToString(out);
    return out;
}

} // namespace ZtStreamTest
