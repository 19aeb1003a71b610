// The headers by which a client says what it wants: whatever the bytes, the lists are in order and within their limits,
// and a cookie is refused as a whole or holds only preferences that a locale takes; and a query, which is read the way
// it is written. The first byte chooses.

#include <clocale>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "http.h"
#include "preferences.h"
#include "qualitylist.h"
#include "query.h"
#include "require.h"
#include "serverlimits.h"

namespace {

using fuzzing::require;

void checkList(const server::QualityList& list, std::string_view header)
{
    require(list.m_tEntries.size() <= server::kQualityEntries);
    unsigned before = 1000;
    for (const server::QualityEntry& entry : list.m_tEntries) {
        require(entry.m_nThousandths <= before);
        require(!entry.m_sName.empty() && header.find(entry.m_sName) != std::string_view::npos);
        before = entry.m_nThousandths;
    }
    for (const server::MalformedEntry& entry : list.m_tMalformed) {
        require(!entry.m_sText.empty() && header.find(entry.m_sText) != std::string_view::npos);
    }
}

void checkCookie(std::string_view header)
{
    try {
        const server::Parameters preferences = server::preferencesOf(header);
        vel::Locale locale = vel::Locale::kUSA;
        server::applyPreferences(preferences, locale);
        for (const auto& [key, value] : preferences) {
            require(value.length() <= server::kOverrideLength);
            require(key != "currencyTag" || locale.overridingCurrencyTag() == value);
            require(key != "dateFormat" || locale.overridingDateFormat() == value);
        }
        const std::string written = server::cookieOf(preferences);
        require(written.size() > server::kCookieBytes || server::preferencesOf(written) == preferences);
    } catch (const server::Refusal& refusal) {
        require(refusal.m_nStatus == 400 || refusal.m_nStatus == 431);
        require(!refusal.m_tHeaders.empty());
    }
}

/// What is read of a query can be written, and is then read as the same.
void checkTarget(std::string_view text)
{
    try {
        const server::Target target = server::Target::of(text);
        std::string written;
        for (const auto& [name, value] : target.m_tParameters) {
            written += "&" + server::percentEncoded(name) + "=" + server::percentEncoded(vel::toUtf8Lossy(value));
        }
        require(server::parametersOf(written) == target.m_tParameters);
        require(target.m_tParameters.size() <= server::kParameters);
    } catch (const server::Refusal& refusal) {
        require(refusal.m_nStatus == 400);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool kHasLocale = std::setlocale(LC_CTYPE, "C.UTF-8") != nullptr;
    if (!kHasLocale || size == 0) {
        return 0;
    }
    const std::string_view header(reinterpret_cast<const char*>(data) + 1, size - 1);
    switch (data[0] % 4) {
    case 0:
        checkList(server::parseAcceptLanguage(header), header);
        break;
    case 1:
        checkList(server::parseAcceptCharset(header), header);
        break;
    case 2:
        checkCookie(header);
        break;
    default:
        checkTarget(header);
    }
    return 0;
}
