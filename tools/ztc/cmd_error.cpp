// ztc error: decodes a ZtError code into its category, severity and flags.
#include <iostream>

#include "command.h"
#include "ztcommon/foundation.h"

namespace {
const char* levelName(ZtCommonNS::ZtErrorLevel level) {
    switch (level) {
    case ZtCommonNS::ZT_ERROR_LEVEL_FATAL:
        return "fatal";
    case ZtCommonNS::ZT_ERROR_LEVEL_ERROR:
        return "error";
    case ZtCommonNS::ZT_ERROR_LEVEL_WARNING:
        return "warning";
    case ZtCommonNS::ZT_ERROR_LEVEL_INFO:
        return "info";
    }
    return "?";
}

int run(const std::vector<std::string>& args) {
    if (args.empty())
        return ztcUsageError("error", "give one or more error codes (decimal or 0x hex)");
    for (const std::string& arg : args) {
        size_t used = 0;
        unsigned long value = 0;
        try {
            value = std::stoul(arg, &used, 0);
        } catch (const std::exception&) {
            used = 0;
        }
        if (used != arg.size() || value > 0xFFFF)
            return ztcUsageError("error", "'" + arg + "' is not a 16-bit code");
        ZtCommonNS::ZtError error(static_cast<unsigned short>(value), u"");
        std::cout << arg << ": category " << (error.getErrorCategory() >> 10) << ", number "
                  << (value & ZtCommonNS::ZT_ERROR_NUMBER_MASK) << ", level "
                  << levelName(error.getErrorLevel());
        if (error.getErrorLevel() == ZtCommonNS::ZT_ERROR_LEVEL_FATAL &&
            (value & ZtCommonNS::ZT_ERROR_LOWEST_BIT))
            std::cout << " (input-document error)";
        std::cout << '\n';
    }
    return 0;
}

ZtcCommand command{"error", "CODE...", "Decodes error codes into category, number and level.",
                   &run};
} // namespace
