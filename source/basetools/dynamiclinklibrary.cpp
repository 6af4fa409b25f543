#include <quillmarsh/basetools/dynamiclinklibrary.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/texttools.h>

#include "source/platform/modules.h"

#include <cstring>
#include <ostream>

namespace quillmarsh
{
namespace
{

// The hook is a pointer to function of any type. It is written as bytes, so that no compiler can assume another type.
void WriteHook(void **hook, void *value)
{
    std::memcpy(hook, &value, sizeof(value));
}

} // namespace

DLLImportEntry::DLLImportEntry(string const &symbol, void *hook) : symbol_(symbol), hook_(static_cast<void **>(hook)) {}

void *DLLImportEntry::GetHookValue() const
{
    void *value = nullptr;
    if (hook_)
        std::memcpy(&value, hook_, sizeof(value));
    return value;
}

void DLLImportEntry::InvalidateHook()
{
    if (hook_)
        WriteHook(hook_, nullptr);
}

bool DLLImportEntry::ImportFrom(DynamicLinkLibrary const &library)
{
    QUILLMARSH_ASSERT(hook_ != nullptr, "Invalid argument.");
    QUILLMARSH_ASSERT(!symbol_.empty(), "Invalid argument.");
    if (!hook_)
        return false;
    void *const address = library.GetSymbolAddress(symbol_);
    WriteHook(hook_, address);
    return address != nullptr;
}

void DLLImportTable::Clear()
{
    entries_.clear();
}

void DLLImportTable::Add(DLLImportEntry const &entry)
{
    entries_.push_back(entry);
}

void DLLImportTable::Add(string const &symbol, void *hook)
{
    entries_.emplace_back(symbol, hook);
}

bool DLLImportTable::ImportSymbolsFrom(DynamicLinkLibrary const &library, unsigned int *numImported)
{
    unsigned int count = 0;
    for (DLLImportEntry &entry : entries_)
        count += entry.ImportFrom(library) ? 1 : 0;
    if (numImported)
        *numImported = count;
    return count == GetNumEntries();
}

void DLLImportTable::InvalidateSymbolHooks()
{
    for (DLLImportEntry &entry : entries_)
        entry.InvalidateHook();
}

void DLLImportTable::Dump(ostream &out) const
{
    unsigned int numImported = 0;
    for (DLLImportEntry const &entry : entries_)
    {
        void *const value = entry.GetHookValue();
        numImported += value ? 1 : 0;
        // As wide as the text of a 32-bit pointer.
        out << (value ? MakeString(value) : string(10, ' ')) << "  |  " << entry.GetSymbol() << std::endl;
    }
    out << "Imported " << numImported << " of " << GetNumEntries() << " symbols." << std::endl;
}

DynamicLinkLibrary::DynamicLinkLibrary() = default;

DynamicLinkLibrary::DynamicLinkLibrary(string const &fileName) : fileName_(fileName)
{
    file_system::SplitFileName(fileName_, pathName_, baseName_, extension_);
}

DynamicLinkLibrary::DynamicLinkLibrary(DynamicLinkLibrary const &other)
{
    SafeCopyFrom(other);
}

DynamicLinkLibrary &DynamicLinkLibrary::operator=(DynamicLinkLibrary const &other)
{
    SafeCopyFrom(other);
    return *this;
}

DynamicLinkLibrary::~DynamicLinkLibrary()
{
    if (autoUnload_)
        Unload();
}

void DynamicLinkLibrary::SafeCopyFrom(DynamicLinkLibrary const &other)
{
    if (this == &other)
        return;
    Unload();
    fileName_ = other.fileName_;
    pathName_ = other.pathName_;
    baseName_ = other.baseName_;
    extension_ = other.extension_;
    mustFillImportTable_ = other.mustFillImportTable_;
    importTable_ = other.importTable_;
    autoUnload_ = true;
    // The same handle again, with one more reference. A copy that gets no reference holds no handle: it would otherwise
    // release the reference of the other object.
    loadError_.clear();
    handle_ = other.IsLoaded() ? platform::OpenModule(fileName_, loadError_) : nullptr;
}

string DynamicLinkLibrary::GetFormattedName(bool includeExtension) const
{
    return "[" + baseName_ + (includeExtension ? "." + extension_ : string()) + "]";
}

bool DynamicLinkLibrary::Load()
{
    if (IsLoaded())
        return true;
    handle_ = platform::OpenModule(fileName_, loadError_);
    if (!IsLoaded())
        return false;
    PostLoad();
    return true;
}

bool DynamicLinkLibrary::Unload()
{
    if (!IsLoaded())
        return true;
    PreUnload();
    InvalidateSymbolHooks();
    bool const succeeded = platform::CloseModule(handle_);
    handle_ = nullptr;
    return succeeded;
}

void *DynamicLinkLibrary::GetSymbolAddress(string const &symbol) const
{
    return IsLoaded() ? platform::FindModuleSymbol(handle_, symbol) : nullptr;
}

bool DynamicLinkLibrary::ImportSymbols(unsigned int *numImported)
{
    QUILLMARSH_ASSERT(IsLoaded(), "DLL is not loaded.");
    FillImportTable();
    unsigned int count = 0;
    bool const allImported = importTable_.ImportSymbolsFrom(*this, &count);
    if (numImported)
        *numImported = count;
    PostImport(allImported, count);
    return allImported;
}

void DynamicLinkLibrary::FillImportTable()
{
    if (!mustFillImportTable_)
        return;
    mustFillImportTable_ = false;
    FillImportTable(importTable_);
}

void DynamicLinkLibrary::PostLoad() {}

void DynamicLinkLibrary::PreUnload() {}

void DynamicLinkLibrary::FillImportTable(DLLImportTable &) {}

void DynamicLinkLibrary::PostImport(bool, unsigned int) {}

} // namespace quillmarsh
