// Libraries loaded at run time, and the table of symbols that are wanted from them.
#ifndef QUILLMARSH_BASETOOLS_DYNAMICLINKLIBRARY_H
#define QUILLMARSH_BASETOOLS_DYNAMICLINKLIBRARY_H

#include <quillmarsh/platform/types.h>

#include <vector>

namespace quillmarsh
{

class DynamicLinkLibrary;

/// One wanted symbol, and the caller's variable that receives its address: usually a pointer to a function.
///
/// The variable, called the hook, is borrowed and outlives the entry. One thread at a time.
class QUILLMARSH_API DLLImportEntry
{
public:
    /// `hook` is the address of the variable that receives the symbol's address.
    DLLImportEntry(string const &symbol, void *hook);

    /// Name of the symbol.
    string const &GetSymbol() const { return symbol_; }
    /// Value of the hook; null also when there is no hook.
    void *GetHookValue() const;
    /// Writes null to the hook.
    void InvalidateHook();

    /// Writes the symbol's address to the hook, and returns true if the address is not null. Asserts "Invalid
    /// argument." for a null hook and for an empty symbol; without a hook it returns false then.
    bool ImportFrom(DynamicLinkLibrary const &library);

private:
    string symbol_;
    void **hook_;
};

/// Ordered list of wanted symbols. One thread at a time.
class QUILLMARSH_API DLLImportTable
{
public:
    /// Empties the list; the hooks keep their values.
    void Clear();
    /// Appends an entry.
    void Add(DLLImportEntry const &entry);
    /// Appends an entry. `hook` is the address of the variable that receives the symbol's address.
    void Add(string const &symbol, void *hook);
    /// Number of entries.
    unsigned int GetNumEntries() const { return static_cast<unsigned int>(entries_.size()); }

    /// Imports every entry, also when others fail, and returns true if all were found. Writes the number of those found
    /// to `numImported` unless that is null.
    bool ImportSymbolsFrom(DynamicLinkLibrary const &library, unsigned int *numImported);
    /// Writes null to every hook.
    void InvalidateSymbolHooks();
    /// Prints one line for each entry with the value of its hook, and a line with the counts.
    void Dump(ostream &out) const;

private:
    std::vector<DLLImportEntry> entries_;
};

/// One library that is loaded at run time, with a table that binds its symbols to pointers of the caller.
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
/// A name without a path separator is searched where the system keeps its libraries, and never in the current
/// directory. On Linux that is the search path of the dynamic linker (LD_LIBRARY_PATH, ld.so.cache, the system's
/// folders). On Windows it is the program's folder, the system's folders and PATH; the first load there removes the
/// current directory from the search path of the whole process. A name with a path separator means that file and no
/// other.
///
/// One thread at a time for one object.
class QUILLMARSH_API DynamicLinkLibrary
{
public:
    /// Makes an object without a file name, which can load nothing.
    DynamicLinkLibrary();
    /// Stores the name of the file; Load() loads it.
    explicit DynamicLinkLibrary(string const &fileName);
    /// Copies as SafeCopyFrom() does.
    DynamicLinkLibrary(DynamicLinkLibrary const &other);
    /// Copies as SafeCopyFrom() does.
    DynamicLinkLibrary &operator=(DynamicLinkLibrary const &other);
    /// Unloads, unless SetAutoUnload(false) was called. PreUnload() of a derived class is not called from here: a class
    /// that overrides it calls Unload() in its own destructor.
    virtual ~DynamicLinkLibrary();

    /// Unloads, and becomes a copy of `other`, with automatic unloading. If `other` is loaded, the copy holds its own
    /// reference to the module. The entries of both tables share their hooks.
    void SafeCopyFrom(DynamicLinkLibrary const &other);

    /// @name Name
    /// The name as it was given, and its parts: the path, the base name and the extension without its ".".
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

    /// The system's handle of the module; null when it is not loaded.
    HINSTANCE GetHandle() const { return handle_; }
    /// True when the library is loaded.
    bool IsLoaded() const { return handle_ != nullptr; }
    /// Loads the library, and calls PostLoad(). Returns true when the library is loaded; does nothing if it was loaded
    /// before.
    bool Load();
    /// The system's reason why the last Load() failed, with the name of a missing dependency; empty if it succeeded.
    string const &GetLoadError() const { return loadError_; }
    /// Calls PreUnload(), writes null to the hooks, and releases the module. Returns false when the system refuses;
    /// true also when nothing was loaded.
    bool Unload();
    /// Sets whether the destructor unloads the library; it does at first.
    void SetAutoUnload(bool autoUnload) { autoUnload_ = autoUnload; }

    /// @}

    /// @name Symbols
    /// @{

    /// Address of a symbol; null when the library is not loaded or has no such symbol.
    void *GetSymbolAddress(string const &symbol) const;
    /// Fills the table if that was not done yet, imports every entry, and returns true if all were found. Writes the
    /// number of those found to `numImported` unless that is null. Asserts "DLL is not loaded." without a library, and
    /// finds nothing then.
    bool ImportSymbols(unsigned int *numImported);
    /// Writes null to every hook of the table.
    void InvalidateSymbolHooks() { importTable_.InvalidateSymbolHooks(); }
    /// Prints the table; see DLLImportTable::Dump().
    void DumpImportTable(ostream &out) const { importTable_.Dump(out); }
    /// Empties the table; the hooks keep their values.
    void ClearImportTable() { importTable_.Clear(); }
    /// Lets the derived class fill the table. Only the first call has an effect.
    void FillImportTable();

    /// @}

protected:
    /// @name Hooks
    /// Called after loading, before unloading, to fill the table, and after an import with its result. They do nothing
    /// here.
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
