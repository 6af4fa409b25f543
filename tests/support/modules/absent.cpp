// Library that a module of the tests needs and does not find.
#include <quillmarsh/platform/api.h>

QUILLMARSH_PLUGIN_EXPORT int TestAbsent()
{
    return 1;
}
