// Plug-in libraries that every host must refuse. The build makes one for each fault.
#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/framework/pluginlibrary.h>

#include <stdexcept>

#if defined(MISFIT_NEEDS_ABSENT)
extern "C" int TestAbsent();
int volatile s_answer = TestAbsent();
#endif

#if !defined(MISFIT_NO_ENTRY)
namespace
{

using namespace quillmarsh;

PluginInfo MakeInfo()
{
    return {library_info::GetHeaderVersion(), e_plugin_application, "misfit", {}, "", "", ""};
}

[[noreturn]] void Fail()
{
    throw std::runtime_error("asked to fail");
}

struct FailingDescriptor : ApplicationPluginDescriptor
{
    FailingDescriptor() : ApplicationPluginDescriptor(MakeInfo()) { Fail(); }
    Application *CreateApplication() override { return nullptr; }
};

struct FailingConstructor : ApplicationPluginDescriptor
{
    FailingConstructor() : ApplicationPluginDescriptor(MakeInfo()) {}
    Application *CreateApplication() override { Fail(); }
};

struct OtherClass : PluginDescriptor
{
    OtherClass() : PluginDescriptor(MakeInfo()) {}
    Plugin *CreatePlugin() override { return nullptr; }
};

template<typename Descriptor>
[[maybe_unused]] void Offer(PluginLibraryRecord &record)
{
    record.GetNumDescriptors = [] { return 1u; };
    record.GetDescriptor = [](unsigned int) -> PluginDescriptor *
    {
        static Descriptor s_descriptor;
        return &s_descriptor;
    };
}

PluginLibraryRecord MakeRecord()
{
    PluginLibraryRecord record = MakePluginLibraryRecord();
    record.GetNumDescriptors = [] { return 0u; };
    record.GetDescriptor = [](unsigned int) -> PluginDescriptor * { return nullptr; };
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
