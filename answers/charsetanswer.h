#pragma once

#include <cstddef>

#include "answers/json.h"
#include "answers/toolarge.h"
#include "webi18n/characterset.h"
#include "webi18n/charactersetdefinition.h"

namespace answers {

/// The `label` under which a response goes out, and the `implementation` that encodes it.
Json describeCharacterSet(const vel::CharacterSet& set);

/// A `definition`, by its label, with the `implementations` that this machine has, the one that is used first.
Json describeDefinition(const vel::CharacterSetDefinition& definition);

/// A text in the set: `label`, `implementation`, the number of its `characters`, how many were `replaced` because the
/// set lacks them, which those are (`lacking`, each once, by code point), and the `bytes` in hexadecimal digits. Throws
/// TooLarge when these alone would take more than so many bytes of JSON.
Json describeEncoded(const vel::String& text, const vel::CharacterSet& set, vel::EUnencodable policy,
                     std::size_t mostBytes);

}  // namespace answers
