// Common code of the registries of encoders and decoders.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_CODECS_CODECREGISTRY_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_CODECS_CODECREGISTRY_H

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/dataobjects/codecfailure.h>
#include <quillmarsh/dataobjects/datacodecs.h>

#include <algorithm>
#include <map>
#include <ostream>
#include <utility>
#include <vector>

namespace quillmarsh::codec_registry
{

/// Codecs by category, in the order in which they are tried. The registry owns them.
template<typename Codec>
using Registry = std::map<unsigned int, std::vector<Codec *>>;

/// Finds the entry of a category; null when the category is not registered.
template<typename Map>
auto FindCategory(Map &map, unsigned int category) -> decltype(&map.begin()->second)
{
    auto const found = map.find(category);
    return found == map.end() ? nullptr : &found->second;
}

/// Finds a codec in its category; returns the end when no codec has the name.
template<typename Codecs>
auto FindByName(Codecs &codecs, string const &codecName)
{
    return std::find_if(codecs.begin(), codecs.end(),
                        [&](auto const *codec) { return codec->GetCodecName() == codecName; });
}

template<typename Codec>
Codec *Find(Registry<Codec> const &registry, unsigned int category, string const &codecName)
{
    auto const *const codecs = FindCategory(registry, category);
    if (!codecs)
        return nullptr;
    auto const found = FindByName(*codecs, codecName);
    return found == codecs->end() ? nullptr : *found;
}

template<typename Codec>
unsigned int Count(Registry<Codec> const &registry, unsigned int category)
{
    auto const *const codecs = FindCategory(registry, category);
    return codecs ? static_cast<unsigned int>(codecs->size()) : 0;
}

template<typename Codec>
Codec *Get(Registry<Codec> const &registry, unsigned int category, unsigned int index)
{
    auto const *const codecs = FindCategory(registry, category);
    QUILLMARSH_ASSERT(codecs, "Unregistered data-category.");
    if (!codecs)
        return nullptr;
    QUILLMARSH_ASSERT(index < codecs->size(), "Index out of range.");
    return index < codecs->size() ? (*codecs)[index] : nullptr;
}

/// Registers a codec. `kind` begins the texts of failures: "Encoder" or "Decoder".
template<typename Codec>
void Register(Registry<Codec> &registry, Codec *codec, char const *kind)
{
    QUILLMARSH_ASSERT(codec, "Invalid argument.");
    if (!codec)
        return;
    auto const refuse = [&](char const *reason)
    { QUILLMARSH_THROW(InvalidUsageException, kind + string(reason) + codec->GetCodecName()); };
    if (!codec->IsOnHeap())
        refuse(" is not created on heap: ");
    auto *const codecs = FindCategory(registry, codec->GetDataCategory());
    if (!codecs)
        refuse(" category is not registered: ");
    if (FindByName(*codecs, codec->GetCodecName()) != codecs->end())
        refuse(" is already registered: ");
    codecs->push_back(codec);
}

template<typename Codec>
void Unregister(Registry<Codec> &registry, unsigned int category, string const &codecName)
{
    auto *const codecs = FindCategory(registry, category);
    if (!codecs)
        return;
    auto const found = FindByName(*codecs, codecName);
    if (found == codecs->end())
        return;
    AutoPtr<Codec> const removed(*found);
    codecs->erase(found);
}

template<typename Codec>
void UnregisterAll(Registry<Codec> &registry, unsigned int category)
{
    if (auto *const codecs = FindCategory(registry, category))
    {
        for (Codec *const codec : std::exchange(*codecs, {}))
            delete codec;
    }
}

template<typename Codec>
void UnregisterAll(Registry<Codec> &registry)
{
    for (auto const &entry : registry)
        UnregisterAll(registry, entry.first);
}

template<typename Codec>
void Prioritize(Registry<Codec> &registry, unsigned int category, string const &preferred, string const &other)
{
    auto *const codecs = FindCategory(registry, category);
    if (!codecs)
        return;
    auto const first = FindByName(*codecs, other);
    auto const second = FindByName(*codecs, preferred);
    if (second != codecs->end() && first < second)
        std::iter_swap(first, second);
}

template<typename Codec>
void Dump(Registry<Codec> const &registry, unsigned int category, ostream &out, unsigned int indent)
{
    if (auto const *const codecs = FindCategory(registry, category))
    {
        for (Codec const *const codec : *codecs)
            out << TabEffector(indent) << codec->GetCodecName() << ": " << codec->GetFormatList() << std::endl;
    }
}

/// Keeps the more specific failure: the first one that is not eCodecFailure::e_otherFormat.
inline void KeepBetter(CodecFailure &kept, CodecFailure const &told)
{
    if (kept.kind <= eCodecFailure::e_otherFormat && told.kind > eCodecFailure::e_otherFormat)
        kept = told;
}

} // namespace quillmarsh::codec_registry

#endif
