// Sampled data on the workbench: the loaded data, and the settings for filtering and saving.
#ifndef QUILLMARSH_PLUGINS_WORKBENCH_DATABENCH_H
#define QUILLMARSH_PLUGINS_WORKBENCH_DATABENCH_H

#include <quillmarsh/dataobjects/datafiles.h>
#include <quillmarsh/dataobjects/imagelimits.h>

#include <quillmarsh/basetools/variableregistry.h>

namespace workbench
{

/// The current data and the user's settings for the work on them. Console's thread only.
class DataBench
{
public:
    /// Exports the filter and the codec parameters. The registry refers to the members, so this object must outlive it.
    void ExportVariables(quillmarsh::VariableRegistry &registry);

    /// Returns the current data. Throws a DataException when none are loaded.
    quillmarsh::sampled_data::SampledData &GetData();
    /// Returns the current data as an image; null when none are loaded, or when they are not an image.
    quillmarsh::ImageBase const *FindImage() const { return data_ ? data_->Get<quillmarsh::ImageBase>() : nullptr; }
    /// Returns the number of changes of the current data and their samples.
    unsigned int GetRevision() const { return revision_; }
    /// Counts a change of the samples.
    void CountChange() { ++revision_; }
    /// Replaces the current data.
    void SetData(quillmarsh::sampled_data::SampledData data);

    /// Name of the filter for resampling.
    quillmarsh::string filter = "linear";
    /// Largest number of pixels of images that are loaded.
    unsigned int maxPixels = quillmarsh::image_limits::s_defaultMaxPixels;
    quillmarsh::sampled_data::SaveSettings save;

private:
    std::optional<quillmarsh::sampled_data::SampledData> data_;
    unsigned int revision_ = 0;
};

} // namespace workbench

#endif
