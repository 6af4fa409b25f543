#include <quillmarsh/framework/failuredesc.h>

#include <quillmarsh/basetools/exception.h>

#include <exception>

namespace quillmarsh
{

namespace
{

template<typename... Classes>
bool IsOneOf(Exception const *thrown)
{
    return (... || (dynamic_cast<Classes const *>(thrown) != nullptr));
}

} // namespace

FailureDesc::FailureDesc(eKernelLevel level, Exception const *libraryException, exception const *standardException)
    : KernelLevel(level),
      StandardException(standardException != nullptr),
      LibraryException(libraryException != nullptr),
      KernelFailure(IsOneOf<KernelException>(libraryException)),
      GUIFailure(IsOneOf<GUIException>(libraryException)),
      GenericExtensionFailure(IsOneOf<GenericExtensionException>(libraryException)),
      ApplicationFailure(IsOneOf<ApplicationException>(libraryException)),
      VideoSubsystemFailure(IsOneOf<VideoSubsystemException, VideoSubsystemRecoverableException>(libraryException)),
      VideoRendererFailure(IsOneOf<VideoRendererException>(libraryException)),
      DeviceFailure(IsOneOf<DirectInputProxyException, HIDDriverException, HIDException>(libraryException)),
      GenericSubsystemFailure(IsOneOf<GenericSubsystemException>(libraryException))
{
}

} // namespace quillmarsh
