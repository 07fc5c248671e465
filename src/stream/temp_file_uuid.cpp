// The parts of the temporary-file code that name things by fresh UUIDs: the narrow name form
// and the directories of their own.
#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "foundation/raise_error.h"
#include "stream/temp_file_names.h"
#include "ztcommon/crypto.h"
#include "ztcommon/stream.h"

namespace ZtCommonNS {

namespace {
std::string orEmpty(const char* text) {
    return text ? std::string(text) : std::string();
}

// "%03x-%08x%08x%08x%08x": the process id, then the four 32-bit words of a fresh UUID as they
// lie in memory.
std::string uuidUniquePart() {
    const ZtUUID uuid;
    uint32_t words[4];
    std::memcpy(words, uuid.getBytes(), sizeof words);
    char unique[48];
    std::snprintf(unique, sizeof unique, "%03x-%08x%08x%08x%08x",
                  static_cast<unsigned int>(getpid()), words[0], words[1], words[2], words[3]);
    return unique;
}

// Makes a new directory named by a fresh UUID below the temporary directory.
std::string makeUuidDirectory() {
    const std::string parent = utf8(ZtTempFile::getTempDirectory());
    for (int attempt = 0;; ++attempt) {
        std::string directory = parent + utf8(ZtUUID().toString(true));
        if (mkdir(directory.c_str(), 0700) == 0)
            return directory;
        const int error = errno;
        // A name already taken can only be a (practically impossible) repeated UUID.
        if (error != EEXIST || attempt >= 3)
            raiseTempFileError(ZtErrc::CannotCreateTempFile, directory, " (cannot create)", error);
    }
}

// Creates the empty file `name` in a new UUID directory; returns (directory, file).
std::pair<std::string, std::string> createInUuidDirectory(const UnicodeString& name) {
    const std::string directory = makeUuidDirectory();
    const std::string file = directory + '/' + utf8(name);
    const int fd = open(file.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (fd < 0) {
        const int error = errno;
        rmdir(directory.c_str());
        raiseTempFileError(ZtErrc::CannotCreateTempFile, file, " (cannot create)", error);
    }
    close(fd);
    return {directory, file};
}
} // namespace

ZtCStr ZtTempFile::getTempFile(const char* directory, const char* prefix, const char* extension) {
    const std::string base = tempFileDirectory(orEmpty(directory)) + orEmpty(prefix);
    return createUniqueFile(base, orEmpty(extension), &uuidUniquePart);
}

ZtTempFile::ZtTempFile(const char* directory, const char* prefix, const char* extension) {
    setFileName(directory, prefix, extension);
}

const ZtCStr& ZtTempFile::setFileName(const char* directory, const char* prefix,
                                      const char* extension) {
    return adopt(getTempFile(directory, prefix, extension));
}

ZtCStr ZtTempFile::getTempFileInUUIDDirectory(const UnicodeString& name) {
    return ZtCStr(createInUuidDirectory(name).second, "UTF-8");
}

const ZtCStr& ZtTempFile::setFileNameInUUIDDirectory(const UnicodeString& name) {
    auto [directory, file] = createInUuidDirectory(name);
    adopt(ZtCStr(file, "UTF-8"));
    directoryName_ = ZtCStr(directory, "UTF-8");
    return fileName_;
}

} // namespace ZtCommonNS
