// Streams and files of ZtCommon: the block-list memory stream, streams driven by an application
// controller, input streams over a block of memory, and uniquely named temporary files.
//
// Streams follow the standard iostreams of char and report failures through the stream state;
// temporary-file operations raise ZtError.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <iostream>
#include <memory>
#include <streambuf>
#include <string>

#include "ztcommon/foundation.h"

namespace ZtCommonNS {

// ---------------------------------------------------------------------------------------------
// Temporary files
// ---------------------------------------------------------------------------------------------

// Owns a temporary file (and, when it made one, the directory the file lives in) and deletes it
// robustly: removal waits for other processes that still hold a lock on the file. Copies share
// the file: both refer to the same name and whichever is destroyed first removes it.
class ZT_EXPORT ZtTempFile {
public:
    ZtTempFile();
    // Creates a new file at once, as setFileName(directory, prefix, extension) does.
    ZtTempFile(const char* directory, const char* prefix, const char* extension);
    ZtTempFile(const UnicodeString& directory, const UnicodeString& prefix,
               const UnicodeString& extension);
    ZtTempFile(const ZtTempFile& other);
    // Takes the other's names; a different file held before is removed first (quietly).
    ZtTempFile& operator=(const ZtTempFile& other);
    // Removes the held file and directory; failures are ignored here (use remove() to see them).
    ~ZtTempFile();

    // Creates a new, uniquely named file with getTempFile and holds it. A null or empty
    // directory means the temporary directory. Raises code 78 when no file can be created.
    const ZtCStr& setFileName(const char* directory, const char* prefix, const char* extension);
    const ZtCStr& setFileName(const UnicodeString& directory, const UnicodeString& prefix,
                              const UnicodeString& extension);
    // Adopts an existing name: the file will be removed by this object.
    const ZtCStr& setFileName(const UnicodeString& name);
    const ZtCStr& setFileName(const char* name);
    // Creates a fresh directory named by a new UUID below the temporary directory and a file
    // called `name` in it, and holds both. Raises code 78 on failure.
    const ZtCStr& setFileNameInUUIDDirectory(const UnicodeString& name);

    const ZtCStr& getFileName() const { return fileName_; }
    // The directory made for the file by setFileNameInUUIDDirectory, or empty.
    const ZtCStr& getDirectoryName() const { return directoryName_; }
    bool isTempFile() const { return !fileName_.isEmpty(); }
    // Hands the file over to the caller: it is no longer removed by this object.
    ZtCStr releaseFileName();
    // Removes the file now (and its directory, if this object made one). Raises code 77 with the
    // system's error text when the file cannot be removed; the name is then kept.
    void remove();

    // Removes a file, retrying while another process holds a lock on it (ten attempts, a
    // second apart). A path that does not exist counts as removed.
    static bool removeTempFile(const char* path);
    static bool removeTempFile(const UnicodeString& path);
    // $TMPDIR when it names a directory, else /tmp; always ending with '/'. Computed once.
    static const UnicodeString& getTempDirectory();
    // Creates a new empty file named directory + prefix + unique part + extension and returns
    // its name. The unique part is "%03x_%04x" of the process id and a process-wide counter;
    // the narrow form uses "%03x-%08x%08x%08x%08x", the process id and the four words of a
    // fresh UUID. Raises code 78 (cannot create) or 77 (a failed attempt cannot be cleaned up).
    static ZtCStr getTempFile(const char* directory, const char* prefix, const char* extension);
    static ZtCStr getTempFile(const UnicodeString& directory, const UnicodeString& prefix,
                              const UnicodeString& extension);
    // Creates a new UUID-named directory below the temporary directory and an empty file
    // called `name` in it; returns the file's full name.
    static ZtCStr getTempFileInUUIDDirectory(const UnicodeString& name);

private:
    const ZtCStr& adopt(const ZtCStr& name);
    void forget();
    void removeQuietly();

    ZtCStr fileName_;
    ZtCStr directoryName_;
};

// ---------------------------------------------------------------------------------------------
// Custom streams
// ---------------------------------------------------------------------------------------------

// The application's side of a ZtCustomStream: where its bytes come from and go to.
class ZT_EXPORT ZtCustomStreamController {
public:
    virtual ~ZtCustomStreamController();
    // Prepares the resource; true on success. The stream itself never calls it.
    virtual bool open() = 0;
    // Releases the resource. The stream itself never calls it.
    virtual void close() = 0;
    // Delivers up to `size` bytes into `buffer`: the count given, 0 at the end, negative on
    // failure.
    virtual long long read(char* buffer, size_t size) = 0;
    // Accepts `size` bytes; returns how many were taken (fewer means failure).
    virtual long long write(const char* buffer, size_t size) = 0;
};

// Stream buffer over a controller. Reads come in pieces of up to 8192 bytes behind a 10-byte
// put-back reserve; writes are handed over 8201 bytes at a time, or on flush. It cannot seek.
class ZT_EXPORT ZtCustomStreamBuf : public std::streambuf {
public:
    static constexpr size_t PUTBACK_SIZE = 10;
    static constexpr size_t READ_SIZE = 8192;
    static constexpr size_t WRITE_SIZE = 8201;

    explicit ZtCustomStreamBuf(ZtCustomStreamController* controller);
    ZtCustomStreamBuf(const ZtCustomStreamBuf&) = delete;
    ZtCustomStreamBuf& operator=(const ZtCustomStreamBuf&) = delete;
    // Hands pending output to the controller.
    ~ZtCustomStreamBuf() override;

    bool is_open() const { return buffer_ != nullptr; }
    ZtCustomStreamController* getController() const { return controller_; }

protected:
    int_type overflow(int_type c) override;
    int_type underflow() override;
    pos_type seekoff(off_type off, std::ios_base::seekdir way,
                     std::ios_base::openmode which) override;
    pos_type seekpos(pos_type pos, std::ios_base::openmode which) override;
    int sync() override;

private:
    bool flushOutput();

    std::unique_ptr<char[]> buffer_;
    ZtCustomStreamController* controller_;
};

// A bidirectional byte stream whose bytes come from and go to a controller (not owned).
class ZT_EXPORT ZtCustomStream : public std::iostream {
public:
    explicit ZtCustomStream(ZtCustomStreamController* controller);
    ~ZtCustomStream() override;

    bool is_open() const { return buf_.is_open(); }

private:
    ZtCustomStreamBuf buf_;
};

// ---------------------------------------------------------------------------------------------
// String streams
// ---------------------------------------------------------------------------------------------

// Input buffer over one block of memory, copied or read in place. Positions can be sought.
class ZT_EXPORT StrStreamBuf : public std::streambuf {
public:
    StrStreamBuf(const char* data, size_t size, bool copy);
    StrStreamBuf(const StrStreamBuf&) = delete;
    StrStreamBuf& operator=(const StrStreamBuf&) = delete;
    ~StrStreamBuf() override;

protected:
    pos_type seekoff(off_type off, std::ios_base::seekdir way,
                     std::ios_base::openmode which) override;
    pos_type seekpos(pos_type pos, std::ios_base::openmode which) override;
    std::streamsize showmanyc() override;

private:
    std::unique_ptr<char[]> copy_;
};

// An input stream over a block of memory. With copy false the caller's bytes are read in place
// and must outlive the stream.
class ZT_EXPORT ZtStrStream : public std::istream {
public:
    ZtStrStream(const char* data, size_t size, bool copy = false);
    ~ZtStrStream() override;

private:
    StrStreamBuf buf_;
};

// ---------------------------------------------------------------------------------------------
// Memory streams
// ---------------------------------------------------------------------------------------------

class ZtBlockPool;
class ZtMemStream;

// The memory stream's buffer: a list of fixed-size blocks that never move. Block i holds the
// stream bytes [i * block size, (i + 1) * block size); every block but the last is full. It can
// be filled lazily from queued input streams (its sources), which are pulled block by block
// only when a read, a seek or a length query needs their bytes.
//
// The get area always lies within one block. The put area is one block one byte short: the
// last byte of every block is written by overflow, which then moves on to the next block.
class ZT_EXPORT ZtMemStreamBuf : public std::streambuf {
public:
    static constexpr size_t DEFAULT_GROW_BYTES = 8192;
    static constexpr size_t npos = static_cast<size_t>(-1);

    // A growBytes of 0 means the default block size.
    explicit ZtMemStreamBuf(std::istream* source = nullptr, size_t growBytes = DEFAULT_GROW_BYTES,
                            bool ownSource = false);
    // Copies the block size and the keep-memory setting only: the new buffer is empty.
    ZtMemStreamBuf(const ZtMemStreamBuf& other);
    // Empties this buffer as remove() does and takes the other's block size and keep-memory
    // setting; the content is not copied.
    ZtMemStreamBuf& operator=(const ZtMemStreamBuf& other);
    // Frees every block and deletes the owned sources still queued.
    ~ZtMemStreamBuf() override;

    // Queues an input stream to be read after the current content. An owned source is deleted
    // once it is exhausted or the buffer is emptied or destroyed.
    void setSource(std::istream* source, bool ownSource);
    std::istream* getSource() const { return sources_.empty() ? nullptr : sources_.front(); }

    // With false, reading recycles blocks already read so that at most two are held (for one
    // forward pass over a large source; positions then no longer match block indexes).
    void setKeepMemory(bool keep) { keepMemory_ = keep; }
    bool getKeepMemory() const { return keepMemory_; }
    size_t getGrowBytes() const { return blockSize_; }
    // Takes effect only while no block exists. 0 is ignored.
    void setGrowBytes(size_t growBytes);
    // Bytes left in the current get area.
    size_t getRemains() const { return static_cast<size_t>(egptr() - gptr()); }
    // Number of blocks currently held.
    size_t getBlockCount() const { return blocks_.size(); }

    // Total length, after pulling every source.
    size_t length();
    // Appends the whole content (from position 0) to `out`; neither position moves.
    void appendToString(std::string& out);
    // Moves the read position to the next occurrence of the pattern at or after it (the pattern
    // is not skipped). len 0 means strlen(pattern). False, position unchanged, when not found.
    bool searchSeek(const char* pattern, size_t len = 0);
    // When the bytes at the read position equal the pattern, moves past them and returns true.
    bool skipSeek(const char* pattern, size_t len = 0);
    // Skips to the first CR or LF and then over every following CR and LF; stops on the next
    // other byte or at the end. True when a line end was found.
    bool seekEOL();
    // Copies up to n bytes from `in` straight into the blocks at the write position; returns the
    // number copied. Nothing happens unless `in` is good.
    size_t copyStream(std::istream& in, size_t n);
    // Frees the blocks before the current read block. Positions are afterwards relative to the
    // first block kept.
    void abandonBuffer();
    // Zero-copy reading: points p at the rest of the current read block, consumes it and returns
    // its length; 0 at the end.
    size_t getBuffer(const char*& p);
    // Cuts the content to n bytes (when shorter than the length); positions beyond are pulled
    // back to n.
    void trim(size_t n);
    // Sum modulo 2^32 of the content as big-endian 32-bit words, the last one zero-padded.
    uint32_t calcOTFTableChecksum();
    // The 16 raw MD5 bytes of the content from the read position to the end; empty when the
    // stream holds nothing. The read position does not move.
    std::string getMD5();
    // Empties the buffer but keeps one block; owned sources are deleted.
    void remove();
    // Frees everything, deletes owned sources and resets keep-memory to true.
    void clear();

protected:
    int_type overflow(int_type c) override;
    int_type pbackfail(int_type c) override;
    int_type underflow() override;
    pos_type seekoff(off_type off, std::ios_base::seekdir way,
                     std::ios_base::openmode which) override;
    pos_type seekpos(pos_type pos, std::ios_base::openmode which) override;
    // Bulk transfers: whole runs are copied with memcpy, one block at a time.
    std::streamsize xsgetn(char* s, std::streamsize n) override;
    std::streamsize xsputn(const char* s, std::streamsize n) override;

    // Adds one block at the end and fills it from the sources; with keep false and more than one
    // block held, recycles the front block instead (at most two blocks remain).
    void appendBuffer(bool keep);
    // Makes bytes written into the last block part of the length.
    void flushBuffer();
    // Index of the block starting at blockStart, or npos.
    size_t getIndex(const char* blockStart);

private:
    friend class ZtMemStream;

    char* allocateBlock();
    void freeBlock(char* block);
    void releaseSpareMemory();
    void forgetAreasIn(const char* block);
    void deleteSources();
    void pullAllSources();
    size_t dataLength(size_t index) const;
    size_t storedLength() const;
    void setGetArea(size_t index, size_t offset);
    void setPutArea(size_t index, size_t offset);
    void advancePut(size_t n);
    void zeroRange(size_t from, size_t to);
    bool toData(size_t& index, size_t& offset);
    bool matchesAt(size_t index, size_t offset, const char* pattern, size_t len);
    bool skipLineBytes(bool lineEnds);
    void writeAll(std::ostream& out);

    std::deque<char*> blocks_;
    size_t current_ = 0;
    size_t fill_ = 0;
    std::deque<std::istream*> sources_;
    std::deque<bool> owned_;
    size_t blockSize_ = DEFAULT_GROW_BYTES;
    bool keepMemory_ = true;
    std::unique_ptr<ZtBlockPool> pool_;
    // Block indexes the get and put areas were last set to: getIndex checks them first, so
    // that interleaved reading and writing far apart does not search the list.
    size_t getHint_ = 0;
    size_t putHint_ = 0;
};

// The library's general in-memory byte stream over a ZtMemStreamBuf. It can also move its
// content to a temporary file (changeTempBuffer) and then reads from there.
class ZT_EXPORT ZtMemStream : public std::iostream {
public:
    explicit ZtMemStream(std::istream* source = nullptr,
                         size_t growBytes = ZtMemStreamBuf::DEFAULT_GROW_BYTES,
                         bool ownSource = false);
    // Reads and writes go straight to source's own buffer, and the memory buffer takes
    // ownership of `source` (as a lazy source): pass a heap-allocated stream you give up.
    explicit ZtMemStream(std::istream& source);
    // Copies the other's content, read position and write position.
    ZtMemStream(const ZtMemStream& other);
    // Writes the other's content at this stream's write position (this stream is not emptied
    // first) and takes over its positions. An empty other, or this stream itself, changes
    // nothing.
    ZtMemStream& operator=(const ZtMemStream& other);
    ~ZtMemStream() override;

    ZtMemStream& operator+=(const std::string& bytes) { return append(bytes); }
    ZtMemStream& append(const std::string& bytes);
    ZtMemStream& writeStr(const char* text);

    // Clears a failed state and seeks the read position to 0.
    ZtMemStream& begin();
    // Empties the stream (one block is kept) and clears a failed state.
    ZtMemStream& erase();
    void remove();
    size_t length();
    size_t size() { return length(); }
    bool empty() { return length() == 0; }
    bool isEmpty() { return length() == 0; }
    void close() {}

    void setKeepMemory(bool keep) { buf_.setKeepMemory(keep); }
    void setSource(std::istream* source, bool ownSource) { buf_.setSource(source, ownSource); }
    void appendToString(std::string& out) { buf_.appendToString(out); }
    bool searchSeek(const char* pattern, size_t len = 0) { return buf_.searchSeek(pattern, len); }
    bool skipSeek(const char* pattern, size_t len = 0) { return buf_.skipSeek(pattern, len); }
    bool seekEOL() { return buf_.seekEOL(); }
    size_t copyStream(std::istream& in, size_t n) { return buf_.copyStream(in, n); }
    void abandonBuffer() { buf_.abandonBuffer(); }
    size_t getBuffer(const char*& p) { return buf_.getBuffer(p); }
    void trim(size_t n) { buf_.trim(n); }
    void setGrowBytes(size_t growBytes) { buf_.setGrowBytes(growBytes); }
    uint32_t calcOTFTableChecksum() { return buf_.calcOTFTableChecksum(); }
    std::string getMD5() { return buf_.getMD5(); }

    // Moves the content to a new temporary file ("ZtMem....tmp") and reads from the file from
    // then on; memory is freed. False when the stream already uses a file or the content could
    // not be written (the memory is then kept). Raises ZtError when no file can be created.
    bool changeTempBuffer();
    // Back from a borrowed stream buffer to the own memory buffer, at position 0 (not after
    // changeTempBuffer, whose file stays in use).
    void resetBuffer();
    // The temporary file in use after changeTempBuffer.
    const ZtTempFile& getTempFile() const { return tempFile_; }
    ZtMemStreamBuf& getMemBuffer() { return buf_; }

private:
    void copyFrom(const ZtMemStream& other);

    ZtMemStreamBuf buf_;
    ZtTempFile tempFile_;
};

} // namespace ZtCommonNS
