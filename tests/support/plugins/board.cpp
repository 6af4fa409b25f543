// Application with a small GUI that tests drive: a button, a disabled one, and a field. It prints what is done to them.
#include "trace.h"

#include <quillmarsh/framework/application.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/framework/pluginlibrary.h>
#include <quillmarsh/gui/gui_buttons.h>
#include <quillmarsh/widgets/textencoding.h>

#include <ostream>
#include <utility>

namespace
{

using namespace quillmarsh;

void Place(gui::Component &component, vec2 const &position, vec2 const &size)
{
    component.SetPosition(position);
    component.SetSize(size);
}

class Key : public gui::Button
{
public:
    Key(gui::Component &parent, string caption, vec2 const &position)
        : Button(&parent, this, 1, e_style_push, 0),
          caption_(std::move(caption))
    {
        Place(*this, position, {80, 20});
    }

    string GetCaption() const override { return caption_; }
    bool OnCommand(unsigned int) override
    {
        GetConOut() << "<" << caption_ << ">" << std::endl;
        return true;
    }

private:
    string caption_;
};

class Field : public gui::Component
{
public:
    explicit Field(gui::Component &parent)
    {
        AttachTo(parent);
        SetCanFocus(true);
        Place(*this, {10, 50}, {200, 20});
    }

    string GetCaption() const override { return widgets::FromGlyphs(text_); }
    bool OnKeyboardQueryFocus(bool, eMouseButton, bool &want, bool &needCharacters) override
    {
        want = needCharacters = true;
        return true;
    }
    using Component::OnKeyboardQueryFocus;
    bool OnKeyboardKey(bool down, eKey key, unsigned int, char character) override
    {
        if (down && character != 0)
            text_ += character;
        if (down && key == e_key_enter)
            GetConOut() << "<" << text_ << ">" << std::endl;
        return true;
    }
    using Component::OnKeyboardKey;

private:
    string text_;
};

class Board : public gui::Component
{
public:
    Board()
    {
        Place(*this, {20, 20}, {300, 200});
        SetCanFocus(true);
        new Key(*this, "Open", {10, 10});
        (new Key(*this, "Close", {110, 10}))->SetEnabled(false);
        new Field(*this);
    }
    string GetCaption() const override { return "Board"; }
};

class BoardApplication : public Application
{
    void Initialize() override { new Board; }
    bool ConfirmHumanInterfaceDevice(HumanInterfaceDevice &) override
    {
        return tests::GetSetting("BOARD_REFUSE").empty();
    }
};

class BoardDescriptor : public ApplicationPluginDescriptor
{
public:
    BoardDescriptor()
        : ApplicationPluginDescriptor(
              PluginInfo(library_info::GetHeaderVersion(), e_plugin_application, "board", PluginVersion(), "", "", ""))
    {
    }
    Application *CreateApplication() override { return new BoardApplication; }
};

} // namespace

QUILLMARSH_PLUGIN_LIBRARY(BoardDescriptor)
