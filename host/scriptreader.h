// Lines of a script.
#ifndef QUILLMARSH_HOST_SCRIPTREADER_H
#define QUILLMARSH_HOST_SCRIPTREADER_H

#include "system.h"
#include <quillmarsh/host/linesource.h>

#include <functional>
#include <memory>
#include <thread>

namespace quillmarsh::host
{

/// Reads the lines of a file or of standard input on its own thread, a little ahead of Take().
class ScriptReader : public LineSource, NoCopy
{
public:
    /// Opens the script. Throws a WrongArgumentException if that fails. After Take() has found no line, `onLines` is
    /// called on the reader's thread when lines or the end have arrived.
    ScriptReader(string const &fileName, std::function<void()> onLines);
    ~ScriptReader() override;

    eNext Take(SourceLine &line) override;
    void OnDone() override;
    bool IsTyped() const override;
    string const &GetName() const override;

private:
    struct State;

    string name_;
    std::shared_ptr<State> state_;
    std::thread thread_;
};

} // namespace quillmarsh::host

#endif
