#include "sorting/keymaker.h"

#include <string>

#include "failures.h"
#include "text.h"

namespace cli {

std::unique_ptr<KeyMaker> makeKeyMaker(const vel::String& sort, vel::i18n::CollationStrength strength)
{
    try {
        return std::make_unique<KeyMaker>(sort, strength);
    } catch (const answers::NoSuchSort& fault) {
        throw UsageError(std::string("--sort ") + fault.what());
    }
}

}  // namespace cli
