#include "source/dataobjects/codecs/openfailures.h"

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/dataobjects/dataexception.h>

#include <cerrno>

namespace quillmarsh
{
namespace
{

using std::filesystem::file_type;

/// Returns a text for types of files without contents to read or replace; null for a file or a device.
char const *NameOddity(file_type type)
{
    switch (type)
    {
    case file_type::directory:
        return "is a directory";
    case file_type::fifo:
        return "is a pipe";
    case file_type::socket:
        return "is a socket";
    default:
        return nullptr;
    }
}

CodecFailure FindOddity(string const &fileName, file_type type)
{
    if (file_system::GetStreamPath(fileName).empty())
        return {eCodecFailure::e_notAFile, "not a name of a file"};
    char const *const oddity = NameOddity(type);
    return oddity ? CodecFailure{eCodecFailure::e_notAFile, oddity} : CodecFailure();
}

eCodecFailure GetKindOfLastFailure()
{
    if (errno == ENOENT || errno == ENOTDIR)
        return eCodecFailure::e_notFound;
    return errno == EACCES || errno == EPERM || errno == EROFS ? eCodecFailure::e_noPermission
                                                               : eCodecFailure::e_system;
}

} // namespace

CodecFailure FindReadingObstacle(string const &fileName)
{
    file_type const type = file_system::GetFileType(fileName, true);
    if (type == file_type::character || type == file_type::block)
        return {eCodecFailure::e_notAFile, "is a device"};
    return FindOddity(fileName, type);
}

CodecFailure FindWritingObstacle(string const &fileName, bool overwrite)
{
    if (CodecFailure oddity = FindOddity(fileName, file_system::GetFileType(fileName, true)))
        return oddity;
    // Links are not followed here: a link that leads to no file exists, too.
    file_type const entry = file_system::GetFileType(fileName, false);
    if (!overwrite && entry != file_type::not_found && entry != file_type::none)
        return DescribeTakenName();
    return {};
}

CodecFailure DescribeTakenName()
{
    return {eCodecFailure::e_exists, "already exists, and overwriting must be allowed"};
}

CodecFailure DescribeOpenFailure()
{
    return {GetKindOfLastFailure(), "cannot be opened: " + file_system::GetLastFailureReason()};
}

CodecFailure DescribeWriteFailure()
{
    if (errno == 0)
        return {eCodecFailure::e_system, "writing failed"};
    return {GetKindOfLastFailure(), file_system::GetLastFailureReason()};
}

CodecFailure DescribeTemporaryFailure()
{
    CodecFailure failure = DescribeWriteFailure();
    failure.text = "a temporary file cannot be written: " + failure.text;
    return failure;
}

CodecFailure DescribeNoMemory(string const &text)
{
    return {eCodecFailure::e_noMemory, "not enough memory" + (text.empty() ? text : ": " + text)};
}

void Tell(CodecFailure const &failure)
{
    TellCodecFailure(failure.kind, failure.text);
}

AutoPtr<sampled_data::InputFile> OpenInputFile(string const &fileName)
{
    try
    {
        return std::make_unique<sampled_data::InputFile>(fileName);
    }
    catch (sampled_data::DataException const &thrown)
    {
        Tell(thrown.GetFailure());
        return nullptr;
    }
}

} // namespace quillmarsh
