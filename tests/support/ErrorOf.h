// What an action that may fail reported.
#pragma once

#include "core/RuntimeError.h"

namespace varlo::test {

// The number of the RuntimeError that `action` throws; 0 when it throws none.
template<typename Action> int ErrorOf(Action action) {
    try {
        action();
    } catch (const RuntimeError &error) {
        return error.Number();
    }
    return 0;
}

} // namespace varlo::test
