// Sampled data on the workbench: what is loaded, and how it is filtered and saved.
#ifndef QUILLMARSH_PLUGINS_WORKBENCH_DATABENCH_H
#define QUILLMARSH_PLUGINS_WORKBENCH_DATABENCH_H

#include "sampleddata/datafile.h"

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
    quillmarsh::tools::SampledData &GetData();
    /// Replaces the current data.
    void SetData(quillmarsh::tools::SampledData data);

    /// Name of the filter for resampling.
    quillmarsh::string filter = "linear";
    quillmarsh::tools::SaveSettings save;

private:
    std::optional<quillmarsh::tools::SampledData> data_;
};

} // namespace workbench

#endif
