/// \file
/// The currencies of ISO 4217, and what they are called.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace datapack {

/// One currency of ISO 4217.
struct InternationalCurrency
{
    std::string code;           ///< "EUR"
    std::optional<int> digits;  ///< ISO's minor unit; absent where ISO gives none (gold)
    bool isOffered;             ///< money that people choose: no fund, metal, unit of account or test code

    std::string nameKey() const { return "kmsgCurrencyName_" + code; }
    std::string captionKey() const { return "kmsgCurrencyCaption_" + code; }
};

/// Every current currency of ISO 4217 in the order of the codes: what ICU does not call deprecated, with the few
/// corrections that the source lists. "Current" is the day of the ICU data, not that of the run.
std::vector<InternationalCurrency> internationalCurrencies();

/// Keys and texts of the currencies' names and captions in a language: "Euro" and "Euro (EUR)". ICU's long names as
/// they are, in the letter case of running text ("euro" in French). A name that the language lacks is the English one.
std::vector<std::pair<std::string, std::string>> currencyTexts(const std::string& language,
                                                               const std::vector<InternationalCurrency>& currencies);

}  // namespace datapack
