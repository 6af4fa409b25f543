#include <quillmarsh/basetools/windows/winutils.h>

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/serializer.h>

#include "source/platform/desktop.h"
#include "source/platform/drawing.h"

#include <algorithm>
#include <ostream>

namespace quillmarsh::win_utils
{
namespace
{

constexpr unsigned int s_wordBytes = 4;

void WordToBytes(unsigned int word, unsigned char *bytes)
{
    for (unsigned int i = 0; i < s_wordBytes; ++i)
        bytes[i] = static_cast<unsigned char>(word >> 8 * (s_wordBytes - 1 - i));
}

unsigned int BytesToWord(unsigned char const *bytes)
{
    unsigned int word = 0;
    for (unsigned int i = 0; i < s_wordBytes; ++i)
        word = word << 8 | bytes[i];
    return word;
}

} // namespace

Guid::Guid() : _GUID{} {}

Guid::Guid(_GUID const &guid) : _GUID(guid) {}

Guid::Guid(UID const &uid)
{
    CopyFrom(uid);
}

void Guid::CopyFrom(UID const &uid)
{
    Data1 = uid[0];
    Data2 = static_cast<unsigned short>(uid[1] >> 16);
    Data3 = static_cast<unsigned short>(uid[1]);
    WordToBytes(uid[2], Data4);
    WordToBytes(uid[3], Data4 + s_wordBytes);
}

void Guid::CopyTo(UID &uid) const
{
    uid = UID(static_cast<unsigned int>(Data1), static_cast<unsigned int>(Data2) << 16 | Data3, BytesToWord(Data4),
              BytesToWord(Data4 + s_wordBytes));
}

bool Guid::operator==(Guid const &other) const
{
    return Data1 == other.Data1 && Data2 == other.Data2 && Data3 == other.Data3 &&
           std::equal(std::begin(Data4), std::end(Data4), other.Data4);
}

ostream &operator<<(ostream &out, Guid const &guid)
{
    UID uid;
    guid.CopyTo(uid);
    return out << uid;
}

ostream &operator<=(ostream &out, Guid const &guid)
{
    using quillmarsh::operator<=;
    out <= static_cast<unsigned int>(guid.Data1) <= guid.Data2 <= guid.Data3;
    WriteByteBlock(out, guid.Data4, sizeof(guid.Data4));
    return out;
}

istream &operator>=(istream &in, Guid &guid)
{
    using quillmarsh::operator>=;
    in >= guid.Data1 >= guid.Data2 >= guid.Data3;
    ReadByteBlock(in, guid.Data4, sizeof(guid.Data4));
    return in;
}

GdiplusGuard::GdiplusGuard()
{
    if (!platform::drawing::Start(token_))
        QUILLMARSH_THROW(SystemResourceException, "Gdiplus startup failed.");
}

GdiplusGuard::~GdiplusGuard()
{
    platform::drawing::Stop(token_);
}

COMGuard::COMGuard() : initialized_(platform::StartComponents()) {}

COMGuard::~COMGuard()
{
    if (initialized_)
        platform::StopComponents();
}

void CleanupHandlerIUnknown::operator()(IUnknown *object) const
{
    if (object)
        platform::ReleaseComponent(*object);
}

unsigned int GdiplusConvertColor(color4b color)
{
    return color;
}

color4b GdiplusConvertColor(unsigned int argb)
{
    color4b color;
    color = argb;
    return color;
}

bool GdiplusGetFontFamilyNames(std::vector<string> &names)
{
    names.clear();
    if (!platform::drawing::ReadFamilyNames(names))
    {
        names.clear();
        return false;
    }
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return true;
}

color4b GetSystemColor(eSystemColor color)
{
    return platform::ReadSystemColor(color);
}

HCURSOR LoadStockCursor(eStockCursor cursor)
{
    return platform::LoadSystemCursor(cursor);
}

} // namespace quillmarsh::win_utils
