// A lantern that burns oil: a command with options, variables, a parameter, a profiled block, messages and failures.
#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/namedparameter.h>
#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/variableregistry.h>
#include <quillmarsh/framework/application.h>
#include <quillmarsh/framework/commandtable.h>
#include <quillmarsh/framework/frameworkprofiler.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/framework/pluginlibrary.h>
#include <quillmarsh/framework/stdcommandinterpreter.h>

#include <algorithm>
#include <ostream>

namespace
{

using namespace quillmarsh;

struct Lantern
{
    /// In grams.
    double oil = 100;
    /// Grams that burn in a second.
    double hunger = 0.01;
    /// In degrees of Beaufort's scale.
    unsigned int wind = 0;
    bool isLit = false;
};

class LanternCmd : public TableCommand
{
public:
    /// Borrows `lantern`, which must outlive the command.
    explicit LanternCmd(Lantern &lantern) : lantern_(lantern)
    {
        SetDefaultName("lantern");
        SetShortDesc("Light the lantern, put it out, or fill it");
    }

    std::span<CommandWord const> GetWords() const override { return s_words; }

protected:
    /// The line has no other words than those of the table, and values of their kinds.
    bool Execute(ostream &out, CommandArguments const &arguments) override
    {
        double grams = 0;
        if (arguments.ReadAssignment(s_szFill, grams))
            lantern_.oil += std::max(grams, 0.0);
        if (arguments.HasOption(s_szLight) && lantern_.oil <= 0)
        {
            out << e_error << "The lantern has no oil. Fill it with lantern -fill=GRAMS." << std::endl << e_info;
            return false;
        }
        if (arguments.HasOption(s_szLight) || arguments.HasOption(s_szOut))
            lantern_.isLit = arguments.HasOption(s_szLight);
        out << "The lantern is " << (lantern_.isLit ? "lit." : "out.") << std::endl;
        return true;
    }

    string GetDefaultBehavior() const override { return "tell whether it is lit"; }

private:
    static constexpr char s_szLight[] = "light";
    static constexpr char s_szOut[] = "out";
    static constexpr char s_szFill[] = "fill";
    static constexpr CommandWord s_words[] = {
        CommandWord::Option(s_szLight, "light it\n"),
        CommandWord::Option(s_szOut, "put it out\n"),
        CommandWord::Assignment(s_szFill, "grams", "add oil\n", command_values::s_real),
    };

    Lantern &lantern_;
};

class LanternApplication : public Application
{
public:
    /// Takes --parameter lantern.oil=GRAMS. False makes the host refuse the parameter.
    bool SetPluginParameter(NamedParameter const &parameter) override
    {
        return parameter.GetName() == "oil" && ToValue(parameter.GetValueString(), lantern_.oil) && lantern_.oil >= 0;
    }

    void BeginStartup(StartupInfo const &, StartupResult &result) override { result.AppWindowText = "lantern"; }

    void Initialize() override
    {
        VariableRegistry &variables = *Kernel::Instance().GetVariableRegistry();
        variables.RegisterVariable(
            VariableProxyRangeCheckedUInt(&lantern_.wind, 0, 12, "lantern.wind", "strength of the wind, in Beaufort"));
        variables.RegisterVariable(
            VariableProxyRangeCheckedDouble(&lantern_.hunger, 0.0, 1.0, "lantern.hunger", "grams of oil per second"));
        // The interpreter owns its commands, and deletes them before this object is deleted.
        Kernel::Instance().GetCommandInterpreter()->RegisterExternalCommand(new LanternCmd(lantern_));
    }

    void FrameUpdateStates(double timeDelta) override
    {
        QUILLMARSH_PROFILE_BLOCK("Lantern::Burn");
        if (lantern_.wind == 12)
            QUILLMARSH_THROW(ApplicationException, "The hurricane has taken the lantern.");
        if (!lantern_.isLit)
            return;
        lantern_.oil = std::max(lantern_.oil - lantern_.hunger * timeDelta, 0.0);
        bool const isBlownOut = lantern_.wind >= 8;
        if (lantern_.oil > 0 && !isBlownOut)
            return;
        lantern_.isLit = false;
        GetConOut() << (isBlownOut ? "The wind has put the lantern out." : "The lantern has burned all its oil.")
                    << std::endl;
    }

    /// Runs after a failure as well. GetLogOut() is for developers: its text goes to the log that --log names.
    void Cleanup(bool, FailureDesc const &) override
    {
        GetLogOut() << "Oil left: " << lantern_.oil << " g" << std::endl;
    }

private:
    Lantern lantern_;
};

class LanternDescriptor : public ApplicationPluginDescriptor
{
public:
    LanternDescriptor()
        : ApplicationPluginDescriptor(PluginInfo(library_info::GetHeaderVersion(), e_plugin_application, "lantern",
                                                 PluginVersion(1, 0, 0, 0), QUILLMARSH_PLUGIN_TIMESTAMP,
                                                 "A lantern that burns oil", "You"))
    {
    }

    Application *CreateApplication() override { return new LanternApplication; }
};

} // namespace

QUILLMARSH_PLUGIN_LIBRARY(LanternDescriptor)
