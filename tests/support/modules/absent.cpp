// Library that a test module needs and that the system does not find.
#include <quillmarsh/platform/api.h>

QUILLMARSH_PLUGIN_EXPORT int TestAbsent()
{
    return 1;
}
