// Helpers shared by the stream tests.
#pragma once

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "ztcommon/stream.h"

namespace ZtStreamTest {

// The private temporary directory of this test process ($TMPDIR points at it).
const std::string& privateTempDirectory();

// An input stream over a string that records its own deletion and lets the test see how much
// of it has been read.
class ProbeStream : public std::istream {
public:
    ProbeStream(std::string data, std::vector<std::string>* log, std::string name)
        : std::istream(nullptr), buf_(std::move(data)), log_(log), name_(std::move(name)) {
        rdbuf(&buf_);
    }
    ~ProbeStream() override {
        if (log_)
            log_->push_back(name_);
    }
    // Bytes taken from this stream so far.
    long consumed() { return static_cast<long>(buf_.pubseekoff(0, std::ios_base::cur, in)); }

private:
    std::stringbuf buf_;
    std::vector<std::string>* log_;
    std::string name_;
};

// Deterministic bytes for round trips: every byte depends on its position.
std::string patternBytes(size_t n, unsigned seed = 1);

// Checks the read side's limit of a stream of `length` bytes: seeking to the length succeeds and
// reads nothing; one byte further fails and moves nothing. Leaves the stream good, at `length`.
void expectReadSeekLimit(std::istream& stream, std::streamoff length);

// The 16 raw bytes of the MD5 digest of `bytes`, from the library's MD5, and raw bytes as
// lower-case hexadecimal.
std::string md5Of(const std::string& bytes);
std::string hex(const std::string& bytes);

// The whole content of a memory stream, without moving its positions.
std::string contentOf(ZtCommonNS::ZtMemStream& stream);

} // namespace ZtStreamTest
