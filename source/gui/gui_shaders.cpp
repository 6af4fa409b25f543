#include <quillmarsh/gui/gui_shaders.h>

#include <quillmarsh/gui/gui_fonts.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/gui/gui_standardresources.h>

namespace quillmarsh::gui
{

BaseShader::BaseShader(string const &name) : name_(name)
{
    if (Manager *const manager = Manager::InstancePtr())
        manager->NotifyObjectCreateDelete(*this, true);
}

BaseShader::~BaseShader()
{
    if (Manager *const manager = Manager::InstancePtr())
        manager->NotifyObjectCreateDelete(*this, false);
}

bool BaseShader::CacheFontHandles(Manager &manager)
{
    font_ = manager.GetFont(textAttributes_.fontName);
    return font_ != nullptr || textAttributes_.fontName.empty();
}

void BaseShader::OnTimeDelta(double) {}

bool BaseShader::HitTest(Component const &, vec2 const &) const
{
    return true;
}

eCommandArea BaseShader::HitTestCommandArea(eCommandArea area, vec2 const &) const
{
    return area;
}

void BaseShader::SetName(string const &name)
{
    name_ = name;
    if (Manager *const manager = Manager::InstancePtr())
        manager->NotifyNameChanged(*this);
}

TextAttributes BaseShader::DefaultTextAttributes()
{
    TextAttributes attributes;
    attributes.fontName = std_fonts::FontName_Default;
    return attributes;
}

void BaseShader::SetTextAttributes(TextAttributes const &attributes)
{
    textAttributes_ = attributes;
    textMetricsCache_ = attributes.metrics;
    RequestFontRecache();
}

TextMetricsL BaseShader::GetTextMetricsL(float height, float lineSpacing) const
{
    TextMetricsL metrics = textAttributes_.metrics;
    metrics.Height = height;
    metrics.LineSpacing = lineSpacing;
    return metrics;
}

TextMetricsL const &BaseShader::GetTextMetricsLCache(float height, float lineSpacing) const
{
    textMetricsCache_.Height = height;
    textMetricsCache_.LineSpacing = lineSpacing;
    return textMetricsCache_;
}

} // namespace quillmarsh::gui
