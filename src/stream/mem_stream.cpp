// ZtMemStream: the iostream over a ZtMemStreamBuf, its copy semantics and the move of its
// content to a temporary file.
#include <cstring>
#include <fstream>

#include "ztcommon/stream.h"

namespace ZtCommonNS {

namespace {
constexpr auto kIn = std::ios_base::in;
constexpr auto kOut = std::ios_base::out;
const std::streampos kFailed = std::streampos(std::streamoff(-1));
} // namespace

ZtMemStream::ZtMemStream(std::istream* source, size_t growBytes, bool ownSource)
    : std::iostream(nullptr), buf_(source, growBytes, ownSource) {
    rdbuf(&buf_);
}

ZtMemStream::ZtMemStream(std::istream& source)
    : std::iostream(source.rdbuf()), buf_(&source, ZtMemStreamBuf::DEFAULT_GROW_BYTES, true) {}

ZtMemStream::ZtMemStream(const ZtMemStream& other)
    : std::basic_ios<char>(), std::iostream(nullptr), buf_(other.buf_) {
    rdbuf(&buf_);
    copyFrom(other);
}

ZtMemStream& ZtMemStream::operator=(const ZtMemStream& other) {
    // Copying a stream into itself would read what it is writing.
    if (this != &other)
        copyFrom(other);
    return *this;
}

ZtMemStream::~ZtMemStream() {
    // Close the temporary file's stream (an owned source) before the file is removed.
    rdbuf(&buf_);
    buf_.clear();
}

// Writes the other's whole content at the write position and takes over its read and write
// positions; the other's read position is restored afterwards. Positions are taken from the
// buffers, so that a failed state of the other stream does not hide them.
void ZtMemStream::copyFrom(const ZtMemStream& other) {
    auto& source = const_cast<ZtMemStream&>(other);
    if (source.length() == 0)
        return;
    std::streambuf* from = source.rdbuf();
    const std::streampos readPosition = from->pubseekoff(0, std::ios_base::cur, kIn);
    const std::streampos writePosition = from->pubseekoff(0, std::ios_base::cur, kOut);
    from->pubseekpos(0, kIn);
    *this << from;
    if (readPosition != kFailed)
        seekg(readPosition);
    if (writePosition != kFailed)
        seekp(writePosition);
    from->pubseekpos(readPosition != kFailed ? readPosition : std::streampos(0), kIn);
}

ZtMemStream& ZtMemStream::append(const std::string& bytes) {
    write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return *this;
}

ZtMemStream& ZtMemStream::writeStr(const char* text) {
    if (text)
        write(text, static_cast<std::streamsize>(std::strlen(text)));
    return *this;
}

ZtMemStream& ZtMemStream::begin() {
    if (fail())
        std::iostream::clear();
    seekg(0);
    return *this;
}

ZtMemStream& ZtMemStream::erase() {
    remove();
    return *this;
}

void ZtMemStream::remove() {
    buf_.remove();
    if (fail())
        std::iostream::clear();
}

size_t ZtMemStream::length() {
    if (rdbuf() == &buf_)
        return buf_.length();
    std::streambuf* other = rdbuf();
    if (!other)
        return 0;
    const std::streampos saved = other->pubseekoff(0, std::ios_base::cur, kIn);
    const std::streampos end = other->pubseekoff(0, std::ios_base::end, kIn);
    if (saved != kFailed)
        other->pubseekpos(saved, kIn);
    return end == kFailed ? 0 : static_cast<size_t>(std::streamoff(end));
}

bool ZtMemStream::changeTempBuffer() {
    if (tempFile_.isTempFile())
        return false;
    const ZtCStr name = ZtTempFile::getTempFile(ZtTempFile::getTempDirectory(),
                                                UnicodeString(u"ZtMem"), UnicodeString(u".tmp"));
    const std::string& path = name.getBytes("UTF-8");
    ZtTempFile file;
    file.setFileName(name); // removes the file again if anything below fails
    std::ofstream out(path, std::ios_base::binary | std::ios_base::trunc);
    if (!out.is_open())
        return false;
    resetBuffer();
    buf_.writeAll(out);
    out.close();
    if (out.fail())
        return false; // the content stays in memory
    auto in = std::make_unique<std::ifstream>(path, std::ios_base::binary);
    if (!in->is_open())
        return false;
    buf_.clear();
    tempFile_ = file;
    file.releaseFileName();
    std::streambuf* fileBuffer = in->rdbuf();
    buf_.setSource(in.release(), true);
    rdbuf(fileBuffer); // also clears the stream state
    seekg(0);
    seekp(0);
    return true;
}

void ZtMemStream::resetBuffer() {
    if (tempFile_.isTempFile() || rdbuf() == &buf_)
        return;
    std::iostream::clear();
    if (rdbuf())
        rdbuf()->pubseekpos(0, kIn);
    rdbuf(&buf_);
    seekg(0);
    seekp(0);
}

} // namespace ZtCommonNS
