// ztc name: the number of each name in the shared name table, or with --id the name of each
// number. Built-in names have fixed numbers; any other text gets the next run-time number of
// this process, marked as such.
#include <cstdint>
#include <iostream>
#include <string>

#include "command.h"
#include "ztcommon/value.h"

using namespace ZtCommonNS;

namespace {

int printNumbers(const std::vector<std::string>& args) {
    for (const std::string& arg : args) {
        ZtName name(UnicodeString::fromUTF8(arg));
        std::cout << arg << ' ' << name.getNameEnum();
        if (name.isEmpty())
            std::cout << " (the empty name)";
        else if (!name.isBuiltin())
            std::cout << " (run-time)";
        std::cout << '\n';
    }
    return 0;
}

int printNames(const std::vector<std::string>& args) {
    for (const std::string& arg : args) {
        size_t used = 0;
        long long value = 0;
        try {
            value = std::stoll(arg, &used, 10);
        } catch (const std::exception&) {
            used = 0;
        }
        if (used == 0 || used != arg.size() || value < INT32_MIN || value > INT32_MAX)
            return ztcUsageError("name", "'" + arg + "' is not a name number");
        ZtName name(static_cast<ZtNameEnum>(value));
        const UnicodeString& text = name;
        std::cout << value << ' ';
        if (text.isEmpty())
            std::cout << (value == 0 ? "(the empty name)" : "(no name)");
        else
            std::cout << text;
        std::cout << '\n';
    }
    return 0;
}

int run(const std::vector<std::string>& args) {
    if (!args.empty() && args[0] == "--id") {
        if (args.size() < 2)
            return ztcUsageError("name", "give one or more name numbers after --id");
        return printNames({args.begin() + 1, args.end()});
    }
    if (args.empty())
        return ztcUsageError("name", "give one or more names, or --id and numbers");
    return printNumbers(args);
}

ZtcCommand command{
    "name", "NAME... | --id NUMBER...",
    "Prints the number of each name (built-in 1 to 2842), or the name of each number.", &run};
} // namespace
