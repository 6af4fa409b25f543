// Converts the library's text and file names to the system's form.
#ifndef QUILLMARSH_SOURCE_PLATFORM_WIN32_WIDETEXT_H
#define QUILLMARSH_SOURCE_PLATFORM_WIN32_WIDETEXT_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh::platform
{

/// @name Wide text as the system's type, without a copy
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

/// True when a text is the same in UTF-8 and in every code page of the system.
bool IsAscii(string const &text);

/// Converts a text that ends in 0 to UTF-8; empty when it is not valid UTF-16.
string FromSystem(wchar_t const *text);

/// Returns the system's text for an error code, without its line end.
string DescribeSystemError(unsigned long code);

/// Makes the full name with the long-path prefix, and resolves "." and ".."; a name that has the prefix already stays
/// unchanged. Returns false and sets the system's last error for the name of a device, and for a name that is not
/// UTF-8.
bool MakeSystemPath(string const &name, wstring &path);

/// Calls `read(buffer, size)` until the buffer is large enough. `read` returns the length that it wrote, the size that
/// it needs, or 0 on failure.
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
