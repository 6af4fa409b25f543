// Data that can be a signal, an image or a volume.
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

/// Numbers of samples; of rows and columns; or of layers, rows and columns. Their count gives the kind of data.
using Dimensions = std::vector<unsigned int>;

/// Returns "signal", "image" or "volume" for 1, 2 or 3 dimensions.
QUILLMARSH_API char const *GetKindName(std::size_t numDimensions);
/// Returns the same with its article, as in "an image".
QUILLMARSH_API string GetKindPhrase(std::size_t numDimensions);
/// Returns the dimensions with their names, as in "2 rows, 3 columns".
QUILLMARSH_API string Describe(Dimensions const &dimensions);

/// @name Names of sample formats
/// The names of the library, and "FP32NormL" and "FP32NormA"; "unknown" for any other format. FindFormat() accepts
/// upper and lower case, and returns nothing for an unknown name.
/// @{
QUILLMARSH_API string GetFormatName(unsigned int format);
QUILLMARSH_API std::optional<eSampleFormat> FindFormat(string const &name);
/// Returns all formats that have a name.
QUILLMARSH_API std::vector<eSampleFormat> GetNamedFormats();
/// @}

/// Owns the container of one signal, image or volume. One thread at a time.
class QUILLMARSH_API SampledData
{
public:
    /// @name Construction from a container, which must not be null
    /// @{
    explicit SampledData(AutoPtr<SignalBase> signal) : container_(std::move(signal)) {}
    explicit SampledData(AutoPtr<ImageBase> image) : container_(std::move(image)) {}
    explicit SampledData(AutoPtr<VolumeBase> volume) : container_(std::move(volume)) {}
    /// @}

    /// Creates data with these dimensions and all bytes 255, so that bytes which are not written later are opaque.
    /// Throws a DataException when no container has samples of the format's size.
    SampledData(eSampleFormat format, Dimensions const &dimensions);

    /// Calls `work` with the container as its own type, and returns the result.
    template<typename Work>
    decltype(auto) Visit(Work &&work) const
    {
        return std::visit([&](auto const &container) -> decltype(auto) { return work(*container); }, container_);
    }
    /// Returns the container as a signal.
    SignalBase &GetSamples() const;
    /// Returns the container as its own type; null for data of another kind.
    template<typename Container>
    Container *Get() const
    {
        auto const *const container = std::get_if<AutoPtr<Container>>(&container_);
        return container ? container->get() : nullptr;
    }

    /// Returns the dimensions, one for a signal, two for an image, three for a volume.
    Dimensions GetDimensions() const;
    /// Returns the format of the samples.
    eSampleFormat GetFormat() const { return GetSamples().GetSampleFormat(); }

private:
    std::variant<AutoPtr<SignalBase>, AutoPtr<ImageBase>, AutoPtr<VolumeBase>> container_;
};

} // namespace quillmarsh::sampled_data

#endif
