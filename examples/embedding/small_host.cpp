// The smallest host: loads one application plug-in and gives it three frames.
#include <quillmarsh/basetools/consolebuffers.h>
#include <quillmarsh/basetools/dynamiclinklibrary.h>
#include <quillmarsh/basetools/profiler.h>
#include <quillmarsh/basetools/variableregistry.h>
#include <quillmarsh/framework/application.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/kernelexecutionparams.h>
#include <quillmarsh/framework/kernelthreadinfo.h>
#include <quillmarsh/framework/pluginlibrary.h>

#include <cstdlib>
#include <iostream>

using namespace quillmarsh;

namespace
{

/// The library of the plug-in, with the one symbol that it exports.
class PluginFile : public DynamicLinkLibrary
{
public:
    explicit PluginFile(string const &fileName) : DynamicLinkLibrary(fileName) {}
    ~PluginFile() override { Unload(); }

    PluginLibraryEntry Entry = nullptr;

protected:
    void FillImportTable(DLLImportTable &table) override { table.Add(s_szPluginLibraryEntry, &Entry); }
};

/// A kernel without devices, video, and a console of its own.
class SmallKernel : public Kernel
{
public:
    SmallKernel() : variables_("variables") { SetOutputStreams(std::cout, std::clog); }

    void Run(Application &application, unsigned int numFrames)
    {
        application_ = &application;
        FailureDesc failure;
        application.Initialize();
        for (frameNumber_ = 0; frameNumber_ < numFrames && !exitRequested_; ++frameNumber_)
        {
            application.FrameBegin(0.0);
            application.FrameUpdateStates(0.0);
            application.FrameEnd();
        }
        application.Cleanup(false, failure);
        application_ = nullptr;
    }

    void SetExecutionParams(KernelExecutionParams const &) override {}
    void GetExecutionParams(KernelExecutionParams &) override {}
    void SetThreadInfo(KernelThreadInfo const &) override {}
    void GetThreadInfo(KernelThreadInfo &info) override { info = {}; }
    eKernelLevel GetKernelLevel() override { return e_kernel_running; }
    void SetFrameRateLimit(double) override {}
    double GetFrameRateLimit() override { return 0.0; }
    bool IsExitRequested() override { return exitRequested_; }
    void RequestExit() override { exitRequested_ = true; }
    void ApplyHIDReconfig(DirectInputConfig const &, unsigned int) override {}
    void ApplyVideoReconfig(string const &, VideoConfig const &, unsigned int) override {}
    void RequestGenericReconfig(unsigned int, unsigned int) override {}
    unsigned int GetNumPlugins() override { return 0; }
    bool GetPluginInfo(unsigned int, PluginInfo &) override { return false; }
    string GetPluginFileName(unsigned int) override { return {}; }
    unsigned int GetNumGenericExtensions() override { return 0; }
    GenericExtension *GetGenericExtension(unsigned int) override { return nullptr; }
    GenericExtension *FindGenericExtension(string const &) override { return nullptr; }
    Application *GetApplicationPtr() override { return application_; }
    unsigned int GetNumVideoRenderers() override { return 0; }
    void GetVideoRendererInfo(unsigned int, VideoRendererInfo &) override {}
    void GetVideoRendererProfile(unsigned int, VideoProfile &) override {}
    VideoRenderer *GetActiveVideoRendererPtr() override { return nullptr; }
    void GetActiveVideoRendererInfo(VideoRendererInfo &) override {}
    void GetActiveVideoProfile(VideoProfile &) override {}
    std_command_interpreter::Interpreter *GetCommandInterpreter() override { return nullptr; }
    void QueueCommandLine(string const &) override {}
    unsigned int GetNumHumanInterfaceDevices() override { return 0; }
    HumanInterfaceDevice *GetHumanInterfaceDevice(unsigned int) override { return nullptr; }
    void GetDirectInputConfig(DirectInputConfig &) override {}
    void WakeUp() override {}
    unsigned int GetFrameNumber() override { return frameNumber_; }
    double GetFrameTime() override { return 0.0; }
    double GetFrameTimeDelta() override { return 0.0; }
    Profiler *GetProfiler() override { return &profiler_; }
    ConsoleBuffers *GetConsoleBuffers() override { return &consoleBuffers_; }
    VariableRegistry *GetVariableRegistry() override { return &variables_; }
    void AddFrameObserver(FrameObserver *) override {}
    void RemoveFrameObserver(FrameObserver *) override {}
    unsigned int GetNumFrameObservers() override { return 0; }
    void AddReconfigObserver(ReconfigObserver *) override {}
    void RemoveReconfigObserver(ReconfigObserver *) override {}
    unsigned int GetNumReconfigObservers() override { return 0; }
    void NotifyVSyncUpdate() override {}

private:
    Application *application_ = nullptr;
    unsigned int frameNumber_ = 0;
    bool exitRequested_ = false;
    Profiler profiler_;
    ConsoleBuffers consoleBuffers_;
    VariableRegistry variables_;
};

/// The first application that the library offers; null, with a message, when it cannot be had.
AutoPtr<Application> CreateApplication(PluginFile &file)
{
    if (!file.Load() || !file.ImportSymbols(nullptr))
    {
        std::cerr << file.GetFileName() << ": " << file.GetLoadError() << std::endl;
        return nullptr;
    }
    PluginLibraryRecord const &record = *file.Entry();
    bool const fits = record.Magic == s_pluginLibraryMagic && record.RecordLayout == s_pluginLibraryRecordLayout;
    PluginDescriptor *const descriptor = fits ? record.GetDescriptor(0) : nullptr;
    if (!descriptor ||
        !descriptor->GetPluginInfo().GetLibraryVersion().IsCompatibleWith(library_info::GetLibraryVersion()))
    {
        std::cerr << file.GetFileName() << ": not a plug-in for this host." << std::endl;
        return nullptr;
    }
    return AutoPtr<Application>(dynamic_cast<Application *>(descriptor->CreateAndSetupPlugin()));
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2)
    {
        std::cerr << "usage: small-host PLUGIN" << std::endl;
        return EXIT_FAILURE;
    }
    PluginFile file(argv[1]);
    SmallKernel kernel;
    AutoPtr<Application> const application = CreateApplication(file);
    if (!application)
        return EXIT_FAILURE;
    kernel.Run(*application, 3);
    return EXIT_SUCCESS;
}
