// AES against OpenSSL on random keys, vectors and lengths: the block operations in all three
// modes (OpenSSL without padding) and the padded ones (OpenSSL's default PKCS#7 padding is the
// same rule), both directions, both paths.
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
const EVP_CIPHER* openSslCipher(AES_Mode mode, size_t keyLength) {
    switch (mode) {
    case AES_MODE_ECB:
        return keyLength == 16   ? EVP_aes_128_ecb()
               : keyLength == 24 ? EVP_aes_192_ecb()
                                 : EVP_aes_256_ecb();
    case AES_MODE_CBC:
        return keyLength == 16   ? EVP_aes_128_cbc()
               : keyLength == 24 ? EVP_aes_192_cbc()
                                 : EVP_aes_256_cbc();
    default:
        return keyLength == 16   ? EVP_aes_128_cfb128()
               : keyLength == 24 ? EVP_aes_192_cfb128()
                                 : EVP_aes_256_cfb128();
    }
}

Bytes openSsl(bool encrypt, AES_Mode mode, const Bytes& key, const Bytes& iv, const Bytes& in,
              bool pad) {
    EVP_CIPHER_CTX* ctx = EVP_CIPHER_CTX_new();
    Bytes out(in.size() + 32);
    int n1 = 0, n2 = 0;
    EXPECT_EQ(EVP_CipherInit_ex(ctx, openSslCipher(mode, key.size()), nullptr, key.data(),
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

TEST_P(AesOracle, BlockOperationsMatchOpenSsl) {
#ifndef ZT_HAVE_OPENSSL
    GTEST_SKIP() << "OpenSSL is not installed: no oracle";
#else
    std::mt19937 rng(1234);
    for (int round = 0; round < 60; ++round) {
        const size_t keyLength = 16 + 8 * (static_cast<size_t>(round) % 3);
        const auto mode = static_cast<AES_Mode>(round / 3 % 3);
        const Bytes key = randomBytes(rng, keyLength), iv = randomBytes(rng, 16);
        const size_t blocks = std::uniform_int_distribution<size_t>(1, 70)(rng);
        const Bytes data = randomBytes(rng, 16 * blocks);
        const int n = static_cast<int>(data.size());
        SCOPED_TRACE(testing::Message()
                     << "mode " << mode << " key " << keyLength << " blocks " << blocks);

        AES_Encryption enc(mode, key.data(), static_cast<int>(keyLength), iv.data());
        ExactBuffer sealed(data.size());
        ASSERT_EQ(enc.blockEncrypt(data.data(), n, sealed.data()), n);
        EXPECT_EQ(sealed.bytes(), openSsl(true, mode, key, iv, data, false));

        AES_Decryption dec(mode, key.data(), static_cast<int>(keyLength), iv.data());
        ExactBuffer opened(data.size());
        ASSERT_EQ(dec.blockDecrypt(data.data(), n, opened.data()), n);
        EXPECT_EQ(opened.bytes(), openSsl(false, mode, key, iv, data, false));
    }
#endif
}

TEST_P(AesOracle, PaddedOperationsMatchOpenSsl) {
#ifndef ZT_HAVE_OPENSSL
    GTEST_SKIP() << "OpenSSL is not installed: no oracle";
#else
    std::mt19937 rng(4321);
    for (int round = 0; round < 120; ++round) {
        const size_t keyLength = 16 + 8 * (static_cast<size_t>(round) % 3);
        const auto mode = static_cast<AES_Mode>(round / 3 % 2);
        const Bytes key = randomBytes(rng, keyLength), iv = randomBytes(rng, 16);
        const size_t length = std::uniform_int_distribution<size_t>(0, 600)(rng);
        const Bytes message = randomBytes(rng, length);
        SCOPED_TRACE(testing::Message()
                     << "mode " << mode << " key " << keyLength << " length " << length);

        AES_Encryption enc(mode, key.data(), static_cast<int>(keyLength), iv.data());
        ExactBuffer sealed(16 * (length / 16 + 1));
        ASSERT_EQ(enc.padEncrypt(message.data(), static_cast<int>(length), sealed.data()),
                  static_cast<int>(sealed.size()));
        const Bytes reference = openSsl(true, mode, key, iv, message, true);
        EXPECT_EQ(sealed.bytes(), reference);

        AES_Decryption dec(mode, key.data(), static_cast<int>(keyLength), iv.data());
        ExactBuffer opened(length);
        ASSERT_EQ(
            dec.padDecrypt(reference.data(), static_cast<int>(reference.size()), opened.data()),
            static_cast<int>(length));
        EXPECT_EQ(opened.bytes(), message);
    }
#endif
}

ZT_BOTH_PATHS(AesOracle);
