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

/// Runs a command, a program with its arguments, and returns the time until it has ended, by the clock. The program is
/// looked for as a shell does. Its standard output becomes the file. Throws std::runtime_error when it fails.
double nanosecondsToRun(const std::vector<std::string>& command, const std::string& outputFile);

}  // namespace bench
