// AES key expansion (FIPS-197, section 5.2) into the round-key layout both kernels use.
#pragma once

#include "crypto/cpu_dispatch.h"

namespace ZtCommonNS::crypto {

// keyLength is 16, 24 or 32.
void expandEncryptionKeys(const unsigned char* key, int keyLength, AesKeys& keys);
// The round keys of the equivalent inverse cipher, from the encryption keys.
void makeDecryptionKeys(const AesKeys& encryption, AesKeys& decryption);

} // namespace ZtCommonNS::crypto
