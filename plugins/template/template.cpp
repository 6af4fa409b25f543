// The smallest application: a starting point for your own.
#include <quillmarsh/framework/application.h>
#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/framework/pluginlibrary.h>

namespace
{

class TemplateApplication : public quillmarsh::Application
{
    /// Called once when the program starts: register commands and export variables here.
    void Initialize() override {}

    /// Called once in each frame. `timeDelta` is the time since the last frame, in seconds.
    void FrameUpdateStates(double timeDelta) override { time_ += timeDelta; }

    double time_ = 0;
};

class TemplateDescriptor : public quillmarsh::ApplicationPluginDescriptor
{
public:
    TemplateDescriptor()
        : ApplicationPluginDescriptor(
              quillmarsh::PluginInfo(quillmarsh::library_info::GetHeaderVersion(), quillmarsh::e_plugin_application,
                                     "template", quillmarsh::PluginVersion(1, 0, 0, 0), QUILLMARSH_PLUGIN_TIMESTAMP,
                                     "A program that does nothing yet", "You"))
    {
    }

    quillmarsh::Application *CreateApplication() override { return new TemplateApplication; }
};

} // namespace

QUILLMARSH_PLUGIN_LIBRARY(TemplateDescriptor)
