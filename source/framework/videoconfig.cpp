#include <quillmarsh/framework/videoconfig.h>

#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/basetools/texttools.h>

namespace quillmarsh
{

VideoConfig::VideoConfig(bool resizable)
    : FrameBuffer(false, true, 1, 24, 8, 0),
      DisplayMode(false),
      Resizable(resizable),
      Hints(true, false, true, e_vertex_processing_default)
{
}

bool VideoConfig::IsEqualIgnoreVSync(VideoConfig const &other) const
{
    VideoConfig adapted(*this);
    adapted.Hints.VSync = other.Hints.VSync;
    if (other.FrameBuffer.Fullscreen)
    {
        adapted.Resizable = other.Resizable;
    }
    else
    {
        adapted.DisplayMode.BitDepth = other.DisplayMode.BitDepth;
        adapted.DisplayMode.RefreshFrequency = other.DisplayMode.RefreshFrequency;
    }
    return adapted == other;
}

void VideoConfig::Dump(ostream &out, unsigned int tabs) const
{
    IndentEffector const indent(tabs);
    FrameBuffer.Dump(out, tabs);
    out << indent << DisplayMode.MakeDesc(" x ", " @ ") << nl;
    out << indent << "Resizable: " << MakeString(Resizable) << nl;
    Hints.Dump(out, tabs);
}

} // namespace quillmarsh
