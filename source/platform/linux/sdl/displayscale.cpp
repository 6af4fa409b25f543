// The size of texts that the user has chosen for the desktop.
#include "source/platform/desktop.h"

#include <quillmarsh/platform/window.h>

#include <dlfcn.h>

#include <cstdlib>
#include <string_view>

namespace quillmarsh::platform
{
namespace
{

constexpr float s_dotsPerInch = 96;

/// Functions of the library that SDL has loaded, or loads, for X11.
struct X11
{
    void *(*openDisplay)(char const *name) = nullptr;
    char *(*getResources)(void *display) = nullptr;
    int (*closeDisplay)(void *display) = nullptr;

    bool Load()
    {
        void *const library = dlopen("libX11.so.6", RTLD_LAZY);
        return library && Find(library, openDisplay, "XOpenDisplay") &&
               Find(library, getResources, "XResourceManagerString") && Find(library, closeDisplay, "XCloseDisplay");
    }

private:
    template<typename Function>
    static bool Find(void *library, Function &function, char const *name)
    {
        function = reinterpret_cast<Function>(dlsym(library, name));
        return function != nullptr;
    }
};

/// Reads the dots of an inch from the settings that desktops give to the programs of an X server.
float ReadDotsOfServer()
{
    X11 x11;
    void *const display = x11.Load() ? x11.openDisplay(nullptr) : nullptr;
    if (!display)
        return 0;
    float dots = 0;
    if (char const *const resources = x11.getResources(display))
    {
        constexpr std::string_view key = "Xft.dpi:";
        std::string_view const text = resources;
        std::size_t const at = text.starts_with(key) ? 0 : text.find("\nXft.dpi:");
        if (at != std::string_view::npos)
            dots = std::strtof(resources + text.find(':', at) + 1, nullptr);
    }
    x11.closeDisplay(display);
    return dots;
}

} // namespace

float ReadSystemDots()
{
    // Desktops set it for all programs, and with it tell the server nothing.
    if (char const *const scale = std::getenv("GDK_SCALE"))
        return std::strtof(scale, nullptr) * s_dotsPerInch;
    return HasDisplay() ? ReadDotsOfServer() : 0;
}

} // namespace quillmarsh::platform
