// RC4 against RFC 6229 (data/rc4_rfc6229.tsv: key streams at offsets up to 4096 for 40-, 128-
// and 256-bit keys), continuity across calls of every size, the key schedule's corner cases,
// and OpenSSL's legacy provider on random keys where it is available.
#include "crypto_test_util.h"
#include "ztcommon/crypto.h"

#ifdef ZT_HAVE_OPENSSL
#include <openssl/evp.h>
#include <openssl/provider.h>
#endif

using namespace crypto_test;
using namespace ZtCommonNS;

namespace {

// The key stream: RC4 of zeros.
Bytes keyStream(const Bytes& key, size_t n) {
    RC4_KEY rc4(static_cast<int>(key.size()), key.data());
    Bytes zeros(n, 0), out(n);
    rc4.RC4(static_cast<int>(n), zeros.data(), out.data());
    return out;
}

} // namespace

TEST(Rc4, Rfc6229KeyStreams) {
    const auto rows = readTable("rc4_rfc6229.tsv");
    ASSERT_EQ(rows.size(), 54u);
    for (const auto& row : rows) {
        const Bytes stream = keyStream(fromHex(row[0]), 4112);
        EXPECT_EQ(toHex(stream.data() + std::stoi(row[1]), 16), row[2])
            << "key " << row[0] << ", offset " << row[1];
    }
}

TEST(Rc4, CallsOfAnySizeContinueTheStream) {
    const Bytes key = fromHex("0102030405060708090a0b0c0d0e0f10");
    const Bytes whole = keyStream(key, 4112);
    // Pieces of 1 to 23 bytes, in place, so that every alignment of the eight-byte loop and of
    // its tail meets every other.
    for (int start = 1; start <= 23; ++start) {
        RC4_KEY rc4(static_cast<int>(key.size()), key.data());
        Bytes buffer(4112, 0);
        size_t done = 0;
        for (int piece = start; done < buffer.size(); piece = piece % 23 + 1) {
            const size_t n = std::min(static_cast<size_t>(piece), buffer.size() - done);
            rc4.RC4(static_cast<int>(n), buffer.data() + done, buffer.data() + done);
            done += n;
        }
        ASSERT_EQ(buffer, whole) << "first piece " << start;
    }
}

TEST(Rc4, KeyScheduleCorners) {
    // The schedule cycles through the key: a key repeated to 256 bytes is the same key.
    const Bytes shortKey = fromHex("0102030405");
    Bytes longKey;
    while (longKey.size() < 256)
        longKey.push_back(shortKey[longKey.size() % 5]);
    EXPECT_EQ(keyStream(longKey, 64), keyStream(shortKey, 64));
    // Bytes past the 256th cannot matter.
    Bytes longer = longKey;
    longer.resize(300, 0xFF);
    EXPECT_EQ(keyStream(longer, 64), keyStream(shortKey, 64));
    // A null or empty key is the one-byte key 0.
    const Bytes zeroKey(1, 0);
    RC4_KEY none(0, nullptr);
    Bytes zeros(32, 0), out(32);
    none.RC4(32, zeros.data(), out.data());
    EXPECT_EQ(out, keyStream(zeroKey, 32));
    // Nothing happens for lengths below 1 or null buffers, and the stream does not move.
    RC4_KEY rc4(5, shortKey.data());
    Bytes untouched(8, 0x33);
    rc4.RC4(0, zeros.data(), untouched.data());
    rc4.RC4(-4, zeros.data(), untouched.data());
    rc4.RC4(8, nullptr, untouched.data());
    rc4.RC4(8, zeros.data(), nullptr);
    EXPECT_EQ(untouched, Bytes(8, 0x33));
    rc4.RC4(16, zeros.data(), out.data());
    out.resize(16);
    EXPECT_EQ(out, keyStream(shortKey, 16)); // the stream has not moved
}

TEST(Rc4, MatchesOpenSslLegacyProvider) {
#ifndef ZT_HAVE_OPENSSL
    GTEST_SKIP() << "OpenSSL is not installed: no oracle";
#else
    // Loading a provider by hand stops OpenSSL from loading the default one by itself, and the
    // other oracle tests of this program need it: both are loaded, once, and stay loaded.
    static OSSL_PROVIDER* const standard = OSSL_PROVIDER_load(nullptr, "default");
    static OSSL_PROVIDER* const legacy = OSSL_PROVIDER_load(nullptr, "legacy");
    EVP_CIPHER* cipher = legacy && standard ? EVP_CIPHER_fetch(nullptr, "RC4", nullptr) : nullptr;
    if (cipher == nullptr) {
        GTEST_SKIP() << "OpenSSL's legacy provider (RC4) is not available";
    }
    std::mt19937 rng(77);
    for (int round = 0; round < 50; ++round) {
        const size_t keyLength = std::uniform_int_distribution<size_t>(1, 256)(rng);
        const size_t length = std::uniform_int_distribution<size_t>(0, 3000)(rng);
        const Bytes key = randomBytes(rng, keyLength), data = randomBytes(rng, length);

        EVP_CIPHER_CTX* ctx = EVP_CIPHER_CTX_new();
        ASSERT_EQ(EVP_CipherInit_ex(ctx, cipher, nullptr, nullptr, nullptr, 1), 1);
        ASSERT_EQ(EVP_CIPHER_CTX_set_key_length(ctx, static_cast<int>(keyLength)), 1);
        ASSERT_EQ(EVP_CipherInit_ex(ctx, nullptr, nullptr, key.data(), nullptr, 1), 1);
        Bytes expected(length + 1);
        int n = 0;
        ASSERT_EQ(EVP_CipherUpdate(ctx, expected.data(), &n, data.data(), static_cast<int>(length)),
                  1);
        EVP_CIPHER_CTX_free(ctx);
        expected.resize(static_cast<size_t>(n));

        RC4_KEY rc4(static_cast<int>(keyLength), key.data());
        ExactBuffer out(length);
        rc4.RC4(static_cast<int>(length), data.data(), out.data());
        ASSERT_EQ(out.bytes(), expected) << "key length " << keyLength << ", length " << length;
    }
    EVP_CIPHER_free(cipher);
#endif
}
