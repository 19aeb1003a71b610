#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "charactersets.h"

namespace testsupport {

/// A load under a capture: the resolver, the file that it read, and what was written to the log.
struct LoggedLoad
{
    using Expected = std::pair<vel::LogSeverity, vel::String>;

    /// The log source that a kind of file is loaded under, and the property that then names the file.
    LoggedLoad(const wchar_t* source, const wchar_t* property) : m_pSource(source), m_pProperty(property) {}

    /// Expects the records behind the loading message, with their source and property.
    void expectRecords(const std::vector<Expected>& expected) const
    {
        ASSERT_EQ(expected.size() + 1, m_vRecords.size());
        for (std::size_t i = 0; i < expected.size(); ++i) {
            const StoredRecord& record = m_vRecords[i + 1];
            EXPECT_EQ(expected[i].second, record.text());
            EXPECT_EQ(expected[i].first, record.m_eSeverity);
            EXPECT_EQ(m_pSource, record.m_sSource);
            EXPECT_THAT(record.m_tProperties, testing::ElementsAre(testing::Pair(m_pProperty, m_sPath.standard())));
        }
    }

    const wchar_t* m_pSource;
    const wchar_t* m_pProperty;
    MemoryFile m_tFile;
    vel::String m_sPath;
    vel::Handle<vel::CharacterSetResolver> m_hResolver = vel::makeHandle<vel::CharacterSetResolver>();
    std::vector<StoredRecord> m_vRecords;
};

}  // namespace testsupport
