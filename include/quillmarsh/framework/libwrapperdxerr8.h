// Texts of graphics and input error codes, without linking the library that knows them.
#ifndef QUILLMARSH_FRAMEWORK_LIBWRAPPERDXERR8_H
#define QUILLMARSH_FRAMEWORK_LIBWRAPPERDXERR8_H

#include <quillmarsh/framework/genericextension.h>

namespace quillmarsh
{

/// Extension that brings the texts of DirectX 8 error codes.
///
/// A plug-in that holds the error library fills in its function; everybody else asks through the static operation.
/// The function is shared by the process; it is set before other threads ask.
class QUILLMARSH_API LibWrapperDXErr8 : public GenericExtension
{
public:
    /// Takes an error code, gives its text.
    using DescriptionFunction = char const *(*)(long int);

    LibWrapperDXErr8();
    ~LibWrapperDXErr8() override;

    /// "LibWrapperDXErr8".
    string GetGenericExtensionInterfaceName() override;

    /// Stores the function for the whole process; null takes it away.
    void SetProcAddresses(DescriptionFunction getErrorDescription);
    /// Takes the function out; the fixed text is given from then on.
    void InvalidateProcAddresses();

    /// The text of an error code; "LibWrapperDXErr8 not initialized" while no function is set.
    static string DXGetErrorDescription8(long int code);

private:
    static DescriptionFunction s_pGetErrorDescription;
};

} // namespace quillmarsh

#endif
