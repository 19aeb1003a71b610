#pragma once

#include <vector>

#include "vel/config/configreader.h"

namespace answers {

/// Configuration from several sources, the nearest first.
///
/// A source that names allowed locales and no lists file hides the lists file of the sources behind it: the library
/// would not look at the names otherwise, and who gives names on the command line means them.
class LayeredConfigReader : public vel::ConfigReader
{
public:
    ~LayeredConfigReader() override;

    /// Puts a source in front of those before.
    void add(vel::Handle<const vel::ConfigReader> source);

    vel::String getString(const vel::String& key, const vel::String& defaultValue) const override;
    vel::FilePath getFilePath(const vel::String& key) const override;
    /// Whether a source has the key.
    bool has(const vel::String& key) const { return sourceOf(key) != nullptr; }

private:
    const vel::ConfigReader* sourceOf(const vel::String& key) const;

    std::vector<vel::Handle<const vel::ConfigReader>> m_vSources;  // the nearest last
};

/// The configuration keys of the library.
inline constexpr const wchar_t* ksAllowedLocalesFile = L"Localization/AllowedLocalesFile";
inline constexpr const wchar_t* ksAllowedLocales = L"Localization/AllowedLocales";
inline constexpr const wchar_t* ksAllowedLanguages = L"Localization/AllowedLanguages";

}  // namespace answers
