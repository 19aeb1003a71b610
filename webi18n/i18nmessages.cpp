#include "vel/core/staticinit.h"
#include "vel/messages/messagefilesregistry.h"

namespace vel {

namespace {

/// Registers the library's message file when the library is loaded.
struct I18nMessagesRegistration
{
    I18nMessagesRegistration() { MessageFilesRegistry::getInstance().registerFile(L"i18nmessages.xml"); }
};

VEL_INIT_VALUES const I18nMessagesRegistration g_registration;

}  // namespace

}  // namespace vel
