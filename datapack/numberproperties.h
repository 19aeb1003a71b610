/// \file
/// The part of readProperties() that concerns numbers and money.
#pragma once

#include "locales.h"
#include "properties.h"

namespace datapack {

/// Adds separators, the negative and percent pictures, the currency's symbol and digits, and the scale factors.
void addNumberProperties(const PackLocale& locale, Properties& properties);

}  // namespace datapack
