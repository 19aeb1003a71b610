/// \file
/// The texts of messages that are not read from ICU.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace datapack {

/// Keys and texts in `language`, in English where there is no translation; "%1" and "%2" stand for inserts.
std::vector<std::pair<std::string, std::string>> messageTexts(const std::string& language);

}  // namespace datapack
