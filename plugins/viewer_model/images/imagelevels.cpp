#include "imagelevels.h"

#include "rowmeans.h"

#include <algorithm>

namespace viewer
{

using namespace quillmarsh;

namespace
{

/// Bytes of samples between two reports of progress.
constexpr std::size_t s_bandByteSize = std::size_t(4) << 20;

/// Counts bytes that are done, and asks whether to go on.
class Progress
{
public:
    Progress(std::function<bool(double)> const &report, double total) : report_(report), total_(total) {}

    /// Returns false to stop.
    bool Add(double numBytes)
    {
        done_ += numBytes;
        return !report_ || report_(std::min(done_ / total_, 1.0));
    }

private:
    std::function<bool(double)> const &report_;
    double total_;
    double done_ = 0;
};

/// Fills a level from the one before. Returns false when it was stopped.
bool FillLevel(ImageBase &level, ImageBase const &source, MeanRow meanRow, Progress &progress)
{
    std::size_t const sourceRowSize = source.GetRowByteSize();
    std::size_t const rowSize = level.GetRowByteSize();
    unsigned int const lastRow = source.GetNumRows() - 1;
    std::size_t const rowsOfBand = std::max<std::size_t>(s_bandByteSize / (2 * sourceRowSize), 1);
    for (std::size_t row = 0; row < level.GetNumRows();)
    {
        std::size_t const end = std::min<std::size_t>(row + rowsOfBand, level.GetNumRows());
        double const bandSize = static_cast<double>(end - row) * 2 * static_cast<double>(sourceRowSize);
        for (; row < end; ++row)
        {
            unsigned char const *const upper = source.GetSamplesB() + 2 * row * sourceRowSize;
            // The mean of an odd last row is that of the row twice.
            unsigned char const *const lower = 2 * row < lastRow ? upper + sourceRowSize : upper;
            meanRow(level.GetSamplesB() + row * rowSize, upper, lower, source.GetNumColumns());
        }
        if (!progress.Add(bandSize))
            return false;
    }
    return true;
}

} // namespace

ImageLevels::ImageLevels(ContentPtr content) : content_(std::move(content)) {}
ImageLevels::~ImageLevels() = default;

std::shared_ptr<ImageLevels const> ImageLevels::Build(ContentPtr content, std::function<bool(double)> const &progress)
{
    auto result = std::make_shared<ImageLevels>(std::move(content));
    ImageBase const *source = &result->GetLevel(0);
    eSampleFormat const format = source->GetSampleFormat();
    MeanRow const meanRow = FindMeanRow(format);
    Progress reported(progress, std::max(source->GetTotalByteSize() * 4.0 / 3.0, 1.0));
    while (meanRow && (source->GetNumRows() > 1 || source->GetNumColumns() > 1))
    {
        AutoPtr<ImageBase> level(
            ManufactureImage(format, (source->GetNumRows() - 1) / 2 + 1, (source->GetNumColumns() - 1) / 2 + 1));
        if (!FillLevel(*level, *source, meanRow, reported))
            return nullptr;
        result->levels_.push_back(std::move(level));
        source = result->levels_.back().get();
    }
    return result;
}

ImageBase const &ImageLevels::GetLevel(unsigned int level) const
{
    if (level == 0 || levels_.empty())
        return *content_->Get<ImageBase>();
    return *levels_[std::min<std::size_t>(level, levels_.size()) - 1];
}

unsigned int ImageLevels::FindLevel(double zoom) const
{
    unsigned int level = 0;
    for (double next = zoom * 2; level + 1 < GetNumLevels() && next <= 1; next *= 2)
        ++level;
    return level;
}

} // namespace viewer
