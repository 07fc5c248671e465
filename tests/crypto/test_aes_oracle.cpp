// AES against OpenSSL on random keys, vectors and lengths: the block operations in all three
// modes (OpenSSL without padding) and the padded ones in ECB and CBC (OpenSSL's default PKCS#7
// padding is the same rule), both directions, both paths.
#include "crypto_test_util.h"
#include "ztcommon/crypto.h"

#ifdef ZT_HAVE_OPENSSL
#include <openssl/evp.h>
#endif

using namespace crypto_test;
using namespace ZtCommonNS;

namespace {

class AesOracle : public BothPaths {};

#ifdef ZT_HAVE_OPENSSL
Bytes openSsl(bool encrypt, const std::string& cipher, const Bytes& key, const Bytes& iv,
              const Bytes& in, bool pad) {
    EVP_CIPHER_CTX* ctx = EVP_CIPHER_CTX_new();
    Bytes out(in.size() + 32);
    int n1 = 0, n2 = 0;
    EXPECT_EQ(EVP_CipherInit_ex(ctx, EVP_get_cipherbyname(cipher.c_str()), nullptr, key.data(),
                                iv.data(), encrypt ? 1 : 0),
              1);
    EVP_CIPHER_CTX_set_padding(ctx, pad ? 1 : 0);
    EXPECT_EQ(EVP_CipherUpdate(ctx, out.data(), &n1, in.data(), static_cast<int>(in.size())), 1);
    EXPECT_EQ(EVP_CipherFinal_ex(ctx, out.data() + n1, &n2), 1);
    EVP_CIPHER_CTX_free(ctx);
    out.resize(static_cast<size_t>(n1) + static_cast<size_t>(n2));
    return out;
}
#endif

} // namespace

TEST_P(AesOracle, BlockAndPaddedOperationsMatchOpenSsl) {
#ifndef ZT_HAVE_OPENSSL
    GTEST_SKIP() << "OpenSSL is not installed: no oracle";
#else
    std::mt19937 rng(1234);
    for (int round = 0; round < 180; ++round) {
        const size_t keyLength = 16 + 8 * (static_cast<size_t>(round) % 3);
        const auto mode = static_cast<AES_Mode>(round / 3 % 3);
        const std::string cipher = "AES-" + std::to_string(keyLength * 8) +
                                   (mode == AES_MODE_ECB   ? "-ECB"
                                    : mode == AES_MODE_CBC ? "-CBC"
                                                           : "-CFB");
        const Bytes key = randomBytes(rng, keyLength), iv = randomBytes(rng, 16);
        const size_t length = std::uniform_int_distribution<size_t>(0, 1120)(rng);
        const Bytes message = randomBytes(rng, length);
        SCOPED_TRACE(cipher + ", length " + std::to_string(length));
        AES_Encryption enc(mode, key.data(), static_cast<int>(keyLength), iv.data());
        AES_Decryption dec(mode, key.data(), static_cast<int>(keyLength), iv.data());

        // The block operations take the whole blocks, both ways.
        const Bytes blocks(message.begin(), message.begin() + static_cast<long>(length / 16 * 16));
        const int n = static_cast<int>(blocks.size());
        ExactBuffer sealed(blocks.size()), opened(blocks.size());
        ASSERT_EQ(enc.blockEncrypt(blocks.data(), n, sealed.data()), n);
        EXPECT_EQ(sealed.bytes(), openSsl(true, cipher, key, iv, blocks, false));
        ASSERT_EQ(dec.blockDecrypt(blocks.data(), n, opened.data()), n);
        EXPECT_EQ(opened.bytes(), openSsl(false, cipher, key, iv, blocks, false));
        if (mode == AES_MODE_CFB128)
            continue;

        ExactBuffer padded(16 * (length / 16 + 1)), back(length);
        ASSERT_EQ(enc.padEncrypt(message.data(), static_cast<int>(length), padded.data()),
                  static_cast<int>(padded.size()));
        const Bytes reference = openSsl(true, cipher, key, iv, message, true);
        EXPECT_EQ(padded.bytes(), reference);
        ASSERT_EQ(dec.padDecrypt(reference.data(), static_cast<int>(reference.size()), back.data()),
                  static_cast<int>(length));
        EXPECT_EQ(back.bytes(), message);
    }
#endif
}

ZT_BOTH_PATHS(AesOracle);
