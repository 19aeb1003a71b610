#include "sorting/linesorter.h"
#include "sorting/sortarguments.h"
#include "subcommand.h"
#include "text.h"

namespace cli {

namespace {

constexpr std::size_t kMegabyte = std::size_t{1} << 20;

class Sort final : public Subcommand
{
public:
    explicit Sort(CLI::App& app)
    {
        m_tSort.addTo(app);
        app.add_flag("-0,--null", m_bNull, "lines end with NUL, so that a text may hold line feeds");
        app.add_option("--memory", m_nMegabytes,
                       "megabytes to use before temporary files are, the program's own included (default: 1024)")
            ->type_name("MB")
            ->check(CLI::Range(1U, 1U << 20))
            ->take_last();
        app.add_option("FILE", m_tFiles, "what to sort; standard input without one, and for \"-\"")->type_name("");
    }

    ExitCode run(Session& /*session*/, Output& output) override
    {
        const auto strength = m_tSort.strength();
        const auto hGuard = vel::i18n::NLSEnvironment::getEnvironmentGuard();
        const std::string separator(1, m_bNull ? '\0' : '\n');
        LineSorter sorter(m_tSort.sort(), strength, m_nMegabytes * kMegabyte, separator.front());
        InputFiles files(m_tFiles);
        const auto append = [&](std::string& text, std::string_view line) {
            if (output.isJson()) {
                Json json;
                json["text"] = line;
                text.append(json.dump()) += '\n';
                return;
            }
            text.append(line).append(separator);
        };
        sorter.sort(files, append, [&](std::string_view text) { output.text(text); });
        return kExitSuccess;
    }

private:
    SortArguments m_tSort;
    bool m_bNull = false;
    std::size_t m_nMegabytes = 1024;
    std::vector<std::string> m_tFiles;
};

}  // namespace

std::unique_ptr<Subcommand> addSort(CLI::App& app)
{
    CLI::App* sub = app.add_subcommand("sort", "Lines in the order of a language");
    sub->footer(
        "Lines that compare equal keep their order. Input of any size: what does not fit into the memory goes to\n"
        "temporary files in $TMPDIR, else /tmp. A line that is no UTF-8 exits with 2.\n\n"
        "  webi18n sort --sort sv < names.txt\n"
        "  webi18n sort --sort de-u-co-phonebk --strength 1 names.txt\n"
        "  find . -print0 | webi18n sort --sort fr-CA -0");
    return std::make_unique<Sort>(*sub);
}

}  // namespace cli
