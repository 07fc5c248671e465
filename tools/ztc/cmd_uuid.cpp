// ztc uuid: prints random (version 4) UUIDs made by ZtUUID.
#include <charconv>
#include <iostream>

#include "command.h"
#include "ztcommon/crypto.h"

namespace {

int run(const std::vector<std::string>& args) {
    long count = 1;
    bool dashes = true;
    for (size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "-n" && i + 1 < args.size()) {
            const std::string& text = args[++i];
            const auto [end, error] =
                std::from_chars(text.data(), text.data() + text.size(), count);
            if (error != std::errc() || end != text.data() + text.size() || count < 1)
                return ztcUsageError("uuid", "-n needs a positive number, not '" + text + "'");
        } else if (args[i] == "--no-dashes") {
            dashes = false;
        } else {
            return ztcUsageError("uuid", "unexpected argument '" + args[i] + "'");
        }
    }
    for (long i = 0; i < count; ++i)
        std::cout << ZtCommonNS::ZtUUID().toString(dashes) << '\n';
    return 0;
}

ZtcCommand command{"uuid", "[-n N] [--no-dashes]",
                   "Prints N (default 1) random UUIDs, their bytes in memory order.", &run};

} // namespace
