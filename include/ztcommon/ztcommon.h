// Everything of ZtCommon in one include.
#pragma once

#include "ztcommon/foundation.h"
#include "ztcommon/stream.h"
#include "ztcommon/text.h"
#include "ztcommon/util.h"
#include "ztcommon/value.h"
