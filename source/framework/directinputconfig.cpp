#include <quillmarsh/framework/directinputconfig.h>

#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/basetools/texttools.h>

#include <ostream>

namespace quillmarsh
{

bool DirectInputConfig::IsLogicallyEqual(DirectInputConfig const &other) const
{
    if (EnableDirectInput != other.EnableDirectInput)
        return false;
    if (!EnableDirectInput)
        return true;
    return UseLastVersion == other.UseLastVersion &&
           (UseLastVersion || DirectInputVersion == other.DirectInputVersion) &&
           EnableFullscreenExclusiveMode == other.EnableFullscreenExclusiveMode &&
           UseAtDeviceInit == other.UseAtDeviceInit;
}

void DirectInputConfig::Dump(ostream &out, unsigned int tabs) const
{
    IndentEffector const indent(tabs);
    out << indent << "EnableDirectInput............: " << MakeString(EnableDirectInput) << std::endl;
    out << indent << "UseLastVersion...............: " << MakeString(UseLastVersion) << std::endl;
    out << indent << "DirectInputVersion...........: " << MakeString(DirectInputVersion) << std::endl;
    out << indent << "EnableFullscreenExclusiveMode: " << MakeString(EnableFullscreenExclusiveMode) << std::endl;
    out << indent << "UseAtDeviceInit..............: " << MakeString(UseAtDeviceInit) << std::endl;
}

} // namespace quillmarsh
