#include "answers/keymaker.h"

#include <algorithm>

#include "answers/text.h"
#include "vel/core/utf8.h"
#include "vel/nls/sortnames.h"

namespace answers {

using vel::String;
using vel::i18n::Collator;
using vel::i18n::NLSEnvironment;
using vel::nls_internal_wrapper::NLSLanguage;

namespace {

constexpr const wchar_t* ksBinary = L"binary";
constexpr const wchar_t* ksOfTheService = L".AL16UTF16";
/// In a pool, the room for a key that does not fit grows with the square of the text: keys of longer texts are made
/// elsewhere and copied.
constexpr std::size_t kMostInPool = 256;

/// "nearest: de, de-u-co-phonebk; ", or nothing.
std::string nearestOf(const String& sort)
{
    std::string text;
    for (const std::string& each : vel::nls::nearestSortNames(vel::toUtf8Lossy(sort))) {
        text += (text.empty() ? "nearest: " : ", ") + each;
    }
    return text.empty() ? text : text + "; ";
}

Collator makeCollator(vel::i18n::NLSThreadContext& context, const String& sort, vel::i18n::CollationStrength strength)
{
    if (!isSort(context, sort)) {
        throw NoSuchSort(visibleText(sort) + ": there is no such sort; " + nearestOf(sort) +
                         "accepted are language tags such as sv, de-u-co-phonebk, zh-u-co-stroke or und, and binary");
    }
    return Collator(context, sort, strength);
}

vel::i18n::RefCollationKey copied(const vel::i18n::CollationKey& key, vel::NarrowStringPool& pool)
{
    std::copy_n(key.view().data(), key.view().size(), pool.getAppendBuffer(key.view().size()));
    pool.commitAppendBuffer(key.view().size());
    return vel::i18n::RefCollationKey(pool.lastString());
}

}  // namespace

bool isSort(vel::i18n::NLSThreadContext& context, const String& name)
{
    NLSLanguage language(context.getInternalNlsGlobals(), ksOfTheService);
    // The cheapest sort that there is: what is unknown leaves it in force.
    language.modifyLinguisticSort(ksBinary);
    language.modifyLinguisticSort(name);
    const bool isAscii = name.view().find_first_of(L'\0') == String::kNotFound &&
                         std::all_of(name.begin(), name.end(), [](wchar_t each) { return each > 0 && each < 0x80; });
    return isAscii && (language.getLinguisticSort() != ksBinary || name.equalsNoCase(ksBinary));
}

KeyMaker::KeyMaker(const String& sort, vel::i18n::CollationStrength strength)
    : m_tContext(NLSEnvironment::getDefaultEnvironment()), m_tCollator(makeCollator(m_tContext, sort, strength))
{}

std::optional<std::size_t> KeyMaker::makeKey(std::string_view utf8, vel::NarrowStringPool& pool,
                                             vel::i18n::RefCollationKey& key)
{
    if (utf8.size() > m_tWide.capacity()) {
        m_tWide.ensureCapacity(2 * utf8.size());
    }
    std::size_t fault = std::string_view::npos;
    const std::size_t length = vel::decodeUtf8(utf8, m_tWide.data(), &fault);
    if (fault != std::string_view::npos) {
        return fault;
    }
    key = length <= kMostInPool ? m_tCollator.createRefCollationKey(m_tWide.data(), length, pool)
                                : copied(m_tCollator.createCollationKey(m_tWide.data(), length), pool);
    return std::nullopt;
}

}  // namespace answers
