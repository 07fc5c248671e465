// Shared helpers of the text tests: readable ICU strings in failure messages and the reader of
// the expectation tables under tests/text/data.
#pragma once

#include <fstream>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/uscript.h>

U_NAMESPACE_BEGIN
inline void PrintTo(const UnicodeString& s, std::ostream* out) {
    std::string utf8;
    s.toUTF8String(utf8);
    *out << '"' << utf8 << '"';
}
U_NAMESPACE_END

// The text in UTF-8, for messages.
inline std::string utf8(const icu::UnicodeString& s) {
    std::string out;
    return s.toUTF8String(out);
}

using Row = std::vector<std::string>;

// The tab-separated rows of tests/text/data/<file>; blank lines and lines starting with '#'
// are skipped. Empty cells are kept: an empty text is a valid input.
inline std::vector<Row> dataRows(const std::string& file) {
    std::ifstream in(std::string(ZT_SOURCE_DIR) + "/tests/text/data/" + file, std::ios::binary);
    EXPECT_TRUE(in.good()) << file;
    std::vector<Row> rows;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#')
            continue;
        Row cells(1);
        for (char c : line) {
            if (c == '\t')
                cells.emplace_back();
            else
                cells.back() += c;
        }
        rows.push_back(cells);
    }
    EXPECT_FALSE(rows.empty()) << file;
    return rows;
}

// A table cell as text: UTF-8 with ICU's backslash escapes (\uD800 is a lone surrogate).
inline icu::UnicodeString text(const std::string& cell) {
    return icu::UnicodeString::fromUTF8(cell).unescape();
}

// A hexadecimal code point ("3042", "-1").
inline UChar32 hex(const std::string& cell) {
    return static_cast<UChar32>(std::stol(cell, nullptr, 16));
}

// The code points of a cell of blank-separated hexadecimal numbers.
inline std::vector<UChar32> hexList(const std::string& cell) {
    std::istringstream in(cell);
    std::vector<UChar32> out;
    for (std::string item; in >> item;)
        out.push_back(hex(item));
    return out;
}

// A script code from its ISO 15924 short name ("Latn"), or -1 for an unknown name.
inline int scriptCode(const std::string& name) {
    for (int code = 0; code < USCRIPT_CODE_LIMIT; ++code) {
        const char* shortName = uscript_getShortName(static_cast<UScriptCode>(code));
        if (shortName != nullptr && name == shortName)
            return code;
    }
    return -1;
}
