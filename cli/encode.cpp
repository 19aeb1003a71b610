#include <map>

#include "subcommand.h"
#include "text.h"
#include "textstream.h"
#include "vel/transcoding/transcodingencoder.h"

namespace cli {

namespace {

using vel::Handle;
using vel::String;

const std::map<std::string, vel::EUnencodable> kPolicies = {{"reference", vel::kUnencodableReference},
                                                            {"substitute", vel::kUnencodableSubstitute},
                                                            {"error", vel::kUnencodableError}};

class Encode final : public Subcommand
{
public:
    explicit Encode(CLI::App& app)
    {
        app.add_option("--charset", m_sLabel, "the character set's label, in any letter case")
            ->type_name("LABEL")
            ->take_last()
            ->required();
        app.add_option("--unencodable", m_sPolicy,
                       "for what the set lacks: reference (&#8364;, the default), substitute or error")
            ->type_name("POLICY")
            ->take_last();
    }

    ExitCode run(Session& session, Output& output) override
    {
        const vel::EUnencodable policy = readPolicy();
        const String label = wideText(m_sLabel, "--charset");
        const vel::CharacterSetResolver& resolver = session.characterSets();
        const Handle<const vel::CharacterSetDefinition> definition = resolver.getCharacterSetDefinition(label);
        if (definition.isNull()) {
            complain("error", quotedText(label) + ": there is no character set of that label");
            return kExitNoMatch;
        }
        vel::TranscodingEncoder encoder(resolver.createCharacterSet(label, *definition)->getTranscoding(), policy);
        return filter(encoder, output) ? kExitSuccess : kExitNoMatch;
    }

private:
    vel::EUnencodable readPolicy() const
    {
        const auto found = kPolicies.find(m_sPolicy);
        if (found == kPolicies.end()) {
            throw UsageError("--unencodable " + m_sPolicy + ": accepted are reference, substitute and error");
        }
        return found->second;
    }

    /// Encodes standard input; false, and said so, at a character that is an error.
    bool filter(vel::TranscodingEncoder& encoder, Output& output) const
    {
        TextStream input([&output] { output.flush(); });
        std::wstring text;
        vel::NarrowString bytes;
        for (std::size_t before = 0; input.next(text); before += text.size()) {
            bytes.clear();
            const std::optional<std::size_t> fault = encoder.encode(text.data(), text.size(), bytes);
            output.text(bytes.view());
            if (fault) {
                output.flush();
                complain("error", describe(text[*fault], before + *fault));
                return false;
            }
        }
        bytes.clear();
        encoder.finish(bytes);
        output.text(bytes.view());
        return true;
    }

    std::string describe(wchar_t character, std::size_t index) const
    {
        return "standard input: " + quotedText(String(&character, 1)) + ", character " + std::to_string(index + 1) +
               ", is not in " + m_sLabel;
    }

    std::string m_sLabel;
    std::string m_sPolicy = "reference";
};

}  // namespace

std::unique_ptr<Subcommand> addEncode(CLI::App& app)
{
    CLI::App* sub = app.add_subcommand("encode", "Encodes the text of standard input in a character set");
    sub->footer(
        "Reads UTF-8 and writes the bytes of the character set, in pieces: the input may be of any length. Line feeds\n"
        "stay. With --unencodable error it ends at the first character that the set lacks, with exit status 1.\n\n"
        "  webi18n encode --charset iso-8859-15 < page.txt > page.latin9\n"
        "  webi18n encode --charset shift_jis --unencodable error < page.txt");
    return std::make_unique<Encode>(*sub);
}

}  // namespace cli
