// Digests against their published examples: the RFC 1321 test suite for MD5 and the FIPS 180
// examples (one block, two blocks of 448 and 896 bits, a million 'a') for the SHA family, on
// both the hardware and the portable path.
#include "digest_adapter.h"

using namespace crypto_test;

namespace {

struct Vector {
    Algo algo;
    std::string message;
    std::string digest;
};

const std::string k448 = "abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq";
const std::string k896 = "abcdefghbcdefghicdefghijdefghijkefghijklfghijklmghijklmn"
                         "hijklmnoijklmnopjklmnopqklmnopqrlmnopqrsmnopqrstnopqrstu";

const Vector kVectors[] = {
    // RFC 1321, appendix A.5.
    {Algo::Md5, "", "d41d8cd98f00b204e9800998ecf8427e"},
    {Algo::Md5, "a", "0cc175b9c0f1b6a831c399e269772661"},
    {Algo::Md5, "abc", "900150983cd24fb0d6963f7d28e17f72"},
    {Algo::Md5, "message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
    {Algo::Md5, "abcdefghijklmnopqrstuvwxyz", "c3fcd3d76192e4007dfb496cca67e13b"},
    {Algo::Md5, "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789",
     "d174ab98d277d9f5a5611c2c9f419d9f"},
    {Algo::Md5,
     "1234567890123456789012345678901234567890123456789012345678901234567890123456789"
     "0",
     "57edf4a22be3c955ac49da2e2107b67a"},
    // FIPS 180 examples.
    {Algo::Sha1, "abc", "a9993e364706816aba3e25717850c26c9cd0d89d"},
    {Algo::Sha1, k448, "84983e441c3bd26ebaae4aa1f95129e5e54670f1"},
    {Algo::Sha1, k896, "a49b2446a02c645bf419f995b67091253a04a259"},
    {Algo::Sha256, "abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
    {Algo::Sha256, k448, "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"},
    {Algo::Sha256, k896, "cf5b16a778af8380036ce59e7b0492370b249b11e8f07a51afac45037afee9d1"},
    {Algo::Sha384, "abc",
     "cb00753f45a35e8bb5a03d699ac65007272c32ab0eded1631a8b605a43ff5bed8086072ba1e7cc2358baeca1"
     "34c825a7"},
    {Algo::Sha384, k448,
     "3391fdddfc8dc7393707a65b1b4709397cf8b1d162af05abfe8f450de5f36bc6b0455a8520bc4e6f5fe95b1f"
     "e3c8452b"},
    {Algo::Sha384, k896,
     "09330c33f71147e83d192fc782cd1b4753111b173b3b05d22fa08086e3b0f712fcc7c71a557e2db966c3e9fa"
     "91746039"},
    {Algo::Sha512, "abc",
     "ddaf35a193617abacc417349ae20413112e6fa4e89a97ea20a9eeee64b55d39a2192992a274fc1a836ba3c23"
     "a3feebbd454d4423643ce80e2a9ac94fa54ca49f"},
    {Algo::Sha512, k448,
     "204a8fc6dda82f0a0ced7beb8e08a41657c16ef468b228a8279be331a703c33596fd15c13b1b07f9aa1d3bea"
     "57789ca031ad85c7a71dd70354ec631238ca3445"},
    {Algo::Sha512, k896,
     "8e959b75dae313da8cf4f72814fc143f8f7779c6eb9f7fa17299aeadb6889018501d289e4900f7e4331b99de"
     "c4b5433ac7d329eeb6dd26545e96e55b874be909"},
};

// One million 'a': FIPS 180 examples, and the MD5 value of the same message.
const std::pair<Algo, std::string> kMillionA[] = {
    {Algo::Md5, "7707d6ae4e027c70eea2a935c2296f21"},
    {Algo::Sha1, "34aa973cd4c4daa4f61eeb2bdbad27316534016f"},
    {Algo::Sha256, "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"},
    {Algo::Sha384, "9d0e1809716474cb086e834e310a4a1ced149e9c00f248527972cec5704c2a5b07b8b3dc38ecc"
                   "4ebae97ddd87f3d8985"},
    {Algo::Sha512, "e718483d0ce769644e2e42c7bc15b4638e1f98b13b2044285632a803afa973ebde0ff244877ea"
                   "60a4cb0432ce577c31beb009c5c2c49aa2e4eadb217ad8cc09b"},
};

class DigestVectors : public BothPaths {};

} // namespace

TEST_P(DigestVectors, PublishedExamples) {
    for (const Vector& v : kVectors) {
        EXPECT_EQ(toHex(digestOf(v.algo, v.message)), v.digest)
            << algoName(v.algo) << " of \"" << v.message << '"';
        // The same message one byte at a time goes through the buffering for every byte.
        const auto* p = reinterpret_cast<const unsigned char*>(v.message.data());
        EXPECT_EQ(toHex(digestInPieces(v.algo, p, v.message.size(), [](int) { return 1; })),
                  v.digest)
            << algoName(v.algo) << " bytewise of \"" << v.message << '"';
    }
}

TEST_P(DigestVectors, MillionA) {
    const std::string message(1000000, 'a');
    const auto* p = reinterpret_cast<const unsigned char*>(message.data());
    for (const auto& [algo, digest] : kMillionA) {
        EXPECT_EQ(toHex(digestInPieces(algo, p, message.size(), [](int) { return 1000000; })),
                  digest)
            << algoName(algo);
        // Pieces of 1000 bytes never line up with the 64- or 128-byte blocks.
        EXPECT_EQ(toHex(digestInPieces(algo, p, message.size(), [](int) { return 1000; })), digest)
            << algoName(algo) << " in pieces";
    }
}

ZT_BOTH_PATHS(DigestVectors);
