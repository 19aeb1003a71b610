#include "vel/config/configreader.h"

#include <string>
#include <utility>
#include <vector>

#include "vel/xml/xmldocument.h"

namespace vel {

namespace {

// Generous for a configuration, small enough that no file makes the keys, each of which repeats the names above it,
// grow beyond what the process can hold.
constexpr XmlLimits kConfigFileLimits{std::size_t{1} << 20, 64, 64};
constexpr std::size_t kMaxKeyLength = 256;

/// An element that waits for being read, and the key of the element above it with a slash at its end.
struct Pending
{
    const XmlElement* m_pElement;
    String m_sPrefix;
};

String leafValue(const XmlElement& element)
{
    return String(String::trim(element.innerTextView()));
}

std::map<String, String> readValues(const XmlElement& root)
{
    std::map<String, String> values;
    std::vector<Pending> pending;
    pending.push_back({root.firstChild(), String()});
    while (!pending.empty()) {
        const XmlElement* element = pending.back().m_pElement;
        if (element == nullptr) {
            pending.pop_back();
            continue;
        }
        pending.back().m_pElement = element->nextSibling();
        String key = pending.back().m_sPrefix + element->name();
        if (key.length() > kMaxKeyLength) {
            continue;
        }
        if (element->firstChild() == nullptr) {
            values.try_emplace(std::move(key), leafValue(*element));
        } else {
            pending.push_back({element->firstChild(), key + L"/"});
        }
    }
    return values;
}

}  // namespace

ConfigReader::~ConfigReader() = default;

FilePath ConfigReader::getFilePath(const String& key) const
{
    return FilePath(getString(key, String()));
}

MemoryConfigReader::MemoryConfigReader(Handle<const ConfigReader> behind) : m_hBehind(std::move(behind))
{}

MemoryConfigReader::~MemoryConfigReader() = default;

void MemoryConfigReader::set(const String& key, const String& value)
{
    m_tValues.insert_or_assign(key, value);
}

String MemoryConfigReader::getString(const String& key, const String& defaultValue) const
{
    if (const auto found = m_tValues.find(key); found != m_tValues.end()) {
        return found->second;
    }
    return m_hBehind.isNull() ? defaultValue : m_hBehind->getString(key, defaultValue);
}

FilePath MemoryConfigReader::getFilePath(const String& key) const
{
    if (const auto found = m_tValues.find(key); found != m_tValues.end()) {
        return FilePath(found->second);
    }
    return m_hBehind.isNull() ? FilePath() : m_hBehind->getFilePath(key);
}

XmlConfigReader::XmlConfigReader(const FilePath& file)
    : XmlConfigReader(XmlDocument::load(file, kConfigFileLimits), file.folder())
{}

XmlConfigReader::XmlConfigReader(const XmlDocument& document, const FilePath& folder)
    : m_tValues(readValues(document.root())), m_tFolder(folder)
{}

XmlConfigReader::~XmlConfigReader() = default;

String XmlConfigReader::getString(const String& key, const String& defaultValue) const
{
    const auto found = m_tValues.find(key);
    return found == m_tValues.end() ? defaultValue : found->second;
}

FilePath XmlConfigReader::getFilePath(const String& key) const
{
    const auto found = m_tValues.find(key);
    return found == m_tValues.end() || found->second.isEmpty() ? FilePath() : m_tFolder.join(FilePath(found->second));
}

}  // namespace vel
