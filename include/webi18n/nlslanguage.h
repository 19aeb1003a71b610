#pragma once

#include <cstddef>

#include "vel/core/api.h"
#include "vel/core/autobuffer.h"
#include "vel/core/nonowningptr.h"
#include "vel/core/refstring.h"
#include "vel/core/string.h"
#include "vel/core/stringpool.h"
#include "vel/nls/nlsservice.h"
#include "webi18n/nlsglobals.h"
#include "webi18n/nlslibrary.h"

namespace vel::nls_internal_wrapper {

/// A language of the service, with the conversions between wide text and what the service takes. Used by the thread of
/// its globals, which must outlive it; a copy is a language of its own on the same globals. An empty one, like every
/// use of a null pointer here, reports "m_p != 0" and throws InvalidHandleException.
class WEBI18N_API NLSLanguage
{
public:
    /// Empty.
    NLSLanguage() noexcept;
    /// The environment's default language. Throws the wide C string "error" when there is none.
    explicit NLSLanguage(const NonOwningPtr<NLSGlobals>& pGlobals);
    /// setNLSLanguage.
    NLSLanguage(const NonOwningPtr<NLSGlobals>& pGlobals, const String& sNLSLangValue);
    NLSLanguage(const NLSLanguage& other) noexcept;
    NLSLanguage& operator=(const NLSLanguage& other) noexcept;
    /// Does nothing: what a language refers to belongs to the service.
    ~NLSLanguage() = default;

    /// Becomes the language of a specification such as ".AL16UTF16" or "de_CH.AL16UTF16", of which the low byte of
    /// every character is taken. Throws the wide C string "error" for one that the service does not know.
    void setNLSLanguage(const NonOwningPtr<NLSGlobals>& pGlobals, const String& sNLSLangValue);
    /// Puts a sort in force. The service's answer is not looked at: an unknown name leaves the sort before it in force,
    /// deliberately without a word. getLinguisticSort() tells.
    void modifyLinguisticSort(const String& sSortValue);

    /// An item as text; empty for one that the service does not have.
    String getTextInfo(LanguageItem eItem) const;
    /// The name of the sort in force.
    String getLinguisticSort() const;

    /// Makes the sort key of `nLen` characters. `nLevel`: the service's strength flags, of which the low eight bits
    /// count. The key has first 5 bytes a character and 6 more to go into, then twice that, and so on until it is
    /// shorter than its room; the work buffer grows to 4 bytes a character and is meant to be used again.
    ///
    /// A key that the service cannot make is reported as "n1 != -1" and counts as one that did not fit. Throws
    /// std::length_error when a key is longer than any service makes it, std::bad_alloc when memory runs out; the key
    /// is then undefined.
    void createCollationKey(const wchar_t* pValue, std::size_t nLen, NarrowString& sCollationKey,
                            AutoBufferBase<unsigned char>& rWorkBuffer, std::size_t nLevel) const;
    /// The same into a pool; `rKey` then refers to the pool's bytes. A request that was too small is followed by the
    /// request times the room that was granted times 2: this rapid growth is deliberate. When it throws, `rKey` is
    /// unchanged and nothing was added to the pool.
    void createRefCollationKey(const wchar_t* pValue, std::size_t nLen, StringPoolTemplate<char>& rPool,
                               RefStringTemplate<char>& rKey, AutoBufferBase<unsigned char>& rWorkBuffer,
                               std::size_t nLevel) const;
    /// Not supported: reports "false" and returns -1. Texts compare by their keys.
    int collateStrings(const wchar_t* pLHS, std::size_t nLHS, const wchar_t* pRHS, std::size_t nRHS,
                       AutoBufferBase<unsigned char>& rWorkBuffer) const;

    /// Whether the service compares texts without keys.
    bool canCompareTexts() const { return service().m_pCompareTexts != nullptr; }
    /// -1, 0 or 1 as the keys of both texts compare, an empty key being the smallest. Where the service has no such
    /// operation it is reported as "canCompareTexts()", and where the operation fails nothing is: the keys decide then,
    /// and what createCollationKey says of failures holds.
    int compareTexts(const wchar_t* pLHS, std::size_t nLHS, const wchar_t* pRHS, std::size_t nRHS,
                     std::size_t nLevel) const
    {
        const nls::EntryPoints& entryPoints = service();
        if (entryPoints.m_pCompareTexts != nullptr) [[likely]] {
            const int order = entryPoints.m_pCompareTexts(pLHS, nLHS, pRHS, nRHS, static_cast<unsigned char>(nLevel),
                                                          m_hLanguage, m_pGlobals->contextRecord());
            if (order != nls::kComparisonError) [[likely]] {
                return order;
            }
        }
        return compareByKeys(pLHS, nLHS, pRHS, nRHS, nLevel);
    }

private:
    const nls::EntryPoints& service() const { return m_pLibrary->entryPoints(); }
    void adopt(nls::LanguageHandle* handle);
    std::size_t makeSortKey(char* out, std::size_t capacity, const AutoBufferBase<unsigned char>& text,
                            std::size_t byteCount, std::size_t nLevel) const;
    int compareByKeys(const wchar_t* pLHS, std::size_t nLHS, const wchar_t* pRHS, std::size_t nRHS,
                      std::size_t nLevel) const;

    NonOwningPtr<NLSLibrary> m_pLibrary;
    NonOwningPtr<NLSGlobals> m_pGlobals;
    nls::LanguageArea m_tArea;
    nls::LanguageHandle* m_hLanguage = nullptr;
};

}  // namespace vel::nls_internal_wrapper
