#pragma once

#include <string>
#include <vector>

#include "answers/json.h"
#include "http.h"

namespace tests {

/// Something that can be asked of the server and of the command.
struct Question
{
    server::HttpRequest m_tRequest;
    std::vector<std::string> m_tCommand;  ///< the command's arguments
    std::string m_sInput;                 ///< its standard input
    /// The lines that the command gives, out of the server's answer.
    std::string (*m_pAsCommand)(const answers::Json& answer);
};

/// Questions about several locales, with the users' overrides.
std::vector<Question> questionsForBoth();

/// What the command says. Throws std::runtime_error when it cannot be run.
std::string askCommand(const Question& question, const std::string& program, const std::string& data);

/// The request's bytes.
std::string bytesOf(const server::HttpRequest& request);

}  // namespace tests
