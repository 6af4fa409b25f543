#include "source/platform/modules.h"

#include <quillmarsh/basetools/texttools.h>

#include <dlfcn.h>

namespace quillmarsh::platform
{

HINSTANCE OpenModule(string const &fileName, string &error)
{
    error.clear();
    // An empty name would mean the program itself.
    if (fileName.empty() || fileName.find('\0') != string::npos)
    {
        error = "The name of the file is empty or broken.";
        return nullptr;
    }
    // Binds all symbols at once, so that a missing one fails here and not in the middle of a frame.
    void *const module = dlopen(fileName.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!module)
    {
        char const *const reason = dlerror();
        error = reason ? reason : "unknown reason";
        if (!MatchPrefix(error, fileName))
            error.insert(0, fileName + ": ");
    }
    return static_cast<HINSTANCE>(module);
}

bool CloseModule(HINSTANCE module)
{
    return dlclose(module) == 0;
}

void *FindModuleSymbol(HINSTANCE module, string const &symbol)
{
    return dlsym(module, symbol.c_str());
}

string FindLibraryFile()
{
    static char const s_inLibrary = 0;
    Dl_info info = {};
    return dladdr(&s_inLibrary, &info) != 0 && info.dli_fname != nullptr ? info.dli_fname : string();
}

} // namespace quillmarsh::platform
