// ZtUUID: random version-4 UUIDs from the kernel's generator.
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/random.h>
#include <unistd.h>

#include "foundation/raise_error.h"
#include "ztcommon/crypto.h"

namespace ZtCommonNS {

namespace {

// Fills the buffer from getrandom(2), or from /dev/urandom on kernels without it. Returns 0 or
// the errno value of the failure.
int randomBytes(unsigned char* p, size_t n) {
    while (n != 0) {
        const ssize_t got = getrandom(p, n, 0);
        if (got > 0) {
            p += got;
            n -= static_cast<size_t>(got);
        } else if (got < 0 && errno == EINTR) {
            continue;
        } else if (got < 0 && errno == ENOSYS) {
            break;
        } else {
            return got < 0 ? errno : EIO;
        }
    }
    if (n == 0)
        return 0;
    const int fd = open("/dev/urandom", O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return errno;
    int error = 0;
    while (n != 0) {
        const ssize_t got = read(fd, p, n);
        if (got > 0) {
            p += got;
            n -= static_cast<size_t>(got);
        } else if (got < 0 && errno == EINTR) {
            continue;
        } else {
            error = got < 0 ? errno : EIO;
            break;
        }
    }
    close(fd);
    return error;
}

} // namespace

ZtUUID::ZtUUID() : bytes_{} {
    if (const int error = randomBytes(bytes_, sizeof bytes_); error != 0)
        throw ZtError(ZtErrc::CppException,
                      UnicodeString(u"SYSTEM ERROR: no random bytes for a UUID: ") +
                          ZtError::getLastErrorMessage(static_cast<unsigned long>(error), nullptr),
                      UnicodeString(u"ZtCommonNS::ZtUUID"));
    // The GUID layout: the third field (time_hi_and_version) is a little-endian 16-bit word at
    // bytes 6-7, so its version nibble is the top of byte 7. The variant (binary 10) takes the
    // top two bits of byte 8.
    bytes_[7] = static_cast<unsigned char>((bytes_[7] & 0x0F) | 0x40);
    bytes_[8] = static_cast<unsigned char>((bytes_[8] & 0x3F) | 0x80);
}

ZtUUID::ZtUUID(const unsigned char* bytes) : bytes_{} {
    if (bytes != nullptr)
        std::memcpy(bytes_, bytes, sizeof bytes_);
}

UnicodeString ZtUUID::toString(bool withDashes) const {
    static const char16_t digits[] = u"0123456789ABCDEF";
    char16_t text[36];
    int32_t length = 0;
    for (int i = 0; i < LENGTH; ++i) {
        if (withDashes && (i == 4 || i == 6 || i == 8 || i == 10))
            text[length++] = u'-';
        text[length++] = digits[bytes_[i] >> 4];
        text[length++] = digits[bytes_[i] & 0x0F];
    }
    return UnicodeString(text, length);
}

uint32_t ZtUUID::toUint32() const {
    uint32_t result = 0;
    for (int i = 0; i < LENGTH; i += 4) {
        uint32_t word;
        std::memcpy(&word, bytes_ + i, 4);
        result ^= word;
    }
    return result;
}

bool ZtUUID::operator==(const ZtUUID& other) const {
    return std::memcmp(bytes_, other.bytes_, sizeof bytes_) == 0;
}

} // namespace ZtCommonNS
