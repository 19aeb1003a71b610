// Language specifications (before the first zero) and sort names: whatever they are, a language is known or null, and a
// sort is put in force or the one before stays.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "require.h"
#include "vel/nls/nlsservice.h"

namespace {

using fuzzing::require;
using namespace vel::nls;

/// Tables stay until the last load context is freed: a fuzzer meets more sorts than memory holds, an installation does
/// not.
constexpr int kNamesPerContext = 64;

class Service
{
public:
    Service() : m_pLoad(linkedService().m_pCreateLoadContext(nullptr, 0))
    {
        int status = 0;
        linkedService().m_pInitThreadContext(&m_tContext, linkedService().m_pCreateGlobalArea(m_pLoad, 1, &status), 0,
                                             0);
    }
    ~Service()
    {
        linkedService().m_pTerminateThreadContext(&m_tContext);
        linkedService().m_pFreeLoadContext(m_pLoad);
    }
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    LanguageHandle* open(std::string_view specification)
    {
        return linkedService().m_pLanguageHandleFromName(specification.data(), specification.size(), &m_tArea, 1,
                                                         &m_tContext);
    }
    bool setSort(LanguageHandle* language, std::string_view name)
    {
        return linkedService().m_pModifyLanguageHandle(language, name.data(), name.size(), kLanguageItemLinguisticSort,
                                                       0, 1, &m_tContext) == 0;
    }
    /// ASCII; empty for null.
    std::string info(LanguageHandle* language, LanguageItem item)
    {
        unsigned char buffer[2048];
        const unsigned char* text = linkedService().m_pLanguageInfo(language, item, buffer, sizeof buffer, &m_tContext);
        std::string ascii;
        for (; text != nullptr && (text[0] != 0 || text[1] != 0); text += 2) {
            require(text[0] == 0 && text[1] < 0x80);
            ascii += static_cast<char>(text[1]);
        }
        return ascii;
    }

private:
    LoadContext* m_pLoad;
    ContextRecord m_tContext{};
    LanguageArea m_tArea{};
};

/// What is a language is one again under its own tag, spelled as a specification.
void checkLanguage(Service& service, std::string_view specification)
{
    LanguageHandle* language = service.open(specification);
    if (language == nullptr) {
        return;
    }
    const std::string tag = service.info(language, kLanguageItemLanguage);
    std::string again = tag + ".AL16UTF16";
    if (const std::size_t hyphen = again.find('-'); hyphen != std::string::npos) {
        again[hyphen] = '_';
    }
    require(specification.size() <= std::string_view("abc_XYZ.AL16UTF16").size());
    language = service.open(again);
    require(language != nullptr && service.info(language, kLanguageItemLanguage) == tag);
}

void checkSort(Service& service, std::string_view name)
{
    LanguageHandle* language = service.open("");
    require(language != nullptr && service.setSort(language, "binary"));
    const bool isSort = service.setSort(language, name);
    const std::string inForce = service.info(language, kLanguageItemLinguisticSort);
    require(isSort || inForce == "binary");
    // A name in its canonical form is that of the same sort.
    require(service.setSort(language, inForce) && service.info(language, kLanguageItemLinguisticSort) == inForce);
    require(!service.info(language, kLanguageItemSortVersion).empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Service* service = new Service;
    static int count = 0;
    if (++count % kNamesPerContext == 0) {
        delete service;
        service = new Service;
    }
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::size_t zero = text.find('\0');
    checkLanguage(*service, text.substr(0, zero));
    if (zero != std::string_view::npos) {
        checkSort(*service, text.substr(zero + 1));
    }
    return 0;
}
