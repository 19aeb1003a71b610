#include "currencyanswer.h"
#include "subcommand.h"

namespace cli {

namespace {

class Currencies final : public Subcommand
{
public:
    explicit Currencies(CLI::App& app) { m_tAnswer.addTo(app); }

    ExitCode run(Session& session, Output& output) override
    {
        if (!m_tAnswer.prepare(session)) {
            return kExitNoMatch;
        }
        output.setBatch();
        for (const vel::Handle<const vel::Currency>& currency : session.currencies().getCurrencyList()) {
            m_tAnswer.answer(*currency, session, output);
        }
        return kExitSuccess;
    }

private:
    CurrencyAnswer m_tAnswer;
};

}  // namespace

std::unique_ptr<Subcommand> addCurrencies(CLI::App& app)
{
    CLI::App* sub = app.add_subcommand("currencies", "All currencies, in the order of their files");
    sub->footer(
        "A line for each with all that \"currency\" shows, also for those that a later one of the same tag hides.\n\n"
        "  webi18n currencies --language fr\n"
        "  webi18n --currencies my-currencies.xml currencies --json");
    return std::make_unique<Currencies>(*sub);
}

}  // namespace cli
