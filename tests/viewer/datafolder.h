// A folder with files of samples, for tests of what opens and saves them.
#ifndef QUILLMARSH_TESTS_VIEWER_DATAFOLDER_H
#define QUILLMARSH_TESTS_VIEWER_DATAFOLDER_H

#include <viewer_model/files/documents.h>

#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/dataobjects/sampletransfer.h>

#include "tests/support/scratch_directory.h"
#include "tests/support/waiting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>

namespace viewer::tests
{

class DataFolder : public testing::Test
{
protected:
    DataFolder()
    {
        quillmarsh::RegisterDefaultDataCodecs();
        quillmarsh::RegisterDefaultImageFileExtensions();
    }

    /// Writes a file with one value in all bytes.
    string Save(string const &name, quillmarsh::sampled_data::Dimensions const &dimensions, unsigned char value,
                quillmarsh::eSampleFormat format = quillmarsh::e_format_L8,
                quillmarsh::sampled_data::SaveSettings settings = {})
    {
        quillmarsh::sampled_data::SampledData const data(format, dimensions);
        quillmarsh::SignalBase &samples = data.GetSamples();
        std::fill_n(samples.GetSamplesB(), samples.GetTotalByteSize(), value);
        settings.overwrite = true;
        string const file = directory_ / name;
        SaveFile(data, file, *quillmarsh::sampled_data::FindFileType(file), settings);
        return file;
    }

    /// Waits for the next result of a loader.
    LoadResult Take(Loader &loader)
    {
        quillmarsh::tests::WaitUntil(
            [&]
            {
                for (LoadResult &result : loader.Poll())
                    results_.push_back(std::move(result));
                return !results_.empty();
            });
        if (results_.empty())
            return {LoadResult::ePart::e_failed, "", nullptr, {}, "no result came"};
        LoadResult result = std::move(results_.front());
        results_.erase(results_.begin());
        return result;
    }

    quillmarsh::SignalOperationsManager operations_;
    quillmarsh::DataCodecManager manager_;
    quillmarsh::tests::ScratchDirectory directory_;
    std::vector<LoadResult> results_;
    std::atomic<int> numWakes_ = 0;
    Loader loader_{[this] { ++numWakes_; }};
};

} // namespace viewer::tests

#endif
