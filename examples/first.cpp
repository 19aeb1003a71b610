#include <iostream>

#include <vel/config/configreader.h>
#include <webi18n/localemapping.h>
#include <webi18n/localetaglookup.h>

int main(int argc, char** argv)
{
    const vel::String data = vel::stringFromUtf8(argc == 2 ? argv[1] : ".").value();  // the data pack's folder
    const vel::XmlConfigReader config(data + L"/config.xml");
    vel::LocaleTagLookup::getInstanceForLoading().loadLocaleDefinitions(config, data + L"/localedefinitions.xml");
    vel::LocaleMapping mapping;
    mapping.loadMappings(data + L"/localemapping.xml");

    const auto [locale, language] = mapping.mapLocale(L"fr-CA,fr;q=0.9,en;q=0.8", L"");
    vel::Locale mine = locale;
    mine.setOverridingDateInputFormat(L".", vel::Locale::kDMY);

    const auto show = [](const vel::String& text) { std::cout << vel::toUtf8Lossy(text) << '\n'; };
    show(locale.definitionName() + L", language " + language);
    show(locale.getInfoAsString(vel::Locale::kDateLongFormat));
    show(locale.getNameAsString(vel::Locale::kNominitiveMonth, 7));
    show(locale.getInfoAsString(vel::Locale::kDateInputFormat) + L", mine " +
         mine.getInfoAsString(vel::Locale::kDateInputFormat));
}
