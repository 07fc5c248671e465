// The status numbers of the AES classes: failed initialisation (-5 from every operation after
// it), the wrong direction, CFB-128 refused by the padded operations, lengths and null buffers
// (-1), and copies.
#include "crypto_test_util.h"
#include "ztcommon/crypto.h"

using namespace crypto_test;
using namespace ZtCommonNS;

namespace {

const unsigned char kKey[32] = {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15, 16,
                                17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32};

// Every operation of a cipher that did not initialise answers -5 and writes nothing.
void expectAllNotInitialised(const AES_Base& aes, int status) {
    EXPECT_EQ(aes.getInitStatus(), status);
    unsigned char in[64] = {};
    ExactBuffer out(64, 0x5A);
    EXPECT_EQ(aes.blockEncrypt(in, 64, out.data()), AES_NOT_INITIALISED);
    EXPECT_EQ(aes.blockDecrypt(in, 64, out.data()), AES_NOT_INITIALISED);
    EXPECT_EQ(aes.padEncrypt(in, 10, out.data()), AES_NOT_INITIALISED);
    EXPECT_EQ(aes.padDecrypt(in, 32, out.data()), AES_NOT_INITIALISED);
    EXPECT_EQ(aes.padEncrypt(in, -1, out.data()), AES_NOT_INITIALISED);
    EXPECT_EQ(out.bytes(), Bytes(64, 0x5A));
}

// Reaches the protected constructor to try a direction other than 0 and 1.
class AnyDirection : public AES_Base {
public:
    AnyDirection(AES_Mode mode, int direction, const unsigned char* key, int length)
        : AES_Base(mode, direction, key, length, nullptr) {}
};

} // namespace

TEST(AesStatus, FailedInitialisationGivesMinusFiveEverywhere) {
    for (int length : {0, 1, 15, 17, 20, 23, 25, 31, 33, 64, -16}) {
        SCOPED_TRACE(length);
        expectAllNotInitialised(AES_Encryption(AES_MODE_CBC, kKey, length), AES_BAD_KEY_LENGTH);
        expectAllNotInitialised(AES_Decryption(AES_MODE_CBC, kKey, length), AES_BAD_KEY_LENGTH);
    }
    expectAllNotInitialised(AES_Encryption(AES_MODE_ECB, nullptr, 16), AES_MISSING_KEY);
    for (int mode : {3, -1, 100})
        expectAllNotInitialised(AES_Decryption(static_cast<AES_Mode>(mode), kKey, 16),
                                AES_UNSUPPORTED_MODE);
    for (int direction : {2, -1})
        expectAllNotInitialised(AnyDirection(AES_MODE_ECB, direction, kKey, 16), AES_BAD_DIRECTION);
    // The good ones, for contrast: encryption is direction 0, decryption 1.
    for (int length : {16, 24, 32}) {
        const AES_Encryption enc(AES_MODE_CFB128, kKey, length);
        const AnyDirection dec(AES_MODE_ECB, 1, kKey, length);
        EXPECT_EQ(enc.getInitStatus(), AES_OK);
        EXPECT_EQ(dec.getInitStatus(), AES_OK);
        EXPECT_EQ(enc.getDirection(), 0);
        EXPECT_EQ(dec.getDirection(), 1);
        EXPECT_EQ(enc.getMode(), AES_MODE_CFB128);
    }
}

TEST(AesStatus, WrongDirectionModeLengthsAndNullBuffers) {
    unsigned char in[48] = {};
    for (AES_Mode mode : {AES_MODE_ECB, AES_MODE_CBC, AES_MODE_CFB128}) {
        SCOPED_TRACE(mode);
        AES_Encryption enc(mode, kKey, 32);
        AES_Decryption dec(mode, kKey, 32);
        ExactBuffer out(32, 0x77);
        // The operations of the other direction.
        EXPECT_EQ(enc.blockDecrypt(in, 32, out.data()), AES_NOT_INITIALISED);
        EXPECT_EQ(enc.padDecrypt(in, 32, out.data()), AES_NOT_INITIALISED);
        EXPECT_EQ(dec.blockEncrypt(in, 32, out.data()), AES_NOT_INITIALISED);
        EXPECT_EQ(dec.padEncrypt(in, 10, out.data()), AES_NOT_INITIALISED);
        // Below one block there is nothing to do; a trailing part block is ignored.
        for (int length : {-16, -1, 0, 1, 15}) {
            EXPECT_EQ(enc.blockEncrypt(in, length, out.data()), 0);
            EXPECT_EQ(dec.blockDecrypt(in, length, out.data()), 0);
        }
        EXPECT_EQ(out.bytes(), Bytes(32, 0x77));
        EXPECT_EQ(enc.blockEncrypt(in, 40, out.data()), 32);
        EXPECT_EQ(dec.blockDecrypt(in, 31, out.data()), 16);
        EXPECT_EQ(enc.blockEncrypt(nullptr, 16, out.data()), AES_BAD_DATA);
        EXPECT_EQ(enc.blockEncrypt(in, 16, nullptr), AES_BAD_DATA);
        EXPECT_EQ(dec.blockDecrypt(nullptr, 16, out.data()), AES_BAD_DATA);
        EXPECT_EQ(dec.blockDecrypt(in, 16, nullptr), AES_BAD_DATA);
    }
    // The padded operations refuse CFB-128, after answering 0 to a negative length.
    AES_Encryption cfbEnc(AES_MODE_CFB128, kKey, 16);
    AES_Decryption cfbDec(AES_MODE_CFB128, kKey, 16);
    unsigned char out[48];
    EXPECT_EQ(cfbEnc.padEncrypt(in, 20, out), AES_UNSUPPORTED_MODE);
    EXPECT_EQ(cfbDec.padDecrypt(in, 32, out), AES_UNSUPPORTED_MODE);
    EXPECT_EQ(cfbEnc.padEncrypt(in, -5, out), 0);
    EXPECT_EQ(cfbDec.padDecrypt(in, -5, out), 0);

    AES_Encryption enc(AES_MODE_CBC, kKey, 16);
    AES_Decryption dec(AES_MODE_CBC, kKey, 16);
    EXPECT_EQ(enc.padEncrypt(in, 5, nullptr), AES_BAD_DATA);
    EXPECT_EQ(enc.padEncrypt(nullptr, 5, out), AES_BAD_DATA);
    EXPECT_EQ(enc.padEncrypt(nullptr, 0, out), 16); // nothing to read: one padding block
    EXPECT_EQ(dec.padDecrypt(nullptr, 16, out), AES_BAD_DATA);
    EXPECT_EQ(dec.padDecrypt(out, 16, nullptr), AES_BAD_DATA);
}

// The copies below are what is tested, hence the NOLINT marks.
TEST(AesStatus, CopiesCarryKeyModeAndVector) {
    const unsigned char iv[16] = {9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9};
    unsigned char plain[32], expected[32], got[32];
    for (int i = 0; i < 32; ++i)
        plain[i] = static_cast<unsigned char>(i * 7);
    AES_Encryption original(AES_MODE_CBC, kKey, 24, iv);
    ASSERT_EQ(original.blockEncrypt(plain, 32, expected), 32);

    AES_Encryption copy(original); // NOLINT(performance-unnecessary-copy-initialization)
    ASSERT_EQ(copy.blockEncrypt(plain, 32, got), 32);
    EXPECT_EQ(toHex(got, 32), toHex(expected, 32));
    AES_Encryption assigned(AES_MODE_ECB, kKey + 1, 16);
    assigned = original;
    ASSERT_EQ(assigned.blockEncrypt(plain, 32, got), 32);
    EXPECT_EQ(toHex(got, 32), toHex(expected, 32));

    // A copy of a failed cipher has failed too.
    AES_Encryption failed(AES_MODE_CBC, kKey, 20);
    AES_Encryption failedCopy(failed); // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(failedCopy.getInitStatus(), AES_BAD_KEY_LENGTH);
    assigned = failed;
    EXPECT_EQ(assigned.blockEncrypt(plain, 32, got), AES_NOT_INITIALISED);

    AES_Decryption dec(AES_MODE_CBC, kKey, 24, iv);
    AES_Decryption decCopy = dec; // NOLINT(performance-unnecessary-copy-initialization)
    ASSERT_EQ(decCopy.blockDecrypt(expected, 32, got), 32);
    EXPECT_EQ(toHex(got, 32), toHex(plain, 32));
}
