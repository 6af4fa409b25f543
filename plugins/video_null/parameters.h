// Values of the plug-ins' parameters.
#ifndef QUILLMARSH_PLUGINS_VIDEO_NULL_PARAMETERS_H
#define QUILLMARSH_PLUGINS_VIDEO_NULL_PARAMETERS_H

#include <quillmarsh/basetools/namedparameter.h>
#include <quillmarsh/basetools/texttools.h>

namespace video_null
{

/// Reads a parameter of type bool, or its text: hosts pass texts on. False for anything else.
inline bool ReadSwitch(quillmarsh::NamedParameter const &parameter, bool &value)
{
    if (parameter.GetValueType() == quillmarsh::NamedParameter::e_string)
        return quillmarsh::ToValue(parameter.GetValueString(), value);
    if (parameter.GetValueType() != quillmarsh::NamedParameter::e_bool)
        return false;
    value = parameter.GetValueBool();
    return true;
}

} // namespace video_null

#endif
