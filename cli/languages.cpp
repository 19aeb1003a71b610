#include "subcommand.h"
#include "text.h"
#include "webi18n/languagelists.h"

namespace cli {

namespace {

class Languages final : public Subcommand
{
public:
    ExitCode run(Session& session, Output& output) override
    {
        vel::LanguageLists lists;
        lists.loadConfig(session.config(), vel::kConfigInitialize);
        std::vector<vel::String> languages;
        lists.getSupportedLanguageList(languages);
        Json json;
        json["languages"] = Json::array();
        std::string line = "languages:";
        for (const vel::String& language : languages) {
            json["languages"].push_back(utf8Text(language));
            line += " " + (language.isEmpty() ? "(empty)" : visibleText(language));
        }
        output.row(json, line);
        return kExitSuccess;
    }
};

}  // namespace

std::unique_ptr<Subcommand> addLanguages(CLI::App& app)
{
    CLI::App* sub = app.add_subcommand("languages", "The interface languages that the configuration allows");
    sub->footer(
        "The codes of Localization/AllowedLanguages as they stand there, empty ones included.\n\n"
        "  webi18n --set Localization/AllowedLanguages=en,fr languages");
    return std::make_unique<Languages>();
}

}  // namespace cli
