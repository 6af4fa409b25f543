#include <quillmarsh/widgets/measures.h>

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_fonts.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/gui/gui_shaders.h>

#include <algorithm>
#include <cmath>

namespace quillmarsh::widgets
{

namespace
{

float s_scale = 1;

constexpr float s_minScale = 0.5F;
constexpr float s_maxScale = 4;

/// Height of a text without a shader, in units.
constexpr float s_plainTextHeight = 16;

/// Part of a text that stays where it is.
struct Piece
{
    char const *glyphs;
    unsigned int length;

    Piece(string const &text, std::size_t begin, std::size_t end)
        : glyphs(text.data() + begin),
          length(static_cast<unsigned int>(end - begin))
    {
    }
};

/// Font and metrics of a component's texts.
class Ruler
{
public:
    explicit Ruler(gui::Component const &component)
    {
        if (gui::BaseShader const *const shader = component.GetBaseShader())
        {
            font_ = shader->GetFont();
            metrics_ = shader->GetTextMetricsL();
        }
        else
        {
            metrics_.Height = Measures::Pixels(s_plainTextHeight);
        }
    }

    float GetHeight() const { return std::ceil(metrics_.Height); }
    float GetLineHeight() const { return std::ceil(metrics_.AbsLineHeight()); }

    float CalcWidth(Piece const &piece) const
    {
        if (font_ != nullptr)
            return font_->CalcTextWidth(metrics_, piece.length, piece.glyphs);
        return static_cast<float>(piece.length) * GetPlainGlyphWidth();
    }

    /// Returns how many glyphs at the beginning of the piece are at most so wide.
    unsigned int CountFitting(Piece const &piece, float width) const
    {
        if (!(width > 0))
            return 0;
        if (font_ == nullptr)
        {
            float const count = std::floor(width / GetPlainGlyphWidth());
            return count < static_cast<float>(piece.length) ? static_cast<unsigned int>(count) : piece.length;
        }
        unsigned int count = 0;
        float fittingWidth = 0;
        font_->CalcMaxVisibleText(count, fittingWidth, width, metrics_, piece.length, piece.glyphs);
        return std::min(count, piece.length);
    }

private:
    float GetPlainGlyphWidth() const { return metrics_.Height * 0.5F; }

    gui::Font const *font_ = nullptr;
    gui::TextMetricsL metrics_;
};

/// Calls for begin and end of each line.
template<typename Call>
void ForEachLine(string const &text, Call &&call)
{
    std::size_t begin = 0;
    while (true)
    {
        std::size_t const end = std::min(text.find('\n', begin), text.size());
        call(begin, end);
        if (end == text.size())
            return;
        begin = end + 1;
    }
}

/// Breaks one line, and appends what comes of it.
void AppendWrapped(string &wrapped, Ruler const &ruler, string const &text, std::size_t begin, std::size_t end,
                   float width)
{
    while (true)
    {
        std::size_t const fitting = std::max(ruler.CountFitting(Piece(text, begin, end), width), 1U);
        if (begin + fitting >= end)
            break;
        // A blank that itself is beyond the width may still be the place of the break.
        std::size_t const firstWord = std::min(text.find_first_not_of(' ', begin), end);
        std::size_t const blank = text.rfind(' ', begin + fitting);
        bool const isBetweenWords = blank != string::npos && blank > firstWord;
        std::size_t const lineEnd = isBetweenWords ? text.find_last_not_of(' ', blank) + 1 : begin + fitting;
        wrapped.append(text, begin, lineEnd - begin);
        begin = isBetweenWords ? std::min(text.find_first_not_of(' ', blank), end) : lineEnd;
        if (begin == end)
            return;
        wrapped += '\n';
    }
    wrapped.append(text, begin, end - begin);
}

} // namespace

float Measures::GetScale()
{
    return s_scale;
}

void Measures::SetScale(float scale)
{
    float const limited = std::clamp(scale, s_minScale, s_maxScale);
    if (std::isnan(scale) || limited == s_scale)
        return;
    s_scale = limited;
    if (!gui::Manager::IsCreated())
        return;
    gui::Manager &manager = gui::Manager::Instance();
    for (unsigned int i = 0; i < manager.GetNumTopLevelComponents(); ++i)
        manager.GetTopLevelComponent(i)->ReportDirtyGeometry();
}

float Measures::Pixels(float units)
{
    float const pixels = std::round(units * s_scale);
    return units > 0 ? std::max(pixels, 1.0F) : pixels;
}

float GetTextHeight(gui::Component const &component)
{
    return Ruler(component).GetHeight();
}

float GetLineHeight(gui::Component const &component)
{
    return Ruler(component).GetLineHeight();
}

float CalcTextWidth(gui::Component const &component, string const &text)
{
    return std::ceil(Ruler(component).CalcWidth(Piece(text, 0, text.size())));
}

vec2 CalcTextSize(gui::Component const &component, string const &text)
{
    Ruler const ruler(component);
    float width = 0;
    float height = ruler.GetHeight();
    ForEachLine(text,
                [&](std::size_t begin, std::size_t end)
                {
                    width = std::max(width, ruler.CalcWidth(Piece(text, begin, end)));
                    height += begin > 0 ? ruler.GetLineHeight() : 0;
                });
    return {std::ceil(width), height};
}

string WrapText(gui::Component const &component, string const &text, float width)
{
    if (std::isnan(width))
        return text;
    Ruler const ruler(component);
    string wrapped;
    wrapped.reserve(text.size());
    ForEachLine(text,
                [&](std::size_t begin, std::size_t end)
                {
                    if (begin > 0)
                        wrapped += '\n';
                    // Widths of lines are rounded up.
                    AppendWrapped(wrapped, ruler, text, begin, end, std::floor(width));
                });
    return wrapped;
}

string ShortenText(gui::Component const &component, string const &line, float width)
{
    Ruler const ruler(component);
    if (ruler.CalcWidth(Piece(line, 0, line.size())) <= width)
        return line;
    static constexpr char s_dots[] = "...";
    unsigned int length = ruler.CountFitting(Piece(line, 0, line.size()), width);
    while (true)
    {
        string shortened = line.substr(0, length) + s_dots;
        if (ruler.CalcWidth(Piece(shortened, 0, shortened.size())) <= width)
            return shortened;
        if (length == 0)
            return {};
        --length;
    }
}

unsigned int FindTextPosition(gui::Component const &component, string const &line, float x)
{
    Ruler const ruler(component);
    unsigned int const place = ruler.CountFitting(Piece(line, 0, line.size()), x);
    if (place == line.size() || !(x > 0))
        return place;
    float const left = ruler.CalcWidth(Piece(line, 0, place));
    float const right = ruler.CalcWidth(Piece(line, 0, place + 1));
    return x - left < right - x ? place : place + 1;
}

} // namespace quillmarsh::widgets
