#include <quillmarsh/host/failures.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/exception.h>

#include <iterator>

namespace quillmarsh::host
{

char const *GetLevelName(eKernelLevel level)
{
    static constexpr char const *s_names[] = {
        "none", "startup", "generic extensions", "devices", "video", "subsystems", "running", "cleanup"};
    return level < std::size(s_names) ? s_names[level] : "unknown";
}

Failures::Failures(std::function<void(string const &)> report) : report_(std::move(report)) {}

Failures::~Failures() = default;

void Failures::OnCaught()
{
    try
    {
        throw;
    }
    catch (Exception const &thrown)
    {
        Keep(thrown.MakeDescription(), FailureDesc(level_, &thrown));
    }
    catch (std::exception const &thrown)
    {
        Keep(FormatClassName(GetTypeName(typeid(thrown))) + "\n! " + thrown.what(),
             FailureDesc(level_, nullptr, &thrown));
    }
    catch (...)
    {
        Keep("An exception of unknown type", FailureDesc(level_));
    }
}

void Failures::Keep(string const &description, FailureDesc const &desc)
{
    report_(string("failure in ") + place_ + " at level '" + GetLevelName(level_) + "':\n" + description);
    if (HasFailed())
        return;
    hasFailed_ = true;
    desc_ = desc;
    exception_ = std::current_exception();
}

} // namespace quillmarsh::host
