#include "openhmdcontext.h"

#include <quillmarsh/basetools/exception.h>

namespace input_openhmd
{

OpenHMDContext::OpenHMDContext() : context_(ohmd_ctx_create())
{
    if (context_ == nullptr)
        QUILLMARSH_THROW(quillmarsh::HIDDriverException, "OpenHMD cannot create a context");
}

OpenHMDContext::~OpenHMDContext()
{
    ohmd_ctx_destroy(context_);
}

string OpenHMDContext::GetText(int index, ohmd_string_value which) const
{
    char const *const text = ohmd_list_gets(context_, index, which);
    return text != nullptr ? text : "";
}

int OpenHMDContext::GetNumber(int index, ohmd_int_value which) const
{
    int number = 0;
    ohmd_list_geti(context_, index, which, &number);
    return number;
}

string OpenHMDContext::GetError() const
{
    char const *const text = ohmd_ctx_get_error(context_);
    return text != nullptr && *text != '\0' ? text : "it gives no reason";
}

} // namespace input_openhmd
