// What is open: files and results, with their steps back.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_FILES_DOCUMENTS_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_FILES_DOCUMENTS_H

#include "loader.h"

#include <chrono>
#include <deque>
#include <memory>

namespace viewer
{

/// An open file, or a result that has no file yet. Frame thread only.
class Document : quillmarsh::NoCopy
{
public:
    /// Steps that can be taken back.
    static constexpr unsigned int s_maxSteps = 10;

    /// A file that is yet to be loaded.
    explicit Document(string fileName) : fileName_(std::move(fileName)) {}
    /// A result with a name for it.
    Document(string title, LoadedPtr loaded) : title_(std::move(title)), loaded_(std::move(loaded)) {}

    /// Absolute; empty for a result.
    string const &GetFileName() const { return fileName_; }
    /// Name without path, or that of the result.
    string GetTitle() const;
    /// Null while it is being loaded, after a failure without an older content, and while it is released (see Documents).
    LoadedPtr const &GetLoaded() const { return loaded_; }
    /// One line: why the file could not be loaded, or loaded again; the older content stays then. Empty if it could.
    string const &GetFailure() const { return failure_; }
    bool IsLoading() const { return loaded_ == nullptr && failure_.empty(); }
    /// Has a content that no file has yet.
    bool IsChanged() const { return loaded_ && loaded_->content != saved_.lock(); }
    FileStamp const &GetStamp() const { return stamp_; }
    /// Counts changes of content, levels and failure.
    unsigned int GetRevision() const { return revision_; }

    /// Takes what the loader has found. A file that has changed replaces the content, and forgets the steps; if there are
    /// steps that were not saved, it becomes another step, named "reload".
    void TakeResult(LoadResult const &result);
    /// Takes the levels of its content; ignored if it has another one by now.
    void TakeLevels(LoadedPtr const &loaded);
    /// Makes a step: the old content can come back. `step` names it, as in "convert -format=L8".
    void Change(LoadedPtr loaded, string const &step);
    /// Takes the last step back; returns its name, empty if there is none.
    string Undo();
    /// Makes a step again that was taken back, likewise.
    string Redo();
    /// This content was saved as a file, which the document has from now on. Others may have come since.
    void SetSaved(string const &fileName, FileStamp const &stamp, ContentPtr const &content);
    /// @name Names of the steps that Undo() and Redo() would take; empty if there are none
    /// @{
    string GetUndoName() const { return undo_.empty() ? string() : undo_.back().name; }
    string GetRedoName() const { return redo_.empty() ? string() : redo_.back().name; }
    /// @}

private:
    friend class Documents;

    /// A content that can come back, and the step that was made from it or to it.
    struct Step
    {
        string name;
        LoadedPtr loaded;
    };

    /// Puts a content with its levels in place of the same one without; false if there is none.
    bool ReplaceEqual(LoadedPtr const &loaded);
    /// The file cannot be loaded again.
    void Fail(FileStamp const &stamp, string const &failure);
    string Move(std::deque<Step> &from, std::deque<Step> &to);

    string fileName_;
    string title_;
    LoadedPtr loaded_;
    string failure_;
    FileStamp stamp_;
    /// Of the last look at the file.
    FileStamp seenStamp_;
    /// The content that the file has.
    std::weak_ptr<Content const> saved_;
    /// Has let go of the content that its file has.
    bool isReleased_ = false;
    /// Greater for documents that were current later.
    unsigned int currentTime_ = 0;
    unsigned int revision_ = 0;
    std::deque<Step> undo_;
    std::deque<Step> redo_;
};

using DocumentPtr = std::shared_ptr<Document>;

/// The open documents, of which one is current. When the others take too much memory, those that were current longest
/// ago are released: they let go of what their files have, unless somebody else holds it, and are loaded again when they
/// are opened or become current. Frame thread only.
class Documents : quillmarsh::NoCopy
{
public:
    /// Borrows the loader. `othersByteSize` is what documents may take that are not current.
    explicit Documents(Loader &loader, std::uint64_t othersByteSize = std::uint64_t(1) << 31)
        : loader_(loader),
          othersByteSize_(othersByteSize)
    {
    }

    /// Makes a file the current document, and loads it if it is not open. The name is absolute.
    void Open(string const &fileName);
    /// Adds a result, and makes it the current document.
    void Add(DocumentPtr document);
    /// Closes the current document; the one before it becomes current. Does nothing without one.
    void Close();
    /// Null if none is open.
    DocumentPtr const &GetCurrent() const { return current_; }
    void SetCurrent(DocumentPtr const &document);
    std::vector<DocumentPtr> const &GetAll() const { return all_; }
    /// Passes results of the loader on to the documents, and looks at files that may have changed: at most one each
    /// call, and each four times in a second. Returns the results, for lists.
    std::vector<LoadResult> Poll();
    /// Counts changes of the list, of the current document, and of any document.
    unsigned int GetRevision() const;

private:
    void Watch();
    void MakeCurrent(DocumentPtr document);
    Document *FindReleasable() const;
    void Release();

    Loader &loader_;
    std::uint64_t const othersByteSize_;
    unsigned int time_ = 0;
    std::vector<DocumentPtr> all_;
    DocumentPtr current_;
    unsigned int revision_ = 0;
    std::size_t watched_ = 0;
    std::chrono::steady_clock::time_point nextWatch_;
};

} // namespace viewer

#endif
