// A signal, an image or a volume, whichever a file holds.
#ifndef QUILLMARSH_DATAOBJECTS_SAMPLEDDATA_H
#define QUILLMARSH_DATAOBJECTS_SAMPLEDDATA_H

#include <quillmarsh/dataobjects/dataexception.h>

#include <quillmarsh/dataobjects/imagebase.h>
#include <quillmarsh/dataobjects/volumebase.h>

#include <optional>
#include <utility>
#include <variant>
#include <vector>

namespace quillmarsh::sampled_data
{

/// Samples; rows, columns; or layers, rows, columns: the number of them tells the kind of data.
using Dimensions = std::vector<unsigned int>;

/// "signal", "image" or "volume" by the number of dimensions.
QUILLMARSH_API char const *GetKindName(std::size_t numDimensions);
/// The same behind its article.
QUILLMARSH_API string GetKindPhrase(std::size_t numDimensions);
/// Dimensions with their names, as in "2 rows, 3 columns".
QUILLMARSH_API string Describe(Dimensions const &dimensions);

/// @name Names of sample formats
/// Those of the library, and "FP32NormL" and "FP32NormA"; "unknown" for any other. Letters of either case are read.
/// @{
QUILLMARSH_API string GetFormatName(unsigned int format);
QUILLMARSH_API std::optional<eSampleFormat> FindFormat(string const &name);
/// All formats that have a name.
QUILLMARSH_API std::vector<eSampleFormat> GetNamedFormats();
/// @}

/// Owns the container of one signal, image or volume. One thread at a time.
class QUILLMARSH_API SampledData
{
public:
    explicit SampledData(AutoPtr<SignalBase> signal) : container_(std::move(signal)) {}
    explicit SampledData(AutoPtr<ImageBase> image) : container_(std::move(image)) {}
    explicit SampledData(AutoPtr<VolumeBase> volume) : container_(std::move(volume)) {}

    /// New data of a kind, with all bytes 255: whatever is not written later is opaque.
    SampledData(eSampleFormat format, Dimensions const &dimensions);

    /// Calls `work` with the container in its own type.
    template<typename Work>
    decltype(auto) Visit(Work &&work) const
    {
        return std::visit([&](auto const &container) -> decltype(auto) { return work(*container); }, container_);
    }
    /// The container as a signal.
    SignalBase &GetSamples() const;
    /// The container in its own type; null for data of another kind.
    template<typename Container>
    Container *Get() const
    {
        auto const *const container = std::get_if<AutoPtr<Container>>(&container_);
        return container ? container->get() : nullptr;
    }

    Dimensions GetDimensions() const;
    eSampleFormat GetFormat() const { return GetSamples().GetSampleFormat(); }

private:
    std::variant<AutoPtr<SignalBase>, AutoPtr<ImageBase>, AutoPtr<VolumeBase>> container_;
};

} // namespace quillmarsh::sampled_data

#endif
