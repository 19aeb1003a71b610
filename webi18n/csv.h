#pragma once

#include <string_view>

#include "vel/core/string.h"

namespace vel::i18n_details {

/// Calls `take(piece)` for each piece of a comma-separated configuration value, trimmed, empty ones included. There is
/// no quoting: n commas give n + 1 pieces. An empty value has one, empty, piece.
template <typename Take>
void forEachPiece(std::wstring_view value, Take take)
{
    for (;;) {
        const std::size_t comma = value.find(L',');
        take(String::trim(value.substr(0, comma)));
        if (comma == std::wstring_view::npos) {
            return;
        }
        value.remove_prefix(comma + 1);
    }
}

}  // namespace vel::i18n_details
