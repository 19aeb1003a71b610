#include <iconv.h>

#include <map>

#include "icureference.h"
#include "loops.h"
#include "textrows.h"

// Every character of every set that the C library's iconv knows too. iconvdifferences.txt lists where the two differ,
// and why; a difference that is not listed, or listed and no longer there, is a fault. Where ICU's tables have changed
// from one version to another, the rows are those of the table that it has here.

namespace {

using namespace transcodingtests;
using vel::UniversalTranscoding;

class Iconv
{
public:
    explicit Iconv(const std::string& name) : m_tHandle(iconv_open(name.c_str(), "WCHAR_T"))
    {
        if (m_tHandle == reinterpret_cast<iconv_t>(-1)) {
            throw std::runtime_error("iconv has no " + name);
        }
    }
    Iconv(const Iconv&) = delete;
    Iconv& operator=(const Iconv&) = delete;
    ~Iconv() { iconv_close(m_tHandle); }

    /// The bytes of a text of one character, or nothing. Approximations, which iconv counts, are none.
    std::string encode(wchar_t character)
    {
        char bytes[64];
        char* out = bytes;
        std::size_t room = sizeof bytes;
        char* in = reinterpret_cast<char*>(&character);
        std::size_t size = sizeof character;
        iconv(m_tHandle, nullptr, nullptr, nullptr, nullptr);
        if (iconv(m_tHandle, &in, &size, &out, &room) != 0) {
            return {};
        }
        iconv(m_tHandle, nullptr, nullptr, &out, &room);
        return std::string(bytes, out);
    }

private:
    iconv_t m_tHandle;
};

struct DifferenceClass
{
    std::uint32_t m_nFirst;
    std::uint32_t m_nLast;
    std::string m_sKind;
    std::size_t m_nListed;
    std::string m_sPlace;
    std::size_t m_nFound = 0;
};

using SetPair = std::pair<std::string, std::string>;

std::map<SetPair, std::vector<DifferenceClass>> listedDifferences()
{
    std::map<SetPair, std::vector<DifferenceClass>> result;
    for (const testsupport::TextRow& row : testsupport::readRows(WEBI18N_SOURCE_DIR "/iconvdifferences.txt", 7)) {
        const auto code = [&](std::size_t field) {
            return static_cast<std::uint32_t>(std::stoul(row.field(field), nullptr, 16));
        };
        result[{row.field(0), row.field(1)}].push_back(
            {code(2), code(3), row.field(4), std::stoul(row.field(5)), row.m_sPlace});
    }
    return result;
}

std::string kindOf(std::string_view ours, std::string_view theirs)
{
    return ours.empty() ? "theirs" : theirs.empty() ? "ours" : "other";
}

void countDifference(std::vector<DifferenceClass>& classes, std::uint32_t code, const std::string& kind,
                     const std::string& bytes)
{
    for (DifferenceClass& each : classes) {
        if (code >= each.m_nFirst && code <= each.m_nLast && kind == each.m_sKind) {
            ++each.m_nFound;
            return;
        }
    }
    ADD_FAILURE() << shown(code) << " " << kind << ": " << bytes << " is not listed";
}

void compare(const SetPair& names, std::vector<DifferenceClass> classes)
{
    SCOPED_TRACE(names.first + " and " + names.second);
    const UniversalTranscoding transcoding = transcodingOf(names.first);
    Iconv iconv(names.second);
    const bool hasAll = names.first.starts_with("UTF-") || names.first == "gb18030";
    for (std::uint32_t code = 0; code < 0x110000 && !testing::Test::HasFailure(); ++code) {
        // Beyond the ideographs, where only these sets have anything, the others are tried in steps.
        const bool isPassedOver = !hasAll && code >= 0x30000 && code % 64 != 0 && code >> 12 != 0xE0;
        if ((code >= 0xD800 && code <= 0xDFFF) || isPassedOver) {
            continue;
        }
        const wchar_t character = static_cast<wchar_t>(code);
        const std::string theirs = iconv.encode(character);
        char bytes[32];
        const vel::TranscodingResult result =
            transcoding.encode(&character, 1, bytes, sizeof bytes, vel::kUnencodableError);
        const std::string_view ours(bytes, result.isComplete() ? result.m_nWritten : 0);
        if (ours != theirs) {
            countDifference(classes, code, kindOf(ours, theirs), hex(ours) + " / " + hex(theirs));
        }
    }
    for (const DifferenceClass& each : classes) {
        EXPECT_EQ(each.m_nListed, each.m_nFound) << each.m_sPlace << " lists another number";
    }
}

TEST(AgainstIconv, EveryCharacterOfEverySharedSet)
{
    std::map<std::string, bool> compared;
    for (const auto& [names, classes] : listedDifferences()) {
        const std::size_t at = names.first.find('@');
        const std::string name = names.first.substr(0, at);
        const bool isHere = at == std::string::npos || names.first.substr(at + 1) == icusOwnName(name);
        compared[name] |= isHere;
        if (isHere) {
            compare({name, names.second}, classes);
        }
    }
    for (const auto& [name, isCompared] : compared) {
        EXPECT_TRUE(isCompared) << name << ": no row is for this ICU, whose name of it is " << icusOwnName(name);
    }
}

}  // namespace
