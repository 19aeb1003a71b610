#pragma once

#include <string_view>
#include <vector>

#include "check/findings.h"
#include "check/knowledge.h"
#include "vel/core/filepath.h"
#include "vel/xml/xmlelement.h"

namespace cli {

/// Judges a configuration file; `file` is where its relative paths are seen from.
void checkConfiguration(const vel::XmlElement& root, const vel::FilePath& file, const Knowledge& knowledge,
                        Findings& findings);

/// The names of a comma-separated value, trimmed, empty ones included.
///
///     " en-us, fr" -> en-us, fr    "en,,fr" -> en, (empty), fr
std::vector<vel::String> namesInValue(std::wstring_view value);

/// The names of "Localization/AllowedLocales" that no definition has. Empty while definitions are not known.
std::vector<vel::String> unknownNamesInValue(std::wstring_view value, const Knowledge& knowledge);

/// The finding for a lists file that is not there.
Problem missingListsFile(const vel::FilePath& file);

/// The finding for such a name.
Problem unknownAllowedLocale(const vel::String& name);

}  // namespace cli
