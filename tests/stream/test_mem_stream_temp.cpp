// Moving a memory stream's content to a temporary file and reading it back from there.
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "stream_test_support.h"

using namespace ZtCommonNS;
namespace fs = std::filesystem;

TEST(MemStreamTempFile, ContentMovesToAFileAndIsReadFromThere) {
    const std::string data = ZtStreamTest::patternBytes(100000, 8);
    fs::path file;
    {
        ZtMemStream stream(nullptr, 1000);
        stream.write(data.data(), static_cast<std::streamsize>(data.size()));
        stream.seekg(500);
        ASSERT_TRUE(stream.changeTempBuffer());
        file = stream.getTempFile().getFileName().getBytes("UTF-8");
        EXPECT_EQ(file.parent_path(), fs::path(ZtStreamTest::privateTempDirectory()));
        EXPECT_EQ(file.filename().string().rfind("ZtMem", 0), 0u);
        EXPECT_EQ(file.extension(), ".tmp");

        // The memory is freed; the file holds the content.
        EXPECT_EQ(stream.getMemBuffer().getBlockCount(), 0u);
        EXPECT_NE(stream.rdbuf(), &stream.getMemBuffer());
        std::ifstream onDisk(file, std::ios_base::binary);
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(onDisk), {}), data);

        // Reading starts again at 0, from the file.
        EXPECT_EQ(stream.length(), data.size());
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), data);
        stream.clear();
        stream.seekg(-3, std::ios_base::end);
        EXPECT_EQ(stream.get(), static_cast<unsigned char>(data[data.size() - 3]));

        // Once in a file, the stream stays there.
        EXPECT_FALSE(stream.changeTempBuffer());
        stream.resetBuffer();
        EXPECT_NE(stream.rdbuf(), &stream.getMemBuffer());
    }
    EXPECT_FALSE(fs::exists(file)); // removed with the stream

    // An empty stream spills too, and so do sources not yet pulled.
    ZtMemStream empty;
    ASSERT_TRUE(empty.changeTempBuffer());
    EXPECT_EQ(empty.length(), 0u);
    EXPECT_EQ(empty.get(), EOF);
    ZtMemStream lazy(new std::istringstream("from a source"), 4, true);
    ASSERT_TRUE(lazy.changeTempBuffer());
    std::string all;
    std::getline(lazy, all);
    EXPECT_EQ(all, "from a source");
}
