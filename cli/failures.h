#pragma once

#include <stdexcept>
#include <string>

#include "answers/dataerror.h"

namespace cli {

/// What the command tells its caller.
enum ExitCode
{
    kExitSuccess = 0,
    kExitNoMatch = 1,  ///< findings, or a question that has no answer
    kExitUsage = 2,    ///< options or text that cannot be taken
    kExitData = 3      ///< a file that cannot be read, output that cannot be written
};

/// The command was called wrongly; the text says what is accepted.
class UsageError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

using answers::DataError;

/// Nobody reads the output any more: end quietly.
class BrokenPipe : public std::exception
{};

/// Writes "webi18n: kind: text" and a line feed to standard error. The text is UTF-8, or a file's name; its control
/// characters are spelled out, as a terminal obeys some of them, and it stays one line. Needs no memory.
///
///     "error", "a(escape)[31m: gone" -> webi18n: error: a\u{1B}[31m: gone
void complain(const char* kind, const char* text) noexcept;
void complain(const char* kind, const std::string& text) noexcept;
/// The same without what stands before the text: "file:line:column: error: message" is such a text.
void complainWithoutKind(const char* text) noexcept;

}  // namespace cli
