// Module that cannot be loaded, because the system does not find a library that it needs.
#include <quillmarsh/platform/api.h>

extern "C" int TestAbsent();

QUILLMARSH_PLUGIN_EXPORT int TestDependent()
{
    return TestAbsent();
}
