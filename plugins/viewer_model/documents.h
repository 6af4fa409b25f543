// What is open: files and results, with their steps back.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_DOCUMENTS_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_DOCUMENTS_H

#include "loader.h"

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
    /// Null while it is being loaded, and after a failure without an older content.
    LoadedPtr const &GetLoaded() const { return loaded_; }
    /// One line; empty if it could be loaded.
    string const &GetFailure() const { return failure_; }
    bool IsLoading() const { return loaded_ == nullptr && failure_.empty(); }
    /// Has steps that no file has yet.
    bool IsChanged() const { return isChanged_; }
    FileStamp const &GetStamp() const { return stamp_; }
    /// Counts changes of content, levels and failure.
    unsigned int GetRevision() const { return revision_; }

    /// Takes what the loader has found. A file that has changed replaces the content, and forgets the steps.
    void TakeResult(LoadResult const &result);
    /// Makes a step: the old content can come back. `step` names it, as in "convert -format=L8".
    void Change(LoadedPtr loaded, string const &step);
    /// Takes the last step back; returns its name, empty if there is none.
    string Undo();
    /// Makes a step again that was taken back, likewise.
    string Redo();
    /// It was saved as this file.
    void SetSaved(string const &fileName, FileStamp const &stamp);

private:
    struct Step
    {
        string name;
        LoadedPtr loaded;
    };

    string fileName_;
    string title_;
    LoadedPtr loaded_;
    string failure_;
    FileStamp stamp_;
    bool isChanged_ = false;
    unsigned int revision_ = 0;
    std::deque<Step> undo_;
    std::deque<Step> redo_;
};

using DocumentPtr = std::shared_ptr<Document>;

/// The open documents, of which one is current. Frame thread only.
class Documents : quillmarsh::NoCopy
{
public:
    /// Borrows the loader.
    explicit Documents(Loader &loader) : loader_(loader) {}

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
    /// call. Returns the results, for lists.
    std::vector<LoadResult> Poll();
    /// Counts changes of the list, of the current document, and of any document.
    unsigned int GetRevision() const { return revision_; }

private:
    Loader &loader_;
    std::vector<DocumentPtr> all_;
    DocumentPtr current_;
    unsigned int revision_ = 0;
    std::size_t watched_ = 0;
};

} // namespace viewer

#endif
