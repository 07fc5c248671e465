// Published AES vectors: FIPS-197 appendix C (one block, each key size) and NIST SP 800-38A
// (four blocks in ECB, CBC and CFB-128, each key size).
#pragma once

#include <string>

#include "ztcommon/crypto.h"

namespace crypto_test {

struct AesVector {
    const char* name;
    ZtCommonNS::AES_Mode mode;
    std::string key, iv, plain, cipher;
};

inline const std::string kSpPlain = "6bc1bee22e409f96e93d7e117393172a"
                                    "ae2d8a571e03ac9c9eb76fac45af8e51"
                                    "30c81c46a35ce411e5fbc1191a0a52ef"
                                    "f69f2445df4f9b17ad2b417be66c3710";
inline const std::string kSpIv = "000102030405060708090a0b0c0d0e0f";
inline const std::string kSpKey128 = "2b7e151628aed2a6abf7158809cf4f3c";
inline const std::string kSpKey192 = "8e73b0f7da0e6452c810f32b809079e562f8ead2522c6b7b";
inline const std::string kSpKey256 =
    "603deb1015ca71be2b73aef0857d77811f352c073b6108d72d9810a30914dff4";

inline const AesVector kAesVectors[] = {
    {"FIPS-197 C.1", ZtCommonNS::AES_MODE_ECB, "000102030405060708090a0b0c0d0e0f", "",
     "00112233445566778899aabbccddeeff", "69c4e0d86a7b0430d8cdb78070b4c55a"},
    {"FIPS-197 C.2", ZtCommonNS::AES_MODE_ECB, "000102030405060708090a0b0c0d0e0f1011121314151617",
     "", "00112233445566778899aabbccddeeff", "dda97ca4864cdfe06eaf70a0ec0d7191"},
    {"FIPS-197 C.3", ZtCommonNS::AES_MODE_ECB,
     "000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f", "",
     "00112233445566778899aabbccddeeff", "8ea2b7ca516745bfeafc49904b496089"},
    {"SP 800-38A F.1.1 ECB-AES128", ZtCommonNS::AES_MODE_ECB, kSpKey128, "", kSpPlain,
     "3ad77bb40d7a3660a89ecaf32466ef97f5d3d58503b9699de785895a96fdbaaf"
     "43b1cd7f598ece23881b00e3ed0306887b0c785e27e8ad3f8223207104725dd4"},
    {"SP 800-38A F.1.3 ECB-AES192", ZtCommonNS::AES_MODE_ECB, kSpKey192, "", kSpPlain,
     "bd334f1d6e45f25ff712a214571fa5cc974104846d0ad3ad7734ecb3ecee4eef"
     "ef7afd2270e2e60adce0ba2face6444e9a4b41ba738d6c72fb16691603c18e0e"},
    {"SP 800-38A F.1.5 ECB-AES256", ZtCommonNS::AES_MODE_ECB, kSpKey256, "", kSpPlain,
     "f3eed1bdb5d2a03c064b5a7e3db181f8591ccb10d410ed26dc5ba74a31362870"
     "b6ed21b99ca6f4f9f153e7b1beafed1d23304b7a39f9f3ff067d8d8f9e24ecc7"},
    {"SP 800-38A F.2.1 CBC-AES128", ZtCommonNS::AES_MODE_CBC, kSpKey128, kSpIv, kSpPlain,
     "7649abac8119b246cee98e9b12e9197d5086cb9b507219ee95db113a917678b2"
     "73bed6b8e3c1743b7116e69e222295163ff1caa1681fac09120eca307586e1a7"},
    {"SP 800-38A F.2.3 CBC-AES192", ZtCommonNS::AES_MODE_CBC, kSpKey192, kSpIv, kSpPlain,
     "4f021db243bc633d7178183a9fa071e8b4d9ada9ad7dedf4e5e738763f69145a"
     "571b242012fb7ae07fa9baac3df102e008b0e27988598881d920a9e64f5615cd"},
    {"SP 800-38A F.2.5 CBC-AES256", ZtCommonNS::AES_MODE_CBC, kSpKey256, kSpIv, kSpPlain,
     "f58c4c04d6e5f1ba779eabfb5f7bfbd69cfc4e967edb808d679f777bc6702c7d"
     "39f23369a9d9bacfa530e26304231461b2eb05e2c39be9fcda6c19078c6a9d1b"},
    {"SP 800-38A F.3.13 CFB128-AES128", ZtCommonNS::AES_MODE_CFB128, kSpKey128, kSpIv, kSpPlain,
     "3b3fd92eb72dad20333449f8e83cfb4ac8a64537a0b3a93fcde3cdad9f1ce58b"
     "26751f67a3cbb140b1808cf187a4f4dfc04b05357c5d1c0eeac4c66f9ff7f2e6"},
    {"SP 800-38A F.3.15 CFB128-AES192", ZtCommonNS::AES_MODE_CFB128, kSpKey192, kSpIv, kSpPlain,
     "cdc80d6fddf18cab34c25909c99a417467ce7f7f81173621961a2b70171d3d7a"
     "2e1e8a1dd59b88b1c8e60fed1efac4c9c05f9f9ca9834fa042ae8fba584b09ff"},
    {"SP 800-38A F.3.17 CFB128-AES256", ZtCommonNS::AES_MODE_CFB128, kSpKey256, kSpIv, kSpPlain,
     "dc7e84bfda79164b7ecd8486985d386039ffed143b28b1c832113c6331e5407b"
     "df10132415e54b92a13ed0a8267ae2f975a385741ab9cef82031623d55b1e471"},
};

} // namespace crypto_test
