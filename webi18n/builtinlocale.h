#pragma once

#include <string_view>

namespace vel::i18n_details {

/// The built-in definition of "en-us", as XML text in UTF-8.
extern const std::string_view ksUSAXml;

}  // namespace vel::i18n_details
