#pragma once

#include <string_view>

#include "query.h"
#include "webi18n/locale.h"

namespace server {

/// The user's overrides as the cookie "webi18n" brings them: the names and values of the locale's overrides, written
/// like a query. Empty values are none.
///
///     webi18n=dateOrder=dmy&decimalSeparator=%2C -> dateOrder: dmy, decimalSeparator: ","
///     theme=dark                                 -> none
///     webi18n=colour=red                         -> Refusal 400, which also takes the cookie from the client
///
/// Throws Refusal: 431 for a cookie of more than kCookieBytes, 400 for one that stands twice, is no percent-encoded
/// UTF-8, names what is no override, names one twice, or has a value that is longer than kOverrideLength or holds a
/// control character.
Parameters preferencesOf(std::string_view cookieHeader);

/// Applies them; Refusal 400 for a value that is not accepted.
void applyPreferences(const Parameters& preferences, vel::Locale& locale);

/// The overrides that a query's "user" parameters set, each KEY=VALUE. Refusal 400 as above.
Parameters preferencesIn(const Target& target);

}  // namespace server
