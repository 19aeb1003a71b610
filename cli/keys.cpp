#include "answers/keystamp.h"
#include "lines.h"
#include "progress.h"
#include "sorting/inputfiles.h"
#include "sorting/keymaker.h"
#include "sorting/sortarguments.h"
#include "subcommand.h"
#include "text.h"

namespace cli {

namespace {

using answers::KeyStamp;
using answers::stampAsJson;

class Keys final : public Subcommand
{
public:
    explicit Keys(CLI::App& app)
    {
        m_tSort.addTo(app, true);
        app.add_option("--verify", m_sVerified, "says whether the keys stored in a file are still comparable")
            ->type_name("FILE")
            ->take_last();
        app.add_option("FILE", m_tFiles, "whose lines get keys; standard input without one, and for \"-\"")
            ->type_name("");
    }

    ExitCode run(Session& /*session*/, Output& output) override
    {
        if (m_tSort.isGiven() == !m_sVerified.empty()) {
            throw UsageError("keys: either --sort NAME or --verify FILE is required");
        }
        const auto strength = m_tSort.strength();
        const auto hGuard = vel::i18n::NLSEnvironment::getEnvironmentGuard();
        if (!m_sVerified.empty()) {
            return verify(output);
        }
        const std::unique_ptr<KeyMaker> maker = makeKeyMaker(m_tSort.sort(), strength);
        const KeyStamp stamp = answers::stampOf(maker->collator());
        output.row(stampAsJson(stamp), answers::stampAsLine(stamp));
        writeKeys(*maker, output);
        return kExitSuccess;
    }

private:
    void writeKeys(KeyMaker& maker, Output& output)
    {
        InputFiles files(m_tFiles);
        Progress progress;
        std::size_t total = 0;
        while (files.openNext()) {
            LineReader reader([&output] { output.flush(); }, files.file(), files.name(), '\n');
            std::string line;
            while (reader.next(line)) {
                writeKey(maker, line, files.name() + ", line " + std::to_string(reader.count()), output);
                progress.show(++total, "keys");
            }
        }
    }

    void writeKey(KeyMaker& maker, const std::string& line, const std::string& where, Output& output)
    {
        vel::i18n::RefCollationKey key;
        m_tPool.clear();
        if (const auto fault = maker.makeKey(line, m_tPool, key)) {
            throw UsageError(where + ": invalid UTF-8 at byte offset " + std::to_string(*fault));
        }
        const std::string digits = answers::hexadecimalText(key.view());
        Json json;
        if (output.isJson()) {
            json["key"] = digits;
            json["text"] = line;
        }
        output.row(json, output.isJson() ? std::string() : digits + "\t" + line);
    }

    /// Stored keys compare with keys that are made today when sort, strength and version are the same.
    ExitCode verify(Output& output) const
    {
        const KeyStamp stored = storedStamp();
        std::string current;
        vel::i18n::NLSThreadContext context(vel::i18n::NLSEnvironment::getDefaultEnvironment());
        const vel::String sort = wideText(stored.m_sSort, m_sVerified);
        if (answers::isSort(context, sort)) {
            current = utf8Text(vel::i18n::Collator(context, sort, vel::i18n::kCollationStrengthDefault).version());
        }
        const bool isComparable = !current.empty() && current == stored.m_sVersion;
        Json json = stampAsJson(stored);
        json["current"] = current.empty() ? Json() : Json(current);
        json["comparable"] = isComparable;
        output.answer(json, {{"sort", visibleText(sort)},
                             {"strength", stored.m_sStrength},
                             {"version", visibleText(wideText(stored.m_sVersion, m_sVerified))},
                             {"current", current.empty() ? "there is no such sort" : current},
                             {"comparable", isComparable ? "true" : "false"}});
        return isComparable ? kExitSuccess : kExitNoMatch;
    }

    KeyStamp storedStamp() const
    {
        InputFiles files({m_sVerified});
        files.openNext();
        LineReader reader([] {}, files.file(), files.name(), '\n');
        std::string line;
        reader.next(line);
        wideText(line, files.name() + ", line 1");  // JSON holds nothing but UTF-8
        const auto stamp = answers::readStamp(line);
        if (!stamp) {
            throw DataError(files.name() +
                            ": no stored keys: the first line is no stamp of sort, strength and version");
        }
        readStrength(stamp->m_sStrength, files.name() + ": strength");
        return *stamp;
    }

    SortArguments m_tSort;
    std::string m_sVerified;
    std::vector<std::string> m_tFiles;
    vel::NarrowStringPool m_tPool;
};

}  // namespace

std::unique_ptr<Subcommand> addKeys(CLI::App& app)
{
    CLI::App* sub = app.add_subcommand("keys", "Sort keys of lines, to sort anywhere");
    sub->footer(
        "First comes a stamp of sort, strength and version, then each line's key in hexadecimal digits and the line, "
        "in\n"
        "the order of the input, with a tab between them. Keys sort as bytes, in a database or by LC_ALL=C sort. With\n"
        "--verify exits with 1 when keys made today do not compare with those of the file: make them again then.\n\n"
        "  webi18n keys --sort sv < names.txt | LC_ALL=C sort | cut -f 2-\n"
        "  webi18n keys --verify stored.txt");
    return std::make_unique<Keys>(*sub);
}

}  // namespace cli
