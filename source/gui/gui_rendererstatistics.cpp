#include <quillmarsh/gui/gui_renderer.h>

#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/basetools/texttools.h>

#include <algorithm>
#include <ostream>

namespace quillmarsh::gui
{

namespace
{

using Statistics = Renderer::Statistics;

/// Width of a label, in characters.
constexpr std::size_t s_labelWidth = 28;

#define QUILLMARSH_COUNTER(name)                                                                                       \
    {                                                                                                                  \
#name, &Statistics::name                                                                                       \
    }
constexpr Statistics::Counter s_counters[] = {
    QUILLMARSH_COUNTER(NumClearBuffers),
    QUILLMARSH_COUNTER(NumSetViewport),
    QUILLMARSH_COUNTER(NumBegin),
    QUILLMARSH_COUNTER(NumEnd),
    QUILLMARSH_COUNTER(NumBeginInterleaved),
    QUILLMARSH_COUNTER(NumEndInterleaved),
    QUILLMARSH_COUNTER(NumSetDepthParams),
    QUILLMARSH_COUNTER(NumSetTransform),
    QUILLMARSH_COUNTER(NumDrawPrimitiveColored),
    QUILLMARSH_COUNTER(NumDrawPrimitiveTextured),
    QUILLMARSH_COUNTER(NumDrawText),
    QUILLMARSH_COUNTER(NumDrawRectangleColored),
    QUILLMARSH_COUNTER(NumDrawRectangleTextured),
    QUILLMARSH_COUNTER(NumDrawRectangleFrameColored),
    QUILLMARSH_COUNTER(NumTextureChanges),
    QUILLMARSH_COUNTER(NumPrimitivesColored),
    QUILLMARSH_COUNTER(NumPrimitivesTextured),
    QUILLMARSH_COUNTER(NumTextGlyphs),
};
#undef QUILLMARSH_COUNTER

} // namespace

std::span<Renderer::Statistics::Counter const> Renderer::Statistics::GetCounters()
{
    return s_counters;
}

void Renderer::Statistics::Clear(unsigned int value)
{
    for (Counter const &counter : s_counters)
        this->*counter.value = value;
}

void Renderer::Statistics::Accum(Statistics const &other)
{
    for (Counter const &counter : s_counters)
        this->*counter.value += other.*counter.value;
}

void Renderer::Statistics::Average(Statistics const &sum, unsigned int count)
{
    for (Counter const &counter : s_counters)
        this->*counter.value = count != 0 ? sum.*counter.value / count : 0;
}

void Renderer::Statistics::Min(Statistics const &a, Statistics const &b)
{
    for (Counter const &counter : s_counters)
        this->*counter.value = std::min(a.*counter.value, b.*counter.value);
}

void Renderer::Statistics::Max(Statistics const &a, Statistics const &b)
{
    for (Counter const &counter : s_counters)
        this->*counter.value = std::max(a.*counter.value, b.*counter.value);
}

void Renderer::Statistics::Dump(ostream &out, unsigned int tabs) const
{
    for (Counter const &counter : s_counters)
    {
        string label = counter.name;
        label.resize(std::max(label.size(), s_labelWidth), '.');
        out << IndentEffector(tabs) << label << ": " << MakeString(this->*counter.value) << std::endl;
    }
}

} // namespace quillmarsh::gui
