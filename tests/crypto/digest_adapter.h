// A uniform face over the five digest contexts, for tests that run the same checks on each.
#pragma once

#include <functional>
#include <string>

#include "crypto_test_util.h"
#include "ztcommon/crypto.h"

namespace crypto_test {

// Sizes of the pieces handed to Update, one call per piece (the last is cut to what is left).
using Pieces = std::function<size_t()>;

// Digests a message in pieces into a buffer of exactly the digest's length.
template <class Ctx>
Bytes digestInPieces(const unsigned char* message, size_t length, Pieces next) {
    Ctx ctx;
    for (size_t done = 0, n = 0; done < length; done += n) {
        n = std::min(next(), length - done);
        ctx.Update(message + done, n);
    }
    ExactBuffer out(Ctx::DIGEST_LENGTH);
    ctx.Final(out.data());
    return out.bytes();
}

struct Digest {
    const char* name; // as the vectors, coreutils and OpenSSL spell it
    Bytes (*inPieces)(const unsigned char*, size_t, Pieces);

    Bytes of(const std::string& message) const {
        return inPieces(reinterpret_cast<const unsigned char*>(message.data()), message.size(),
                        [&] { return message.size(); });
    }
};

inline const Digest kDigests[] = {
    {"MD5", digestInPieces<ZtCommonNS::MD5_CTX>},
    {"SHA1", digestInPieces<ZtCommonNS::SHA1_CTX>},
    {"SHA256", digestInPieces<ZtCommonNS::SHA256_CTX>},
    {"SHA384", digestInPieces<ZtCommonNS::SHA384_CTX>},
    {"SHA512", digestInPieces<ZtCommonNS::SHA512_CTX>},
};

inline const Digest& digestNamed(const std::string& name) {
    for (const Digest& d : kDigests)
        if (name == d.name)
            return d;
    ADD_FAILURE() << "no digest " << name;
    return kDigests[0];
}

} // namespace crypto_test
