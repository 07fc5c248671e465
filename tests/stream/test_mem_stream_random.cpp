// Random operations on a ZtMemStream compared step by step with a plain string model: writes,
// reads, seeks of both positions, put-backs, searches, line skips, zero-copy reads, trims, bulk
// copies, late sources, checksums and digests, over tiny blocks that make every operation cross
// boundaries.
#include <random>

#include <gtest/gtest.h>

#include "stream_test_support.h"

using namespace ZtCommonNS;

namespace {

// What the stream should hold: its bytes and both positions.
struct Model {
    std::string data;
    size_t readPosition = 0;
    size_t writePosition = 0;

    void write(const std::string& bytes) {
        if (data.size() < writePosition + bytes.size())
            data.resize(writePosition + bytes.size());
        data.replace(writePosition, bytes.size(), bytes);
        writePosition += bytes.size();
    }
};

// The OpenType checksum computed directly from its definition over the bytes.
uint32_t tableChecksum(const std::string& bytes) {
    uint32_t sum = 0;
    for (size_t i = 0; i < bytes.size(); i += 4) {
        uint32_t word = 0;
        for (size_t k = 0; k < 4; ++k)
            word = (word << 8) |
                   (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0u);
        sum += word;
    }
    return sum;
}

class RandomRun {
public:
    RandomRun(size_t blockSize, unsigned seed) : blockSize_(blockSize), random_(seed) {}

    void run(int steps) {
        if (chance(2)) {
            // Start from a lazy source.
            const std::string initial = bytes(pick(0, 40));
            stream_ =
                std::make_unique<ZtMemStream>(new std::istringstream(initial), blockSize_, true);
            model_.data = initial;
        } else {
            stream_ = std::make_unique<ZtMemStream>(nullptr, blockSize_);
        }
        for (int step = 0; step < steps && !::testing::Test::HasFailure(); ++step) {
            SCOPED_TRACE("step " + std::to_string(step));
            stream_->clear();
            oneStep();
            if (model_.data.size() > 600)
                trim(pick(0, 200));
            // Asking for the positions also re-establishes the areas: not after every step, so
            // that stale areas get their chance to show.
            if (chance(3)) {
                stream_->clear(); // a failed state hides the positions
                checkPositions();
            }
        }
        EXPECT_EQ(ZtStreamTest::contentOf(*stream_), model_.data);
    }

private:
    size_t pick(size_t low, size_t high) {
        return std::uniform_int_distribution<size_t>(low, high)(random_);
    }
    bool chance(size_t oneIn) { return pick(1, oneIn) == 1; }

    // Bytes from a small alphabet (so that searches hit and lines end), now and then any byte.
    std::string bytes(size_t n) {
        static const char alphabet[] = {'a', 'b', '\r', '\n', '\0', 'x'};
        std::string out(n, '\0');
        for (char& c : out)
            c = chance(10) ? static_cast<char>(pick(0, 255)) : alphabet[pick(0, 5)];
        return out;
    }

    std::string patternFromData() {
        if (model_.data.empty() || chance(4))
            return bytes(pick(1, 4));
        const size_t at = pick(0, model_.data.size() - 1);
        return model_.data.substr(at, pick(1, 6));
    }

    void checkPositions() {
        ASSERT_EQ(stream_->tellg(),
                  std::streampos(static_cast<std::streamoff>(model_.readPosition)));
        ASSERT_EQ(stream_->tellp(),
                  std::streampos(static_cast<std::streamoff>(model_.writePosition)));
    }

    void trim(size_t n) {
        stream_->trim(n);
        if (n < model_.data.size()) {
            model_.data.resize(n);
            model_.readPosition = std::min(model_.readPosition, n);
            model_.writePosition = std::min(model_.writePosition, n);
        }
    }

    void oneStep() {
        Model& m = model_;
        const size_t length = m.data.size();
        switch (pick(0, 16)) {
        case 0:
        case 1: {
            const std::string b = bytes(pick(0, 3 * blockSize_ + 5));
            stream_->write(b.data(), static_cast<std::streamsize>(b.size()));
            m.write(b);
            break;
        }
        case 2:
        case 3: {
            const size_t n = pick(0, 3 * blockSize_ + 5);
            std::string got(n, '\0');
            stream_->read(got.data(), static_cast<std::streamsize>(n));
            const size_t expected = std::min(n, length - m.readPosition);
            ASSERT_EQ(static_cast<size_t>(stream_->gcount()), expected);
            got.resize(expected);
            ASSERT_EQ(got, m.data.substr(m.readPosition, expected));
            m.readPosition += expected;
            break;
        }
        case 4: {
            const bool get = chance(2);
            const int c = get ? stream_->get() : stream_->peek();
            if (m.readPosition == length) {
                ASSERT_EQ(c, EOF);
            } else {
                ASSERT_EQ(c, static_cast<unsigned char>(m.data[m.readPosition]));
                m.readPosition += get ? 1 : 0;
            }
            break;
        }
        case 5: {
            const size_t p = pick(0, length + 2);
            if (chance(3)) {
                const auto off =
                    static_cast<std::streamoff>(p) - static_cast<std::streamoff>(length);
                stream_->seekg(off, std::ios_base::end);
            } else if (chance(2)) {
                const auto off =
                    static_cast<std::streamoff>(p) - static_cast<std::streamoff>(m.readPosition);
                stream_->seekg(off, std::ios_base::cur);
            } else {
                stream_->seekg(static_cast<std::streamoff>(p));
            }
            ASSERT_EQ(stream_->fail(), p > length);
            if (p <= length)
                m.readPosition = p;
            break;
        }
        case 6: {
            const size_t p = pick(0, length + 2 * blockSize_ + 3);
            if (chance(2))
                stream_->seekp(static_cast<std::streamoff>(p));
            else
                stream_->seekp(static_cast<std::streamoff>(p) -
                                   static_cast<std::streamoff>(m.writePosition),
                               std::ios_base::cur);
            ASSERT_FALSE(stream_->fail());
            if (p > length)
                m.data.resize(p, '\0'); // the gap reads as zeros
            m.writePosition = p;
            break;
        }
        case 7: {
            stream_->putback('?');
            ASSERT_EQ(stream_->bad(), m.readPosition == 0);
            if (m.readPosition > 0)
                --m.readPosition; // the stream's byte is kept, not replaced
            break;
        }
        case 8: {
            const std::string pattern = patternFromData();
            const size_t at = m.data.find(pattern, m.readPosition);
            ASSERT_EQ(stream_->searchSeek(pattern.data(), pattern.size()), at != std::string::npos)
                << "pattern size " << pattern.size();
            if (at != std::string::npos)
                m.readPosition = at;
            break;
        }
        case 9: {
            const std::string pattern =
                chance(2) && m.readPosition < length
                    ? m.data.substr(m.readPosition, pick(1, 2 * blockSize_ + 1))
                    : bytes(pick(1, 3));
            const bool matches = m.data.compare(m.readPosition, pattern.size(), pattern) == 0;
            ASSERT_EQ(stream_->skipSeek(pattern.data(), pattern.size()), matches);
            if (matches)
                m.readPosition += pattern.size();
            break;
        }
        case 10: {
            size_t p = m.data.find_first_of("\r\n", m.readPosition);
            const bool found = p != std::string::npos;
            if (found)
                p = m.data.find_first_not_of("\r\n", p);
            ASSERT_EQ(stream_->seekEOL(), found);
            m.readPosition = p == std::string::npos ? length : p;
            break;
        }
        case 11: {
            const char* p = nullptr;
            const size_t n = stream_->getBuffer(p);
            if (m.readPosition == length) {
                ASSERT_EQ(n, 0u);
            } else {
                ASSERT_GE(n, 1u);
                ASSERT_LE(n, std::min(blockSize_, length - m.readPosition));
                ASSERT_EQ(std::string(p, n), m.data.substr(m.readPosition, n));
                m.readPosition += n;
            }
            break;
        }
        case 12:
            trim(pick(0, length + 3));
            break;
        case 13: {
            const std::string b = bytes(pick(0, 2 * blockSize_ + 3));
            std::istringstream in(b);
            const size_t n = pick(0, b.size() + 2);
            const size_t expected = std::min(n, b.size());
            ASSERT_EQ(stream_->copyStream(in, n), expected);
            if (n > b.size()) { // the input ran out and is no longer good
                ASSERT_EQ(stream_->copyStream(in, 1), 0u);
            }
            m.write(b.substr(0, expected));
            break;
        }
        case 14: {
            ASSERT_EQ(stream_->length(), length);
            ASSERT_EQ(ZtStreamTest::contentOf(*stream_), m.data);
            if (blockSize_ % 4 == 0) {
                ASSERT_EQ(stream_->calcOTFTableChecksum(), tableChecksum(m.data));
            }
            ASSERT_EQ(stream_->getMD5(), m.data.empty()
                                             ? std::string()
                                             : ZtStreamTest::md5Of(m.data.substr(m.readPosition)));
            break;
        }
        case 15: {
            const std::string b = bytes(pick(0, 2 * blockSize_));
            stream_->setSource(new std::istringstream(b), true);
            m.data += b;
            break;
        }
        case 16:
            if (chance(8)) {
                stream_->remove();
                m = Model();
            }
            break;
        }
    }

    size_t blockSize_;
    std::mt19937 random_;
    std::unique_ptr<ZtMemStream> stream_;
    Model model_;
};

} // namespace

TEST(MemStreamRandom, AgreesWithAStringModel) {
    for (size_t blockSize : {1, 2, 3, 4, 7, 16, 8192}) {
        for (unsigned seed = 1; seed <= 4; ++seed) {
            SCOPED_TRACE("block size " + std::to_string(blockSize) + ", seed " +
                         std::to_string(seed));
            RandomRun(blockSize, seed).run(1500);
            if (HasFailure())
                return;
        }
    }
}
