#include "screenshotsettings.h"

#include <quillmarsh/host/hostkernel.h>

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/variableregistry.h>
#include <quillmarsh/framework/stdcommandinterpreter.h>

#include <algorithm>

namespace quillmarsh::host
{

namespace
{

/// Finds the number behind those of the files "NAME.NUMBER" and "NAME.NUMBER.REST" in a directory.
class NumberFinder : private file_system::FileSystemWalker
{
public:
    explicit NumberFinder(string const &name) : prefix_(name + '.') {}

    unsigned int FindNext(string const &directory)
    {
        next_ = 0;
        Walk(directory);
        return next_;
    }

private:
    void OnFile(unsigned int, unsigned int, string const &, string const &name) override
    {
        if (!MatchPrefix(name, prefix_))
            return;
        string const digits = name.substr(prefix_.size(), name.find('.', prefix_.size()) - prefix_.size());
        unsigned int number = 0;
        // More digits are not ours.
        if (digits.size() <= framework_commands::ScreenShotCmd::s_maxSerialNumberWidth &&
            std::all_of(digits.begin(), digits.end(), IsDigit) && ToValue(digits, number))
            next_ = std::max(next_, number + 1);
    }
    bool OnDirectory(unsigned int, unsigned int, string const &, string const &) override { return false; }

    string prefix_;
    unsigned int next_ = 0;
};

} // namespace

constexpr ScreenshotSettings::Variable ScreenshotSettings::s_variables[] = {
    {"screenshot.format", "file format: PNG, JPEG, TIFF, BMP or QMDP", &ScreenshotSettings::format_, nullptr,
     &ScreenshotSettings::ApplyFormat},
    {"screenshot.folder", "folder for the files, which must exist; empty for the working directory",
     &ScreenshotSettings::folder_, nullptr, &ScreenshotSettings::ApplyFileName},
    {"screenshot.name", "first part of the files' names", &ScreenshotSettings::name_, nullptr,
     &ScreenshotSettings::ApplyFileName},
    {"screenshot.extension", "extension of the files; empty for the usual one of the format",
     &ScreenshotSettings::extension_, nullptr, &ScreenshotSettings::ApplyExtension},
    {"screenshot.digits", "digits of the number in the files' names; 0 for names without a number", nullptr, nullptr,
     &ScreenshotSettings::ApplyDigits},
    {"screenshot.overwrite", "replace existing files", nullptr, &ScreenshotSettings::overwrites_,
     &ScreenshotSettings::ApplyOverwrite},
};

ScreenshotSettings::ScreenshotSettings(HostKernel &kernel) : kernel_(kernel)
{
    Command *const command = FindCommand();
    if (command == nullptr)
        return;
    for (Variable const &variable : s_variables)
    {
        Export(variable);
        (this->*variable.apply)(*command);
    }
}

ScreenshotSettings::~ScreenshotSettings()
{
    for (char const *const name : exported_)
        kernel_.GetVariableRegistry()->UnregisterVariable(name);
}

void ScreenshotSettings::Export(Variable const &variable)
{
    VariableRegistry &registry = *kernel_.GetVariableRegistry();
    bool isNew = false;
    if (variable.text != nullptr)
        isNew = registry.RegisterVariable(
            VariableProxyString(&(this->*variable.text), variable.name, variable.description, false, this));
    else if (variable.flag != nullptr)
        isNew = registry.RegisterVariable(
            VariableProxyBool(&(this->*variable.flag), variable.name, variable.description, false, this));
    else
        isNew = registry.RegisterVariable(VariableProxyRangeCheckedUInt(
            &digits_, 0, Command::s_maxSerialNumberWidth, variable.name, variable.description, false, this));
    if (isNew)
        exported_.push_back(variable.name);
}

void ScreenshotSettings::OnValueChanged(VariableProxy const &proxy)
{
    // The program may have removed the command.
    Command *const command = FindCommand();
    if (command == nullptr)
        return;
    for (Variable const &variable : s_variables)
    {
        if (proxy.GetName() == variable.name)
            (this->*variable.apply)(*command);
    }
}

ScreenshotSettings::Command *ScreenshotSettings::FindCommand() const
{
    std_command_interpreter::Interpreter *const interpreter = kernel_.GetCommandInterpreter();
    return interpreter != nullptr ? dynamic_cast<Command *>(interpreter->FindExternalCommand(Command::s_szDefaultName))
                                  : nullptr;
}

void ScreenshotSettings::ApplyFormat(Command &command) const
{
    string format = format_;
    UpperCase(format);
    command.SetFileFormat(format);
}

void ScreenshotSettings::ApplyFileName(Command &command) const
{
    string folder = folder_;
    if (!folder.empty())
        file_system::ForceTrailingPathSeparator(folder);
    command.SetBaseFilename(folder + name_);
    command.SetSerialNumber(NumberFinder(name_).FindNext(folder.empty() ? "." : folder));
}

void ScreenshotSettings::ApplyExtension(Command &command) const
{
    command.SetFileExtension(extension_);
}

void ScreenshotSettings::ApplyDigits(Command &command) const
{
    command.SetSerialNumberWidth(digits_);
}

void ScreenshotSettings::ApplyOverwrite(Command &command) const
{
    command.SetAllowFileOverwrite(overwrites_);
}

} // namespace quillmarsh::host
