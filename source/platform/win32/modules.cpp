#include "source/platform/modules.h"

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/texttools.h>

#include "source/platform/win32/widetext.h"
#include "source/platform/win32/windows.h"

#include <mutex>

namespace quillmarsh::platform
{
namespace
{

HMODULE LoadByName(string const &fileName, DWORD flags)
{
    wstring wide;
    bool const isLong = fileName.size() >= MAX_PATH && file_system::IsAbsolutePathName(fileName);
    if (isLong ? MakeSystemPath(fileName, wide) : AsciiToUnicode(fileName, wide))
        return LoadLibraryExW(ToSystem(wide), nullptr, flags);
    SetLastError(ERROR_INVALID_NAME);
    return nullptr;
}

/// Returns the record at an offset in a loaded image.
template<typename Record>
Record const *At(HMODULE image, DWORD offset)
{
    return reinterpret_cast<Record const *>(reinterpret_cast<char const *>(image) + offset);
}

/// Returns the first library in an image's import table that cannot be loaded; empty when all can.
string FindMissingImport(HMODULE image)
{
    auto const *const dosHeader = At<IMAGE_DOS_HEADER>(image, 0);
    auto const *const headers = At<IMAGE_NT_HEADERS>(image, static_cast<DWORD>(dosHeader->e_lfanew));
    IMAGE_DATA_DIRECTORY const &imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    if (imports.Size == 0)
        return {};
    for (auto const *entry = At<IMAGE_IMPORT_DESCRIPTOR>(image, imports.VirtualAddress); entry->Name != 0; ++entry)
    {
        char const *const name = At<char>(image, entry->Name);
        HMODULE const found = LoadByName(name, DONT_RESOLVE_DLL_REFERENCES);
        if (!found)
            return name;
        FreeLibrary(found);
    }
    return {};
}

/// Describes why loading failed. The system does not name a missing dependency, so the file is mapped without running
/// any of it, and its imports are tried.
string DescribeFailure(string const &fileName, DWORD code)
{
    string description = fileName + ": " + DescribeSystemError(code);
    if (code != ERROR_MOD_NOT_FOUND)
        return description;
    HMODULE const image = LoadByName(fileName, DONT_RESOLVE_DLL_REFERENCES);
    if (!image)
        return description;
    string const missing = FindMissingImport(image);
    FreeLibrary(image);
    return missing.empty() ? description : description + " Missing: " + missing;
}

/// Loads a module. LoadLibraryA expects the system's code page, which agrees with UTF-8 in ASCII only, and accepts no
/// long names.
HMODULE LoadModule(string const &fileName)
{
    return IsAscii(fileName) && fileName.size() < MAX_PATH ? LoadLibraryA(fileName.c_str()) : LoadByName(fileName, 0);
}

/// Keeps the system from searching the current directory for a name without a path. Any directory that is set replaces
/// it in the search; the system's own directory is searched anyway.
void LeaveCurrentDirectoryOut()
{
    static std::once_flag s_once;
    std::call_once(s_once,
                   []
                   {
                       wchar_t directory[MAX_PATH];
                       bool const isSet = GetDllDirectoryW(0, nullptr) > 1;
                       if (!isSet && GetSystemDirectoryW(directory, MAX_PATH) != 0)
                           SetDllDirectoryW(directory);
                   });
}

/// Keeps the system from showing its own dialog for a library that it cannot load.
class NoSystemDialogs : NoCopy
{
public:
    NoSystemDialogs() { SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, &before_); }
    ~NoSystemDialogs() { SetThreadErrorMode(before_, nullptr); }

private:
    DWORD before_ = 0;
};

} // namespace

HINSTANCE OpenModule(string const &fileName, string &error)
{
    error.clear();
    if (fileName.empty() || fileName.find('\0') != string::npos)
    {
        error = "The name of the file is empty or broken.";
        return nullptr;
    }
    LeaveCurrentDirectoryOut();
    NoSystemDialogs const noDialogs;
    HMODULE const module = LoadModule(fileName);
    if (!module)
        error = DescribeFailure(fileName, GetLastError());
    return module;
}

bool CloseModule(HINSTANCE module)
{
    return FreeLibrary(module) == 1;
}

void *FindModuleSymbol(HINSTANCE module, string const &symbol)
{
    return reinterpret_cast<void *>(GetProcAddress(module, symbol.c_str()));
}

string FindLibraryFile()
{
    static char const s_inLibrary = 0;
    HMODULE module = nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            reinterpret_cast<wchar_t const *>(&s_inLibrary), &module))
        return {};
    // As long as the longest name that the system has.
    constexpr DWORD maxLength = 32768;
    wstring wide(maxLength, 0);
    DWORD const length = GetModuleFileNameW(module, reinterpret_cast<wchar_t *>(wide.data()), maxLength);
    wide.resize(length < maxLength ? length : 0);
    string name;
    return file_system::ConvertPathName(wide, name) ? name : string();
}

} // namespace quillmarsh::platform
