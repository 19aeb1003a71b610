#pragma once

#include <map>

#include "vel/core/api.h"
#include "vel/core/filepath.h"
#include "vel/core/handle.h"
#include "vel/core/string.h"

namespace vel {

class XmlDocument;

/// Configuration values by slash-separated key, such as "Localization/AllowedLocales". Immutable once shared; reading
/// is safe from any thread. A value may be text that was read from outside: callers check what they take from it.
class WEBI18N_API ConfigReader : public RefCounted
{
public:
    /// The value of `key` (compared exactly), or `defaultValue` when there is none.
    virtual String getString(const String& key, const String& defaultValue) const = 0;
    /// The value of a key that holds a file's path: a relative one is seen from the folder that the source of the value
    /// names (a configuration file's own folder; the working folder for values from memory). Absent or empty: empty.
    /// A reader that knows no such folder need not implement it: it is getString's value as it stands.
    virtual FilePath getFilePath(const String& key) const;

protected:
    ~ConfigReader() override;
};

/// Values in memory, in front of another reader's: what is not set here is asked there.
class WEBI18N_API MemoryConfigReader : public ConfigReader
{
public:
    /// `behind` may be null: then what is not set has its default.
    explicit MemoryConfigReader(Handle<const ConfigReader> behind = {});
    ~MemoryConfigReader() override;

    /// Sets or replaces. An empty value is a value: the reader behind is not asked. Not while other threads read.
    void set(const String& key, const String& value);

    String getString(const String& key, const String& defaultValue) const override;
    FilePath getFilePath(const String& key) const override;

private:
    std::map<String, String> m_tValues;
    Handle<const ConfigReader> m_hBehind;
};

/// Values from an XML file. A key is the path of element names below the root (whose name is not examined), its value
/// the trimmed inner text of the first element of that path that has no child elements.
///
/// A file has at most 1 MiB and 64 levels of elements; an element whose key would be longer than 256 characters is left
/// out with all that is in it.
///
///     <configuration><Localization><AllowedLocales> en-us </AllowedLocales></Localization></configuration>
///     Localization/AllowedLocales -> "en-us"        Localization -> (absent)
class WEBI18N_API XmlConfigReader : public ConfigReader
{
public:
    /// Reads the file. Throws XmlException.
    explicit XmlConfigReader(const FilePath& file);
    /// Reads a loaded document, which need not outlive the call, as if its file stood in `folder`. A document without a
    /// root throws InvalidHandleException.
    XmlConfigReader(const XmlDocument& document, const FilePath& folder);
    ~XmlConfigReader() override;

    String getString(const String& key, const String& defaultValue) const override;
    FilePath getFilePath(const String& key) const override;

private:
    std::map<String, String> m_tValues;
    FilePath m_tFolder;
};

}  // namespace vel
