// ztc: command-line access to ZtCommon, one subcommand per library family.
#include <algorithm>
#include <cstring>
#include <iostream>
#include <map>

#include "command.h"
#include "ztcommon/foundation.h"

namespace {
std::map<std::string, const ZtcCommand*>& registry() {
    static std::map<std::string, const ZtcCommand*> commands;
    return commands;
}

void printHelp() {
    std::cout << "Usage: ztc COMMAND [ARGS...]\n"
                 "       ztc --help | --version\n\n"
                 "Command-line access to the ZtCommon library.\n\nCommands:\n";
    for (const ZtcCommand* c : ztcCommands())
        std::cout << "  " << c->name << ' ' << c->usage << "\n      " << c->summary << '\n';
}
} // namespace

ZtcCommand::ZtcCommand(const char* name_, const char* usage_, const char* summary_,
                       Handler handler_)
    : name(name_), usage(usage_), summary(summary_), handler(handler_) {
    registry()[name] = this;
}

std::vector<const ZtcCommand*> ztcCommands() {
    std::vector<const ZtcCommand*> list;
    for (const auto& entry : registry())
        list.push_back(entry.second);
    return list;
}

std::ostream& operator<<(std::ostream& out, const icu::UnicodeString& text) {
    std::string bytes;
    return out << text.toUTF8String(bytes);
}

int ztcUsageError(const char* command, const std::string& message) {
    std::cerr << "ztc " << command << ": " << message << "\n(see ztc --help)\n";
    return 2;
}

int main(int argc, char** argv) {
    if (argc < 2 || !std::strcmp(argv[1], "--help") || !std::strcmp(argv[1], "-h")) {
        printHelp();
        return argc < 2 ? 2 : 0;
    }
    if (!std::strcmp(argv[1], "--version")) {
        std::cout << "ztc (ZtCommon) " << ZTC_VERSION << '\n';
        return 0;
    }
    auto found = registry().find(argv[1]);
    if (found == registry().end()) {
        std::cerr << "ztc: unknown command '" << argv[1] << "' (see ztc --help)\n";
        return 2;
    }
    std::vector<std::string> args(argv + 2, argv + argc);
    try {
        return found->second->handler(args);
    } catch (const ZtCommonNS::ZtError& e) {
        std::cerr << "ztc " << argv[1] << ": error " << e.getErrorCode() << ": " << e.getMessage()
                  << '\n';
        if (!e.getSource().isEmpty())
            std::cerr << "  raised by " << e.getSource() << '\n';
        return 1;
    } catch (const std::exception& e) {
        std::cerr << "ztc " << argv[1] << ": " << e.what() << '\n';
        return 1;
    }
}
