// Texts of graphics and input error codes, without linking the library that knows them.
#ifndef QUILLMARSH_FRAMEWORK_LIBWRAPPERDXERR8_H
#define QUILLMARSH_FRAMEWORK_LIBWRAPPERDXERR8_H

#include <quillmarsh/framework/genericextension.h>

namespace quillmarsh
{

/// Extension that supplies the texts of DirectX 8 error codes.
///
/// A plug-in that has loaded the error library sets its function; all other code asks through the static operation. The
/// whole process shares the function; it is set before other threads ask.
class QUILLMARSH_API LibWrapperDXErr8 : public GenericExtension
{
public:
    /// Function that takes an error code and returns its text.
    using DescriptionFunction = char const *(*)(long int);

    LibWrapperDXErr8();
    ~LibWrapperDXErr8() override;

    /// "LibWrapperDXErr8".
    string GetGenericExtensionInterfaceName() override;

    /// Stores the function for the whole process; null removes it.
    void SetProcAddresses(DescriptionFunction getErrorDescription);
    /// Removes the function. From then on the fixed text is returned.
    void InvalidateProcAddresses();

    /// The text of an error code; "LibWrapperDXErr8 not initialized" while no function is set.
    static string DXGetErrorDescription8(long int code);

private:
    static DescriptionFunction s_pGetErrorDescription;
};

} // namespace quillmarsh

#endif
