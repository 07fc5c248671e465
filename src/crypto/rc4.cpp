// RC4. The key stream is serial: each step's index y depends on the permutation entry at x,
// which the step before may just have swapped. The fast loop reads the next d[x] before the
// current swap and corrects it in the rare case the swap touched it (y landed on x + 1). That
// correction is a branch that is almost never taken rather than a conditional move, so the
// chain from one y to the next is an add and nothing else; GCC turns such a select into a
// conditional move, hence the one compare-and-jump written in assembly. Eight key-stream bytes
// are gathered into a word and combined with the input eight at a time.
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

namespace {

#if defined(__x86_64__) || defined(__i386__)
// Jumps to `label` when a == b.
#define ZT_RC4_JUMP_IF_EQUAL(a, b, label)                                                          \
    asm goto("cmp %0, %1\n\tje %l[" #label "]" : : "r"(a), "r"(b) : "cc" : label)
#else
#define ZT_RC4_JUMP_IF_EQUAL(a, b, label)                                                          \
    if ((a) == (b))                                                                                \
    goto label
#endif

// Step i of a run of eight with x + i + 1 within the table (p = d + x): no index of x wraps.
#define ZT_RC4_STEP(i)                                                                             \
    y = (y + tx) & 0xFF;                                                                           \
    ty = d[y];                                                                                     \
    ahead = p[(i) + 1];                                                                            \
    d[y] = tx;                                                                                     \
    p[i] = ty;                                                                                     \
    stream |= static_cast<uint64_t>(d[(tx + ty) & 0xFF]) << (8 * (i));                             \
    ZT_RC4_JUMP_IF_EQUAL(x + (i) + 1, y, fix##i);                                                  \
    back##i : tx = ahead;

// The swap wrote tx at x + i + 1: that is the next step's entry.
#define ZT_RC4_FIX(i)                                                                              \
    fix##i : ahead = tx;                                                                           \
    goto back##i;

} // namespace

void RC4_KEY::RC4(int length, const unsigned char* input, unsigned char* output) {
    if (length < 1 || input == nullptr || output == nullptr)
        return;
    uint32_t* const d = data_;
    uint32_t y = y_;
    size_t n = static_cast<size_t>(length);

    // x is kept at the position of the next step, with tx = d[x] already loaded.
    uint32_t x = (x_ + 1) & 0xFF;
    uint32_t tx = d[x];
    for (; n >= 8; n -= 8, input += 8, output += 8) {
        uint64_t stream = 0;
        if (x <= 247) {
            uint32_t* const p = d + x;
            uint32_t ahead, ty;
            ZT_RC4_STEP(0)
            ZT_RC4_STEP(1)
            ZT_RC4_STEP(2)
            ZT_RC4_STEP(3)
            ZT_RC4_STEP(4)
            ZT_RC4_STEP(5)
            ZT_RC4_STEP(6)
            ZT_RC4_STEP(7)
            x += 8;
            goto combine;
            ZT_RC4_FIX(0)
            ZT_RC4_FIX(1)
            ZT_RC4_FIX(2)
            ZT_RC4_FIX(3)
            ZT_RC4_FIX(4)
            ZT_RC4_FIX(5)
            ZT_RC4_FIX(6)
            ZT_RC4_FIX(7)
        } else {
            // The run crosses the end of the table: indices wrap.
            for (int i = 0; i < 8; ++i) {
                y = (y + tx) & 0xFF;
                const uint32_t ty = d[y];
                d[y] = tx;
                d[x] = ty;
                stream |= static_cast<uint64_t>(d[(tx + ty) & 0xFF]) << (8 * i);
                x = (x + 1) & 0xFF;
                tx = d[x];
            }
        }
    combine:
        uint64_t block;
        std::memcpy(&block, input, 8);
        block ^= stream;
        std::memcpy(output, &block, 8);
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
    x_ = (x - 1) & 0xFF;
    y_ = y;
}

#undef ZT_RC4_STEP
#undef ZT_RC4_FIX
#undef ZT_RC4_JUMP_IF_EQUAL

} // namespace ZtCommonNS
