// ZtCustomStream: a byte stream whose bytes come from and go to an application controller.
#include <cstring>

#include "ztcommon/stream.h"

namespace ZtCommonNS {

ZtCustomStreamController::~ZtCustomStreamController() = default;

// One allocation holds the read area (put-back reserve, then the data) and, after it, the write
// area, so that output never overwrites input that has not been read yet.
ZtCustomStreamBuf::ZtCustomStreamBuf(ZtCustomStreamController* controller)
    : controller_(controller) {
    if (!controller_)
        return;
    buffer_ = std::make_unique<char[]>(PUTBACK_SIZE + READ_SIZE + WRITE_SIZE);
    char* readStart = buffer_.get() + PUTBACK_SIZE;
    setg(readStart, readStart, readStart);
    char* writeStart = buffer_.get() + PUTBACK_SIZE + READ_SIZE;
    // The last byte of the write area is left to overflow, which stores the byte that fills it.
    setp(writeStart, writeStart + WRITE_SIZE - 1);
}

ZtCustomStreamBuf::~ZtCustomStreamBuf() {
    if (buffer_)
        flushOutput();
}

// Hands every buffered byte to the controller; the bytes stay buffered when it takes fewer.
bool ZtCustomStreamBuf::flushOutput() {
    const size_t count = static_cast<size_t>(pptr() - pbase());
    if (count == 0)
        return true;
    const long long written = controller_->write(pbase(), count);
    if (written < 0 || static_cast<size_t>(written) != count)
        return false;
    setp(pbase(), epptr());
    return true;
}

ZtCustomStreamBuf::int_type ZtCustomStreamBuf::overflow(int_type c) {
    if (!buffer_)
        return traits_type::eof();
    if (traits_type::eq_int_type(c, traits_type::eof()))
        return flushOutput() ? traits_type::not_eof(c) : traits_type::eof();
    if (pptr() > epptr()) {
        // The reserved last byte is taken: an earlier flush failed. Try it once more.
        if (!flushOutput())
            return traits_type::eof();
        *pptr() = traits_type::to_char_type(c);
        pbump(1);
        return c;
    }
    *pptr() = traits_type::to_char_type(c);
    pbump(1);
    return flushOutput() ? c : traits_type::eof();
}

int ZtCustomStreamBuf::sync() {
    if (!buffer_)
        return -1;
    return flushOutput() ? 0 : -1;
}

ZtCustomStreamBuf::int_type ZtCustomStreamBuf::underflow() {
    if (!buffer_)
        return traits_type::eof();
    if (gptr() < egptr())
        return traits_type::to_int_type(*gptr());
    // Keep the last bytes read in front of the new data so that they can be put back.
    const size_t keep = std::min(PUTBACK_SIZE, static_cast<size_t>(gptr() - eback()));
    char* readStart = buffer_.get() + PUTBACK_SIZE;
    std::memmove(readStart - keep, gptr() - keep, keep);
    const long long got = controller_->read(readStart, READ_SIZE);
    if (got <= 0) {
        setg(readStart - keep, readStart, readStart);
        return traits_type::eof();
    }
    const size_t count = std::min(static_cast<size_t>(got), READ_SIZE);
    setg(readStart - keep, readStart, readStart + count);
    return traits_type::to_int_type(*gptr());
}

ZtCustomStreamBuf::pos_type ZtCustomStreamBuf::seekoff(off_type, std::ios_base::seekdir,
                                                       std::ios_base::openmode) {
    return pos_type(off_type(-1));
}

ZtCustomStreamBuf::pos_type ZtCustomStreamBuf::seekpos(pos_type, std::ios_base::openmode) {
    return pos_type(off_type(-1));
}

ZtCustomStream::ZtCustomStream(ZtCustomStreamController* controller)
    : std::iostream(nullptr), buf_(controller) {
    rdbuf(&buf_);
    if (!buf_.is_open())
        setstate(std::ios_base::badbit);
}

ZtCustomStream::~ZtCustomStream() = default;

} // namespace ZtCommonNS
