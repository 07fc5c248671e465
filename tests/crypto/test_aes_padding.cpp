// The padded operations: the padding rule (k bytes of value k; a whole extra block when the
// length is a multiple of 16) and round trips of every length, separate and in place, then the
// rejection of malformed padding with buffers sized exactly, so that any access outside them
// is caught by AddressSanitizer.
#include "crypto_test_util.h"
#include "ztcommon/crypto.h"

using namespace crypto_test;
using namespace ZtCommonNS;

namespace {
class AesPadding : public BothPaths {};
const Bytes kKey = fromHex("000102030405060708090a0b0c0d0e0f");
const Bytes kIv = fromHex("f0e0d0c0b0a090807060504030201000");
} // namespace

TEST_P(AesPadding, EveryLengthPadsByTheRuleAndRoundTripsInPlace) {
    std::mt19937 rng(99);
    for (int keyLength : {16, 24, 32}) {
        const Bytes key = randomBytes(rng, static_cast<size_t>(keyLength));
        for (AES_Mode mode : {AES_MODE_ECB, AES_MODE_CBC}) {
            AES_Encryption enc(mode, key.data(), keyLength, kIv.data());
            AES_Decryption dec(mode, key.data(), keyLength, kIv.data());
            for (size_t n = 0; n <= 300; ++n) {
                SCOPED_TRACE(testing::Message() << "mode " << mode << " length " << n);
                const Bytes message = randomBytes(rng, n);
                const size_t size = 16 * (n / 16 + 1);
                const auto padding = static_cast<unsigned char>(size - n);
                ExactBuffer in(message), sealed(size), opened(n), inPlace(size);
                ASSERT_EQ(enc.padEncrypt(in.data(), static_cast<int>(n), sealed.data()),
                          static_cast<int>(size));
                Bytes plain(size), expected = message;
                expected.resize(size, padding);
                ASSERT_EQ(dec.blockDecrypt(sealed.data(), static_cast<int>(size), plain.data()),
                          static_cast<int>(size));
                ASSERT_EQ(plain, expected);
                ASSERT_EQ(dec.padDecrypt(sealed.data(), static_cast<int>(size), opened.data()),
                          static_cast<int>(n));
                ASSERT_EQ(opened.bytes(), message);

                // In place: the message at the start of a buffer with room for the padding.
                std::copy(message.begin(), message.end(), inPlace.data());
                ASSERT_EQ(enc.padEncrypt(inPlace.data(), static_cast<int>(n), inPlace.data()),
                          static_cast<int>(size));
                ASSERT_EQ(inPlace.bytes(), sealed.bytes());
                ASSERT_EQ(dec.padDecrypt(inPlace.data(), static_cast<int>(size), inPlace.data()),
                          static_cast<int>(n));
                ASSERT_EQ(inPlace.bytes(n), message);
            }
        }
    }
}

// Ciphertexts whose final plaintext block is chosen by encrypting it without padding; the
// output buffer is the largest a valid message of that length could need.
TEST_P(AesPadding, MalformedPaddingIsRejectedWithoutTouchingOutput) {
    for (AES_Mode mode : {AES_MODE_ECB, AES_MODE_CBC}) {
        SCOPED_TRACE(mode);
        AES_Encryption raw(mode, kKey.data(), 16, kIv.data());
        AES_Decryption dec(mode, kKey.data(), 16, kIv.data());
        auto check = [&](const Bytes& plain, int expected) {
            ExactBuffer sealed(plain.size()), out(plain.size() - 1, 0xEE);
            ASSERT_EQ(raw.blockEncrypt(plain.data(), static_cast<int>(plain.size()), sealed.data()),
                      static_cast<int>(plain.size()));
            EXPECT_EQ(dec.padDecrypt(sealed.data(), static_cast<int>(sealed.size()), out.data()),
                      expected)
                << "final block " << toHex(Bytes(plain.end() - 16, plain.end()));
            if (expected < 0) {
                EXPECT_EQ(out.bytes(), Bytes(out.size(), 0xEE)) << "output written on failure";
            }
        };
        for (size_t blocks : {1u, 3u}) {
            Bytes plain(16 * blocks, 0x42);
            // Final byte 0 or above 16.
            for (int last = 0; last <= 255; ++last) {
                plain.back() = static_cast<unsigned char>(last);
                if (last == 0 || last > 16)
                    check(plain, AES_BAD_DATA);
            }
            // Padding of n bytes where one of the other n - 1 differs, and the good one.
            for (int n = 1; n <= 16; ++n) {
                Bytes good = plain;
                std::fill(good.end() - n, good.end(), static_cast<unsigned char>(n));
                check(good, static_cast<int>(good.size()) - n);
                for (int wrong = 16 - n; wrong < 15; ++wrong) {
                    for (int value : {0, n + 1}) {
                        Bytes p = good;
                        p[p.size() - 16 + static_cast<size_t>(wrong)] =
                            static_cast<unsigned char>(value);
                        check(p, AES_BAD_DATA);
                    }
                }
            }
        }
    }
    // Ciphertext lengths that are not whole blocks.
    AES_Decryption dec(AES_MODE_CBC, kKey.data(), 16, kIv.data());
    for (int n = 0; n <= 48; ++n) {
        if (n != 0 && n % 16 == 0)
            continue;
        ExactBuffer in(static_cast<size_t>(n)), out(64, 0xEE);
        EXPECT_EQ(dec.padDecrypt(in.data(), n, out.data()), AES_BAD_DATA) << n;
        EXPECT_EQ(out.bytes(), Bytes(64, 0xEE));
    }
}

ZT_BOTH_PATHS(AesPadding);
