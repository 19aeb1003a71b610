// What browsers read in the bytes of every character set of the pack whose label they know, character by character, by
// the tables of the WHATWG Encoding Standard. What differs is listed, with its reason, in webdifferences.txt.

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>

#include "packfiles.h"
#include "textrows.h"
#include "vel/transcoding/universaltranscoding.h"
#include "webencodings.h"

namespace shipped {
namespace {

using reference::WebEncoding;

/// Code points by what is different: "missing" the browser has it and we write a reference, "bytes" the browser writes
/// other bytes but reads ours as the same character, "misread" it reads ours as something else or nothing.
using Differences = std::map<std::string, std::set<char32_t>>;

std::optional<std::string> encoded(const vel::UniversalTranscoding& transcoding, char32_t character)
{
    const wchar_t text = static_cast<wchar_t>(character);
    char bytes[32];
    const vel::TranscodingResult result = transcoding.encode(&text, 1, bytes, sizeof bytes, vel::kUnencodableError);
    return result.isComplete() ? std::optional(std::string(bytes, result.m_nWritten)) : std::nullopt;
}

/// The kind of the difference; empty without one.
std::string differenceAt(char32_t character, const std::optional<std::string>& ours, const WebEncoding& web)
{
    const std::optional<std::string> theirs = web.encode(character);
    if (ours == theirs) {
        return "";
    }
    if (!ours) {
        return "missing";
    }
    if (web.decode(*ours) != std::u32string(1, character)) {
        return "misread";
    }
    // What a browser reads but does not write, such as the supplementary kanji, is no difference for a response.
    return theirs ? "bytes" : "";
}

Differences differencesOf(const std::string& implementation, const WebEncoding& web)
{
    const vel::UniversalTranscoding transcoding(vel::stringFromUtf8(implementation).value());
    Differences differences;
    for (char32_t character = 0; character < 0x110000; ++character) {
        if (character == 0xD800) {
            character = 0xE000;
        }
        const std::string kind = differenceAt(character, encoded(transcoding, character), web);
        if (!kind.empty()) {
            differences[kind].insert(character);
        }
    }
    return differences;
}

/// "1A 1C-1E"
std::string rangesOf(const std::set<char32_t>& characters)
{
    std::ostringstream out;
    out << std::hex << std::uppercase;
    for (auto each = characters.begin(); each != characters.end();) {
        const auto first = each;
        char32_t last = *first;
        while (++each != characters.end() && *each == last + 1) {
            last = *each;
        }
        out << (first == characters.begin() ? "" : " ") << static_cast<unsigned>(*first);
        if (last != *first) {
            out << '-' << static_cast<unsigned>(last);
        }
    }
    return out.str();
}

using Listed = std::map<std::pair<std::string, std::string>, std::string>;

/// Rows: implementation | kind | code points | reason.
Listed listedDifferences()
{
    Listed listed;
    for (const testsupport::TextRow& row : testsupport::readRows(WEBI18N_SOURCE_DIR "/webdifferences.txt", 4)) {
        EXPECT_TRUE(listed.try_emplace({row.field(0), row.field(1)}, row.field(2)).second) << row.m_sPlace;
        EXPECT_FALSE(row.field(3).empty()) << row.m_sPlace;
    }
    return listed;
}

/// Each pair of a first implementation and the encoding that its label means, once.
std::set<std::pair<std::string, std::string>> pairsOfThePack()
{
    std::set<std::pair<std::string, std::string>> pairs;
    for (const Element& definition : readXml(packFile("charactersets.xml")).children) {
        const auto web = reference::webLabels().find(definition.attribute("name"));
        if (web != reference::webLabels().end()) {
            pairs.emplace(definition.children.at(0).text, web->second);
        }
    }
    return pairs;
}

TEST(CharacterSetsOnTheWeb, EveryCharacterIsReadAsItselfButTheListedOnes)
{
    Listed found;
    for (const auto& [implementation, encoding] : pairsOfThePack()) {
        for (const auto& [kind, characters] : differencesOf(implementation, reference::webEncoding(encoding))) {
            found[{implementation, kind}] = rangesOf(characters);
        }
    }
    const Listed listed = listedDifferences();
    for (const auto& [key, characters] : found) {
        const auto row = listed.find(key);
        EXPECT_EQ(row == listed.end() ? "(not listed)" : row->second, characters) << key.first << " | " << key.second;
    }
    for (const auto& [key, characters] : listed) {
        EXPECT_EQ(1U, found.count(key)) << "is no difference: " << key.first << " | " << key.second;
    }
}

TEST(CharacterSetsOnTheWeb, TheReferenceReadsWhatItWrites)
{
    std::set<std::string> names;
    for (const auto& [label, name] : reference::webLabels()) {
        names.insert(name);
    }
    for (const char* noText : {"replacement", "x-user-defined"}) {
        names.erase(noText);
    }
    // Yen, overline, the minus sign and half-width forms are written as other characters.
    const std::set<char32_t> rewritten = {0xA5, 0x203E, 0x2212};
    for (const std::string& name : names) {
        const WebEncoding& web = reference::webEncoding(name);
        std::size_t written = 0;
        for (char32_t character = 0; character < 0x30000; ++character) {
            character = character == 0xD800 ? 0xE000 : character;
            const std::optional<std::string> bytes = web.encode(character);
            written += bytes ? 1 : 0;
            const bool isRewritten = rewritten.count(character) == 1 || (character >= 0xFF61 && character <= 0xFF9F);
            if (bytes && !isRewritten) {
                ASSERT_EQ(std::u32string(1, character), web.decode(*bytes)) << name << ' ' << unsigned(character);
            }
        }
        EXPECT_LT(200U, written) << name;
    }
}

}  // namespace
}  // namespace shipped
