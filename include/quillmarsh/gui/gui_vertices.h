// Vertices that the GUI draws, and arrays of them.
#ifndef QUILLMARSH_GUI_GUI_VERTICES_H
#define QUILLMARSH_GUI_GUI_VERTICES_H

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/mathtools/color4b.h>
#include <quillmarsh/mathtools/vector2.h>
#include <quillmarsh/mathtools/vector3.h>

#include <algorithm>

namespace quillmarsh::gui
{

/// Vertex with a colour.
struct VertexC
{
    vec3 position;
    color4b color;

    /// Leaves the fields unset.
    VertexC() = default;
    constexpr VertexC(vec3 const &newPosition, color4b newColor) : position(newPosition), color(newColor) {}
};

/// Vertex with a colour and a place in a texture.
struct VertexCT
{
    vec3 position;
    color4b color;
    vec2 texCoord;

    /// Leaves the fields unset.
    VertexCT() = default;
    constexpr VertexCT(vec3 const &newPosition, color4b newColor, vec2 const &newTexCoord)
        : position(newPosition),
          color(newColor),
          texCoord(newTexCoord)
    {
    }
};

/// Array of vertices. A copy shares the vertices with its original, until one of the two is resized to more vertices
/// than it has room for. Frame thread only.
template<typename Vertex>
class VertexBuffer
{
public:
    /// The vertices are not set.
    explicit VertexBuffer(unsigned int count = 0) { Resize(count); }

    unsigned int GetCount() const { return count_; }
    /// Changes the number of vertices. The first ones keep their values; new ones are not set.
    void Resize(unsigned int count);

    /// @name A vertex by its index
    /// Only a build with assertions checks the index.
    /// @{
    Vertex &operator[](unsigned int index) { return At(index); }
    Vertex const &operator[](unsigned int index) const { return At(index); }
    /// @}

    /// Returns the first vertex; the others follow it. Null in an empty array that was never larger.
    Vertex *GetVertices() { return vertices_.get(); }
    Vertex const *GetVertices() const { return vertices_.get(); }

private:
    Vertex &At(unsigned int index) const
    {
        QUILLMARSH_ASSERT(index < count_, "Index out of range.");
        return vertices_[index];
    }

    unsigned int count_ = 0;
    unsigned int capacity_ = 0;
    std::shared_ptr<Vertex[]> vertices_;
};

template<typename Vertex>
void VertexBuffer<Vertex>::Resize(unsigned int count)
{
    if (count > capacity_)
    {
        std::shared_ptr<Vertex[]> vertices(new Vertex[count]);
        std::copy_n(vertices_.get(), count_, vertices.get());
        vertices_ = std::move(vertices);
        capacity_ = count;
    }
    count_ = count;
}

using VertexBufferC = VertexBuffer<VertexC>;
using VertexBufferCT = VertexBuffer<VertexCT>;

} // namespace quillmarsh::gui

#endif
