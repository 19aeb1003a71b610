#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "vel/xml/xmldocument.h"
#include "webi18n/locale.h"

// Definitions as XML text, and locales made of them.
namespace testsupport {

inline std::string property(const std::string& name, const std::string& innerXml)
{
    return "<property name=\"" + name + "\">" + innerXml + "</property>";
}

inline std::string listProperty(const std::string& name, std::initializer_list<std::string_view> entries)
{
    std::string inner;
    for (const std::string_view each : entries) {
        inner.append("<property>").append(each).append("</property>");
    }
    return property(name, inner);
}

inline std::string definition(const std::string& name, const std::string& properties, const std::string& basedOn = "")
{
    return "<localeDefinition xmlns:vell=\"com.quellin.locale/v1\" "
           "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" name=\"" +
           name + "\"" + (basedOn.empty() ? "" : " basedOn=\"" + basedOn + "\"") + ">" + properties +
           "</localeDefinition>";
}

inline std::string definitionsFile(const std::string& definitions)
{
    return "<localeDefinitions>" + definitions + "</localeDefinitions>";
}

/// The base with the definition applied to it.
inline vel::Locale applied(std::string_view definitionXml, vel::Locale base = vel::Locale())
{
    const vel::XmlDocument document = vel::XmlDocument::parse(definitionXml);
    base.applyXmlDefinition(document.root());
    return base;
}

/// A locale "test" of these properties on top of the defaults, or of a base.
inline vel::Locale localeOf(const std::string& properties, const vel::Locale& base = vel::Locale())
{
    return applied(definition("test", properties), base);
}

inline std::vector<vel::String> allNames(const vel::Locale& locale, vel::Locale::NameType type)
{
    std::vector<vel::String> names;
    locale.getAllNames(type, names);
    return names;
}

}  // namespace testsupport
