#include <quillmarsh/dataobjects/datacodecparameters.h>

namespace quillmarsh
{

SignalCodecParamFactory::SignalCodecParamFactory(bool originBottom, bool originBack)
    : originBottom_(originBottom),
      originBack_(originBack)
{
}

void SignalCodecParamFactory::FillParameterList(unsigned int, bool, NamedParameterList &list) const
{
    list.Insert(NamedParameter(signal_codec_parameters::Param_OriginBottom, originBottom_), true);
    list.Insert(NamedParameter(signal_codec_parameters::Param_OriginBack, originBack_), true);
}

} // namespace quillmarsh
