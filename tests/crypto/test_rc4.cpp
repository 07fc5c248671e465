// RC4 against RFC 6229 (key streams at offsets up to 4096 for 40-, 128- and 256-bit keys),
// continuity across calls of every size, the key schedule's corner cases, and OpenSSL's legacy
// provider on random keys where it is available.
#include <cstring>

#include "crypto_test_util.h"
#include "ztcommon/crypto.h"

#ifdef ZT_HAVE_OPENSSL
#include <openssl/evp.h>
#include <openssl/provider.h>
#endif

using namespace crypto_test;
using namespace ZtCommonNS;

namespace {

constexpr int kOffsets[] = {0,    16,   240,  256,  496,  512,  752,  768,  1008,
                            1024, 1520, 1536, 2032, 2048, 3056, 3072, 4080, 4096};

struct Rfc6229 {
    const char* key;
    const char* streams[18]; // 16 bytes at each offset
};

const Rfc6229 kVectors[] = {
    {"0102030405",
     {"b2396305f03dc027ccc3524a0a1118a8", "6982944f18fc82d589c403a47a0d0919",
      "28cb1132c96ce286421dcaadb8b69eae", "1cfcf62b03eddb641d77dfcf7f8d8c93",
      "42b7d0cdd918a8a33dd51781c81f4041", "6459844432a7da923cfb3eb4980661f6",
      "ec10327bde2beefd18f9277680457e22", "eb62638d4f0ba1fe9fca20e05bf8ff2b",
      "45129048e6a0ed0b56b490338f078da5", "30abbcc7c20b01609f23ee2d5f6bb7df",
      "3294f744d8f9790507e70f62e5bbceea", "d8729db41882259bee4f825325f5a130",
      "1eb14a0c13b3bf47fa2a0ba93ad45b8b", "cc582f8ba9f265e2b1be9112e975d2d7",
      "f2e30f9bd102ecbf75aaade9bc35c43c", "ec0e11c479dc329dc8da7968fe965681",
      "068326a2118416d21f9d04b2cd1ca050", "ff25b58995996707e51fbdf08b34d875"}},
    {"0102030405060708090a0b0c0d0e0f10",
     {"9ac7cc9a609d1ef7b2932899cde41b97", "5248c4959014126a6e8a84f11d1a9e1c",
      "065902e4b620f6cc36c8589f66432f2b", "d39d566bc6bce3010768151549f3873f",
      "b6d1e6c4a5e4771cad79538df295fb11", "c68c1d5c559a974123df1dbc52a43b89",
      "c5ecf88de897fd57fed301701b82a259", "eccbe13de1fcc91c11a0b26c0bc8fa4d",
      "e7a72574f8782ae26aabcf9ebcd66065", "bdf0324e6083dcc6d3cedd3ca8c53c16",
      "b40110c4190b5622a96116b0017ed297", "ffa0b514647ec04f6306b892ae661181",
      "d03d1bc03cd33d70dff9fa5d71963ebd", "8a44126411eaa78bd51e8d87a8879bf5",
      "fabeb76028ade2d0e48722e46c4615a3", "c05d88abd50357f935a63c59ee537623",
      "ff38265c1642c1abe8d3c2fe5e572bf8", "a36a4c301ae8ac13610ccbc12256cacc"}},
    {"0102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f20",
     {"eaa6bd25880bf93d3f5d1e4ca2611d91", "cfa45c9f7e714b54bdfa80027cb14380",
      "114ae344ded71b35f2e60febad727fd8", "02e1e7056b0f623900496422943e97b6",
      "91cb93c787964e10d9527d999c6f936b", "49b18b42f8e8367cbeb5ef104ba1c7cd",
      "87084b3ba700bade955610672745b374", "e7a7b9e9ec540d5ff43bdb12792d1b35",
      "c799b596738f6b018c76c74b1759bd90", "7fec5bfd9f9b89ce6548309092d7e958",
      "40f250b26d1f096a4afd4c340a588815", "3e34135c79db010200767651cf263073",
      "f656abccf88dd827027b2ce917d464ec", "18b62503bfbc077fbabb98f20d98ab34",
      "8aed95ee5b0dcbfbef4eb21d3a3f52f9", "625a1ab00ee39a5327346bddb01a9c18",
      "a13a7c79c7e119b5ab0296ab28c300b9", "f3e4c0a2e02d1d01f7f0a74618af2b48"}},
};

// The key stream: RC4 of zeros.
Bytes keyStream(const Bytes& key, size_t n) {
    RC4_KEY rc4(static_cast<int>(key.size()), key.data());
    Bytes zeros(n, 0), out(n);
    rc4.RC4(static_cast<int>(n), zeros.data(), out.data());
    return out;
}

} // namespace

TEST(Rc4, Rfc6229KeyStreams) {
    for (const Rfc6229& v : kVectors) {
        SCOPED_TRACE(v.key);
        const Bytes stream = keyStream(fromHex(v.key), 4112);
        for (size_t i = 0; i < 18; ++i)
            EXPECT_EQ(toHex(stream.data() + kOffsets[i], 16), toHex(fromHex(v.streams[i])))
                << "offset " << kOffsets[i];
    }
}

TEST(Rc4, CallsOfAnySizeContinueTheStream) {
    const Bytes key = fromHex(kVectors[1].key);
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
    EXPECT_EQ(toHex(out.data(), 16), kVectors[0].streams[0]);
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
