#include "argumentsource.h"

#include "arguments.h"

#include <quillmarsh/basetools/commandlineparser.h>
#include <quillmarsh/basetools/filesystem.h>

namespace quillmarsh::host
{

std::vector<string> MakeArgumentLines(Arguments const &arguments)
{
    CommandLineParser const parser;
    auto const quote = [&parser](string name)
    {
        string const given = name;
        // The application may change the directory of the process.
        return parser.FormatWord(file_system::ForceFullPathName(name, false) ? name : given, true);
    };
    std::vector<string> lines;
    for (string const &file : arguments.files)
        lines.push_back("open " + quote(file));
    if (arguments.recording)
        lines.push_back("play " + quote(*arguments.recording) + " -system -once -steady -exit");
    return lines;
}

ArgumentSource::ArgumentSource(std::vector<string> lines, LineSource *main, bool stays)
    : lines_(std::move(lines)),
      main_(main),
      stays_(stays)
{
}

LineSource::eNext ArgumentSource::Take(SourceLine &line)
{
    if (next_ < lines_.size())
    {
        line.text = lines_[next_++];
        line.number = static_cast<unsigned int>(next_);
        return eNext::e_line;
    }
    isPastOwn_ = true;
    if (main_ != nullptr)
        return main_->Take(line);
    return stays_ ? eNext::e_none : eNext::e_end;
}

void ArgumentSource::OnDone()
{
    if (IsMain())
        main_->OnDone();
}

bool ArgumentSource::IsTyped() const
{
    return IsMain() && main_->IsTyped();
}

string const &ArgumentSource::GetName() const
{
    static string const s_name = "the arguments";
    return IsMain() ? main_->GetName() : s_name;
}

void ArgumentSource::Serve(std_command_interpreter::Interpreter &interpreter, ostream &out)
{
    if (main_ != nullptr)
        main_->Serve(interpreter, out);
}

} // namespace quillmarsh::host
