// AES against the published vectors (data/aes_vectors.tsv) on both paths, in separate and in
// the same buffer, with the chaining of CBC and CFB-128 starting afresh from the initialisation
// vector on each call.
#include "crypto_test_util.h"
#include "ztcommon/crypto.h"

using namespace crypto_test;
using namespace ZtCommonNS;

namespace {
class AesVectors : public BothPaths {};
} // namespace

TEST_P(AesVectors, PublishedVectorsBothWaysAndInPlace) {
    const auto rows = readTable("aes_vectors.tsv");
    ASSERT_EQ(rows.size(), 12u);
    for (const auto& row : rows) {
        SCOPED_TRACE(row[0]);
        const AES_Mode mode = row[1] == "ECB"   ? AES_MODE_ECB
                              : row[1] == "CBC" ? AES_MODE_CBC
                                                : AES_MODE_CFB128;
        const Bytes key = fromHex(row[2]), iv = fromHex(row[3]), plain = fromHex(row[4]);
        const std::string& cipherHex = row[5];
        const int n = static_cast<int>(plain.size()), keyLength = static_cast<int>(key.size());
        const unsigned char* ivp = iv.empty() ? nullptr : iv.data();
        AES_Encryption enc(mode, key.data(), keyLength, ivp);
        AES_Decryption dec(mode, key.data(), keyLength, ivp);
        ASSERT_EQ(enc.getInitStatus(), AES_OK);
        ASSERT_EQ(dec.getInitStatus(), AES_OK);

        ExactBuffer out(plain.size()), back(plain.size()), inPlace(plain);
        // The second call starts again from the initialisation vector.
        for (int call = 0; call < 2; ++call) {
            EXPECT_EQ(enc.blockEncrypt(plain.data(), n, out.data()), n);
            EXPECT_EQ(toHex(out.bytes()), cipherHex);
        }
        EXPECT_EQ(dec.blockDecrypt(fromHex(cipherHex).data(), n, back.data()), n);
        EXPECT_EQ(back.bytes(), plain);
        EXPECT_EQ(enc.blockEncrypt(inPlace.data(), n, inPlace.data()), n);
        EXPECT_EQ(toHex(inPlace.bytes()), cipherHex);
        EXPECT_EQ(dec.blockDecrypt(inPlace.data(), n, inPlace.data()), n);
        EXPECT_EQ(inPlace.bytes(), plain);

        // Calls are independent messages: the second block alone comes out as in the vector
        // only in ECB, where it does not depend on the first.
        if (n >= 32) {
            unsigned char second[16];
            EXPECT_EQ(enc.blockEncrypt(plain.data() + 16, 16, second), 16);
            EXPECT_EQ(toHex(second, 16) == cipherHex.substr(32, 32), mode == AES_MODE_ECB);
        }
    }
}

ZT_BOTH_PATHS(AesVectors);
