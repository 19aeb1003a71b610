#include "webi18n/nlslanguage.h"

#include <limits>
#include <stdexcept>

#include "nlstext.h"
#include "vel/core/assertion.h"
#include "webi18n/collationkey.h"

namespace vel::nls_internal_wrapper {

namespace {

using i18n_details::encodeToWorkBuffer;
using i18n_details::kNotTranslated;
using i18n_details::toBytes;

constexpr std::size_t kInfoBytes = 2048;
constexpr std::size_t kInlineBytes = 64;
/// No character has a key of more bytes; a service that asks for more fails, and would otherwise take all memory.
constexpr std::size_t kMostKeyBytesPerCharacter = 1024;
constexpr std::size_t kMostSpareKeyBytes = std::size_t{1} << 20;

constexpr std::size_t firstKeyCapacity(std::size_t nLen) noexcept
{
    return 5 * nLen + 6;
}

void requirePlausible(std::size_t capacity, std::size_t nLen)
{
    if (capacity > kMostSpareKeyBytes && (capacity - kMostSpareKeyBytes) / kMostKeyBytesPerCharacter > nLen) {
        throw std::length_error("a sort key is longer than any text's");
    }
}

/// Texts of a list mostly lie one behind the other: one of those to come is fetched while this one is read. No more
/// than a hint, also where nothing lies there.
void fetchAhead(const wchar_t* pValue, std::size_t nLen) noexcept
{
    constexpr std::size_t kCharactersAhead = 64;
    if (nLen != 0) {
        __builtin_prefetch(pValue + kCharactersAhead);
    }
}

std::size_t timesSaturated(std::size_t a, std::size_t b) noexcept
{
    std::size_t product = 0;
    return __builtin_mul_overflow(a, b, &product) ? std::numeric_limits<std::size_t>::max() : product;
}

}  // namespace

NLSLanguage::NLSLanguage() noexcept : m_tArea()
{}

NLSLanguage::NLSLanguage(const NonOwningPtr<NLSGlobals>& pGlobals)
    : m_pLibrary(pGlobals->library()), m_pGlobals(pGlobals), m_tArea()
{
    adopt(service().m_pDefaultLanguageHandle(&m_tArea, 0, m_pGlobals->contextRecord()));
}

NLSLanguage::NLSLanguage(const NonOwningPtr<NLSGlobals>& pGlobals, const String& sNLSLangValue) : m_tArea()
{
    setNLSLanguage(pGlobals, sNLSLangValue);
}

NLSLanguage::NLSLanguage(const NLSLanguage& other) noexcept : m_tArea()
{
    *this = other;
}

NLSLanguage& NLSLanguage::operator=(const NLSLanguage& other) noexcept
{
    if (this == &other) {
        return *this;
    }
    m_pLibrary = other.m_pLibrary;
    m_pGlobals = other.m_pGlobals;
    m_tArea = other.m_tArea;
    // A service may give the area itself as handle: the copy's is then the copy's area.
    const bool isArea = static_cast<const void*>(other.m_hLanguage) == static_cast<const void*>(&other.m_tArea);
    m_hLanguage = isArea ? reinterpret_cast<nls::LanguageHandle*>(&m_tArea) : other.m_hLanguage;
    return *this;
}

void NLSLanguage::adopt(nls::LanguageHandle* handle)
{
    if (handle == nullptr) {
        const wchar_t* const error = L"error";
        throw error;
    }
    m_hLanguage = handle;
}

void NLSLanguage::setNLSLanguage(const NonOwningPtr<NLSGlobals>& pGlobals, const String& sNLSLangValue)
{
    m_pLibrary = pGlobals->library();
    m_pGlobals = pGlobals;
    AutoBuffer<char, kInlineBytes> bytes;
    const std::size_t nTranslatedBytes = toBytes(sNLSLangValue, bytes);
    VEL_ASSERT_TEXT(nTranslatedBytes != kNotTranslated, "nTranslatedBytes != -1");
    adopt(nTranslatedBytes == kNotTranslated
              ? nullptr
              : service().m_pLanguageHandleFromName(bytes.data(), nTranslatedBytes, &m_tArea, 1,
                                                    m_pGlobals->contextRecord()));
}

void NLSLanguage::modifyLinguisticSort(const String& sSortValue)
{
    AutoBuffer<char, kInlineBytes> bytes;
    const std::size_t nTranslatedBytes = toBytes(sSortValue, bytes);
    VEL_ASSERT_TEXT(nTranslatedBytes != kNotTranslated, "nTranslatedBytes != -1");
    if (nTranslatedBytes != kNotTranslated) {
        // The status is not examined: what is no sort leaves the sort in force.
        service().m_pModifyLanguageHandle(m_hLanguage, bytes.data(), nTranslatedBytes, nls::kLanguageItemLinguisticSort,
                                          0, 1, m_pGlobals->contextRecord());
    }
}

String NLSLanguage::getTextInfo(LanguageItem eItem) const
{
    alignas(2) unsigned char buffer[kInfoBytes];
    return i18n_details::fromTerminatedUtf16(
        service().m_pLanguageInfo(m_hLanguage, eItem, buffer, sizeof buffer, m_pGlobals->contextRecord()));
}

String NLSLanguage::getLinguisticSort() const
{
    return getTextInfo(nls::kLanguageItemLinguisticSort);
}

std::size_t NLSLanguage::makeSortKey(char* out, std::size_t capacity, const AutoBufferBase<unsigned char>& text,
                                     std::size_t byteCount, std::size_t nLevel) const
{
    const std::size_t n1 =
        service().m_pMakeSortKey(reinterpret_cast<unsigned char*>(out), capacity, text.data(), byteCount,
                                 static_cast<unsigned char>(nLevel), m_hLanguage, m_pGlobals->contextRecord());
    VEL_ASSERT_TEXT(n1 != nls::kSortKeyError, "n1 != -1");
    return n1;  // all ones on error: it did not fit
}

void NLSLanguage::createCollationKey(const wchar_t* pValue, std::size_t nLen, NarrowString& sCollationKey,
                                     AutoBufferBase<unsigned char>& rWorkBuffer, std::size_t nLevel) const
{
    for (std::size_t capacity = firstKeyCapacity(nLen);; capacity *= 2) {
        requirePlausible(capacity, nLen);
        sCollationKey.resize(capacity);
        const std::size_t nTranslatedBytes = encodeToWorkBuffer(pValue, nLen, rWorkBuffer);
        VEL_ASSERT_TEXT(nTranslatedBytes != kNotTranslated, "nTranslatedBytes != -1");
        if (nTranslatedBytes == kNotTranslated) {
            sCollationKey.clear();
            return;
        }
        const std::size_t n1 = makeSortKey(sCollationKey.data(), capacity, rWorkBuffer, nTranslatedBytes, nLevel);
        // A key exactly as long as its room counts as one that did not fit.
        if (n1 < capacity) {
            sCollationKey.resize(n1);
            return;
        }
    }
}

void NLSLanguage::createRefCollationKey(const wchar_t* pValue, std::size_t nLen, StringPoolTemplate<char>& rPool,
                                        RefStringTemplate<char>& rKey, AutoBufferBase<unsigned char>& rWorkBuffer,
                                        std::size_t nLevel) const
{
    fetchAhead(pValue, nLen);
    for (std::size_t request = firstKeyCapacity(nLen);;) {
        char* const room = rPool.getAppendBuffer(request);
        const std::size_t capacity = rPool.appendBufferCapacity();
        const std::size_t nTranslatedBytes = encodeToWorkBuffer(pValue, nLen, rWorkBuffer);
        VEL_ASSERT_TEXT(nTranslatedBytes != kNotTranslated, "nTranslatedBytes != -1");
        if (nTranslatedBytes == kNotTranslated) {
            return;
        }
        const std::size_t n1 = makeSortKey(room, capacity, rWorkBuffer, nTranslatedBytes, nLevel);
        if (n1 < capacity) {
            rPool.commitAppendBuffer(n1);
            rKey = rPool.lastString();
            return;
        }
        request = timesSaturated(timesSaturated(request, capacity), 2);
    }
}

int NLSLanguage::compareByKeys(const wchar_t* pLHS, std::size_t nLHS, const wchar_t* pRHS, std::size_t nRHS,
                               std::size_t nLevel) const
{
    VEL_ASSERT(canCompareTexts());
    AutoBuffer<unsigned char, kInlineBytes> work;
    NarrowString left;
    NarrowString right;
    createCollationKey(pLHS, nLHS, left, work, nLevel);
    createCollationKey(pRHS, nRHS, right, work, nLevel);
    return i18n::compareKeys(left, right);
}

int NLSLanguage::collateStrings(const wchar_t* /*pLHS*/, std::size_t /*nLHS*/, const wchar_t* /*pRHS*/,
                                std::size_t /*nRHS*/, AutoBufferBase<unsigned char>& /*rWorkBuffer*/) const
{
    VEL_FAIL("false");
    return -1;
}

}  // namespace vel::nls_internal_wrapper
