#include "tests/support/scripted_dialogs.h"
#include "tests/support/test_kernel.h"

#include <quillmarsh/basetools/namedparameter.h>
#include <quillmarsh/framework/libwrapperdxerr8.h>
#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/framework/pluginlibrary.h>

#include <gtest/gtest.h>

#include <cstddef>

namespace quillmarsh
{
namespace
{

class TestExtension : public GenericExtension
{
public:
    string GetGenericExtensionInterfaceName() override { return "test"; }
};

class TestDescriptor : public GenericExtensionPluginDescriptor
{
public:
    TestDescriptor()
        : GenericExtensionPluginDescriptor(PluginInfo(library_info::GetLibraryVersion(), e_plugin_video_subsystem,
                                                      "name", PluginVersion(2, 3), "time", "desc", "dev"))
    {
    }
    GenericExtension *CreateGenericExtension() override { return refuse ? nullptr : new TestExtension; }

    bool refuse = false;
};

TEST(PluginInfo, PrintsItself)
{
    EXPECT_EQ("1.0.0.0", PluginVersion().MakeString());
    EXPECT_EQ("VideoRenderer", PluginInfo::FormatPluginType(e_plugin_video_renderer));
    EXPECT_EQ("BadPluginType", PluginInfo::FormatPluginType(static_cast<ePluginType>(6)));

    EXPECT_EQ("\tLibraryVersion: " + library_info::GetLibraryVersion().MakeString() +
                  "\n\tPluginType....: GenericExtension\n\tPluginName....: name\n\tPluginVersion.: 2.3.0.0\n"
                  "\tBuildTimestamp: time\n\tDescription...: desc\n\tDeveloperInfo.: dev\n",
              tests::DumpText(TestDescriptor().GetPluginInfo(), 1));
}

TEST(PluginInfo, ComparesEveryField)
{
    library_info::LibraryVersion const version(1, 0, 0, 1);
    auto const make = [&](unsigned int changed)
    {
        auto const text = [&](unsigned int field) { return string(changed == field ? "other" : "same"); };
        return PluginInfo(changed == 0 ? library_info::LibraryVersion(1, 0, 1, 1) : version,
                          changed == 1 ? e_plugin_application : e_plugin_hid_driver, text(2),
                          changed == 3 ? PluginVersion(1, 0, 0, 1) : PluginVersion(), text(4), text(5), text(6));
    };
    EXPECT_TRUE(make(7) == make(7));
    for (unsigned int field = 0; field < 7; ++field)
        EXPECT_TRUE(make(field) != make(7)) << field;
}

TEST(PluginDescriptor, ForcesTypeAndPassesItsIdentityOn)
{
    TestDescriptor descriptor;
    EXPECT_EQ(e_plugin_generic_extension, descriptor.GetPluginInfo().GetPluginType());

    AutoPtr<Plugin> const plugin(descriptor.CreateAndSetupPlugin());
    ASSERT_NE(nullptr, plugin);
    EXPECT_EQ(&descriptor.GetPluginInfo(), &plugin->GetPluginInfo());
    NamedParameter parameter;
    EXPECT_FALSE(plugin->SetPluginParameter(parameter) || plugin->GetPluginParameter("any", parameter));

    descriptor.refuse = true;
    EXPECT_EQ(nullptr, descriptor.CreateAndSetupPlugin());
}

TEST(Plugin, HasNoIdentityByItself)
{
    tests::ScriptedDialogs dialogs;
    TestExtension plugin;
    PluginInfo info;
    plugin.SetPluginInfo(&info);
    EXPECT_EQ(&info, &plugin.GetPluginInfo());
    plugin.SetPluginInfo(nullptr);
    plugin.GetPluginInfo();
    EXPECT_EQ(std::vector<string>{"Plugin-info not available."}, dialogs.TakeTexts());
}

char const *DescribeCode(long int code)
{
    return code == 5 ? "five" : "other";
}

TEST(LibWrapperDXErr8, AnswersWhileAFunctionIsSet)
{
    LibWrapperDXErr8 wrapper;
    EXPECT_EQ("LibWrapperDXErr8", wrapper.GetGenericExtensionInterfaceName());
    EXPECT_EQ("LibWrapperDXErr8 not initialized", LibWrapperDXErr8::DXGetErrorDescription8(5));
    wrapper.SetProcAddresses(&DescribeCode);
    EXPECT_EQ("five", LibWrapperDXErr8::DXGetErrorDescription8(5));
    wrapper.InvalidateProcAddresses();
    EXPECT_EQ("LibWrapperDXErr8 not initialized", LibWrapperDXErr8::DXGetErrorDescription8(5));
}

TEST(PluginLibraryRecord, HeadKeepsItsPlace)
{
    EXPECT_EQ(0u, offsetof(PluginLibraryRecord, Magic));
    EXPECT_EQ(4u, offsetof(PluginLibraryRecord, RecordLayout));
    EXPECT_EQ(8u, offsetof(PluginLibraryRecord, LibraryVersion));
    EXPECT_EQ(24u, offsetof(PluginLibraryRecord, RecordSize));
    EXPECT_EQ(string("QMPL"), string(reinterpret_cast<char const *>(&s_pluginLibraryMagic), 4));
}

} // namespace
} // namespace quillmarsh
