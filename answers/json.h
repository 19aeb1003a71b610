#pragma once

#include <nlohmann/json.hpp>

namespace answers {

/// Keys stand in the order in which they were added.
using Json = nlohmann::ordered_json;

}  // namespace answers
