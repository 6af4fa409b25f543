// An application plug-in that greets in each frame.
#include <quillmarsh/framework/application.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/framework/pluginlibrary.h>

#include <ostream>

namespace
{

class Greeter : public quillmarsh::Application
{
public:
    void FrameUpdateStates(double) override
    {
        quillmarsh::GetConOut() << "Hello from frame " << quillmarsh::Kernel::Instance().GetFrameNumber() << std::endl;
    }
};

class GreeterDescriptor : public quillmarsh::ApplicationPluginDescriptor
{
public:
    GreeterDescriptor()
        : ApplicationPluginDescriptor({quillmarsh::library_info::GetHeaderVersion(),
                                       quillmarsh::e_plugin_application,
                                       "greeter",
                                       {},
                                       "",
                                       "Greets in each frame",
                                       ""})
    {
    }

    quillmarsh::Application *CreateApplication() override { return new Greeter; }
};

} // namespace

QUILLMARSH_PLUGIN_LIBRARY(GreeterDescriptor)
