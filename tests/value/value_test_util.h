// Small helpers shared by the value tests.
#pragma once

#include <cstdlib>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "../foundation/caught_error.h"
#include "ztcommon/value.h"

namespace ZtCommonNS::test {

// The unit codes of the absolute lengths, written out by hand.
inline const std::set<int> kAbsoluteUnits = {6, 7, 8, 9, 10, 11, 12, 26, 27, 29, 50, 51};

inline std::string utf8(const UnicodeString& text) {
    std::string out;
    return text.toUTF8String(out);
}

inline UnicodeString text(const std::string& s) {
    return UnicodeString::fromUTF8(s);
}

// The rows of a tab-separated file in tests/value/data ('#' lines are comments), each padded
// with empty cells to `columns`; with `kind`, only the rows whose first cell is `kind`.
inline std::vector<std::vector<std::string>> readRows(const char* name, size_t columns,
                                                      const std::string& kind = "") {
    std::ifstream in(std::string(ZT_SOURCE_DIR "/tests/value/data/") + name);
    EXPECT_TRUE(in) << name;
    std::vector<std::vector<std::string>> rows;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#')
            continue;
        std::istringstream cells(line);
        std::vector<std::string>& row = rows.emplace_back();
        for (std::string cell; std::getline(cells, cell, '\t');)
            row.push_back(cell);
        row.resize(columns);
        if (!kind.empty() && row[0] != kind)
            rows.pop_back();
    }
    return rows;
}

// A float written as strtof reads it ("nan" and "inf" included).
inline float toFloat(const std::string& s) {
    return std::strtof(s.c_str(), nullptr);
}

} // namespace ZtCommonNS::test
