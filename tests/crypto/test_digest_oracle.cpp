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

#ifdef ZT_HAVE_OPENSSL
Bytes openSslDigest(Algo a, const Bytes& message) {
    const EVP_MD* md = a == Algo::Md5      ? EVP_md5()
                       : a == Algo::Sha1   ? EVP_sha1()
                       : a == Algo::Sha256 ? EVP_sha256()
                       : a == Algo::Sha384 ? EVP_sha384()
                                           : EVP_sha512();
    Bytes out(EVP_MAX_MD_SIZE);
    unsigned int n = 0;
    EXPECT_EQ(EVP_Digest(message.data(), message.size(), out.data(), &n, md, nullptr), 1);
    out.resize(n);
    return out;
}
#endif

} // namespace

TEST_P(DigestOracle, EveryLengthInRandomPiecesMatchesOpenSsl) {
#ifndef ZT_HAVE_OPENSSL
    GTEST_SKIP() << "OpenSSL is not installed: no oracle";
#else
    std::mt19937 rng(20240611u + (GetParam() ? 1u : 0u));
    for (Algo a : {Algo::Md5, Algo::Sha1, Algo::Sha256, Algo::Sha384, Algo::Sha512}) {
        for (size_t length = 0; length <= 1100; ++length) {
            const Bytes message = randomBytes(rng, length);
            // Pieces of 1 to 300 bytes: below, at and above both block sizes.
            std::uniform_int_distribution<size_t> piece(1, 300);
            const Bytes ours =
                digestInPieces(a, message.data(), message.size(), [&](int) { return piece(rng); });
            ASSERT_EQ(toHex(ours), toHex(openSslDigest(a, message)))
                << algoName(a) << ", length " << length;
        }
    }
#endif
}

ZT_BOTH_PATHS(DigestOracle);
