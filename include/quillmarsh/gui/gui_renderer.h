// Contract of the renderer that draws the GUI.
#ifndef QUILLMARSH_GUI_GUI_RENDERER_H
#define QUILLMARSH_GUI_GUI_RENDERER_H

#include <quillmarsh/gui/gui_drawparams.h>
#include <quillmarsh/gui/gui_rectangle.h>
#include <quillmarsh/gui/gui_vertices.h>
#include <quillmarsh/mathtools/matrix44.h>

#include <span>

namespace quillmarsh
{

class VideoRenderer;
class VideoSubsystem;

namespace video_renderer_objects
{
class Texture2D;
}

namespace gui
{

class Font;
class FontTexture;
class Texture;

/// Draws the GUI. A video renderer plug-in derives its own class from this one, and hands an object of it over by
/// VideoRenderer::AttachGUIRenderer(). Frame thread only.
///
/// Coordinates are window pixels: the top left corner of the target is (0, 0), y points down, and z 0 lies in the middle
/// of the depth range. Whatever is drawn passes through the transform first. A pixel is drawn when its centre is inside.
///
/// Everything is drawn between Begin() and End(), over what is already there: the colour c of a vertex or texel with
/// alpha a gives c * a + target * (1 - a), and the target's alpha becomes a + target * (1 - a). A texel is multiplied by
/// the colour of the vertices. The renderer may gather what is drawn, and draw it later; End(), BeginInterleaved() and
/// Flush() draw everything that was gathered.
///
/// The order of calls, which video_null checks:
/// - VideoRenderer connects the subsystem, then creates the resources; it releases them before it disconnects.
/// - Begin() and End() come in pairs, and do not nest. Draws, clip rectangle and transform belong between them.
/// - BeginInterleaved() and EndInterleaved() come in pairs between Begin() and End(), with nothing of this class between
///   them but the getters.
///
/// \code
/// renderer.ClearBuffers(gui::Renderer::ClearParams());
/// renderer.Begin();
/// renderer.DrawRectangle(gui::RectangleC({20, 20, 200, 100}, color4b(255, 160, 0, 255)));
/// renderer.End();
/// \endcode
class QUILLMARSH_API Renderer : NoCopy
{
public:
    /// Place of the coordinate (0, 0) in the top left pixel, in pixels from the corner of that pixel: 0 and 0 when it is
    /// the corner itself, 0.5 and 0.5 when it is the centre. A plain record.
    struct PixelParams
    {
        float OffsetX = 0;
        float OffsetY = 0;
    };

    /// What the renderer can do on this machine. A plain record.
    struct RendererParams
    {
        PixelParams Pixel;
        /// Largest width and height of a texture.
        unsigned int MaxTextureSize = 0;
        /// Samples of each pixel; 1 without multisampling.
        unsigned int NumSamples = 1;
    };

    /// Buffers to clear, and the values that they get. A plain record.
    struct QUILLMARSH_API ClearParams
    {
        bool ClearColor = true;
        color4b Color = {0, 0, 128, 255};
        bool ClearDepth = true;
        /// 0 is nearest, 1 is farthest.
        float Depth = 1;
        bool ClearStencil = false;
        unsigned int Stencil = 0;
        /// Clears only the pixels of the rectangle, in pixels of the window.
        bool ClearRectangleOnly = false;
        gui::Rectangle Rectangle = {0, 0, 0, 0};

        ClearParams() = default;
        ClearParams(bool clearColor, color4b color, bool clearDepth, float depth, bool clearStencil,
                    unsigned int stencil, bool clearRectangleOnly, gui::Rectangle const &rectangle);
    };

    /// Part of the target that the coordinates of the GUI and of the application's own drawing refer to. A plain record.
    struct ViewportParams
    {
        /// Top left corner and size, in pixels of the window.
        vec2 Position = {0, 0};
        vec2 Size = {200, 200};
        /// Depths of the nearest and of the farthest point.
        float MinDepth = 0;
        float MaxDepth = 1;

        ViewportParams() = default;
        ViewportParams(vec2 const &position, vec2 const &size, float minDepth = 0, float maxDepth = 1)
            : Position(position),
              Size(size),
              MinDepth(minDepth),
              MaxDepth(maxDepth)
        {
        }
    };

    /// Use of the depth buffer. A plain record.
    struct DepthParams
    {
        /// Values of z that get the depths below: nearest and farthest.
        float Near = -100;
        float Far = 100;
        /// Depths that Near and Far get, between 0 and 1.
        float RangeFrom = 0;
        float RangeTo = 1;
        /// Draws only what is not behind what is there.
        bool DepthTest = false;
        /// Stores the depth of what is drawn.
        bool DepthWrite = false;
        /// Clears the depth to 1 at each Begin().
        bool ClearAtBegin = false;
    };

    /// Kinds of primitive. Each consists of `count` triangles, from vertex `first` on.
    enum ePrimitive : unsigned int
    {
        /// Three vertices for each triangle.
        e_triangleList = 0,
        /// Each triangle shares its first two vertices with the one before.
        e_triangleStrip = 1,
        /// All triangles share the first vertex.
        e_triangleFan = 2
    };

    /// Counts of the calls and of what was drawn. A plain record.
    struct QUILLMARSH_API Statistics
    {
        unsigned int NumClearBuffers;
        unsigned int NumSetViewport;
        unsigned int NumBegin;
        unsigned int NumEnd;
        unsigned int NumBeginInterleaved;
        unsigned int NumEndInterleaved;
        unsigned int NumSetDepthParams;
        unsigned int NumSetTransform;
        unsigned int NumDrawPrimitiveColored;
        unsigned int NumDrawPrimitiveTextured;
        unsigned int NumDrawText;
        unsigned int NumDrawRectangleColored;
        unsigned int NumDrawRectangleTextured;
        unsigned int NumDrawRectangleFrameColored;
        /// Textures that the renderer selected, whatever the operation.
        unsigned int NumTextureChanges;
        /// Triangles of DrawPrimitive().
        unsigned int NumPrimitivesColored;
        unsigned int NumPrimitivesTextured;
        unsigned int NumTextGlyphs;

        /// One counter. GetCounters() returns all of them in their order.
        struct Counter
        {
            /// Name of the member.
            char const *name;
            /// The member.
            unsigned int Statistics::*value;
        };
        static std::span<Counter const> GetCounters();

        /// Sets every counter.
        void Clear(unsigned int value);
        /// Adds the counters of `other`.
        void Accum(Statistics const &other);
        /// Sets each counter to that of `sum` divided by `count`; to 0 when the count is 0.
        void Average(Statistics const &sum, unsigned int count);
        /// Sets each counter to the smaller of two.
        void Min(Statistics const &a, Statistics const &b);
        /// Sets each counter to the larger of two.
        void Max(Statistics const &a, Statistics const &b);
        /// Prints one line for each counter, behind `tabs` tabs.
        void Dump(ostream &out, unsigned int tabs) const;
    };

    class DepthParamsSentry;
    class TransformSentry;

    virtual ~Renderer();

    /// @name Target
    /// @{

    /// Clears buffers, at once. Counts NumClearBuffers. May be called before Begin(), and between Begin() and End().
    virtual void ClearBuffers(ClearParams const &params) = 0;
    /// Sets the viewport. A new window size sets it to the whole window. Counts NumSetViewport.
    virtual void SetViewport(ViewportParams const &params) = 0;
    virtual void GetViewport(ViewportParams &params) const = 0;
    /// Draws only inside the rectangle from now on: in window pixels, whatever the transform is, with edges rounded to
    /// the nearest pixel. An empty rectangle draws nothing. End() and ResetClipRectangle() remove it.
    virtual void SetClipRectangle(Rectangle const &rectangle) = 0;
    virtual void ResetClipRectangle() = 0;
    /// Gives the clip rectangle; false when there is none.
    virtual bool GetClipRectangle(Rectangle &rectangle) const = 0;
    /// Tells what the renderer can do. Values are final once the resources have been created.
    virtual void GetRendererParams(RendererParams &params) const = 0;
    /// @}

    /// @name Textures
    /// @{

    /// True when textures survive a lost device and a reconfiguration.
    virtual bool CreatesManagedResourcesOnly() const = 0;
    /// Creates a texture of an eSampleFormat, with all levels when `multiLevel` is true. Returns null when the renderer
    /// cannot have it. Its samples are not set. It must not outlive the resources of the renderer. `forGUI` is true: the
    /// GUI draws with it.
    virtual AutoPtr<video_renderer_objects::Texture2D>
    CreateTexture(unsigned int format, bool multiLevel, unsigned int height, unsigned int width, bool forGUI) = 0;
    /// @}

    /// @name Drawing
    /// @{

    /// True between Begin() and End().
    virtual bool IsDrawing() const = 0;
    /// Begins to draw, with the identity as transform and without a clip rectangle. Counts NumBegin.
    virtual void Begin() = 0;
    /// Draws everything that was gathered. Counts NumEnd.
    virtual void End() = 0;
    /// Draws everything that was gathered, and goes on.
    virtual void Flush() = 0;
    /// Hands the device over to the application, with the viewport of SetViewport(), the clip rectangle, and otherwise
    /// the device's default state. The renderer's own documentation tells what the application may change. Counts
    /// NumBeginInterleaved.
    virtual void BeginInterleaved() = 0;
    /// Takes the device back, and restores what the GUI needs. Counts NumEndInterleaved.
    virtual void EndInterleaved() = 0;
    /// Sets the use of the depth buffer for what follows. Counts NumSetDepthParams.
    virtual void SetDepthParams(DepthParams const &params) = 0;
    virtual void GetDepthParams(DepthParams &params) = 0;
    /// Sets the transform of what follows, a matrix for row vectors. Counts NumSetTransform.
    virtual void SetTransform(mat4 const &transform) = 0;
    virtual void GetTransform(mat4 &transform) = 0;
    /// Draws `count` triangles from vertex `first` on; `type` is an ePrimitive. Each counts one call, and the triangles.
    /// A texture without a part in the renderer draws nothing.
    virtual void DrawPrimitive(Texture const &texture, VertexBufferCT &vertices, unsigned int type, unsigned int count,
                               unsigned int first) = 0;
    virtual void DrawPrimitive(VertexBufferC &vertices, unsigned int type, unsigned int count, unsigned int first) = 0;
    /// Draws a line of text. Counts NumDrawText, and the glyphs.
    virtual void DrawText(FontTexture const &font, unsigned int length, char const *text,
                          DrawTextParams const &params) = 0;
    /// Draws a rectangle with a texture.
    virtual void DrawRectangle(Texture const &texture, RectangleCT const &rectangle);
    /// Draws a filled rectangle.
    virtual void DrawRectangle(RectangleC const &rectangle);
    /// Draws the frame of a rectangle, inside its edges. `thickness` is in pixels.
    virtual void DrawRectangleFrame(RectangleC const &rectangle, float thickness);

    /// Draws a line of text with any font.
    void DrawText(Font const &font, string const &text, DrawTextParams const &params);
    void DrawText(Font const &font, unsigned int length, char const *text, DrawTextParams const &params);
    void DrawText(FontTexture const &font, string const &text, DrawTextParams const &params);
    /// @}

protected:
    /// Borrows its owner.
    explicit Renderer(VideoRenderer &parent);

    /// @name Life, called by the VideoRenderer
    /// The owner has checked the order. A bool is true when the device was lost.
    /// @{
    virtual void ConnectVideoSubsystem(VideoSubsystem &subsystem) = 0;
    virtual void DisconnectVideoSubsystem() = 0;
    virtual void CreateVideoResources(bool deviceWasLost) = 0;
    virtual void ReleaseVideoResources(bool deviceWasLost) = 0;
    /// The target has a new size in pixels. Stores it, each number at least 1. An override calls the base first.
    virtual void OnWindowResize(unsigned int width, unsigned int height);
    /// @}

public:
    VideoRenderer &GetParentVideoRenderer() { return parent_; }
    VideoRenderer const &GetParentVideoRenderer() const { return parent_; }

    /// @name Statistics
    /// Counted since ClearStats(). A host clears them in each frame.
    /// @{
    Statistics &Stats() { return statistics_; }
    Statistics const &Stats() const { return statistics_; }
    void ClearStats() { statistics_.Clear(0); }
    /// @}

    /// @name Size of the target in pixels
    /// @{
    unsigned int GetWindowWidth() const { return windowWidth_; }
    unsigned int GetWindowHeight() const { return windowHeight_; }
    vec2 GetWindowSize() const { return {static_cast<float>(windowWidth_), static_cast<float>(windowHeight_)}; }
    /// @}

private:
    friend class quillmarsh::VideoRenderer;

    VideoRenderer &parent_;
    Statistics statistics_;
    unsigned int windowWidth_ = 1;
    unsigned int windowHeight_ = 1;
    VertexBufferC vertices_;
    VertexBufferCT texturedVertices_;
};

/// Sets the use of the depth buffer for its own life, and then restores the former one.
class QUILLMARSH_API Renderer::DepthParamsSentry : NoCopy
{
public:
    DepthParamsSentry(Renderer &renderer, DepthParams const &params);
    ~DepthParamsSentry();

private:
    Renderer &renderer_;
    DepthParams saved_;
};

/// Sets the transform for its own life, and then restores the former one.
class QUILLMARSH_API Renderer::TransformSentry : NoCopy
{
public:
    /// With `concat`, `transform` acts before the present transform; otherwise it replaces it.
    TransformSentry(Renderer &renderer, mat4 const &transform, bool concat);
    ~TransformSentry();

private:
    Renderer &renderer_;
    mat4 saved_;
};

} // namespace gui

} // namespace quillmarsh

#endif
