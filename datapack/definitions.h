/// \file
/// The files that hold and allow the definitions: localedefinitions.xml and localelists.xml.
#pragma once

#include <string>
#include <vector>

#include "locales.h"

namespace datapack {

/// The text of localedefinitions.xml: one definition per locale, in the order of `locales`, each with what differs from
/// the definition that it is based on.
std::string localeDefinitions(const std::vector<PackLocale>& locales);

/// The text of localelists.xml: the list "supported" with every locale.
std::string localeLists(const std::vector<PackLocale>& locales);

}  // namespace datapack
