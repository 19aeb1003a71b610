#include "sorting/keymaker.h"
#include "sorting/sortarguments.h"
#include "subcommand.h"
#include "text.h"

namespace cli {

namespace {

class Compare final : public Subcommand
{
public:
    explicit Compare(CLI::App& app)
    {
        m_tSort.addTo(app);
        app.add_option("A", m_sLeft, "a text")->required()->type_name("");
        app.add_option("B", m_sRight, "a text to compare it with")->required()->type_name("");
    }

    ExitCode run(Session& /*session*/, Output& output) override
    {
        const auto strength = m_tSort.strength();
        const auto hGuard = vel::i18n::NLSEnvironment::getEnvironmentGuard();
        const std::unique_ptr<KeyMaker> maker = makeKeyMaker(m_tSort.sort(), strength);
        const int result = maker->collator().compare(wideText(m_sLeft, "argument A"), wideText(m_sRight, "argument B"));
        Json json;
        json["result"] = result;
        output.answer(json, {{"result", std::to_string(result)}});
        return kExitSuccess;
    }

private:
    SortArguments m_tSort;
    std::string m_sLeft;
    std::string m_sRight;
};

}  // namespace

std::unique_ptr<Subcommand> addCompare(CLI::App& app)
{
    CLI::App* sub = app.add_subcommand("compare", "Which of two texts stands first in the order of a language");
    sub->footer(
        "\"result\" is -1 when A stands before B, 0 when they are equal in that order, 1 when A stands behind B.\n\n"
        "  webi18n compare --sort sv z \xC3\xA4\n"
        "  webi18n compare --sort en --strength 1 role R\xC3\xB4le");
    return std::make_unique<Compare>(*sub);
}

}  // namespace cli
