#include "answers/layeredconfig.h"

#include <utility>

namespace answers {

namespace {

bool hasKey(const vel::ConfigReader& source, const vel::String& key)
{
    // No XML document and no command line holds a zero character.
    static const vel::String kAbsent(L"\0", 1);
    return source.getString(key, kAbsent) != kAbsent;
}

}  // namespace

LayeredConfigReader::~LayeredConfigReader() = default;

void LayeredConfigReader::add(vel::Handle<const vel::ConfigReader> source)
{
    m_vSources.push_back(std::move(source));
}

const vel::ConfigReader* LayeredConfigReader::sourceOf(const vel::String& key) const
{
    for (auto source = m_vSources.rbegin(); source != m_vSources.rend(); ++source) {
        if (hasKey(**source, key)) {
            return source->get();
        }
        if (key == ksAllowedLocalesFile && hasKey(**source, ksAllowedLocales)) {
            return nullptr;
        }
    }
    return nullptr;
}

vel::String LayeredConfigReader::getString(const vel::String& key, const vel::String& defaultValue) const
{
    const vel::ConfigReader* source = sourceOf(key);
    return source == nullptr ? defaultValue : source->getString(key, defaultValue);
}

vel::FilePath LayeredConfigReader::getFilePath(const vel::String& key) const
{
    const vel::ConfigReader* source = sourceOf(key);
    return source == nullptr ? vel::FilePath() : source->getFilePath(key);
}

}  // namespace answers
