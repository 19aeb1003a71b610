#include "subcommand.h"
#include "text.h"
#include "textargument.h"

namespace cli {

namespace {

class DataFormat final : public Subcommand
{
public:
    explicit DataFormat(CLI::App& app) { m_tText.addTo(app, "TEXT", "the format to look up"); }

    ExitCode run(Session& session, Output& output) override
    {
        return m_tText.forEach(session, output, [&](const vel::String& text) {
            const bool valid = session.catalogue()->isValidDataFormat(text);
            Json json;
            json["text"] = utf8Text(text);
            json["valid"] = valid;
            output.answer(json, {{"text", quotedText(text)}, {"valid", valid ? "true" : "false"}});
            return valid;
        });
    }

private:
    TextArgument m_tText;
};

}  // namespace

std::unique_ptr<Subcommand> addDataFormat(CLI::App& app)
{
    CLI::App* sub = app.add_subcommand("data-format", "Whether a text is a standard data format");
    sub->footer(
        "Standard are the entries without a name of all lists in the definitions file that was loaded last, and\n"
        "[MMMM], [MMM], [DDDD] and [DDD]. Letter case counts. A single text that is none exits with 1.\n\n"
        "  webi18n data-format 'dd/MM/yyyy'");
    return std::make_unique<DataFormat>(*sub);
}

}  // namespace cli
