// Typed times in a host that never chose a locale for its process: typed_times DATAFOLDER

#include <clocale>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <utility>

#include <vel/config/configreader.h>
#include <webi18n/localetaglookup.h>
#include <webi18n/parsedatetime.h>

namespace {

/// What people type for an afternoon, with the word or letter of their language for it.
constexpr std::pair<const wchar_t*, const wchar_t*> kTyped[] = {
    {L"en-us", L"1:30:45 pm"},  {L"ar-eg", L"01:30:45 م"},   {L"ko-kr", L"오후 1:30:45"},
    {L"zh-tw", L"下午1:30:45"}, {L"el-gr", L"1:30:45 μ.μ."}, {L"el-gr", L"1:30:45 Π.Μ."},
};

vel::String describe(vel::ParseDateTime::Fields fields, const vel::DateTime& time)
{
    if (fields != vel::ParseDateTime::kTime) {
        return L"no time";
    }
    return vel::decimalString(time.m_nHour) + L" h " + vel::decimalString(time.m_nMinute) + L" min " +
           vel::decimalString(time.m_nSecond) + L" s";
}

void showTimes(const vel::LocaleTagLookup& catalogue)
{
    for (const auto& [name, text] : kTyped) {
        vel::Locale locale;
        if (!catalogue.findLocaleByDefinitionName(name, locale)) {
            std::cout << vel::toUtf8Lossy(name) << ": not among the allowed locales\n";
            continue;
        }
        vel::DateTime time;
        const auto fields = vel::ParseDateTime::parse(text, locale, vel::ParseDateTime::kTime, time);
        std::cout << vel::toUtf8Lossy(vel::String(name) + L": " + text + L" -> " + describe(fields, time)) << '\n';
    }
}

}  // namespace

int main(int argc, char** argv)
{
    // No setlocale here: the library knows the letters of every script by itself.
    std::cout << "the process's locale is " << std::setlocale(LC_ALL, nullptr) << '\n';
    const vel::String data = vel::stringFromUtf8(argc == 2 ? argv[1] : ".").value_or(L".");
    try {
        const vel::XmlConfigReader config(data + L"/config.xml");
        vel::LocaleTagLookup catalogue;
        catalogue.loadLocaleDefinitions(config, data + L"/localedefinitions.xml");
        showTimes(catalogue);
    } catch (const std::exception& fault) {
        std::cerr << fault.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
