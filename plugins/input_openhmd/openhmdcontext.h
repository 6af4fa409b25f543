// OpenHMD's context, which finds headsets and keeps them up to date.
#ifndef QUILLMARSH_PLUGINS_INPUT_OPENHMD_OPENHMDCONTEXT_H
#define QUILLMARSH_PLUGINS_INPUT_OPENHMD_OPENHMDCONTEXT_H

#include <quillmarsh/platform/types.h>

#include <openhmd.h>

#include <mutex>

namespace input_openhmd
{

using quillmarsh::string;

/// OpenHMD's context and its lock. The library protects the devices of a context by no reliable lock of its own, so
/// every call into it is made under this lock, on any thread.
class OpenHMDContext : quillmarsh::NoCopy
{
public:
    /// Creates the context. Throws a HIDDriverException if that fails.
    OpenHMDContext();
    ~OpenHMDContext();

    ohmd_context *Get() const { return context_; }
    std::mutex &GetLock() { return lock_; }

    /// @name The caller holds the lock
    /// @{
    string GetText(int index, ohmd_string_value which) const;
    int GetNumber(int index, ohmd_int_value which) const;
    string GetError() const;
    /// @}

private:
    ohmd_context *const context_;
    std::mutex lock_;
};

} // namespace input_openhmd

#endif
