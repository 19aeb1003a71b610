#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "webi18n-render/datepicture.h"
#include "webi18n-render/rendernumber.h"
#include "webi18n/locale.h"

// What the renderer gives, as UTF-8 text that a failing test shows.
namespace rendering {

/// Every locale of the data pack.
const std::vector<vel::Locale>& pack();
/// The pack's locale of that name; throws when there is none.
vel::Locale packLocale(std::string_view name);

/// By a compiled picture; throws when the picture that is rendered once gives something else.
std::string date(std::wstring_view picture, const vel::DateTime& moment, const vel::Locale& locale = vel::Locale::kUSA);

/// "1234.50", "-inf", "inf", "nan"; throws for another text.
vel::Decimal decimal(std::string_view text);
/// What the decimal holds: "-1234.50", "0.5", "-inf", "nan".
std::string show(const vel::Decimal& number);

/// Digits of -1 are the number's own.
std::string number(const vel::Decimal& value, const vel::Locale& locale, int digits = -1, bool grouping = true);
std::string percent(const vel::Decimal& value, const vel::Locale& locale, int digits = -1);

/// The built-in locale with other properties: `<property name="...">...</property>` in a row.
vel::Locale usaWith(const std::string& properties);

}  // namespace rendering
