// RC4. The key stream is serial: each step reads the permutation entry that the step before may
// just have swapped. The loop below reads the next x entry early and corrects it when the swap
// touched it (only when y landed on x + 1), so the load does not wait for the preceding stores;
// eight key-stream bytes are gathered into one word and combined with the input eight at a time.
#include <cstring>

#include "ztcommon/crypto.h"

namespace ZtCommonNS {

RC4_KEY::RC4_KEY(int keyLength, const unsigned char* key) : x_(0), y_(0), data_{} {
    static const unsigned char zeroKey = 0;
    if (key == nullptr || keyLength < 1) {
        key = &zeroKey;
        keyLength = 1;
    }
    for (uint32_t i = 0; i < 256; ++i)
        data_[i] = i;
    uint32_t j = 0;
    int k = 0;
    for (uint32_t i = 0; i < 256; ++i) {
        const uint32_t t = data_[i];
        j = (j + t + key[k]) & 0xFF;
        data_[i] = data_[j];
        data_[j] = t;
        if (++k == keyLength)
            k = 0;
    }
}

void RC4_KEY::RC4(int length, const unsigned char* input, unsigned char* output) {
    if (length < 1 || input == nullptr || output == nullptr)
        return;
    uint32_t* const d = data_;
    uint32_t x = x_, y = y_;
    size_t n = static_cast<size_t>(length);

    // x is kept one ahead (the position of the next step), with tx = d[x] loaded.
    uint32_t tx = d[(x + 1) & 0xFF];
    x = (x + 1) & 0xFF;
    while (n >= 8) {
        uint64_t stream = 0;
        for (int i = 0; i < 8; ++i) {
            y = (y + tx) & 0xFF;
            const uint32_t ty = d[y];
            const uint32_t nx = (x + 1) & 0xFF;
            const uint32_t ahead = d[nx]; // read before the swap; corrected below
            d[y] = tx;
            d[x] = ty;
            stream |= static_cast<uint64_t>(d[(tx + ty) & 0xFF])
                      << (8 * i); // entries are below 256
            // The swap changed d[nx] only if nx was y (it then holds tx): nx is never x.
            tx = nx == y ? tx : ahead;
            x = nx;
        }
        uint64_t block;
        std::memcpy(&block, input, 8);
        block ^= stream;
        std::memcpy(output, &block, 8);
        input += 8;
        output += 8;
        n -= 8;
    }
    for (; n != 0; --n) {
        y = (y + tx) & 0xFF;
        const uint32_t ty = d[y];
        d[y] = tx;
        d[x] = ty;
        *output++ = static_cast<unsigned char>(*input++ ^ d[(tx + ty) & 0xFF]);
        x = (x + 1) & 0xFF;
        tx = d[x];
    }
    // x is one ahead of the last step taken.
    x_ = (x - 1) & 0xFF;
    y_ = y;
}

} // namespace ZtCommonNS
