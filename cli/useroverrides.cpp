#include "useroverrides.h"

#include "failures.h"
#include "text.h"

namespace cli {

namespace {

void applyOne(const std::string& setting, vel::Locale& locale)
{
    const std::size_t equals = setting.find('=');
    const std::string key = setting.substr(0, equals);
    if (equals == std::string::npos || !answers::isUserOverride(key)) {
        throw UsageError("--user " + setting + ": accepted is KEY=VALUE with the keys " + userOverrideNames());
    }
    const vel::String value = wideText(std::string_view(setting).substr(equals + 1), "--user " + key);
    if (const auto accepted = answers::applyUserOverride(key, value, locale)) {
        throw UsageError("--user " + key + "=" + utf8Text(value) + ": " + *accepted);
    }
}

}  // namespace

void applyUserOverrides(const std::vector<std::string>& settings, vel::Locale& locale)
{
    for (const std::string& setting : settings) {
        applyOne(setting, locale);
    }
}

}  // namespace cli
