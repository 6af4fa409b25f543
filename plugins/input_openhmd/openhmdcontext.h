// OpenHMD's context, which finds headsets and keeps them up to date.
#ifndef QUILLMARSH_PLUGINS_INPUT_OPENHMD_OPENHMDCONTEXT_H
#define QUILLMARSH_PLUGINS_INPUT_OPENHMD_OPENHMDCONTEXT_H

#include <quillmarsh/platform/types.h>

#include <openhmd.h>

#include <mutex>

namespace input_openhmd
{

using quillmarsh::string;

/// The library keeps all devices of a context in one place, without a lock of its own that could be relied on: every
/// call, from whatever thread, is made under this one.
class OpenHMDContext : quillmarsh::NoCopy
{
public:
    /// Throws a HIDDriverException.
    OpenHMDContext();
    ~OpenHMDContext();

    ohmd_context *Get() const { return context_; }
    std::mutex &GetLock() { return lock_; }

    /// @name For who holds the lock
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
