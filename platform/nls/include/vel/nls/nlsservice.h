#pragma once

#include <cstddef>

#include "vel/core/api.h"

namespace vel::nls {

/// What languageInfo tells and modifyLanguageHandle changes of a language.
enum LanguageItem : unsigned
{
    kLanguageItemFullDay = 1,            ///< 1 to 7: Monday to Sunday
    kLanguageItemAbbreviatedDay = 11,    ///< 11 to 17
    kLanguageItemFullMonth = 21,         ///< 21 to 32: January to December
    kLanguageItemAbbreviatedMonth = 41,  ///< 41 to 52
    kLanguageItemLanguage = 70,          ///< the tag of language and territory, such as "de-CH"
    kLanguageItemCharacterSet = 71,      ///< "AL16UTF16"
    kLanguageItemCalendar = 72,          ///< the calendar in use there, such as "gregorian" or "buddhist"
    kLanguageItemLinguisticSort = 80,    ///< the name of the sort in force; the only item that can be changed
    kLanguageItemSortVersion = 81,       ///< keys of one sort compare when their versions are equal
    kLanguageItemEnd_ = 82
};

/// The service's own objects; nobody looks into them.
struct LoadContext;
struct GlobalArea;
struct LanguageHandle;

/// What the service keeps for one thread. The caller owns the record and keeps it where it is.
struct ContextRecord
{
    alignas(void*) unsigned char m_aOpaque[32];
};

/// Where the service puts a language; what it refers to stays until the last load context is freed. A record may be
/// copied: a handle that is the record's own address then is the copy's.
struct LanguageArea
{
    alignas(void*) unsigned char m_aOpaque[64];
};

/// Eleven operations, and one that a service may lack: how a service is reached. A thread context and the languages
/// made with it are used by one thread at a time; contexts of different threads are independent. The flags are
/// reserved.
///
/// The service that is linked in runs on ICU's data:
///
/// - It never throws. Where memory runs out an operation fails as is stated for it; what was in force stays so, and the
///   next call may succeed.
/// - A language specification is `[language[_territory]][.charset]`, in any letter case: a language code of two or
///   three letters and a territory code that ICU knows, and the character set AL16UTF16, which is also what there is
///   without one. Everything else gives null. Without a language it is English of the United States, whatever the
///   process's environment says, so that the same installation sorts the same way everywhere.
///
///       ".AL16UTF16", "" -> en-US      "de.AL16UTF16" -> de       "fr_ca" -> fr-CA
///       "xx", "de_XX", "de_", "_US", "de.", "de.UTF8", "de-CH", "de_CH_1996", "deutsch"  -> null
///
/// - A language starts with the sort of its own tag. Sort names are SortTable's; what it does not know leaves the sort
///   in force, status 1. A table is built when it is first needed, shared by all contexts, and kept until the last load
///   context is freed.
/// - Ill-formed UTF-16, and an odd byte at the end, count as U+FFFD.
struct EntryPoints
{
    /// (null, 0). Null on failure.
    LoadContext* (*m_pCreateLoadContext)(const void* reserved, unsigned flags);
    /// (load context, 1, a status word: 0 on success). Null on failure.
    GlobalArea* (*m_pCreateGlobalArea)(LoadContext* loadContext, unsigned flags, int* status);
    /// (record, global area, 0, 0). Fills the record.
    void (*m_pInitThreadContext)(ContextRecord* context, GlobalArea* globalArea, unsigned flags, unsigned reserved);
    /// (area, 0, record). The environment's default language; null on failure.
    LanguageHandle* (*m_pDefaultLanguageHandle)(LanguageArea* area, unsigned flags, ContextRecord* context);
    /// Writes an item to the buffer as zero-terminated UTF-16BE text, as many whole characters as it takes, and returns
    /// the text; null on failure, for an item that there is not, and a buffer without room for the terminator.
    const unsigned char* (*m_pLanguageInfo)(LanguageHandle* language, LanguageItem item, unsigned char* buffer,
                                            std::size_t size, ContextRecord* context);
    /// (specification, its length, area, 1, record). Null on failure.
    LanguageHandle* (*m_pLanguageHandleFromName)(const char* specification, std::size_t length, LanguageArea* area,
                                                 unsigned flags, ContextRecord* context);
    /// (language, value, its length, item, 0, 1, record). 0 when the item was changed.
    int (*m_pModifyLanguageHandle)(LanguageHandle* language, const char* value, std::size_t length, LanguageItem item,
                                   unsigned reserved, unsigned flags, ContextRecord* context);
    void (*m_pTerminateThreadContext)(ContextRecord* context);
    void (*m_pFreeLoadContext)(LoadContext* loadContext);
    /// Once a process, or once more. 0 on success.
    int (*m_pInitializeProcess)();
    /// The length of the key, whether it fits into the capacity or not (then the buffer's contents are undefined), or
    /// all ones on error. Of the strength flags' low eight bits the strongest counts: 1 primary, 2 secondary, 4 or none
    /// tertiary, 8 quaternary, 16 identical.
    std::size_t (*m_pMakeSortKey)(unsigned char* out, std::size_t capacity, const unsigned char* utf16be,
                                  std::size_t byteCount, unsigned strengthFlags, LanguageHandle* language,
                                  ContextRecord* context);
    /// -1, 0 or 1, as the keys of both texts compare; kComparisonError on error. Null in a service that has no such
    /// operation.
    int (*m_pCompareTexts)(const wchar_t* left, std::size_t leftLength, const wchar_t* right, std::size_t rightLength,
                           unsigned strengthFlags, LanguageHandle* language, ContextRecord* context);
};

/// What makeSortKey returns on error.
inline constexpr std::size_t kSortKeyError = static_cast<std::size_t>(-1);
/// What compareTexts returns on error: no order.
inline constexpr int kComparisonError = 2;

/// The service that the next environment uses.
WEBI18N_API const EntryPoints& linkedService() noexcept;

}  // namespace vel::nls
