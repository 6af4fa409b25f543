#include "databench.h"

namespace workbench
{

using namespace quillmarsh;
using sampled_data::DataException;
using sampled_data::SampledData;

void DataBench::ExportVariables(VariableRegistry &registry)
{
    using namespace data_codec_parameters;
    registry.RegisterVariable(
        VariableProxyString(&filter, "data.filter", "filter of resample: nearest, linear, area or lanczos"));
    registry.RegisterVariable(
        VariableProxyUInt(&maxPixels, "data.max_pixels", "refuse to load images with more pixels"));
    registry.RegisterVariable(VariableProxyBool(&save.overwrite, "data.overwrite", "replace existing files"));
    registry.RegisterVariable(
        VariableProxyBool(&save.bigEndian, "data.big_endian", "save packages in big-endian order"));
    registry.RegisterVariable(VariableProxyUInt(&save.id, "data.id", "id of saved packages"));
    registry.RegisterVariable(VariableProxyBool(&save.originBottom, "data.origin_bottom", "save the last row first"));
    registry.RegisterVariable(VariableProxyBool(&save.originBack, "data.origin_back", "save the last layer first"));
    registry.RegisterVariable(
        VariableProxyBool(&save.useCompression, "data.compression", "compress PNG and TIFF files"));
    registry.RegisterVariable(VariableProxyRangeCheckedUInt(&save.compressionLevel, Value_CompressionLevel_Min,
                                                            Value_CompressionLevel_Max, "data.compression_level",
                                                            "effort of the compression"));
    registry.RegisterVariable(VariableProxyRangeCheckedUInt(&save.quality, Value_Quality_Min, Value_Quality_Max,
                                                            "data.quality", "quality of JPEG files"));
}

SampledData &DataBench::GetData()
{
    if (!data_)
        throw DataException("no data are loaded");
    return *data_;
}

void DataBench::SetData(SampledData data)
{
    data_ = std::move(data);
    CountChange();
}

} // namespace workbench
