#include "currencyanswer.h"
#include "subcommand.h"
#include "text.h"
#include "textargument.h"

namespace cli {

namespace {

using vel::Currency;
using vel::Handle;
using vel::String;

class ShowCurrency final : public Subcommand
{
public:
    explicit ShowCurrency(CLI::App& app)
    {
        CLI::Option* tag = m_tTag.addTo(app, "TAG", "the currency's tag, such as EUR or loc:ja-jp")->required(false);
        app.add_option("--symbol", m_tSymbol, "its symbol instead; where several have it, the last one")
            ->type_name("S")
            ->take_last()
            ->excludes(tag);
        m_tAnswer.addTo(app);
    }

    ExitCode run(Session& session, Output& output) override
    {
        if (!m_tTag.isGiven() && !m_tSymbol) {
            throw UsageError("currency: accepted is a TAG, such as EUR, or --symbol S");
        }
        const String symbol = wideText(m_tSymbol.value_or(""), "--symbol");
        if (!m_tAnswer.prepare(session)) {
            return kExitNoMatch;
        }
        const vel::CurrencyLookup& currencies = session.currencies();
        if (m_tSymbol) {
            const bool found = answer({"symbol", symbol}, currencies.lookupCurrencySymbol(symbol), session, output);
            return found ? kExitSuccess : kExitNoMatch;
        }
        return m_tTag.forEach(session, output, [&](const String& tag) {
            return answer({"tag", tag}, currencies.lookupCurrencyTag(tag), session, output);
        });
    }

private:
    /// What was asked for.
    struct Question
    {
        const char* m_pKey;  // "tag" or "symbol"
        const String& m_sText;
    };

    bool answer(const Question& question, const Handle<const Currency>& currency, Session& session, Output& output)
    {
        if (currency.isNull()) {
            refuse(question, output);
            return false;
        }
        m_tAnswer.answer(*currency, session, output);
        return true;
    }

    static void refuse(const Question& question, Output& output)
    {
        const std::string problem = std::string("there is no currency of that ") + question.m_pKey;
        if (!output.isBatch()) {
            complain("error", quotedText(question.m_sText) + ": " + problem);
            return;
        }
        Json json;
        json[question.m_pKey] = utf8Text(question.m_sText);
        json["error"] = problem;
        output.answer(json, {{question.m_pKey, quotedText(question.m_sText)}, {"error", problem}});
    }

    TextArgument m_tTag;
    std::optional<std::string> m_tSymbol;
    CurrencyAnswer m_tAnswer;
};

}  // namespace

std::unique_ptr<Subcommand> addCurrency(CLI::App& app)
{
    CLI::App* sub = app.add_subcommand("currency", "What a currency holds, and how it is called in a language");
    sub->footer(
        "Shows type, symbol, digits (-1: the number's own), format and negativeFormats, in which $ is the symbol and\n"
        "# the number, preferredNegativeTag, display (whether users choose it), placeholder, thousandsSeparator,\n"
        "caption and name. Texts that the language lacks are the English ones.\n\n"
        "  webi18n currency EUR --language fr\n"
        "  webi18n currency --symbol '$' --json\n"
        "  webi18n currency --json - < tags.txt");
    return std::make_unique<ShowCurrency>(*sub);
}

}  // namespace cli
