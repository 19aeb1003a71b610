#include "eightthreads.h"
#include "loops.h"
#include "vel/transcoding/transcodingencoder.h"

// Threads that meet at the first use of a set, and that share its table.

namespace {

using namespace testsupport;
using namespace transcodingtests;
using vel::NarrowString;
using vel::String;
using vel::UniversalTranscoding;

struct Case
{
    const char* m_sName;
    const wchar_t* m_sText;
    const char* m_sBytes;
};

const Case kCases[] = {
    {"Shift_JIS", L"\u3042", "\x82\xA0"},         {"sjis", L"\u3042", "\x82\xA0"}, {"EUC-KR", L"\uD55C", "\xC7\xD1"},
    {"gb18030", L"\u4E2D", "\xD6\xD0"},           {"koi8-r", L"\u0430", "\xC1"},   {"utf-8", L"\u20AC", "\xE2\x82\xAC"},
    {"iso-2022-jp", L"\u3042", "\x1B$B$\"\x1B(B"}};

bool isRight(const UniversalTranscoding& transcoding, const Case& each)
{
    NarrowString bytes;
    String text;
    const bool isEncoded = !transcoding.encode(String(each.m_sText), bytes, vel::kUnencodableError);
    const bool isDecoded = !transcoding.decode(bytes.data(), bytes.length(), text);
    return isEncoded && isDecoded && bytes == NarrowString(each.m_sBytes) && text == String(each.m_sText);
}

TEST(TranscodingThreads, MeetAtTheFirstUse)
{
    EXPECT_EQ(0, faultsOf([](int thread) {
                  int faults = 0;
                  for (std::size_t i = 0; i < std::size(kCases); ++i) {
                      const Case& each = kCases[(i + static_cast<std::size_t>(thread) / 4) % std::size(kCases)];
                      faults += isRight(transcodingOf(each.m_sName), each) ? 0 : 1;
                  }
                  return faults;
              }));
    // One table for all.
    EXPECT_EQ(UniversalTranscoding(L"sjis").getCanonicalName(), UniversalTranscoding(L"Shift_JIS").getCanonicalName());
}

TEST(TranscodingThreads, ShareOneTranscoding)
{
    const UniversalTranscoding shared(L"Shift_JIS");
    EXPECT_EQ(0, faultsOf([&shared](int) {
                  int faults = 0;
                  for (int i = 0; i < 500; ++i) {
                      const UniversalTranscoding copy = shared;
                      faults += isRight(shared, kCases[0]) && isRight(copy, kCases[0]) ? 0 : 1;
                  }
                  return faults;
              }));
}

/// A name of KOI8-R for every number below 2187: between its letters stand any of three things that do not matter.
String spelling(std::size_t number)
{
    String name;
    for (const wchar_t letter : std::wstring(L"koi8-r")) {
        const wchar_t* const between[] = {L"", L"-", L"_"};
        name += letter;
        name += between[number % 3];
        number /= 3;
    }
    return name + (number == 0 ? L"" : number == 1 ? L"--" : L"__");
}

TEST(TranscodingThreads, NewSpellingsAndUnknownNames)
{
    EXPECT_EQ(0, faultsOf([](int) {
                  int faults = 0;
                  // More spellings than are kept.
                  for (std::size_t i = 0; i < 1500; ++i) {
                      const String name = spelling(i);
                      faults += UniversalTranscoding::isTranscodingAvailable(name) ? 0 : 1;
                      faults += isRight(UniversalTranscoding(name), kCases[4]) ? 0 : 1;
                      faults += UniversalTranscoding::isTranscodingAvailable(L"unknown") ? 1 : 0;
                  }
                  return faults;
              }));
}

}  // namespace
