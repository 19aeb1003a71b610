#pragma once

namespace fuzzing {

/// Ends the process, as a finding of the fuzzer, when a law does not hold.
inline void require(bool law)
{
    if (!law) {
        __builtin_trap();
    }
}

}  // namespace fuzzing
