// The status numbers of the AES classes: failed initialisation, the wrong direction, unsupported
// modes for the padded operations, lengths and null buffers, and copies.
#include "crypto_test_util.h"
#include "ztcommon/crypto.h"

using namespace crypto_test;
using namespace ZtCommonNS;

namespace {

const unsigned char kKey[32] = {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15, 16,
                                17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32};

// Every operation of a cipher that did not initialise answers -5 and writes nothing.
void expectAllNotInitialised(const AES_Base& aes) {
    unsigned char in[64] = {}, out[64];
    std::fill(std::begin(out), std::end(out), 0x5A);
    EXPECT_EQ(aes.blockEncrypt(in, 64, out), AES_NOT_INITIALISED);
    EXPECT_EQ(aes.blockDecrypt(in, 64, out), AES_NOT_INITIALISED);
    EXPECT_EQ(aes.padEncrypt(in, 10, out), AES_NOT_INITIALISED);
    EXPECT_EQ(aes.padDecrypt(in, 32, out), AES_NOT_INITIALISED);
    EXPECT_EQ(aes.padEncrypt(in, -1, out), AES_NOT_INITIALISED);
    for (unsigned char b : out)
        ASSERT_EQ(b, 0x5A);
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
        AES_Encryption enc(AES_MODE_CBC, kKey, length);
        AES_Decryption dec(AES_MODE_CBC, kKey, length);
        EXPECT_EQ(enc.getInitStatus(), AES_BAD_KEY_LENGTH);
        EXPECT_EQ(dec.getInitStatus(), AES_BAD_KEY_LENGTH);
        expectAllNotInitialised(enc);
        expectAllNotInitialised(dec);
    }
    AES_Encryption noKey(AES_MODE_ECB, nullptr, 16);
    EXPECT_EQ(noKey.getInitStatus(), AES_MISSING_KEY);
    expectAllNotInitialised(noKey);
    for (int mode : {3, -1, 100}) {
        AES_Decryption badMode(static_cast<AES_Mode>(mode), kKey, 16);
        EXPECT_EQ(badMode.getInitStatus(), AES_UNSUPPORTED_MODE);
        expectAllNotInitialised(badMode);
    }
    for (int direction : {2, -1}) {
        AnyDirection bad(AES_MODE_ECB, direction, kKey, 16);
        EXPECT_EQ(bad.getInitStatus(), AES_BAD_DIRECTION);
        expectAllNotInitialised(bad);
    }
    // The good ones, for contrast.
    for (int length : {16, 24, 32}) {
        EXPECT_EQ(AES_Encryption(AES_MODE_CFB128, kKey, length).getInitStatus(), AES_OK);
        EXPECT_EQ(AnyDirection(AES_MODE_ECB, 1, kKey, length).getInitStatus(), AES_OK);
    }
    AES_Decryption good(AES_MODE_CBC, kKey, 16);
    EXPECT_EQ(good.getMode(), AES_MODE_CBC);
    EXPECT_EQ(good.getDirection(), 1);
}

TEST(AesStatus, OperationsOfTheOtherDirectionGiveMinusFive) {
    unsigned char in[48] = {}, out[48] = {};
    for (AES_Mode mode : {AES_MODE_ECB, AES_MODE_CBC, AES_MODE_CFB128}) {
        AES_Encryption enc(mode, kKey, 16);
        AES_Decryption dec(mode, kKey, 16);
        EXPECT_EQ(enc.blockDecrypt(in, 32, out), AES_NOT_INITIALISED);
        EXPECT_EQ(enc.padDecrypt(in, 32, out), AES_NOT_INITIALISED);
        EXPECT_EQ(dec.blockEncrypt(in, 32, out), AES_NOT_INITIALISED);
        EXPECT_EQ(dec.padEncrypt(in, 20, out), AES_NOT_INITIALISED);
    }
}

TEST(AesStatus, PaddedOperationsRefuseCfb128) {
    unsigned char in[32] = {}, out[48] = {};
    AES_Encryption enc(AES_MODE_CFB128, kKey, 16);
    AES_Decryption dec(AES_MODE_CFB128, kKey, 16);
    EXPECT_EQ(enc.padEncrypt(in, 20, out), AES_UNSUPPORTED_MODE);
    EXPECT_EQ(dec.padDecrypt(in, 32, out), AES_UNSUPPORTED_MODE);
    // A negative length is answered before the mode is looked at.
    EXPECT_EQ(enc.padEncrypt(in, -5, out), 0);
    EXPECT_EQ(dec.padDecrypt(in, -5, out), 0);
}

TEST(AesStatus, LengthsAndNullBuffers) {
    unsigned char in[40] = {};
    for (AES_Mode mode : {AES_MODE_ECB, AES_MODE_CBC, AES_MODE_CFB128}) {
        SCOPED_TRACE(mode);
        AES_Encryption enc(mode, kKey, 32);
        AES_Decryption dec(mode, kKey, 32);
        // Below one block there is nothing to do; a trailing part block is ignored.
        ExactBuffer out(32, 0x77);
        for (int length : {-16, -1, 0, 1, 15}) {
            EXPECT_EQ(enc.blockEncrypt(in, length, out.data()), 0);
            EXPECT_EQ(dec.blockDecrypt(in, length, out.data()), 0);
        }
        EXPECT_EQ(out.bytes(), Bytes(32, 0x77));
        EXPECT_EQ(enc.blockEncrypt(in, 40, out.data()), 32); // 8 bytes left unread
        EXPECT_EQ(dec.blockDecrypt(in, 31, out.data()), 16);
        EXPECT_EQ(enc.blockEncrypt(nullptr, 16, out.data()), AES_BAD_DATA);
        EXPECT_EQ(enc.blockEncrypt(in, 16, nullptr), AES_BAD_DATA);
        EXPECT_EQ(dec.blockDecrypt(nullptr, 16, out.data()), AES_BAD_DATA);
        EXPECT_EQ(dec.blockDecrypt(in, 16, nullptr), AES_BAD_DATA);
    }
    AES_Encryption enc(AES_MODE_CBC, kKey, 16);
    AES_Decryption dec(AES_MODE_CBC, kKey, 16);
    unsigned char out[48];
    EXPECT_EQ(enc.padEncrypt(in, 5, nullptr), AES_BAD_DATA);
    EXPECT_EQ(enc.padEncrypt(nullptr, 5, out), AES_BAD_DATA);
    EXPECT_EQ(enc.padEncrypt(nullptr, 0, out), 16); // nothing to read: one padding block
    EXPECT_EQ(dec.padDecrypt(nullptr, 16, out), AES_BAD_DATA);
    EXPECT_EQ(dec.padDecrypt(out, 16, nullptr), AES_BAD_DATA);
}

// The copies below are what is tested, hence the NOLINT marks.
TEST(AesStatus, CopiesCarryKeyModeAndVector) {
    const unsigned char iv[16] = {9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9};
    unsigned char plain[32];
    for (int i = 0; i < 32; ++i)
        plain[i] = static_cast<unsigned char>(i * 7);
    AES_Encryption original(AES_MODE_CBC, kKey, 24, iv);
    unsigned char expected[32], got[32];
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

    // Decryption of the copy's output with a decrypting cipher returns the plaintext.
    AES_Decryption dec(AES_MODE_CBC, kKey, 24, iv);
    AES_Decryption decCopy = dec; // NOLINT(performance-unnecessary-copy-initialization)
    ASSERT_EQ(decCopy.blockDecrypt(expected, 32, got), 32);
    EXPECT_EQ(toHex(got, 32), toHex(plain, 32));
}
