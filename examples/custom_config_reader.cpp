// The library reads its configuration from a host's own kind of file: custom_config_reader DATAFOLDER SETTINGS

#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include <vel/config/configreader.h>
#include <webi18n/languagelists.h>
#include <webi18n/localetaglookup.h>

namespace {

/// Settings as lines "key = value"; a line that begins with "#" is a comment. Read whole by the constructor, then
/// immutable, so any thread may ask it.
class LineConfigReader final : public vel::ConfigReader
{
public:
    /// Throws std::runtime_error for a file that cannot be read or a line that is no setting.
    explicit LineConfigReader(const vel::FilePath& file) : m_tFolder(file.folder())
    {
        std::ifstream lines(file.toNative());
        std::string line;
        for (std::size_t number = 1; std::getline(lines, line); ++number) {
            if (!line.empty() && line.front() != '#' && !take(line)) {
                throw std::runtime_error(file.toNative() + ":" + std::to_string(number) + ": write key = value");
            }
        }
        if (!lines.eof()) {
            throw std::runtime_error(file.toNative() + ": cannot be read");
        }
    }

    vel::String getString(const vel::String& key, const vel::String& defaultValue) const override
    {
        const auto found = m_tValues.find(key);
        return found == m_tValues.end() ? defaultValue : found->second;
    }

    /// A relative path is seen from the settings' own folder, as in the library's readers.
    vel::FilePath getFilePath(const vel::String& key) const override
    {
        const vel::String value = getString(key, L"");
        return value.isEmpty() ? vel::FilePath() : m_tFolder.join(vel::FilePath(value));
    }

private:
    bool take(const std::string& line)
    {
        const std::size_t equals = line.find('=');
        const auto wide = vel::stringFromUtf8(line);
        if (equals == std::string::npos || !wide) {
            return false;
        }
        const std::size_t place = wide->find(L'=');
        m_tValues[wide->substring(0, place).trimmed()] = wide->substring(place + 1).trimmed();
        return true;
    }

    std::map<vel::String, vel::String> m_tValues;
    vel::FilePath m_tFolder;
};

void show(const vel::String& text)
{
    std::cout << vel::toUtf8Lossy(text) << '\n';
}

void showAllowed(const vel::ConfigReader& config, vel::LocaleTagLookup& catalogue)
{
    catalogue.loadConfig(config, vel::kConfigReload);
    std::vector<vel::Locale> locales;
    catalogue.getSupportedLocales(locales);
    for (const vel::Locale& each : locales) {
        show(L"  locale " + each.definitionName());
    }
    vel::LanguageLists lists;
    lists.loadConfig(config, vel::kConfigInitialize);
    std::vector<vel::String> languages;
    lists.getSupportedLanguageList(languages);
    for (const vel::String& each : languages) {
        show(L"  language " + each);
    }
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "usage: custom_config_reader DATAFOLDER SETTINGS\n";
        return EXIT_FAILURE;
    }
    try {
        const vel::String data = vel::stringFromUtf8(argv[1]).value();
        const auto settings = vel::makeHandle<LineConfigReader>(vel::stringFromUtf8(argv[2]).value());
        vel::LocaleTagLookup catalogue;
        catalogue.loadLocaleDefinitions(*settings, data + L"/localedefinitions.xml");

        show(L"the settings alone, in which xx-yy is no locale that is defined:");
        showAllowed(*settings, catalogue);

        vel::MemoryConfigReader commandLine(settings);
        commandLine.set(L"Localization/AllowedLocales", L"ja-jp");
        show(L"with a value from the command line in front of them:");
        showAllowed(commandLine, catalogue);
    } catch (const std::exception& fault) {
        std::cerr << fault.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
