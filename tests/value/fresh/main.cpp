// Checks that need a process in which no name has been interned yet; ctest runs each scenario
// in a process of its own.
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

bool spells(ZtName name, const char* text) {
    std::string out;
    return name.getNameString().toUTF8String(out) == text;
}

void firstName() {
    // Before anything is interned there is no shared table and no run-time name.
    expect(ZtNameTable::getSharedNameString(NM_FIRST_RUNTIME).isEmpty(), "no name 2843 yet");
    expect(ZtName(u"inherit") == NM_inherit, "inherit is 820");
    ZtName first(u"zz-fresh-first");
    expect(first.getNameEnum() == 2843, "the first run-time name is 2843");
    expect(ZtName(u"zz-fresh-first").getNameEnum() == 2843, "interning it again gives 2843");
    expect(ZtName(u"zz-fresh-second").getNameEnum() == 2844, "the second is 2844");
    expect(spells(first, "zz-fresh-first"), "2843 reads back");
}

void generateId() {
    ZtName id = ZtName::generateID();
    expect(spells(id, "-N2843") && id.getNameEnum() == 2843, "generateID() gives -N2843, 2843");
    expect(spells(ZtName::generateID(u"p"), "-p2844"), "the next one is -p2844");
}

} // namespace

int main(int argc, char** argv) {
    const std::string scenario = argc == 2 ? argv[1] : "";
    if (scenario == "first-name")
        firstName();
    else if (scenario == "generate-id")
        generateId();
    else {
        std::cerr << "usage: test_value_fresh first-name|generate-id\n";
        return 2;
    }
    std::cout << scenario << (failures ? ": failed\n" : ": ok\n");
    return failures ? 1 : 0;
}
