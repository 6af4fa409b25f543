// Objects that are known by name, and by aliases.
#ifndef QUILLMARSH_SOURCE_GUI_MANAGER_NAMEDRESOURCES_H
#define QUILLMARSH_SOURCE_GUI_MANAGER_NAMEDRESOURCES_H

#include <quillmarsh/platform/types.h>

#include <map>
#include <memory>
#include <vector>

namespace quillmarsh::gui
{
class BaseShader;
class Cursor;
class Font;
class TileTexture;
} // namespace quillmarsh::gui

namespace quillmarsh::gui::manager_parts
{

/// Aliases of one kind of resource, resolved in one step.
class Aliases
{
public:
    /// Returns false, and changes nothing, for an empty name.
    bool Add(string const &alias, string const &name);
    /// Returns false for an unknown alias.
    bool Clear(string const &alias);
    void ClearAll() { table_.clear(); }
    void GetAll(std::vector<string> &aliases) const;
    bool Resolve(string const &alias, string &name) const;
    /// Returns what an alias stands for, or the name itself. Makes no copy: for look-ups.
    string const &Find(string const &name) const;

private:
    std::map<string, string> table_;
};

/// Owner that registers objects under names: tile textures and fonts.
template<typename T>
class RegisteredObjects
{
public:
    using Object = T;

    /// Takes the object, in place of a former one, which is kept in `retired` until ReleaseRetired().
    void Register(string const &name, std::shared_ptr<T> object);
    /// Returns false for an unknown name.
    bool Unregister(string const &name);
    void UnregisterAll();
    T *Find(string const &name) const;
    /// Returns the name of an object; null if it is not registered.
    string const *FindName(T const &object) const;
    void ReleaseRetired() { retired_.clear(); }
    std::map<string, std::shared_ptr<T>> const &GetAll() const { return objects_; }

    /// Names whose part in the renderer is still to be created.
    std::vector<string> toCreate;

private:
    std::map<string, std::shared_ptr<T>> objects_;
    std::vector<std::shared_ptr<T>> retired_;
};

/// Objects that register themselves, in ascending order of their names; equal names stand in the order of registration:
/// shaders and cursors. Look-up gives the first of equal names.
template<typename T>
class SelfRegisteredObjects
{
public:
    using Object = T;

    void Insert(T &object);
    /// Harmless for an object that is not registered.
    void Erase(T &object);
    /// An object has got another name.
    void Reorder(T &object);
    T *Find(string const &name) const;
    T *Get(unsigned int index) const { return index < objects_.size() ? objects_[index] : nullptr; }
    unsigned int GetSize() const { return static_cast<unsigned int>(objects_.size()); }
    /// Deletes all; objects leave by Erase(), or, with the insert switch off, all at once.
    void DeleteAll();

private:
    std::vector<T *> objects_;
};

/// One kind of resource: its objects in one of the two ways above, and its aliases.
template<typename Objects>
class NamedResources : NoCopy
{
public:
    using Object = typename Objects::Object;

    /// Returns the object of a name or alias; null for unknown and empty names.
    Object *Get(string const &name) const { return name.empty() ? nullptr : objects.Find(aliases.Find(name)); }

    Objects objects;
    Aliases aliases;
};

using TileTextures = NamedResources<RegisteredObjects<TileTexture>>;
using Fonts = NamedResources<RegisteredObjects<Font>>;
using Shaders = NamedResources<SelfRegisteredObjects<BaseShader>>;
using Cursors = NamedResources<SelfRegisteredObjects<Cursor>>;

} // namespace quillmarsh::gui::manager_parts

#endif
