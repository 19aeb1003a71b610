#include "webi18n/collator.h"

namespace vel::i18n {

// The guts in the file of the collator, so that what it passes on to them is no call.

namespace {

/// Out of line, so that a service that compares texts is reached without a frame for their keys.
[[gnu::noinline]] int compareByKeys(CollatorGuts& guts, const wchar_t* pLHS, std::size_t nLHS, const wchar_t* pRHS,
                                    std::size_t nRHS, std::size_t nCollationLevel)
{
    CollationKey left;
    CollationKey right;
    guts.createCollationKey(pLHS, nLHS, nCollationLevel, left);
    guts.createCollationKey(pRHS, nRHS, nCollationLevel, right);
    return left.compare(right);
}

}  // namespace

CollatorGuts::CollatorGuts(const NonOwningPtr<nls_internal_wrapper::NLSGlobals>& pGlobals, const String& sSortName)
    // Language and territory are left to the service.
    : m_tNlsLanguage(pGlobals, String(L".AL16UTF16"))
{
    m_tNlsLanguage.modifyLinguisticSort(sSortName);
}

CollatorGuts::~CollatorGuts() = default;

void CollatorGuts::createCollationKey(const wchar_t* pValue, std::size_t nLen, std::size_t nLevel, CollationKey& rKey)
{
    m_tNlsLanguage.createCollationKey(pValue, nLen, rKey.bytes(), m_tWorkBuffer, nLevel);
}

void CollatorGuts::createRefCollationKey(const wchar_t* pValue, std::size_t nLen, std::size_t nLevel,
                                         StringPoolTemplate<char>& rPool, RefCollationKey& rKey)
{
    m_tNlsLanguage.createRefCollationKey(pValue, nLen, rPool, rKey.bytes(), m_tWorkBuffer, nLevel);
}

int CollatorGuts::collateStrings(const wchar_t* pLHS, std::size_t nLHS, const wchar_t* pRHS, std::size_t nRHS,
                                 std::size_t nCollationLevel)
{
    CollationKey left;
    CollationKey right;
    createCollationKey(pLHS, nLHS, nCollationLevel, left);
    createCollationKey(pRHS, nRHS, nCollationLevel, right);
    // Deliberate: what has no key has no place of its own.
    return left.isEmpty() || right.isEmpty() ? 0 : left.compare(right);
}

int CollatorGuts::compare(const wchar_t* pLHS, std::size_t nLHS, const wchar_t* pRHS, std::size_t nRHS,
                          std::size_t nCollationLevel)
{
    if (m_tNlsLanguage.canCompareTexts()) [[likely]] {
        return m_tNlsLanguage.compareTexts(pLHS, nLHS, pRHS, nRHS, nCollationLevel);
    }
    return compareByKeys(*this, pLHS, nLHS, pRHS, nRHS, nCollationLevel);
}

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
