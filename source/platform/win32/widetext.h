// The library's wide text and names of files as the system takes them.
#ifndef QUILLMARSH_SOURCE_PLATFORM_WIN32_WIDETEXT_H
#define QUILLMARSH_SOURCE_PLATFORM_WIN32_WIDETEXT_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh::platform
{

/// @name The same units under the system's type
/// @{
inline wchar_t const *ToSystem(wstring const &text)
{
    static_assert(sizeof(wchar_t) == sizeof(unsigned short));
    return reinterpret_cast<wchar_t const *>(text.c_str());
}
inline wchar_t *ToSystem(wstring &text)
{
    return reinterpret_cast<wchar_t *>(text.data());
}
/// @}

/// Whether a text is the same in UTF-8 and in any code page of the system.
bool IsAscii(string const &text);

/// UTF-8 of a text that ends in 0; empty if it is not well-formed.
string FromSystem(wchar_t const *text);

/// The system's text for an error code, without its line end.
string DescribeSystemError(unsigned long code);

/// Full name with the long-path prefix, "." and ".." resolved; a name that has the prefix is taken as it is. False, and
/// then the system's last error is set, for a device's name and for one that is not UTF-8.
bool MakeSystemPath(string const &name, wstring &path);

/// Calls `read(buffer, size)` until the buffer is large enough. The call returns the length that it wrote, the size
/// that it needs, or 0 on failure.
template<typename Read>
bool ReadSystemText(Read read, wstring &text)
{
    text.resize(260);
    for (;;)
    {
        auto const size = static_cast<unsigned long>(text.size());
        unsigned long const length = read(ToSystem(text), size);
        if (length == 0)
            return false;
        text.resize(length);
        if (length < size)
            return true;
    }
}

} // namespace quillmarsh::platform

#endif
