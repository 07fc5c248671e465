// A program outside the project, built against the installed package: it must compile with the
// public headers alone and link against the shared library.
#include <iostream>

#include <ztcommon/ztcommon.h>

using namespace ZtCommonNS;

namespace {
class Counter : public ZtRCObject {
    ZT_DECLARE_TYPE(Counter, ZtRCObject, 0x7E570001u)
};
} // namespace

int main() {
    ZtPtr<Counter> counter(new Counter);
    ZtPtr<ZtRCObject> base(counter);
    ZtCStr text(std::string("caf\xe9"), "ISO-8859-1");
    ZtError error(0x0205, u"warning", u"consumer", 3, 4, u"file:///x");
    if (counter->getRefCount() != 2 || text.getBytes("UTF-8") != "caf\xc3\xa9" ||
        error.getErrorLevel() != ZT_ERROR_LEVEL_ERROR ||
        ZtUtfStr(error.getMessage()).getBytes() != "warning\nLine 3, Col 4, file:///x" ||
        ZtName(u"inherit") != NM_inherit || ZtName(u"my-name").getNameEnum() != NM_FIRST_RUNTIME) {
        std::cout << "consumer failed\n";
        return 1;
    }
    std::cout << "consumer ok\n";
    return 0;
}
