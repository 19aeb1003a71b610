/// \file
/// The currencies that a user can choose: currencies.xml.
#pragma once

#include <string>
#include <vector>

#include "internationalcurrencies.h"
#include "locales.h"

namespace datapack {

/// The text of currencies.xml: a local currency for every locale, then the international ones.
///
///     <Currency tag="loc:de-de" type="local" symbol="€" digits="2" format="# $" locale="de-de">
///       <negative tag="minus" format="-# $"/>
///     </Currency>
///     <Currency tag="EUR" type="international" symbol="EUR" digits="2" displayMessage="kmsgCurrencyCaption_EUR"
///               displayName="kmsgCurrencyName_EUR"/>
///
/// - A local currency has the symbol and the digits that its locale's definition has, the pictures of
///   currencypictures.h, and no caption: it is shown by its symbol and its locale's name. For a locale without a
///   country (ar-001) it has the sign of any currency, U+00A4, and is not offered as a choice (display="false").
/// - An international currency has its code as symbol and ISO's digits, the default pictures, and names and captions as
///   message keys. What is no everyday money (funds, metals, test codes) is not offered as a choice.
/// - Many currencies share a symbol, and the last one in the file is what a symbol leads to. So those that a symbol
///   should lead to stand last: every code leads to its international currency, "$" to loc:en-us, "€" to loc:de-de.
/// - A format that the loader would take by default is not written.
std::string currencyFile(const std::vector<PackLocale>& locales, const std::vector<InternationalCurrency>& currencies);

}  // namespace datapack
