#include <quillmarsh/widgets/label.h>

#include <quillmarsh/widgets/textencoding.h>

namespace quillmarsh::widgets
{

Label::Label(gui::Component *parent, string const &text, string const &shaderName)
    : text_(text),
      glyphs_(ToGlyphs(text))
{
    SetGhost(true);
    SetShaderName(shaderName);
    if (parent != nullptr)
        AttachTo(*parent);
}

Label::~Label() = default;

void Label::SetText(string const &text)
{
    if (text == text_)
        return;
    text_ = text;
    glyphs_ = ToGlyphs(text);
    ReportDirtyGeometry();
}

void Label::SetWrapWidth(float units)
{
    wrapWidth_ = units > 0 ? units : 0;
    ReportDirtyGeometry();
}

void Label::SetFixedWidth(bool fixed)
{
    fixedWidth_ = fixed;
    ReportDirtyGeometry();
}

void Label::RecalcSize()
{
    if (fixedWidth_)
    {
        SetSizeY(GetTextHeight(*this));
        return;
    }
    shownGlyphs_ = wrapWidth_ > 0 ? WrapText(*this, glyphs_, Measures::Pixels(wrapWidth_)) : glyphs_;
    SetSize(CalcTextSize(*this, shownGlyphs_));
}

void Label::UpdateGeometryCache()
{
    if (!fixedWidth_)
        return;
    std::size_t const lineEnd = glyphs_.find('\n');
    bool const hasMoreLines = lineEnd != string::npos;
    string line = glyphs_.substr(0, lineEnd);
    if (hasMoreLines)
        line += "...";
    shownGlyphs_ = ShortenText(*this, line, GetSize().x);
}

Sign::Sign(gui::Component *parent, eMark mark, float size) : mark_(mark), sizeInUnits_(size)
{
    SetGhost(true);
    SetShaderName(ShaderName_Sign);
    if (parent != nullptr)
        AttachTo(*parent);
}

Sign::~Sign() = default;

void Sign::RecalcSize()
{
    float const size = Measures::Pixels(sizeInUnits_);
    SetSize(size, size);
}

} // namespace quillmarsh::widgets
