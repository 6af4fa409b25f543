#include "source/platform/linux/ondemand.h"

#include <dlfcn.h>

namespace quillmarsh::platform
{

void OnDemandLoader::Open(char const *library)
{
    if (!failure_.empty())
        return;
    libraryName_ = library;
    // Few functions of a large library are ever called, so the system binds each at its first call.
    library_ = dlopen(library, RTLD_LAZY | RTLD_LOCAL);
    if (library_)
        return;
    char const *const reason = dlerror();
    failure_ = string("The library ") + library + " cannot be loaded: " + (reason ? reason : "unknown reason") + ".";
}

void *OnDemandLoader::FindAddress(char const *name)
{
    if (!failure_.empty())
        return nullptr;
    void *const address = dlsym(library_, name);
    if (!address)
        failure_ = string("The library ") + libraryName_ + " lacks the function " + name + ".";
    return address;
}

} // namespace quillmarsh::platform
