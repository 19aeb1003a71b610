#include "options.h"

#include <charconv>
#include <cstddef>
#include <map>

namespace server {

const char* const ksUsage =
    "webi18n-server [OPTION]...\n"
    "Serves the library's answers as JSON on the loopback address.\n\n"
    "  --port N            the port (8080); 0 takes a free one\n"
    "  --threads N         how many threads serve (2)\n"
    "  --host NAME         one more name or address by which clients may call it\n"
    "  --origin URL        one more site whose pages may send to it, such as https://example.com\n"
    "  --data DIR          the data folder; none: start empty\n"
    "  --config FILE       a configuration file, in front of the data folder's\n"
    "  --set KEY=VALUE     one configuration value, in front of the files'\n"
    "  --definitions FILE  locale definitions, loaded after the data folder's\n"
    "  --currencies FILE   currencies, loaded after the data folder's\n"
    "  --mapping FILE      mapping rules instead of the data folder's\n"
    "  --charsets FILE     character sets, loaded after the data folder's\n"
    "  --charset-lists FILE  their lists, loaded after the data folder's\n"
    "  --messages DIR      a folder of messages, on top of the data folder's\n"
    "  --log LEVEL         information, minor-warning or warning (default)\n"
    "  --access-log WHICH  on (default) or off\n"
    "  --help              this text\n";

namespace {

vel::String wideOf(const std::string& text, const std::string& name)
{
    const auto wide = vel::stringFromUtf8(text);
    if (!wide) {
        throw UsageError(name + ": the value is no UTF-8");
    }
    return *wide;
}

unsigned numberIn(const std::string& text, const std::string& name, unsigned least, unsigned most)
{
    unsigned number = 0;
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (fault != std::errc() || end != text.data() + text.size() || number < least || number > most) {
        throw UsageError(name + " " + text + ": accepted are " + std::to_string(least) + " to " + std::to_string(most));
    }
    return number;
}

vel::LogSeverity severityIn(const std::string& text, const std::string& name)
{
    static const std::map<std::string, vel::LogSeverity> kLevels = {
        {"information", vel::kLogInformation}, {"minor-warning", vel::kLogMinorWarning}, {"warning", vel::kLogWarning}};
    const auto found = kLevels.find(text);
    if (found == kLevels.end()) {
        throw UsageError(name + " " + text + ": accepted are information, minor-warning and warning");
    }
    return found->second;
}

bool switchIn(const std::string& text, const std::string& name)
{
    if (text != "on" && text != "off") {
        throw UsageError(name + " " + text + ": accepted are on and off");
    }
    return text == "on";
}

std::pair<vel::String, vel::String> settingIn(const std::string& text, const std::string& name)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0) {
        throw UsageError(name + " " + text + ": accepted is KEY=VALUE");
    }
    return {wideOf(text.substr(0, equals), name), wideOf(text.substr(equals + 1), name)};
}

using Read = void (*)(Options&, const std::string& text, const std::string& name);
using Files = std::vector<vel::String> answers::DataOptions::*;

template <Files files>
void readFile(Options& options, const std::string& text, const std::string& name)
{
    (options.m_tData.*files).push_back(wideOf(text, name));
}

const std::map<std::string, Read>& readers()
{
    using answers::DataOptions;
    static const std::map<std::string, Read> kReaders = {
        {"--port", [](Options& o, const std::string& t,
                      const std::string& n) { o.m_nPort = static_cast<std::uint16_t>(numberIn(t, n, 0, 65535)); }},
        {"--threads",
         [](Options& o, const std::string& t, const std::string& n) { o.m_nThreads = numberIn(t, n, 1, 256); }},
        {"--host", [](Options& o, const std::string& t, const std::string&) { o.m_tAccess.m_tHosts.push_back(t); }},
        {"--origin", [](Options& o, const std::string& t, const std::string&) { o.m_tAccess.m_tOrigins.push_back(t); }},
        {"--data", [](Options& o, const std::string& t, const std::string& n) { o.m_tData.m_sData = wideOf(t, n); }},
        {"--config",
         [](Options& o, const std::string& t, const std::string& n) { o.m_tData.m_sConfig = wideOf(t, n); }},
        {"--mapping",
         [](Options& o, const std::string& t, const std::string& n) { o.m_tData.m_sMapping = wideOf(t, n); }},
        {"--set", [](Options& o, const std::string& t,
                     const std::string& n) { o.m_tData.m_tSettings.push_back(settingIn(t, n)); }},
        {"--definitions", &readFile<&DataOptions::m_tDefinitions>},
        {"--currencies", &readFile<&DataOptions::m_tCurrencies>},
        {"--charsets", &readFile<&DataOptions::m_tCharacterSets>},
        {"--charset-lists", &readFile<&DataOptions::m_tCharacterSetLists>},
        {"--messages", &readFile<&DataOptions::m_tMessages>},
        {"--log", [](Options& o, const std::string& t, const std::string& n) { o.m_eLog = severityIn(t, n); }},
        {"--access-log",
         [](Options& o, const std::string& t, const std::string& n) { o.m_bAccessLog = switchIn(t, n); }},
    };
    return kReaders;
}

}  // namespace

Options readOptions(const std::vector<std::string>& arguments)
{
    Options options;
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const std::string& argument = arguments[index];
        if (argument == "--help") {
            options.m_bHelp = true;
            continue;
        }
        const std::size_t equals = argument.find('=');
        const std::string name = argument.substr(0, equals);
        const auto reader = readers().find(name);
        if (reader == readers().end()) {
            throw UsageError(argument + ": there is no such option");
        }
        if (equals == std::string::npos && index + 1 == arguments.size()) {
            throw UsageError(name + ": its value is missing");
        }
        reader->second(options, equals == std::string::npos ? arguments[++index] : argument.substr(equals + 1), name);
    }
    return options;
}

}  // namespace server
