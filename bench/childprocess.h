#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// Runs `measure` in a child process and returns its result: for what only a process that has done nothing before
/// shows. Throws std::runtime_error when the child fails.
double inChildProcess(const std::function<double()>& measure);

/// Runs a program and returns the number that it prints. Throws std::runtime_error when it fails.
double numberPrintedBy(const std::string& program, const std::vector<std::string>& arguments);

}  // namespace bench
