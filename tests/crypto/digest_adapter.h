// A uniform face over the five digest contexts, for tests that run the same checks on each.
#pragma once

#include <string>

#include "crypto_test_util.h"
#include "ztcommon/crypto.h"

namespace crypto_test {

enum class Algo { Md5, Sha1, Sha256, Sha384, Sha512 };

inline const char* algoName(Algo a) {
    switch (a) {
    case Algo::Md5:
        return "MD5";
    case Algo::Sha1:
        return "SHA1";
    case Algo::Sha256:
        return "SHA256";
    case Algo::Sha384:
        return "SHA384";
    default:
        return "SHA512";
    }
}

// Digests `message`, handing it to Update in pieces whose sizes come from `chunk(i)` (any
// positive size; the last piece is cut to what is left).
template <class Ctx, class ChunkFn>
Bytes digestInPieces(const unsigned char* message, size_t length, ChunkFn chunk) {
    Ctx ctx;
    size_t done = 0;
    for (int i = 0; done < length; ++i) {
        size_t n = chunk(i);
        if (n > length - done)
            n = length - done;
        ctx.Update(message + done, static_cast<decltype(n)>(n));
        done += n;
    }
    Bytes out(Ctx::DIGEST_LENGTH);
    ctx.Final(out.data());
    return out;
}

template <class ChunkFn>
Bytes digestInPieces(Algo a, const unsigned char* message, size_t length, ChunkFn chunk) {
    using namespace ZtCommonNS;
    switch (a) {
    case Algo::Md5:
        return digestInPieces<MD5_CTX>(message, length, chunk);
    case Algo::Sha1:
        return digestInPieces<SHA1_CTX>(message, length, chunk);
    case Algo::Sha256:
        return digestInPieces<SHA256_CTX>(message, length, chunk);
    case Algo::Sha384:
        return digestInPieces<SHA384_CTX>(message, length, chunk);
    default:
        return digestInPieces<SHA512_CTX>(message, length, chunk);
    }
}

inline Bytes digestOf(Algo a, const std::string& message) {
    return digestInPieces(a, reinterpret_cast<const unsigned char*>(message.data()), message.size(),
                          [&](int) { return message.size(); });
}

} // namespace crypto_test
