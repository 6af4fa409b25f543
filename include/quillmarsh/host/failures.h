// Catches the failures that end the run, reports them, and keeps the first for the clean-up.
#ifndef QUILLMARSH_HOST_FAILURES_H
#define QUILLMARSH_HOST_FAILURES_H

#include <quillmarsh/framework/failuredesc.h>
#include <quillmarsh/framework/kernellevel.h>

#include <exception>
#include <functional>
#include <utility>

namespace quillmarsh::host
{

/// Returns the name of a level, for messages.
char const *GetLevelName(eKernelLevel level);

/// Catches exceptions, reports them with their place, and keeps the first failure. Frame thread only.
class Failures : NoCopy
{
public:
    /// `report` shows a message to the user.
    explicit Failures(std::function<void(string const &)> report);
    ~Failures();

    /// Sets the name of the current work, for the message of a failure. Borrows the text until the next call.
    void SetPlace(char const *place) { place_ = place; }
    char const *GetPlace() const { return place_; }
    /// Sets the current level, for the message and the description of a failure.
    void SetLevel(eKernelLevel level) { level_ = level; }

    /// Runs `call`. True when it returns, false when it throws; the exception is reported and does not pass.
    template<typename Call>
    bool Guard(Call &&call)
    {
        try
        {
            call();
            return true;
        }
        catch (...)
        {
            OnCaught();
            return false;
        }
    }

    /// Shows a message about a failure that does not end the run.
    void Warn(string const &message) { report_(message); }

    /// True after a failure.
    bool HasFailed() const { return hasFailed_; }
    /// Returns the first failure; an empty description if there was none.
    FailureDesc const &GetDesc() const { return desc_; }
    /// Returns the exception of the first failure and forgets it; null if there is none. The code of the exception may
    /// be in a plug-in, so release it before the plug-ins are unloaded.
    std::exception_ptr TakeException() { return std::exchange(exception_, nullptr); }

private:
    void OnCaught();
    void Keep(string const &description, FailureDesc const &desc);

    std::function<void(string const &)> report_;
    char const *place_ = "host";
    eKernelLevel level_ = e_kernel_none;
    FailureDesc desc_;
    bool hasFailed_ = false;
    std::exception_ptr exception_;
};

} // namespace quillmarsh::host

#endif
