#pragma once

#include <cstddef>
#include <string_view>

#include "vel/core/api.h"
#include "vel/core/autobuffer.h"
#include "vel/core/handle.h"
#include "vel/core/string.h"
#include "vel/core/stringpool.h"
#include "webi18n/collationkey.h"
#include "webi18n/locale.h"
#include "webi18n/nlsenvironment.h"
#include "webi18n/nlslanguage.h"

namespace vel::i18n {

/// How much of a difference counts: handed to the service as its strength flags, of which several may be set (the
/// strongest counts).
enum CollationStrength : unsigned
{
    kCollationStrengthDefault = 0,                   ///< letters, accents, case: as tertiary
    kCollationStrengthAccentAndCaseInsensitive = 1,  ///< letters only
    kCollationStrengthCaseInsensitive = 2,           ///< letters and accents
    kCollationStrengthBinary = 0,                    ///< the same as the default, deliberately
    kCollationStrengthIdentical = 16,
    kCollationStrengthPrimaryFlag = 1,
    kCollationStrengthSecondaryFlag = 2,
    kCollationStrengthTertiaryFlag = 4,
    kCollationStrengthQuarnaryFlag = 8  ///< what the sort shifts aside too; hosts' spelling
};

/// A language set to a sort, and the work buffer of its keys. What copies of a Collator share.
class WEBI18N_API CollatorGuts : public RefCounted
{
public:
    /// The service's default language with a sort; an unknown sort name leaves that language's own sort in force.
    /// Throws the wide C string "error" when there is no default language.
    CollatorGuts(const NonOwningPtr<nls_internal_wrapper::NLSGlobals>& pGlobals, const String& sSortName);
    CollatorGuts(const CollatorGuts&) = delete;
    CollatorGuts& operator=(const CollatorGuts&) = delete;
    ~CollatorGuts() override;

    /// NLSLanguage::createCollationKey with the work buffer.
    void createCollationKey(const wchar_t* pValue, std::size_t nLen, std::size_t nLevel, CollationKey& rKey);
    /// NLSLanguage::createRefCollationKey with the work buffer.
    void createRefCollationKey(const wchar_t* pValue, std::size_t nLen, std::size_t nLevel,
                               StringPoolTemplate<char>& rPool, RefCollationKey& rKey);
    /// -1, 0 or 1 by the keys of both texts. A text whose key is empty compares equal to every text, deliberately.
    int collateStrings(const wchar_t* pLHS, std::size_t nLHS, const wchar_t* pRHS, std::size_t nRHS,
                       std::size_t nCollationLevel);
    /// -1, 0 or 1 as the keys of both texts compare, an empty key being the smallest; without keys where the service
    /// can.
    int compare(const wchar_t* pLHS, std::size_t nLHS, const wchar_t* pRHS, std::size_t nRHS,
                std::size_t nCollationLevel);

    const nls_internal_wrapper::NLSLanguage& language() const noexcept { return m_tNlsLanguage; }

private:
    AutoBuffer<unsigned char, 64> m_tWorkBuffer;
    nls_internal_wrapper::NLSLanguage m_tNlsLanguage;
};

/// Linguistic order: makes sort keys and compares texts, by a named sort at a strength.
///
/// A sort name is a BCP 47 tag, with collation keywords where wanted, or "binary", the order of code points:
///
///     "sv" -> a, z, å, ä, ö          "de-u-co-phonebk" -> as in German phone books       "da-u-kf-upper" -> capitals
///     first "de" -> a, ä, z                "en-u-ka-shifted" -> punctuation aside              "und" -> the root order
///
/// A name is known when ICU lists its language, or the language is "und", and its keywords and their values exist:
/// "SWEDISH", "xx" and "sv-u-co-nosuch" are unknown.
///
/// Law, for all texts a and b, where key is createCollationKey:
///
///     compare(a, b) == key(a).compare(key(b))
///
/// Keys are plain bytes: they sort the same way in every engine that compares bytes as unsigned, and compare with keys
/// of another process when sort, strength and version are the same.
///
/// A cheap value on a thread context, which must outlive it. It and its copies share a work buffer: they are used by
/// one thread at a time. One that holds nothing throws InvalidHandleException, which names `CollatorGuts*`.
class WEBI18N_API Collator : public RefCounted
{
public:
    /// Holds nothing.
    Collator() noexcept;
    /// The sort is the locale's kCollationNLS_SORT. An unknown or empty name leaves the default language's own sort in
    /// force, deliberately without a word; sortName() tells. Throws the wide C string "error" when the service fails.
    Collator(NLSThreadContext& rContext, const Locale& rLocale, CollationStrength eStrength);
    Collator(NLSThreadContext& rContext, const String& sSortName, CollationStrength eStrength);
    Collator(const Collator& other) noexcept;
    Collator& operator=(const Collator& other) noexcept;
    ~Collator() override;

    CollationKey createCollationKey(const wchar_t* pValue, std::size_t nValueLength);
    /// The key's bytes lie in the pool. Once the buffers have grown nothing is allocated but the pool's blocks. Where a
    /// key has more than about five bytes a character and does not fit, the room that is asked for next grows with the
    /// square of the text: for texts of thousands of characters createCollationKey() is the safer choice.
    RefCollationKey createRefCollationKey(const wchar_t* pValue, std::size_t nValueLength,
                                          StringPoolTemplate<char>& rPool);
    /// -1, 0 or 1, by the law above, without making keys where the service can.
    int compare(std::wstring_view left, std::wstring_view right);

    CollationStrength strength() const noexcept { return m_eStrength; }
    /// The name of the sort in force.
    String sortName() const;
    /// Keys of different versions do not compare: another order, or another format of keys.
    String version() const;

private:
    Handle<CollatorGuts> m_hGuts;
    CollationStrength m_eStrength = kCollationStrengthDefault;
};

}  // namespace vel::i18n
