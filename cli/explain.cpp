#include "answers/mappinganswer.h"
#include "subcommand.h"
#include "text.h"
#include "textargument.h"

namespace cli {

namespace {

std::string describeForPeople(const vel::LocaleMappingRule& rule)
{
    const std::string target = rule.m_sDefinition.isEmpty() ? "(nothing)" : visibleText(rule.m_sDefinition);
    return std::to_string(rule.m_nIndex) + " " + quotedText(rule.m_sMatches) + " -> " + target;
}

class Explain final : public Subcommand
{
public:
    explicit Explain(CLI::App& app)
    {
        m_tHeader.addTo(app, "HEADER", "what a browser sends as Accept-Language");
        app.add_option("--language", m_sLanguage, "the interface language that the user asks for, if any")
            ->type_name("L")
            ->take_last();
    }

    ExitCode run(Session& session, Output& output) override
    {
        const vel::String language = wideText(m_sLanguage, "--language");
        return m_tHeader.forEach(session, output, [&](const vel::String& header) {
            answer(header, session.mapping().explainLocale(header, language), output);
            return true;
        });
    }

private:
    static void answer(const vel::String& header, const vel::LocaleMappingExplanation& why, Output& output)
    {
        Facts facts = {{"input", visibleText(header)},
                       {"language", visibleText(why.m_sLanguage)},
                       {"locale", visibleText(why.m_tLocale.definitionName())},
                       {"rule", why.m_tRule ? describeForPeople(*why.m_tRule) : "none (the built-in locale)"}};
        for (const vel::LocaleMappingRule& skipped : why.m_tSkipped) {
            facts.emplace_back("skipped", describeForPeople(skipped) + " (" + answers::reasonOf(skipped) + ")");
        }
        output.answer(answers::describeMapping(header, why), facts);
    }

    TextArgument m_tHeader;
    std::string m_sLanguage;
};

}  // namespace

std::unique_ptr<Subcommand> addExplain(CLI::App& app)
{
    CLI::App* sub = app.add_subcommand("explain", "Which locale and language a browser gets, and by which rule");
    sub->footer(
        "Answers with input, language, locale, rule (index counts from 0) and the skipped rules, which\n"
        "matched but have no target or one that is not allowed. Without a rule the built-in locale is taken.\n\n"
        "  webi18n explain 'fr-CA,fr;q=0.9,en;q=0.8'\n"
        "  webi18n explain --json - < headers.txt");
    return std::make_unique<Explain>(*sub);
}

}  // namespace cli
