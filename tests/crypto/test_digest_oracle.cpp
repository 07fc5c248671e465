// Digests against OpenSSL: random messages of every length from 0 to 1100 bytes, fed in random
// pieces, on both paths. Every padding case (the length field in the same block or spilling
// into another, at every offset) and every way of splitting the buffer is covered.
#include "digest_adapter.h"

#ifdef ZT_HAVE_OPENSSL
#include <openssl/evp.h>
#endif

using namespace crypto_test;

namespace {
class DigestOracle : public BothPaths {};
} // namespace

TEST_P(DigestOracle, EveryLengthInRandomPiecesMatchesOpenSsl) {
#ifndef ZT_HAVE_OPENSSL
    GTEST_SKIP() << "OpenSSL is not installed: no oracle";
#else
    std::mt19937 rng(20240611u + (GetParam() ? 1u : 0u));
    // Pieces of 1 to 300 bytes: below, at and above both block sizes.
    std::uniform_int_distribution<size_t> piece(1, 300);
    for (const Digest& digest : kDigests) {
        const EVP_MD* md = EVP_get_digestbyname(digest.name);
        ASSERT_NE(md, nullptr) << digest.name;
        for (size_t length = 0; length <= 1100; ++length) {
            const Bytes message = randomBytes(rng, length);
            Bytes expected(EVP_MAX_MD_SIZE);
            unsigned int n = 0;
            ASSERT_EQ(EVP_Digest(message.data(), length, expected.data(), &n, md, nullptr), 1);
            expected.resize(n);
            ASSERT_EQ(toHex(digest.inPieces(message.data(), length, [&] { return piece(rng); })),
                      toHex(expected))
                << digest.name << ", length " << length;
        }
    }
#endif
}

ZT_BOTH_PATHS(DigestOracle);
