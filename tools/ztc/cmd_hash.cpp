// ztc hash: digests of files in the format of sha256sum and its kin, so that the output can be
// checked with `sha256sum -c`. Files are read in 1 MiB pieces; "-" (or no file) is standard
// input.
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <iostream>
#include <memory>
#include <unistd.h>

#include "command.h"
#include "ztcommon/crypto.h"

namespace {

// One running digest behind a common face.
class Digest {
public:
    virtual ~Digest() = default;
    virtual void update(const unsigned char* data, size_t n) = 0;
    virtual std::string finishHex() = 0;
};

template <class Ctx> class DigestOf : public Digest {
public:
    void update(const unsigned char* data, size_t n) override {
        ctx_.Update(data, static_cast<uint32_t>(n)); // pieces are at most 1 MiB
    }
    std::string finishHex() override {
        unsigned char digest[Ctx::DIGEST_LENGTH];
        ctx_.Final(digest);
        static const char hex[] = "0123456789abcdef";
        std::string text;
        for (unsigned char b : digest) {
            text += hex[b >> 4];
            text += hex[b & 15];
        }
        return text;
    }

private:
    Ctx ctx_;
};

std::unique_ptr<Digest> makeDigest(const std::string& name) {
    using namespace ZtCommonNS;
    if (name == "md5")
        return std::make_unique<DigestOf<MD5_CTX>>();
    if (name == "sha1")
        return std::make_unique<DigestOf<SHA1_CTX>>();
    if (name == "sha256")
        return std::make_unique<DigestOf<SHA256_CTX>>();
    if (name == "sha384")
        return std::make_unique<DigestOf<SHA384_CTX>>();
    if (name == "sha512")
        return std::make_unique<DigestOf<SHA512_CTX>>();
    return nullptr;
}

// Reads the whole file into the digest. Returns 0 or the errno value of the failure.
int digestFile(const std::string& file, Digest& digest) {
    const bool standardInput = file == "-";
    const int fd = standardInput ? STDIN_FILENO : open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return errno;
    constexpr size_t kPiece = size_t{1} << 20;
    std::unique_ptr<unsigned char[]> buffer(new unsigned char[kPiece]);
    int error = 0;
    for (;;) {
        const ssize_t got = read(fd, buffer.get(), kPiece);
        if (got > 0) {
            digest.update(buffer.get(), static_cast<size_t>(got));
        } else if (got == 0) {
            break;
        } else if (errno != EINTR) {
            error = errno;
            break;
        }
    }
    if (!standardInput)
        close(fd);
    return error;
}

// sha256sum's escaping: a name holding a backslash or a line feed is written with those as
// "\\" and "\n", and the line then starts with a backslash.
std::string escapedLine(const std::string& hex, const std::string& file) {
    if (file.find_first_of("\\\n") == std::string::npos)
        return hex + "  " + file;
    std::string name;
    for (char c : file) {
        if (c == '\\')
            name += "\\\\";
        else if (c == '\n')
            name += "\\n";
        else
            name += c;
    }
    return "\\" + hex + "  " + name;
}

int run(const std::vector<std::string>& args) {
    if (args.empty())
        return ztcUsageError("hash", "no algorithm given (md5, sha1, sha256, sha384 or sha512)");
    if (!makeDigest(args[0]))
        return ztcUsageError("hash", "unknown algorithm '" + args[0] +
                                         "' (md5, sha1, sha256, sha384 or sha512)");
    std::vector<std::string> files(args.begin() + 1, args.end());
    if (files.empty())
        files.emplace_back("-");
    int status = 0;
    for (const std::string& file : files) {
        std::unique_ptr<Digest> digest = makeDigest(args[0]);
        if (const int error = digestFile(file, *digest); error != 0) {
            std::cout.flush();
            std::cerr << "ztc hash: " << file << ": " << std::strerror(error) << '\n';
            status = 1;
            continue;
        }
        std::cout << escapedLine(digest->finishHex(), file) << '\n';
    }
    return status;
}

ZtcCommand command{"hash", "md5|sha1|sha256|sha384|sha512 [FILE...]",
                   "Prints the digest of each FILE (\"-\" or none: standard input) as sha256sum "
                   "does.",
                   &run};

} // namespace
