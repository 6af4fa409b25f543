// Calls that may fail without ending the run.
#ifndef QUILLMARSH_SOURCE_HOST_CATCHING_H
#define QUILLMARSH_SOURCE_HOST_CATCHING_H

#include <quillmarsh/basetools/exception.h>

#include <optional>

namespace quillmarsh::host
{

/// Runs `call`. Returns the reason when it throws, else nothing. The exception no longer exists when this returns, so
/// the library that threw it may be unloaded.
template<typename Call>
std::optional<string> Catch(Call &&call)
{
    try
    {
        call();
        return std::nullopt;
    }
    catch (Exception const &failure)
    {
        return failure.GetClassName() + ": " + failure.GetMessage();
    }
    catch (exception const &failure)
    {
        return failure.what();
    }
    catch (...)
    {
        return "an object of unknown class was thrown.";
    }
}

} // namespace quillmarsh::host

#endif
