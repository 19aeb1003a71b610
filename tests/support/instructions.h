#pragma once

#include <cstddef>
#include <functional>

namespace testsupport {

/// How many machine instructions the work takes, counted one by one in a child process: what grows is seen whatever
/// else the machine does meanwhile, where seconds would tell nothing. A million of them take seconds: use small inputs.
/// The work must not start threads. 0 where the system does not let a process step another.
std::size_t instructionsOf(const std::function<void()>& work);

}  // namespace testsupport
