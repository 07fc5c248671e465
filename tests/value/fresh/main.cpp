// Checks that need a process in which no name has been interned yet; ctest runs each scenario
// in a process of its own.
#include <cstring>
#include <iostream>
#include <string>

#include "ztcommon/value.h"

using namespace ZtCommonNS;

namespace {

int failures = 0;

void expect(bool condition, const char* what) {
    if (!condition) {
        std::cerr << "FAILED: " << what << '\n';
        ++failures;
    }
}

std::string utf8(const UnicodeString& text) {
    std::string out;
    return text.toUTF8String(out);
}

void firstName() {
    // Before anything is interned there is no shared table and no run-time name.
    expect(ZtNameTable::getSharedNameString(NM_FIRST_RUNTIME).isEmpty(), "no name 2843 yet");
    expect(ZtName(u"inherit") == NM_inherit, "inherit is 820");
    ZtName first(u"zz-fresh-first");
    expect(first.getNameEnum() == 2843, "the first run-time name is 2843");
    expect(ZtName(u"zz-fresh-first").getNameEnum() == 2843, "interning it again gives 2843");
    expect(ZtName(u"zz-fresh-second").getNameEnum() == 2844, "the second is 2844");
    expect(utf8(first) == "zz-fresh-first", "2843 reads back");
}

void generateId() {
    ZtName id = ZtName::generateID();
    expect(utf8(id) == "-N2843", "generateID() gives -N2843");
    expect(id.getNameEnum() == 2843, "and takes number 2843");
    expect(utf8(ZtName::generateID(u"p")) == "-p2844", "the next one is -p2844");
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: test_value_fresh first-name|generate-id\n";
        return 2;
    }
    if (!std::strcmp(argv[1], "first-name"))
        firstName();
    else if (!std::strcmp(argv[1], "generate-id"))
        generateId();
    else {
        std::cerr << "unknown scenario " << argv[1] << '\n';
        return 2;
    }
    std::cout << argv[1] << (failures ? ": failed\n" : ": ok\n");
    return failures ? 1 : 0;
}
