/// \file
/// The properties of a locale definition, and what a loader makes of a definition that is based on another.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace datapack {

/// Abbreviations of large numbers and what they stand for: "Mio.", "1000000".
using ScaleFactors = std::vector<std::pair<std::string, std::string>>;

/// Properties by name. What is absent is not written in a definition; what is present and empty empties the base's.
struct Properties
{
    std::map<std::string, std::string> scalars;
    std::map<std::string, std::vector<std::string>> lists;
    std::optional<ScaleFactors> scaleFactors;

    /// The scalar, or the empty text.
    std::string scalar(const std::string& name) const;

    /// The list, or the empty one.
    std::vector<std::string> list(const std::string& name) const;
};

/// The names of the scalar properties in the order in which a definition holds them.
const std::vector<std::string>& scalarNames();

/// The names of the list properties in the order in which a definition holds them.
const std::vector<std::string>& listNames();

/// What the definition of a main locale writes so that loading it gives `wanted`: everything but empty properties and
/// monetary separators that only follow the plain ones.
Properties whole(const Properties& wanted);

/// What a definition writes so that loading it on top of `base` gives `wanted`. Both are complete, monetary separators
/// included. The loading rules that this relies on:
/// - a property that is absent keeps the base's value, an empty one empties it;
/// - a monetary separator of the base that equals the plain one follows the derived definition's plain separator;
/// - a list is replaced whole.
Properties difference(const Properties& base, const Properties& wanted);

}  // namespace datapack
