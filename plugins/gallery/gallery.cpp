// Shows every widget in every state, and how the look draws it.
#include "desk.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/variableregistry.h>
#include <quillmarsh/framework/application.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/framework/pluginlibrary.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/widgets/consolepanel.h>
#include <quillmarsh/widgets/tooltips.h>

namespace gallery
{
namespace
{

using namespace quillmarsh;

class GalleryApplication : public Application
{
public:
    void BeginStartup(StartupInfo const &, StartupResult &result) override { result.AppWindowText = "gallery"; }

    void Initialize() override
    {
        Kernel::Instance().GetVariableRegistry()->RegisterVariable(
            VariableProxyString(&section_, "gallery.section", "title of the section that shows"));
    }

    bool ConfirmGenericExtension(string const &, string const &) override { return true; }

    void ConnectGenericExtensions() override
    {
        if (Kernel::Instance().FindGenericExtension("standard_look") == nullptr)
            QUILLMARSH_THROW(KernelException, "The gallery needs the plug-in standard_look.");
        desk_ = new Desk;
        new widgets::ToolTips;
        new widgets::ConsolePanel;
        section_ = desk_->GetShownTitle();
        shownSection_ = section_;
        desk_->Open();
    }

    void FrameUpdateStates(double) override
    {
        if (section_ != shownSection_)
            ShowSection();
        else if (shownSection_ != desk_->GetShownTitle())
            section_ = shownSection_ = desk_->GetShownTitle();
        VariableRegistry const &variables = *Kernel::Instance().GetVariableRegistry();
        VariableProxy const *const theme = variables.GetVariable("look.theme");
        if (theme != nullptr)
            desk_->ShowLook(theme->GetValueString(), widgets::Measures::GetScale());
    }

private:
    void ShowSection()
    {
        if (!desk_->ShowSection(section_))
            GetConOut() << "gallery: no section \"" << section_ << "\"." << std::endl;
        section_ = desk_->GetShownTitle();
        shownSection_ = section_;
    }

    /// The manager owns it; it lives as long as the application has its frames.
    Desk *desk_ = nullptr;
    string section_;
    string shownSection_;
};

class GalleryDescriptor : public ApplicationPluginDescriptor
{
public:
    GalleryDescriptor()
        : ApplicationPluginDescriptor(PluginInfo(library_info::GetHeaderVersion(), e_plugin_application, "gallery",
                                                 PluginVersion(1, 0, 0, 0), library_info::GetBuildTimestamp(),
                                                 "Every widget in every state", "The Quillmarsh authors"))
    {
    }

    Application *CreateApplication() override { return new GalleryApplication; }
};

} // namespace
} // namespace gallery

QUILLMARSH_PLUGIN_LIBRARY(gallery::GalleryDescriptor)
