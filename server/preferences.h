#pragma once

#include <string>
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
/// UTF-8, names one override twice, or has one at fault.
Parameters preferencesOf(std::string_view cookieHeader);

/// What is wrong with an override, to be read behind its name; empty when it is accepted, as every empty value is. At
/// fault is what is no override, not accepted by it, longer than kOverrideLength, or has control characters; a
/// separator with letters or digits; and one of dates or times with an apostrophe.
///
///     decimalSeparator , -> ""                          24hours yes -> is not accepted: accepted are true and false
///     timeSeparator h    -> may not have letters or digits           dateSeparator ' -> may not have apostrophes
std::string preferenceFault(std::string_view key, const vel::String& value);

/// The cookie that brings them, without attributes: the inverse of preferencesOf.
std::string cookieOf(const Parameters& preferences);

/// Applies them, which must be without fault.
void applyPreferences(const Parameters& preferences, vel::Locale& locale);

/// The overrides that a query's "user" parameters set, each KEY=VALUE. Refusal 400 as above.
Parameters preferencesIn(const Target& target);

}  // namespace server
