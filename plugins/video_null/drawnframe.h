// What was drawn in a frame.
#ifndef QUILLMARSH_PLUGINS_VIDEO_NULL_DRAWNFRAME_H
#define QUILLMARSH_PLUGINS_VIDEO_NULL_DRAWNFRAME_H

#include <quillmarsh/gui/gui_renderer.h>

#include <vector>

namespace video_null
{

using namespace quillmarsh;

/// Kind of a DrawnItem.
enum class eDrawn
{
    e_colored,
    e_textured,
    e_text
};

/// One draw, which refers to the arrays of its DrawnFrame.
struct DrawnItem
{
    eDrawn kind;
    /// Texture or font, to be compared only: it may have been deleted since. Null for e_colored.
    void const *texture;
    /// A gui::Renderer::ePrimitive, and the number of its triangles. For a text, the number of its glyphs.
    unsigned int primitive;
    unsigned int count;
    /// First vertex and number of vertices; for a text, its characters.
    std::size_t first;
    std::size_t size;
    /// Place in `transforms`.
    std::size_t transform;
    /// Place in `clips`; -1 for none.
    int clip;
    /// Place in `texts`.
    std::size_t text;
};

/// Everything that was drawn between Begin() and End(), in its order.
struct DrawnFrame
{
    std::vector<DrawnItem> items;
    /// Vertices as they were given; those of e_colored have no place in a texture.
    std::vector<gui::VertexCT> vertices;
    std::vector<mat4> transforms;
    std::vector<gui::Rectangle> clips;
    string characters;
    std::vector<gui::DrawTextParams> texts;

    /// Empties the arrays, which keep their storage.
    void Clear();
    /// Returns the characters of a text.
    string GetText(DrawnItem const &item) const { return characters.substr(item.first, item.size); }
    /// Returns the place of a vertex on the screen. `index` counts from the first vertex of the item.
    vec3 GetScreenPosition(DrawnItem const &item, std::size_t index) const;
    /// Prints a line for each item: what it is, its bounds on the screen, the colour of its first vertex, and its clip
    /// rectangle.
    void Dump(ostream &out) const;
};

} // namespace video_null

#endif
