// Plug-in libraries that no host may use. The build makes one of each fault.
#include <quillmarsh/framework/pluginlibrary.h>

#if defined(MISFIT_NEEDS_ABSENT)
extern "C" int TestAbsent();
int volatile s_answer = TestAbsent();
#endif

#if !defined(MISFIT_NO_ENTRY)
namespace
{

quillmarsh::PluginLibraryRecord MakeRecord()
{
    quillmarsh::PluginLibraryRecord record = quillmarsh::MakePluginLibraryRecord();
    record.GetNumDescriptors = [] { return 0u; };
    record.GetDescriptor = [](unsigned int) -> quillmarsh::PluginDescriptor * { return nullptr; };
    MISFIT_CHANGE;
    return record;
}

} // namespace

QUILLMARSH_PLUGIN_EXPORT quillmarsh::PluginLibraryRecord const *QUILLMARSH_PLUGIN_ENTRY();
quillmarsh::PluginLibraryRecord const *QUILLMARSH_PLUGIN_ENTRY()
{
    static quillmarsh::PluginLibraryRecord const s_record = MakeRecord();
    return &s_record;
}
#endif
