#include "namedcoding.h"

#include <array>
#include <atomic>
#include <functional>
#include <map>
#include <mutex>
#include <optional>

#include "codecs.h"

namespace vel::transcoding_details {

namespace {

/// Longer than any name of ICU's with its options.
constexpr std::size_t kLongestName = 120;
constexpr std::size_t kSlots = 1024;
constexpr std::size_t kProbes = 16;

/// Spellings that were asked for, each at its hash or a little behind. Filled once and never emptied, so that it is
/// read without a lock. ICU has a few hundred names; one of their endless other spellings that finds no room is
/// resolved anew each time, and memory stays bounded.
constinit std::array<std::atomic<const NamedCoding*>, kSlots> g_spellings{};

struct Codecs
{
    std::mutex m_tMutex;
    std::map<std::string, Handle<const Codec>> m_tByIcuName;
};

/// Never destroyed: objects of a program's end may still encode.
Codecs& codecs()
{
    static Codecs& known = *new Codecs;
    return known;
}

std::size_t firstSlotOf(const String& name) noexcept
{
    return std::hash<String>()(name) % kSlots;
}

const NamedCoding* findSpelling(const String& name) noexcept
{
    const std::size_t first = firstSlotOf(name);
    for (std::size_t i = 0; i < kProbes; ++i) {
        const NamedCoding* each = g_spellings[(first + i) % kSlots].load(std::memory_order_acquire);
        if (each == nullptr || each->name() == name) {
            return each;
        }
    }
    return nullptr;
}

/// Keeps the spelling for the next time; gives the one that another thread has kept meanwhile.
Handle<const NamedCoding> keepSpelling(const Handle<const NamedCoding>& coding) noexcept
{
    const std::size_t first = firstSlotOf(coding->name());
    for (std::size_t i = 0; i < kProbes; ++i) {
        const NamedCoding* expected = nullptr;
        if (g_spellings[(first + i) % kSlots].compare_exchange_strong(expected, coding.get(),
                                                                      std::memory_order_acq_rel)) {
            coding->addReference();
            return coding;
        }
        if (expected->name() == coding->name()) {
            return Handle<const NamedCoding>(expected);
        }
    }
    return coding;
}

/// ICU's names are printable ASCII.
std::optional<std::string> asciiName(const String& name)
{
    if (name.isEmpty() || name.length() > kLongestName) {
        return std::nullopt;
    }
    std::string ascii;
    for (const wchar_t character : name) {
        if (character < 0x20 || character > 0x7E) {
            return std::nullopt;
        }
        ascii += static_cast<char>(character);
    }
    return ascii;
}

ConverterPtr openNamed(const String& name)
{
    const std::optional<std::string> ascii = asciiName(name);
    return ascii ? openConverter(ascii->c_str()) : nullptr;
}

Handle<const Codec> codecOf(const std::string& icuName, UConverter& converter)
{
    Codecs& known = codecs();
    {
        const std::lock_guard lock(known.m_tMutex);
        const auto place = known.m_tByIcuName.find(icuName);
        if (place != known.m_tByIcuName.end()) {
            return place->second;
        }
    }
    // Built without the lock: two threads may do it at once, the first one's result stays.
    Handle<const Codec> built = buildCodec(icuName, converter);
    const std::lock_guard lock(known.m_tMutex);
    return known.m_tByIcuName.emplace(icuName, std::move(built)).first->second;
}

}  // namespace

NamedCoding::NamedCoding(String name, std::string icuName, Handle<const Codec> codec, ConverterTraits traits)
    : m_sName(std::move(name)),
      m_sCanonical(std::wstring(icuName.begin(), icuName.end())),
      m_sIcuName(std::move(icuName)),
      m_hCodec(std::move(codec)),
      m_tTraits(traits)
{}

NamedCoding::~NamedCoding() = default;

bool NamedCoding::exists(const String& name)
{
    return findSpelling(name) != nullptr || openNamed(name) != nullptr;
}

Handle<const NamedCoding> NamedCoding::find(const String& name)
{
    if (const NamedCoding* known = findSpelling(name)) {
        return Handle<const NamedCoding>(known);
    }
    const ConverterPtr converter = openNamed(name);
    if (converter == nullptr) {
        return {};
    }
    UErrorCode error = U_ZERO_ERROR;
    std::string icuName = ucnv_getName(converter.get(), &error);
    Handle<const Codec> codec = codecOf(icuName, *converter);
    const ConverterTraits traits = codec.isNull() ? traitsOf(icuName.c_str()) : ConverterTraits();
    return keepSpelling(makeHandle<const NamedCoding>(name, std::move(icuName), std::move(codec), traits));
}

}  // namespace vel::transcoding_details
