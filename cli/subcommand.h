#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "failures.h"
#include "output.h"
#include "session.h"

namespace cli {

/// One subcommand: its arguments are filled by the command line, then it runs once.
class Subcommand
{
public:
    Subcommand() = default;
    Subcommand(const Subcommand&) = delete;
    Subcommand& operator=(const Subcommand&) = delete;
    virtual ~Subcommand() = default;

    virtual ExitCode run(Session& session, Output& output) = 0;
};

// Each adds its subcommand, with its options and help, to the application.
std::unique_ptr<Subcommand> addExplain(CLI::App& app);
std::unique_ptr<Subcommand> addLocales(CLI::App& app);
std::unique_ptr<Subcommand> addLocale(CLI::App& app);
std::unique_ptr<Subcommand> addLanguages(CLI::App& app);
std::unique_ptr<Subcommand> addDataFormat(CLI::App& app);
std::unique_ptr<Subcommand> addParse(CLI::App& app);
std::unique_ptr<Subcommand> addParseXml(CLI::App& app);
std::unique_ptr<Subcommand> addCurrencies(CLI::App& app);
std::unique_ptr<Subcommand> addCurrency(CLI::App& app);
std::unique_ptr<Subcommand> addSort(CLI::App& app);
std::unique_ptr<Subcommand> addKeys(CLI::App& app);
std::unique_ptr<Subcommand> addCompare(CLI::App& app);
std::unique_ptr<Subcommand> addJava(CLI::App& app);
std::unique_ptr<Subcommand> addCharsets(CLI::App& app);
std::unique_ptr<Subcommand> addCharsetLists(CLI::App& app);
std::unique_ptr<Subcommand> addCharset(CLI::App& app);
std::unique_ptr<Subcommand> addEncode(CLI::App& app);
std::unique_ptr<Subcommand> addCheck(CLI::App& app);

}  // namespace cli
