/// \file
/// The rules by which a browser's language tag finds its locale: localemapping.xml.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "locales.h"

namespace datapack {

/// A pattern ("fr-CA*") and the definition that it leads to ("fr-ca").
using MappingRule = std::pair<std::string, std::string>;

/// The rules in the order in which they are tried. A pattern matches what begins with it, whatever follows, and the
/// first match counts: a pattern that another one begins with stands behind it. Tags are in the letter case in which
/// browsers send them, since the comparison is case-sensitive.
/// \throws std::runtime_error when a rule would lead to a locale that is not in the pack.
std::vector<MappingRule> mappingRules(const std::vector<PackLocale>& locales);

/// The text of localemapping.xml.
std::string localeMapping(const std::vector<MappingRule>& rules);

}  // namespace datapack
