#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

#include "keyshort.h"
#include "keywriter.h"
#include "sortdata.h"
#include "sortname.h"
#include "tablebuilder.h"
#include "utf16text.h"

// The tables of sorts from within, and the ways that texts take through them.
namespace builtsort {

inline std::unique_ptr<const vel::nls::SortData> build(const std::string& tag)
{
    const std::optional<vel::nls::SortName> name = vel::nls::resolveSortName(tag);
    EXPECT_TRUE(name) << tag;
    return vel::nls::buildSortData(name->m_pCollator.get(), name->m_sLocale);
}

/// Whether the text takes the way of short texts.
inline bool isShort(const vel::nls::SortData& data, std::u16string_view text,
                    vel::nls::SortStrength strength = vel::nls::SortStrength::kTertiary)
{
    const std::string bytes = testsupport::bytesOf(text);
    std::string key(64 * text.size() + 64, '\0');
    constexpr std::size_t kOtherwise = static_cast<std::size_t>(-1);
    const vel::nls::ShortKeyMaker make = vel::nls::shortKeyMaker(data, strength);
    const vel::nls::LongKeyMaker otherwise = [](const vel::nls::SortData&, const unsigned char*, std::size_t,
                                                vel::nls::SortStrength, unsigned char*,
                                                std::size_t) { return kOtherwise; };
    return make(data, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(),
                reinterpret_cast<unsigned char*>(key.data()), key.size(), otherwise) != kOtherwise;
}

/// The key by way of long texts.
inline std::string longKey(const vel::nls::SortData& data, std::u16string_view text,
                           vel::nls::SortStrength strength = vel::nls::SortStrength::kTertiary)
{
    const std::string bytes = testsupport::bytesOf(text);
    std::string key(64 * text.size() + 64, '\0');
    vel::nls::KeyWriter writer(data, strength, reinterpret_cast<unsigned char*>(key.data()), key.size());
    key.resize(writer.write(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()));
    return key;
}

/// What the time of a key of long runs of marks depends on, and code units that ICU reads.
struct KeyWork
{
    std::size_t m_nRunWork;
    std::size_t m_nSlowUnits;
};
inline KeyWork workOf(const vel::nls::SortData& data, std::u16string_view text)
{
    const std::string bytes = testsupport::bytesOf(text);
    vel::nls::KeyWriter writer(data, vel::nls::SortStrength::kIdentical, nullptr, 0);
    writer.write(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
    return {writer.runWork(), writer.slowUnits()};
}

/// Code units that ICU reads.
inline std::size_t slowUnits(const vel::nls::SortData& data, std::u16string_view text)
{
    const std::string bytes = testsupport::bytesOf(text);
    vel::nls::KeyWriter writer(data, vel::nls::SortStrength::kTertiary, nullptr, 0);
    writer.write(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
    return writer.slowUnits();
}

}  // namespace builtsort
