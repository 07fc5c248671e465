// Out-of-line members of the object base and the reference-counted base, so that their
// virtual tables live in the library.
#include "ztcommon/foundation.h"

namespace ZtCommonNS {

ZtObjectBase::~ZtObjectBase() = default;

ZtRCObject::~ZtRCObject() = default;

void ZtRCObject::DebugPrintInstanceCount(const char*) {}

void ZtRCObject::DebugPrintInstanceId(const char*, int) {}

} // namespace ZtCommonNS
