// Digests against their published examples (data/digest_vectors.tsv): the RFC 1321 test suite
// for MD5 and the FIPS 180 examples (one block, two blocks of 448 and 896 bits, a million 'a')
// for the SHA family, on both the hardware and the portable path.
#include "digest_adapter.h"

using namespace crypto_test;

namespace {
class DigestVectors : public BothPaths {};
} // namespace

TEST_P(DigestVectors, PublishedExamplesWholeAndInPieces) {
    const auto rows = readTable("digest_vectors.tsv");
    ASSERT_EQ(rows.size(), 24u);
    for (const auto& row : rows) {
        const Digest& digest = digestNamed(row[0]);
        std::string message;
        for (int i = std::stoi(row[1]); i > 0; --i)
            message += row[2];
        SCOPED_TRACE(std::string(digest.name) + " of \"" + message.substr(0, 80) + '"');
        EXPECT_EQ(toHex(digest.of(message)), row[3]);
        // Short messages one byte at a time go through the buffering for every byte; pieces
        // of 1000 bytes never line up with the 64- or 128-byte blocks.
        const size_t piece = message.size() > 1000 ? 1000 : 1;
        EXPECT_EQ(toHex(digest.inPieces(reinterpret_cast<const unsigned char*>(message.data()),
                                        message.size(), [&] { return piece; })),
                  row[3]);
    }
}

ZT_BOTH_PATHS(DigestVectors);
