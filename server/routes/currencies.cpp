#include "answers/currencyanswer.h"
#include "answers/text.h"
#include "routes/routes.h"

namespace server {

using answers::Json;
using vel::Locale;
using vel::String;

namespace {

/// The one that "tag" or "symbol" names, else all.
vel::CurrencyLookup::CurrencyList wantedCurrencies(const Call& call)
{
    const vel::CurrencyLookup& currencies = call.catalogues().currencies();
    const auto tag = call.target().find("tag");
    const auto symbol = call.target().find("symbol");
    if (!tag && !symbol) {
        return currencies.getCurrencyList();
    }
    const auto found = tag ? currencies.lookupCurrencyTag(*tag) : currencies.lookupCurrencySymbol(*symbol);
    if (found.isNull()) {
        throw Refusal{404, "no-such-currency", "There is no currency of that tag or symbol."};
    }
    return {found};
}

}  // namespace

HttpAnswer answerCurrencies(const Call& call)
{
    const Locale locale = call.locale();
    const String language = call.language(locale);
    const answers::Captions captions = call.catalogues().captions(language);
    call.count(kStageCurrencies);
    Json json;
    json["language"] = answers::utf8Text(language);
    json["currencies"] = Json::array();
    for (const auto& currency : wantedCurrencies(call)) {
        json["currencies"].push_back(answers::describeCurrency(*currency, captions));
    }
    return call.answer(json, locale);
}

}  // namespace server
