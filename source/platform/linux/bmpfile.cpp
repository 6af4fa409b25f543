#include "source/platform/linux/bmpheader.h"
#include "source/platform/linux/imagefile.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace quillmarsh::platform
{
namespace
{

/// Upper bound for the pixels that one byte of runs describes: four bytes can skip 255 rows and columns.
constexpr std::uint64_t s_pixelsPerByte = 255 * 255 / 4 + 1;

/// One component of a packed pixel, converted to eight bits.
class Component
{
public:
    explicit Component(std::uint32_t mask)
        : mask_(mask),
          shift_(mask ? std::countr_zero(mask) : 0),
          largest_(mask >> shift_)
    {
    }

    unsigned char Get(std::uint32_t pixel) const
    {
        std::uint64_t const value = (pixel & mask_) >> shift_;
        return static_cast<unsigned char>((value * 255 + largest_ / 2) / largest_);
    }
    bool IsThere() const { return mask_ != 0; }

private:
    std::uint32_t mask_;
    int shift_;
    std::uint64_t largest_;
};

class BmpReader final : public ImageFileReader
{
public:
    BmpReader(std::FILE *file, std::uint64_t fileSize) : file_(file), fileSize_(fileSize) {}

    bool ReadHeader()
    {
        if (!ReadBmpHeader(file_, header_))
            return Fail(eImageFailure::e_unsupported, "a kind of BMP that is not supported, or a damaged header");
        if (header_.pixelOffset > fileSize_)
            return FailImplausible();
        if (header_.numRows == 0 || header_.numColumns == 0)
            return Fail(eImageFailure::e_damaged, "a BMP without pixels");
        std::uint64_t const size = fileSize_ - header_.pixelOffset;
        bool const isPlausible = header_.HasRuns() ? header_.numColumns <= size * s_pixelsPerByte / header_.numRows
                                                   : header_.GetRowByteSize() <= size / header_.numRows;
        ReadFacts();
        return isPlausible ? SetSize(header_.numRows, header_.numColumns, header_.masks[3] != 0) : FailImplausible();
    }

    bool Read(PixelRows const &rows) override
    {
        bool const isRead = std::fseek(file_, static_cast<long>(header_.pixelOffset), SEEK_SET) == 0 &&
                            (header_.HasRuns() ? ReadRuns(rows) : ReadRows(rows));
        return isRead || Fail(eImageFailure::e_damaged, std::feof(file_) != 0
                                                            ? "a BMP that is cut short"
                                                            : "a BMP with pixels outside of its palette or size");
    }

private:
    void ReadFacts()
    {
        constexpr double metersPerInch = 0.0254;
        ImageFileFacts &facts = GetFactsToFill();
        facts.resolutionX = header_.pixelsPerMeterX * metersPerInch;
        facts.resolutionY = header_.pixelsPerMeterY * metersPerInch;
        facts.paletteSize = static_cast<unsigned int>(header_.palette.size());
        if (header_.pixelBits <= 8)
        {
            facts.colours = eImageColours::e_palette;
            facts.bits = header_.pixelBits;
        }
        else if (header_.pixelBits == 16)
        {
            facts.bits = static_cast<unsigned int>(std::popcount(header_.masks[1]));
        }
    }

    bool ReadRows(PixelRows const &rows);
    bool ConvertRow(unsigned char const *bytes, unsigned char *pixel, unsigned int count) const;
    bool ConvertIndices(unsigned char const *bytes, unsigned char *pixel, unsigned int count) const;
    void ConvertPacked(unsigned char const *bytes, unsigned char *pixel, unsigned int count) const;
    bool ReadRuns(PixelRows const &rows);

    std::FILE *file_;
    std::uint64_t fileSize_;
    BmpHeader header_;
};

bool BmpReader::ReadRows(PixelRows const &rows)
{
    auto const rowSize = static_cast<std::size_t>(header_.GetRowByteSize());
    auto const bytes = std::make_unique_for_overwrite<unsigned char[]>(rowSize);
    for (unsigned int row = 0; row < rows.numRows; ++row)
    {
        if (std::fread(bytes.get(), 1, rowSize, file_) != rowSize ||
            !ConvertRow(bytes.get(), rows.GetRow(header_.isTopDown ? row : rows.numRows - 1 - row), rows.numColumns))
            return false;
    }
    return true;
}

bool BmpReader::ConvertRow(unsigned char const *bytes, unsigned char *pixel, unsigned int count) const
{
    if (header_.pixelBits <= 8)
        return ConvertIndices(bytes, pixel, count);
    if (header_.pixelBits != 24)
    {
        ConvertPacked(bytes, pixel, count);
        return true;
    }
    for (unsigned int i = 0; i < count; ++i, pixel += 4, bytes += 3)
    {
        std::memcpy(pixel, bytes, 3);
        pixel[3] = 0xFF;
    }
    return true;
}

bool BmpReader::ConvertIndices(unsigned char const *bytes, unsigned char *pixel, unsigned int count) const
{
    unsigned int const bits = header_.pixelBits;
    unsigned int const largest = (1u << bits) - 1;
    for (unsigned int i = 0; i < count; ++i, pixel += 4)
    {
        std::uint64_t const bit = std::uint64_t{i} * bits;
        unsigned int const index = bytes[bit / 8] >> (8 - bits - bit % 8) & largest;
        if (index >= header_.palette.size())
            return false;
        std::memcpy(pixel, header_.palette[index].data(), 4);
    }
    return true;
}

void BmpReader::ConvertPacked(unsigned char const *bytes, unsigned char *pixel, unsigned int count) const
{
    constexpr decltype(header_.masks) byteMasks = {0xFF, 0xFF << 8, 0xFF << 16, 0xFFu << 24};
    if (header_.pixelBits == 32 && header_.masks == byteMasks)
    {
        std::memcpy(pixel, bytes, std::size_t{count} * 4);
        return;
    }
    Component const components[] = {Component(header_.masks[0]), Component(header_.masks[1]),
                                    Component(header_.masks[2]), Component(header_.masks[3])};
    std::size_t const size = header_.pixelBits / 8;
    for (unsigned int i = 0; i < count; ++i, pixel += 4, bytes += size)
    {
        std::uint32_t packed = 0;
        for (std::size_t byte = 0; byte < size; ++byte)
            packed |= static_cast<std::uint32_t>(bytes[byte]) << 8 * byte;
        for (std::size_t component = 0; component < 4; ++component)
        {
            // A missing colour is 0; missing alpha is opaque.
            unsigned char const absent = component == 3 ? 0xFF : 0;
            pixel[component] = components[component].IsThere() ? components[component].Get(packed) : absent;
        }
    }
}

/// Decodes a run-length encoded picture.
class RunDecoder
{
public:
    RunDecoder(std::FILE *file, BmpHeader const &header, PixelRows const &rows)
        : file_(file),
          palette_(header.palette),
          isNibbles_(header.pixelBits == 4),
          rows_(rows)
    {
    }

    bool Decode()
    {
        for (;;)
        {
            int const count = std::fgetc(file_);
            int const value = std::fgetc(file_);
            if (value == EOF || hasFailed_)
                return false;
            if (count > 0)
                PutRun(count, value);
            else if (value == s_endOfPicture)
                return true;
            else if (value == s_endOfRow)
                Move(-static_cast<std::int64_t>(column_), 1);
            else if (value == s_delta)
                ReadDelta();
            else
                ReadLiterals(value);
        }
    }

private:
    static constexpr int s_endOfRow = 0;
    static constexpr int s_endOfPicture = 1;
    static constexpr int s_delta = 2;

    void PutRun(int count, int value)
    {
        for (int i = 0; i < count; ++i)
            Put(isNibbles_ ? (i % 2 == 0 ? value >> 4 : value & 15) : value);
    }

    void ReadLiterals(int count)
    {
        int const numBytes = isNibbles_ ? (count + 1) / 2 : count;
        for (int i = 0; i < numBytes; ++i)
        {
            int const value = std::fgetc(file_);
            if (value == EOF)
                hasFailed_ = true;
            else
                PutRun(isNibbles_ ? std::min(count - 2 * i, 2) : 1, value);
        }
        if (numBytes % 2 != 0)
            std::fgetc(file_);
    }

    void ReadDelta()
    {
        int const columns = std::fgetc(file_);
        Move(columns, std::fgetc(file_));
    }

    void Move(std::int64_t columns, std::int64_t rows)
    {
        column_ += static_cast<std::uint64_t>(columns);
        row_ += static_cast<std::uint64_t>(rows);
    }

    /// Runs may continue past the end of a row, because some programs fill the last byte.
    void Put(int index)
    {
        if (static_cast<std::size_t>(index) >= palette_.size() || row_ >= rows_.numRows)
            hasFailed_ = true;
        else if (column_ < rows_.numColumns)
            std::memcpy(rows_.GetRow(rows_.numRows - 1 - row_) + 4 * column_,
                        palette_[static_cast<std::size_t>(index)].data(), 4);
        ++column_;
    }

    std::FILE *file_;
    std::vector<BmpPixel> const &palette_;
    bool isNibbles_;
    PixelRows rows_;
    std::uint64_t row_ = 0;
    std::uint64_t column_ = 0;
    bool hasFailed_ = false;
};

bool BmpReader::ReadRuns(PixelRows const &rows)
{
    if (header_.palette.empty())
        return false;
    // Skipped pixels have the first colour.
    for (unsigned int row = 0; row < rows.numRows; ++row)
    {
        for (unsigned int column = 0; column < rows.numColumns; ++column)
            std::memcpy(rows.GetRow(row) + std::size_t{column} * 4, header_.palette[0].data(), 4);
    }
    return RunDecoder(file_, header_, rows).Decode();
}

} // namespace

AutoPtr<ImageFileReader> OpenBmpFile(std::FILE *file, std::uint64_t fileSize, ImageReadOptions const &options,
                                     ImageFailure &failure)
{
    auto reader = std::make_unique<BmpReader>(file, fileSize);
    bool const isOpen = reader->ReadHeader() && reader->HasPage(options.page);
    return HandOut(std::move(reader), isOpen, failure);
}

bool WriteBmpFile(std::FILE *file, PixelRows const &rows, ImageFileOptions const &, ImageFailure &failure)
{
    if (!WriteBmpHeader(file, rows.numRows, rows.numColumns, rows.hasAlpha))
    {
        failure = {eImageFailure::e_unsupported, "too large for a BMP"};
        return false;
    }
    std::vector<unsigned char> bytes((std::size_t{rows.numColumns} * (rows.hasAlpha ? 4 : 3) + 3) / 4 * 4);
    for (unsigned int row = rows.numRows; row-- > 0;)
    {
        unsigned char const *const pixels = rows.GetRow(row);
        if (rows.hasAlpha)
            std::memcpy(bytes.data(), pixels, bytes.size());
        for (std::size_t i = 0; !rows.hasAlpha && i < rows.numColumns; ++i)
            std::memcpy(bytes.data() + 3 * i, pixels + 4 * i, 3);
        if (std::fwrite(bytes.data(), 1, bytes.size(), file) != bytes.size())
            return false;
    }
    return true;
}

} // namespace quillmarsh::platform
