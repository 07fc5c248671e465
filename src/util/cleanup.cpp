// ZtUtil::cleanup: one place that releases every process-wide table the library may have built.
#include "util/cleanup_registry.h"

#include <vector>

#include "ztcommon/util.h"

namespace ZtCommonNS {

namespace {
std::vector<void (*)()>& cleanupHandlers() {
    static std::vector<void (*)()> handlers;
    return handlers;
}
} // namespace

void registerCleanupHandler(void (*handler)()) {
    ZtMutex guard;
    cleanupHandlers().push_back(handler);
}

void ZtUtil::cleanup() {
    ZtMutex guard;
    for (auto handler : cleanupHandlers())
        handler();
}

} // namespace ZtCommonNS
