// Libraries that are loaded when a program first needs them, so that other programs start without them.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_ONDEMAND_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_ONDEMAND_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh::platform
{

/// Loads libraries, which stay loaded for the life of the process, and finds functions in them. After the first failure
/// it does nothing more.
///
/// Its users declare a pointer for each function, with the function's own name in our namespace. Calls then go through
/// the pointer. A call of a function without a pointer fails to link, because nothing links to the library.
class OnDemandLoader : NoCopy
{
public:
    /// Loads the library that the next functions belong to. The system looks for the name where it looks for the
    /// libraries of any program.
    void Open(char const *library);

    /// Sets the pointer to a function; null on failure.
    template<typename Function>
    void Find(char const *name, Function *&function)
    {
        function = reinterpret_cast<Function *>(FindAddress(name));
    }

    /// Returns which library or function is missing and why, as a sentence; empty without a failure.
    string const &GetFailure() const { return failure_; }

private:
    void *FindAddress(char const *name);

    char const *libraryName_ = "";
    void *library_ = nullptr;
    string failure_;
};

} // namespace quillmarsh::platform

#endif
