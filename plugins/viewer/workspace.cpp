#include "workspace.h"

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/dataobjects/dataexception.h>
#include <quillmarsh/framework/kernel.h>

namespace viewer
{

using namespace quillmarsh;

Workspace::Workspace() : loader_([this] { Invalidate(); }), jobs_([this] { Invalidate(); }), documents_(loader_) {}

Workspace::~Workspace() = default;

string Workspace::MakeFullName(string const &name) const
{
    bool const isInFolder = !file_system::IsAbsolutePathName(name) && !folder_.GetPath().empty() &&
                            !file_system::FileExists(name) && file_system::FileExists(folder_.GetPath() + name);
    string full = isInFolder ? folder_.GetPath() + name : name;
    if (!file_system::ForceFullPathName(full, false) || !file_system::ExpandPathName(full, full, false))
        throw sampled_data::DataException(name + ": there is no such place");
    return full;
}

DocumentPtr Workspace::FindShown(std::size_t numDimensions) const
{
    DocumentPtr const &document = documents_.GetCurrent();
    bool const fits = document != nullptr && document->GetLoaded() != nullptr &&
                      document->GetLoaded()->content->GetNumDimensions() == numDimensions;
    return fits ? document : nullptr;
}

void Workspace::Run(string const &line)
{
    Kernel::Instance().QueueCommandLine(line);
    Invalidate();
}

void Workspace::Echo(string const &line)
{
    GetConOut() << e_echo << line << std::endl << e_info;
}

void Workspace::Say(string const &line, bool isFailure)
{
    GetConOut() << (isFailure ? e_error : e_info) << line << std::endl << e_info;
    Show(line, isFailure);
}

void Workspace::ShowFailure(string const &line)
{
    Show(line, true);
}

void Workspace::Show(string const &line, bool isFailure)
{
    said_ = line;
    wasFailure_ = isFailure;
    Invalidate();
}

void Workspace::Invalidate()
{
    // A frame that was asked for already need not be woken again. A frame that asks for another one, such as that of
    // something that moves, leaves the pace of the frames alone.
    if (!isInvalid_.exchange(true) && std::this_thread::get_id() != frameThread_)
        Kernel::Instance().WakeUp();
}

bool Workspace::TakeInvalid()
{
    return isInvalid_.exchange(false);
}

} // namespace viewer
