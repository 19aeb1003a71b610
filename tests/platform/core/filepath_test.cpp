#include "vel/core/filepath.h"

#include <gtest/gtest.h>

#include "printers.h"
#include "vel/core/exception.h"

namespace {

using vel::FilePath;
using vel::String;

FilePath path(const wchar_t* text)
{
    return FilePath(String(text));
}

struct Row
{
    const wchar_t* m_pPath;
    const wchar_t* m_pFolder;
    const wchar_t* m_pName;
};

TEST(FilePath, FolderAndName)
{
    const Row rows[] = {
        {L"/etc/a.xml", L"/etc", L"a.xml"},
        {L"/a.xml", L"/", L"a.xml"},
        {L"a.xml", L"", L"a.xml"},
        {L"b/", L"b", L""},
        {L"", L"", L""},
        {L"/", L"/", L""},
        {L"a/b/c", L"a/b", L"c"},
        {L"../x", L"..", L"x"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(path(row.m_pPath).folder(), path(row.m_pFolder));
        EXPECT_EQ(path(row.m_pPath).fileName(), row.m_pName);
    }
}

TEST(FilePath, Join)
{
    EXPECT_EQ(path(L"/etc").join(path(L"a.xml")), path(L"/etc/a.xml"));
    EXPECT_EQ(path(L"/etc").join(path(L"/b")), path(L"/b"));
    EXPECT_EQ(path(L"").join(path(L"a")), path(L"a"));
    EXPECT_EQ(path(L"/").join(path(L"a")), path(L"/a"));
    EXPECT_EQ(path(L"etc/").join(path(L"a/b")), path(L"etc/a/b"));
}

TEST(FilePath, AbsoluteAndEmpty)
{
    EXPECT_TRUE(path(L"/a").isAbsolute());
    EXPECT_FALSE(path(L"a/b").isAbsolute());
    EXPECT_FALSE(path(L"").isAbsolute());
    EXPECT_TRUE(FilePath().isEmpty());
    EXPECT_FALSE(path(L"a").isEmpty());
    EXPECT_EQ(path(L"a b").toString(), L"a b");
}

TEST(FilePath, TheFileSystemSeesUtf8)
{
    EXPECT_EQ(path(L"/d\u00E9/\u6771").toNative(), "/d\xC3\xA9/\xE6\x9D\xB1");
    EXPECT_EQ(path(L"").toNative(), "");
}

TEST(FilePath, WhatNamesNoFileIsRefused)
{
    const std::wstring zero(L"a\0b", 3);
    const std::wstring surrogate(1, static_cast<wchar_t>(0xDC00));
    const std::wstring negative(1, static_cast<wchar_t>(-1));
    for (const std::wstring& each : {zero, surrogate, negative}) {
        EXPECT_THROW(FilePath(String(each)).toNative(), vel::Exception);
    }
}

}  // namespace
