// ZtMemStreamBuf::getMD5: the digest of the bytes from the read position to the end.
#include "ztcommon/crypto.h"
#include "ztcommon/stream.h"

namespace ZtCommonNS {

std::string ZtMemStreamBuf::getMD5() {
    if (seekoff(0, std::ios_base::cur, std::ios_base::in) == pos_type(off_type(-1)))
        return std::string();
    size_t index = getIndex(eback());
    // A stream that holds nothing has no digest (seeking has pulled every source by now).
    if (index == npos || storedLength() == 0)
        return std::string();
    MD5_CTX md5;
    size_t offset = static_cast<size_t>(gptr() - eback());
    while (toData(index, offset)) {
        const size_t data = dataLength(index);
        md5.Update(reinterpret_cast<const unsigned char*>(blocks_[index] + offset), data - offset);
        offset = data;
    }
    unsigned char digest[16];
    md5.Final(digest);
    return std::string(reinterpret_cast<const char*>(digest), sizeof digest);
}

} // namespace ZtCommonNS
