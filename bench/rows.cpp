#include "rows.h"

#include <stdexcept>

#include "vel/config/configreader.h"

namespace bench {

namespace {

vel::String wide(const std::string& path)
{
    const std::optional<vel::String> text = vel::stringFromUtf8(path);
    if (!text) {
        throw std::runtime_error(path + ": not a UTF-8 path");
    }
    return *text;
}

}  // namespace

vel::String Data::definitions() const
{
    return wide(m_sDefinitions);
}

vel::String Data::mapping() const
{
    return wide(m_sMapping);
}

vel::String Data::currencies() const
{
    return wide(m_sCurrencies);
}

vel::FilePath Data::messages() const
{
    return vel::FilePath(wide(m_sMessages));
}

vel::Handle<const vel::ConfigReader> packConfiguration(const Data& data)
{
    const vel::Handle<vel::MemoryConfigReader> reader = vel::makeHandle<vel::MemoryConfigReader>();
    reader->set(L"Localization/AllowedLocalesFile", wide(data.m_sLists));
    return reader;
}

vel::Handle<const vel::LocaleTagLookup> loadCatalogue(const Data& data, const vel::ConfigReader& config)
{
    const vel::Handle<vel::LocaleTagLookup> catalogue = vel::makeHandle<vel::LocaleTagLookup>();
    catalogue->loadLocaleDefinitions(config, data.definitions());
    return catalogue;
}

}  // namespace bench
