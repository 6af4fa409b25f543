// Shaders: the looks of components.
#ifndef QUILLMARSH_GUI_GUI_SHADERS_H
#define QUILLMARSH_GUI_GUI_SHADERS_H

#include <quillmarsh/gui/gui_drawparams.h>
#include <quillmarsh/gui/gui_messages.h>
#include <quillmarsh/gui/gui_videoresource.h>

namespace quillmarsh::gui
{

class Component;
class Font;
class Renderer;

/// Look of components: draws them, and may decide on their shape and their areas. One shader serves any number of
/// components, which know it by its name.
///
/// Made by plain `new`, while the manager exists. It registers itself with the manager, which owns it from then on; it
/// may also be deleted directly. Frame thread only.
class QUILLMARSH_API BaseShader : public VideoResourceUser
{
public:
    explicit BaseShader(string const &name);
    ~BaseShader() override;
    BaseShader(BaseShader const &) = delete;
    BaseShader &operator=(BaseShader const &) = delete;

    /// Looks up the font. Returns false if it is missing; true if its name is empty.
    bool CacheFontHandles(Manager &manager) override;

    /// Called in each frame for a shader that registered by Manager::TimeNotifyRegister(). By default it does nothing.
    virtual void OnTimeDelta(double seconds);
    /// Draws a component with its origin at (0, 0).
    virtual void DrawComponent(Component &component, Renderer &renderer) const = 0;
    /// Tells whether a point inside the component's own shape hits it, as by default. `position` is relative to the
    /// component's absolute position.
    virtual bool HitTest(Component const &component, vec2 const &position) const;
    /// Returns the area at a point, by default the one that the component gives.
    virtual eCommandArea HitTestCommandArea(eCommandArea area, vec2 const &position) const;

    string const &GetName() const { return name_; }
    /// Sets the name; components look their shaders up again at the next synchronisation.
    void SetName(string const &name);

    /// @name Text
    /// @{

    /// Returns font name and default metrics: "std/default".
    static TextAttributes DefaultTextAttributes();
    TextAttributes const &GetTextAttributes() const { return textAttributes_; }
    /// Sets font and metrics; the font is looked up at the next synchronisation.
    void SetTextAttributes(TextAttributes const &attributes);
    /// Returns the font; null before it was looked up, or if there is none.
    Font const *GetFont() const { return font_; }
    TextMetricsL const &GetTextMetricsL() const { return textAttributes_.metrics; }
    /// Returns the metrics with another height in pixels and another line spacing.
    TextMetricsL GetTextMetricsL(float height, float lineSpacing) const;
    /// @}

protected:
    /// Returns the metrics with another height and line spacing, in a cache. Valid until the next call.
    TextMetricsL const &GetTextMetricsLCache(float height, float lineSpacing) const;

private:
    string name_;
    TextAttributes textAttributes_ = DefaultTextAttributes();
    Font const *font_ = nullptr;
    mutable TextMetricsL textMetricsCache_;
};

} // namespace quillmarsh::gui

#endif
