#include <quillmarsh/framework/videohints.h>

#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/basetools/texttools.h>

#include <iterator>

namespace quillmarsh
{

VideoHints::VideoHints(bool vsync, bool fullscreenDestinationAlpha, bool pureDeviceMode,
                       eVertexProcessingMode vertexProcessingMode)
    : VSync(vsync),
      FullscreenDestinationAlpha(fullscreenDestinationAlpha),
      PureDeviceMode(pureDeviceMode),
      VertexProcessingMode(vertexProcessingMode)
{
}

void VideoHints::Dump(ostream &out, unsigned int tabs) const
{
    IndentEffector const indent(tabs);
    out << indent << "VSync: " << MakeString(VSync) << nl;
    out << indent << "FullscreenDestinationAlpha: " << MakeString(FullscreenDestinationAlpha) << nl;
    out << indent << "PureDeviceMode: " << MakeString(PureDeviceMode) << nl;
    out << indent << "VertexProcessingMode: " << FormatVertexProcessingMode(VertexProcessingMode) << nl;
}

string VideoHints::FormatVertexProcessingMode(eVertexProcessingMode mode)
{
    static constexpr char const *s_names[] = {"Default", "Software", "Mixed", "Hardware"};
    return mode < std::size(s_names) ? s_names[mode] : "Unknown";
}

} // namespace quillmarsh
