// Layout of a frame buffer, and the choice among layouts.
#ifndef QUILLMARSH_FRAMEWORK_FRAMEBUFFERCONFIG_H
#define QUILLMARSH_FRAMEWORK_FRAMEBUFFERCONFIG_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// Layout of a frame buffer. A plain record.
struct QUILLMARSH_API FrameBufferConfig
{
    bool Fullscreen;
    bool HardwareRasterizer;
    unsigned int BackBufferCount;
    /// Bits per channel of the back buffer.
    unsigned int RedBits;
    unsigned int GreenBits;
    unsigned int BlueBits;
    unsigned int AlphaBits;
    unsigned int DepthBits;
    unsigned int StencilBits;
    /// Bits per channel of the accumulation buffer; all are 0 when there is none.
    unsigned int AccumulationRedBits;
    unsigned int AccumulationGreenBits;
    unsigned int AccumulationBlueBits;
    unsigned int AccumulationAlphaBits;

    /// Takes these members; the back buffer has 8 bits in each channel, the accumulation buffer `accumulationBits`.
    FrameBufferConfig(bool fullscreen, bool hardwareRasterizer, unsigned int backBufferCount, unsigned int depthBits,
                      unsigned int stencilBits, unsigned int accumulationBits);

    /// Compares all members.
    bool operator==(FrameBufferConfig const &other) const = default;

    /// Text of the bits: red, green, blue, alpha; depth, stencil; the four of the accumulation buffer.
    /// `fieldSeparator` joins the numbers of a group, `groupSeparator` the groups.
    string MakeLayoutDesc(string const &fieldSeparator, string const &groupSeparator) const;
    /// @name Texts of a group
    /// The numbers of one group, joined by `separator`.
    /// @{
    string MakeBackBufferDesc(string const &separator) const;
    string MakeDepthStencilDesc(string const &separator) const;
    string MakeAccumulationDesc(string const &separator) const;
    /// @}

    /// Prints a line for each of the first three members and for each group of bits, behind `tabs` tabs.
    void Dump(ostream &out, unsigned int tabs) const;
};

/// Chooses the frame buffers that an application accepts (VideoProfile::Filter). An application derives its own.
class QUILLMARSH_API FrameBufferConfigFilter
{
public:
    virtual ~FrameBufferConfigFilter();

    /// True when the frame buffer is to be kept. The default keeps all.
    virtual bool Filter(FrameBufferConfig const &config);
};

} // namespace quillmarsh

#endif
