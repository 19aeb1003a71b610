#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "output.h"
#include "vel/core/string.h"

namespace cli {

/// What keys must have in common to compare: the first line of stored keys.
struct KeyStamp
{
    std::string m_sSort;
    std::string m_sStrength;
    std::string m_sVersion;
};

Json stampAsJson(const KeyStamp& stamp);
/// "# sort=sv strength=0 version=..."
std::string stampAsLine(const KeyStamp& stamp);

/// Reads either form; nothing when the line is none.
std::optional<KeyStamp> readStamp(const std::string& line);

}  // namespace cli
