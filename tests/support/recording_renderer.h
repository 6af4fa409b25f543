// Video renderer without a device, whose GUI renderer keeps what is loaded into its textures.
#ifndef QUILLMARSH_TESTS_SUPPORT_RECORDING_RENDERER_H
#define QUILLMARSH_TESTS_SUPPORT_RECORDING_RENDERER_H

#include <quillmarsh/framework/videorenderer.h>
#include <quillmarsh/gui/gui_fonts.h>
#include <quillmarsh/gui/gui_renderer.h>

#include "tests/support/recording_textures.h"

namespace quillmarsh::tests
{

/// Creates recording textures, and keeps the last text. It draws nothing.
class RecordingGUIRenderer final : public gui::Renderer
{
public:
    explicit RecordingGUIRenderer(VideoRenderer &parent) : Renderer(parent) {}

    struct TextureRequest
    {
        unsigned int format;
        bool multiLevel;
        unsigned int height;
        unsigned int width;
        bool forGUI;
        /// Textures that lived when this one was asked for.
        long numLiving;

        bool operator==(TextureRequest const &) const = default;
    };
    std::vector<TextureRequest> requests;
    /// The texture that was created last.
    RecordingTexture2D *texture = nullptr;
    bool refusesTextures = false;
    gui::FontTexture const *font = nullptr;
    string text;

    bool CreatesManagedResourcesOnly() const override { return false; }
    AutoPtr<video_renderer_objects::Texture2D> CreateTexture(unsigned int format, bool multiLevel, unsigned int height,
                                                             unsigned int width, bool forGUI) override
    {
        requests.push_back({format, multiLevel, height, width, forGUI, GetNumTextures()});
        if (refusesTextures)
            return nullptr;
        auto made = std::make_unique<RecordingTexture2D>(static_cast<eSampleFormat>(format), multiLevel, width, height);
        made->companion = token_;
        texture = made.get();
        return made;
    }
    /// Returns the number of textures that live.
    long GetNumTextures() const { return token_.use_count() - 1; }

    void DrawText(gui::FontTexture const &newFont, unsigned int length, char const *newText,
                  gui::DrawTextParams const &) override
    {
        font = &newFont;
        text.assign(newText, length);
    }
    using Renderer::DrawText;

    void ClearBuffers(ClearParams const &) override {}
    void SetViewport(ViewportParams const &) override {}
    void GetViewport(ViewportParams &) const override {}
    void SetClipRectangle(gui::Rectangle const &) override {}
    void ResetClipRectangle() override {}
    bool GetClipRectangle(gui::Rectangle &) const override { return false; }
    void GetRendererParams(RendererParams &) const override {}
    bool IsDrawing() const override { return true; }
    void Begin() override {}
    void End() override {}
    void Flush() override {}
    void BeginInterleaved() override {}
    void EndInterleaved() override {}
    void SetDepthParams(DepthParams const &) override {}
    void GetDepthParams(DepthParams &) override {}
    void SetTransform(mat4 const &) override {}
    void GetTransform(mat4 &) override {}
    void DrawPrimitive(gui::Texture const &, gui::VertexBufferCT &, unsigned int, unsigned int, unsigned int) override
    {
    }
    void DrawPrimitive(gui::VertexBufferC &, unsigned int, unsigned int, unsigned int) override {}

protected:
    void ConnectVideoSubsystem(VideoSubsystem &) override {}
    void DisconnectVideoSubsystem() override {}
    void CreateVideoResources(bool) override {}
    void ReleaseVideoResources(bool) override {}

private:
    std::shared_ptr<int> token_ = std::make_shared<int>();
};

/// Video renderer with a recording GUI renderer.
class RecordingRenderer final : public VideoRenderer
{
public:
    RecordingRenderer() { AttachGUIRenderer(*new RecordingGUIRenderer(*this)); }

    RecordingGUIRenderer &GetGUI() const { return static_cast<RecordingGUIRenderer &>(GetGUIRenderer()); }

    string GetVideoRendererInterfaceName() const override { return "recording"; }
    bool IsCompatibleWith(VideoSubsystem const &) const override { return true; }
};

} // namespace quillmarsh::tests

#endif
