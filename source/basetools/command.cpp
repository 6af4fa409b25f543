#include <quillmarsh/basetools/command.h>

#include <quillmarsh/basetools/diagnostics.h>

#include <typeinfo>

namespace quillmarsh
{

Command::Command() = default;
Command::Command(Command const &) = default;
Command &Command::operator=(Command const &) = default;
Command::~Command() = default;

void Command::SetName(string const &name)
{
    QUILLMARSH_ASSERT(!name.empty(), "Using empty-string for command-name.");
    name_ = name.empty() ? FormatClassName(GetTypeName(typeid(*this))) : name;
}

void Command::SetDefaultName(string const &name)
{
    QUILLMARSH_ASSERT(!name.empty(), "Using empty-string for default-command-name.");
    defaultName_ = name.empty() ? FormatClassName(GetTypeName(typeid(*this))) : name;
    SetName(defaultName_);
}

void Command::SetShortDesc(string const &desc)
{
    shortDesc_ = desc;
}

void Command::SetDeveloperModeOnly(bool developerModeOnly)
{
    developerModeOnly_ = developerModeOnly;
}

} // namespace quillmarsh
