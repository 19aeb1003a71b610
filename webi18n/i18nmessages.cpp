#include "i18nmessages.h"

#include "vel/core/staticinit.h"
#include "vel/messages/messagefilesregistry.h"

namespace vel::i18n_details {

VEL_INIT_TABLES const Message kmsgCurrencyFormatLocaleCurrencyHeading =
    Message::external(L"kmsgCurrencyFormatLocaleCurrencyHeading");

namespace {

/// Registers the library's message file when the library is loaded.
struct I18nMessagesRegistration
{
    I18nMessagesRegistration() { MessageFilesRegistry::getInstance().registerFile(L"i18nmessages.xml"); }
};

VEL_INIT_VALUES const I18nMessagesRegistration g_registration;

}  // namespace

}  // namespace vel::i18n_details
