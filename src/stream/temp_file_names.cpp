// Names of temporary files: the temporary directory, the process-wide counter and the creation
// loop that finds a name nobody uses yet.
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "foundation/raise_error.h"
#include "stream/temp_file_internal.h"
#include "stream/temp_file_names.h"
#include "ztcommon/stream.h"

namespace ZtCommonNS {

namespace {
constexpr int kCreateAttempts = 100;
// Names that already exist are skipped, not counted as failures; this bound only stops a
// directory that claims every name from looping for ever.
constexpr long kExistingNamesLimit = 1L << 20;
} // namespace

unsigned int nextTempFileCounter() {
    // Seeded once from the clock, so that processes started in turn use different ranges.
    static std::atomic<unsigned int> counter{[] {
        std::srand(static_cast<unsigned int>(std::time(nullptr)));
        return static_cast<unsigned int>(std::rand());
    }()};
    return counter.fetch_add(1);
}

UnicodeString systemErrorText(int error) {
    return ZtError::getLastErrorMessage(static_cast<unsigned long>(error), nullptr);
}

[[noreturn]] void raiseTempFileError(int code, const std::string& name, const char* what,
                                     int error) {
    UnicodeString text = UnicodeString::fromUTF8(name);
    text += UnicodeString::fromUTF8(what);
    text += u'\n';
    text += systemErrorText(error);
    raiseError(code, ZtErrSource::TempFile, text);
}

std::string tempFileDirectory(const std::string& directory) {
    if (directory.empty())
        return utf8(ZtTempFile::getTempDirectory());
    if (directory.back() == '/')
        return directory;
    return directory + '/';
}

ZtCStr createUniqueFile(const std::string& base, const std::string& extension,
                        std::string (*uniquePart)()) {
    int failures = 0;
    for (long existing = 0; existing < kExistingNamesLimit;) {
        std::string name = base;
        name += uniquePart();
        name += extension;
        const int fd = open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        if (fd >= 0) {
            close(fd);
            return ZtCStr(name, "UTF-8");
        }
        const int error = errno;
        if (error == EEXIST) {
            ++existing;
            continue;
        }
        // Whatever a failed attempt may have left behind must go before the next one.
        const int removeError = removeTempFilePath(name);
        if (removeError != 0)
            raiseTempFileError(ZtErrc::CannotRemoveTempFile, name, " (cannot remove)", removeError);
        if (++failures >= kCreateAttempts)
            raiseTempFileError(ZtErrc::CannotCreateTempFile, name, " (cannot create)", error);
    }
    raiseTempFileError(ZtErrc::CannotCreateTempFile, base + "*" + extension, " (cannot create)",
                       EEXIST);
}

const UnicodeString& ZtTempFile::getTempDirectory() {
    static const UnicodeString directory = [] {
        std::string path = "/tmp";
        const char* fromEnvironment = std::getenv("TMPDIR");
        struct stat info {};
        if (fromEnvironment && *fromEnvironment && stat(fromEnvironment, &info) == 0 &&
            S_ISDIR(info.st_mode))
            path = fromEnvironment;
        if (path.back() != '/')
            path += '/';
        return UnicodeString::fromUTF8(path);
    }();
    return directory;
}

ZtCStr ZtTempFile::getTempFile(const UnicodeString& directory, const UnicodeString& prefix,
                               const UnicodeString& extension) {
    const std::string base = tempFileDirectory(utf8(directory)) + utf8(prefix);
    return createUniqueFile(base, utf8(extension), [] {
        char unique[32];
        std::snprintf(unique, sizeof unique, "%03x_%04x", static_cast<unsigned int>(getpid()),
                      nextTempFileCounter());
        return std::string(unique);
    });
}

bool ZtTempFile::removeTempFile(const char* path) {
    return path == nullptr || removeTempFilePath(path) == 0;
}

bool ZtTempFile::removeTempFile(const UnicodeString& path) {
    return removeTempFilePath(utf8(path)) == 0;
}

} // namespace ZtCommonNS
