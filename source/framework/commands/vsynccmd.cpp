#include <quillmarsh/framework/commands/vsynccmd.h>

#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/videoconfig.h>
#include <quillmarsh/framework/videorenderer.h>

namespace quillmarsh::framework_commands
{
namespace
{

using Cmd = VSyncCmd;

constexpr CommandWord s_words[] = {
    CommandWord::Option(Cmd::s_szOptionOn, "enable wait-for-vertical-sync\n"),
    CommandWord::Option(Cmd::s_szOptionOff, "disable wait-for-vertical-sync\n"),
    CommandWord::Assignment(Cmd::s_szAssignDynamic, Cmd::s_szValueDynamic, "enable/disable dynamic vsync-update\n",
                            command_values::s_boolean),
};

} // namespace

VSyncCmd::VSyncCmd()
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Setup video-renderer vertical-synchronization");
}

VSyncCmd::~VSyncCmd() = default;

bool VSyncCmd::ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &)
{
    CommandArguments const arguments(*this, parser, s_words);
    VideoRenderer *const renderer = Kernel::Instance().GetActiveVideoRendererPtr();
    if (renderer == nullptr)
        return true;
    bool dynamic = false;
    if (arguments.ReadAssignment(s_szAssignDynamic, dynamic))
        VideoRenderer::EnableDynamicVSyncUpdate(dynamic);
    if (arguments.HasOption(s_szOptionOn))
        renderer->UpdateVSync(true);
    else if (arguments.HasOption(s_szOptionOff))
        renderer->UpdateVSync(false);
    out << "VSync........: " << MakeString(renderer->GetVideoConfig().Hints.VSync) << nl;
    out << "DynamicUpdate: " << MakeString(VideoRenderer::IsEnabledDynamicVSyncUpdate()) << nl;
    return true;
}

void VSyncCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_words, "print parameters");
}

std::span<CommandWord const> VSyncCmd::GetWords() const
{
    return s_words;
}

} // namespace quillmarsh::framework_commands
