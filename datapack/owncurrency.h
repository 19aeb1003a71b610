/// \file
/// The currency that a locale's people use.
#pragma once

#include <string>

#include "locales.h"

namespace datapack {

/// A locale's currency. A locale without a country (ar-001) has none: code and symbol are empty, the digits two.
struct OwnCurrency
{
    std::string code;    ///< "EUR"
    std::string symbol;  ///< as the locale writes it, in UTF-8 and unchanged: "€", "R$"
    int digits;          ///< as the locale writes amounts, which may be fewer than accounts are kept in
};

OwnCurrency ownCurrency(const PackLocale& locale);

}  // namespace datapack
