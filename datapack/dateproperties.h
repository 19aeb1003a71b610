/// \file
/// The part of readProperties() that concerns dates and times.
#pragma once

#include "locales.h"
#include "properties.h"

namespace datapack {

/// Adds date and time formats, separators, order, clock, markers, month and day names and the first day of the week.
void addDateProperties(const PackLocale& locale, Properties& properties);

}  // namespace datapack
