#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace clitest {

using Json = nlohmann::ordered_json;
using Arguments = std::vector<std::string>;

/// What a run of the command left behind.
struct Outcome
{
    std::string m_sOut;
    std::string m_sError;
    int m_nExit = -1;                  ///< the exit status; 128 and the signal's number when a signal ended it
    std::size_t m_nPeakKilobytes = 0;  ///< of memory; not below what the test held when it started the command
    std::size_t m_nWritten = 0;        ///< bytes to files of any kind

    std::vector<std::string> lines() const;
    /// The lines of the output, each a JSON object.
    std::vector<Json> objects() const;
    /// The only line as a JSON object; a test failure when there is not exactly one.
    Json object() const;
};

/// Where and how the command runs.
struct Setting
{
    std::string m_sInput;
    std::string m_sInputFile;  ///< to read from instead
    std::string m_sFolder;     ///< the working folder; empty: this process's
    std::string m_sData;       ///< WEBI18N_DATA; not set when empty
    std::string m_sProgram;    ///< empty: the built command
    std::string m_sOutput;     ///< a file to write to instead of being caught
};

/// Runs the real program and waits for it.
Outcome run(const Arguments& arguments, const Setting& setting = {});

/// The arguments with "--data" and the synthetic data folder in front.
Arguments onFolder(Arguments arguments);
/// A file below tests/cli/data.
std::string dataFile(const std::string& name);
/// The generated data pack.
std::string packFolder();

/// A running command to talk to line by line.
class Dialogue
{
public:
    explicit Dialogue(const Arguments& arguments);
    ~Dialogue();
    Dialogue(const Dialogue&) = delete;
    Dialogue& operator=(const Dialogue&) = delete;

    /// Sends all of it; ends when it is read, but for what a pipe holds.
    void send(const std::string& bytes);
    /// Sends a line and waits for one.
    std::string ask(const std::string& line);
    /// Ends the input and waits; the exit status.
    int finish();
    int process() const noexcept { return m_nChild; }

private:
    int m_nChild = -1;
    int m_nToChild = -1;
    int m_nFromChild = -1;
};

}  // namespace clitest
