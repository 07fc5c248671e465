// The buffering shared by the Merkle-Damgard digests: bytes are gathered into whole blocks for
// the block function, and the final block carries the 0x80 marker, zeros and the bit length.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "crypto/byte_order.h"

namespace ZtCommonNS::crypto {

// Adds n bytes to a digest whose total so far is `length` bytes and whose partial block sits
// in `buffer`. Whole blocks of the input go straight to the block function without copying.
template <size_t Block, class Word, class BlockFn>
inline void digestAbsorb(Word* state, unsigned char* buffer, uint64_t& length,
                         const unsigned char* data, uint64_t n, BlockFn blocks) {
    size_t used = static_cast<size_t>(length % Block);
    length += n;
    if (used != 0) {
        const size_t take = n < Block - used ? static_cast<size_t>(n) : Block - used;
        std::memcpy(buffer + used, data, take);
        if (used + take < Block)
            return;
        blocks(state, buffer, 1);
        data += take;
        n -= take;
    }
    const uint64_t whole = n / Block;
    if (whole != 0) {
        blocks(state, data, static_cast<size_t>(whole));
        data += whole * Block;
        n -= whole * Block;
    }
    if (n != 0)
        std::memcpy(buffer, data, static_cast<size_t>(n));
}

// The feed-forward at the end of a SHA-2 block: the working variables are added to the
// state, and take the new state as the start of the next block.
template <class Word>
inline void addToState(Word* state, Word& a, Word& b, Word& c, Word& d, Word& e, Word& f, Word& g,
                       Word& h) {
    a = state[0] += a;
    b = state[1] += b;
    c = state[2] += c;
    d = state[3] += d;
    e = state[4] += e;
    f = state[5] += f;
    g = state[6] += g;
    h = state[7] += h;
}

// Pads the message of `length` bytes and runs the last block(s). The bit length takes the
// final 8 bytes (MD5 little-endian, SHA big-endian); with a 16-byte length field (SHA-384 and
// SHA-512) the bits above 64 come from the top of the byte count.
template <size_t Block, size_t LengthField, bool BigEndian, class Word, class BlockFn>
inline void digestFinish(Word* state, unsigned char* buffer, uint64_t length, BlockFn blocks) {
    size_t used = static_cast<size_t>(length % Block);
    buffer[used++] = 0x80;
    if (used > Block - LengthField) {
        std::memset(buffer + used, 0, Block - used);
        blocks(state, buffer, 1);
        used = 0;
    }
    std::memset(buffer + used, 0, Block - used);
    if constexpr (BigEndian) {
        storeBe64(buffer + Block - 8, length << 3);
        if constexpr (LengthField == 16)
            storeBe64(buffer + Block - 16, length >> 61);
    } else {
        storeLe64(buffer + Block - 8, length << 3);
    }
    blocks(state, buffer, 1);
}

} // namespace ZtCommonNS::crypto
