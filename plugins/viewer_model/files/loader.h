// Loads files on threads of its own, ahead of their use where there is time.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_FILES_LOADER_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_FILES_LOADER_H

#include <viewer_model/samples/content.h>

#include <chrono>
#include <cstdint>
#include <functional>

namespace viewer
{

/// Size and time of a file, to see that it has changed.
struct FileStamp
{
    std::uint64_t byteSize = 0;
    /// Since the epoch of the file system's clock; 0 if there is no such file.
    std::int64_t time = 0;

    bool operator==(FileStamp const &) const = default;
};

/// Returns the stamp of a file; the default one if it is not there.
FileStamp GetFileStamp(string const &fileName);

/// Picture of a file for lists: A8R8G8B8, at most s_size pixels wide and high.
struct Preview
{
    static constexpr unsigned int s_size = 64;
    quillmarsh::AutoPtr<quillmarsh::ImageBase> picture;
};

/// What became of a request.
struct LoadResult
{
    enum class ePart
    {
        /// The samples are there; e_levels follows.
        e_content,
        /// The same content with all of its levels. Comes alone for a content without levels, and for one that was kept.
        e_levels,
        /// `failure` says why there is nothing.
        e_failed,
        /// A preview, in `preview`; of a file that cannot be loaded, e_failed comes instead.
        e_preview
    };
    ePart part;
    string fileName;
    LoadedPtr loaded = nullptr;
    /// Of the file ahead of loading.
    FileStamp stamp = {};
    /// One line that names file and reason.
    string failure = string();
    std::shared_ptr<Preview const> preview = nullptr;
};

/// Loads and prepares files. Requests come from one thread, which takes the results by Poll(); two threads do the work.
/// What was loaded is kept for a while: a file that was read ahead is there at once. Packages in the machine's byte order
/// are mapped, and not read.
class Loader : quillmarsh::NoCopy
{
public:
    /// `wake` is called on a thread of the loader when there is a result; it must be quick. `cacheByteSize` is what files
    /// that nobody shows may take.
    explicit Loader(std::function<void()> wake, std::uint64_t cacheByteSize = std::uint64_t(1) << 30);
    /// Stops what is going on, soon.
    ~Loader();

    /// Loads a file ahead of all others, again if it has changed since it was read ahead.
    void Load(string const &fileName);
    /// Loads files when nothing else is to be done, in this order; replaces the last list.
    void ReadAhead(std::vector<string> fileNames);
    /// Makes previews when nothing else is to be done, in this order, before those that were asked for earlier.
    void MakePreviews(std::vector<string> fileNames);
    /// Drops a request of Load(). No result of it comes after that.
    void Cancel(string const &fileName);
    /// Returns the results since the last call, in their order. A file that is read ahead and cannot be loaded has no
    /// result. Never waits.
    std::vector<LoadResult> Poll();
    /// True while a request of Load() is not finished.
    bool IsBusy() const;

private:
    struct State;
    quillmarsh::AutoPtr<State> state_;
};

} // namespace viewer

#endif
