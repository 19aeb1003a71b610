#include "sharedtexts.h"

#include <algorithm>
#include <new>

namespace vel::i18n_details {

SharedTexts::SharedTexts(const std::uint32_t* ends, std::size_t texts, std::wstring_view characters)
{
    if (texts == 0) {
        return;
    }
    void* const memory =
        ::operator new(sizeof(Block) + texts * sizeof(std::uint32_t) + characters.size() * sizeof(wchar_t));
    Block* const block = ::new (memory) Block(static_cast<std::uint32_t>(texts));
    std::uint32_t* const places = std::copy_n(ends, texts, block->ends());
    std::copy_n(characters.data(), characters.size(), reinterpret_cast<wchar_t*>(places));
    m_hBlock = Handle<const Block>(block);
}

SharedTexts::SharedTexts(std::wstring_view text)
{
    const std::uint32_t end = static_cast<std::uint32_t>(text.size());
    *this = SharedTexts(&end, 1, text);
}

}  // namespace vel::i18n_details
