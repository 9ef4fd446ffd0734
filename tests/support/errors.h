// What a test expects of a run-time error.
#pragma once

#include "platform/errors.h"

namespace vantrel {

/// The number of the run-time error that `routine` raises; 0 if it raises none.
template <class Routine>
int ErrorOf(Routine routine) {
    try {
        routine();
    } catch (const RunTimeError& error) {
        return error.Number();
    }
    return 0;
}

}  // namespace vantrel
