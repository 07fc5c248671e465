// Run-time choice between the hardware paths (SHA extensions, AES-NI) and the portable code.
// The processor is examined once; every call then goes through the table of the chosen path.
#pragma once

#include <cstddef>
#include <cstdint>

namespace ZtCommonNS::crypto {

// What the processor offers (and the operating system has enabled) of what this library uses.
struct CpuFeatures {
    bool aesni = false; // AES-NI with SSE4.1
    bool shani = false; // SHA extensions with SSE4.1
    bool bmi2 = false;  // rorx and andn, for the SHA-512 rounds beside AVX
    bool avx = false;   // AVX enabled by the operating system (its registers are saved)
};
const CpuFeatures& cpuFeatures();

// Block functions: process `blocks` consecutive blocks of data into the running state.
using Block32Fn = void (*)(uint32_t* state, const unsigned char* data, size_t blocks);
using Block64Fn = void (*)(uint64_t* state, const unsigned char* data, size_t blocks);

// AES round keys: (rounds + 1) 16-byte keys in the byte order of the state. Decryption keys are
// those of the equivalent inverse cipher (reversed, InvMixColumns applied to the middle ones),
// the form both the portable tables and AESDEC expect.
struct AesKeys {
    alignas(16) unsigned char bytes[15 * 16];
    int rounds;
};

// Bulk operations on whole 16-byte blocks. `iv` is the chaining value to start from.
struct AesKernels {
    void (*ecbEncrypt)(const AesKeys& k, const unsigned char* in, unsigned char* out, size_t n);
    void (*ecbDecrypt)(const AesKeys& k, const unsigned char* in, unsigned char* out, size_t n);
    void (*cbcEncrypt)(const AesKeys& k, const unsigned char* iv, const unsigned char* in,
                       unsigned char* out, size_t n);
    void (*cbcDecrypt)(const AesKeys& k, const unsigned char* iv, const unsigned char* in,
                       unsigned char* out, size_t n);
    // Cipher feedback uses the forward cipher in both directions, so both take encryption keys.
    void (*cfbEncrypt)(const AesKeys& k, const unsigned char* iv, const unsigned char* in,
                       unsigned char* out, size_t n);
    void (*cfbDecrypt)(const AesKeys& k, const unsigned char* iv, const unsigned char* in,
                       unsigned char* out, size_t n);
};

struct Kernels {
    Block32Fn sha1;
    Block32Fn sha256;
    Block64Fn sha512;
    const AesKernels* aes;
};

// The table in force: the hardware one where the processor allows, unless forcePortable is on.
const Kernels& kernels();

// For tests: run everything through the portable code (true) or back to the normal choice.
void forcePortable(bool on);

// The individual implementations, defined in their own files.
void sha1Portable(uint32_t* state, const unsigned char* data, size_t blocks);
void sha1ShaNi(uint32_t* state, const unsigned char* data, size_t blocks);
void sha256Portable(uint32_t* state, const unsigned char* data, size_t blocks);
void sha256ShaNi(uint32_t* state, const unsigned char* data, size_t blocks);
void sha512Portable(uint64_t* state, const unsigned char* data, size_t blocks);
void sha512Avx(uint64_t* state, const unsigned char* data, size_t blocks);
void md5Blocks(uint32_t* state, const unsigned char* data, size_t blocks);
extern const AesKernels aesPortableKernels;
extern const AesKernels aesNiKernels;

} // namespace ZtCommonNS::crypto
