#include "subcommand.h"
#include "text.h"

namespace cli {

namespace {

using vel::CharacterSetList;
using vel::String;

class CharsetLists final : public Subcommand
{
public:
    ExitCode run(Session& session, Output& output) override
    {
        output.setBatch();
        for (const auto& [name, list] : session.characterSetLists().getCharacterSetLists()) {
            answer(name, *list, output);
        }
        return kExitSuccess;
    }

private:
    static void answer(const String& name, const CharacterSetList& list, Output& output)
    {
        Json json{{"name", utf8Text(name)}, {"entries", Json::array()}};
        std::string shown;
        for (auto each = list.definitions_begin(); each != list.definitions_end(); ++each) {
            const String& label = each->first;
            const String& definition = each->second->getDefinitionLabel();
            json["entries"].push_back({utf8Text(label), utf8Text(definition)});
            shown.append(shown.empty() ? "" : " ").append(visibleText(label));
            // Most labels are the definition's own.
            shown.append(label == definition ? "" : "=" + visibleText(definition));
        }
        output.answer(json, {{"name", visibleText(name)}, {"entries", shown}});
    }
};

}  // namespace

std::unique_ptr<Subcommand> addCharsetLists(CLI::App& app)
{
    CLI::App* sub = app.add_subcommand("charset-lists", "The lists of character sets, in order of preference");
    sub->footer(
        "A line for each list with its entries: the label, and behind \"=\" the definition where that is another "
        "one.\n\n"
        "  webi18n charset-lists\n"
        "  webi18n --charset-lists my-lists.xml charset-lists --json");
    return std::make_unique<CharsetLists>();
}

}  // namespace cli
