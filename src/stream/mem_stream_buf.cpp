// ZtMemStreamBuf core: the block list, lazy sources, the get and put areas and positioning.
#include <algorithm>
#include <climits>
#include <cstring>

#include "stream/block_pool.h"
#include "ztcommon/stream.h"

namespace ZtCommonNS {

namespace {
using Traits = std::char_traits<char>;
constexpr auto kIn = std::ios_base::in;
constexpr auto kOut = std::ios_base::out;

bool isEof(std::streambuf::int_type c) {
    return Traits::eq_int_type(c, Traits::eof());
}

std::streambuf::pos_type failedPosition() {
    return std::streambuf::pos_type(std::streambuf::off_type(-1));
}
} // namespace

ZtMemStreamBuf::ZtMemStreamBuf(std::istream* source, size_t growBytes, bool ownSource)
    : blockSize_(growBytes ? growBytes : DEFAULT_GROW_BYTES) {
    if (source) {
        sources_.push_back(source);
        owned_.push_back(ownSource);
    }
}

// The base is default-constructed on purpose: its copy would share the other's areas.
// NOLINTNEXTLINE(bugprone-copy-constructor-init)
ZtMemStreamBuf::ZtMemStreamBuf(const ZtMemStreamBuf& other)
    : std::streambuf(), blockSize_(other.blockSize_), keepMemory_(other.keepMemory_) {}

ZtMemStreamBuf& ZtMemStreamBuf::operator=(const ZtMemStreamBuf& other) {
    if (this == &other)
        return *this;
    remove();
    current_ = 0;
    fill_ = 0;
    if (other.blockSize_ != blockSize_) {
        // The block kept by remove() has the old size: replace it by one of the new size.
        const bool hadBlock = !blocks_.empty();
        setg(nullptr, nullptr, nullptr);
        setp(nullptr, nullptr);
        for (char* block : blocks_)
            freeBlock(block);
        blocks_.clear();
        blockSize_ = other.blockSize_;
        if (pool_)
            pool_->setBlockSize(blockSize_);
        if (hadBlock) {
            blocks_.push_back(allocateBlock());
            seekpos(0, kIn | kOut);
        }
    }
    keepMemory_ = other.keepMemory_;
    return *this;
}

ZtMemStreamBuf::~ZtMemStreamBuf() {
    deleteSources();
    for (char* block : blocks_)
        freeBlock(block);
}

// --- Blocks and sources ---------------------------------------------------------------------

char* ZtMemStreamBuf::allocateBlock() {
    if (!pool_)
        pool_ = std::make_unique<ZtBlockPool>(blockSize_);
    return pool_->allocate();
}

void ZtMemStreamBuf::freeBlock(char* block) {
    pool_->release(block);
}

void ZtMemStreamBuf::releaseSpareMemory() {
    if (pool_)
        pool_->releaseSpare();
}

void ZtMemStreamBuf::forgetAreasIn(const char* block) {
    if (pbase() == block)
        setp(nullptr, nullptr);
    if (eback() == block)
        setg(nullptr, nullptr, nullptr);
}

void ZtMemStreamBuf::deleteSources() {
    for (size_t i = 0; i < sources_.size(); ++i)
        if (owned_[i])
            delete sources_[i];
    sources_.clear();
    owned_.clear();
}

void ZtMemStreamBuf::setGrowBytes(size_t growBytes) {
    if (!blocks_.empty() || growBytes == 0)
        return;
    blockSize_ = growBytes;
    if (pool_)
        pool_->setBlockSize(growBytes);
}

void ZtMemStreamBuf::appendBuffer(bool keep) {
    char* block;
    if (!keep && blocks_.size() > 1) {
        while (blocks_.size() > 2) {
            char* front = blocks_.front();
            forgetAreasIn(front);
            blocks_.pop_front();
            freeBlock(front);
        }
        block = blocks_.front();
        forgetAreasIn(block);
        blocks_.pop_front();
    } else {
        block = allocateBlock();
    }
    try {
        blocks_.push_back(block);
    } catch (...) {
        freeBlock(block);
        throw;
    }
    fill_ = 0;
    current_ = blocks_.size() - 1;
    while (!sources_.empty() && fill_ < blockSize_) {
        std::istream* source = sources_.front();
        source->read(block + fill_, static_cast<std::streamsize>(blockSize_ - fill_));
        fill_ += static_cast<size_t>(source->gcount());
        // A source that is still good has filled the block. One at its end, or one that failed
        // (which would never deliver again), is done.
        if (source->good())
            continue;
        if (owned_.front())
            delete source;
        sources_.pop_front();
        owned_.pop_front();
    }
}

void ZtMemStreamBuf::pullAllSources() {
    while (!sources_.empty())
        appendBuffer(true);
}

void ZtMemStreamBuf::setSource(std::istream* source, bool ownSource) {
    if (!source)
        return;
    sources_.push_back(source);
    owned_.push_back(ownSource);
    if (blocks_.empty())
        return;
    flushBuffer();
    if (fill_ >= blockSize_)
        return;
    std::istream* front = sources_.front();
    front->read(blocks_.back() + fill_, static_cast<std::streamsize>(blockSize_ - fill_));
    fill_ += static_cast<size_t>(front->gcount());
    if (!front->good()) {
        if (owned_.front())
            delete front;
        sources_.pop_front();
        owned_.pop_front();
    }
    seekoff(0, std::ios_base::cur, kIn);
}

// --- Measures --------------------------------------------------------------------------------

size_t ZtMemStreamBuf::dataLength(size_t index) const {
    return index + 1 == blocks_.size() ? fill_ : blockSize_;
}

size_t ZtMemStreamBuf::storedLength() const {
    return blocks_.empty() ? 0 : (blocks_.size() - 1) * blockSize_ + fill_;
}

void ZtMemStreamBuf::flushBuffer() {
    if (pbase() && !blocks_.empty() && pbase() == blocks_.back())
        fill_ = std::max(fill_, static_cast<size_t>(pptr() - pbase()));
}

size_t ZtMemStreamBuf::getIndex(const char* blockStart) {
    if (!blockStart)
        return npos;
    const size_t count = blocks_.size();
    for (size_t hint : {getHint_, putHint_})
        if (hint < count && blocks_[hint] == blockStart)
            return current_ = hint;
    for (size_t i = current_; i < count; ++i)
        if (blocks_[i] == blockStart)
            return current_ = i;
    for (size_t i = std::min(current_, count); i-- > 0;)
        if (blocks_[i] == blockStart)
            return current_ = i;
    return npos;
}

size_t ZtMemStreamBuf::length() {
    flushBuffer();
    pullAllSources();
    return storedLength();
}

// --- Areas -----------------------------------------------------------------------------------

void ZtMemStreamBuf::setGetArea(size_t index, size_t offset) {
    char* block = blocks_[index];
    const size_t data = dataLength(index);
    setg(block, block + std::min(data, offset), block + data);
    getHint_ = index;
}

void ZtMemStreamBuf::setPutArea(size_t index, size_t offset) {
    char* block = blocks_[index];
    setp(block, block + blockSize_ - 1);
    advancePut(offset);
    putHint_ = index;
}

void ZtMemStreamBuf::advancePut(size_t n) {
    while (n > static_cast<size_t>(INT_MAX)) {
        pbump(INT_MAX);
        n -= static_cast<size_t>(INT_MAX);
    }
    pbump(static_cast<int>(n));
}

// Bytes between the old end and a write position sought beyond it read as zeros.
void ZtMemStreamBuf::zeroRange(size_t from, size_t to) {
    while (from < to) {
        const size_t index = from / blockSize_;
        const size_t offset = from % blockSize_;
        const size_t n = std::min(to - from, blockSize_ - offset);
        std::memset(blocks_[index] + offset, 0, n);
        from += n;
    }
}

// --- Virtuals --------------------------------------------------------------------------------

ZtMemStreamBuf::int_type ZtMemStreamBuf::underflow() {
    flushBuffer();
    if (!gptr()) {
        // First read: from position 0.
        if (!blocks_.empty()) {
            current_ = 0;
            char* block = blocks_[0];
            const size_t available = blocks_.size() > 1 ? blockSize_ : fill_;
            setg(block, block, block + available);
            getHint_ = 0;
        } else {
            appendBuffer(keepMemory_);
            setGetArea(blocks_.size() - 1, 0);
        }
    }
    if (gptr() >= egptr()) {
        size_t index = getIndex(eback());
        size_t offset = static_cast<size_t>(gptr() - eback());
        if (index != npos && dataLength(index) <= offset) {
            offset = 0;
            ++index;
        }
        if (index != npos && index < blocks_.size()) {
            setGetArea(index, offset);
        } else if (!sources_.empty()) {
            appendBuffer(keepMemory_);
            setGetArea(blocks_.size() - 1, 0);
        }
    }
    return gptr() < egptr() ? Traits::to_int_type(*gptr()) : Traits::eof();
}

ZtMemStreamBuf::int_type ZtMemStreamBuf::overflow(int_type c) {
    if (pbase()) {
        if (pptr() < epptr()) {
            // Room is left (a direct call): an ordinary store.
            if (!isEof(c)) {
                *pptr() = Traits::to_char_type(c);
                pbump(1);
            }
            return Traits::not_eof(c);
        }
        if (!isEof(c)) {
            *pptr() = Traits::to_char_type(c); // the reserved last byte of the block
            pbump(1);
        }
        flushBuffer();
        const size_t index = getIndex(pbase());
        if (index != npos && index + 1 < blocks_.size())
            current_ = index + 1;
        else
            appendBuffer(true);
        setPutArea(current_, 0);
    } else {
        if (blocks_.empty())
            appendBuffer(true);
        current_ = 0;
        setPutArea(0, 0);
        if (!isEof(c)) {
            if (pptr() < epptr()) {
                *pptr() = Traits::to_char_type(c);
                pbump(1);
            } else {
                // A one-byte block: its only byte is the reserved one.
                return overflow(c);
            }
        }
    }
    return Traits::not_eof(c);
}

ZtMemStreamBuf::int_type ZtMemStreamBuf::pbackfail(int_type c) {
    if (!eback() || isEof(c))
        return Traits::eof();
    if (gptr() > eback()) {
        gbump(-1);
        return c;
    }
    const size_t index = getIndex(eback());
    if (index == npos || index == 0)
        return Traits::eof();
    setGetArea(index - 1, blockSize_ - 1);
    return c;
}

ZtMemStreamBuf::pos_type ZtMemStreamBuf::seekoff(off_type off, std::ios_base::seekdir way,
                                                 std::ios_base::openmode which) {
    flushBuffer();
    off_type target = 0;
    if (way == std::ios_base::beg) {
        target = off;
    } else if (way == std::ios_base::cur) {
        const bool input = which == kIn;
        const char* base = input ? eback() : pbase();
        const char* pointer = input ? gptr() : pptr();
        off_type position = 0;
        if (pointer) {
            const size_t index = getIndex(base);
            if (index == npos)
                return failedPosition();
            position = static_cast<off_type>(index * blockSize_) + (pointer - base);
        }
        target = position + off;
    } else if (way == std::ios_base::end) {
        pullAllSources();
        target = static_cast<off_type>(storedLength()) + off;
    } else {
        return failedPosition();
    }
    return seekpos(pos_type(target), which);
}

ZtMemStreamBuf::pos_type ZtMemStreamBuf::seekpos(pos_type pos, std::ios_base::openmode which) {
    const off_type target = pos;
    if (target < 0)
        return failedPosition();
    const auto position = static_cast<size_t>(target);
    flushBuffer();
    if (blocks_.empty())
        appendBuffer(true);
    size_t length = storedLength();
    while (position >= length && !sources_.empty()) {
        appendBuffer(true);
        length = storedLength();
    }
    if (position > length && !(which & kOut))
        return failedPosition();
    const size_t index = position / blockSize_;
    const size_t offset = position % blockSize_;
    if (index >= blocks_.size()) {
        // A position that no memory could reach fails before anything changes.
        pool_->checkRoomFor(index + 1 - blocks_.size());
        while (index >= blocks_.size())
            appendBuffer(true);
    }
    if ((which & kOut) && position > length)
        zeroRange(length, position);
    current_ = index;
    if (which & kIn)
        setGetArea(index, offset);
    if (which & kOut)
        setPutArea(index, offset);
    return pos;
}

std::streamsize ZtMemStreamBuf::xsgetn(char* s, std::streamsize n) {
    std::streamsize done = 0;
    while (done < n) {
        const std::streamsize available = egptr() - gptr();
        if (available <= 0) {
            if (isEof(underflow()))
                break;
            continue;
        }
        const std::streamsize count =
            std::min({available, n - done, static_cast<std::streamsize>(INT_MAX)});
        std::memcpy(s + done, gptr(), static_cast<size_t>(count));
        gbump(static_cast<int>(count));
        done += count;
    }
    return done;
}

std::streamsize ZtMemStreamBuf::xsputn(const char* s, std::streamsize n) {
    std::streamsize done = 0;
    while (done < n) {
        const std::streamsize room = epptr() - pptr();
        if (room <= 0) {
            // The block's reserved last byte, or the first write: overflow moves on.
            if (isEof(overflow(Traits::to_int_type(s[done]))))
                break;
            ++done;
            continue;
        }
        const std::streamsize count = std::min(room, n - done);
        std::memcpy(pptr(), s + done, static_cast<size_t>(count));
        advancePut(static_cast<size_t>(count));
        done += count;
    }
    return done;
}

} // namespace ZtCommonNS
