#include "textargument.h"

#include "lines.h"
#include "text.h"

namespace cli {

CLI::Option* TextArgument::addTo(CLI::App& app, const std::string& name, const std::string& description)
{
    const std::string batch = "; \"-\" takes each line of standard input, and gives a line for each";
    return app.add_option(name, m_tText, description + batch)->required()->type_name("");
}

ExitCode TextArgument::forEach(const Session& session, Output& output, const Answer& answer) const
{
    if (m_tText == "-" && !session.options().m_bTextAfterMark) {
        return answerLines(output, answer);
    }
    return answer(wideText(*m_tText, "argument")) ? kExitSuccess : kExitNoMatch;
}

ExitCode TextArgument::answerLines(Output& output, const Answer& answer)
{
    output.setBatch();
    // Whoever waits for an answer before sending the next line gets it: nothing is held back while reading may wait.
    LineReader reader([&output] { output.flush(); });
    std::string line;
    while (reader.next(line)) {
        answer(wideText(line, "standard input, line " + std::to_string(reader.count())));
    }
    return kExitSuccess;
}

}  // namespace cli
