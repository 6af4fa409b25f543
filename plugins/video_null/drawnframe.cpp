#include "drawnframe.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/mathtools/vector4.h>

#include <algorithm>
#include <iterator>
#include <ostream>

namespace video_null
{

namespace
{

string MakeText(vec2 const &point)
{
    return "(" + MakeString(point.x) + ", " + MakeString(point.y) + ")";
}

string MakeText(color4b color)
{
    return "(" + MakeString(unsigned(color.r)) + ", " + MakeString(unsigned(color.g)) + ", " +
           MakeString(unsigned(color.b)) + ", " + MakeString(unsigned(color.a)) + ")";
}

char const *GetPrimitiveName(unsigned int primitive)
{
    static constexpr char const *s_szNames[] = {"triangle list", "triangle strip", "triangle fan"};
    return primitive < std::size(s_szNames) ? s_szNames[primitive] : "unknown primitive";
}

vec3 Transformed(mat4 const &m, vec3 const &v)
{
    vec4 const sum = m.Row0() * v.x + m.Row1() * v.y + m.Row2() * v.z + m.Row3();
    return {sum.x, sum.y, sum.z};
}

} // namespace

void DrawnFrame::Clear()
{
    items.clear();
    vertices.clear();
    transforms.clear();
    clips.clear();
    characters.clear();
    texts.clear();
}

vec3 DrawnFrame::GetScreenPosition(DrawnItem const &item, std::size_t index) const
{
    vec3 const position = item.kind == eDrawn::e_text
                              ? vec3(texts[item.text].position.x, texts[item.text].position.y, 0)
                              : vertices[item.first + index].position;
    return Transformed(transforms[item.transform], position);
}

void DrawnFrame::Dump(ostream &out) const
{
    for (DrawnItem const &item : items)
    {
        vec3 low = GetScreenPosition(item, 0);
        if (item.kind == eDrawn::e_text)
        {
            out << "text '" << MakePrintable(GetText(item), false) << "' at " << MakeText(vec2(low)) << ", height "
                << MakeString(texts[item.text].metrics.Height) << ", colour " << MakeText(texts[item.text].color);
        }
        else
        {
            vec3 high = low;
            for (std::size_t index = 1; index < item.size; ++index)
            {
                vec3 const position = GetScreenPosition(item, index);
                low = {std::min(low.x, position.x), std::min(low.y, position.y), 0};
                high = {std::max(high.x, position.x), std::max(high.y, position.y), 0};
            }
            out << (item.kind == eDrawn::e_textured ? "textured " : "") << GetPrimitiveName(item.primitive) << " of "
                << MakeString(item.count) << " from " << MakeText(vec2(low)) << " to " << MakeText(vec2(high))
                << ", colour " << MakeText(vertices[item.first].color);
        }
        if (item.clip >= 0)
        {
            gui::Rectangle const &clip = clips[static_cast<std::size_t>(item.clip)];
            out << ", clipped from " << MakeText(vec2(clip.x, clip.y)) << " to "
                << MakeText(vec2(clip.x + clip.width, clip.y + clip.height));
        }
        out << std::endl;
    }
}

} // namespace video_null
