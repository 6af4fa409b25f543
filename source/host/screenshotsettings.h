// Exported variables of the command "screenshot".
#ifndef QUILLMARSH_SOURCE_HOST_SCREENSHOTSETTINGS_H
#define QUILLMARSH_SOURCE_HOST_SCREENSHOTSETTINGS_H

#include <quillmarsh/basetools/variableproxy.h>
#include <quillmarsh/framework/commands/screenshotcmd.h>

namespace quillmarsh::host
{

class HostKernel;

/// Exports `screenshot.format`, `screenshot.folder` and the like during its life, and sets the fields of the command
/// "screenshot" from them: all at the beginning, then each when it is set. Without that command it does nothing.
///
/// Screenshots are PNG files at first, so that any program opens them. Their numbers go on behind the ones that the
/// folder has already. Frame thread only.
class ScreenshotSettings : private VariableProxy::Observer, NoCopy
{
public:
    /// Borrows `kernel`, which must outlive this object.
    explicit ScreenshotSettings(HostKernel &kernel);
    ~ScreenshotSettings() override;

private:
    using Command = framework_commands::ScreenShotCmd;

    struct Variable
    {
        char const *name;
        char const *description;
        /// The variable; one of the two is null, or both for the number.
        string ScreenshotSettings::*text;
        bool ScreenshotSettings::*flag;
        /// Sets a field of the command from the variable.
        void (ScreenshotSettings::*apply)(Command &command) const;
    };

    static Variable const s_variables[];

    void OnValueChanged(VariableProxy const &proxy) override;
    void Export(Variable const &variable);
    Command *FindCommand() const;

    void ApplyFormat(Command &command) const;
    void ApplyFileName(Command &command) const;
    void ApplyExtension(Command &command) const;
    void ApplyDigits(Command &command) const;
    void ApplyOverwrite(Command &command) const;

    HostKernel &kernel_;
    std::vector<char const *> exported_;

    string format_ = "PNG";
    string folder_;
    string name_ = "screenshot";
    string extension_;
    unsigned int digits_ = 4;
    bool overwrites_ = false;
};

} // namespace quillmarsh::host

#endif
