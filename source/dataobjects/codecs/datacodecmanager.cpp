#include <quillmarsh/dataobjects/datacodecmanager.h>

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/dataobjects/inputfile.h>

#include "source/dataobjects/codecs/codecregistry.h"

#include <typeinfo>

namespace quillmarsh
{
namespace
{

namespace registry = codec_registry;

constexpr char s_szEncoder[] = "Encoder";
constexpr char s_szDecoder[] = "Decoder";

string ManagerName()
{
    return FormatClassName(GetTypeName(typeid(DataCodecManager)));
}

/// Sets the list of a registered category. Does nothing for any other category.
void SetParams(std::map<unsigned int, NamedParameterList> &lists, unsigned int category, NamedParameterList const &list)
{
    if (NamedParameterList *const params = registry::FindCategory(lists, category))
        *params = list;
}

constexpr char s_szUnknownFile[] = "no codec knows this kind of file";

std::vector<DataDecoder *> const &RequireDecoders(registry::Registry<DataDecoder> const &decoders,
                                                  unsigned int category)
{
    auto const *const found = registry::FindCategory(decoders, category);
    if (!found)
        QUILLMARSH_THROW(InvalidUsageException, "Loading unregistered data-category data.");
    return *found;
}

/// Calls each codec until one succeeds, and returns its result. If none does, tells the most specific failure, or
/// `passed` if all codecs have passed the request on.
template<typename Codec, typename Call>
auto TryEach(std::vector<Codec *> const &codecs, string const &passed, Call const &call)
{
    CodecFailure failure = {eCodecFailure::e_otherFormat, passed};
    for (Codec *const codec : codecs)
    {
        CodecFailureSentry told;
        if (auto const result = call(*codec))
            return result;
        registry::KeepBetter(failure, told.GetFailure());
    }
    TellCodecFailure(failure.kind, failure.text);
    return decltype(call(*codecs.front())){};
}

} // namespace

constinit DataCodecManager *DataCodecManager::s_pInstance = nullptr;

DataCodecManager::DataCodecManager()
{
    QUILLMARSH_ASSERT(!s_pInstance, ManagerName() + " singleton already created.");
    s_pInstance = this;
    ResetEncoderInitialParamList();
    ResetDecoderInitialParamList();
}

DataCodecManager::~DataCodecManager()
{
    UnregisterAllEncoders();
    UnregisterAllDecoders();
    QUILLMARSH_ASSERT(s_pInstance, "Destructing non-existent " + ManagerName() + " singleton.");
    s_pInstance = nullptr;
}

DataCodecManager &DataCodecManager::Instance()
{
    QUILLMARSH_ASSERT(s_pInstance, ManagerName() + " singleton is not created.");
    return *s_pInstance;
}

DataCodecManager *DataCodecManager::InstancePtr()
{
    QUILLMARSH_ASSERT(s_pInstance, ManagerName() + " singleton is not created.");
    return s_pInstance;
}

void DataCodecManager::RegisterDataCategory(unsigned int category)
{
    if (IsDataCategoryRegistered(category))
        return;
    encoders_[category];
    decoders_[category];
    encoderDefaultParams_[category] = encoderInitialParams_;
    decoderDefaultParams_[category] = decoderInitialParams_;
}

bool DataCodecManager::IsDataCategoryRegistered(unsigned int category) const
{
    return encoders_.contains(category);
}

void DataCodecManager::RegisterEncoder(DataEncoder *encoder)
{
    registry::Register(encoders_, encoder, s_szEncoder);
}

void DataCodecManager::RegisterDecoder(DataDecoder *decoder)
{
    registry::Register(decoders_, decoder, s_szDecoder);
}

bool DataCodecManager::IsEncoderRegistered(unsigned int category, string const &codecName) const
{
    return FindEncoder(category, codecName) != nullptr;
}

bool DataCodecManager::IsDecoderRegistered(unsigned int category, string const &codecName) const
{
    return FindDecoder(category, codecName) != nullptr;
}

void DataCodecManager::UnregisterEncoder(unsigned int category, string const &codecName)
{
    registry::Unregister(encoders_, category, codecName);
}

void DataCodecManager::UnregisterDecoder(unsigned int category, string const &codecName)
{
    registry::Unregister(decoders_, category, codecName);
}

void DataCodecManager::UnregisterAllEncoders(unsigned int category)
{
    registry::UnregisterAll(encoders_, category);
}

void DataCodecManager::UnregisterAllDecoders(unsigned int category)
{
    registry::UnregisterAll(decoders_, category);
}

void DataCodecManager::UnregisterAllEncoders()
{
    registry::UnregisterAll(encoders_);
}

void DataCodecManager::UnregisterAllDecoders()
{
    registry::UnregisterAll(decoders_);
}

void DataCodecManager::PrioritizeEncoders(unsigned int category, string const &preferred, string const &other)
{
    registry::Prioritize(encoders_, category, preferred, other);
}

void DataCodecManager::PrioritizeDecoders(unsigned int category, string const &preferred, string const &other)
{
    registry::Prioritize(decoders_, category, preferred, other);
}

unsigned int DataCodecManager::GetNumEncoders(unsigned int category) const
{
    return registry::Count(encoders_, category);
}

DataEncoder *DataCodecManager::GetEncoder(unsigned int category, unsigned int index) const
{
    return registry::Get(encoders_, category, index);
}

unsigned int DataCodecManager::GetNumDecoders(unsigned int category) const
{
    return registry::Count(decoders_, category);
}

DataDecoder *DataCodecManager::GetDecoder(unsigned int category, unsigned int index) const
{
    return registry::Get(decoders_, category, index);
}

DataEncoder *DataCodecManager::FindEncoder(unsigned int category, string const &codecName) const
{
    return registry::Find(encoders_, category, codecName);
}

DataDecoder *DataCodecManager::FindDecoder(unsigned int category, string const &codecName) const
{
    return registry::Find(decoders_, category, codecName);
}

std::vector<DataEncoder *> const *DataCodecManager::FindEncoders(unsigned int category) const
{
    return registry::FindCategory(encoders_, category);
}

std::vector<DataDecoder *> const *DataCodecManager::FindDecoders(unsigned int category) const
{
    return registry::FindCategory(decoders_, category);
}

void DataCodecManager::DumpRegisteredEncoders(unsigned int category, ostream &out, unsigned int indent) const
{
    registry::Dump(encoders_, category, out, indent);
}

void DataCodecManager::DumpRegisteredDecoders(unsigned int category, ostream &out, unsigned int indent) const
{
    registry::Dump(decoders_, category, out, indent);
}

void DataCodecManager::SetDefaultFileFormatExtension(unsigned int category, string const &format,
                                                     string const &extension)
{
    if (!extension.empty())
    {
        fileFormatExtensions_[category][format] = extension;
        return;
    }
    auto *const extensions = registry::FindCategory(fileFormatExtensions_, category);
    if (!extensions)
        return;
    extensions->erase(format);
    if (extensions->empty())
        fileFormatExtensions_.erase(category);
}

bool DataCodecManager::GetDefaultFileFormatExtension(unsigned int category, string const &format, string &extension,
                                                     string const &fallback) const
{
    extension = fallback;
    auto const *const extensions = registry::FindCategory(fileFormatExtensions_, category);
    if (!extensions)
        return false;
    auto const found = extensions->find(format);
    if (found == extensions->end())
        return false;
    extension = found->second;
    return true;
}

std::map<string, string> DataCodecManager::GetDefaultFileFormatExtensions(unsigned int category) const
{
    auto const *const extensions = registry::FindCategory(fileFormatExtensions_, category);
    return extensions ? *extensions : std::map<string, string>();
}

void DataCodecManager::ClearDefaultFileFormatExtensions(unsigned int category)
{
    fileFormatExtensions_.erase(category);
}

void DataCodecManager::ClearDefaultFileFormatExtensions()
{
    fileFormatExtensions_.clear();
}

void DataCodecManager::SetEncoderDefaultParamList(unsigned int category, NamedParameterList const &list)
{
    SetParams(encoderDefaultParams_, category, list);
}

void DataCodecManager::SetDecoderDefaultParamList(unsigned int category, NamedParameterList const &list)
{
    SetParams(decoderDefaultParams_, category, list);
}

void DataCodecManager::SetEncoderDefaultParamList(unsigned int category, CodecParameterFactory const &factory)
{
    NamedParameterList list = encoderInitialParams_;
    factory.FillParameterList(category, true, list);
    SetEncoderDefaultParamList(category, list);
}

void DataCodecManager::SetDecoderDefaultParamList(unsigned int category, CodecParameterFactory const &factory)
{
    NamedParameterList list = decoderInitialParams_;
    factory.FillParameterList(category, false, list);
    SetDecoderDefaultParamList(category, list);
}

NamedParameterList const &DataCodecManager::GetEncoderDefaultParamList(unsigned int category) const
{
    auto const *const list = registry::FindCategory(encoderDefaultParams_, category);
    return list ? *list : encoderInitialParams_;
}

NamedParameterList const &DataCodecManager::GetDecoderDefaultParamList(unsigned int category) const
{
    auto const *const list = registry::FindCategory(decoderDefaultParams_, category);
    return list ? *list : decoderInitialParams_;
}

void DataCodecManager::ResetEncoderInitialParamList()
{
    using namespace data_codec_parameters;

    encoderInitialParams_.Clear();
    encoderInitialParams_.Insert(NamedParameter(Param_FileOverwrite, Value_FileOverwrite_Default), true);
    encoderInitialParams_.Insert(NamedParameter(Param_ByteOrderBigEndian, Value_ByteOrderBigEndian_Default), true);
    encoderInitialParams_.Insert(NamedParameter(Param_UseCompression, Value_UseCompression_Default), true);
    encoderInitialParams_.Insert(NamedParameter(Param_CompressionLevel, Value_CompressionLevel_Default), true);
    encoderInitialParams_.Insert(NamedParameter(Param_Quality, Value_Quality_Default), true);
}

void DataCodecManager::ResetDecoderInitialParamList()
{
    decoderInitialParams_.Clear();
}

void DataCodecManager::SetEncoderInitialParamList(NamedParameterList const &list)
{
    encoderInitialParams_ = list;
}

void DataCodecManager::SetDecoderInitialParamList(NamedParameterList const &list)
{
    decoderInitialParams_ = list;
}

bool DataCodecManager::SaveData(unsigned int category, void const *data, string const &fileName, string const &format,
                                NamedParameterList const *params)
{
    if (!data || fileName.empty() || format.empty())
    {
        TellCodecFailure(eCodecFailure::e_otherFormat, "data, name of the file or format are missing");
        return false;
    }
    auto const *const encoders = FindEncoders(category);
    if (!encoders)
        QUILLMARSH_THROW(InvalidUsageException, "Saving unregistered data-category data.");
    NamedParameterList const &used = params ? *params : GetEncoderDefaultParamList(category);
    return TryEach(*encoders, "no codec saves such data in the format " + format,
                   [&](DataEncoder &encoder) { return encoder.SaveData(data, fileName, format, used); });
}

void *DataCodecManager::LoadData(unsigned int category, string const &fileName, NamedParameterList const *params)
{
    if (fileName.empty() || !file_system::FileExists(file_system::GetFullPathNameA(fileName, false)))
    {
        TellCodecFailure(eCodecFailure::e_notFound, "there is no such file");
        return nullptr;
    }
    NamedParameterList const &used = params ? *params : GetDecoderDefaultParamList(category);
    return TryEach(RequireDecoders(decoders_, category), s_szUnknownFile,
                   [&](DataDecoder &decoder) { return decoder.LoadData(fileName, used); });
}

void *DataCodecManager::LoadData(unsigned int category, sampled_data::InputFile &file, NamedParameterList const *params)
{
    NamedParameterList const &used = params ? *params : GetDecoderDefaultParamList(category);
    return TryEach(RequireDecoders(decoders_, category), s_szUnknownFile,
                   [&](DataDecoder &decoder)
                   {
                       auto *const opened = dynamic_cast<OpenFileDecoder *>(&decoder);
                       if (opened)
                           return opened->LoadOpened(file, used);
                       return file.IsNamed() ? decoder.LoadData(file.GetName(), used) : nullptr;
                   });
}

bool DataCodecManager::QueryData(unsigned int category, sampled_data::InputFile &file, DataFileHead &head,
                                 NamedParameterList const *params) const
{
    NamedParameterList const &used = params ? *params : GetDecoderDefaultParamList(category);
    return TryEach(RequireDecoders(decoders_, category), s_szUnknownFile,
                   [&](DataDecoder &decoder)
                   {
                       auto *const opened = dynamic_cast<OpenFileDecoder *>(&decoder);
                       return opened && opened->QueryOpenedWith(file, used, head);
                   });
}

} // namespace quillmarsh
