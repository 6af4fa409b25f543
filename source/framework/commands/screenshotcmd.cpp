#include <quillmarsh/framework/commands/screenshotcmd.h>

#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/dataobjects/imagebase.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/videorenderer.h>
#include <quillmarsh/framework/videosubsystem.h>
#include <quillmarsh/gui/gui_component.h>

#include "imageadaption.h"

#include <algorithm>
#include <utility>

namespace quillmarsh::framework_commands
{
namespace
{

using Cmd = ScreenShotCmd;

constexpr CommandWord s_words[] = {
    CommandWord::Option(Cmd::s_szOptionImmediate, "immediate-mode\n"),
    CommandWord::Option(Cmd::s_szOptionOverwrite, "allow file-overwrite\n"),
    CommandWord::Option(Cmd::s_szOptionColor, "capture color buffer\n"),
    CommandWord::Option(Cmd::s_szOptionDepth, "capture depth buffer\n"),
    CommandWord::Option(Cmd::s_szOptionStencil, "capture stencil buffer\n"),
    CommandWord::Option(Cmd::s_szOptionAll, "capture all buffers\n"),
    CommandWord::Option(Cmd::s_szOptionFront, "get front buffer instead of back (applies to color only)\n"),
};

constexpr char const *s_szNotes = "Notes:\n\tStandard (delayed) screenshot captures the next frame.\n"
                                  "\tIn the process of capturing the frame it calls registered\n"
                                  "\tcallbacks which should by default hide the console while\n"
                                  "\tthe capture is in progress. This procedure enables the user\n"
                                  "\tto open the console, type the screenshot command, and obtain\n"
                                  "\tthe clean screenshot without the console in front.\n"
                                  "\tImmediate-mode screenshot captures the current frame and\n"
                                  "\tbypasses the callbacks. This can be used if the console itself\n"
                                  "\tshould be visible.\n";

} // namespace

/// A buffer of the request.
struct ScreenShotCmd::Buffer
{
    bool isWanted;
    unsigned int code;
    char const *name;
    string const &suffix;
};

/// Ends a capture, also one in which the device has failed: what the callback has hidden comes back.
class ScreenShotCmd::CaptureEnd : NoCopy
{
public:
    explicit CaptureEnd(ScreenShotCmd &command) : command_(command) {}
    ~CaptureEnd()
    {
        ++command_.serialNumber_;
        if (command_.callback_ != nullptr)
            command_.callback_->PostScreenShot();
    }

private:
    ScreenShotCmd &command_;
};

ScreenShotCmd::ScreenShotCallback::~ScreenShotCallback() = default;

void ScreenShotCmd::ScreenShotCallback::PreScreenShot() {}

void ScreenShotCmd::ScreenShotCallback::PostScreenShot() {}

ScreenShotCmd::ScreenShotCallback_AutoHideComponent::ScreenShotCallback_AutoHideComponent(gui::Component *target)
    : target_(target)
{
}

ScreenShotCmd::ScreenShotCallback_AutoHideComponent::~ScreenShotCallback_AutoHideComponent() = default;

void ScreenShotCmd::ScreenShotCallback_AutoHideComponent::SetAutoHideTarget(gui::Component *target)
{
    target_ = target;
    wasVisible_ = false;
}

void ScreenShotCmd::ScreenShotCallback_AutoHideComponent::PreScreenShot()
{
    if (target_.Get() == nullptr)
        return;
    // A second request before the capture finds what the first one has hidden.
    wasVisible_ = wasVisible_ || target_->IsVisible();
    target_->ShowTopLevel(false, true);
}

void ScreenShotCmd::ScreenShotCallback_AutoHideComponent::PostScreenShot()
{
    if (std::exchange(wasVisible_, false) && target_.Get() != nullptr)
        target_->ShowTopLevel(true, false);
}

ScreenShotCmd::ScreenShotCmd(ScreenShotCallback *callback) : callback_(callback)
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Capture current state of frame-buffer");
}

ScreenShotCmd::~ScreenShotCmd() = default;

void ScreenShotCmd::SetCallback(ScreenShotCallback *callback)
{
    if (callback != callback_.get())
        callback_.reset(callback);
}

void ScreenShotCmd::SetSerialNumberWidth(unsigned int width)
{
    serialNumberWidth_ = std::min(width, s_maxSerialNumberWidth);
}

void ScreenShotCmd::SetBufferTypeSuffixes(string const &color, string const &depth, string const &stencil)
{
    suffixColor_ = color;
    suffixDepth_ = depth;
    suffixStencil_ = stencil;
}

void ScreenShotCmd::GetBufferTypeSuffixes(string &color, string &depth, string &stencil) const
{
    color = suffixColor_;
    depth = suffixDepth_;
    stencil = suffixStencil_;
}

bool ScreenShotCmd::ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &)
{
    CommandArguments const arguments(*this, parser, s_words);
    ReadRequest(out, arguments);
    if (arguments.HasOption(s_szOptionImmediate))
    {
        CaptureScreenShot();
        return true;
    }
    Kernel &kernel = Kernel::Instance();
    VideoRenderer const *const renderer = kernel.GetActiveVideoRendererPtr();
    if (renderer == nullptr)
        return true;
    // Frames that are still on their way may show the console.
    frameToCapture_ = kernel.GetFrameNumber() + renderer->GetVideoConfig().FrameBuffer.BackBufferCount + 1;
    if (callback_ != nullptr)
        callback_->PreScreenShot();
    kernel.AddFrameObserver(this);
    return true;
}

void ScreenShotCmd::ReadRequest(ostream &out, CommandArguments const &arguments)
{
    bool const all = arguments.HasOption(s_szOptionAll);
    out_ = &out;
    colorBuffer_ = arguments.HasOption(s_szOptionFront) ? e_capture_front_color : e_capture_color;
    capturesDepth_ = all || arguments.HasOption(s_szOptionDepth);
    capturesStencil_ = all || arguments.HasOption(s_szOptionStencil);
    capturesColor_ = all || arguments.HasOption(s_szOptionColor) || (!capturesDepth_ && !capturesStencil_);
}

void ScreenShotCmd::OnFrame(bool &removeObserver, unsigned int frameNumber, double)
{
    if (frameNumber != frameToCapture_)
        return;
    removeObserver = true;
    CaptureScreenShot();
}

void ScreenShotCmd::CaptureScreenShot()
{
    VideoRenderer *const renderer = Kernel::Instance().GetActiveVideoRendererPtr();
    if (renderer == nullptr)
        return;
    CaptureEnd const end(*this);
    string const stem = MakeStem();
    string const format =
        fileFormat_.empty() ? signal_codec_parameters::Value_ImageFileFormat_QMDP : fileFormat_.c_str();
    string const extension = MakeExtension(format);
    NamedParameterList params = DataCodecManager::Instance().GetEncoderDefaultParamList(DataCategory_Image);
    params.Insert(NamedParameter(data_codec_parameters::Param_FileOverwrite, allowFileOverwrite_), true);

    Buffer const buffers[] = {
        {capturesColor_, colorBuffer_, "color", suffixColor_},
        {capturesDepth_, e_capture_depth, "depth", suffixDepth_},
        {capturesStencil_, e_capture_stencil, "stencil", suffixStencil_},
    };
    for (Buffer const &buffer : buffers)
    {
        if (!buffer.isWanted)
            continue;
        string fileName = stem;
        if (!buffer.suffix.empty())
            fileName.append(1, '.').append(buffer.suffix);
        fileName += extension;
        string const reason = CaptureBuffer(*renderer, buffer.code, fileName, format, params);
        if (reason.empty())
            *out_ << "Saved " << buffer.name << "-buffer to: " << fileName << std::endl;
        else
            *out_ << e_error << "Failed to save " << buffer.name << "-buffer.\n\t" << reason << std::endl << e_info;
    }
}

string ScreenShotCmd::MakeStem() const
{
    if (serialNumberWidth_ == 0)
        return baseFilename_;
    string const number = MakeString(serialNumber_);
    string const zeros(serialNumberWidth_ - std::min<std::size_t>(number.size(), serialNumberWidth_), '0');
    return baseFilename_ + '.' + zeros + number;
}

string ScreenShotCmd::MakeExtension(string const &format) const
{
    string extension = fileExtension_;
    if (extension.empty())
        DataCodecManager::Instance().GetDefaultFileFormatExtension(DataCategory_Image, format, extension, "");
    return extension.empty() ? "" : '.' + extension;
}

/// Captures a buffer and saves it. Returns why that failed; empty on success.
string ScreenShotCmd::CaptureBuffer(VideoRenderer &renderer, unsigned int code, string const &fileName,
                                    string const &format, NamedParameterList const &params) const
{
    AutoPtr<ImageBase> image;
    if (!renderer.CaptureFrameBuffer(image, code, true) || image == nullptr)
        return "The video-renderer does not capture this buffer.";
    string const reason = SaveAdaptedImage(*image, fileName, format, params);
    return reason.empty() ? "" : fileName + ": " + reason;
}

void ScreenShotCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_words, "screenshot of color back-buffer");
    out << s_szNotes;
}

std::span<CommandWord const> ScreenShotCmd::GetWords() const
{
    return s_words;
}

} // namespace quillmarsh::framework_commands
