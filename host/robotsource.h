// Lines of a script for the robot.
#ifndef QUILLMARSH_HOST_ROBOTSOURCE_H
#define QUILLMARSH_HOST_ROBOTSOURCE_H

#include <quillmarsh/host/linesource.h>

#include <utility>

namespace quillmarsh::host
{

/// Puts the command "robot" ahead of the lines of a script.
class RobotSource : public LineSource, NoCopy
{
public:
    explicit RobotSource(AutoPtr<LineSource> script) : script_(std::move(script)) {}

    eNext Take(SourceLine &line) override
    {
        eNext const next = script_->Take(line);
        std::size_t const begin = line.text.find_first_not_of(" \t");
        bool const isEmpty = begin == string::npos || line.text[begin] == '#';
        if (next == eNext::e_line && !isEmpty)
            line.text.insert(0, "robot ");
        return next;
    }
    void OnDone() override { script_->OnDone(); }
    bool IsTyped() const override { return false; }
    string const &GetName() const override { return script_->GetName(); }

private:
    AutoPtr<LineSource> script_;
};

} // namespace quillmarsh::host

#endif
