#include "openglfunctions.h"

#include <quillmarsh/basetools/exception.h>

namespace video_opengl
{
namespace
{

template<typename Function>
void Load(OpenGLFunctions::Door const &door, char const *name, Function &function)
{
    function = reinterpret_cast<Function>(door(name));
    if (function == nullptr)
        QUILLMARSH_THROW(VideoSubsystemException, string("The driver lacks the OpenGL function ") + name + ".");
}

template<typename Function>
void LoadOptional(OpenGLFunctions::Door const &door, std::initializer_list<char const *> names, Function &function)
{
    for (char const *const name : names)
    {
        if (function == nullptr)
            function = reinterpret_cast<Function>(door(name));
    }
}

} // namespace

OpenGLFunctions::OpenGLFunctions(Door const &door)
{
#define VIDEO_OPENGL_LOAD(name, type) Load(door, "gl" #name, name);
    VIDEO_OPENGL_FUNCTIONS(VIDEO_OPENGL_LOAD)
#undef VIDEO_OPENGL_LOAD
#define VIDEO_OPENGL_LOAD(name, type) LoadOptional(door, {"gl" #name, "gl" #name "KHR", "gl" #name "ARB"}, name);
    VIDEO_OPENGL_OPTIONAL_FUNCTIONS(VIDEO_OPENGL_LOAD)
#undef VIDEO_OPENGL_LOAD
}

} // namespace video_opengl
