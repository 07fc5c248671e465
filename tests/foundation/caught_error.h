// The ZtError an action throws: shared by the tests of the families built on the foundation.
#pragma once

#include <gtest/gtest.h>

#include "ztcommon/foundation.h"

namespace ZtCommonNS::test {

// The ZtError that `action` throws (a test failure when it throws none).
template <class Action> ZtError caught(Action action) {
    try {
        action();
    } catch (const ZtError& e) {
        return e;
    }
    ADD_FAILURE() << "no ZtError thrown";
    return ZtError();
}

} // namespace ZtCommonNS::test
