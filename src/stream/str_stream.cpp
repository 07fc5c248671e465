// ZtStrStream: an input stream over one block of memory, copied or read in place.
#include <cstring>

#include "ztcommon/stream.h"

namespace ZtCommonNS {

StrStreamBuf::StrStreamBuf(const char* data, size_t size, bool copy) {
    if (!data)
        size = 0;
    char* start = const_cast<char*>(data); // read only: nothing is ever stored through it
    if (copy && size > 0) {
        copy_ = std::make_unique<char[]>(size);
        std::memcpy(copy_.get(), data, size);
        start = copy_.get();
    }
    setg(start, start, start + size);
}

StrStreamBuf::~StrStreamBuf() = default;

StrStreamBuf::pos_type StrStreamBuf::seekoff(off_type off, std::ios_base::seekdir way,
                                             std::ios_base::openmode which) {
    off_type base = 0;
    if (way == std::ios_base::cur)
        base = gptr() - eback();
    else if (way == std::ios_base::end)
        base = egptr() - eback();
    else if (way != std::ios_base::beg)
        return pos_type(off_type(-1));
    return seekpos(pos_type(base + off), which);
}

StrStreamBuf::pos_type StrStreamBuf::seekpos(pos_type pos, std::ios_base::openmode which) {
    const off_type target = pos;
    if (!(which & std::ios_base::in) || target < 0 || target > egptr() - eback())
        return pos_type(off_type(-1));
    setg(eback(), eback() + target, egptr());
    return pos;
}

std::streamsize StrStreamBuf::showmanyc() {
    const std::streamsize left = egptr() - gptr();
    return left > 0 ? left : -1;
}

ZtStrStream::ZtStrStream(const char* data, size_t size, bool copy)
    : std::istream(nullptr), buf_(data, size, copy) {
    rdbuf(&buf_);
}

ZtStrStream::~ZtStrStream() = default;

} // namespace ZtCommonNS
