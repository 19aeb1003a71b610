#pragma once

#include "vel/core/staticinit.h"
#include "webi18n/locale.h"
#include "webi18n/stringenummap.h"

namespace vel::i18n_details {

extern const StaticValue<StringEnumMap<Locale::StringInfo>> s_StringInfoMap;
extern const StaticValue<StringEnumMap<Locale::NameType>> s_NameTypeMap;
extern const StaticValue<StringEnumMap<Locale::DateOrder>> s_DateOrderMap;

/// Builds what lacked memory when the library was loaded. Throws std::bad_alloc; without that, no use of a table
/// throws.
void requireTables();

}  // namespace vel::i18n_details
