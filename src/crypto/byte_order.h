// Loads and stores of 32- and 64-bit words in a given byte order, at any alignment.
#pragma once

#include <cstdint>
#include <cstring>

namespace ZtCommonNS::crypto {

inline uint32_t loadBe32(const unsigned char* p) {
    uint32_t v;
    std::memcpy(&v, p, 4);
    return __builtin_bswap32(v);
}
inline uint64_t loadBe64(const unsigned char* p) {
    uint64_t v;
    std::memcpy(&v, p, 8);
    return __builtin_bswap64(v);
}
inline uint32_t loadLe32(const unsigned char* p) {
    uint32_t v;
    std::memcpy(&v, p, 4);
    return v;
}
inline void storeBe32(unsigned char* p, uint32_t v) {
    v = __builtin_bswap32(v);
    std::memcpy(p, &v, 4);
}
inline void storeBe64(unsigned char* p, uint64_t v) {
    v = __builtin_bswap64(v);
    std::memcpy(p, &v, 8);
}
inline void storeLe32(unsigned char* p, uint32_t v) {
    std::memcpy(p, &v, 4);
}
inline void storeLe64(unsigned char* p, uint64_t v) {
    std::memcpy(p, &v, 8);
}

} // namespace ZtCommonNS::crypto
