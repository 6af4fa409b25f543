#include <quillmarsh/platform/openglcontext.h>

#include "source/platform/openglversion.h"
#include "source/platform/win32/widetext.h"
#include "source/platform/win32/winwindow.h"

#include <GL/gl.h>
#include <GL/wglext.h>

#include <cstdint>
#include <iterator>
#include <string_view>
#include <vector>

namespace quillmarsh::platform
{
namespace
{

template<typename Function>
Function Cast(PROC address)
{
    return reinterpret_cast<Function>(reinterpret_cast<void *>(address));
}

/// The system's OpenGL library, loaded with the first context: most programs need none.
struct Library
{
    Library() : module(LoadLibraryW(L"opengl32.dll"))
    {
        Find("wglCreateContext", createContext);
        Find("wglDeleteContext", deleteContext);
        Find("wglMakeCurrent", makeCurrent);
        Find("wglGetCurrentContext", getCurrentContext);
        Find("wglGetCurrentDC", getCurrentDevice);
        Find("wglGetProcAddress", getAddress);
    }

    template<typename Function>
    void Find(char const *name, Function &function)
    {
        if (module)
            function = Cast<Function>(reinterpret_cast<PROC>(GetProcAddress(module, name)));
        isComplete = isComplete && function;
    }

    /// Returns any function of OpenGL, those of version 1.1 included, which only the module has.
    PROC FindAny(char const *name) const
    {
        PROC const address = getAddress(name);
        // Some drivers return these for a missing function.
        auto const number = reinterpret_cast<std::intptr_t>(address);
        if (number < -1 || number > 3)
            return address;
        return reinterpret_cast<PROC>(GetProcAddress(module, name));
    }

    HMODULE module;
    bool isComplete = true;
    decltype(&::wglCreateContext) createContext = nullptr;
    decltype(&::wglDeleteContext) deleteContext = nullptr;
    decltype(&::wglMakeCurrent) makeCurrent = nullptr;
    decltype(&::wglGetCurrentContext) getCurrentContext = nullptr;
    decltype(&::wglGetCurrentDC) getCurrentDevice = nullptr;
    decltype(&::wglGetProcAddress) getAddress = nullptr;
};

Library const &GetLibrary()
{
    // Never unloaded: drivers run threads of their own.
    static Library const &s_library = *new Library;
    return s_library;
}

PIXELFORMATDESCRIPTOR MakePlainPixels(OpenGLPixels const &pixels)
{
    PIXELFORMATDESCRIPTOR plain = {};
    plain.nSize = sizeof(plain);
    plain.nVersion = 1;
    plain.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER;
    plain.iPixelType = PFD_TYPE_RGBA;
    plain.cColorBits = 24;
    plain.cAlphaBits = static_cast<BYTE>(pixels.numAlphaBits);
    plain.cDepthBits = static_cast<BYTE>(pixels.numDepthBits);
    plain.cStencilBits = static_cast<BYTE>(pixels.numStencilBits);
    return plain;
}

/// Gives a window its pixel format, unless it has one already. Zero for `format` chooses by the plain way, which knows
/// no multisampling. Sets the system's last error on failure.
bool SetPixels(HDC device, OpenGLPixels const &pixels, int format)
{
    if (GetPixelFormat(device) != 0)
        return true;
    PIXELFORMATDESCRIPTOR plain = MakePlainPixels(pixels);
    if (format == 0)
        format = ChoosePixelFormat(device, &plain);
    return format != 0 && SetPixelFormat(device, format, &plain) == TRUE;
}

/// The functions that Windows gives only while a context is current, and what the driver's plain context offers.
struct Driver
{
    PFNWGLCREATECONTEXTATTRIBSARBPROC createContext = nullptr;
    PFNWGLCHOOSEPIXELFORMATARBPROC choosePixels = nullptr;
    PFNWGLSWAPINTERVALEXTPROC setSwapInterval = nullptr;
    PFNWGLGETSWAPINTERVALEXTPROC getSwapInterval = nullptr;
    bool hasMultisampling = false;
    bool reportsLoss = false;
    bool swapsLateFrames = false;
    OpenGLOffer offer;
};

/// A hidden window with a plain context, which is current in the object's life.
class HelperContext : NoCopy
{
public:
    explicit HelperContext(Library const &library)
        : library_(library),
          deviceBefore_(library.getCurrentDevice()),
          contextBefore_(library.getCurrentContext())
    {
        SetLastError(0);
        window_ = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, GetModuleHandleW(nullptr),
                                  nullptr);
        device_ = window_ ? GetDC(window_) : nullptr;
        if (device_ && SetPixels(device_, OpenGLPixels(), 0))
            context_ = library_.createContext(device_);
        isCurrent_ = context_ && library_.makeCurrent(device_, context_) == TRUE;
        error_ = GetLastError();
    }
    ~HelperContext()
    {
        if (isCurrent_)
            library_.makeCurrent(deviceBefore_, contextBefore_);
        if (context_)
            library_.deleteContext(context_);
        if (device_)
            ReleaseDC(window_, device_);
        if (window_)
            DestroyWindow(window_);
    }

    bool IsCurrent() const { return isCurrent_; }
    DWORD GetError() const { return error_; }

    void Read(Driver &driver) const
    {
        string const extensions = ReadExtensions();
        auto const has = [&](char const *name)
        { return (" " + extensions + " ").find(" " + string(name) + " ") != string::npos; };
        if (has("WGL_ARB_create_context") && has("WGL_ARB_create_context_profile"))
            Find("wglCreateContextAttribsARB", driver.createContext);
        if (has("WGL_ARB_pixel_format"))
            Find("wglChoosePixelFormatARB", driver.choosePixels);
        if (has("WGL_EXT_swap_control"))
        {
            Find("wglSwapIntervalEXT", driver.setSwapInterval);
            Find("wglGetSwapIntervalEXT", driver.getSwapInterval);
        }
        driver.hasMultisampling = has("WGL_ARB_multisample");
        driver.reportsLoss = has("WGL_ARB_create_context_robustness");
        driver.swapsLateFrames = has("WGL_EXT_swap_control_tear");
        driver.offer = ReadOpenGLOffer(Cast<OpenGLFunction>(library_.FindAny("glGetString")));
    }

private:
    template<typename Function>
    void Find(char const *name, Function &function) const
    {
        function = Cast<Function>(library_.getAddress(name));
    }

    string ReadExtensions() const
    {
        PFNWGLGETEXTENSIONSSTRINGARBPROC getExtensions = nullptr;
        Find("wglGetExtensionsStringARB", getExtensions);
        char const *const extensions = getExtensions ? getExtensions(device_) : nullptr;
        return extensions ? extensions : "";
    }

    Library const &library_;
    HDC deviceBefore_;
    HGLRC contextBefore_;
    HWND window_ = nullptr;
    HDC device_ = nullptr;
    HGLRC context_ = nullptr;
    bool isCurrent_ = false;
    DWORD error_ = 0;
};

/// Reads the driver through a helper window. Returns false with a reason when there is no OpenGL at all.
bool ReadDriver(Driver &driver, string &reason)
{
    if (!GetLibrary().isComplete)
    {
        reason = "There is no OpenGL on this system: opengl32.dll cannot be loaded.";
        return false;
    }
    HelperContext const helper(GetLibrary());
    if (!helper.IsCurrent())
    {
        // A display without OpenGL gives no error.
        DWORD const error = helper.GetError();
        reason = error != 0 ? "There is no OpenGL driver: " + DescribeSystemError(error)
                            : "There is no OpenGL driver for the display.";
        return false;
    }
    helper.Read(driver);
    return true;
}

/// Returns the number of a pixel format with at least these pixels; 0 for the plain way.
int ChoosePixels(Driver const &driver, HDC device, OpenGLPixels const &pixels)
{
    bool const isSampled = pixels.numSamples > 0 && driver.hasMultisampling;
    if (!driver.choosePixels || !isSampled)
        return 0;
    int const attributes[] = {WGL_DRAW_TO_WINDOW_ARB,
                              1,
                              WGL_SUPPORT_OPENGL_ARB,
                              1,
                              WGL_DOUBLE_BUFFER_ARB,
                              1,
                              WGL_PIXEL_TYPE_ARB,
                              WGL_TYPE_RGBA_ARB,
                              WGL_COLOR_BITS_ARB,
                              24,
                              WGL_ALPHA_BITS_ARB,
                              pixels.numAlphaBits,
                              WGL_DEPTH_BITS_ARB,
                              pixels.numDepthBits,
                              WGL_STENCIL_BITS_ARB,
                              pixels.numStencilBits,
                              WGL_SAMPLE_BUFFERS_ARB,
                              1,
                              WGL_SAMPLES_ARB,
                              pixels.numSamples,
                              0};
    int format = 0;
    UINT numFormats = 0;
    bool const isFound = driver.choosePixels(device, attributes, nullptr, 1, &format, &numFormats) == TRUE;
    return isFound && numFormats > 0 ? format : 0;
}

HGLRC CreateWished(Driver const &driver, HDC device, OpenGLContextDesc const &desc, bool reportsLoss)
{
    int flags = WGL_CONTEXT_FORWARD_COMPATIBLE_BIT_ARB;
    if (desc.isDebug)
        flags |= WGL_CONTEXT_DEBUG_BIT_ARB;
    std::vector<int> attributes = {WGL_CONTEXT_MAJOR_VERSION_ARB, desc.majorVersion,
                                   WGL_CONTEXT_MINOR_VERSION_ARB, desc.minorVersion,
                                   WGL_CONTEXT_FLAGS_ARB,         flags,
                                   WGL_CONTEXT_PROFILE_MASK_ARB,  WGL_CONTEXT_CORE_PROFILE_BIT_ARB};
    if (reportsLoss)
        attributes.insert(attributes.end(),
                          {WGL_CONTEXT_RESET_NOTIFICATION_STRATEGY_ARB, WGL_LOSE_CONTEXT_ON_RESET_ARB});
    attributes.push_back(0);
    return driver.createContext(device, nullptr, attributes.data());
}

HGLRC CreateWished(Driver const &driver, HDC device, OpenGLContextDesc const &desc)
{
    if (!driver.createContext)
    {
        SetLastError(ERROR_NOT_SUPPORTED);
        return nullptr;
    }
    HGLRC context = nullptr;
    if (desc.reportsLoss && driver.reportsLoss)
        context = CreateWished(driver, device, desc, true);
    return context ? context : CreateWished(driver, device, desc, false);
}

} // namespace

struct OpenGLContext::System : NoCopy
{
    explicit System(HWND itsWindow) : window(itsWindow), device(GetDC(itsWindow)) {}
    ~System()
    {
        if (context)
        {
            if (GetLibrary().getCurrentContext() == context)
                GetLibrary().makeCurrent(nullptr, nullptr);
            GetLibrary().deleteContext(context);
        }
        if (device)
            ReleaseDC(window, device);
    }

    HWND window;
    HDC device;
    HGLRC context = nullptr;
    Driver driver;
};

AutoPtr<OpenGLContext> OpenGLContext::Create(Window &window, OpenGLContextDesc const &desc, string &reason)
{
    AutoPtr<OpenGLContext> result(new OpenGLContext);
    result->system_.reset(new System(window.GetHandle()));
    System &system = *result->system_;
    if (!ReadDriver(system.driver, reason))
        return nullptr;
    if (!system.device ||
        !SetPixels(system.device, desc.pixels, ChoosePixels(system.driver, system.device, desc.pixels)))
    {
        reason = "The window gets no pixels for OpenGL: " + DescribeSystemError(GetLastError());
        return nullptr;
    }
    system.context = CreateWished(system.driver, system.device, desc);
    if (!system.context)
    {
        string error = DescribeSystemError(GetLastError());
        if (error.ends_with('.'))
            error.pop_back();
        reason = DescribeMissingVersion(desc, system.driver.offer, error);
        return nullptr;
    }
    return result->MakeCurrent(reason) ? std::move(result) : nullptr;
}

void OpenGLContext::SystemDeleter::operator()(System *system) const
{
    delete system;
}

OpenGLContext::~OpenGLContext() = default;

bool OpenGLContext::MakeCurrent(string &reason)
{
    if (GetLibrary().makeCurrent(system_->device, system_->context) == TRUE)
        return true;
    reason = "The display refuses the OpenGL context: " + DescribeSystemError(GetLastError());
    return false;
}

bool OpenGLContext::IsCurrent() const
{
    return GetLibrary().getCurrentContext() == system_->context;
}

void OpenGLContext::SwapBuffers()
{
    ::SwapBuffers(system_->device);
}

int OpenGLContext::SetSwapInterval(int interval)
{
    Driver const &driver = system_->driver;
    if (!driver.setSwapInterval)
        return 0;
    bool const isKnown = interval >= 0 || driver.swapsLateFrames;
    driver.setSwapInterval(isKnown ? interval : -interval);
    return driver.getSwapInterval ? driver.getSwapInterval() : 0;
}

OpenGLFunction OpenGLContext::FindFunction(char const *name) const
{
    return Cast<OpenGLFunction>(GetLibrary().FindAny(name));
}

OpenGLFunction OpenGLContext::FindCurrentFunction(char const *name)
{
    Library const &library = GetLibrary();
    bool const isCurrent = library.isComplete && library.getCurrentContext() != nullptr;
    return isCurrent ? Cast<OpenGLFunction>(library.FindAny(name)) : nullptr;
}

} // namespace quillmarsh::platform
