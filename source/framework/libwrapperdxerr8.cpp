#include <quillmarsh/framework/libwrapperdxerr8.h>

namespace quillmarsh
{

LibWrapperDXErr8::DescriptionFunction LibWrapperDXErr8::s_pGetErrorDescription = nullptr;

LibWrapperDXErr8::LibWrapperDXErr8() = default;

LibWrapperDXErr8::~LibWrapperDXErr8() = default;

string LibWrapperDXErr8::GetGenericExtensionInterfaceName()
{
    return "LibWrapperDXErr8";
}

void LibWrapperDXErr8::SetProcAddresses(DescriptionFunction getErrorDescription)
{
    s_pGetErrorDescription = getErrorDescription;
}

void LibWrapperDXErr8::InvalidateProcAddresses()
{
    SetProcAddresses(nullptr);
}

string LibWrapperDXErr8::DXGetErrorDescription8(long int code)
{
    if (s_pGetErrorDescription == nullptr)
        return "LibWrapperDXErr8 not initialized";
    return s_pGetErrorDescription(code);
}

} // namespace quillmarsh
