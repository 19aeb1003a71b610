#pragma once

#include <string>
#include <string_view>

#include "answers/text.h"
#include "vel/core/string.h"

namespace cli {

/// The wide form of text from outside. Throws UsageError, which begins with `where` and names the byte offset, for
/// what is no UTF-8.
///
///     "argument 2", "a\xFF" -> argument 2: invalid UTF-8 at byte offset 1
vel::String wideText(std::string_view utf8, const std::string& where);

using answers::quotedText;
using answers::utf8Text;
using answers::visibleText;

}  // namespace cli
