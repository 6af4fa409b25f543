// Makes a small grey copy of a picture: load, resample, convert, save.
#include <quillmarsh/quillmarsh.h>

#include <cstdlib>
#include <iostream>

namespace
{

using namespace quillmarsh;

sampled_data::FileType FindType(string const &fileName)
{
    if (std::optional<sampled_data::FileType> const type = sampled_data::FindFileType(fileName))
        return *type;
    throw sampled_data::DataException(fileName + ": the extension is none of " + sampled_data::GetExtensions());
}

void Shrink(string const &from, string const &to)
{
    sampled_data::FileType const type = FindType(to);
    sampled_data::DataFile file(from);
    sampled_data::SampledData data = file.Load();
    if (data.GetDimensions().size() != 2)
        throw sampled_data::DataException(from + ": holds " + sampled_data::GetKindPhrase(data.GetDimensions().size()) +
                                          ", but only pictures are shrunk");
    data = sampled_data::Resample(data, {32, 32}, sampled_data::eSizeFilter::e_area);
    sampled_data::ChangeFormat(data, e_format_L8);
    sampled_data::SaveFile(data, to, type, {});
    std::cout << to << ": " << sampled_data::Describe(data.GetDimensions()) << " of "
              << sampled_data::GetFormatName(data.GetFormat()) << '\n';
}

} // namespace

int main(int argc, char **argv)
{
    platform::PrepareStandardStreams();
    std::vector<string> const words = platform::GetProgramArguments(argc, argv);
    if (words.size() != 3)
    {
        std::cerr << "usage: shrink FROM TO\n";
        return EXIT_FAILURE;
    }
    // A host has these already. They must exist for as long as data are loaded, changed and saved.
    SignalOperationsManager operations;
    DataCodecManager codecs;
    RegisterDefaultDataCodecs();
    try
    {
        Shrink(words[1], words[2]);
        return EXIT_SUCCESS;
    }
    catch (Exception const &thrown)
    {
        std::cerr << "shrink: " << thrown.GetMessage() << '\n';
    }
    return EXIT_FAILURE;
}
