// Everything of ZtCommon in one include.
#pragma once

#include "ztcommon/crypto.h"
#include "ztcommon/foundation.h"
#include "ztcommon/util.h"
