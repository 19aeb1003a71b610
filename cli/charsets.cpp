#include "answers/charsetanswer.h"
#include "subcommand.h"
#include "text.h"

namespace cli {

namespace {

class Charsets final : public Subcommand
{
public:
    ExitCode run(Session& session, Output& output) override
    {
        output.setBatch();
        for (const auto& [label, definition] : session.characterSets().getCharacterSetDefinitions()) {
            answer(*definition, output);
        }
        return kExitSuccess;
    }

private:
    static void answer(const vel::CharacterSetDefinition& definition, Output& output)
    {
        std::string shown;
        for (const vel::String& name : definition.getImplementationNames()) {
            shown.append(shown.empty() ? "" : " ").append(visibleText(name));
        }
        output.answer(answers::describeDefinition(definition),
                      {{"definition", visibleText(definition.getDefinitionLabel())}, {"implementations", shown}});
    }
};

}  // namespace

std::unique_ptr<Subcommand> addCharsets(CLI::App& app)
{
    CLI::App* sub = app.add_subcommand("charsets", "The character sets that text can be encoded in");
    sub->footer(
        "A line for each definition with the transcoders that encode it, the one that is used first. Definitions\n"
        "without a transcoder on this machine are left out.\n\n"
        "  webi18n charsets\n"
        "  webi18n --charsets my-charsets.xml charsets --json");
    return std::make_unique<Charsets>();
}

}  // namespace cli
