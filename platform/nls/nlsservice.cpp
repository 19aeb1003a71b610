#include "vel/nls/nlsservice.h"

#include <atomic>
#include <bit>
#include <cstring>
#include <memory>
#include <mutex>
#include <new>
#include <set>
#include <type_traits>
#include <utility>

#include "languageinfo.h"
#include "languagespec.h"
#include "linkedservice.h"
#include "vel/nls/sorttable.h"

namespace vel::nls {

/// One for all load contexts: what stays until the last of them is freed.
struct GlobalArea
{
    std::mutex m_tMutex;
    std::size_t m_nLoadContexts = 0;
    std::set<std::shared_ptr<const SortTable>> m_tTables;
};

struct LoadContext
{
    GlobalArea* m_pGlobalArea;
};

namespace {

/// What a context record holds.
struct Context
{
    GlobalArea* m_pGlobalArea;
};

/// What a language area holds. The table belongs to the global area; null until the language's own sort is needed.
struct Language
{
    LanguageCodes m_tCodes;
    const SortTable* m_pTable;
};

static_assert(std::is_trivially_copyable_v<Context> && sizeof(Context) <= sizeof(ContextRecord));
static_assert(std::is_trivially_copyable_v<Language> && sizeof(Language) <= sizeof(LanguageArea));
static_assert(alignof(Context) <= alignof(ContextRecord) && alignof(Language) <= alignof(LanguageArea));

Context* contextIn(ContextRecord* record) noexcept
{
    return record == nullptr ? nullptr : std::launder(reinterpret_cast<Context*>(record->m_aOpaque));
}

GlobalArea* globalAreaOf(ContextRecord* record) noexcept
{
    const Context* context = contextIn(record);
    return context == nullptr ? nullptr : context->m_pGlobalArea;
}

Language* languageOf(LanguageHandle* handle) noexcept
{
    return std::launder(reinterpret_cast<Language*>(handle));
}

LanguageHandle* placeLanguage(LanguageArea* area, const LanguageCodes& codes) noexcept
{
    return reinterpret_cast<LanguageHandle*>(new (area->m_aOpaque) Language{codes, nullptr});
}

/// Never destroyed: a host may give its last guard back after this library's static objects are gone.
GlobalArea& processArea()
{
    static GlobalArea* const kArea = new GlobalArea;
    return *kArea;
}

/// The table of that name, kept until the last load context is freed; null when there is none.
const SortTable* openTable(GlobalArea& globalArea, std::string_view name)
{
    std::shared_ptr<const SortTable> table = SortTable::open(name);
    if (table == nullptr) {
        return nullptr;
    }
    const std::lock_guard<std::mutex> lock(globalArea.m_tMutex);
    return globalArea.m_tTables.insert(std::move(table)).first->get();
}

/// The table of the sort in force, if it is open; null without a language or a context.
const SortTable* openedTableOf(LanguageHandle* handle, ContextRecord* context) noexcept
{
    return handle == nullptr || globalAreaOf(context) == nullptr ? nullptr : languageOf(handle)->m_pTable;
}

/// The same, opened when it is first needed.
const SortTable* tableOf(LanguageHandle* handle, ContextRecord* context)
{
    GlobalArea* globalArea = globalAreaOf(context);
    if (handle == nullptr || globalArea == nullptr) {
        return nullptr;
    }
    Language* language = languageOf(handle);
    if (language->m_pTable == nullptr) {
        language->m_pTable = openTable(*globalArea, language->m_tCodes.tag());
    }
    return language->m_pTable;
}

/// What the work gives, or `failure` where it throws: what runs out of memory here is no exception there.
template <typename Result, typename Work>
Result orFailure(Result failure, const Work& work) noexcept
{
    try {
        return work();
    } catch (...) {
        return failure;
    }
}

SortStrength strengthOf(unsigned flags) noexcept
{
    // The strongest flag counts: one bit for each strength, from the lowest on. None: tertiary.
    constexpr unsigned kFlags = 0x1F;
    constexpr unsigned kDefault = 4;
    const unsigned known = (flags & kFlags) == 0 ? kDefault : flags & kFlags;
    return static_cast<SortStrength>(std::bit_width(known) - 1);
}

LoadContext* createLoadContext(const void* /*reserved*/, unsigned /*flags*/)
{
    return orFailure<LoadContext*>(nullptr, [] {
        GlobalArea& area = processArea();
        auto loadContext = std::make_unique<LoadContext>(LoadContext{&area});
        const std::lock_guard<std::mutex> lock(area.m_tMutex);
        ++area.m_nLoadContexts;
        return loadContext.release();
    });
}

GlobalArea* createGlobalArea(LoadContext* loadContext, unsigned /*flags*/, int* status)
{
    if (status != nullptr) {
        *status = loadContext == nullptr ? 1 : 0;
    }
    return loadContext == nullptr ? nullptr : loadContext->m_pGlobalArea;
}

void initThreadContext(ContextRecord* record, GlobalArea* globalArea, unsigned /*flags*/, unsigned /*reserved*/)
{
    new (record->m_aOpaque) Context{globalArea};
}

LanguageHandle* languageHandleFromName(const char* specification, std::size_t length, LanguageArea* area,
                                       unsigned /*flags*/, ContextRecord* context)
{
    if (area == nullptr || globalAreaOf(context) == nullptr) {
        return nullptr;
    }
    return orFailure<LanguageHandle*>(nullptr, [&] {
        const auto codes = readLanguageSpecification(std::string_view(specification, length));
        return codes ? placeLanguage(area, *codes) : nullptr;
    });
}

LanguageHandle* defaultLanguageHandle(LanguageArea* area, unsigned flags, ContextRecord* context)
{
    return languageHandleFromName("", 0, area, flags, context);
}

std::optional<std::u16string> textOf(LanguageHandle* handle, LanguageItem item, ContextRecord* context)
{
    if (item != kLanguageItemLinguisticSort && item != kLanguageItemSortVersion) {
        return languageText(languageOf(handle)->m_tCodes, item);
    }
    const SortTable* table = tableOf(handle, context);
    if (table == nullptr) {
        return std::nullopt;
    }
    const std::string text = item == kLanguageItemLinguisticSort ? std::string(table->name()) : table->version();
    return std::u16string(text.begin(), text.end());
}

const unsigned char* languageInfo(LanguageHandle* handle, LanguageItem item, unsigned char* buffer, std::size_t size,
                                  ContextRecord* context)
{
    if (handle == nullptr) {
        return nullptr;
    }
    return orFailure<const unsigned char*>(nullptr, [&] {
        const auto text = textOf(handle, item, context);
        return text && writeTerminated(*text, buffer, size) ? buffer : nullptr;
    });
}

int modifyLanguageHandle(LanguageHandle* handle, const char* value, std::size_t length, LanguageItem item,
                         unsigned /*reserved*/, unsigned /*flags*/, ContextRecord* context)
{
    GlobalArea* globalArea = globalAreaOf(context);
    if (handle == nullptr || globalArea == nullptr || item != kLanguageItemLinguisticSort) {
        return 1;
    }
    const SortTable* table =
        orFailure<const SortTable*>(nullptr, [&] { return openTable(*globalArea, std::string_view(value, length)); });
    if (table == nullptr) {
        return 1;
    }
    languageOf(handle)->m_pTable = table;
    return 0;
}

void terminateThreadContext(ContextRecord* record)
{
    if (Context* context = contextIn(record)) {
        context->m_pGlobalArea = nullptr;
    }
}

void freeLoadContext(LoadContext* loadContext)
{
    const std::unique_ptr<LoadContext> owned(loadContext);
    if (owned == nullptr) {
        return;
    }
    std::set<std::shared_ptr<const SortTable>> unused;  // freed when nobody waits for the lock
    const std::lock_guard<std::mutex> lock(owned->m_pGlobalArea->m_tMutex);
    if (--owned->m_pGlobalArea->m_nLoadContexts == 0) {
        unused.swap(owned->m_pGlobalArea->m_tTables);
    }
}

int initializeProcess()
{
    return 0;
}

[[gnu::noinline]] std::size_t openAndMakeSortKey(unsigned char* out, std::size_t capacity, const unsigned char* utf16be,
                                                 std::size_t byteCount, unsigned strengthFlags, LanguageHandle* handle,
                                                 ContextRecord* context)
{
    return orFailure(kSortKeyError, [&] {
        const SortTable* table = tableOf(handle, context);
        return table == nullptr ? kSortKeyError
                                : table->makeKey(utf16be, byteCount, strengthOf(strengthFlags), out, capacity);
    });
}

/// Goes on to the table, and nothing else: the key of a name costs little more than the calls that lead to it.
std::size_t makeSortKey(unsigned char* out, std::size_t capacity, const unsigned char* utf16be, std::size_t byteCount,
                        unsigned strengthFlags, LanguageHandle* handle, ContextRecord* context)
{
    const SortTable* table = openedTableOf(handle, context);
    if (table == nullptr) [[unlikely]] {
        return openAndMakeSortKey(out, capacity, utf16be, byteCount, strengthFlags, handle, context);
    }
    return orFailure(kSortKeyError,
                     [&] { return table->makeKey(utf16be, byteCount, strengthOf(strengthFlags), out, capacity); });
}

/// Out of line: what opens a table needs a frame.
[[gnu::noinline]] int openAndCompareTexts(const wchar_t* left, std::size_t leftLength, const wchar_t* right,
                                          std::size_t rightLength, unsigned strengthFlags, LanguageHandle* handle,
                                          ContextRecord* context)
{
    return orFailure(kComparisonError, [&] {
        const SortTable* table = tableOf(handle, context);
        return table == nullptr ? kComparisonError
                                : table->compare(left, leftLength, right, rightLength, strengthOf(strengthFlags));
    });
}

/// Goes on to the table, and nothing else: a comparison costs little more than the calls that lead to it.
int compareTexts(const wchar_t* left, std::size_t leftLength, const wchar_t* right, std::size_t rightLength,
                 unsigned strengthFlags, LanguageHandle* handle, ContextRecord* context)
{
    const SortTable* table = openedTableOf(handle, context);
    if (table == nullptr) [[unlikely]] {
        return openAndCompareTexts(left, leftLength, right, rightLength, strengthFlags, handle, context);
    }
    return orFailure(kComparisonError,
                     [&] { return table->compare(left, leftLength, right, rightLength, strengthOf(strengthFlags)); });
}

constexpr EntryPoints kOwnService = {
    createLoadContext, createGlobalArea,       initThreadContext,    defaultLanguageHandle,
    languageInfo,      languageHandleFromName, modifyLanguageHandle, terminateThreadContext,
    freeLoadContext,   initializeProcess,      makeSortKey,          compareTexts};

constinit std::atomic<const EntryPoints*> s_pService{&kOwnService};

}  // namespace

const EntryPoints& linkedService() noexcept
{
    return *s_pService.load(std::memory_order_acquire);
}

void replaceLinkedService(const EntryPoints* service) noexcept
{
    s_pService.store(service == nullptr ? &kOwnService : service, std::memory_order_release);
}

}  // namespace vel::nls
