// Actions of a window manager and of other programs on a display. Include it before headers that X11's macros conflict
// with.
#ifndef QUILLMARSH_TESTS_SUPPORT_X11_CLIENT_LINUX_H
#define QUILLMARSH_TESTS_SUPPORT_X11_CLIENT_LINUX_H

#include "tests/support/waiting.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <algorithm>
#include <iterator>
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

    /// Begins to drop a file on the window with this title; OfferDropped() has to be called until it has arrived.
    bool DropFile(std::string const &title, std::string const &url)
    {
        dropped_ = url + "\r\n";
        Window const target = FindWindow(title);
        Window const source = XCreateSimpleWindow(display_.get(), GetRoot(), 0, 0, 1, 1, 0, 0, 0);
        XSetSelectionOwner(display_.get(), GetAtom("XdndSelection"), source, CurrentTime);
        auto const send = [&](char const *type, long second, long third, long fifth)
        {
            XEvent event = {};
            event.xclient.type = ClientMessage;
            event.xclient.window = target;
            event.xclient.message_type = GetAtom(type);
            event.xclient.format = 32;
            long const data[] = {static_cast<long>(source), second, third, 0, fifth};
            std::copy(std::begin(data), std::end(data), event.xclient.data.l);
            XSendEvent(display_.get(), target, False, NoEventMask, &event);
        };
        constexpr long version = 5;
        if (target != 0)
        {
            send("XdndEnter", version << 24, static_cast<long>(GetAtom("text/uri-list")), 0);
            send("XdndPosition", 0, 0, static_cast<long>(GetAtom("XdndActionCopy")));
            send("XdndDrop", 0, CurrentTime, 0);
        }
        XSync(display_.get(), False);
        return target != 0;
    }

    /// Answers requests for the dropped file.
    void OfferDropped()
    {
        while (XPending(display_.get()) > 0)
        {
            XEvent event;
            XNextEvent(display_.get(), &event);
            if (event.type != SelectionRequest)
                continue;
            XSelectionRequestEvent const &request = event.xselectionrequest;
            XChangeProperty(display_.get(), request.requestor, request.property, request.target, 8, PropModeReplace,
                            reinterpret_cast<unsigned char const *>(dropped_.data()),
                            static_cast<int>(dropped_.size()));
            XEvent answer = {};
            answer.xselection.type = SelectionNotify;
            answer.xselection.requestor = request.requestor;
            answer.xselection.selection = request.selection;
            answer.xselection.target = request.target;
            answer.xselection.property = request.property;
            answer.xselection.time = request.time;
            XSendEvent(display_.get(), request.requestor, False, NoEventMask, &answer);
        }
        XFlush(display_.get());
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
        // A window may go while it is asked. By default, the answer to that ends the program.
        auto *const before = XSetErrorHandler([](Display *, XErrorEvent *) { return 0; });
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
        XSync(display_.get(), False);
        XSetErrorHandler(before);
        return found;
    }

    std::string dropped_;
    std::unique_ptr<Display, decltype(&XCloseDisplay)> display_;
};

} // namespace quillmarsh::tests

#endif
