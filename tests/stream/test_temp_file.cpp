// Temporary files: names in both forms and the counter, the errors raised when files cannot be
// made or removed, removal while another process holds a lock, and the ownership of ZtTempFile.
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <regex>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "../foundation/caught_error.h"
#include "stream/temp_file_internal.h"
#include "stream_test_support.h"

using namespace ZtCommonNS;
using ZtCommonNS::test::caught;
namespace fs = std::filesystem;

namespace {
std::string utf8(const UnicodeString& text) {
    std::string out;
    return text.toUTF8String(out);
}

std::string path(const ZtCStr& name) {
    return name.getBytes("UTF-8");
}

std::string hex(unsigned long value, int width) {
    char text[32];
    std::snprintf(text, sizeof text, "%0*lx", width, value);
    return text;
}

// The process id as names carry it: at least three hexadecimal digits.
std::string pid() {
    return hex(static_cast<unsigned long>(getpid()), 3);
}

// A child process that holds an fcntl write lock on a file while this object lives.
class LockingChild {
public:
    explicit LockingChild(const std::string& file) {
        int ends[2];
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
        pid_ = fork();
        if (pid_ == 0) {
            // Only async-signal-safe calls from here on.
            close(ends[0]);
            const int fd = open(file.c_str(), O_RDWR);
            struct flock lock {};
            lock.l_type = F_WRLCK;
            char status = fd >= 0 && fcntl(fd, F_SETLKW, &lock) == 0 ? 'L' : 'E';
            if (write(ends[1], &status, 1) != 1)
                _exit(2);
            // Returns when the parent closes its end, on purpose or by dying.
            _exit(read(ends[1], &status, 1) == 0 ? 0 : 3);
        }
        close(ends[1]);
        socket_ = ends[0];
        char status = 0;
        locked = read(socket_, &status, 1) == 1 && status == 'L';
    }
    ~LockingChild() {
        close(socket_);
        int status = 0;
        EXPECT_EQ(waitpid(pid_, &status, 0), pid_);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    LockingChild(const LockingChild&) = delete;
    LockingChild& operator=(const LockingChild&) = delete;

    bool locked = false;

private:
    pid_t pid_;
    int socket_;
};

class TempFile : public ::testing::Test {
protected:
    void SetUp() override { setTempFileRetryDelay(std::chrono::milliseconds(1)); }
    void TearDown() override { setTempFileRetryDelay(std::chrono::milliseconds(1000)); }
    const std::string& dir() { return ZtStreamTest::privateTempDirectory(); }
};
} // namespace

TEST_F(TempFile, NamesCarryTheProcessIdAndTheNextFreeCounterValue) {
    EXPECT_EQ(utf8(ZtTempFile::getTempDirectory()), dir() + "/"); // from $TMPDIR
    const std::string first = path(ZtTempFile::getTempFile(u"", u"pre", u".ext"));
    std::smatch counter;
    ASSERT_TRUE(std::regex_match(first, counter,
                                 std::regex(dir() + "/pre" + pid() + "_([0-9a-f]{4,})\\.ext")))
        << first;
    const auto next = static_cast<uint32_t>(std::stoul(counter[1].str(), nullptr, 16)) + 1;

    // Created, empty and private to the user.
    struct stat info {};
    ASSERT_EQ(stat(first.c_str(), &info), 0);
    EXPECT_TRUE(S_ISREG(info.st_mode));
    EXPECT_EQ(info.st_size, 0);
    EXPECT_EQ(info.st_mode & 0777, 0600u);

    // The next value follows; names that exist are skipped, never overwritten. The directory
    // may come without its trailing slash, the extension may be empty.
    const std::string stem = first.substr(0, first.rfind('_') + 1);
    EXPECT_EQ(path(ZtTempFile::getTempFile(u"", u"pre", u".ext")), stem + hex(next, 4) + ".ext");
    for (uint32_t k = 1; k <= 2; ++k)
        std::ofstream(stem + hex(next + k, 4)) << "taken";
    EXPECT_EQ(path(ZtTempFile::getTempFile(UnicodeString::fromUTF8(dir()), u"pre", u"")),
              stem + hex(next + 3, 4));
    std::ifstream taken(stem + hex(next + 1, 4));
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(taken), {}), "taken");
}

TEST_F(TempFile, NarrowNamesCarryAFreshUuid) {
    const std::regex form(dir() + "/n" + pid() + "-[0-9a-f]{32}\\.bin");
    const std::string first = path(ZtTempFile::getTempFile(nullptr, "n", ".bin"));
    const std::string second = path(ZtTempFile::getTempFile(dir().c_str(), "n", ".bin"));
    EXPECT_TRUE(std::regex_match(first, form)) << first;
    EXPECT_TRUE(std::regex_match(second, form)) << second;
    EXPECT_NE(first, second);
    EXPECT_TRUE(fs::exists(first));
    std::string held;
    {
        ZtTempFile file(nullptr, "held", nullptr);
        held = path(file.getFileName());
        EXPECT_TRUE(std::regex_match(held, std::regex(dir() + "/held" + pid() + "-[0-9a-f]{32}")))
            << held;
        EXPECT_TRUE(fs::exists(held));
    }
    EXPECT_FALSE(fs::exists(held));
}

TEST_F(TempFile, CreationInAMissingDirectoryRaisesCode78) {
    const std::string missing = dir() + "/no/such/dir/";
    const ZtError e =
        caught([&] { ZtTempFile::getTempFile(UnicodeString::fromUTF8(missing), u"p", u".t"); });
    EXPECT_EQ(e.getErrorCode(), 78);
    EXPECT_EQ(utf8(e.getSource()), "ZtCommonNS::ZtTempFile");
    const std::string message = utf8(e.getRawMessage());
    const std::regex form("Cannot create temporary file: " + missing + "p" + pid() +
                          "_[0-9a-f]{4,}\\.t \\(cannot create\\)\n" + std::strerror(ENOENT));
    EXPECT_TRUE(std::regex_match(message, form)) << message;
    // Nothing is held by an object whose creation failed.
    EXPECT_THROW(ZtTempFile(UnicodeString::fromUTF8(missing), u"p", u".t"), ZtError);
}

TEST_F(TempFile, ALockedFileIsRetriedThenReportedAsCode77AndRemovedOnceFree) {
    // A file that is not there is removed already.
    EXPECT_TRUE(ZtTempFile::removeTempFile((dir() + "/never-made").c_str()));
    EXPECT_TRUE(ZtTempFile::removeTempFile(UnicodeString::fromUTF8(dir() + "/never-made")));
    EXPECT_TRUE(ZtTempFile::removeTempFile(static_cast<const char*>(nullptr)));

    ZtTempFile file(u"", u"locked", u".tmp");
    const std::string name = path(file.getFileName());
    {
        LockingChild child(name);
        ASSERT_TRUE(child.locked);

        // Ten attempts, each pause at least the delay: nine pauses.
        setTempFileRetryDelay(std::chrono::milliseconds(20));
        const auto start = std::chrono::steady_clock::now();
        EXPECT_FALSE(ZtTempFile::removeTempFile(name.c_str()));
        EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(180));
        EXPECT_TRUE(fs::exists(name));
        setTempFileRetryDelay(std::chrono::milliseconds(1));

        // remove() reports the failure with the system's text and keeps the name.
        const ZtError e = caught([&] { file.remove(); });
        EXPECT_EQ(e.getErrorCode(), 77);
        EXPECT_EQ(utf8(e.getSource()), "ZtCommonNS::ZtTempFile");
        const std::string message = utf8(e.getRawMessage());
        const std::string head = "Cannot remove temporary file: " + name + " (cannot remove)\n";
        EXPECT_TRUE(message == head + std::strerror(EAGAIN) ||
                    message == head + std::strerror(EACCES))
            << message;
        EXPECT_TRUE(file.isTempFile());
    }
    // The lock is gone with the child.
    file.remove();
    EXPECT_FALSE(file.isTempFile());
    EXPECT_FALSE(fs::exists(name));
}

TEST_F(TempFile, OwnershipFollowsTheObject) {
    std::string name;
    {
        ZtTempFile file(u"", u"own", u"");
        name = path(file.getFileName());
        EXPECT_TRUE(fs::exists(name));
        ZtTempFile copy(file); // the same file
        copy.remove();
        EXPECT_FALSE(fs::exists(name));
        EXPECT_TRUE(file.isTempFile());
        file.remove(); // already gone: nothing to report
        EXPECT_FALSE(file.isTempFile());
        file.setFileName(u"", u"own", u"");
        name = path(file.getFileName());
    }
    EXPECT_FALSE(fs::exists(name)); // removed by the destructor

    ZtCStr released;
    {
        ZtTempFile file(u"", u"kept", u"");
        released = file.releaseFileName();
        EXPECT_FALSE(file.isTempFile());
    }
    EXPECT_TRUE(fs::exists(path(released)));

    // Adopting an existing name makes the object remove it; replacing it removes the old file.
    ZtTempFile adopter;
    EXPECT_EQ(path(adopter.setFileName(path(released).c_str())), path(released));
    ZtTempFile other(u"", u"other", u"");
    adopter = other;
    EXPECT_FALSE(fs::exists(path(released)));
    EXPECT_EQ(path(adopter.getFileName()), path(other.getFileName()));
    adopter.remove();
    EXPECT_FALSE(fs::exists(path(other.getFileName())));
    adopter.remove(); // nothing held: nothing happens
}

TEST_F(TempFile, AFileInADirectoryOfItsOwn) {
    const std::regex uuidDirectory(dir() +
                                   "/[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}");
    std::string file, directory;
    {
        ZtTempFile temp;
        file = path(temp.setFileNameInUUIDDirectory(u"font.ttf"));
        directory = path(temp.getDirectoryName());
        EXPECT_TRUE(std::regex_match(directory, uuidDirectory)) << directory;
        EXPECT_EQ(file, directory + "/font.ttf");
        EXPECT_TRUE(fs::is_regular_file(file));
        temp.remove();
        EXPECT_FALSE(fs::exists(directory));
        EXPECT_TRUE(path(temp.getDirectoryName()).empty());

        temp.setFileNameInUUIDDirectory(u"again.bin");
        file = path(temp.getFileName());
        directory = path(temp.getDirectoryName());
        EXPECT_TRUE(fs::exists(file));
    }
    // The destructor removes both as well.
    EXPECT_FALSE(fs::exists(directory));

    const fs::path loose = path(ZtTempFile::getTempFileInUUIDDirectory(u"loose.txt"));
    EXPECT_TRUE(fs::is_regular_file(loose));
    EXPECT_TRUE(std::regex_match(loose.parent_path().string(), uuidDirectory));
    EXPECT_EQ(loose.filename(), "loose.txt");

    // A name that cannot be made leaves no directory behind.
    const auto entries = std::distance(fs::directory_iterator(dir()), fs::directory_iterator());
    const ZtError e = caught([] { ZtTempFile::getTempFileInUUIDDirectory(u"no/such/sub"); });
    EXPECT_EQ(e.getErrorCode(), 78);
    EXPECT_NE(utf8(e.getRawMessage()).find(std::strerror(ENOENT)), std::string::npos);
    EXPECT_EQ(std::distance(fs::directory_iterator(dir()), fs::directory_iterator()), entries);
}
