#pragma once

#include <string>
#include <string_view>

namespace server {

/// The UTF-8 form for a line of the log: what breaks lines, controls a terminal, turns the direction of text or cannot
/// be seen is spelled out.
///
///     "a(line feed)b" -> a\u{A}b      "(right-to-left override)fdp.exe" -> \u{202E}fdp.exe      "é" -> é
std::string logText(std::wstring_view text);

}  // namespace server
