// Behaviour of the digest contexts beyond the digest values: restarting after Final, copies
// that fork a running digest, null arguments and the SHA-1 status codes, and SHA-384 being
// SHA-512 with its own initial values rather than a cut SHA-512 digest.
#include <cstring>

#include "digest_adapter.h"

using namespace crypto_test;
using namespace ZtCommonNS;

namespace {

const unsigned char* bytesOf(const char* s) {
    return reinterpret_cast<const unsigned char*>(s);
}

template <class Ctx> std::string finalHex(Ctx& ctx) {
    Bytes out(Ctx::DIGEST_LENGTH);
    ctx.Final(out.data());
    return toHex(out);
}

template <class Ctx> void checkRestartAndFork(Algo algo) {
    SCOPED_TRACE(algoName(algo));
    Ctx ctx;
    ctx.Update(bytesOf("first message"), 13);
    EXPECT_EQ(finalHex(ctx), toHex(digestOf(algo, "first message")));
    // Final restarted the context: the next message owes nothing to the first.
    ctx.Update(bytesOf("abc"), 3);
    EXPECT_EQ(finalHex(ctx), toHex(digestOf(algo, "abc")));
    // Nothing added at all gives the digest of the empty message.
    EXPECT_EQ(finalHex(ctx), toHex(digestOf(algo, "")));

    // A copy taken mid-message carries the partial block and the count with it.
    Ctx left;
    const std::string head(100, 'h');
    left.Update(bytesOf(head.c_str()), 100);
    Ctx right = left;
    left.Update(bytesOf("L"), 1);
    right.Update(bytesOf("RR"), 2);
    EXPECT_EQ(finalHex(left), toHex(digestOf(algo, head + "L")));
    EXPECT_EQ(finalHex(right), toHex(digestOf(algo, head + "RR")));

    // Assignment replaces the running state entirely.
    Ctx other;
    other.Update(bytesOf("zzz"), 3);
    Ctx target;
    target.Update(bytesOf(head.c_str()), 70);
    target = other;
    EXPECT_EQ(finalHex(target), toHex(digestOf(algo, "zzz")));
}

} // namespace

TEST(DigestContext, FinalRestartsAndCopiesFork) {
    checkRestartAndFork<MD5_CTX>(Algo::Md5);
    checkRestartAndFork<SHA1_CTX>(Algo::Sha1);
    checkRestartAndFork<SHA256_CTX>(Algo::Sha256);
    checkRestartAndFork<SHA384_CTX>(Algo::Sha384);
    checkRestartAndFork<SHA512_CTX>(Algo::Sha512);
}

TEST(DigestContext, NullDataAddsNothing) {
    MD5_CTX md5;
    md5.Update(nullptr, 10);
    md5.Update(bytesOf("abc"), 3);
    EXPECT_EQ(finalHex(md5), "900150983cd24fb0d6963f7d28e17f72");

    SHA512_CTX sha512;
    sha512.Update(nullptr, 1000);
    sha512.Update(bytesOf("abc"), 3);
    EXPECT_EQ(finalHex(sha512), toHex(digestOf(Algo::Sha512, "abc")));

    // A null digest pointer writes nothing but still ends the message.
    SHA256_CTX sha256;
    sha256.Update(bytesOf("junk"), 4);
    sha256.Final(nullptr);
    sha256.Update(bytesOf("abc"), 3);
    EXPECT_EQ(finalHex(sha256), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

TEST(DigestContext, Sha1StatusCodes) {
    SHA1_CTX ctx;
    EXPECT_EQ(ctx.Update(nullptr, 5), SHA1_CTX::SHA1_NULL);
    EXPECT_EQ(ctx.Update(nullptr, 0), SHA1_CTX::SHA1_SUCCESS);
    EXPECT_EQ(ctx.Update(bytesOf("abc"), 3), SHA1_CTX::SHA1_SUCCESS);
    unsigned char digest[20];
    EXPECT_EQ(ctx.Final(digest), SHA1_CTX::SHA1_SUCCESS);
    EXPECT_EQ(toHex(digest, 20), "a9993e364706816aba3e25717850c26c9cd0d89d");

    EXPECT_EQ(ctx.Update(bytesOf("junk"), 4), SHA1_CTX::SHA1_SUCCESS);
    EXPECT_EQ(ctx.Final(nullptr), SHA1_CTX::SHA1_NULL);
    EXPECT_EQ(ctx.Final(digest), SHA1_CTX::SHA1_SUCCESS);
    EXPECT_EQ(toHex(digest, 20), "da39a3ee5e6b4b0d3255bfef95601890afd80709"); // empty message
}

TEST(DigestContext, Sha384IsNotACutSha512) {
    const Bytes full = digestOf(Algo::Sha512, "abc");
    const Bytes cut = digestOf(Algo::Sha384, "abc");
    ASSERT_EQ(cut.size(), 48u);
    EXPECT_NE(toHex(cut), toHex(full).substr(0, 96));
    // Exactly 48 bytes are written.
    ExactBuffer out(48);
    SHA384_CTX ctx;
    ctx.Update(bytesOf("abc"), 3);
    ctx.Final(out.data());
    EXPECT_EQ(toHex(out.bytes()), toHex(cut));
}
