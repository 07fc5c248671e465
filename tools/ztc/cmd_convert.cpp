// ztc convert: re-encodes a file from one charset to another through ZtCStr.
#include <fstream>
#include <iostream>
#include <iterator>

#include "command.h"
#include "ztcommon/foundation.h"

namespace {
int run(const std::vector<std::string>& args) {
    std::string from = "UTF-8", to = "UTF-8", file;
    for (size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--from" && i + 1 < args.size())
            from = args[++i];
        else if (args[i] == "--to" && i + 1 < args.size())
            to = args[++i];
        else if (file.empty())
            file = args[i];
        else
            return ztcUsageError("convert", "unexpected argument '" + args[i] + "'");
    }
    if (file.empty())
        return ztcUsageError("convert", "no file given");
    std::ifstream in(file, std::ios::binary);
    if (!in)
        return ztcUsageError("convert", "cannot open '" + file + "'");
    std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};

    ZtCommonNS::ZtCStr text(bytes, from.c_str());
    const std::string& out = text.getBytes(to.c_str());
    std::cout.write(out.data(), static_cast<std::streamsize>(out.size()));
    std::cerr << "ztc convert: " << bytes.size() << " bytes of " << from << ", " << text.length()
              << " UTF-16 units, " << out.size() << " bytes of " << to << '\n';
    return 0;
}

ZtcCommand command{"convert", "[--from CHARSET] [--to CHARSET] FILE",
                   "Re-encodes FILE (default UTF-8 to UTF-8) and writes it to standard output.",
                   &run};
} // namespace
