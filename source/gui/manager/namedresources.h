// Objects that are known by name, and by aliases.
#ifndef QUILLMARSH_SOURCE_GUI_MANAGER_NAMEDRESOURCES_H
#define QUILLMARSH_SOURCE_GUI_MANAGER_NAMEDRESOURCES_H

#include "source/gui/manager/safelists.h"

#include <map>
#include <utility>
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
///
/// Users keep pointers until they look their names up again. What is replaced or removed therefore lives on: it is
/// condemned when all users are about to look up, and released when they have done so.
template<typename T>
class RegisteredObjects
{
public:
    using Object = T;

    /// Owns the object from then on, and retires a former one of that name. Takes a retired object back.
    void Register(string const &name, T &object);
    /// Retires the object. Returns false for an unknown name.
    bool Unregister(string const &name);
    void UnregisterAll();
    T *Find(string const &name) const;
    /// Returns the name of an object; null if it is not registered.
    string const *FindName(VideoResource const &object) const;
    /// Gives all names in ascending order.
    void GetNames(std::vector<string> &names) const;
    /// Prints the names, one a line.
    void Dump(ostream &out, unsigned int tabs) const;

    /// @name Retired objects
    /// @{

    /// Condemns all that are retired now.
    void CondemnRetired() { numCondemned_ = retired_.size(); }
    /// Lets the condemned live until they are condemned again. Returns false if there are none.
    bool Pardon() { return std::exchange(numCondemned_, 0) != 0; }
    /// Deletes those that were condemned.
    void ReleaseCondemned();
    /// @}

    /// @name Parts in the renderer
    /// @{

    /// Creates those of new objects, or of all. When one throws, those that are missing stay to be created.
    void CreateVideoResources(VideoRenderer &renderer, bool all);
    /// Releases those of all objects, retired ones too.
    void ReleaseVideoResources();
    /// @}

private:
    /// Keeps an object until it is released.
    void Retire(AutoPtr<T> object) { retired_.push_back(std::move(object)); }

    std::map<string, AutoPtr<T>> objects_;
    /// Names whose part in the renderer is still to be created.
    std::vector<string> toCreate_;
    /// In the order in which they were retired.
    std::vector<AutoPtr<T>> retired_;
    std::size_t numCondemned_ = 0;
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
    void Erase(T &object) { objects_.Erase(object); }
    /// An object has got another name. Harmless for an object that is not registered.
    void Reorder(T &object);
    T *Find(string const &name);
    /// Returns null past the end.
    T *Get(unsigned int index) { return objects_.Get(index); }
    unsigned int GetSize() const { return objects_.GetSize(); }
    /// Deletes all, each out of the registry first.
    void DeleteAll();
    /// See SafeList.
    template<typename Call>
    void ForEach(Call &&call)
    {
        objects_.ForEach(call);
    }
    /// Prints the names, one a line, or for an empty one "[unnamed] @ " and the address.
    void Dump(ostream &out, unsigned int tabs);

private:
    void Sort();

    SafeList<T> objects_{e_list_all};
};

/// One kind of resource: its objects in one of the two ways above, and its aliases.
template<typename Objects>
class NamedResources : NoCopy
{
public:
    using Object = typename Objects::Object;

    /// Returns the object of a name or alias; null for unknown and empty names.
    Object *Get(string const &name) { return name.empty() ? nullptr : objects.Find(aliases.Find(name)); }

    Objects objects;
    Aliases aliases;
};

using TileTextures = NamedResources<RegisteredObjects<TileTexture>>;
using Fonts = NamedResources<RegisteredObjects<Font>>;
using Shaders = NamedResources<SelfRegisteredObjects<BaseShader>>;
using Cursors = NamedResources<SelfRegisteredObjects<Cursor>>;

} // namespace quillmarsh::gui::manager_parts

#endif
