#pragma once

#include "vel/core/api.h"
#include "webi18n/locale.h"
#include "webi18n/stringenummap.h"

namespace vel::i18n_details {

extern const StringEnumMap<Locale::StringInfo> s_StringInfoMap;
extern const StringEnumMap<Locale::NameType> s_NameTypeMap;
extern const StringEnumMap<Locale::DateOrder> s_DateOrderMap;

}  // namespace vel::i18n_details
