// Commands of the host's console; consolecommands.h says what each one does.
#ifndef QUILLMARSH_SOURCE_HOST_COMMANDS_HOSTCOMMANDS_H
#define QUILLMARSH_SOURCE_HOST_COMMANDS_HOSTCOMMANDS_H

#include <quillmarsh/framework/commandtable.h>
#include <quillmarsh/framework/frameobserver.h>
#include <quillmarsh/host/consolecommands.h>
#include <quillmarsh/host/consolelines.h>

namespace quillmarsh::host
{

class FindCmd : public TableCommand
{
public:
    explicit FindCmd(HostKernel &kernel);

    std::span<CommandWord const> GetWords() const override;

protected:
    bool Execute(ostream &out, CommandArguments const &arguments) override;

private:
    HostKernel &kernel_;
};

class ListPluginsCmd : public TableCommand
{
public:
    explicit ListPluginsCmd(HostKernel &kernel);

    std::span<CommandWord const> GetWords() const override;

protected:
    bool Execute(ostream &out, CommandArguments const &arguments) override;
    string GetDefaultBehavior() const override;

private:
    HostKernel &kernel_;
};

class HidWatchCmd : public TableCommand
{
public:
    HidWatchCmd(HostKernel &kernel, ConsoleLines &lines);
    ~HidWatchCmd() override;

    std::span<CommandWord const> GetWords() const override;

protected:
    bool Execute(ostream &out, CommandArguments const &arguments) override;
    string GetDefaultBehavior() const override;

private:
    class Watch;

    HostKernel &kernel_;
    ConsoleLines &lines_;
    AutoPtr<Watch> watch_;
};

class SaveVariablesCmd : public TableCommand
{
public:
    SaveVariablesCmd(HostKernel &kernel, VariableTexts const &startValues);

    std::span<CommandWord const> GetWords() const override;

protected:
    bool Execute(ostream &out, CommandArguments const &arguments) override;

private:
    HostKernel &kernel_;
    VariableTexts const &startValues_;
};

class RobotCmd : public TableCommand
{
public:
    RobotCmd(HostKernel &kernel, ConsoleLines &lines);

    std::span<CommandWord const> GetWords() const override;

protected:
    bool Execute(ostream &out, CommandArguments const &arguments) override;

private:
    HostKernel &kernel_;
    ConsoleLines &lines_;
};

/// Prints a message about a line that cannot be carried out, and returns false.
bool RefuseLine(ostream &out, string const &message);

} // namespace quillmarsh::host

#endif
