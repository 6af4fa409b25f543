#include "source/platform/linux/text/textlibraries.h"

#include "source/platform/drawing.h"
#include "source/platform/linux/ondemand.h"

namespace quillmarsh::platform::drawing
{

#define QUILLMARSH_DEFINE_FUNCTION(name) constinit decltype(&::name) name = nullptr;
QUILLMARSH_TEXT_FUNCTIONS(QUILLMARSH_DEFINE_FUNCTION)
#undef QUILLMARSH_DEFINE_FUNCTION

namespace
{

string Load()
{
    OnDemandLoader loader;
#define QUILLMARSH_FIND_FUNCTION(name) loader.Find(#name, name);
    loader.Open("libfontconfig.so.1");
    QUILLMARSH_FONTCONFIG_FUNCTIONS(QUILLMARSH_FIND_FUNCTION)
    loader.Open("libgobject-2.0.so.0");
    QUILLMARSH_GOBJECT_FUNCTIONS(QUILLMARSH_FIND_FUNCTION)
    loader.Open("libcairo.so.2");
    QUILLMARSH_CAIRO_FUNCTIONS(QUILLMARSH_FIND_FUNCTION)
    loader.Open("libpango-1.0.so.0");
    QUILLMARSH_PANGO_FUNCTIONS(QUILLMARSH_FIND_FUNCTION)
    loader.Open("libpangocairo-1.0.so.0");
    QUILLMARSH_PANGOCAIRO_FUNCTIONS(QUILLMARSH_FIND_FUNCTION)
#undef QUILLMARSH_FIND_FUNCTION
    return loader.GetFailure();
}

string const &GetFailure()
{
    // Never destroyed, because other objects may draw while the program ends.
    static string const &s_failure = *new string(Load());
    return s_failure;
}

} // namespace

bool LoadTextLibraries()
{
    return GetFailure().empty();
}

string FindTextFailure()
{
    return GetFailure();
}

} // namespace quillmarsh::platform::drawing
