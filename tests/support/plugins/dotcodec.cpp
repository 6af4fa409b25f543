// Extension that registers the codec of dots.
#include "../dot_codec.h"

#include <quillmarsh/framework/genericextension.h>
#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/framework/pluginlibrary.h>

namespace
{

using namespace quillmarsh;

class DotExtension : public GenericExtension
{
public:
    DotExtension() { tests::RegisterDotCodec(); }
    string GetGenericExtensionInterfaceName() override { return "dots"; }
};

class DotDescriptor : public GenericExtensionPluginDescriptor
{
public:
    DotDescriptor()
        : GenericExtensionPluginDescriptor(PluginInfo(library_info::GetHeaderVersion(), e_plugin_generic_extension,
                                                      "dots", PluginVersion(1, 0, 0, 0), "now", "Images of dots", ""))
    {
    }
    GenericExtension *CreateGenericExtension() override { return new DotExtension; }
};

} // namespace

QUILLMARSH_PLUGIN_LIBRARY(DotDescriptor)
