// ztc unicode-range: reads unicode-range texts (CSS syntax, with quoted literal characters) into
// one set and prints it merged, in its shortest form, or shows where parsing stopped.
#include <iostream>
#include <string>

#include "command.h"
#include "ztcommon/text.h"

namespace {

using namespace ZtCommonNS;

long long countCodePoints(const ZtUnicodeRange& set) {
    long long n = 0;
    for (const ZtUnicodeRange::URange& r : set)
        n += static_cast<long long>(r.last) - r.first + 1;
    return n;
}

int run(const std::vector<std::string>& args) {
    if (args.empty())
        return ztcUsageError("unicode-range", "give one or more unicode-range texts");
    ZtUnicodeRange set;
    for (const std::string& arg : args) {
        const UnicodeString text = UnicodeString::fromUTF8(arg);
        int32_t stop = 0;
        if (!set.parseUnicodeRange(text, &stop)) {
            const int32_t column = text.countChar32(0, stop);
            std::cerr << "ztc unicode-range: parsing stopped at character " << column + 1 << " of '"
                      << arg << "'\n  " << text << "\n  "
                      << std::string(static_cast<size_t>(column), ' ') << "^\n";
            if (!set.isEmpty())
                std::cerr << "  read before the error: " << set.toString() << '\n';
            return 1;
        }
    }
    std::cout << set.toString() << '\n';
    std::cout << set.getRangeCount() << (set.getRangeCount() == 1 ? " range, " : " ranges, ")
              << countCodePoints(set) << " code points" << (set.isFullRange() ? " (all)" : "")
              << '\n';
    return 0;
}

ZtcCommand command{"unicode-range", "TEXT...",
                   "Reads unicode-range texts into one set and prints it merged and shortest.",
                   &run};

} // namespace
