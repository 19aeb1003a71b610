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

void noteUnknownLanguage(const vel::String& sort)
{
    vel::i18n::NLSThreadContext context(vel::i18n::NLSEnvironment::getDefaultEnvironment());
    const vel::String code = answers::unknownLanguageOf(context, sort);
    if (!code.isEmpty()) {
        complain("note", "--sort " + visibleText(sort) + ": no language '" + visibleText(code) +
                             "' is known, so the order is the root's, as with und");
    }
}

}  // namespace cli
