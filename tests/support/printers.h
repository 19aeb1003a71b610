#pragma once

#include <ostream>

#include "vel/core/filepath.h"
#include "vel/core/string.h"

// How a failed expectation shows the library's types.
namespace vel {

inline void PrintTo(const String& text, std::ostream* out)
{
    *out << '"' << toUtf8Lossy(text.view()) << '"';
}

inline void PrintTo(const FilePath& path, std::ostream* out)
{
    PrintTo(path.toString(), out);
}

}  // namespace vel
