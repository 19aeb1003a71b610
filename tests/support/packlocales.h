#pragma once

#include <string>
#include <vector>

#include "catalogues.h"

// The locales of a data pack, and how tests name them.
namespace testsupport {

/// Every locale that the lists of the pack in this folder allow.
inline std::vector<vel::Locale> packLocales(const std::string& folder)
{
    const auto file = [&folder](const char* name) { return vel::stringFromUtf8(folder + "/" + name).value(); };
    const vel::Handle<vel::LocaleTagLookup> catalogue = vel::makeHandle<vel::LocaleTagLookup>();
    catalogue->loadLocaleDefinitions(*allowing(L"", file("localelists.xml")), file("localedefinitions.xml"));
    std::vector<vel::Locale> locales;
    catalogue->getSupportedLocales(locales);
    return locales;
}

inline std::string nameOf(const vel::Locale& locale)
{
    return vel::toUtf8Lossy(locale.definitionName().view());
}

}  // namespace testsupport
