#include "webi18n/collator.h"

namespace vel::i18n {

Collator::Collator() noexcept = default;

Collator::Collator(NLSThreadContext& rContext, const Locale& rLocale, CollationStrength eStrength)
    : Collator(rContext, rLocale.getInfoAsString(Locale::kCollationNLS_SORT), eStrength)
{}

Collator::Collator(NLSThreadContext& rContext, const String& sSortName, CollationStrength eStrength)
    : m_hGuts(makeHandle<CollatorGuts>(rContext.getInternalNlsGlobals(), sSortName)), m_eStrength(eStrength)
{}

Collator::Collator(const Collator& other) noexcept = default;
Collator& Collator::operator=(const Collator& other) noexcept = default;
Collator::~Collator() = default;

CollationKey Collator::createCollationKey(const wchar_t* pValue, std::size_t nValueLength)
{
    CollationKey key;
    m_hGuts->createCollationKey(pValue, nValueLength, m_eStrength, key);
    return key;
}

RefCollationKey Collator::createRefCollationKey(const wchar_t* pValue, std::size_t nValueLength,
                                                StringPoolTemplate<char>& rPool)
{
    RefCollationKey key;
    m_hGuts->createRefCollationKey(pValue, nValueLength, m_eStrength, rPool, key);
    return key;
}

int Collator::compare(std::wstring_view left, std::wstring_view right)
{
    return m_hGuts->compare(left.data(), left.size(), right.data(), right.size(), m_eStrength);
}

String Collator::sortName() const
{
    return m_hGuts->language().getLinguisticSort();
}

String Collator::version() const
{
    return m_hGuts->language().getTextInfo(nls::kLanguageItemSortVersion);
}

}  // namespace vel::i18n
