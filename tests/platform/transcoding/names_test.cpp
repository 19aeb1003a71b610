#include <gtest/gtest.h>

#include "vel/core/exception.h"
#include "vel/transcoding/transcodingencoder.h"
#include "vel/transcoding/universaltranscoding.h"

// Which names are known, and what they mean.

namespace {

using vel::NarrowString;
using vel::String;
using vel::UniversalTranscoding;

TEST(TranscodingNames, AreFoundByNameAndAliasByIcusRules)
{
    for (const wchar_t* name :
         {L"UTF-8", L"utf8", L"Utf_08", L"UTF-16", L"UTF-16BE", L"utf-16le", L"ISO-8859-1", L"latin1", L"windows-1252",
          L"Shift_JIS", L"sjis", L"EUC-KR", L"Big5", L"gb18030", L"ISO-2022-JP", L"UTF-16,version=1", L"koi8-r"}) {
        EXPECT_TRUE(UniversalTranscoding::isTranscodingAvailable(name)) << vel::toUtf8Lossy(name);
        EXPECT_EQ(String(name), UniversalTranscoding(name).getName());
    }
}

TEST(TranscodingNames, OthersAreNotAvailable)
{
    const String longest(std::wstring(100000, L'a').c_str());
    for (const String& name : {String(), String(L" "), String(L"utf-9"), String(L"utf-8\0", 6), String(L"utf-8\u0661"),
                               String(L"\xFFFFFFFF"), String(L"../../etc/passwd"), longest}) {
        EXPECT_FALSE(UniversalTranscoding::isTranscodingAvailable(name));
        EXPECT_THROW(UniversalTranscoding{name}, vel::Exception);
    }
}

TEST(TranscodingNames, TheExceptionSaysTheName)
{
    try {
        const UniversalTranscoding unknown(L"utf-9");
        FAIL() << "no exception";
    } catch (const vel::Exception& exception) {
        EXPECT_STREQ("There is no character encoding named 'utf-9'.", exception.what());
    }
}

TEST(TranscodingNames, AliasesHaveOneCanonicalName)
{
    EXPECT_EQ(String(L"UTF-8"), UniversalTranscoding(L"utf8").getCanonicalName());
    EXPECT_EQ(UniversalTranscoding(L"sjis").getCanonicalName(), UniversalTranscoding(L"Shift_JIS").getCanonicalName());
}

TEST(TranscodingNames, CopiesAndMovedFromObjectsEncode)
{
    UniversalTranscoding first(L"koi8-r");
    const UniversalTranscoding copy = first;
    const UniversalTranscoding moved = std::move(first);
    for (const UniversalTranscoding* each : std::initializer_list<const UniversalTranscoding*>{&first, &copy, &moved}) {
        NarrowString bytes;
        EXPECT_FALSE(each->encode(L"\u0430", bytes));
        EXPECT_EQ(NarrowString("\xC1"), bytes);
    }
    first = UniversalTranscoding(L"utf-8");
    EXPECT_EQ(String(L"utf-8"), first.getName());
    EXPECT_EQ(String(L"koi8-r"), copy.getName());
}

}  // namespace
