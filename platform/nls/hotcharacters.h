#pragma once

#include <string>

namespace vel::nls {

/// The characters whose weights deserve one byte, in the order of their claim: ASCII, the letters of the locale's
/// language, Hangul letters. At most as many as leave room for the others' codes.
std::u32string hotCharacters(const std::string& locale);

/// The characters of the locale's language: they deserve two bytes, if not one.
std::u32string exemplarCharacters(const std::string& locale);

}  // namespace vel::nls
