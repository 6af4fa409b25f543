#include "source/gui/manager/namedresources.h"

#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/gui/gui_cursors.h>
#include <quillmarsh/gui/gui_fonts.h>
#include <quillmarsh/gui/gui_shaders.h>
#include <quillmarsh/gui/gui_textures.h>

#include <algorithm>
#include <utility>

namespace quillmarsh::gui::manager_parts
{

bool Aliases::Add(string const &alias, string const &name)
{
    if (name.empty())
        return false;
    table_[alias] = name;
    return true;
}

bool Aliases::Clear(string const &alias)
{
    return table_.erase(alias) != 0;
}

void Aliases::GetAll(std::vector<string> &aliases) const
{
    aliases.clear();
    for (auto const &[alias, name] : table_)
        aliases.push_back(alias);
}

bool Aliases::Resolve(string const &alias, string &name) const
{
    auto const found = table_.find(alias);
    name = found == table_.end() ? alias : found->second;
    return found != table_.end();
}

string const &Aliases::Find(string const &name) const
{
    auto const found = table_.find(name);
    return found == table_.end() ? name : found->second;
}

template<typename T>
void RegisteredObjects<T>::Register(string const &name, T &object)
{
    // What may throw comes first, so that the object stays with the caller then.
    if (std::find(toCreate_.begin(), toCreate_.end(), name) == toCreate_.end())
        toCreate_.push_back(name);
    retired_.reserve(retired_.size() + 1);
    AutoPtr<T> &holder = objects_[name];

    auto const isObject = [&object](AutoPtr<T> const &retired) { return retired.get() == &object; };
    auto const again = std::find_if(retired_.begin(), retired_.end(), isObject);
    if (again != retired_.end())
    {
        if (again - retired_.begin() < static_cast<std::ptrdiff_t>(numCondemned_))
            --numCondemned_;
        static_cast<void>(again->release());
        retired_.erase(again);
    }
    if (holder)
        Retire(std::move(holder));
    holder.reset(&object);
}

template<typename T>
bool RegisteredObjects<T>::Unregister(string const &name)
{
    auto const found = objects_.find(name);
    if (found == objects_.end())
        return false;
    Retire(std::move(found->second));
    objects_.erase(found);
    return true;
}

template<typename T>
void RegisteredObjects<T>::UnregisterAll()
{
    for (auto &[name, object] : objects_)
        Retire(std::move(object));
    objects_.clear();
}

template<typename T>
T *RegisteredObjects<T>::Find(string const &name) const
{
    auto const found = objects_.find(name);
    return found == objects_.end() ? nullptr : found->second.get();
}

template<typename T>
string const *RegisteredObjects<T>::FindName(VideoResource const &object) const
{
    for (auto const &[name, registered] : objects_)
    {
        if (registered.get() == &object)
            return &name;
    }
    return nullptr;
}

template<typename T>
void RegisteredObjects<T>::GetNames(std::vector<string> &names) const
{
    names.clear();
    for (auto const &[name, object] : objects_)
        names.push_back(name);
}

template<typename T>
void RegisteredObjects<T>::Dump(ostream &out, unsigned int tabs) const
{
    for (auto const &[name, object] : objects_)
        out << IndentEffector(tabs) << name << nl;
}

template<typename T>
void RegisteredObjects<T>::ReleaseCondemned()
{
    auto const end = retired_.begin() + static_cast<std::ptrdiff_t>(std::exchange(numCondemned_, 0));
    std::vector<AutoPtr<T>> condemned(std::move_iterator(retired_.begin()), std::move_iterator(end));
    retired_.erase(retired_.begin(), end);
    // Their destructors may call the manager: the registry is whole by now.
    condemned.clear();
}

template<typename T>
void RegisteredObjects<T>::CreateVideoResources(VideoRenderer &renderer, bool all)
{
    if (all)
        GetNames(toCreate_);
    for (std::size_t i = 0; i < toCreate_.size(); ++i)
    {
        if (T *const object = Find(toCreate_[i]))
            object->CreateVideoRendererResource(renderer);
    }
    toCreate_.clear();
}

template<typename T>
void RegisteredObjects<T>::ReleaseVideoResources()
{
    for (auto const &[name, object] : objects_)
        object->ReleaseVideoRendererResource();
    for (AutoPtr<T> const &object : retired_)
        object->ReleaseVideoRendererResource();
}

template<typename T>
void SelfRegisteredObjects<T>::Insert(T &object)
{
    if (objects_.Append(object))
        Sort();
}

template<typename T>
void SelfRegisteredObjects<T>::Reorder(T &object)
{
    if (!objects_.Contains(object))
        return;
    objects_.MoveToEnd(object);
    Sort();
}

template<typename T>
T *SelfRegisteredObjects<T>::Find(string const &name)
{
    unsigned int first = 0;
    unsigned int end = GetSize();
    while (first < end)
    {
        unsigned int const middle = first + (end - first) / 2;
        if (Get(middle)->GetName() < name)
            first = middle + 1;
        else
            end = middle;
    }
    T *const found = Get(first);
    return found != nullptr && found->GetName() == name ? found : nullptr;
}

template<typename T>
void SelfRegisteredObjects<T>::DeleteAll()
{
    while (T *const object = objects_.GetFirst())
    {
        Erase(*object);
        delete object;
    }
}

template<typename T>
void SelfRegisteredObjects<T>::Dump(ostream &out, unsigned int tabs)
{
    for (unsigned int i = 0; T *const object = Get(i); ++i)
    {
        out << IndentEffector(tabs);
        if (object->GetName().empty())
            out << "[unnamed] @ " << MakeString(static_cast<void *>(object));
        else
            out << object->GetName();
        out << nl;
    }
}

template<typename T>
void SelfRegisteredObjects<T>::Sort()
{
    objects_.StableSort([](T const &a, T const &b) { return a.GetName() < b.GetName(); });
}

template class RegisteredObjects<TileTexture>;
template class RegisteredObjects<Font>;
template class SelfRegisteredObjects<BaseShader>;
template class SelfRegisteredObjects<Cursor>;

} // namespace quillmarsh::gui::manager_parts
