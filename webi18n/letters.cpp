#include "letters.h"

#include <cwctype>

#include "vel/core/staticinit.h"

namespace vel::i18n_details {

VEL_INIT_TABLES const Letters kEveryScript("C.UTF-8");

Letters::Letters(const char* name) noexcept : m_tCharacterType(newlocale(LC_CTYPE_MASK, name, nullptr))
{}

Letters::~Letters()
{
    if (m_tCharacterType != nullptr) {
        freelocale(m_tCharacterType);
    }
}

bool Letters::has(wchar_t character) const noexcept
{
    return m_tCharacterType == nullptr || iswalpha_l(static_cast<wint_t>(character), m_tCharacterType) != 0;
}

}  // namespace vel::i18n_details
