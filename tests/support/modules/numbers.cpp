// Module that tests load. It stores a number while it is loaded.
#include <quillmarsh/platform/api.h>

namespace
{

int s_number = 0;

} // namespace

QUILLMARSH_PLUGIN_EXPORT int TestGetNumber()
{
    return s_number;
}

QUILLMARSH_PLUGIN_EXPORT void TestSetNumber(int number)
{
    s_number = number;
}
