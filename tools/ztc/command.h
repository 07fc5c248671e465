// The ztc subcommand registry. Each subcommand lives in its own source file and registers
// itself with a static ZtcCommand object:
//   static ZtcCommand cmd{"name", "ARGS", "one-line summary", &run};
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include <unicode/unistr.h>

struct ZtcCommand {
    using Handler = int (*)(const std::vector<std::string>& args);

    ZtcCommand(const char* name, const char* usage, const char* summary, Handler handler);

    const char* name;
    const char* usage;
    const char* summary;
    Handler handler;
};

// Registered subcommands in name order.
std::vector<const ZtcCommand*> ztcCommands();

// Prints a UnicodeString as UTF-8.
std::ostream& operator<<(std::ostream& out, const icu::UnicodeString& text);

// Prints "ztc NAME: message" on standard error and returns the usage exit code 2.
int ztcUsageError(const char* command, const std::string& message);
