#include "icuproperties.h"

#include <unicode/coll.h>

#include <memory>

#include "dateproperties.h"
#include "icutext.h"
#include "numberproperties.h"

namespace datapack {
namespace {

std::string collationTag(const PackLocale& locale)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::Collator> collator(icu::Collator::createInstance(locale.icu, status));
    checkIcu(status, "collator of " + locale.name);
    const icu::Locale actual = collator->getLocale(ULOC_ACTUAL_LOCALE, status);
    const std::string tag = actual.toLanguageTag<std::string>(status);
    checkIcu(status, "collation tag of " + locale.name);
    return tag.empty() || tag == "root" ? "und" : tag;
}

}  // namespace

Properties readProperties(const PackLocale& locale)
{
    Properties properties;
    properties.scalars["localeDisplayMessage"] = locale.messageKey;
    properties.scalars["characterSetList"] = "locale:" + locale.name;
    properties.scalars["defaultLanguage"] = locale.uiLanguage;
    properties.scalars["collationNLS_SORT"] = collationTag(locale);
    addDateProperties(locale, properties);
    addNumberProperties(locale, properties);
    return properties;
}

}  // namespace datapack
