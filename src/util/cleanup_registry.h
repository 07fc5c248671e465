// Families whose process-wide tables ZtUtil::cleanup must release register a handler here
// (usually from a static initialiser). Handlers run under the global lock and must leave their
// table ready to be rebuilt on next use.
#pragma once

namespace ZtCommonNS {

void registerCleanupHandler(void (*handler)());

} // namespace ZtCommonNS
