// Behaviour of the digest contexts beyond the digest values: restarting after Final, copies
// that fork a running digest, null arguments and the SHA-1 status codes.
#include "digest_adapter.h"

using namespace crypto_test;
using namespace ZtCommonNS;

namespace {

const unsigned char* bytesOf(const std::string& s) {
    return reinterpret_cast<const unsigned char*>(s.data());
}

template <class Ctx> std::string finalHex(Ctx& ctx) {
    Bytes out(Ctx::DIGEST_LENGTH);
    ctx.Final(out.data());
    return toHex(out);
}

template <class Ctx> void checkRestartAndFork(const Digest& digest) {
    SCOPED_TRACE(digest.name);
    auto expected = [&](const std::string& message) { return toHex(digest.of(message)); };
    Ctx ctx;
    ctx.Update(bytesOf("first message"), 13);
    EXPECT_EQ(finalHex(ctx), expected("first message"));
    // Final restarted the context: the next message owes nothing to the first, and nothing
    // added at all gives the digest of the empty message.
    ctx.Update(bytesOf("abc"), 3);
    EXPECT_EQ(finalHex(ctx), expected("abc"));
    EXPECT_EQ(finalHex(ctx), expected(""));

    // A copy taken mid-message carries the partial block and the count with it.
    const std::string head(100, 'h');
    Ctx left;
    left.Update(bytesOf(head), 100);
    Ctx right = left;
    left.Update(bytesOf("L"), 1);
    right.Update(bytesOf("RR"), 2);
    EXPECT_EQ(finalHex(left), expected(head + "L"));
    EXPECT_EQ(finalHex(right), expected(head + "RR"));

    // Assignment replaces the running state entirely.
    Ctx other;
    other.Update(bytesOf("zzz"), 3);
    Ctx target;
    target.Update(bytesOf(head), 70);
    target = other;
    EXPECT_EQ(finalHex(target), expected("zzz"));
}

} // namespace

TEST(DigestContext, FinalRestartsAndCopiesFork) {
    checkRestartAndFork<MD5_CTX>(kDigests[0]);
    checkRestartAndFork<SHA1_CTX>(kDigests[1]);
    checkRestartAndFork<SHA256_CTX>(kDigests[2]);
    checkRestartAndFork<SHA384_CTX>(kDigests[3]);
    checkRestartAndFork<SHA512_CTX>(kDigests[4]);
}

TEST(DigestContext, NullArgumentsAndSha1Status) {
    // Null data adds nothing.
    MD5_CTX md5;
    md5.Update(nullptr, 10);
    md5.Update(bytesOf("abc"), 3);
    EXPECT_EQ(finalHex(md5), "900150983cd24fb0d6963f7d28e17f72");
    SHA512_CTX sha512;
    sha512.Update(nullptr, 1000);
    sha512.Update(bytesOf("abc"), 3);
    EXPECT_EQ(finalHex(sha512), toHex(kDigests[4].of("abc")));

    // A null digest pointer writes nothing but still ends the message.
    SHA256_CTX sha256;
    sha256.Update(bytesOf("junk"), 4);
    sha256.Final(nullptr);
    sha256.Update(bytesOf("abc"), 3);
    EXPECT_EQ(finalHex(sha256), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");

    // SHA-1 reports both as SHA1_NULL.
    SHA1_CTX sha1;
    EXPECT_EQ(sha1.Update(nullptr, 5), SHA1_CTX::SHA1_NULL);
    EXPECT_EQ(sha1.Update(nullptr, 0), SHA1_CTX::SHA1_SUCCESS);
    EXPECT_EQ(sha1.Update(bytesOf("abc"), 3), SHA1_CTX::SHA1_SUCCESS);
    unsigned char digest[20];
    EXPECT_EQ(sha1.Final(digest), SHA1_CTX::SHA1_SUCCESS);
    EXPECT_EQ(toHex(digest, 20), "a9993e364706816aba3e25717850c26c9cd0d89d");
    EXPECT_EQ(sha1.Update(bytesOf("junk"), 4), SHA1_CTX::SHA1_SUCCESS);
    EXPECT_EQ(sha1.Final(nullptr), SHA1_CTX::SHA1_NULL);
    EXPECT_EQ(sha1.Final(digest), SHA1_CTX::SHA1_SUCCESS);
    EXPECT_EQ(toHex(digest, 20), "da39a3ee5e6b4b0d3255bfef95601890afd80709"); // empty message
}
