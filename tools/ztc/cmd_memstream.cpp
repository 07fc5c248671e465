// ztc memstream: loads a file into a ZtMemStream as a lazy source and reports what the stream
// sees: length, blocks, text lines, the OpenType checksum, the MD5 digest and where a text
// first occurs.
#include <cstdio>
#include <fstream>
#include <iostream>

#include "command.h"
#include "ztcommon/stream.h"

namespace {
std::string hex(const std::string& bytes) {
    std::string out;
    char digits[3];
    for (unsigned char c : bytes) {
        std::snprintf(digits, sizeof digits, "%02x", c);
        out += digits;
    }
    return out;
}

int run(const std::vector<std::string>& args) {
    std::string file;
    std::string find;
    size_t grow = ZtCommonNS::ZtMemStreamBuf::DEFAULT_GROW_BYTES;
    for (size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--grow" && i + 1 < args.size()) {
            try {
                grow = std::stoul(args[++i]);
            } catch (const std::exception&) {
                grow = 0;
            }
            if (grow == 0)
                return ztcUsageError("memstream", "--grow needs a positive block size");
        } else if (args[i] == "--find" && i + 1 < args.size()) {
            find = args[++i];
        } else if (file.empty()) {
            file = args[i];
        } else {
            return ztcUsageError("memstream", "unexpected argument '" + args[i] + "'");
        }
    }
    if (file.empty())
        return ztcUsageError("memstream", "no file given");
    auto* in = new std::ifstream(file, std::ios::binary);
    if (!in->is_open()) {
        delete in;
        return ztcUsageError("memstream", "cannot open '" + file + "'");
    }
    // The stream owns the file stream and pulls it block by block.
    ZtCommonNS::ZtMemStream stream(in, grow, true);
    std::cout << "bytes:            " << stream.length() << '\n';
    std::cout << "blocks:           " << stream.getMemBuffer().getBlockCount() << " of " << grow
              << " bytes\n";

    size_t lines = 0;
    for (stream.begin(); stream.peek() != EOF; stream.seekEOL())
        ++lines;
    std::cout << "text lines:       " << lines << " (empty lines not counted)\n";

    char checksum[16];
    std::snprintf(checksum, sizeof checksum, "0x%08x", stream.calcOTFTableChecksum());
    std::cout << "table checksum:   " << checksum << '\n';
    stream.begin();
    std::cout << "MD5:              " << hex(stream.getMD5()) << '\n';

    if (!find.empty()) {
        stream.begin();
        std::cout << "first '" << find << "': ";
        if (stream.searchSeek(find.data(), find.size()))
            std::cout << "at byte " << stream.tellg() << '\n';
        else
            std::cout << "not found\n";
    }
    return 0;
}

ZtcCommand command{"memstream", "[--grow BYTES] [--find TEXT] FILE",
                   "Loads FILE into a memory stream and shows its length, blocks, lines, "
                   "table checksum, MD5 and where TEXT first occurs.",
                   &run};
} // namespace
