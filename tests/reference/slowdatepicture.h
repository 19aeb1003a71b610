#pragma once

#include <string>
#include <string_view>

#include "vel/core/datetime.h"
#include "webi18n/locale.h"

namespace reference {

/// The moment in the picture: a plain twin of the renderer, which walks through the picture a character at a time,
/// counts days one by one and copies the lists of names.
std::wstring renderDate(std::wstring_view picture, const vel::DateTime& moment, const vel::Locale& locale);

}  // namespace reference
