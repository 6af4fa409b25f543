// Sampled data on the workbench: what is loaded, and how it is filtered and saved.
#ifndef QUILLMARSH_PLUGINS_WORKBENCH_DATABENCH_H
#define QUILLMARSH_PLUGINS_WORKBENCH_DATABENCH_H

#include <quillmarsh/dataobjects/datafiles.h>

#include <quillmarsh/basetools/variableregistry.h>

namespace workbench
{

/// The current data, and what the user may change of the work on them. Console's thread.
class DataBench
{
public:
    /// Exports filter and codec parameters as variables, which stay here.
    void ExportVariables(quillmarsh::VariableRegistry &registry);

    /// The current data. Throws a DataException when there are none.
    quillmarsh::sampled_data::SampledData &GetData();
    /// Replaces the current data.
    void SetData(quillmarsh::sampled_data::SampledData data);

    /// Name of the filter for resampling.
    quillmarsh::string filter = "linear";
    quillmarsh::sampled_data::SaveSettings save;

private:
    std::optional<quillmarsh::sampled_data::SampledData> data_;
};

} // namespace workbench

#endif
