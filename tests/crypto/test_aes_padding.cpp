// The padded operations: the padding rule (a whole extra block when the length is a multiple of
// 16), round trips of every length, in-place use, and the rejection of malformed padding with
// buffers sized exactly, so that any access outside them is caught by AddressSanitizer.
#include "crypto_test_util.h"
#include "ztcommon/crypto.h"

using namespace crypto_test;
using namespace ZtCommonNS;

namespace {

class AesPadding : public BothPaths {};

const Bytes kKey = fromHex("000102030405060708090a0b0c0d0e0f");
const Bytes kIv = fromHex("f0e0d0c0b0a090807060504030201000");

size_t paddedSize(size_t n) {
    return 16 * (n / 16 + 1);
}

} // namespace

TEST_P(AesPadding, EmptyAndWholeBlockInputsGetAFullPaddingBlock) {
    for (AES_Mode mode : {AES_MODE_ECB, AES_MODE_CBC}) {
        SCOPED_TRACE(mode);
        AES_Encryption enc(mode, kKey.data(), 16, kIv.data());
        AES_Decryption blockDec(mode, kKey.data(), 16, kIv.data());

        // 0 bytes: one block, sixteen bytes of 16 before encryption.
        ExactBuffer one(16);
        ASSERT_EQ(enc.padEncrypt(nullptr, 0, one.data()), 16);
        Bytes plain(16);
        ASSERT_EQ(blockDec.blockDecrypt(one.data(), 16, plain.data()), 16);
        EXPECT_EQ(plain, Bytes(16, 16));

        // 16 bytes: 32 bytes out, the message block then a block of sixteen 16s.
        const Bytes message = fromHex("00112233445566778899aabbccddeeff");
        ExactBuffer two(32);
        ASSERT_EQ(enc.padEncrypt(message.data(), 16, two.data()), 32);
        Bytes both(32);
        ASSERT_EQ(blockDec.blockDecrypt(two.data(), 32, both.data()), 32);
        EXPECT_EQ(Bytes(both.begin(), both.begin() + 16), message);
        EXPECT_EQ(Bytes(both.begin() + 16, both.end()), Bytes(16, 16));

        // 5 bytes: eleven bytes of 11 complete the block.
        ExactBuffer five(16);
        ASSERT_EQ(enc.padEncrypt(message.data(), 5, five.data()), 16);
        ASSERT_EQ(blockDec.blockDecrypt(five.data(), 16, plain.data()), 16);
        Bytes expected(message.begin(), message.begin() + 5);
        expected.resize(16, 11);
        EXPECT_EQ(plain, expected);
    }
}

TEST_P(AesPadding, RoundTripsOfEveryLengthWriteExactlyTheirSize) {
    std::mt19937 rng(99);
    for (int keyLength : {16, 24, 32}) {
        const Bytes key = randomBytes(rng, static_cast<size_t>(keyLength));
        for (AES_Mode mode : {AES_MODE_ECB, AES_MODE_CBC}) {
            AES_Encryption enc(mode, key.data(), keyLength, kIv.data());
            AES_Decryption dec(mode, key.data(), keyLength, kIv.data());
            for (size_t n = 0; n <= 300; ++n) {
                const Bytes message = randomBytes(rng, n);
                ExactBuffer in(message);
                ExactBuffer sealed(paddedSize(n));
                ASSERT_EQ(enc.padEncrypt(in.data(), static_cast<int>(n), sealed.data()),
                          static_cast<int>(paddedSize(n)));
                ExactBuffer opened(n);
                ASSERT_EQ(
                    dec.padDecrypt(sealed.data(), static_cast<int>(sealed.size()), opened.data()),
                    static_cast<int>(n))
                    << "mode " << mode << " length " << n;
                ASSERT_EQ(opened.bytes(), message);
            }
        }
    }
}

TEST_P(AesPadding, InPlace) {
    std::mt19937 rng(5);
    for (AES_Mode mode : {AES_MODE_ECB, AES_MODE_CBC}) {
        AES_Encryption enc(mode, kKey.data(), 16, kIv.data());
        AES_Decryption dec(mode, kKey.data(), 16, kIv.data());
        for (size_t n : {0u, 1u, 15u, 16u, 17u, 100u, 128u, 200u}) {
            const Bytes message = randomBytes(rng, n);
            ExactBuffer separate(paddedSize(n));
            ASSERT_EQ(enc.padEncrypt(message.data(), static_cast<int>(n), separate.data()),
                      static_cast<int>(paddedSize(n)));
            // The message at the start of a buffer with room for the padding.
            ExactBuffer buffer(paddedSize(n));
            std::copy(message.begin(), message.end(), buffer.data());
            ASSERT_EQ(enc.padEncrypt(buffer.data(), static_cast<int>(n), buffer.data()),
                      static_cast<int>(paddedSize(n)));
            EXPECT_EQ(buffer.bytes(), separate.bytes());
            ASSERT_EQ(dec.padDecrypt(buffer.data(), static_cast<int>(paddedSize(n)), buffer.data()),
                      static_cast<int>(n));
            EXPECT_EQ(buffer.bytes(n), message);
        }
    }
}

// Ciphertexts whose final plaintext block is chosen by encrypting it without padding.
TEST_P(AesPadding, MalformedPaddingIsRejectedWithoutTouchingOutput) {
    for (AES_Mode mode : {AES_MODE_ECB, AES_MODE_CBC}) {
        SCOPED_TRACE(mode);
        AES_Encryption raw(mode, kKey.data(), 16, kIv.data());
        AES_Decryption dec(mode, kKey.data(), 16, kIv.data());
        auto check = [&](const Bytes& plain, int expected) {
            ExactBuffer sealed(plain.size());
            ASSERT_EQ(raw.blockEncrypt(plain.data(), static_cast<int>(plain.size()), sealed.data()),
                      static_cast<int>(plain.size()));
            // The largest output a valid message of this length could need.
            ExactBuffer out(plain.size() - 1, 0xEE);
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
                if (last >= 1 && last <= 16)
                    continue;
                plain.back() = static_cast<unsigned char>(last);
                check(plain, AES_BAD_DATA);
            }
            // Padding of n bytes where one of the other n - 1 differs.
            for (int n = 2; n <= 16; ++n) {
                for (int wrong = 16 - n; wrong < 15; ++wrong) {
                    Bytes p = plain;
                    std::fill(p.end() - n, p.end(), static_cast<unsigned char>(n));
                    p[p.size() - 16 + static_cast<size_t>(wrong)] =
                        static_cast<unsigned char>(n + 1);
                    check(p, AES_BAD_DATA);
                    p[p.size() - 16 + static_cast<size_t>(wrong)] = 0;
                    check(p, AES_BAD_DATA);
                }
                // And the well-formed one is accepted.
                Bytes good = plain;
                std::fill(good.end() - n, good.end(), static_cast<unsigned char>(n));
                check(good, static_cast<int>(good.size()) - n);
            }
            Bytes single = plain;
            single.back() = 1;
            check(single, static_cast<int>(single.size()) - 1);
        }
    }
}

TEST_P(AesPadding, CiphertextLengthsThatAreNotWholeBlocks) {
    AES_Decryption dec(AES_MODE_CBC, kKey.data(), 16, kIv.data());
    for (int n = 0; n <= 48; ++n) {
        if (n != 0 && n % 16 == 0)
            continue;
        ExactBuffer in(static_cast<size_t>(n));
        ExactBuffer out(64, 0xEE);
        EXPECT_EQ(dec.padDecrypt(in.data(), n, out.data()), AES_BAD_DATA) << n;
        EXPECT_EQ(out.bytes(), Bytes(64, 0xEE));
    }
}

ZT_BOTH_PATHS(AesPadding);
