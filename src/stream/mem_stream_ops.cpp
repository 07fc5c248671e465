// ZtMemStreamBuf operations beyond the stream-buffer interface: searching, skipping, bulk
// copies, zero-copy reads, trimming, emptying and the table checksum.
#include <algorithm>
#include <bit>
#include <climits>
#include <cstring>

#include "stream/block_pool.h"
#include "ztcommon/stream.h"

namespace ZtCommonNS {

namespace {
using Traits = std::char_traits<char>;
constexpr auto kIn = std::ios_base::in;
constexpr auto kOut = std::ios_base::out;
constexpr auto kCur = std::ios_base::cur;

uint32_t bigEndianWord(const char* p) {
    uint32_t word;
    std::memcpy(&word, p, sizeof word);
    if constexpr (std::endian::native == std::endian::little)
        word = __builtin_bswap32(word);
    return word;
}

uint32_t sumWords(const char* p, size_t words) {
    uint32_t sum = 0;
    for (size_t i = 0; i < words; ++i)
        sum += bigEndianWord(p + 4 * i);
    return sum;
}

size_t patternLength(const char* pattern, size_t len) {
    if (!pattern)
        return 0;
    return len != 0 ? len : std::strlen(pattern);
}
} // namespace

// Moves (index, offset) forward to the next byte of data, pulling sources at the end of the
// list. False at the end of the data.
bool ZtMemStreamBuf::toData(size_t& index, size_t& offset) {
    for (;;) {
        if (offset < dataLength(index))
            return true;
        if (index + 1 < blocks_.size()) {
            ++index;
            offset = 0;
        } else if (!sources_.empty()) {
            appendBuffer(true);
        } else {
            return false;
        }
    }
}

bool ZtMemStreamBuf::matchesAt(size_t index, size_t offset, const char* pattern, size_t len) {
    while (len > 0) {
        if (!toData(index, offset))
            return false;
        const size_t n = std::min(len, dataLength(index) - offset);
        if (std::memcmp(blocks_[index] + offset, pattern, n) != 0)
            return false;
        pattern += n;
        len -= n;
        offset += n;
    }
    return true;
}

bool ZtMemStreamBuf::searchSeek(const char* pattern, size_t len) {
    len = patternLength(pattern, len);
    if (len == 0 || seekoff(0, kCur, kIn) == pos_type(off_type(-1)))
        return false;
    size_t index = getIndex(eback());
    if (index == npos)
        return false;
    size_t offset = static_cast<size_t>(gptr() - eback());
    while (toData(index, offset)) {
        const char* block = blocks_[index];
        const size_t data = dataLength(index);
        const auto* hit =
            static_cast<const char*>(std::memchr(block + offset, pattern[0], data - offset));
        if (!hit) {
            offset = data;
            continue;
        }
        const auto at = static_cast<size_t>(hit - block);
        if (matchesAt(index, at + 1, pattern + 1, len - 1)) {
            seekpos(pos_type(static_cast<off_type>(index * blockSize_ + at)), kIn);
            return true;
        }
        offset = at + 1;
    }
    return false;
}

bool ZtMemStreamBuf::skipSeek(const char* pattern, size_t len) {
    len = patternLength(pattern, len);
    if (len == 0)
        return false;
    const off_type position = seekoff(0, kCur, kIn);
    if (position < 0)
        return false;
    const size_t index = getIndex(eback());
    if (index == npos || !matchesAt(index, static_cast<size_t>(gptr() - eback()), pattern, len))
        return false;
    seekpos(pos_type(position + static_cast<off_type>(len)), kIn);
    return true;
}

// Moves the read position over the bytes that are line ends (or, with lineEnds false, that are
// not). True when it stopped on another byte, false at the end of the data.
bool ZtMemStreamBuf::skipLineBytes(bool lineEnds) {
    auto skipped = [lineEnds](char c) { return (c == '\r' || c == '\n') == lineEnds; };
    for (;;) {
        if (gptr() == egptr() && Traits::eq_int_type(underflow(), Traits::eof()))
            return false;
        char* end = egptr();
        char* p = std::find_if_not(gptr(), end, skipped);
        setg(eback(), p, end);
        if (p < end)
            return true;
    }
}

bool ZtMemStreamBuf::seekEOL() {
    if (!skipLineBytes(false))
        return false;
    skipLineBytes(true);
    return true;
}

size_t ZtMemStreamBuf::copyStream(std::istream& in, size_t n) {
    size_t total = 0;
    if (!in.good())
        return 0;
    while (n > 0 && in.good()) {
        if (seekoff(0, kCur, kOut) == pos_type(off_type(-1)))
            break;
        // Straight into the block, its reserved last byte included.
        const size_t room = static_cast<size_t>(pbase() + blockSize_ - pptr());
        const size_t want = std::min(n, room);
        in.read(pptr(), static_cast<std::streamsize>(want));
        const auto got = static_cast<size_t>(in.gcount());
        advancePut(got);
        n -= got;
        total += got;
    }
    if (pbase() && static_cast<size_t>(pptr() - pbase()) >= blockSize_)
        seekoff(0, kCur, kOut);
    return total;
}

size_t ZtMemStreamBuf::getBuffer(const char*& p) {
    p = nullptr;
    if (seekoff(0, kCur, kIn) == pos_type(off_type(-1)))
        return 0;
    p = gptr();
    const auto count = static_cast<size_t>(egptr() - gptr());
    if (count > 0)
        seekoff(static_cast<off_type>(count), kCur, kIn);
    return count;
}

void ZtMemStreamBuf::abandonBuffer() {
    const size_t index = getIndex(eback());
    if (index == npos || index == 0)
        return;
    for (size_t i = 0; i < index; ++i) {
        char* front = blocks_.front();
        if (pbase() == front)
            setp(nullptr, nullptr);
        blocks_.pop_front();
        freeBlock(front);
    }
    current_ = 0;
}

void ZtMemStreamBuf::trim(size_t n) {
    flushBuffer();
    pullAllSources();
    if (n >= storedLength())
        return;
    const off_type limit = static_cast<off_type>(n);
    const off_type readPosition = std::clamp<off_type>(seekoff(0, kCur, kIn), 0, limit);
    const off_type writePosition = std::clamp<off_type>(seekoff(0, kCur, kOut), 0, limit);
    // Both areas are re-established below, from the positions just taken.
    setg(nullptr, nullptr, nullptr);
    setp(nullptr, nullptr);
    const size_t keep = (n + blockSize_ - 1) / blockSize_;
    while (blocks_.size() > keep) {
        freeBlock(blocks_.back());
        blocks_.pop_back();
    }
    fill_ = n % blockSize_;
    if (fill_ == 0 && n != 0)
        fill_ = blockSize_;
    current_ = 0;
    seekpos(pos_type(readPosition), kIn);
    seekpos(pos_type(writePosition), kOut);
    releaseSpareMemory();
}

void ZtMemStreamBuf::remove() {
    while (blocks_.size() > 1) {
        freeBlock(blocks_.back());
        blocks_.pop_back();
    }
    deleteSources();
    current_ = 0;
    fill_ = 0;
    setp(nullptr, nullptr);
    if (blocks_.empty())
        setg(nullptr, nullptr, nullptr);
    else
        seekpos(0, kIn | kOut);
    releaseSpareMemory();
}

void ZtMemStreamBuf::clear() {
    setg(nullptr, nullptr, nullptr);
    setp(nullptr, nullptr);
    for (char* block : blocks_)
        freeBlock(block);
    blocks_.clear();
    deleteSources();
    fill_ = 0;
    current_ = 0;
    keepMemory_ = true;
    pool_.reset();
}

void ZtMemStreamBuf::appendToString(std::string& out) {
    flushBuffer();
    pullAllSources();
    out.reserve(out.size() + storedLength());
    for (size_t i = 0; i < blocks_.size(); ++i)
        out.append(blocks_[i], dataLength(i));
}

void ZtMemStreamBuf::writeAll(std::ostream& out) {
    flushBuffer();
    pullAllSources();
    for (size_t i = 0; i < blocks_.size() && out; ++i)
        out.write(blocks_[i], static_cast<std::streamsize>(dataLength(i)));
}

uint32_t ZtMemStreamBuf::calcOTFTableChecksum() {
    flushBuffer();
    pullAllSources();
    if (storedLength() == 0)
        return 0;
    uint32_t sum = 0;
    for (size_t i = 0; i < blocks_.size(); ++i)
        sum += sumWords(blocks_[i], dataLength(i) / 4);
    // The last 1 to 3 bytes, padded with zeros to a word.
    const size_t rest = fill_ % 4;
    if (rest != 0) {
        char word[4] = {0, 0, 0, 0};
        std::memcpy(word, blocks_.back() + fill_ - rest, rest);
        sum += bigEndianWord(word);
    }
    return sum;
}

} // namespace ZtCommonNS
