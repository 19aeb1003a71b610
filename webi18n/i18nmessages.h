#pragma once

#include "vel/core/message.h"
#include "vel/core/staticinit.h"

namespace vel::i18n_details {

/// The caption of a local currency: insert 1 is its symbol, insert 2 the name of its locale.
extern const StaticValue<Message> kmsgCurrencyFormatLocaleCurrencyHeading;

/// Tries again what lacked memory when the library was loaded: the registration of its message file. Throws
/// std::bad_alloc.
void requireMessageFile();

}  // namespace vel::i18n_details
