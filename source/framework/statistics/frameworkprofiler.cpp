#include <quillmarsh/framework/frameworkprofiler.h>

#include <quillmarsh/basetools/diagnostics.h>

namespace quillmarsh
{
namespace
{

string GetName()
{
    return FormatClassName(GetTypeName(typeid(FrameworkProfiler)));
}

} // namespace

constinit FrameworkProfiler *FrameworkProfiler::s_pInstanceProfiler = nullptr;

FrameworkProfiler &FrameworkProfiler::Instance()
{
    return *InstancePtr();
}

FrameworkProfiler *FrameworkProfiler::InstancePtr()
{
    QUILLMARSH_ASSERT(s_pInstanceProfiler != nullptr, GetName() + " singleton is not created.");
    return s_pInstanceProfiler;
}

FrameworkProfiler::FrameworkProfiler()
{
    QUILLMARSH_ASSERT(s_pInstanceProfiler == nullptr, GetName() + " singleton already created.");
    s_pInstanceProfiler = this;
}

FrameworkProfiler::~FrameworkProfiler()
{
    QUILLMARSH_ASSERT(s_pInstanceProfiler != nullptr, "Destructing non-existent " + GetName() + " singleton.");
    s_pInstanceProfiler = nullptr;
}

} // namespace quillmarsh
