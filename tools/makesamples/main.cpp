// makesamples FOLDER: writes the data set into a folder.
#include "samples.h"

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/dataobjects/signaloperations.h>
#include <quillmarsh/platform/program.h>

#include <iostream>

namespace makesamples
{
namespace
{

using namespace quillmarsh;
using sampled_data::DataException;

void Write(Sample const &sample, string const &folder)
{
    sampled_data::SaveSettings settings;
    settings.overwrite = true;
    settings.quality = sample.quality;
    sampled_data::SaveFile(sample.make(), folder + sample.fileName, *sampled_data::FindFileType(sample.fileName),
                           settings);
}

void MakeFolder(string const &folder)
{
    if (!file_system::DirectoryExists(folder) && !file_system::CreateDirectoryPath(folder))
        throw DataException(folder + ": " + file_system::GetLastFailureReason());
}

int Main(std::vector<string> const &words)
{
    if (words.size() != 2)
    {
        std::cerr << "Usage: makesamples FOLDER\nWrites pictures, signals and volumes into FOLDER.\n";
        return 2;
    }
    SignalOperationsManager const operations;
    DataCodecManager const codecs;
    RegisterDefaultDataCodecs();
    string folder = words[1];
    file_system::ForceTrailingPathSeparator(folder);
    try
    {
        MakeFolder(folder);
        MakeFolder(folder + "formats");
        for (auto const &samples : {GetPictures(), GetSignals(), GetVolumes()})
        {
            for (Sample const &sample : samples)
                Write(sample, folder);
        }
    }
    catch (DataException const &failure)
    {
        std::cerr << "makesamples: " << failure.GetMessage() << '\n';
        return 1;
    }
    return 0;
}

} // namespace
} // namespace makesamples

int main(int argc, char **argv)
{
    return makesamples::Main(quillmarsh::platform::GetProgramArguments(argc, argv));
}
