#pragma once

#include "vel/core/message.h"

namespace vel::i18n_details {

/// The caption of a local currency: insert 1 is its symbol, insert 2 the name of its locale.
extern const Message kmsgCurrencyFormatLocaleCurrencyHeading;

}  // namespace vel::i18n_details
