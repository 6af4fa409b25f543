#include <quillmarsh/platform/clipboard.h>

#include <quillmarsh/basetools/texttools.h>

#include "source/platform/desktopevents.h"
#include "source/platform/win32/widetext.h"
#include "source/platform/win32/windows.h"

#include <cstring>

namespace quillmarsh::platform
{
namespace
{

/// Keeps the clipboard open, on behalf of the first window.
class ClipboardSentry : NoCopy
{
public:
    ClipboardSentry() : isOpen_(IsDesktopThread() && OpenClipboard(GetOpenWindows().front()->GetHandle())) {}
    ~ClipboardSentry()
    {
        if (isOpen_)
            CloseClipboard();
    }

    bool IsOpen() const { return isOpen_; }

private:
    bool isOpen_;
};

string AddCarriageReturns(string const &text)
{
    string result;
    for (char const letter : text)
        result += letter == '\n' ? string("\r\n") : string(1, letter);
    return result;
}

} // namespace

string ReadClipboardText()
{
    ClipboardSentry const clipboard;
    HANDLE const data = clipboard.IsOpen() ? GetClipboardData(CF_UNICODETEXT) : nullptr;
    auto const *const units = data ? static_cast<wchar_t const *>(GlobalLock(data)) : nullptr;
    if (!units)
        return {};
    string text = FromSystem(units);
    GlobalUnlock(data);
    for (std::size_t place = 0; (place = text.find("\r\n", place)) != string::npos;)
        text.erase(place, 1);
    return text;
}

bool WriteClipboardText(string const &text)
{
    wstring units;
    ClipboardSentry const clipboard;
    if (!clipboard.IsOpen() || !AsciiToUnicode(AddCarriageReturns(text), units))
        return false;
    std::size_t const size = (units.size() + 1) * sizeof(wchar_t);
    HGLOBAL const memory = GlobalAlloc(GMEM_MOVEABLE, size);
    void *const target = memory ? GlobalLock(memory) : nullptr;
    if (target)
    {
        std::memcpy(target, units.c_str(), size);
        GlobalUnlock(memory);
        EmptyClipboard();
    }
    // On success, the system owns the memory.
    bool const isTaken = target && SetClipboardData(CF_UNICODETEXT, memory);
    if (memory && !isTaken)
        GlobalFree(memory);
    return isTaken;
}

} // namespace quillmarsh::platform
