#include "arguments.h"

#include <algorithm>
#include <map>
#include <utility>

#include "text.h"

namespace cli {

namespace {

const std::map<std::string, vel::LogSeverity> kLogLevels = {
    {"information", vel::kLogInformation}, {"minor-warning", vel::kLogMinorWarning}, {"warning", vel::kLogWarning}};

/// The global options as they are written.
struct Written
{
    std::string m_sData;
    std::string m_sConfig;
    std::vector<std::string> m_tSettings;
    std::vector<std::string> m_tDefinitions;
    std::vector<std::string> m_tCurrencies;
    std::vector<std::string> m_tCharacterSets;
    std::vector<std::string> m_tCharacterSetLists;
    std::vector<std::string> m_tMessages;
    std::string m_sMapping;
    std::string m_sLog;
    bool m_bJson = false;
};

using Added = std::vector<std::pair<CLI::App*, std::unique_ptr<Subcommand>>>;

/// An option that names a file each time it is given.
void addFiles(CLI::App& app, const char* name, std::vector<std::string>& files, const char* description)
{
    app.add_option(name, files, description)->type_name("FILE")->allow_extra_args(false);
}

void addGlobalOptions(CLI::App& app, Written& written)
{
    app.add_option("--data", written.m_sData,
                   "the data folder; none: start empty (default: $WEBI18N_DATA, else the one that came along)")
        ->type_name("DIR")
        ->take_last();
    app.add_option("--config", written.m_sConfig, "a configuration file, in front of the data folder's")
        ->type_name("FILE")
        ->take_last();
    app.add_option("--set", written.m_tSettings, "one configuration value, in front of the files'")
        ->type_name("KEY=VALUE")
        ->allow_extra_args(false);
    addFiles(app, "--definitions", written.m_tDefinitions, "locale definitions, loaded after the data folder's");
    addFiles(app, "--currencies", written.m_tCurrencies, "currencies, loaded after the data folder's");
    addFiles(app, "--charsets", written.m_tCharacterSets, "character sets, loaded after the data folder's");
    addFiles(app, "--charset-lists", written.m_tCharacterSetLists,
             "lists of character sets, loaded after the data folder's");
    app.add_option("--messages", written.m_tMessages, "a folder of messages, on top of the data folder's")
        ->type_name("DIR")
        ->allow_extra_args(false);
    app.add_option("--mapping", written.m_sMapping, "mapping rules instead of the data folder's")
        ->type_name("FILE")
        ->take_last();
    app.add_flag("--json", written.m_bJson, "answer with one JSON object a line");
    app.add_option("--log", written.m_sLog,
                   "write the library's records to standard error: information, minor-warning or warning")
        ->type_name("LEVEL")
        ->take_last();
    app.set_version_flag("--version", "webi18n " WEBI18N_VERSION, "print the version and exit");
}

Added addSubcommands(CLI::App& app)
{
    Added added;
    for (const auto add : {&addExplain, &addLocales, &addLocale, &addLanguages, &addDataFormat, &addParse, &addParseXml,
                           &addCurrencies, &addCurrency, &addCharsets, &addCharsetLists, &addCharset, &addEncode,
                           &addSort, &addKeys, &addCompare, &addJava, &addCheck}) {
        std::unique_ptr<Subcommand> subcommand = add(app);
        CLI::App* sub = app.get_subcommands({}).back();
        sub->fallthrough();
        added.emplace_back(sub, std::move(subcommand));
    }
    app.require_subcommand(1);
    return added;
}

vel::LogSeverity readLevel(const std::string& level)
{
    const auto found = kLogLevels.find(level);
    if (found == kLogLevels.end()) {
        throw UsageError("--log " + level + ": accepted are information, minor-warning and warning");
    }
    return found->second;
}

std::pair<vel::String, vel::String> readSetting(const std::string& setting)
{
    const std::size_t equals = setting.find('=');
    if (equals == std::string::npos || equals == 0) {
        throw UsageError("--set " + setting + ": accepted is KEY=VALUE, such as Localization/AllowedLocales=en-us");
    }
    return {wideText(setting.substr(0, equals), "--set"), wideText(setting.substr(equals + 1), "--set")};
}

std::vector<vel::String> readFiles(const std::vector<std::string>& written, const char* option)
{
    std::vector<vel::String> files;
    files.reserve(written.size());
    for (const std::string& file : written) {
        files.push_back(wideText(file, option));
    }
    return files;
}

Options readOptions(const Written& written)
{
    Options options;
    if (!written.m_sData.empty()) {
        options.m_sData = wideText(written.m_sData, "--data");
    }
    options.m_sConfig = wideText(written.m_sConfig, "--config");
    options.m_sMapping = wideText(written.m_sMapping, "--mapping");
    for (const std::string& setting : written.m_tSettings) {
        options.m_tSettings.push_back(readSetting(setting));
    }
    options.m_tDefinitions = readFiles(written.m_tDefinitions, "--definitions");
    options.m_tCurrencies = readFiles(written.m_tCurrencies, "--currencies");
    options.m_tCharacterSets = readFiles(written.m_tCharacterSets, "--charsets");
    options.m_tCharacterSetLists = readFiles(written.m_tCharacterSetLists, "--charset-lists");
    options.m_tMessages = readFiles(written.m_tMessages, "--messages");
    if (!written.m_sLog.empty()) {
        options.m_eLog = readLevel(written.m_sLog);
    }
    options.m_bJson = written.m_bJson;
    return options;
}

void requireUtf8(const std::vector<std::string>& arguments)
{
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        wideText(arguments[index], "argument " + std::to_string(index + 1));
    }
}

/// "--name=" becomes "--name" and an empty value: the parser would take the next argument for the value.
void splitEmptyValues(std::vector<std::string>& arguments, std::size_t end)
{
    for (std::size_t index = end; index-- > 0;) {
        std::string& argument = arguments[index];
        if (argument.size() > 3 && argument.starts_with("--") && argument.find('=') == argument.size() - 1) {
            argument.pop_back();
            arguments.insert(arguments.begin() + static_cast<std::ptrdiff_t>(index) + 1, std::string());
        }
    }
}

std::string subcommandNames(const CLI::App& app)
{
    std::string names;
    for (const CLI::App* sub : app.get_subcommands([](const CLI::App*) { return true; })) {
        names += (names.empty() ? "" : ", ") + sub->get_name();
    }
    return names;
}

std::string describe(const CLI::ParseError& error, const CLI::App& app)
{
    const bool isRequired = dynamic_cast<const CLI::RequiredError*>(&error) != nullptr;
    if (isRequired && app.get_subcommands().empty()) {
        return "a subcommand is required: " + subcommandNames(app);
    }
    std::string unexpected;
    for (const std::string& each : app.remaining(true)) {
        unexpected += " " + each;
    }
    const std::string text = isRequired ? std::string(error.what()) + "; " : "";
    return unexpected.empty() ? error.what() : text + "not expected:" + unexpected + " (after -- everything is text)";
}

/// Help or version; nothing when the command line was read.
std::string parse(CLI::App& app, std::vector<std::string> arguments)
{
    std::reverse(arguments.begin(), arguments.end());
    try {
        app.parse(std::move(arguments));
    } catch (const CLI::CallForHelp&) {
        return app.help();
    } catch (const CLI::CallForVersion& version) {
        return std::string(version.what()) + "\n";
    } catch (const CLI::ParseError& error) {
        throw UsageError(describe(error, app));
    }
    return {};
}

}  // namespace

Request readArguments(std::vector<std::string> arguments)
{
    requireUtf8(arguments);
    const auto mark = std::find(arguments.begin(), arguments.end(), "--");
    const bool hasTextAfterMark = mark != arguments.end() && mark + 1 != arguments.end();
    splitEmptyValues(arguments, static_cast<std::size_t>(mark - arguments.begin()));

    CLI::App app("Shows which locale a browser gets, what a locale holds, and what is wrong in the data.", "webi18n");
    app.footer(
        "Options stand before or after the subcommand; after -- everything is text. Text is UTF-8.\n"
        "Exit status: 0 success, 1 findings or no match, 2 wrong usage, 3 data that cannot be read.\n"
        "webi18n SUBCOMMAND --help tells more.");
    Written written;
    addGlobalOptions(app, written);
    Added added = addSubcommands(app);
    Request request;
    request.m_sText = parse(app, std::move(arguments));
    if (!request.m_sText.empty()) {
        return request;
    }
    request.m_tOptions = readOptions(written);
    request.m_tOptions.m_bTextAfterMark = hasTextAfterMark;
    for (auto& [sub, subcommand] : added) {
        if (sub->parsed()) {
            request.m_pSubcommand = std::move(subcommand);
        }
    }
    return request;
}

}  // namespace cli
