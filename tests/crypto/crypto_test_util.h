// Helpers of the crypto tests: hexadecimal text, seeded random bytes, the published vectors
// under data/, exactly-sized heap buffers (so that AddressSanitizer catches any access past
// either end), and the fixture that runs a test once through the hardware path and once through
// the portable one.
#pragma once

#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "crypto/cpu_dispatch.h"

namespace crypto_test {

using Bytes = std::vector<unsigned char>;

inline Bytes fromHex(const std::string& hex) {
    Bytes out;
    for (size_t i = 0; i + 1 < hex.size(); i += 2)
        out.push_back(static_cast<unsigned char>(std::stoi(hex.substr(i, 2), nullptr, 16)));
    return out;
}

inline std::string toHex(const unsigned char* p, size_t n) {
    static const char digits[] = "0123456789abcdef";
    std::string s;
    for (size_t i = 0; i < n; ++i) {
        s += digits[p[i] >> 4];
        s += digits[p[i] & 15];
    }
    return s;
}
inline std::string toHex(const Bytes& b) {
    return toHex(b.data(), b.size());
}

inline Bytes randomBytes(std::mt19937& rng, size_t n) {
    Bytes b(n);
    for (auto& x : b)
        x = static_cast<unsigned char>(rng());
    return b;
}

// The rows of a tab-separated file of tests/crypto/data ('#' starts a comment line). The
// caller checks the row count, so that a missing or cut file cannot pass unnoticed.
inline std::vector<std::vector<std::string>> readTable(const std::string& name) {
    std::ifstream in(std::string(ZT_SOURCE_DIR) + "/tests/crypto/data/" + name);
    EXPECT_TRUE(in.is_open()) << name;
    std::vector<std::vector<std::string>> rows;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#')
            continue;
        rows.emplace_back(1);
        for (char ch : line) {
            if (ch == '\t')
                rows.back().emplace_back();
            else
                rows.back().back().push_back(ch);
        }
    }
    return rows;
}

// A heap block of exactly n bytes (at least one is allocated so that the pointer is valid):
// reading or writing past its end, or before its start, is an ASan report.
class ExactBuffer {
public:
    explicit ExactBuffer(size_t n, unsigned char fill = 0xA5)
        : size_(n), data_(new unsigned char[n == 0 ? 1 : n]) {
        std::fill(data_.get(), data_.get() + (n == 0 ? 1 : n), fill);
    }
    explicit ExactBuffer(const Bytes& content) : ExactBuffer(content.size()) {
        std::copy(content.begin(), content.end(), data_.get());
    }
    unsigned char* data() { return data_.get(); }
    size_t size() const { return size_; }
    Bytes bytes(size_t n) const { return Bytes(data_.get(), data_.get() + n); }
    Bytes bytes() const { return bytes(size_); }

private:
    size_t size_;
    std::unique_ptr<unsigned char[]> data_;
};

// Runs each test of a suite derived from it twice: with the hardware kernels (where the
// processor has them) and with the portable ones.
class BothPaths : public ::testing::TestWithParam<bool> {
protected:
    void SetUp() override { ZtCommonNS::crypto::forcePortable(GetParam()); }
    void TearDown() override { ZtCommonNS::crypto::forcePortable(false); }
};

inline std::string pathName(const ::testing::TestParamInfo<bool>& info) {
    return info.param ? "Portable" : "Hardware";
}

} // namespace crypto_test

#define ZT_BOTH_PATHS(Suite)                                                                       \
    INSTANTIATE_TEST_SUITE_P(Paths, Suite, ::testing::Values(false, true), crypto_test::pathName)
