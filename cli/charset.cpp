#include "answers/charsetanswer.h"
#include "subcommand.h"
#include "text.h"

namespace cli {

namespace {

using vel::CharacterSetList;
using vel::CharacterSetResolver;
using vel::Handle;

class ChooseCharset final : public Subcommand
{
public:
    explicit ChooseCharset(CLI::App& app)
    {
        app.add_option("--supported", m_sSupported, "the list of what the server supports")
            ->type_name("LIST")
            ->take_last()
            ->required();
        app.add_option("--preferred", m_sPreferred, "the list of what the reader prefers, such as locale:ja-jp")
            ->type_name("LIST")
            ->take_last()
            ->required();
    }

    ExitCode run(Session& session, Output& output) override
    {
        const CharacterSetResolver& resolver = session.characterSetLists();
        const Handle<const CharacterSetList> supported = find(resolver, m_sSupported, "--supported");
        const Handle<const CharacterSetList> preferred = find(resolver, m_sPreferred, "--preferred");
        if (supported.isNull() || preferred.isNull()) {
            return kExitNoMatch;
        }
        const Handle<vel::CharacterSet> chosen = resolver.getPreferredCharacterSet(*supported, *preferred);
        output.answer(answers::describeCharacterSet(*chosen),
                      {{"label", visibleText(chosen->getLabel())},
                       {"implementation", visibleText(chosen->getTranscoding().getName())}});
        return kExitSuccess;
    }

private:
    /// Null, and said so, when there is no list of that name.
    static Handle<const CharacterSetList> find(const CharacterSetResolver& resolver, const std::string& name,
                                               const char* option)
    {
        const vel::String wide = wideText(name, option);
        const auto found = resolver.getCharacterSetLists().find(wide);
        if (found == resolver.getCharacterSetLists().end()) {
            complain("error", quotedText(wide) + ": there is no character set list of that name");
            return {};
        }
        return found->second;
    }

    std::string m_sSupported;
    std::string m_sPreferred;
};

}  // namespace

std::unique_ptr<Subcommand> addCharset(CLI::App& app)
{
    CLI::App* sub = app.add_subcommand("charset", "Which character set a response gets, and under which label");
    sub->footer(
        "The first entry of the preferred list that the supported list has too, under the supported list's label; "
        "when\n"
        "they have nothing in common, the supported list's first entry.\n\n"
        "  webi18n charset --supported supported --preferred locale:ja-jp --json");
    return std::make_unique<ChooseCharset>(*sub);
}

}  // namespace cli
