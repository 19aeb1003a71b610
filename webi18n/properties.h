#pragma once

#include <string_view>

#include "vel/xml/xmlelement.h"

namespace vel::i18n_details {

// The elements that definitions are made of. Views, so that no length is counted at every comparison.
inline constexpr std::wstring_view ksProperty = L"property";
inline constexpr std::wstring_view ksName = L"name";

/// Calls `take(child)` for every child element "property", in document order.
template <typename Take>
void forEachProperty(const XmlElement& parent, Take take)
{
    // The names of siblings mostly are one text in the document's memory: characters are compared when it changes.
    const wchar_t* known = nullptr;
    bool isProperty = false;
    for (const XmlElement& child : children(parent)) {
        const std::wstring_view name = child.name();
        if (name.data() != known) {
            known = name.data();
            isProperty = name == ksProperty;
        }
        if (isProperty) {
            take(child);
        }
    }
}

}  // namespace vel::i18n_details
