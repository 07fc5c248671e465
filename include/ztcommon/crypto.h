// Hashes, ciphers and identifiers of ZtCommon: MD5, SHA-1, SHA-256, SHA-384, SHA-512, AES
// (FIPS-197) with block and padded operations, RC4, and random UUIDs.
//
// Everything here is the library's own code. On processors that have them, the SHA extensions
// (SHA-1, SHA-256) and AES-NI are used; the choice is made once at run time, and the portable
// code gives identical results everywhere else.
#pragma once

#include <cstdint>

#include <unicode/unistr.h>

#include "ztcommon/export.h"

namespace ZtCommonNS {

using icu::UnicodeString;

// ---------------------------------------------------------------------------------------------
// AES

// Modes of operation. An AES_Mode holds any int: a value outside 0..2 makes initialisation fail.
enum AES_Mode : int {
    AES_MODE_ECB = 0, // electronic codebook
    AES_MODE_CBC = 1, // cipher block chaining
    // Full-block cipher feedback (CFB-128, NIST SP 800-38A): C[i] = P[i] ^ E(C[i-1]), with the
    // initialisation vector as C[-1]. Only the block operations accept it; the padded ones
    // return AES_UNSUPPORTED_MODE.
    AES_MODE_CFB128 = 2,
};

// Status numbers of the AES operations. The operations never throw.
enum AES_Status : int {
    AES_OK = 0,
    AES_UNSUPPORTED_MODE = -1, // padded operation in a mode other than ECB or CBC;
                               // at initialisation: a mode outside 0..2
    AES_BAD_DIRECTION = -2,    // initialisation only: a direction other than 0 or 1
    AES_BAD_KEY_LENGTH = -3,   // initialisation only: a key length other than 16, 24 or 32
    AES_MISSING_KEY = -4,      // initialisation only: a null key
    AES_NOT_INITIALISED = -5,  // initialisation failed, or the operation is of the other
                               // direction
    AES_BAD_DATA = -6,         // a null buffer, a ciphertext length that is not a positive
                               // multiple of 16, or malformed padding
};

struct AesState;

// An AES cipher for one key, one mode and one direction (0 encrypt, 1 decrypt). A key of 16, 24
// or 32 bytes gives 10, 12 or 14 rounds; a null initialisation vector means sixteen zero bytes.
// When initialisation fails (see getInitStatus) every operation returns AES_NOT_INITIALISED.
//
// Every call is a message of its own: chaining (CBC, CFB-128) starts from the initialisation
// vector given at construction each time, so calls do not depend on one another and an object
// may be reused for any number of messages under the same key and vector. The operations
// change nothing in the object, so several threads may use one object at once.
//
// Buffers: output may be the very same buffer as input (in-place operation); other overlaps
// are not allowed.
class ZT_EXPORT AES_Base {
public:
    AES_Base(const AES_Base& other);
    AES_Base& operator=(const AES_Base& other);
    virtual ~AES_Base();

    // Encrypts the whole 16-byte blocks of input (trailing bytes past the last whole block are
    // ignored and not written). Returns the number of bytes written, inputLength rounded down to
    // a multiple of 16 (0 when inputLength is below 16, negative included);
    // AES_NOT_INITIALISED for a failed or decrypting cipher; AES_BAD_DATA for a null input or
    // output when there is a block to process.
    int blockEncrypt(const unsigned char* input, int inputLength, unsigned char* output) const;
    // The counterpart of blockEncrypt for a decrypting cipher, with the same return values.
    int blockDecrypt(const unsigned char* input, int inputLength, unsigned char* output) const;

    // Encrypts inputOctets bytes, then a final block completed with padding bytes whose value is
    // their count (1 to 16: a whole block of sixteen 16s when inputOctets is a multiple of 16).
    // output needs room for 16 * (inputOctets / 16 + 1) bytes. Returns that number of bytes;
    // AES_NOT_INITIALISED for a failed or decrypting cipher; 0 for a negative inputOctets;
    // AES_UNSUPPORTED_MODE in CFB-128 mode; AES_BAD_DATA for a null output, or a null input with
    // inputOctets above 0.
    int padEncrypt(const unsigned char* input, int inputOctets, unsigned char* output) const;

    // Decrypts what padEncrypt produced and removes the padding. Returns the number of message
    // bytes written to output (inputOctets - 16 + the bytes kept from the final block, so at
    // most inputOctets - 1: output needs room for that many; nothing past the returned count is
    // written).
    // Returns AES_NOT_INITIALISED for a failed or encrypting cipher; 0 for a negative
    // inputOctets; AES_UNSUPPORTED_MODE in CFB-128 mode; AES_BAD_DATA when inputOctets is not a
    // positive multiple of 16, a buffer is null, or the padding is malformed: a final byte n
    // outside 1..16, or any of the last n bytes different from n. The padding is checked before
    // anything is written, so a rejected input leaves output untouched. The check takes the same
    // time whatever the padding holds.
    int padDecrypt(const unsigned char* input, int inputOctets, unsigned char* output) const;

    // AES_OK when the cipher was initialised, otherwise the reason it was not: one of
    // AES_UNSUPPORTED_MODE, AES_BAD_DIRECTION, AES_BAD_KEY_LENGTH, AES_MISSING_KEY.
    int getInitStatus() const;
    AES_Mode getMode() const;
    // 0 encrypt, 1 decrypt.
    int getDirection() const;

protected:
    AES_Base(AES_Mode mode, int direction, const unsigned char* key, int keyLength,
             const unsigned char* iv);

private:
    AesState* state_;
};

// AES in the encrypting direction: blockEncrypt and padEncrypt.
class ZT_EXPORT AES_Encryption : public AES_Base {
public:
    AES_Encryption(AES_Mode mode, const unsigned char* key, int keyLength,
                   const unsigned char* iv = nullptr);
    AES_Encryption(const AES_Encryption&) = default;
    AES_Encryption& operator=(const AES_Encryption&) = default;
    ~AES_Encryption() override;
};

// AES in the decrypting direction: blockDecrypt and padDecrypt.
class ZT_EXPORT AES_Decryption : public AES_Base {
public:
    AES_Decryption(AES_Mode mode, const unsigned char* key, int keyLength,
                   const unsigned char* iv = nullptr);
    AES_Decryption(const AES_Decryption&) = default;
    AES_Decryption& operator=(const AES_Decryption&) = default;
    ~AES_Decryption() override;
};

// ---------------------------------------------------------------------------------------------
// RC4

// An RC4 key stream: the two indices and the 256-entry permutation, in 32-bit entries.
class ZT_EXPORT RC4_KEY {
public:
    // The standard key schedule over keyLength bytes of key, cycling through the key. A null
    // key or a length below 1 gives the schedule of the one-byte key 0.
    RC4_KEY(int keyLength, const unsigned char* key);

    // output = input ^ key stream, continuing from where the previous call stopped. Nothing
    // happens for a length below 1 or a null buffer. output may be the same buffer as input.
    void RC4(int length, const unsigned char* input, unsigned char* output);

private:
    uint32_t x_;
    uint32_t y_;
    uint32_t data_[256];
};

// ---------------------------------------------------------------------------------------------
// Digests
//
// Each context starts a new digest when constructed. Update adds bytes (a null data pointer
// adds nothing); Final writes the digest (nothing when the pointer is null) and restarts the
// context, so that it is ready for the next message. Contexts are plain values: copying one
// forks the running digest.

class ZT_EXPORT MD5_CTX {
public:
    static constexpr int DIGEST_LENGTH = 16;
    MD5_CTX();
    void Update(const unsigned char* data, uint64_t length);
    void Final(unsigned char* digest);

private:
    uint32_t state_[4];
    uint64_t length_; // bytes so far
    unsigned char buffer_[64];
};

// SHA-1. Update and Final return a status: SHA1_SUCCESS, or SHA1_NULL when data is null with a
// length above 0 (nothing is added) or digest is null (the context is still restarted).
class ZT_EXPORT SHA1_CTX {
public:
    static constexpr int DIGEST_LENGTH = 20;
    enum Status : int { SHA1_SUCCESS = 0, SHA1_NULL = 1 };
    SHA1_CTX();
    int Update(const unsigned char* data, uint32_t length);
    int Final(unsigned char* digest);

private:
    uint32_t state_[5];
    uint64_t length_;
    unsigned char buffer_[64];
};

class ZT_EXPORT SHA256_CTX {
public:
    static constexpr int DIGEST_LENGTH = 32;
    SHA256_CTX();
    void Update(const unsigned char* data, uint64_t length);
    void Final(unsigned char* digest);

private:
    uint32_t state_[8];
    uint64_t length_;
    unsigned char buffer_[64];
};

class ZT_EXPORT SHA512_CTX {
public:
    static constexpr int DIGEST_LENGTH = 64;
    SHA512_CTX();
    void Update(const unsigned char* data, uint64_t length);
    void Final(unsigned char* digest);

protected:
    // The SHA-512 machinery with other initial values and a digest cut to digestLength bytes.
    SHA512_CTX(const uint64_t* initialState, int digestLength);

private:
    void restart();

    const uint64_t* initial_;
    int digestLength_;
    uint64_t state_[8];
    uint64_t length_; // bytes so far; the 128-bit bit count of the padding is derived from it
    unsigned char buffer_[128];
};

// SHA-384: SHA-512 with its own initial values, the digest cut to 48 bytes.
class ZT_EXPORT SHA384_CTX : public SHA512_CTX {
public:
    static constexpr int DIGEST_LENGTH = 48;
    SHA384_CTX();
};

// ---------------------------------------------------------------------------------------------
// UUID

// A random (version 4) UUID. The 16 bytes are laid out as the operating system's GUID structure
// holds them in memory: the first three fields little-endian, so the version nibble 4 is the
// high nibble of byte 7 and the variant bits 10 are the top bits of byte 8.
class ZT_EXPORT ZtUUID {
public:
    static constexpr int LENGTH = 16;
    // 16 fresh random bytes from the kernel's generator. Throws ZtError only if the system has
    // no source of random bytes at all.
    ZtUUID();
    // A UUID with the given 16 bytes, as they are (for example one read back from storage); a
    // null pointer gives sixteen zero bytes.
    explicit ZtUUID(const unsigned char* bytes);

    // The bytes in memory order, two upper-case hexadecimal digits each; with dashes, a "-"
    // before bytes 4, 6, 8 and 10 (36 characters; 32 without).
    UnicodeString toString(bool withDashes = true) const;
    // The exclusive-or of the four 32-bit words.
    uint32_t toUint32() const;
    const unsigned char* getBytes() const { return bytes_; }

    bool operator==(const ZtUUID& other) const;

private:
    unsigned char bytes_[LENGTH];
};

} // namespace ZtCommonNS
