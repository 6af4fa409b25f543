// Video renderer without a device, whose GUI renderer keeps what is loaded into its textures.
#ifndef QUILLMARSH_TESTS_SUPPORT_RECORDING_RENDERER_H
#define QUILLMARSH_TESTS_SUPPORT_RECORDING_RENDERER_H

#include <quillmarsh/framework/videorenderer.h>
#include <quillmarsh/gui/gui_fonts.h>
#include <quillmarsh/gui/gui_renderer.h>

#include "tests/support/recording_textures.h"

#include <sstream>

namespace quillmarsh::tests
{

/// Creates recording textures, and keeps the last text and a record of what is drawn. It draws nothing.
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
    bool managedOnly = false;
    bool isDrawing = false;
    /// Beginnings, ends and primitives, these with the origin of the transform: "colored @10,20".
    std::vector<string> calls;
    /// The primitives that were drawn last.
    gui::VertexBufferC colored;
    gui::VertexBufferCT textured;

    bool CreatesManagedResourcesOnly() const override { return managedOnly; }
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
    bool IsDrawing() const override { return isDrawing; }
    void Begin() override
    {
        isDrawing = true;
        calls.emplace_back("begin");
    }
    void End() override
    {
        isDrawing = false;
        calls.emplace_back("end");
    }
    void Flush() override {}
    void BeginInterleaved() override {}
    void EndInterleaved() override {}
    void SetDepthParams(DepthParams const &) override {}
    void GetDepthParams(DepthParams &) override {}
    void SetTransform(mat4 const &transform) override { transform_ = transform; }
    void GetTransform(mat4 &transform) override { transform = transform_; }
    void DrawPrimitive(gui::Texture const &, gui::VertexBufferCT &vertices, unsigned int, unsigned int,
                       unsigned int) override
    {
        textured = vertices;
        Record("textured");
    }
    void DrawPrimitive(gui::VertexBufferC &vertices, unsigned int, unsigned int, unsigned int) override
    {
        colored = vertices;
        Record("colored");
    }

protected:
    void ConnectVideoSubsystem(VideoSubsystem &) override {}
    void DisconnectVideoSubsystem() override {}
    void CreateVideoResources(bool) override {}
    void ReleaseVideoResources(bool) override {}

private:
    void Record(char const *what)
    {
        std::ostringstream line;
        line << what << " @" << transform_[3][0] << ',' << transform_[3][1];
        calls.push_back(line.str());
    }

    mat4 transform_ = mat4::IDENTITY;
    std::shared_ptr<int> token_ = std::make_shared<int>();
};

/// Video renderer with a recording GUI renderer.
class RecordingRenderer final : public VideoRenderer
{
public:
    explicit RecordingRenderer(bool managedOnly = false)
    {
        AttachGUIRenderer(*new RecordingGUIRenderer(*this));
        GetGUI().managedOnly = managedOnly;
    }

    RecordingGUIRenderer &GetGUI() const { return static_cast<RecordingGUIRenderer &>(GetGUIRenderer()); }

    string GetVideoRendererInterfaceName() const override { return "recording"; }
    bool IsCompatibleWith(VideoSubsystem const &) const override { return true; }
};

} // namespace quillmarsh::tests

#endif
