#include "batch.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace video_opengl
{
namespace
{

using gui::VertexCT;

constexpr std::size_t s_numVerticesAtFirst = 4096;
constexpr std::size_t s_numIndicesOfQuad = 6;

void const *ToOffset(std::size_t offset)
{
    return reinterpret_cast<void const *>(offset);
}

} // namespace

Batch::Batch(std::shared_ptr<Device> device)
    : device_(std::move(device)),
      program_(device_),
      vertexArray_(device_, eObject::e_vertexArray),
      vertexBuffer_(device_, eObject::e_buffer),
      indexBuffer_(device_, eObject::e_buffer),
      noTexture_(device_, *FindTextureFormat(e_format_A8R8G8B8), false, 1, 1)
{
    noTexture_.LoadLevels(255);
    OpenGLFunctions const &gl = device_->gl;
    gl.BindVertexArray(vertexArray_.Get());
    gl.BindBuffer(GL_ARRAY_BUFFER, vertexBuffer_.Get());
    gl.BindBuffer(GL_ELEMENT_ARRAY_BUFFER, indexBuffer_.Get());
    constexpr auto size = static_cast<GLsizei>(sizeof(VertexCT));
    gl.EnableVertexAttribArray(e_input_position);
    gl.VertexAttribPointer(e_input_position, 3, GL_FLOAT, GL_FALSE, size, ToOffset(offsetof(VertexCT, position)));
    // Colours have the order blue, green, red, alpha in memory.
    gl.EnableVertexAttribArray(e_input_color);
    gl.VertexAttribPointer(e_input_color, GL_BGRA, GL_UNSIGNED_BYTE, GL_TRUE, size,
                           ToOffset(offsetof(VertexCT, color)));
    gl.EnableVertexAttribArray(e_input_coordinate);
    gl.VertexAttribPointer(e_input_coordinate, 2, GL_FLOAT, GL_FALSE, size, ToOffset(offsetof(VertexCT, texCoord)));
    gl.BindVertexArray(0);
    gl.BindBuffer(GL_ARRAY_BUFFER, 0);
    Grow(s_numVerticesAtFirst);
    BeginStep();
}

void Batch::ChangeTexture(TextureObject &texture, GLint minFilter)
{
    // Coloured quads so far go along with the first texture.
    bool const needsStep = std::exchange(texture_, &texture) != nullptr;
    minFilter_ = minFilter;
    if (needsStep)
        BeginStep();
    else
    {
        steps_.back().texture = texture_;
        steps_.back().minFilter = minFilter_;
    }
}

void Batch::SetClipArea(std::optional<PixelArea> const &area)
{
    if (clipArea_ == area)
        return;
    clipArea_ = area;
    BeginStep();
}

void Batch::BeginStep()
{
    auto const firstVertex = static_cast<std::size_t>(next_ - vertices_.data());
    // A step without quads changes into the new one.
    if (!steps_.empty() && steps_.back().firstVertex == firstVertex)
        steps_.pop_back();
    steps_.push_back({firstVertex, texture_, minFilter_, clipArea_});
}

void Batch::Grow(std::size_t numVertices)
{
    auto const numUsed = static_cast<std::size_t>(next_ - vertices_.data());
    vertices_.resize(std::max(numUsed + numVertices, vertices_.size() * 2));
    next_ = vertices_.data() + numUsed;
    end_ = vertices_.data() + vertices_.size();
}

void Batch::BindState() const
{
    OpenGLFunctions const &gl = device_->gl;
    gl.BindVertexArray(vertexArray_.Get());
    gl.ActiveTexture(GL_TEXTURE0);
    gl.BindSampler(0, 0);
    program_.Use();
}

void Batch::Draw()
{
    if (IsGathering() && device_->IsOpen())
    {
        PassVertices();
        auto const numVertices = static_cast<std::size_t>(next_ - vertices_.data());
        for (std::size_t i = 0; i < steps_.size(); ++i)
        {
            std::size_t const end = i + 1 < steps_.size() ? steps_[i + 1].firstVertex : numVertices;
            DrawStep(steps_[i], end - steps_[i].firstVertex);
        }
    }
    next_ = vertices_.data();
    steps_.clear();
    texture_ = nullptr;
    BeginStep();
}

void Batch::PassVertices()
{
    OpenGLFunctions const &gl = device_->gl;
    auto const numVertices = static_cast<std::size_t>(next_ - vertices_.data());
    MakeIndices(numVertices / 4);
    gl.BindBuffer(GL_ARRAY_BUFFER, vertexBuffer_.Get());
    // New storage each time: the driver need not wait until the old one has been drawn.
    gl.BufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(numVertices * sizeof(VertexCT)), vertices_.data(),
                  GL_STREAM_DRAW);
    gl.BindBuffer(GL_ARRAY_BUFFER, 0);
}

void Batch::MakeIndices(std::size_t numQuads)
{
    if (numQuads <= numIndexedQuads_)
        return;
    numIndexedQuads_ = std::max(numQuads, vertices_.size() / 4);
    std::vector<GLuint> indices;
    indices.reserve(numIndexedQuads_ * s_numIndicesOfQuad);
    for (std::size_t quad = 0; quad < numIndexedQuads_; ++quad)
    {
        auto const first = static_cast<GLuint>(quad * 4);
        for (GLuint const corner : {0u, 1u, 2u, 0u, 2u, 3u})
            indices.push_back(first + corner);
    }
    device_->gl.BufferData(GL_ELEMENT_ARRAY_BUFFER, static_cast<GLsizeiptr>(indices.size() * sizeof(GLuint)),
                           indices.data(), GL_STATIC_DRAW);
}

void Batch::DrawStep(Step const &step, std::size_t numVertices)
{
    bool const isEmpty = step.clipArea && (step.clipArea->width == 0 || step.clipArea->height == 0);
    if (numVertices == 0 || isEmpty)
        return;
    OpenGLFunctions const &gl = device_->gl;
    if (step.clipArea)
    {
        gl.Enable(GL_SCISSOR_TEST);
        gl.Scissor(step.clipArea->x, step.clipArea->y, step.clipArea->width, step.clipArea->height);
    }
    else
        gl.Disable(GL_SCISSOR_TEST);
    TextureObject &texture = step.texture != nullptr ? *step.texture : noTexture_.GetObject();
    gl.BindTexture(GL_TEXTURE_2D, texture.GetName());
    texture.SetMinFilter(step.minFilter);
    std::size_t const firstIndex = step.firstVertex / 4 * s_numIndicesOfQuad;
    gl.DrawElements(GL_TRIANGLES, static_cast<GLsizei>(numVertices / 4 * s_numIndicesOfQuad), GL_UNSIGNED_INT,
                    ToOffset(firstIndex * sizeof(GLuint)));
    ++numDrawCalls_;
}

} // namespace video_opengl
