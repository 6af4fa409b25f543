// Actions of a window manager and of other programs on a display. Include it before headers that X11's macros conflict
// with.
#ifndef QUILLMARSH_TESTS_SUPPORT_X11_CLIENT_LINUX_H
#define QUILLMARSH_TESTS_SUPPORT_X11_CLIENT_LINUX_H

#include "tests/support/waiting.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <memory>
#include <string>
#undef Bool
#undef None
#undef Status

namespace quillmarsh::tests
{

/// Another program on the display.
class X11Client
{
public:
    explicit X11Client(std::string const &displayName) : display_(XOpenDisplay(displayName.c_str()), &XCloseDisplay) {}

    /// Presses the close button of the window with this title, once it exists.
    bool PressCloseButton(std::string const &title)
    {
        Window window = 0;
        bool const isThere = WaitUntil([&] { return (window = FindWindow(title)) != 0; });
        XEvent event = {};
        event.xclient.type = ClientMessage;
        event.xclient.window = window;
        event.xclient.message_type = GetAtom("WM_PROTOCOLS");
        event.xclient.format = 32;
        event.xclient.data.l[0] = static_cast<long>(GetAtom("WM_DELETE_WINDOW"));
        if (isThere)
            XSendEvent(display_.get(), window, False, NoEventMask, &event);
        XSync(display_.get(), False);
        return isThere;
    }

    /// Takes over the clipboard, as a program that copies does.
    void TakeClipboard()
    {
        Window const window = XCreateSimpleWindow(display_.get(), GetRoot(), 0, 0, 1, 1, 0, 0, 0);
        XSetSelectionOwner(display_.get(), GetAtom("CLIPBOARD"), window, CurrentTime);
        XSync(display_.get(), False);
    }

    /// Returns the colour of a pixel of the display, as red, green and blue in 24 bits.
    unsigned long GetPixel(int x, int y)
    {
        std::unique_ptr<XImage, int (*)(XImage *)> const image(
            XGetImage(display_.get(), GetRoot(), x, y, 1, 1, AllPlanes, ZPixmap),
            [](XImage *each) { return XDestroyImage(each); });
        return image ? XGetPixel(image.get(), 0, 0) & 0xffffff : 0;
    }

private:
    Window GetRoot() const { return DefaultRootWindow(display_.get()); }
    Atom GetAtom(char const *name) const { return XInternAtom(display_.get(), name, False); }

    /// Finds a top-level window; without a window manager, windows have no frames around them.
    Window FindWindow(std::string const &title) const
    {
        Window root, parent, *children = nullptr;
        unsigned int count = 0;
        XQueryTree(display_.get(), GetRoot(), &root, &parent, &children, &count);
        Window found = 0;
        for (unsigned int i = 0; i < count; ++i)
        {
            char *name = nullptr;
            if (XFetchName(display_.get(), children[i], &name) != 0 && name == title)
                found = children[i];
            XFree(name);
        }
        XFree(children);
        return found;
    }

    std::unique_ptr<Display, decltype(&XCloseDisplay)> display_;
};

} // namespace quillmarsh::tests

#endif
