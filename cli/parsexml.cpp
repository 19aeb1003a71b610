#include "answers/dateanswer.h"
#include "datefields.h"
#include "subcommand.h"
#include "text.h"
#include "textargument.h"

namespace cli {

namespace {

using vel::ParseDateTime;

const char* nameOf(ParseDateTime::XmlType type)
{
    static constexpr const char* kNames[] = {"kInvalid",      "kXmlDateTime", "kXmlDate",  "kXmlTime", "kXmlYear",
                                             "kXmlYearMonth", "kXmlMonthDay", "kXmlMonth", "kXmlDay"};
    return kNames[type];
}

class ParseXml final : public Subcommand
{
public:
    explicit ParseXml(CLI::App& app) { m_tText.addTo(app, "TEXT", "the value to read"); }

    ExitCode run(Session& session, Output& output) override
    {
        return m_tText.forEach(session, output, [&](const vel::String& text) {
            vel::DateTime value;
            const ParseDateTime::XmlType type =
                ParseDateTime::parseXmlDateTime(text.data(), text.data() + text.length(), value);
            Json json;
            json["text"] = utf8Text(text);
            json["type"] = nameOf(type);
            if (type != ParseDateTime::kInvalid) {
                answers::addDateTime(value, json);
            }
            answerWithFacts(json, output);
            return type != ParseDateTime::kInvalid;
        });
    }

private:
    TextArgument m_tText;
};

}  // namespace

std::unique_ptr<Subcommand> addParseXml(CLI::App& app)
{
    CLI::App* sub = app.add_subcommand("parse-xml", "What a date or time of XML Schema says");
    sub->footer(
        "Reads dateTime, date, time, gYear, gYearMonth, gMonthDay, gMonth and gDay; the only time zone is Z. A single\n"
        "text that is none of them exits with 1. A text that begins with \"-\" stands after --.\n\n"
        "  webi18n parse-xml 2005-12-31T23:59:59.123Z\n"
        "  webi18n parse-xml -- --12-25");
    return std::make_unique<ParseXml>(*sub);
}

}  // namespace cli
