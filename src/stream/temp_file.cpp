// ZtTempFile: holds the name of a temporary file (and of the directory made for it) and removes
// both when it is done with them.
#include <unistd.h>

#include "foundation/raise_error.h"
#include "stream/temp_file_internal.h"
#include "stream/temp_file_names.h"
#include "ztcommon/stream.h"

namespace ZtCommonNS {

namespace {
const std::string& bytes(const ZtCStr& name) {
    return name.getBytes("UTF-8");
}
} // namespace

ZtTempFile::ZtTempFile() = default;

ZtTempFile::ZtTempFile(const UnicodeString& directory, const UnicodeString& prefix,
                       const UnicodeString& extension) {
    setFileName(directory, prefix, extension);
}

ZtTempFile::ZtTempFile(const ZtTempFile& other) = default;

ZtTempFile& ZtTempFile::operator=(const ZtTempFile& other) {
    if (this != &other && fileName_ != other.fileName_) {
        removeQuietly();
        fileName_ = other.fileName_;
        directoryName_ = other.directoryName_;
    }
    return *this;
}

ZtTempFile::~ZtTempFile() {
    try {
        removeQuietly();
    } catch (...) {
        // A destructor must not throw; the file is left behind.
    }
}

void ZtTempFile::forget() {
    fileName_ = ZtCStr();
    directoryName_ = ZtCStr();
}

void ZtTempFile::removeQuietly() {
    if (isTempFile())
        removeTempFilePath(bytes(fileName_));
    if (!directoryName_.isEmpty())
        rmdir(bytes(directoryName_).c_str());
    forget();
}

const ZtCStr& ZtTempFile::setFileName(const UnicodeString& directory, const UnicodeString& prefix,
                                      const UnicodeString& extension) {
    return adopt(getTempFile(directory, prefix, extension));
}

const ZtCStr& ZtTempFile::setFileName(const UnicodeString& name) {
    return adopt(ZtCStr(name));
}

const ZtCStr& ZtTempFile::setFileName(const char* name) {
    return adopt(ZtCStr(name ? name : "", "UTF-8"));
}

const ZtCStr& ZtTempFile::adopt(const ZtCStr& name) {
    if (name != fileName_) {
        removeQuietly();
        fileName_ = name;
    }
    return fileName_;
}

ZtCStr ZtTempFile::releaseFileName() {
    ZtCStr name = fileName_;
    forget();
    return name;
}

void ZtTempFile::remove() {
    if (isTempFile()) {
        const int error = removeTempFilePath(bytes(fileName_));
        if (error != 0)
            raiseTempFileError(ZtErrc::CannotRemoveTempFile, bytes(fileName_), " (cannot remove)",
                               error);
    }
    if (!directoryName_.isEmpty())
        rmdir(bytes(directoryName_).c_str());
    forget();
}

} // namespace ZtCommonNS
