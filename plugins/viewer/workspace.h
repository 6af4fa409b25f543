// What all rooms of the viewer share.
#ifndef QUILLMARSH_PLUGINS_VIEWER_WORKSPACE_H
#define QUILLMARSH_PLUGINS_VIEWER_WORKSPACE_H

#include <viewer_model/files/documents.h>
#include <viewer_model/files/folder.h>
#include <viewer_model/files/jobs.h>

#include <quillmarsh/platform/inputcodes.h>

#include <atomic>
#include <functional>
#include <thread>

namespace viewer
{

/// The model behind the viewer's windows, and the way to its console. Frame thread only.
class Workspace : quillmarsh::NoCopy
{
public:
    Workspace();
    ~Workspace();

    Loader &GetLoader() { return loader_; }
    Jobs &GetJobs() { return jobs_; }
    Folder &GetFolder() { return folder_; }
    Documents &GetDocuments() { return documents_; }
    /// The current document if it has a content of `numDimensions`; null otherwise.
    DocumentPtr FindShown(std::size_t numDimensions) const;
    /// Returns the full name of a file or folder that a line of the console names: one in the folder that is listed, if
    /// there is none in the directory of the process. Throws a DataException for a name that leads nowhere.
    string MakeFullName(string const &name) const;

    /// Runs a line as if it had been typed, before the next frame. What buttons, keys and menus do goes this way, so that
    /// the console shows it.
    void Run(string const &line);
    /// Shows a line on the console that says what a movement of the mouse has done, as if it had been typed, without
    /// running it.
    void Echo(string const &line);
    /// Says one line on the console and in the status line; a failure in red.
    void Say(string const &line, bool isFailure = false);
    /// Says a failure in the status line that the console has told already.
    void ShowFailure(string const &line);
    /// What Say() said last, for the status line, and whether it was a failure.
    string const &GetSaid() const { return said_; }
    bool WasFailure() const { return wasFailure_; }

    /// @name Keys of the window
    /// A panel of a room, which gets the keys while it is active, passes on those that it does not use.
    /// @{
    using KeyRunner = std::function<bool(quillmarsh::eKey key, unsigned int repeatCount)>;
    void SetKeyRunner(KeyRunner runner) { keyRunner_ = std::move(runner); }
    /// Runs the line that a key is bound to. True if there is one.
    bool RunKey(quillmarsh::eKey key, unsigned int repeatCount) { return keyRunner_ && keyRunner_(key, repeatCount); }
    /// @}

    /// Asks for another frame: nothing is drawn while nobody asks. Any thread.
    void Invalidate();
    /// True if somebody has asked since the last call.
    bool TakeInvalid();

private:
    void Show(string const &line, bool isFailure);

    Loader loader_;
    Jobs jobs_;
    Folder folder_;
    Documents documents_;
    string said_;
    bool wasFailure_ = false;
    std::atomic<bool> isInvalid_ = true;
    KeyRunner keyRunner_;
    std::thread::id const frameThread_ = std::this_thread::get_id();
};

} // namespace viewer

#endif
