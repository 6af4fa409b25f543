// GUI renderer without a device.
#ifndef QUILLMARSH_PLUGINS_VIDEO_NULL_NULLGUIRENDERER_H
#define QUILLMARSH_PLUGINS_VIDEO_NULL_NULLGUIRENDERER_H

#include "callorder.h"
#include "drawnframe.h"

#include <quillmarsh/videorendererobjects/vro_textures.h>

namespace video_null
{

/// Texture that keeps no samples. It counts in its renderer while it lives.
class NullTexture final : public video_renderer_objects::Texture2D
{
public:
    /// Counts in `numTextures`, which is shared with the renderer.
    NullTexture(eSampleFormat format, bool mipmapped, unsigned int width, unsigned int height,
                std::shared_ptr<unsigned int> numTextures);
    ~NullTexture() override;

    /// Returns the number of samples that were loaded, on all levels together.
    std::size_t GetNumLoadedSamples() const { return numLoadedSamples_; }

private:
    void OnPriorityChanged() override {}
    bool OnBaseLevelChanged() override { return true; }
    bool DoLoadLevel(unsigned int level, ImageBase const &source, unsigned int dataHeight, unsigned int dataWidth,
                     unsigned int destOffsetY, unsigned int destOffsetX, unsigned int sourceOffsetY,
                     unsigned int sourceOffsetX, bool rowOrderBottomToTop) override;

    std::shared_ptr<unsigned int> numTextures_;
    std::size_t numLoadedSamples_ = 0;
};

/// GUI renderer without a device: checks the order of calls, counts them, and keeps what the last frame has drawn.
class NullGUIRenderer : public gui::Renderer
{
public:
    /// Largest width and height of a texture.
    static constexpr unsigned int s_maxTextureSize = 16384;

    /// `report` gets each fault once; null for nobody.
    NullGUIRenderer(VideoRenderer &parent, std::function<void(string const &)> report);

    /// @name What was seen
    /// @{
    /// Returns what was drawn between the last End() and its Begin().
    DrawnFrame const &GetLastFrame() const { return lastFrame_; }
    std::vector<string> const &GetFaults() const { return order_.GetFaults(); }
    unsigned int GetNumTextures() const { return *numTextures_; }
    /// @}

    /// Makes textures survive the release of the resources, as far as the manager of the GUI asks. False at first.
    void SetManagedResources(bool areManaged) { areResourcesManaged_ = areManaged; }

    void ClearBuffers(ClearParams const &params) override;
    void SetViewport(ViewportParams const &params) override;
    void GetViewport(ViewportParams &params) const override { params = viewport_; }
    void SetClipRectangle(gui::Rectangle const &rectangle) override;
    void ResetClipRectangle() override;
    bool GetClipRectangle(gui::Rectangle &rectangle) const override;
    void GetRendererParams(RendererParams &params) const override;
    bool CreatesManagedResourcesOnly() const override { return areResourcesManaged_; }
    AutoPtr<video_renderer_objects::Texture2D> CreateTexture(unsigned int format, bool multiLevel, unsigned int height,
                                                             unsigned int width, bool forGUI) override;
    bool IsDrawing() const override { return order_.IsDrawing(); }
    void Begin() override;
    void End() override;
    void Flush() override { order_.Enter(eCall::e_flush); }
    void BeginInterleaved() override { order_.Enter(eCall::e_beginInterleaved); }
    void EndInterleaved() override { order_.Enter(eCall::e_endInterleaved); }
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
    using gui::Renderer::DrawText;

protected:
    void ConnectVideoSubsystem(VideoSubsystem &) override { order_.Enter(eCall::e_connect); }
    void DisconnectVideoSubsystem() override;
    void CreateVideoResources(bool deviceWasLost) override;
    void ReleaseVideoResources(bool deviceWasLost) override;
    void OnWindowResize(unsigned int width, unsigned int height) override;

private:
    /// Checks a range of vertices, and notes the primitive. Returns false when there is nothing to draw.
    bool AddPrimitive(eDrawn kind, void const *texture, unsigned int type, unsigned int count, unsigned int first,
                      unsigned int numVertices);
    void AddItem(eDrawn kind, void const *texture, unsigned int primitive, unsigned int count, std::size_t first,
                 std::size_t size);
    /// Counts a change of the texture; null is the texture of coloured primitives.
    void SelectTexture(void const *texture);

    CallOrder order_;
    DrawnFrame frame_;
    DrawnFrame lastFrame_;
    std::shared_ptr<unsigned int> numTextures_ = std::make_shared<unsigned int>(0);
    bool areResourcesManaged_ = false;
    ViewportParams viewport_;
    DepthParams depth_;
    mat4 transform_ = mat4::IDENTITY;
    gui::Rectangle clip_ = {0, 0, 0, 0};
    bool isClipped_ = false;
    /// The transform, or the clip rectangle, is not in the frame yet.
    bool isTransformNew_ = true;
    bool isClipNew_ = true;
    void const *texture_ = nullptr;
};

} // namespace video_null

#endif
