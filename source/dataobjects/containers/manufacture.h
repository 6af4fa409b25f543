// Creates typed containers for a format that is known only at run time.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_CONTAINERS_MANUFACTURE_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_CONTAINERS_MANUFACTURE_H

#include <quillmarsh/dataobjects/sampleformats.h>

namespace quillmarsh
{

/// Creates a container of the plain sample with the format's size; null when no plain sample has it.
template<typename Base, template<typename> class Container, typename... Dimensions>
Base *Manufacture(eSampleFormat format, Dimensions... dimensions)
{
    switch (sample_formats::ExtractByteSize(format))
    {
    case 1:
        return new Container<Sample8>(format, dimensions...);
    case 2:
        return new Container<Sample16>(format, dimensions...);
    case 3:
        return new Container<Sample24>(format, dimensions...);
    case 4:
        return new Container<Sample32>(format, dimensions...);
    case 6:
        return new Container<Sample48>(format, dimensions...);
    case 8:
        return new Container<Sample64>(format, dimensions...);
    case 12:
        return new Container<Sample96>(format, dimensions...);
    case 16:
        return new Container<Sample128>(format, dimensions...);
    default:
        return nullptr;
    }
}

} // namespace quillmarsh

#endif
