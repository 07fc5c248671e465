// Shared helpers of the counter tests: reading the data files and the tables of expected
// markers, and turning the table's texts into ICU strings.
#pragma once

#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <unicode/unistr.h>

namespace counter_test {

inline std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// Rows of a tab-separated table, keyed by the header's column names; lines starting with '#'
// are comments.
inline std::vector<std::map<std::string, std::string>> readTable(const std::string& path) {
    std::istringstream in(readFile(path));
    std::vector<std::map<std::string, std::string>> rows;
    std::vector<std::string> header;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#')
            continue;
        std::vector<std::string> cells;
        std::istringstream fields(line);
        for (std::string cell; std::getline(fields, cell, '\t');)
            cells.push_back(cell);
        if (header.empty()) {
            header = cells;
            continue;
        }
        std::map<std::string, std::string> row;
        for (size_t i = 0; i < header.size(); ++i)
            row[header[i]] = i < cells.size() ? cells[i] : std::string();
        rows.push_back(row);
    }
    return rows;
}

// "U+0031 U+0032" to text.
inline icu::UnicodeString fromCodePoints(const std::string& list) {
    icu::UnicodeString out;
    std::istringstream in(list);
    for (std::string item; in >> item;) {
        if (item.rfind("U+", 0) == 0)
            out.append(static_cast<UChar32>(std::stoul(item.substr(2), nullptr, 16)));
    }
    return out;
}

inline icu::UnicodeString fromU16(const std::u16string& s) {
    return {s.data(), static_cast<int32_t>(s.size())};
}

} // namespace counter_test
