#include "i18nmessages.h"

#include "vel/messages/messagefilesregistry.h"

namespace vel::i18n_details {

VEL_INIT_TABLES const StaticValue<Message> kmsgCurrencyFormatLocaleCurrencyHeading([] {
    return Message::external(L"kmsgCurrencyFormatLocaleCurrencyHeading");
});

namespace {

/// Registers the library's message file when the library is loaded; the value says that it is done.
VEL_INIT_VALUES const StaticValue<bool> g_registered([] {
    MessageFilesRegistry::getInstance().registerFile(L"i18nmessages.xml");
    return true;
});

}  // namespace

void requireMessageFile()
{
    static_cast<void>(*g_registered);
}

}  // namespace vel::i18n_details
