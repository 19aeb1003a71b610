#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "linkedservice.h"

namespace nlstest {

enum Operation
{
    kCreateLoadContext,
    kCreateGlobalArea,
    kInitThreadContext,
    kDefaultLanguageHandle,
    kLanguageInfo,
    kLanguageHandleFromName,
    kModifyLanguageHandle,
    kTerminateThreadContext,
    kFreeLoadContext,
    kInitializeProcess,
    kMakeSortKey,
    kCompareTexts,
    kOperationEnd_
};

/// Stands in front of the linked service while it lives: counts and records the calls, and makes some of them fail. One
/// at a time, one thread.
class CountingService
{
public:
    CountingService();
    ~CountingService() { vel::nls::replaceLinkedService(nullptr); }
    CountingService(const CountingService&) = delete;
    CountingService& operator=(const CountingService&) = delete;

    int calls(Operation operation) const { return m_aCalls[operation]; }
    /// The next `count` calls fail as the operation's failure is stated.
    void fail(Operation operation, int count = 1) { m_aFailing[operation] = count; }
    /// The service as it is put in place; may be changed before an environment is made.
    vel::nls::EntryPoints& table() { return m_tTable; }

    std::vector<std::string> m_tOrder;                    ///< names of the operations as they were called
    std::vector<std::string> m_tArguments;                ///< text arguments of the language operations
    std::vector<std::size_t> m_tCapacities;               ///< of makeSortKey's calls
    std::vector<std::string> m_tInputs;                   ///< of makeSortKey's calls
    std::vector<unsigned> m_tFlags;                       ///< of makeSortKey's and compareTexts' calls
    std::deque<std::size_t> m_tKeyLengths;                ///< makeSortKey returns these first, with bytes 'k'
    std::deque<std::string> m_tKeys;                      ///< then makes these
    std::vector<vel::nls::LoadContext*> m_tLoadContexts;  ///< every one that was created
    int m_nOpenLoadContexts = 0;
    int m_nOpenThreadContexts = 0;
    std::function<void()> m_tOnCall;  ///< called first by every operation

    /// Whether this call is to fail; counts it.
    bool enter(Operation operation, const char* name);
    /// Hands out the next of m_tKeys.
    std::size_t putNextKey(unsigned char* out, std::size_t capacity);
    static CountingService& current() { return *s_pCurrent; }
    const vel::nls::EntryPoints& real() const { return m_tReal; }

private:
    std::array<int, kOperationEnd_> m_aCalls{};
    std::array<int, kOperationEnd_> m_aFailing{};
    vel::nls::EntryPoints m_tReal;
    vel::nls::EntryPoints m_tTable;
    static inline CountingService* s_pCurrent = nullptr;
};

inline bool CountingService::enter(Operation operation, const char* name)
{
    ++m_aCalls[operation];
    m_tOrder.emplace_back(name);
    if (m_tOnCall) {
        m_tOnCall();
    }
    return m_aFailing[operation] > 0 && m_aFailing[operation]-- > 0;
}

inline std::size_t CountingService::putNextKey(unsigned char* out, std::size_t capacity)
{
    const std::string key = m_tKeys.front();
    m_tKeys.pop_front();
    if (key.size() <= capacity) {
        std::memcpy(out, key.data(), key.size());
    }
    return key.size();
}

namespace operations {

using namespace vel::nls;

inline LoadContext* createLoadContext(const void* reserved, unsigned flags)
{
    CountingService& service = CountingService::current();
    if (reserved != nullptr || flags != 0 || service.enter(kCreateLoadContext, "createLoadContext")) {
        return nullptr;
    }
    ++service.m_nOpenLoadContexts;
    service.m_tLoadContexts.push_back(service.real().m_pCreateLoadContext(reserved, flags));
    return service.m_tLoadContexts.back();
}

inline GlobalArea* createGlobalArea(LoadContext* context, unsigned flags, int* status)
{
    CountingService& service = CountingService::current();
    if (flags != 1 || status == nullptr || service.enter(kCreateGlobalArea, "createGlobalArea")) {
        return nullptr;
    }
    return service.real().m_pCreateGlobalArea(context, flags, status);
}

inline void initThreadContext(ContextRecord* record, GlobalArea* area, unsigned flags, unsigned reserved)
{
    CountingService& service = CountingService::current();
    service.enter(kInitThreadContext, flags == 0 && reserved == 0 ? "initThreadContext" : "initThreadContext?");
    ++service.m_nOpenThreadContexts;
    service.real().m_pInitThreadContext(record, area, flags, reserved);
}

inline LanguageHandle* defaultLanguageHandle(LanguageArea* area, unsigned flags, ContextRecord* record)
{
    CountingService& service = CountingService::current();
    return flags != 0 || service.enter(kDefaultLanguageHandle, "defaultLanguageHandle")
               ? nullptr
               : service.real().m_pDefaultLanguageHandle(area, flags, record);
}

inline const unsigned char* languageInfo(LanguageHandle* language, LanguageItem item, unsigned char* buffer,
                                         std::size_t size, ContextRecord* record)
{
    CountingService& service = CountingService::current();
    return size != 2048 || service.enter(kLanguageInfo, "languageInfo")
               ? nullptr
               : service.real().m_pLanguageInfo(language, item, buffer, size, record);
}

inline LanguageHandle* languageHandleFromName(const char* text, std::size_t length, LanguageArea* area, unsigned flags,
                                              ContextRecord* record)
{
    CountingService& service = CountingService::current();
    service.m_tArguments.emplace_back(text, length);
    return flags != 1 || service.enter(kLanguageHandleFromName, "languageHandleFromName")
               ? nullptr
               : service.real().m_pLanguageHandleFromName(text, length, area, flags, record);
}

inline int modifyLanguageHandle(LanguageHandle* language, const char* value, std::size_t length, LanguageItem item,
                                unsigned reserved, unsigned flags, ContextRecord* record)
{
    CountingService& service = CountingService::current();
    service.m_tArguments.emplace_back(value, length);
    return item != 80 || reserved != 0 || flags != 1 || service.enter(kModifyLanguageHandle, "modifyLanguageHandle")
               ? 1
               : service.real().m_pModifyLanguageHandle(language, value, length, item, reserved, flags, record);
}

inline void terminateThreadContext(ContextRecord* record)
{
    CountingService& service = CountingService::current();
    service.enter(kTerminateThreadContext, "terminateThreadContext");
    --service.m_nOpenThreadContexts;
    service.real().m_pTerminateThreadContext(record);
}

inline void freeLoadContext(LoadContext* context)
{
    CountingService& service = CountingService::current();
    service.enter(kFreeLoadContext, "freeLoadContext");
    --service.m_nOpenLoadContexts;
    service.real().m_pFreeLoadContext(context);
}

inline int initializeProcess()
{
    CountingService& service = CountingService::current();
    return service.enter(kInitializeProcess, "initializeProcess") ? 1 : service.real().m_pInitializeProcess();
}

inline std::size_t makeSortKey(unsigned char* out, std::size_t capacity, const unsigned char* text, std::size_t count,
                               unsigned flags, LanguageHandle* language, ContextRecord* record)
{
    CountingService& service = CountingService::current();
    service.m_tCapacities.push_back(capacity);
    service.m_tInputs.emplace_back(reinterpret_cast<const char*>(text), count);
    service.m_tFlags.push_back(flags);
    if (service.enter(kMakeSortKey, "makeSortKey")) {
        return kSortKeyError;
    }
    if (service.m_tKeyLengths.empty()) {
        return service.m_tKeys.empty()
                   ? service.real().m_pMakeSortKey(out, capacity, text, count, flags, language, record)
                   : service.putNextKey(out, capacity);
    }
    const std::size_t length = service.m_tKeyLengths.front();
    service.m_tKeyLengths.pop_front();
    if (length <= capacity) {
        std::memset(out, 'k', length);
    }
    return length;
}

inline int compareTexts(const wchar_t* a, std::size_t na, const wchar_t* b, std::size_t nb, unsigned flags,
                        LanguageHandle* language, ContextRecord* record)
{
    CountingService& service = CountingService::current();
    service.m_tFlags.push_back(flags);
    service.enter(kCompareTexts, "compareTexts");
    return service.real().m_pCompareTexts(a, na, b, nb, flags, language, record);
}

}  // namespace operations

inline CountingService::CountingService() : m_tReal(vel::nls::linkedService())
{
    using namespace operations;
    m_tTable = {createLoadContext, createGlobalArea,       initThreadContext,    defaultLanguageHandle,
                languageInfo,      languageHandleFromName, modifyLanguageHandle, terminateThreadContext,
                freeLoadContext,   initializeProcess,      makeSortKey,          compareTexts};
    s_pCurrent = this;
    vel::nls::replaceLinkedService(&m_tTable);
}

/// The wide C string that the work throws; empty when it throws nothing.
template <typename Work>
std::wstring thrownBy(const Work& work)
{
    try {
        work();
    } catch (const wchar_t* text) {
        return text;
    }
    return {};
}

}  // namespace nlstest
