// Long work on documents: steps, saves and levels, as jobs.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_FILES_DOCUMENTWORK_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_FILES_DOCUMENTWORK_H

#include "documents.h"
#include "edits.h"
#include "jobs.h"

#include <optional>

namespace viewer
{

/// Does steps and saves of documents as jobs. Those of one document come one after the other: each begins with the
/// content that the one before has made, even if nobody has seen it yet, and none begins after one that failed or was
/// stopped. Work on a document that is being loaded waits for it. Frame thread only.
class DocumentWork : quillmarsh::NoCopy
{
public:
    /// Gets one line when work has ended, or has failed.
    using Say = std::function<void(string const &line, bool isFailure)>;

    /// Borrows the jobs; Jobs::Poll() must not be called after this object has gone.
    DocumentWork(Jobs &jobs, Say say);
    ~DocumentWork();

    /// @name Work
    /// Throw a DataException for null documents, and for what can be known to fail.
    /// @{
    /// Makes a step of the document, which has this name.
    void Change(DocumentPtr const &document, Edit const &edit, string const &step);
    /// Saves the content under an absolute name, which becomes that of the document.
    void Save(DocumentPtr const &document, string const &fileName, quillmarsh::sampled_data::FileType const &type,
              quillmarsh::sampled_data::SaveSettings const &settings);
    /// Saves a chain of mipmaps as "PREFIX.0.qmdp.image" and so on; in the format of the content if none is given.
    void SaveMipmaps(DocumentPtr const &document, string const &prefix, std::optional<quillmarsh::eSampleFormat> format,
                     quillmarsh::sampled_data::eSizeFilter filter,
                     quillmarsh::sampled_data::SaveSettings const &settings);
    /// Makes the smaller levels of a mapped image, whatever memory they take.
    void MakeLevels(DocumentPtr const &document);
    /// Take a step back, or make it again. Return its name. Throw a DataException when there is none, and during work on
    /// the document.
    string Undo(DocumentPtr const &document);
    string Redo(DocumentPtr const &document);
    /// @}

    bool IsBusy(DocumentPtr const &document) const;
    /// Begins what has waited for documents to be loaded. Call it in each frame.
    void Update();

private:
    struct Line;
    struct Task;

    Line &FindLine(DocumentPtr const &document);
    void Add(DocumentPtr const &document, Task task);
    void Begin(std::shared_ptr<Line> const &line, Task const &task);
    /// A job of the document has come to its end.
    void End(Line const &line);

    Jobs &jobs_;
    Say say_;
    std::vector<std::shared_ptr<Line>> lines_;
};

} // namespace viewer

#endif
