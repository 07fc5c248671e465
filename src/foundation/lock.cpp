// The process-wide lock and the shared string constants. They are constructed before any
// other static object of the library (init_priority) so that static initialisers elsewhere
// may already use them, and destroyed at unload.
#include "ztcommon/foundation.h"

namespace ZtCommonNS {

namespace {
__attribute__((init_priority(101))) ZtLock globalLock;
} // namespace

ZtLock& ZtLock::getGlobalLock() {
    return globalLock;
}

__attribute__((init_priority(101))) const ZtEmptyString ZtEmptyString::EMPTY_VALUE;
__attribute__((init_priority(101))) const ZtBogusString ZtBogusString::BOGUS_VALUE;

} // namespace ZtCommonNS
