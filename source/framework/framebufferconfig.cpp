#include <quillmarsh/framework/framebufferconfig.h>

#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/basetools/texttools.h>

#include "framebufferfields.h"

#include <initializer_list>

namespace quillmarsh
{

namespace
{

string Join(std::initializer_list<unsigned int> numbers, string const &separator)
{
    string text;
    for (unsigned int const &number : numbers)
        text += (&number == numbers.begin() ? string() : separator) + MakeString(number);
    return text;
}

} // namespace

FrameBufferConfig::FrameBufferConfig(bool fullscreen, bool hardwareRasterizer, unsigned int backBufferCount,
                                     unsigned int depthBits, unsigned int stencilBits, unsigned int accumulationBits)
    : Fullscreen(fullscreen),
      HardwareRasterizer(hardwareRasterizer),
      BackBufferCount(backBufferCount),
      RedBits(8),
      GreenBits(8),
      BlueBits(8),
      AlphaBits(8),
      DepthBits(depthBits),
      StencilBits(stencilBits),
      AccumulationRedBits(accumulationBits),
      AccumulationGreenBits(accumulationBits),
      AccumulationBlueBits(accumulationBits),
      AccumulationAlphaBits(accumulationBits)
{
}

string FrameBufferConfig::MakeLayoutDesc(string const &fieldSeparator, string const &groupSeparator) const
{
    return MakeBackBufferDesc(fieldSeparator) + groupSeparator + MakeDepthStencilDesc(fieldSeparator) + groupSeparator +
           MakeAccumulationDesc(fieldSeparator);
}

string FrameBufferConfig::MakeBackBufferDesc(string const &separator) const
{
    return Join({RedBits, GreenBits, BlueBits, AlphaBits}, separator);
}

string FrameBufferConfig::MakeDepthStencilDesc(string const &separator) const
{
    return Join({DepthBits, StencilBits}, separator);
}

string FrameBufferConfig::MakeAccumulationDesc(string const &separator) const
{
    return Join({AccumulationRedBits, AccumulationGreenBits, AccumulationBlueBits, AccumulationAlphaBits}, separator);
}

void FrameBufferConfig::Dump(ostream &out, unsigned int tabs) const
{
    for (FrameBufferField const &field : s_frameBufferFields)
        out << IndentEffector(tabs) << field.label << ": " << field.makeText(*this) << nl;
}

FrameBufferConfigFilter::~FrameBufferConfigFilter() = default;

bool FrameBufferConfigFilter::Filter(FrameBufferConfig const &)
{
    return true;
}

} // namespace quillmarsh
