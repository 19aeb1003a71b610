#include "vel/core/dynamicloader.h"

#include <dlfcn.h>

#include "vel/core/exception.h"
#include "vel/core/string.h"

namespace vel {

bool unloadModule(void* module, EOnError onError)
{
    if (module != nullptr && ::dlclose(module) == 0) {
        return true;
    }
    if (onError == kOnErrorThrow) {
        const char* reason = module == nullptr ? nullptr : ::dlerror();
        const auto text = stringFromUtf8(reason == nullptr ? "there is no module to unload" : reason);
        throw Exception(Message::text(text ? *text : String(L"a module cannot be unloaded")));
    }
    return false;
}

}  // namespace vel
