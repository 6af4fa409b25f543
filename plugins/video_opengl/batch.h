// Gathers what the GUI draws, and draws it in as few steps as its changes of state allow.
#ifndef QUILLMARSH_PLUGINS_VIDEO_OPENGL_BATCH_H
#define QUILLMARSH_PLUGINS_VIDEO_OPENGL_BATCH_H

#include "program.h"
#include "textures.h"

#include <quillmarsh/gui/gui_vertices.h>

#include <optional>

namespace video_opengl
{

/// Rectangle in pixels of the target, with the origin at the lower left, as OpenGL counts.
struct PixelArea
{
    GLint x = 0;
    GLint y = 0;
    GLsizei width = 0;
    GLsizei height = 0;

    bool operator==(PixelArea const &other) const = default;
};

/// Everything is a quad of four vertices, so that one list of indices, which never changes, serves all: the triangles
/// of the corners 0, 1, 2 and 0, 2, 3. A single triangle repeats its last corner.
///
/// Quads are written into memory of our own, which one call passes to the driver; each change of texture or clipping
/// begins a new step.
class Batch : NoCopy
{
public:
    /// Makes buffers and program. Throws VideoRendererException.
    explicit Batch(std::shared_ptr<Device> device);

    Device &GetDevice() const { return *device_; }
    Program const &GetProgram() const { return program_; }

    /// @name State of what follows
    /// @{

    /// Sets the texture, and returns true if it is another one than before. The texture tells the device before it
    /// changes or ends, so that what was gathered with it is drawn first.
    bool SelectTexture(TextureObject &texture, GLint minFilter)
    {
        if (&texture == texture_ && minFilter == minFilter_)
            return false;
        ChangeTexture(texture, minFilter);
        return true;
    }
    /// Sets the pixels that may change; all without an area.
    void SetClipArea(std::optional<PixelArea> const &area);
    /// @}

    /// Returns room for the vertices of quads, which the caller fills. Coloured quads have the coordinate s_untextured;
    /// they go with any texture.
    gui::VertexCT *AddQuads(unsigned int count)
    {
        std::size_t const numVertices = std::size_t{count} * 4;
        if (numVertices > static_cast<std::size_t>(end_ - next_))
            Grow(numVertices);
        gui::VertexCT *const vertices = next_;
        next_ += numVertices;
        return vertices;
    }

    /// True if there is something to draw.
    bool IsGathering() const { return next_ != vertices_.data(); }
    /// Draws what was gathered, in OpenGL's state for it: BindState() was called. A closed device drops it.
    void Draw();
    /// Selects buffers and program in OpenGL.
    void BindState() const;

    /// Returns the number of draw calls since the beginning.
    unsigned int GetNumDrawCalls() const { return numDrawCalls_; }

private:
    /// Quads with one state.
    struct Step
    {
        std::size_t firstVertex;
        TextureObject *texture;
        GLint minFilter;
        std::optional<PixelArea> clipArea;
    };

    void ChangeTexture(TextureObject &texture, GLint minFilter);
    void BeginStep();
    void Grow(std::size_t numVertices);
    void PassVertices();
    void MakeIndices(std::size_t numQuads);
    void DrawStep(Step const &step, std::size_t numVertices);

    std::shared_ptr<Device> device_;
    Program program_;
    DeviceObject vertexArray_;
    DeviceObject vertexBuffer_;
    DeviceObject indexBuffer_;
    /// Selected while there is no texture: some drivers warn otherwise.
    OpenGLTexture2D noTexture_;
    std::size_t numIndexedQuads_ = 0;

    std::vector<gui::VertexCT> vertices_;
    gui::VertexCT *next_ = nullptr;
    gui::VertexCT *end_ = nullptr;
    std::vector<Step> steps_;

    TextureObject *texture_ = nullptr;
    GLint minFilter_ = GL_LINEAR;
    std::optional<PixelArea> clipArea_;
    unsigned int numDrawCalls_ = 0;
};

} // namespace video_opengl

#endif
