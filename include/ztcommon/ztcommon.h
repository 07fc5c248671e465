// Everything of ZtCommon in one include.
#pragma once

#include "ztcommon/counter.h"
#include "ztcommon/crypto.h"
#include "ztcommon/dom.h"
#include "ztcommon/foundation.h"
#include "ztcommon/stream.h"
#include "ztcommon/text.h"
#include "ztcommon/util.h"
#include "ztcommon/value.h"
#include "ztcommon/writing_mode.h"
