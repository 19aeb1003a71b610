#pragma once

#include <optional>
#include <string>

#include "languagespec.h"
#include "vel/nls/nlsservice.h"

namespace vel::nls {

/// The items that depend on the language alone: names of days and months, language, character set, calendar. Nothing
/// for every other item. Throws std::bad_alloc.
std::optional<std::u16string> languageText(const LanguageCodes& language, unsigned item);

/// Writes text as zero-terminated UTF-16BE, as many whole characters as `size` bytes take; false when not even the
/// terminator fits.
bool writeTerminated(const std::u16string& text, unsigned char* buffer, std::size_t size) noexcept;

}  // namespace vel::nls
