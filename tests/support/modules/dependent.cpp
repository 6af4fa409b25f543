// Module that cannot be loaded, since a library that it needs is not found.
#include <quillmarsh/platform/api.h>

extern "C" int TestAbsent();

QUILLMARSH_PLUGIN_EXPORT int TestDependent()
{
    return TestAbsent();
}
