// GUI renderer on OpenGL.
#ifndef QUILLMARSH_PLUGINS_VIDEO_OPENGL_OPENGLGUIRENDERER_H
#define QUILLMARSH_PLUGINS_VIDEO_OPENGL_OPENGLGUIRENDERER_H

#include "batch.h"

#include <quillmarsh/gui/gui_fonts.h>
#include <quillmarsh/gui/gui_renderer.h>

namespace video_opengl
{

class OpenGLSubsystem;

/// GUI renderer on OpenGL. It gathers what is drawn (see Batch), with positions that are transformed already.
///
/// The application draws with OpenGL itself: in its own hooks outside Begin() and End(), and between BeginInterleaved()
/// and EndInterleaved(). It finds a context of version 3.3 or newer that is current, and the target bound to
/// GL_FRAMEBUFFER: a framebuffer of the renderer, not number 0. The viewport is that of SetViewport(), and within
/// BeginInterleaved() the scissor test is on while there is a clip rectangle. Everything else has OpenGL's default. The
/// application may change everything that it finds, with two exceptions: it deletes no object of the renderer, and it
/// binds the target again when it has drawn into another framebuffer. Loading a texture selects texture unit 0 and
/// leaves no texture there.
class OpenGLGUIRenderer final : public gui::Renderer, Gatherer
{
public:
    explicit OpenGLGUIRenderer(VideoRenderer &parent) : Renderer(parent) {}
    /// Releases what a host has not released: the device must not call an object that is gone.
    ~OpenGLGUIRenderer() override { OpenGLGUIRenderer::ReleaseVideoResources(false); }

    /// Returns the number of draw calls since the resources were created.
    unsigned int GetNumDrawCalls() const { return batch_ != nullptr ? batch_->GetNumDrawCalls() : 0; }

    void ClearBuffers(ClearParams const &params) override;
    void SetViewport(ViewportParams const &params) override;
    void GetViewport(ViewportParams &params) const override { params = viewport_; }
    void SetClipRectangle(gui::Rectangle const &rectangle) override;
    void ResetClipRectangle() override;
    bool GetClipRectangle(gui::Rectangle &rectangle) const override;
    void GetRendererParams(RendererParams &params) const override;
    /// False: a new context begins without textures.
    bool CreatesManagedResourcesOnly() const override { return false; }
    AutoPtr<video_renderer_objects::Texture2D> CreateTexture(unsigned int format, bool multiLevel, unsigned int height,
                                                             unsigned int width, bool forGUI) override;
    bool IsDrawing() const override { return isDrawing_; }
    void Begin() override;
    void End() override;
    void Flush() override;
    void BeginInterleaved() override;
    void EndInterleaved() override;
    void SetDepthParams(DepthParams const &params) override;
    void GetDepthParams(DepthParams &params) override { params = depth_; }
    void SetTransform(mat4 const &transform) override;
    void GetTransform(mat4 &transform) override { transform = transform_; }
    void DrawPrimitive(gui::Texture const &texture, gui::VertexBufferCT &vertices, unsigned int type,
                       unsigned int count, unsigned int first) override;
    void DrawPrimitive(gui::VertexBufferC &vertices, unsigned int type, unsigned int count,
                       unsigned int first) override;
    void DrawText(gui::FontTexture const &font, unsigned int length, char const *text,
                  gui::DrawTextParams const &params) override;
    void DrawRectangle(gui::Texture const &texture, gui::RectangleCT const &rectangle) override;
    void DrawRectangle(gui::RectangleC const &rectangle) override;
    using gui::Renderer::DrawText;

protected:
    void ConnectVideoSubsystem(VideoSubsystem &subsystem) override;
    void DisconnectVideoSubsystem() override;
    void CreateVideoResources(bool deviceWasLost) override;
    void ReleaseVideoResources(bool deviceWasLost) override;
    void OnWindowResize(unsigned int width, unsigned int height) override;

private:
    void DrawGathered() override { Flush(); }

    bool CanDraw() const { return isDrawing_ && batch_ != nullptr; }
    /// False while the application has the device: what would be gathered then could not be drawn before a texture goes.
    bool CanGather() const { return CanDraw() && !isInterleaved_; }
    /// Selects the texture for what follows. False for one without a part in this renderer.
    bool SelectTexture(gui::Texture const &texture);
    /// Puts OpenGL into the state for drawing, and back into its default.
    void EnterState();
    void LeaveState();
    void ApplyViewport();
    void ApplyProjection();
    PixelArea ToPixels(gui::Rectangle const &rectangle) const;

    vec3 Transformed(vec3 const &position) const;
    /// Writes the four corners of a rectangle, against the clock from the top left.
    void WriteCorners(gui::VertexCT *vertices, gui::RectangleC const &rectangle) const;
    template<typename Vertices>
    void AddPrimitive(Vertices const &vertices, unsigned int type, unsigned int count, unsigned int first);

    OpenGLSubsystem *subsystem_ = nullptr;
    AutoPtr<Batch> batch_;
    bool isDrawing_ = false;
    bool isInterleaved_ = false;

    ViewportParams viewport_;
    DepthParams depth_;
    std::optional<gui::Rectangle> clip_;

    mat4 transform_ = mat4::IDENTITY;
    /// Positions only move.
    bool isTranslation_ = true;
    /// The transform is in the program, since it is a perspective; positions are not transformed here.
    bool isInProgram_ = false;
    /// The texture that was selected last, and its part in this renderer; null while none is.
    video_renderer_objects::Texture2D *selected_ = nullptr;
    gui::Texture::eFilter selectedFilter_ = gui::Texture::e_filter_linear;
};

} // namespace video_opengl

#endif
