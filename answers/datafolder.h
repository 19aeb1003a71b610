#pragma once

#include <optional>

#include "vel/core/filepath.h"
#include "vel/core/string.h"

namespace answers {

/// The folder whose files are loaded: the given one, else the one that the environment variable WEBI18N_DATA names,
/// else "../share/webi18n" beside the folder of this program, else the one of the installation. "none" stands for no
/// folder, in the option and in the variable. Throws DataError when there is no such folder.
std::optional<vel::FilePath> findDataFolder(const std::optional<vel::String>& given);

}  // namespace answers
