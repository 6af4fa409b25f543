#include "files/filerow.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/gui/gui_renderer.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace viewer
{

using namespace quillmarsh;
using widgets::Measures;

namespace
{

constexpr unsigned int s_pixelByteSize = 4;
/// Colours over the surface of any theme.
constexpr color4b s_selected = {64, 128, 255, 96};
constexpr color4b s_selectedIdle = {64, 128, 255, 56};
constexpr color4b s_hot = {128, 128, 128, 40};
constexpr color4b s_current = {64, 128, 255, 255};

widgets::eMark GetMark(FolderEntry const &entry)
{
    constexpr widgets::eMark marks[] = {widgets::e_mark_file, widgets::e_mark_signal, widgets::e_mark_picture,
                                        widgets::e_mark_volume};
    return entry.isFolder ? widgets::e_mark_folder : marks[entry.numDimensions < 4 ? entry.numDimensions : 0];
}

string FormatByteSize(std::uint64_t byteSize)
{
    constexpr char const *units[] = {"bytes", "KiB", "MiB", "GiB", "TiB"};
    double size = static_cast<double>(byteSize);
    std::size_t unit = 0;
    for (; size >= 1024 && unit + 1 < std::size(units); size /= 1024)
        ++unit;
    // One digit behind the point for small numbers of a large unit.
    double const shown = unit == 0 || size >= 10 ? std::round(size) : std::round(size * 10) / 10;
    return MakeString(shown) + ' ' + units[unit];
}

string Describe(FolderEntry const &entry)
{
    constexpr char const *kinds[] = {"file", "signal", "picture", "volume"};
    if (entry.isFolder)
        return "folder";
    return kinds[entry.numDimensions < 4 ? entry.numDimensions : 0] + string(", ") + FormatByteSize(entry.byteSize);
}

/// Copies a picture at a smaller size; each pixel is the mean of those that it stands for.
void Shrink(ImageBase const &from, ImageBase &to)
{
    unsigned int const rows = to.GetNumRows();
    unsigned int const columns = to.GetNumColumns();
    for (unsigned int row = 0; row < rows; ++row)
    {
        unsigned int const top = row * from.GetNumRows() / rows;
        unsigned int const bottom = std::max(top + 1, (row + 1) * from.GetNumRows() / rows);
        for (unsigned int column = 0; column < columns; ++column)
        {
            unsigned int const left = column * from.GetNumColumns() / columns;
            unsigned int const right = std::max(left + 1, (column + 1) * from.GetNumColumns() / columns);
            unsigned int const count = (bottom - top) * (right - left);
            for (unsigned int channel = 0; channel < s_pixelByteSize; ++channel)
            {
                unsigned int sum = count / 2;
                for (unsigned int y = top; y < bottom; ++y)
                {
                    for (unsigned int x = left; x < right; ++x)
                        sum += from.SampleB(y, x)[channel];
                }
                to.SampleB(row, column)[channel] = static_cast<unsigned char>(sum / count);
            }
        }
    }
}

} // namespace

// The picture.

FilePicture::FilePicture(gui::Component &parent) : sign_(new widgets::Sign(this, widgets::e_mark_file))
{
    SetGhost(true);
    AttachTo(parent);
}

FilePicture::~FilePicture() = default;

void FilePicture::Show(std::shared_ptr<Preview const> const &preview, widgets::eMark mark)
{
    sign_->SetMark(mark);
    sign_->SetVisible(preview == nullptr);
    if (preview == preview_)
        return;
    preview_ = preview;
    isStale_ = true;
}

void FilePicture::RecalcLayout()
{
    sign_->SetPosition(std::round((GetSize().x - sign_->GetSize().x) / 2),
                       std::round((GetSize().y - sign_->GetSize().y) / 2));
    isStale_ = true;
}

void FilePicture::MakePicture()
{
    isStale_ = false;
    ImageBase const &source = *preview_->picture;
    double const scale = std::min({1.0, GetSize().x / static_cast<double>(source.GetNumColumns()),
                                   GetSize().y / static_cast<double>(source.GetNumRows())});
    auto const fit = [scale](unsigned int size)
    { return std::max(1U, static_cast<unsigned int>(std::lround(scale * size))); };
    canvas_.Resize(fit(source.GetNumColumns()), fit(source.GetNumRows()));
    Shrink(source, canvas_.GetPicture());
    canvas_.Update();
}

void FilePicture::DrawSelf(gui::Renderer &renderer)
{
    if (preview_ == nullptr || preview_->picture == nullptr || preview_->picture->GetNumSamples() == 0)
        return;
    if (isStale_)
        MakePicture();
    ImageBase const &picture = canvas_.GetPicture();
    vec2 const size(static_cast<float>(picture.GetNumColumns()), static_cast<float>(picture.GetNumRows()));
    canvas_.Draw(renderer, {std::round((GetSize().x - size.x) / 2), std::round((GetSize().y - size.y) / 2)});
}

void FilePicture::OnVideoRendererChanged(VideoRenderer *renderer)
{
    canvas_.ReleaseTextures();
    Component::OnVideoRendererChanged(renderer);
}

// The row.

FileRow::FileRow(FileList &list)
    : list_(list),
      picture_(new FilePicture(*this)),
      name_(new widgets::Label(this, string())),
      detail_(new widgets::Label(this, string(), widgets::ShaderName_Hint)),
      failure_(new widgets::Label(this, string(), widgets::ShaderName_Failure))
{
    for (widgets::Label *const label : {name_, detail_, failure_})
        label->SetFixedWidth(true);
    AttachTo(list);
}

FileRow::~FileRow() = default;

void FileRow::Show(unsigned int index, FolderEntry const &entry, State state)
{
    bool const hasFailed = !entry.failure.empty();
    index_ = index;
    state_ = state;
    name_->SetText(entry.name);
    detail_->SetText(hasFailed ? string() : Describe(entry));
    failure_->SetText(entry.failure);
    picture_->Show(hasFailed ? nullptr : list_.GetClient().findPreview(entry),
                   hasFailed ? widgets::e_mark_warning : GetMark(entry));
    SetToolTipText(entry.name + '\n' + (hasFailed ? entry.failure : Describe(entry)));
}

void FileRow::RecalcLayout()
{
    float const grid = Measures::Pixels(Measures::Grid);
    float const side = GetSize().y - 2 * grid;
    picture_->SetPosition(grid, grid);
    picture_->SetSize(side, side);
    float const x = side + 3 * grid;
    float const width = std::max(0.0F, GetSize().x - x - grid);
    float const height = name_->GetSize().y + detail_->GetSize().y;
    float const y = std::round((GetSize().y - height) / 2);
    name_->SetPosition(x, y);
    name_->SetSizeX(width);
    for (widgets::Label *const label : {detail_, failure_})
    {
        label->SetPosition(x, y + name_->GetSize().y);
        label->SetSizeX(width);
    }
}

void FileRow::DrawSelf(gui::Renderer &renderer)
{
    auto const fill = [&renderer](gui::Rectangle const &area, color4b color)
    { renderer.DrawRectangle(gui::RectangleC(area, color)); };
    gui::Rectangle const area(vec2::ZERO, GetSize());
    if (state_.isSelected)
        fill(area, state_.isFocused ? s_selected : s_selectedIdle);
    else if (IsMouseOver())
        fill(area, s_hot);
    if (state_.isCurrent)
        fill(gui::Rectangle(vec2::ZERO, {Measures::Pixels(3), GetSize().y}), s_current);
}

bool FileRow::OnMouseButton(bool down, eMouseButton button, bool doubleClick, unsigned int repeatCount, vec2 const &)
{
    if (!down || button != e_mouse_button_left || repeatCount > 0)
        return false;
    if (doubleClick)
        list_.GetClient().open(index_);
    else
        list_.SelectByUser(index_);
    return true;
}

} // namespace viewer
