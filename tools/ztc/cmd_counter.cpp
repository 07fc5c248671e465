// ztc counter: the marker text of a number, or of a run of numbers, in a predefined counter
// style; each line shows the value, the plain representation and the full marker (in
// brackets, so that the suffix's spaces show).
#include <iostream>
#include <string>

#include "command.h"
#include "ztcommon/counter.h"

namespace {

using ZtCommonNS::ZtUtil;

bool parseValue(const std::string& text, long long& value) {
    size_t used = 0;
    try {
        value = std::stoll(text, &used, 10);
    } catch (const std::exception&) {
        return false;
    }
    return used == text.size();
}

int run(const std::vector<std::string>& args) {
    if (args.size() < 2 || args.size() > 3)
        return ztcUsageError("counter", "give a style name and one or two numbers");
    const ZtUtil::CounterStyle* style = ZtUtil::getPredefinedCounterStyle(
        ZtCommonNS::ZtName(icu::UnicodeString::fromUTF8(args[0])), nullptr);
    if (!style)
        return ztcUsageError("counter", "'" + args[0] + "' is not a predefined counter style");
    long long first = 0;
    long long last = 0;
    if (!parseValue(args[1], first))
        return ztcUsageError("counter", "'" + args[1] + "' is not a 64-bit integer");
    last = first;
    if (args.size() == 3 && !parseValue(args[2], last))
        return ztcUsageError("counter", "'" + args[2] + "' is not a 64-bit integer");
    if (last < first)
        return ztcUsageError("counter", "the last number is below the first");
    for (long long value = first;; ++value) {
        // Fallback names are resolved among the predefined styles.
        std::cout << value << '\t'
                  << style->formatNumber(value, &ZtUtil::getPredefinedCounterStyle, nullptr, true)
                  << "\t["
                  << style->formatNumber(value, &ZtUtil::getPredefinedCounterStyle, nullptr, false)
                  << "]\n";
        if (value == last)
            break;
    }
    return 0;
}

ZtcCommand command{"counter", "STYLE N [M]",
                   "Prints the marker of N (or of N to M) in a predefined counter style, plain "
                   "and with prefix and suffix.",
                   &run};

} // namespace
