#include "nlstext.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>

#include "vel/transcoding/utf16.h"

namespace vel::i18n_details {

namespace {

constexpr std::size_t kLeastHeapBytes = 128;
constexpr std::size_t kLeastWorkBytes = 64;
constexpr wchar_t kReplacement = 0xFFFD;

}  // namespace

std::size_t toBytes(std::wstring_view text, AutoBufferBase<char>& buffer)
{
    if (text.size() > kLongestText) {
        return kNotTranslated;
    }
    if (text.size() > buffer.capacity()) {
        buffer.ensureCapacity(std::max(text.size(), kLeastHeapBytes));
    }
    std::transform(text.begin(), text.end(), buffer.data(),
                   [](wchar_t each) { return static_cast<char>(static_cast<unsigned char>(each)); });
    return text.size();
}

std::size_t workBufferSize(std::size_t current, std::size_t need) noexcept
{
    if (current >= need) {
        return current;
    }
    std::size_t size = std::max(kLeastWorkBytes, current);
    if (need / 2 >= current) {
        return std::max(need, size);
    }
    while (size < need) {
        size *= 2;
    }
    return size;
}

String fromTerminatedUtf16(const unsigned char* text)
{
    std::size_t size = 0;
    while (text != nullptr && (text[size] != 0 || text[size + 1] != 0)) {
        size += 2;
    }
    std::wstring wide;
    for (std::size_t start = 0; start < size;) {
        const std::size_t before = wide.size();
        wide.resize(before + (size - start) / 2);
        std::size_t fault = 0;
        const std::size_t written = decodeUtf16BigEndian(reinterpret_cast<const char*>(text) + start, size - start,
                                                         wide.data() + before, &fault);
        wide.resize(before + written);
        if (fault == std::string_view::npos) {
            break;
        }
        wide.push_back(kReplacement);
        start += fault + 2;
    }
    return String(std::move(wide));
}

}  // namespace vel::i18n_details
