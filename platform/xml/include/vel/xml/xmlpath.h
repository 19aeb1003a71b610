#pragma once

#include <string_view>
#include <vector>

#include "vel/core/api.h"
#include "vel/core/string.h"

namespace vel {

/// A compiled path of element names with "/" steps and `[@attribute="value"]` predicates, several of which may follow
/// one name. Names are local names, matched exactly; attribute values compare exactly. Quotes are single or double.
/// White space around names, steps and inside predicates is not accepted. A value; usable from any thread.
///
///     Currencies/Currency
///     localeList[@name="supported"]/localeDefinition
///     localeMapping[@name='httpAcceptLanguage']/choose/when
class WEBI18N_API XmlPath
{
public:
    struct Predicate
    {
        String m_sAttribute;
        String m_sValue;
    };
    struct Step
    {
        String m_sName;
        std::vector<Predicate> m_tPredicates;
    };

    /// Compiles; throws Exception that names the offset for a text that is no path.
    explicit XmlPath(std::wstring_view text);

    const std::vector<Step>& steps() const noexcept { return m_tSteps; }

private:
    std::vector<Step> m_tSteps;
};

}  // namespace vel
