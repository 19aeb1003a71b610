#pragma once

#include <cstddef>

#include "keybytes.h"

namespace vel::nls {

/// Appends the identical level of a UTF-16BE text: its canonical decomposition (NFD) in UTF-8, U+FFFE as 01 01, U+0000
/// as 01 02 and U+0001 as 01 03, for U+FFFE is lower than all others here. Throws std::bad_alloc.
void appendIdenticalLevel(const unsigned char* utf16be, std::size_t byteCount, KeyBytes& out);

}  // namespace vel::nls
