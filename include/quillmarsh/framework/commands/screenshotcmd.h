// Console command that saves the frame buffer as image files.
#ifndef QUILLMARSH_FRAMEWORK_COMMANDS_SCREENSHOTCMD_H
#define QUILLMARSH_FRAMEWORK_COMMANDS_SCREENSHOTCMD_H

#include <quillmarsh/framework/commandtable.h>
#include <quillmarsh/framework/frameobserver.h>
#include <quillmarsh/gui/gui_watch.h>

namespace quillmarsh
{
class ImageBase;
class NamedParameterList;
class VideoRenderer;
namespace gui
{
class Component;
} // namespace gui
} // namespace quillmarsh

namespace quillmarsh::framework_commands
{

/// "screenshot": saves the colours, depths and stencil values of the frame buffer, a file for each.
///
/// The usual request waits for a coming frame, so that a callback can hide the console from it. The files are named
/// "BASE.SERIAL.SUFFIX.EXTENSION", with a serial number that goes up by one in each capture. A buffer that cannot be
/// captured or saved is reported with its reason, and the others are still saved.
///
/// A buffer whose samples the file format does not take is converted to ones that it takes: depths become 8 bits of
/// luminance in a picture. Console's thread, which is the frame thread.
class QUILLMARSH_API ScreenShotCmd : public Command, public CommandVocabulary, public FrameObserver
{
public:
    /// @name Words
    /// The command does not read "ow": a program decides about replacing files, by SetAllowFileOverwrite().
    /// @{
    static constexpr char const *s_szDefaultName = "screenshot";
    static constexpr char const *s_szOptionImmediate = "imm";
    static constexpr char const *s_szOptionOverwrite = "ow";
    static constexpr char const *s_szOptionColor = "color";
    static constexpr char const *s_szOptionDepth = "depth";
    static constexpr char const *s_szOptionStencil = "stencil";
    static constexpr char const *s_szOptionAll = "all";
    static constexpr char const *s_szOptionFront = "front";
    /// @}

    /// Is told before and after the frame of a capture. Does nothing by default.
    class QUILLMARSH_API ScreenShotCallback : NoCopy
    {
    public:
        virtual ~ScreenShotCallback();

        /// A request was made, and the frames until its capture follow. Not called for an immediate capture.
        virtual void PreScreenShot();
        /// The capture is over, and so is one that failed. Must not throw.
        virtual void PostScreenShot();
    };

    /// Hides a component of the GUI in the frame of a capture, and shows it again if it was visible.
    class QUILLMARSH_API ScreenShotCallback_AutoHideComponent : public ScreenShotCallback
    {
    public:
        /// See SetAutoHideTarget().
        explicit ScreenShotCallback_AutoHideComponent(gui::Component *target = nullptr);
        ~ScreenShotCallback_AutoHideComponent() override;

        void PreScreenShot() override;
        void PostScreenShot() override;

        /// Sets the component, which is borrowed and may be destroyed at any time; null for none.
        void SetAutoHideTarget(gui::Component *target);

    private:
        gui::Watch<gui::Component> target_;
        bool wasVisible_ = false;
    };

    static constexpr unsigned int s_maxSerialNumberWidth = 8;

    /// Owns the callback; null for none.
    explicit ScreenShotCmd(ScreenShotCallback *callback);
    ~ScreenShotCmd() override;

    /// @name Callback
    /// Setting one deletes the former; null for none.
    /// @{
    void SetCallback(ScreenShotCallback *callback);
    ScreenShotCallback *GetCallback() const { return callback_.get(); }
    /// @}

    /// @name File names
    /// @{

    /// Number of the next capture.
    void SetSerialNumber(unsigned int number) { serialNumber_ = number; }
    unsigned int GetSerialNumber() const { return serialNumber_; }
    /// Digits to which zeros fill the number up, at most s_maxSerialNumberWidth; 0 leaves the number out of the names.
    void SetSerialNumberWidth(unsigned int width);
    unsigned int GetSerialNumberWidth() const { return serialNumberWidth_; }
    /// Path and first part of the names.
    void SetBaseFilename(string const &name) { baseFilename_ = name; }
    string const &GetBaseFilename() const { return baseFilename_; }
    /// Without its dot; empty for the extension that DataCodecManager has for the file format.
    void SetFileExtension(string const &extension) { fileExtension_ = extension; }
    string const &GetFileExtension() const { return fileExtension_; }
    /// An empty suffix leaves out its dot, too.
    void SetBufferTypeSuffixes(string const &color, string const &depth, string const &stencil);
    void GetBufferTypeSuffixes(string &color, string &depth, string &stencil) const;
    /// @}

    /// @name Files
    /// @{

    /// True allows replacing files.
    void SetAllowFileOverwrite(bool allow) { allowFileOverwrite_ = allow; }
    bool GetAllowFileOverwrite() const { return allowFileOverwrite_; }
    /// Format for DataCodecManager, "PNG" for instance; empty for the system's own packages.
    void SetFileFormat(string const &format) { fileFormat_ = format; }
    string const &GetFileFormat() const { return fileFormat_; }
    /// @}

    /// `out` is kept for the reports, and must live until the capture.
    bool ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &commandLine) override;
    void DumpHelp(ostream &out, CommandLineParser const &parser) override;
    std::span<CommandWord const> GetWords() const override;

    /// Captures in the frame of the request.
    void OnFrame(bool &removeObserver, unsigned int frameNumber, double frameTime) override;

private:
    struct Buffer;
    class CaptureEnd;

    void ReadRequest(ostream &out, CommandArguments const &arguments);
    void CaptureScreenShot();
    string MakeStem() const;
    string MakeExtension(string const &format) const;
    string CaptureBuffer(VideoRenderer &renderer, unsigned int code, string const &fileName, string const &format,
                         NamedParameterList const &params) const;

    AutoPtr<ScreenShotCallback> callback_;
    unsigned int serialNumber_ = 0;
    unsigned int serialNumberWidth_ = 4;
    bool allowFileOverwrite_ = false;
    string fileFormat_;
    string baseFilename_ = "screenshot";
    string fileExtension_ = "image";
    string suffixColor_ = "color";
    string suffixDepth_ = "depth";
    string suffixStencil_ = "stencil";

    /// @name The request
    /// @{
    unsigned int frameToCapture_ = 0;
    ostream *out_ = nullptr;
    unsigned int colorBuffer_ = 0;
    bool capturesColor_ = false;
    bool capturesDepth_ = false;
    bool capturesStencil_ = false;
    /// @}
};

} // namespace quillmarsh::framework_commands

#endif
