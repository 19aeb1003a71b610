#pragma once

#include "vel/core/api.h"

// English names, zero-terminated, for the lifetime of the process. They stand outside the namespace, as the host's own
// C parts read them too.

/// Sunday first, unlike the day lists of locale definitions, which begin with Monday.
WEBI18N_API extern const wchar_t* const s_pDayNames[7];
/// January first.
WEBI18N_API extern const wchar_t* const s_pMonthNames[12];
/// "Jan" first. No operation of this library reads it.
WEBI18N_API extern const wchar_t* const s_pAbbrevMonths[12];
/// "Sun" first. No operation of this library reads it.
WEBI18N_API extern const wchar_t* const s_pAbbrevDays[7];
