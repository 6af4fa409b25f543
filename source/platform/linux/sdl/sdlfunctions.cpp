#include "source/platform/linux/sdl/sdlfunctions.h"

#include "source/platform/linux/ondemand.h"

#include <atomic>

namespace quillmarsh::platform
{

#define QUILLMARSH_DEFINE_FUNCTION(name) constinit decltype(&::name) name = nullptr;
QUILLMARSH_SDL_FUNCTIONS(QUILLMARSH_DEFINE_FUNCTION)
#undef QUILLMARSH_DEFINE_FUNCTION

namespace
{

std::atomic<bool> s_isLoaded = false;

string Load()
{
    OnDemandLoader loader;
    loader.Open("libSDL2-2.0.so.0");
#define QUILLMARSH_FIND_FUNCTION(name) loader.Find(#name, name);
    QUILLMARSH_SDL_FUNCTIONS(QUILLMARSH_FIND_FUNCTION)
#undef QUILLMARSH_FIND_FUNCTION
    s_isLoaded = loader.GetFailure().empty();
    return loader.GetFailure();
}

} // namespace

string const &GetSdlFailure()
{
    // Never destroyed, because other objects may close windows while the program ends.
    static string const &s_failure = *new string(Load());
    return s_failure;
}

bool LoadSdl()
{
    return GetSdlFailure().empty();
}

bool IsSdlLoaded()
{
    return s_isLoaded;
}

} // namespace quillmarsh::platform
