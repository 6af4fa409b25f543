// The framework's one profiler, and what profiles a block with it.
#ifndef QUILLMARSH_FRAMEWORK_FRAMEWORKPROFILER_H
#define QUILLMARSH_FRAMEWORK_FRAMEWORKPROFILER_H

#include <quillmarsh/basetools/profiler.h>

namespace quillmarsh
{

/// The profiler of the frame loop, a singleton that the host creates. It belongs to the frame thread.
class QUILLMARSH_API FrameworkProfiler : public Profiler
{
public:
    /// Asserts "FrameworkProfiler singleton already created." when there is one.
    FrameworkProfiler();
    /// Asserts "Destructing non-existent FrameworkProfiler singleton." when there is none.
    ~FrameworkProfiler() override;

    /// The profiler. Asserts "FrameworkProfiler singleton is not created." when there is none.
    static FrameworkProfiler &Instance();
    /// The profiler, with the same assertion; null when there is none.
    static FrameworkProfiler *InstancePtr();
    /// The profiler if it exists and is enabled, null otherwise. Never asserts. Blocks cost almost nothing without a
    /// profiler.
    static Profiler *GetEnabled()
    {
        return s_pInstanceProfiler && s_pInstanceProfiler->IsEnabled() ? s_pInstanceProfiler : nullptr;
    }

private:
    static FrameworkProfiler *s_pInstanceProfiler;
};

/// Profiles a scope as a block of a profiler.
///
/// The profiler is asked for at the beginning of the scope only. If it is switched off within the scope, it ignores the
/// end of the scope by itself. Frame thread.
class ProfileBlockSentry : NoCopy
{
public:
    /// Enters the block, unless the profiler is null. The profiler is borrowed and outlives the sentry.
    ProfileBlockSentry(Profiler *profiler, char const *blockName) : profiler_(profiler)
    {
        if (profiler_)
            profiler_->EnterNode(blockName);
    }
    ~ProfileBlockSentry()
    {
        if (profiler_)
            profiler_->ExitNode();
    }

private:
    Profiler *profiler_;
};

/// Profiles a scope as an iteration of a profiler; see ProfileBlockSentry.
class ProfileIterationSentry : NoCopy
{
public:
    /// Begins the iteration, unless the profiler is null.
    explicit ProfileIterationSentry(Profiler *profiler) : profiler_(profiler)
    {
        if (profiler_)
            profiler_->EnterRootNode();
    }
    ~ProfileIterationSentry()
    {
        if (profiler_)
            profiler_->ExitRootNode();
    }

private:
    Profiler *profiler_;
};

} // namespace quillmarsh

#define QUILLMARSH_PROFILE_JOIN_(a, b) a##b
#define QUILLMARSH_PROFILE_JOIN(a, b) QUILLMARSH_PROFILE_JOIN_(a, b)

/// Profiles the rest of the scope as a block of the framework's profiler, if that exists and is enabled.
#define QUILLMARSH_PROFILE_BLOCK(blockName)                                                                            \
    ::quillmarsh::ProfileBlockSentry const QUILLMARSH_PROFILE_JOIN(quillmarshProfileBlock, __LINE__)(                  \
        ::quillmarsh::FrameworkProfiler::GetEnabled(), blockName)

/// Profiles the rest of the scope as an iteration of the framework's profiler. Used once, in the frame loop.
#define QUILLMARSH_PROFILE_ITERATION()                                                                                 \
    ::quillmarsh::ProfileIterationSentry const QUILLMARSH_PROFILE_JOIN(quillmarshProfileIteration, __LINE__)(          \
        ::quillmarsh::FrameworkProfiler::GetEnabled())

#endif
