// Libraries loaded at run time, and the table of symbols that are wanted from them.
#ifndef QUILLMARSH_BASETOOLS_DYNAMICLINKLIBRARY_H
#define QUILLMARSH_BASETOOLS_DYNAMICLINKLIBRARY_H

#include <quillmarsh/platform/types.h>

#include <vector>

namespace quillmarsh
{

class DynamicLinkLibrary;

/// One wanted symbol, and the caller's location that receives its address: a pointer to function, as a rule.
///
/// The location is borrowed and outlives the entry. As DLLImportTable: one thread at a time.
class QUILLMARSH_API DLLImportEntry
{
public:
    DLLImportEntry(string const &symbol, void *hook);

    string const &GetSymbol() const { return symbol_; }
    /// Value at the hook; null too when there is no hook.
    void *GetHookValue() const;
    /// Writes null at the hook.
    void InvalidateHook();

    /// Writes the symbol's address at the hook; true if that is not null. Asserts "Invalid argument." on a null hook
    /// and on an empty symbol.
    bool ImportFrom(DynamicLinkLibrary const &library);

private:
    string symbol_;
    void **hook_;
};

/// Ordered list of wanted symbols.
class QUILLMARSH_API DLLImportTable
{
public:
    /// Empties the list; the hooks keep their values.
    void Clear();
    /// Appends an entry.
    void Add(DLLImportEntry const &entry);
    /// `hook` is the address of the pointer that receives the symbol's address.
    void Add(string const &symbol, void *hook);
    unsigned int GetNumEntries() const { return static_cast<unsigned int>(entries_.size()); }

    /// Imports every entry, whether or not others fail; true if all could be. Writes how many could be, unless
    /// `numImported` is null.
    bool ImportSymbolsFrom(DynamicLinkLibrary const &library, unsigned int *numImported);
    /// Writes null at every hook.
    void InvalidateSymbolHooks();
    /// One line for each entry with the value of its hook, and a line with the counts.
    void Dump(ostream &out) const;

private:
    std::vector<DLLImportEntry> entries_;
};

/// One library that is loaded at run time, with a table of its symbols that are bound to pointers of the caller's.
///
/// Derived classes fill the table in FillImportTable:
/// @code
/// class Sounds : public DynamicLinkLibrary
/// {
/// public:
///     Sounds() : DynamicLinkLibrary("/opt/sounds/libsounds.so") {}
///     ~Sounds() override { Unload(); }
///     int (*Play)(char const *) = nullptr;
///
/// protected:
///     void FillImportTable(DLLImportTable &table) override { table.Add("SoundsPlay", &Play); }
/// };
///
/// Sounds sounds;
/// if (!sounds.Load() || !sounds.ImportSymbols(nullptr))
///     std::cerr << sounds.GetLoadError() << '\n';
/// @endcode
/// A name without a path separator is looked for where the system keeps its libraries and never in the current
/// directory: on Linux in the search path of the dynamic linker (LD_LIBRARY_PATH, ld.so.cache, the system's folders),
/// on Windows beside the program, in the system's folders and in PATH; there the first load takes the current directory
/// out of the search path of the whole process. A name with a path separator is that file and no other.
///
/// One thread at a time for one object.
class QUILLMARSH_API DynamicLinkLibrary
{
public:
    DynamicLinkLibrary();
    explicit DynamicLinkLibrary(string const &fileName);
    /// As SafeCopyFrom.
    DynamicLinkLibrary(DynamicLinkLibrary const &other);
    /// As SafeCopyFrom.
    DynamicLinkLibrary &operator=(DynamicLinkLibrary const &other);
    /// Unloads, unless SetAutoUnload(false) was called. PreUnload of a derived class is not reached from here: a class
    /// that has one calls Unload in its own destructor.
    virtual ~DynamicLinkLibrary();

    /// Unloads, and becomes a copy of the other one: with a reference to the module of its own where the other one is
    /// loaded, and with automatic unloading. Entries of the table share their hooks with those of the other one.
    void SafeCopyFrom(DynamicLinkLibrary const &other);

    /// @name Name
    /// @{
    string const &GetFileName() const { return fileName_; }
    string const &GetPathName() const { return pathName_; }
    string const &GetBaseName() const { return baseName_; }
    string const &GetExtension() const { return extension_; }
    /// The base name in square brackets, with "." and the extension if asked for.
    string GetFormattedName(bool includeExtension) const;
    /// @}

    /// @name Loading
    /// @{
    HINSTANCE GetHandle() const { return handle_; }
    bool IsLoaded() const { return handle_ != nullptr; }
    /// True when the library is loaded, also when it was before. PostLoad runs only when it was not.
    bool Load();
    /// Reason of the system for the last Load that failed, with the name of a dependency that is missing; empty after
    /// one that did not fail.
    string const &GetLoadError() const { return loadError_; }
    /// Nulls the hooks and gives the module back. True also when nothing was loaded.
    bool Unload();
    void SetAutoUnload(bool autoUnload) { autoUnload_ = autoUnload; }
    /// @}

    /// @name Symbols
    /// @{

    /// Null when the library is not loaded, or has no such symbol.
    void *GetSymbolAddress(string const &symbol) const;
    /// Fills the table, if that is still to be done, and imports all of it; true if all could be. Writes how many could
    /// be, unless `numImported` is null. Asserts "DLL is not loaded.".
    bool ImportSymbols(unsigned int *numImported);
    /// Writes null at every hook of the table.
    void InvalidateSymbolHooks() { importTable_.InvalidateSymbolHooks(); }
    /// See DLLImportTable::Dump.
    void DumpImportTable(ostream &out) const { importTable_.Dump(out); }
    void ClearImportTable() { importTable_.Clear(); }
    /// Lets the derived class fill the table, in the first call only.
    void FillImportTable();

    /// @}

protected:
    /// @name Hooks
    /// Bodies are empty here.
    /// @{
    virtual void PostLoad();
    virtual void PreUnload();
    virtual void FillImportTable(DLLImportTable &table);
    virtual void PostImport(bool allImported, unsigned int numImported);
    /// @}

private:
    string fileName_;
    string pathName_;
    string baseName_;
    string extension_;
    HINSTANCE handle_ = nullptr;
    bool mustFillImportTable_ = true;
    DLLImportTable importTable_;
    bool autoUnload_ = true;
    string loadError_;
};

} // namespace quillmarsh

#endif
