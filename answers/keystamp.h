#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "answers/json.h"
#include "webi18n/collator.h"

namespace answers {

/// What keys must have in common to compare: the first line of stored keys.
struct KeyStamp
{
    std::string m_sSort;
    std::string m_sStrength;
    std::string m_sVersion;
};

/// What the keys of a collator have in common.
KeyStamp stampOf(const vel::i18n::Collator& collator);

Json stampAsJson(const KeyStamp& stamp);
/// "# sort=sv strength=0 version=..."
std::string stampAsLine(const KeyStamp& stamp);

/// Reads either form; nothing when the line is none.
std::optional<KeyStamp> readStamp(const std::string& line);

}  // namespace answers
