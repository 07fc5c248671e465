// The AES classes: argument checks, the padding rule, and the hand-off of whole blocks to the
// kernels of the chosen path.
#include <cstring>

#include "crypto/aes_key_schedule.h"
#include "crypto/cpu_dispatch.h"
#include "ztcommon/crypto.h"

namespace ZtCommonNS {

// The cipher state behind an AES_Base. `keys` are the ones the direction's block operation
// uses: decryption keys for ECB and CBC decryption, encryption keys otherwise (CFB-128 runs
// the forward cipher both ways).
struct AesState {
    crypto::AesKeys keys{};
    unsigned char iv[16] = {};
    int status = AES_NOT_INITIALISED;
    AES_Mode mode = AES_MODE_ECB;
    int direction = 0;
};

namespace {

constexpr int kEncrypt = 0;
constexpr int kDecrypt = 1;

int initialise(AesState& s, AES_Mode mode, int direction, const unsigned char* key, int keyLength,
               const unsigned char* iv) {
    s.mode = mode;
    s.direction = direction;
    if (mode != AES_MODE_ECB && mode != AES_MODE_CBC && mode != AES_MODE_CFB128)
        return AES_UNSUPPORTED_MODE;
    if (direction != kEncrypt && direction != kDecrypt)
        return AES_BAD_DIRECTION;
    if (key == nullptr)
        return AES_MISSING_KEY;
    if (keyLength != 16 && keyLength != 24 && keyLength != 32)
        return AES_BAD_KEY_LENGTH;
    if (iv != nullptr)
        std::memcpy(s.iv, iv, sizeof s.iv);
    crypto::expandEncryptionKeys(key, keyLength, s.keys);
    if (direction == kDecrypt && mode != AES_MODE_CFB128) {
        const crypto::AesKeys forward = s.keys;
        crypto::makeDecryptionKeys(forward, s.keys);
    }
    return AES_OK;
}

// The whole blocks of one message, in the state's mode and direction.
void runBlocks(const AesState& s, const unsigned char* in, unsigned char* out, size_t blocks) {
    const crypto::AesKernels& k = *crypto::kernels().aes;
    const bool decrypt = s.direction == kDecrypt;
    switch (s.mode) {
    case AES_MODE_ECB:
        (decrypt ? k.ecbDecrypt : k.ecbEncrypt)(s.keys, in, out, blocks);
        break;
    case AES_MODE_CBC:
        (decrypt ? k.cbcDecrypt : k.cbcEncrypt)(s.keys, s.iv, in, out, blocks);
        break;
    default:
        (decrypt ? k.cfbDecrypt : k.cfbEncrypt)(s.keys, s.iv, in, out, blocks);
        break;
    }
}

int blockOperation(const AesState& s, int direction, const unsigned char* input, int length,
                   unsigned char* output) {
    if (s.status != AES_OK || s.direction != direction)
        return AES_NOT_INITIALISED;
    if (length < 16)
        return 0;
    if (input == nullptr || output == nullptr)
        return AES_BAD_DATA;
    const size_t blocks = static_cast<size_t>(length) / 16;
    runBlocks(s, input, output, blocks);
    return static_cast<int>(blocks * 16);
}

bool paddedMode(AES_Mode mode) {
    return mode == AES_MODE_ECB || mode == AES_MODE_CBC;
}

} // namespace

AES_Base::AES_Base(AES_Mode mode, int direction, const unsigned char* key, int keyLength,
                   const unsigned char* iv)
    : state_(new AesState) {
    state_->status = initialise(*state_, mode, direction, key, keyLength, iv);
}

AES_Base::AES_Base(const AES_Base& other) : state_(new AesState(*other.state_)) {}

AES_Base& AES_Base::operator=(const AES_Base& other) {
    if (this != &other)
        *state_ = *other.state_;
    return *this;
}

AES_Base::~AES_Base() {
    // Round keys are secrets: clear them before the memory goes back to the heap.
    volatile unsigned char* p = reinterpret_cast<volatile unsigned char*>(state_);
    for (size_t i = 0; i < sizeof(AesState); ++i)
        p[i] = 0;
    delete state_;
}

int AES_Base::getInitStatus() const {
    return state_->status;
}
AES_Mode AES_Base::getMode() const {
    return state_->mode;
}
int AES_Base::getDirection() const {
    return state_->direction;
}

int AES_Base::blockEncrypt(const unsigned char* input, int inputLength,
                           unsigned char* output) const {
    return blockOperation(*state_, kEncrypt, input, inputLength, output);
}

int AES_Base::blockDecrypt(const unsigned char* input, int inputLength,
                           unsigned char* output) const {
    return blockOperation(*state_, kDecrypt, input, inputLength, output);
}

int AES_Base::padEncrypt(const unsigned char* input, int inputOctets, unsigned char* output) const {
    const AesState& s = *state_;
    if (s.status != AES_OK || s.direction != kEncrypt)
        return AES_NOT_INITIALISED;
    if (inputOctets < 0)
        return 0;
    if (!paddedMode(s.mode))
        return AES_UNSUPPORTED_MODE;
    if (output == nullptr || (input == nullptr && inputOctets > 0))
        return AES_BAD_DATA;
    const size_t whole = static_cast<size_t>(inputOctets) / 16;
    const size_t rest = static_cast<size_t>(inputOctets) % 16;

    // The final block: the remaining bytes, then 16 - rest bytes of value 16 - rest. It is
    // built before anything is written, so that output may be the input buffer.
    unsigned char final[16];
    if (rest != 0)
        std::memcpy(final, input + 16 * whole, rest);
    std::memset(final + rest, static_cast<int>(16 - rest), 16 - rest);

    const crypto::AesKernels& k = *crypto::kernels().aes;
    if (s.mode == AES_MODE_ECB) {
        k.ecbEncrypt(s.keys, input, output, whole);
        k.ecbEncrypt(s.keys, final, output + 16 * whole, 1);
    } else {
        k.cbcEncrypt(s.keys, s.iv, input, output, whole);
        k.cbcEncrypt(s.keys, whole != 0 ? output + 16 * (whole - 1) : s.iv, final,
                     output + 16 * whole, 1);
    }
    return static_cast<int>(16 * (whole + 1));
}

int AES_Base::padDecrypt(const unsigned char* input, int inputOctets, unsigned char* output) const {
    const AesState& s = *state_;
    if (s.status != AES_OK || s.direction != kDecrypt)
        return AES_NOT_INITIALISED;
    if (inputOctets < 0)
        return 0;
    if (!paddedMode(s.mode))
        return AES_UNSUPPORTED_MODE;
    if (inputOctets == 0 || inputOctets % 16 != 0 || input == nullptr || output == nullptr)
        return AES_BAD_DATA;
    const size_t blocks = static_cast<size_t>(inputOctets) / 16;

    // Decrypt the final block on its own first (ECB and CBC both allow it: it depends only on
    // itself and the ciphertext block before it) and check its padding before anything is
    // written.
    const crypto::AesKernels& k = *crypto::kernels().aes;
    const unsigned char* lastIn = input + 16 * (blocks - 1);
    unsigned char last[16];
    if (s.mode == AES_MODE_ECB)
        k.ecbDecrypt(s.keys, lastIn, last, 1);
    else
        k.cbcDecrypt(s.keys, blocks > 1 ? lastIn - 16 : s.iv, lastIn, last, 1);

    // A valid final byte n is 1..16 and the last n bytes all equal n. Checked without branches
    // on the data, so the time taken tells nothing about where the padding went wrong.
    const unsigned n = last[15];
    unsigned bad = static_cast<unsigned>(n - 1) >> 8 | (16u - n) >> 8; // n = 0 or n > 16
    for (unsigned i = 0; i < 16; ++i) {
        const unsigned inPadding = (i + n - 16) >> 31 ^ 1u; // i >= 16 - n
        bad |= inPadding & static_cast<unsigned>((last[i] ^ n) != 0);
    }
    if (bad != 0)
        return AES_BAD_DATA;

    const size_t kept = 16 - n;
    if (blocks > 1)
        runBlocks(s, input, output, blocks - 1);
    std::memcpy(output + 16 * (blocks - 1), last, kept);
    return static_cast<int>(16 * (blocks - 1) + kept);
}

AES_Encryption::AES_Encryption(AES_Mode mode, const unsigned char* key, int keyLength,
                               const unsigned char* iv)
    : AES_Base(mode, kEncrypt, key, keyLength, iv) {}
AES_Encryption::~AES_Encryption() = default;

AES_Decryption::AES_Decryption(AES_Mode mode, const unsigned char* key, int keyLength,
                               const unsigned char* iv)
    : AES_Base(mode, kDecrypt, key, keyLength, iv) {}
AES_Decryption::~AES_Decryption() = default;

} // namespace ZtCommonNS
