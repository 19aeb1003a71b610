#include <gtest/gtest.h>

#include <algorithm>

#include "icureference.h"
#include "loops.h"

// Every character of every set, and every short sequence of bytes, beside ICU's converter.

namespace {

using namespace transcodingtests;
using vel::NarrowString;
using vel::String;
using vel::UniversalTranscoding;

constexpr std::uint32_t kCodes = 0x110000;

bool isSurrogate(std::uint32_t code)
{
    return code >= 0xD800 && code <= 0xDFFF;
}

/// What is wrong with the encoding of one character; empty when nothing is.
std::string faultOf(const UniversalTranscoding& transcoding, const IcuReference& icu, std::uint32_t code)
{
    const wchar_t character = static_cast<wchar_t>(code);
    const std::optional<std::string> expected = icu.encode({&character, 1});
    char bytes[32];
    const vel::TranscodingResult result =
        transcoding.encode(&character, 1, bytes, sizeof bytes, vel::kUnencodableError);
    const std::string_view actual(bytes, result.m_nWritten);
    if (result.isComplete() != expected.has_value()) {
        return shown(code) + (expected ? " is not encoded" : " is encoded");
    }
    if (expected && actual != *expected) {
        return shown(code) + " is " + hex(actual) + ", not " + hex(*expected);
    }
    return {};
}

/// Compares every `step`-th character.
void compareEncodings(const std::string& name, std::uint32_t end, std::uint32_t step)
{
    const UniversalTranscoding transcoding = transcodingOf(name);
    IcuReference icu(name);
    // This converter keeps the state of one text for the next one.
    const bool isNewEachTime = name == "x11-compound-text";
    std::size_t compared = 0;
    for (std::uint32_t code = 0; code < end; code += step) {
        if (isSurrogate(code)) {
            continue;
        }
        if (isNewEachTime) {
            icu = IcuReference(name);
        }
        const std::string fault = faultOf(transcoding, icu, code);
        ASSERT_EQ("", fault) << name;
        ++compared;
    }
    ASSERT_LT(0U, compared);
}

TEST(AgainstIcu, SetsOfTheWebEncodeEveryCharacterAlike)
{
    for (const std::string& name : webNames()) {
        compareEncodings(name, 0x10000, 1);
        compareEncodings(name, kCodes, 97);
    }
}

TEST(AgainstIcu, SetsWithoutLimitsEncodeEveryCharacterAlike)
{
    for (const char* name : {"UTF-8", "UTF-16BE", "UTF-16LE", "gb18030", "Big5-HKSCS"}) {
        compareEncodings(name, kCodes, std::string_view(name) == "gb18030" ? 1 : 3);
    }
}

TEST(AgainstIcu, EverySetOfIcuEncodesAlike)
{
    for (const std::string& name : allIcuNames()) {
        compareEncodings(name, 0x3000, 7);
        compareEncodings(name, kCodes, 1009);
    }
}

void expectDecodedAlike(const UniversalTranscoding& transcoding, const IcuReference& icu, const std::string& bytes)
{
    const IcuReference::Decoded expected = icu.decode(bytes);
    String actual;
    const std::optional<std::size_t> fault = transcoding.decode(bytes.data(), bytes.size(), actual);
    ASSERT_EQ(expected.m_nFault, fault) << hex(bytes);
    ASSERT_TRUE(expected.m_sText == actual.standard()) << hex(bytes);
}

/// Every sequence of one and two bytes.
void compareShortSequences(const std::string& name)
{
    SCOPED_TRACE(name);
    const UniversalTranscoding transcoding = transcodingOf(name);
    const IcuReference icu(name);
    for (unsigned first = 0; first < 256; ++first) {
        ASSERT_NO_FATAL_FAILURE(expectDecodedAlike(transcoding, icu, std::string(1, static_cast<char>(first))));
        for (unsigned second = 0; second < 256; ++second) {
            const std::string bytes{static_cast<char>(first), static_cast<char>(second)};
            ASSERT_NO_FATAL_FAILURE(expectDecodedAlike(transcoding, icu, bytes));
        }
    }
}

TEST(AgainstIcu, SetsOfTheWebDecodeEveryShortSequenceAlike)
{
    for (const std::string& name : webNames()) {
        compareShortSequences(name);
    }
}

}  // namespace
