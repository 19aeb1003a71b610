// An administrator's locales on top of the data pack: own_locale DATAFOLDER OWNFILE

#include <cstdlib>
#include <exception>
#include <iostream>
#include <optional>
#include <vector>

#include <vel/config/configreader.h>
#include <vel/xml/xmlexception.h>
#include <webi18n/localetaglookup.h>
#include <webi18n/parsedatetime.h>

namespace {

void show(const vel::String& text)
{
    std::cout << vel::toUtf8Lossy(text) << '\n';
}

/// The pack's definitions and then the own ones, which may be based on them.
void load(vel::LocaleTagLookup& catalogue, const vel::String& data, const vel::String& ownFile)
{
    const auto packConfig = vel::makeHandle<vel::XmlConfigReader>(data + L"/config.xml");
    vel::MemoryConfigReader config(packConfig);
    // The pack's list of allowed locales does not name the own ones: name what this installation offers instead.
    config.set(L"Localization/AllowedLocalesFile", L"");
    config.set(L"Localization/AllowedLocales", L"en-us, de-ch, de-acme, de-acme-store, de-amce");
    catalogue.loadLocaleDefinitions(config, data + L"/localedefinitions.xml");
    catalogue.loadLocaleDefinitions(config, ownFile);
}

void showLocale(const vel::Locale& locale)
{
    show(locale.definitionName() + L":");
    show(vel::String(L"  ") + locale.getInfoAsString(vel::Locale::kDateShortFormat) + L", typed " +
         locale.getInfoAsString(vel::Locale::kDateInputFormat) + L", in March: " +
         locale.getNameAsString(vel::Locale::kNominitiveMonth, 2));
    const vel::String thousands = locale.getInfoAsString(vel::Locale::kThousandsSeparator);
    std::vector<vel::String> formats;
    locale.getAllNames(vel::Locale::kDateFormats, formats);
    show(vel::String(L"  ") + vel::decimalString(formats.size()) + L" date formats, a million is 1" + thousands +
         L"000" + thousands + L"000");
    vel::String units = L"  units:";
    for (const auto& [name, value] : locale.getScaleFactors()) {
        units += vel::String(L" ") + name;
    }
    show(units);
}

void showTyped(const vel::String& text, const vel::Locale& locale)
{
    vel::DateTime date;
    const auto fields = vel::ParseDateTime::parse(text, locale, vel::ParseDateTime::kDate, date);
    show(vel::String(L"  ") + text +
         (fields == vel::ParseDateTime::kDate ? vel::String(L" is day ") + vel::decimalString(date.m_nDay) +
                                                    L" of month " + vel::decimalString(date.m_nMonth)
                                              : vel::String(L" is no date")));
}

}  // namespace

int main(int argc, char** argv)
{
    const auto data = argc == 3 ? vel::stringFromUtf8(argv[1]) : std::nullopt;
    const auto ownFile = argc == 3 ? vel::stringFromUtf8(argv[2]) : std::nullopt;
    if (!data || !ownFile) {
        std::cerr << "usage: own_locale DATAFOLDER OWNFILE\n";
        return EXIT_FAILURE;
    }
    try {
        vel::LocaleTagLookup catalogue;
        load(catalogue, *data, *ownFile);
        for (const wchar_t* name : {L"de-ch", L"DE-ACME", L"de-acme-store", L"de-amce"}) {
            vel::Locale locale;
            if (!catalogue.findLocaleByDefinitionName(name, locale)) {
                show(vel::String(name) + L": not among the allowed locales");
                continue;
            }
            showLocale(locale);
            showTyped(L"03-04-05", locale);
        }
    } catch (const vel::XmlException& fault) {
        std::cerr << fault.what() << '\n';
        return EXIT_FAILURE;
    } catch (const std::exception& fault) {
        std::cerr << "out of luck: " << fault.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
