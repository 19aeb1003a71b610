#include <unicode/fmtable.h>
#include <unicode/msgfmt.h>
#include <unicode/ucurr.h>

#include <algorithm>
#include <memory>
#include <random>
#include <stdexcept>
#include <unordered_map>

#include "bareparse.h"
#include "rows.h"
#include "vel/messages/messagefilesregistry.h"
#include "vel/messages/messageformatter.h"
#include "webi18n/currencylookup.h"

// The pack's currencies: loaded, found, and named for people.

namespace bench {

namespace {

using vel::Currency;
using vel::CurrencyLookup;
using vel::Handle;

using Catalogue = std::shared_ptr<const CurrencyLookup>;

Catalogue loadCurrencies(const Data& data)
{
    return std::make_shared<CurrencyLookup>(data.currencies());
}

/// What a plain catalogue would hold.
struct PlainRecord
{
    std::wstring m_sSymbol;
    std::wstring m_sFormat;
    int m_nDigits;
};

using PlainCatalogue = std::unordered_map<std::wstring, std::shared_ptr<const PlainRecord>>;
using KeyOf = const vel::String& (Currency::*)() const noexcept;

/// The records' keys, each once, in an order that has nothing to do with that of the records in memory.
std::vector<vel::String> keysOf(const CurrencyLookup& catalogue, KeyOf keyOf)
{
    std::vector<vel::String> keys;
    for (const Handle<const Currency>& each : catalogue.getCurrencyList()) {
        keys.push_back(((*each).*keyOf)());
    }
    std::sort(keys.begin(), keys.end());
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    std::shuffle(keys.begin(), keys.end(), std::mt19937(1));
    return keys;
}

/// Texts as long as the keys that are none: they differ in the last character.
std::vector<vel::String> missesOf(const std::vector<vel::String>& keys)
{
    std::vector<vel::String> misses;
    for (const vel::String& each : keys) {
        misses.push_back(each.substring(0, std::max<std::size_t>(each.length(), 1) - 1) + L"~");
    }
    return misses;
}

using LookUp = Handle<const Currency> (CurrencyLookup::*)(const vel::String&) const;

Batch lookUpOurs(const Catalogue& catalogue, LookUp lookUp, const std::vector<vel::String>& keys)
{
    const auto lookUpAll = [catalogue, lookUp, keys] {
        for (const vel::String& each : keys) {
            keep(((*catalogue).*lookUp)(each));
        }
    };
    return repeated(lookUpAll, keys.size());
}

Batch lookUpPlain(const CurrencyLookup& catalogue, KeyOf keyOf, const std::vector<vel::String>& keys)
{
    PlainCatalogue plain;
    for (const Handle<const Currency>& each : catalogue.getCurrencyList()) {
        plain[((*each).*keyOf)().standard()] = std::make_shared<const PlainRecord>(
            PlainRecord{each->getCurrencySymbol().standard(), each->getFormat().standard(), each->getDefaultDigits()});
    }
    std::vector<std::wstring> texts;
    for (const vel::String& each : keys) {
        texts.push_back(each.standard());
    }
    const auto lookUpAll = [plain, texts] {
        for (const std::wstring& each : texts) {
            const auto found = plain.find(each);
            keep(found == plain.end() ? std::shared_ptr<const PlainRecord>() : found->second);
        }
    };
    return repeated(lookUpAll, texts.size());
}

constexpr const char* kPlain = "unordered_map of shared_ptr, find + copy";

/// Hits and misses of one of the two ways to find a currency.
void addLookupRows(std::vector<Situation>& rows, const Data& data, const std::string& name, LookUp lookUp, KeyOf keyOf)
{
    const Target asFast{Target::kRatioAtLeast, 1};
    rows.push_back({name + ", hit", kPlain, asFast, [=] {
                        const Catalogue catalogue = loadCurrencies(data);
                        const std::vector<vel::String> keys = keysOf(*catalogue, keyOf);
                        return Contest{lookUpOurs(catalogue, lookUp, keys), lookUpPlain(*catalogue, keyOf, keys)};
                    }});
    rows.push_back({name + ", miss", kPlain, asFast, [=] {
                        const Catalogue catalogue = loadCurrencies(data);
                        const std::vector<vel::String> keys = missesOf(keysOf(*catalogue, keyOf));
                        return Contest{lookUpOurs(catalogue, lookUp, keys), lookUpPlain(*catalogue, keyOf, keys)};
                    }});
}

icu::UnicodeString wideForPeer(const vel::String& text)
{
    return icu::UnicodeString::fromUTF8(vel::toUtf8Lossy(text.view()));
}

std::vector<icu::UnicodeString> textsForPeer(const std::vector<vel::String>& keys)
{
    std::vector<icu::UnicodeString> texts;
    for (const vel::String& each : keys) {
        texts.push_back(wideForPeer(each));
        texts.back().getTerminatedBuffer();
    }
    return texts;
}

/// A question about the currency of a code, asked of the peer.
template <typename Ask>
Batch askPeer(const std::vector<vel::String>& codes, Ask ask)
{
    const auto askAll = [codes = textsForPeer(codes), ask] {
        for (const icu::UnicodeString& each : codes) {
            ask(each.getBuffer());
        }
    };
    return repeated(askAll, codes.size());
}

void askName(const char16_t* code)
{
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = 0;
    keep(ucurr_getName(code, "en", UCURR_SYMBOL_NAME, nullptr, &length, &status));
}

void askDigits(const char16_t* code)
{
    UErrorCode status = U_ZERO_ERROR;
    keep(ucurr_getDefaultFractionDigits(code, &status));
}

std::vector<vel::String> isoCodes(const CurrencyLookup& catalogue)
{
    std::vector<vel::String> keys = keysOf(catalogue, &Currency::getTag);
    std::erase_if(keys, [](const vel::String& key) { return key.length() != 3; });
    return keys;
}

void addCodeRows(std::vector<Situation>& rows, const Data& data)
{
    const auto row = [&](const char* name, const char* peer, void (*ask)(const char16_t*), bool hit) {
        rows.push_back(
            {name, peer, {Target::kRatioAtLeast, 5}, [=] {
                 const Catalogue catalogue = loadCurrencies(data);
                 const std::vector<vel::String> hits = isoCodes(*catalogue);
                 const std::vector<vel::String> codes = hit ? hits : missesOf(hits);
                 return Contest{lookUpOurs(catalogue, &CurrencyLookup::lookupCurrencyTag, codes), askPeer(codes, ask)};
             }});
    };
    row("lookupCurrencyTag, ISO codes, hit: name", "ucurr_getName", askName, true);
    row("lookupCurrencyTag, ISO codes, miss: name", "ucurr_getName", askName, false);
    row("lookupCurrencyTag, ISO codes, hit: digits", "ucurr_getDefaultFractionDigits", askDigits, true);
    row("lookupCurrencyTag, ISO codes, miss: digits", "ucurr_getDefaultFractionDigits", askDigits, false);
}

/// The local currencies whose captions are made of their symbols and the names of their locales.
std::vector<Handle<const Currency>> headedCurrencies(const CurrencyLookup& catalogue,
                                                     const Handle<const vel::MessageTable>& messages)
{
    std::vector<Handle<const Currency>> headed;
    vel::GDVariant caption;
    for (const Handle<const Currency>& each : catalogue.getCurrencyList()) {
        each->getResolvedCurrencyDisplayMessage(messages, caption);
        if (caption.asMessage() != nullptr && caption.asMessage()->inserts().size() == 2) {
            headed.push_back(each);
        }
    }
    if (headed.empty()) {
        throw std::runtime_error("no currency has a heading");
    }
    return headed;
}

Batch captionOurs(const std::vector<Handle<const Currency>>& currencies,
                  const Handle<const vel::MessageTable>& messages)
{
    const vel::MessageFormatter formatter(messages);
    const auto captionAll = [currencies, messages, formatter] {
        vel::GDVariant caption;
        vel::StringBuffer<127> out;
        for (const Handle<const Currency>& each : currencies) {
            each->getResolvedCurrencyDisplayMessage(messages, caption);
            out.clear();
            formatter.format(*caption.asMessage(), out);
            keep(out.length());
        }
    };
    return repeated(captionAll, currencies.size());
}

/// The pattern is compiled and the names are at hand before it starts.
Batch captionPeer(const std::vector<Handle<const Currency>>& currencies,
                  const Handle<const vel::MessageTable>& messages)
{
    UErrorCode status = U_ZERO_ERROR;
    const auto format = std::make_shared<icu::MessageFormat>(u"{0} ({1})", icu::Locale::getGerman(), status);
    if (U_FAILURE(status)) {
        throw std::runtime_error("MessageFormat cannot be built");
    }
    std::vector<std::pair<icu::UnicodeString, icu::UnicodeString>> arguments;
    vel::GDVariant caption;
    for (const Handle<const Currency>& each : currencies) {
        each->getResolvedCurrencyDisplayMessage(messages, caption);
        arguments.emplace_back(wideForPeer(caption.asMessage()->findInsert(1)->toString()),
                               wideForPeer(caption.asMessage()->findInsert(2)->toString()));
    }
    const auto captionAll = [format, arguments] {
        for (const auto& [symbol, locale] : arguments) {
            UErrorCode each = U_ZERO_ERROR;
            const icu::Formattable values[] = {symbol, locale};
            icu::UnicodeString out;
            icu::FieldPosition ignored(icu::FieldPosition::DONT_CARE);
            keep(format->format(values, 2, out, ignored, each));
        }
    };
    return repeated(captionAll, arguments.size());
}

Contest captionContest(const Data& data)
{
    vel::LocaleTagLookup::getInstanceForLoading().loadLocaleDefinitions(*packConfiguration(data), data.definitions());
    const Handle<const vel::MessageTable> messages =
        vel::MessageFilesRegistry::getInstance().loadTable(data.messages(), L"de");
    const auto currencies = headedCurrencies(*loadCurrencies(data), messages);
    return {captionOurs(currencies, messages), captionPeer(currencies, messages)};
}

}  // namespace

void addCurrencyRows(std::vector<Situation>& rows, const Data& data)
{
    addLookupRows(rows, data, "lookupCurrencyTag", &CurrencyLookup::lookupCurrencyTag, &Currency::getTag);
    addLookupRows(rows, data, "lookupCurrencySymbol", &CurrencyLookup::lookupCurrencySymbol,
                  &Currency::getCurrencySymbol);
    addCodeRows(rows, data);
    rows.push_back({"load the currencies", "expat, empty handlers", {Target::kRatioAtLeast, 0.4}, [data] {
                        return Contest{building([data] { return loadCurrencies(data); }),
                                       building([data] { return parseBare(data.m_sCurrencies); })};
                    }});
    rows.push_back({"caption of a local currency in German",
                    "icu::MessageFormat, prebuilt, two arguments",
                    {Target::kRatioAtLeast, 3},
                    [data] { return captionContest(data); }});
}

}  // namespace bench
