// ztc writing-mode: the code of a writing-mode keyword (XSL or CSS, with an optional direction
// keyword) and where its abstract directions and edges lie on the page.
#include <iostream>
#include <string>

#include "command.h"
#include "ztcommon/writing_mode.h"

namespace {

using namespace ZtCommonNS;

int run(const std::vector<std::string>& args) {
    if (args.empty() || args.size() > 2)
        return ztcUsageError("writing-mode",
                             "give a writing-mode keyword and optionally a direction");
    // Read as the writing-mode and direction properties together; the one-keyword constructor
    // knows only the XSL keywords, and its answer is shown when it differs.
    const ZtName keyword(UnicodeString::fromUTF8(args[0]));
    const ZtName direction = args.size() == 2 ? ZtName(UnicodeString::fromUTF8(args[1])) : ZtName();
    const ZtWritingMode mode(keyword, direction);
    const ZtWritingMode alone(keyword);
    const auto name = [](ZtName n) -> const UnicodeString& { return n.getNameString(); };

    std::cout << args[0];
    if (args.size() == 2)
        std::cout << " + " << args[1];
    std::cout << " -> " << name(mode.getName()) << " (code " << mode.getCode() << ", "
              << (mode.isVerticalText() ? "vertical" : "horizontal") << ", direction "
              << name(mode.getDirectionName()) << ", block progression "
              << name(mode.getBlockProgressionName()) << ")\n";
    std::cout << "  inline progression  " << name(mode.getIPDirection()) << '\n'
              << "  block progression   " << name(mode.getBPDirection()) << '\n'
              << "  shift direction     " << name(mode.getShiftDirection()) << '\n'
              << "  paging direction    " << name(mode.getPagingDirection()) << '\n';
    std::cout << "  edges              ";
    for (ZtNameEnum side : {NM_before, NM_after, NM_start, NM_end})
        std::cout << ' ' << name(side) << '=' << name(mode.relative2absolute(side));
    std::cout << "\n  pages               left " << name(mode.leftRight2oddEven(NM_left))
              << ", right " << name(mode.leftRight2oddEven(NM_right)) << '\n';
    if (alone != mode)
        std::cout << "  (the keyword alone gives " << name(alone.getName()) << ")\n";
    return 0;
}

ZtcCommand command{"writing-mode", "MODE [DIRECTION]",
                   "Shows the code, directions and edges of a writing mode.", &run};

} // namespace
