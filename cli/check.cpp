#include "check/checker.h"
#include "subcommand.h"
#include "text.h"

namespace cli {

namespace {

class Check final : public Subcommand
{
public:
    explicit Check(CLI::App& app)
    {
        app.add_option("FILE", m_tFiles, "files to check as if they were loaded after the data folder's")
            ->type_name("");
    }

    ExitCode run(Session& session, Output& output) override
    {
        std::vector<vel::FilePath> files;
        for (const std::string& file : m_tFiles) {
            files.emplace_back(wideText(file, "FILE"));
        }
        Findings findings(output);
        Checker(session, findings).run(files);
        return findings.isEmpty() ? kExitSuccess : kExitNoMatch;
    }

private:
    std::vector<std::string> m_tFiles;
};

}  // namespace

std::unique_ptr<Subcommand> addCheck(CLI::App& app)
{
    CLI::App* sub = app.add_subcommand("check", "What the loaders skip or correct, and what looks like an accident");
    sub->footer(
        "Without FILE, the files of the data folder and of the options are checked. What a FILE holds is found by\n"
        "looking into it: definitions, lists, mapping rules, currencies, configuration or messages. A line for each\n"
        "finding:\n\n"
        "  file:line:column: severity: what is wrong and how to mend it [rule]\n\n"
        "Severities are information, minorWarning, warning and error. Findings exit with 1.\n\n"
        "  webi18n check\n"
        "  webi18n check my-definitions.xml\n"
        "  webi18n --data none check --json my-definitions.xml");
    return std::make_unique<Check>(*sub);
}

}  // namespace cli
