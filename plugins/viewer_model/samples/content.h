// Samples that the viewer shows, and what was learned about their file.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_SAMPLES_CONTENT_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_SAMPLES_CONTENT_H

#include <quillmarsh/dataobjects/datafiles.h>

#include <memory>
#include <vector>

namespace viewer
{

using quillmarsh::string;

class ImageLevels;
class SignalLevels;

/// A signal, an image or a volume. Nobody changes it once it is made: an edit makes another content. Any thread may read
/// it, and it lives as long as somebody holds it.
class Content : quillmarsh::NoCopy
{
public:
    /// `storage` is what the samples lie in, if the data only borrow them, such as a mapped file.
    explicit Content(quillmarsh::sampled_data::SampledData data, std::shared_ptr<void const> storage = nullptr)
        : storage_(std::move(storage)),
          data_(std::move(data))
    {
    }

    quillmarsh::sampled_data::SampledData const &GetData() const { return data_; }
    /// Returns the samples as ImageBase, VolumeBase or SignalBase; null for data of another kind.
    template<typename Container>
    Container const *Get() const
    {
        return data_.Get<Container>();
    }
    /// True when the samples lie in something that the data only borrow.
    bool IsMapped() const { return storage_ != nullptr; }
    /// Returns 1 for a signal, 2 for an image, 3 for a volume.
    std::size_t GetNumDimensions() const { return data_.GetDimensions().size(); }

private:
    std::shared_ptr<void const> storage_;
    quillmarsh::sampled_data::SampledData data_;
};

using ContentPtr = std::shared_ptr<Content const>;

/// A content with its smaller versions, which a thread of the loader or of a job has made. Immutable, as contents are.
struct Loaded
{
    ContentPtr content;
    /// Of an image. Not null, but it may be without smaller levels until they are there.
    std::shared_ptr<ImageLevels const> imageLevels;
    /// Of a signal.
    std::shared_ptr<SignalLevels const> signalLevels;
    /// What the file holds. Without a file, only format and dimensions are set.
    quillmarsh::sampled_data::DataFileDesc desc;
    /// What loading left out, in words such as "16 bits become 8".
    std::vector<string> losses;
};

using LoadedPtr = std::shared_ptr<Loaded const>;

} // namespace viewer

#endif
