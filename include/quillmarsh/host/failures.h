// Failures that end the run: caught, reported, and kept for the clean-up.
#ifndef QUILLMARSH_HOST_FAILURES_H
#define QUILLMARSH_HOST_FAILURES_H

#include <quillmarsh/framework/failuredesc.h>
#include <quillmarsh/framework/kernellevel.h>

#include <exception>
#include <functional>
#include <utility>

namespace quillmarsh::host
{

/// Name of a level for messages.
char const *GetLevelName(eKernelLevel level);

/// Catches what the run throws, reports it with its place, and keeps the first failure. Frame thread only.
class Failures : NoCopy
{
public:
    /// `report` shows a message to the user.
    explicit Failures(std::function<void(string const &)> report);
    ~Failures();

    /// What runs now and at which level, for the message of a failure. The text is borrowed until the next call.
    void SetPlace(char const *place) { place_ = place; }
    void SetLevel(eKernelLevel level) { level_ = level; }

    /// Runs `call`. True when it returned, false when it failed.
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

    /// Shows a message about what does not end the run.
    void Warn(string const &message) { report_(message); }

    bool HasFailed() const { return hasFailed_; }
    /// The first failure; nothing is set in it when there was none.
    FailureDesc const &GetDesc() const { return desc_; }
    /// Hands the first failure's exception over; its code may be a plug-in's.
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
