#include "scene.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

namespace viewer::volumes
{

using namespace quillmarsh;
using sampled_data::SampledData;

namespace
{

constexpr char const *s_paneNames[] = {"layer", "row", "column", "oblique", "volume"};

/// Samples that are read within a frame, and bytes of a volume that may be read in strides meanwhile.
constexpr std::uint64_t s_quickSamples = 1U << 19;
constexpr std::uint64_t s_quickBytes = 256U << 20;
/// Bytes of a volume that is cut obliquely within a frame.
constexpr std::uint64_t s_quickObliqueBytes = 32U << 20;
/// Samples of a slice whose levels are made within a frame.
constexpr unsigned int s_quickLevels = 1U << 18;
/// Sides of the small volume.
constexpr unsigned int s_smallSize = 256;

/// Purposes of threads; the first ones are the axes of slices.
enum ePurpose : unsigned int
{
    e_purpose_oblique = 3,
    e_purpose_small,
    e_purpose_turned,
    e_purpose_end
};

std::size_t GetCutIndex(eSliceAxis axis)
{
    return axis == eSliceAxis::e_layer ? 2 : axis == eSliceAxis::e_row ? 1 : 0;
}

/// A layer as an image in the memory of its volume.
AutoPtr<ImageBase> BorrowLayer(VolumeBase const &volume, unsigned int layer)
{
    auto image = std::make_unique<ImageBaseFromExternalStorageAdapter>(volume.GetSampleFormat());
    // Contents are never written.
    image->SetExternalStorage(const_cast<unsigned char *>(volume.SampleB(layer, 0, 0)), volume.GetNumRows(),
                              volume.GetNumColumns());
    return image;
}

ContentPtr MakeSlice(ContentPtr const &content, eSliceAxis axis, unsigned int index, eProjection projection,
                     unsigned int thickness, unsigned int step, Jobs::Progress const &progress = {})
{
    VolumeBase const &volume = *content->Get<VolumeBase>();
    bool const isPlain = projection == eProjection::e_slice || thickness <= 1;
    if (axis == eSliceAxis::e_layer && isPlain)
        return std::make_shared<Content>(SampledData(BorrowLayer(volume, index)), content);
    AutoPtr<ImageBase> slice = ExtractSlice(volume, axis, index, projection, thickness, step, progress);
    return slice != nullptr ? std::make_shared<Content>(SampledData(std::move(slice))) : nullptr;
}

std::uint64_t CountBytes(VolumeBase const &volume)
{
    return std::uint64_t(volume.GetNumSamples()) * volume.GetSampleByteSize();
}

} // namespace

std::span<char const *const> GetPaneNames()
{
    return s_paneNames;
}

Scene::Scene(std::function<void()> changed, std::function<void()> const &wake,
             std::function<void(string const &)> failed)
    : changed_(std::move(changed)),
      failed_(std::move(failed)),
      works_{LatestWork(wake), LatestWork(wake), LatestWork(wake), LatestWork(wake)}
{
}

Scene::~Scene() = default;

void Scene::Changed()
{
    ++revision_;
    changed_();
}

void Scene::Poll()
{
    for (LatestWork &work : works_)
        work.Poll();
}

LatestWork &Scene::GetWork(unsigned int purpose)
{
    // Layers and rows share a thread, and so do the small volume and what is made of it.
    return works_[purpose < 2 ? 0 : std::min(purpose - 1, 3U)];
}

void Scene::DropAll()
{
    for (unsigned int purpose = 0; purpose < e_purpose_end; ++purpose)
        GetWork(purpose).Drop(purpose);
    slices_ = {};
    obliquePicture_ = {};
    turnedPicture_ = {};
    small_ = nullptr;
    isSmallWished_ = false;
    tones_ = nullptr;
}

void Scene::SetContent(ContentPtr content, bool isOther)
{
    vec3 const oldSize = GetSize();
    DropAll();
    content_ = std::move(content);
    volume_ = content_ != nullptr ? content_->Get<VolumeBase>() : nullptr;
    if (volume_ != nullptr && volume_->GetNumSamples() == 0)
        volume_ = nullptr;
    vec3 const size = GetSize();
    bool const isSame = size.x == oldSize.x && size.y == oldSize.y && size.z == oldSize.z;
    if (isOther || !isSame)
    {
        for (std::size_t i = 0; i < cut_.size(); ++i)
            cut_[i] = GetSize(i) / 2;
        Fit();
    }
    int const numChannels = volume_ != nullptr ? static_cast<int>(GetChannels(volume_->GetSampleFormat()).size()) : 0;
    if (settings_.tones.channel >= numChannels)
        settings_.tones.channel = -1;
    Changed();
}

unsigned int Scene::GetSize(std::size_t axis) const
{
    if (volume_ == nullptr)
        return 0;
    return axis == 0 ? volume_->GetNumColumns() : axis == 1 ? volume_->GetNumRows() : volume_->GetNumLayers();
}

vec3 Scene::GetSize() const
{
    return {static_cast<float>(GetSize(0)), static_cast<float>(GetSize(1)), static_cast<float>(GetSize(2))};
}

double Scene::GetLargest() const
{
    std::span<Channel const> const channels =
        volume_ != nullptr ? GetChannels(volume_->GetSampleFormat()) : std::span<Channel const>();
    if (channels.empty())
        return 1;
    return channels[static_cast<std::size_t>(std::max(settings_.tones.channel, 0))].largest;
}

ToneMap const &Scene::GetTones()
{
    if (tones_ == nullptr || !(tonesSettings_ == settings_.tones))
    {
        eSampleFormat const format = volume_ != nullptr ? volume_->GetSampleFormat() : e_format_L8;
        tones_ = std::make_shared<ToneMap>(format, settings_.tones);
        tonesSettings_ = settings_.tones;
    }
    return *tones_;
}

void Scene::SetCut(Cut const &cut)
{
    for (std::size_t i = 0; i < cut_.size(); ++i)
        cut_[i] = std::min(cut[i], std::max(GetSize(i), 1U) - 1);
    Changed();
}

void Scene::SetCutAt(vec3 const &place)
{
    auto const index = [](float x) { return x > 0 ? static_cast<unsigned int>(std::min(x, 4e9F)) : 0U; };
    SetCut({index(place.x), index(place.y), index(place.z)});
}

vec3 Scene::GetCutPlace() const
{
    auto const middle = [](unsigned int index) { return static_cast<float>(index) + 0.5F; };
    return {middle(cut_[0]), middle(cut_[1]), middle(cut_[2])};
}

void Scene::SetZoom(double zoom)
{
    zoom_ = std::clamp(zoom, s_minZoom, s_maxZoom);
    fits_ = false;
    Changed();
}

void Scene::Fit()
{
    fits_ = true;
    focus_ = GetSize() / 2.0F;
    turnZoom_ = 1;
    Changed();
}

void Scene::SetFitZoom(double zoom)
{
    if (zoom == fitZoom_)
        return;
    fitZoom_ = zoom;
    if (fits_)
        Changed();
}

void Scene::SetFocus(vec3 const &focus)
{
    vec3 const size = GetSize();
    zoom_ = GetZoom();
    fits_ = false;
    focus_ = {std::clamp(focus.x, 0.0F, size.x), std::clamp(focus.y, 0.0F, size.y), std::clamp(focus.z, 0.0F, size.z)};
    Changed();
}

Scene::SliceKey Scene::MakeKey(eSliceAxis axis) const
{
    bool const isSlab = settings_.projection != eProjection::e_slice && settings_.thickness > 1;
    SliceKey key = {cut_[GetCutIndex(axis)], isSlab ? settings_.projection : eProjection::e_slice,
                    isSlab ? settings_.thickness : 1};
    // What is smaller than a pixel is not worth its pages of a file.
    if (!IsQuick(axis, key))
        key.step = std::bit_floor(static_cast<unsigned int>(std::max(1 / GetZoom(), 1.0)));
    return key;
}

bool Scene::SliceKey::Covers(SliceKey const &other) const
{
    return index == other.index && projection == other.projection && thickness == other.thickness && step <= other.step;
}

bool Scene::IsQuick(eSliceAxis axis, SliceKey const &key) const
{
    std::uint64_t const slice = volume_->GetNumSamples() / std::max(GetSize(GetCutIndex(axis)), 1U);
    // A plain layer is not even copied.
    if (axis == eSliceAxis::e_layer && key.thickness == 1)
        return true;
    return slice * key.thickness <= s_quickSamples && CountBytes(*volume_) <= s_quickBytes;
}

void Scene::WishSlice(eSliceAxis axis, SliceKey const &key)
{
    SliceSlot &slot = slices_[static_cast<std::size_t>(axis)];
    slot.wished = key;
    auto work = [this, axis, key, content = content_](Jobs::Progress const &progress) -> Jobs::Finish
    {
        ContentPtr const slice = MakeSlice(content, axis, key.index, key.projection, key.thickness, key.step, progress);
        std::shared_ptr<ImageLevels const> levels;
        if (slice != nullptr)
            levels = ImageLevels::Build(slice, progress);
        if (levels == nullptr)
            return {};
        return [this, axis, key, levels]
        {
            SliceSlot &finished = slices_[static_cast<std::size_t>(axis)];
            finished.levels = levels;
            finished.levelsStep = key.step;
            finished.shown = key;
            if (finished.wished == key)
                finished.wished.reset();
            changed_();
        };
    };
    auto failed = [this, axis, key](string const &reason)
    {
        SliceSlot &finished = slices_[static_cast<std::size_t>(axis)];
        // Not wished again until the cut has moved.
        finished.shown = key;
        finished.wished.reset();
        failed_("The slice could not be made: " + reason);
    };
    auto const purpose = static_cast<unsigned int>(axis);
    GetWork(purpose).Wish(purpose, std::move(work), std::move(failed));
}

Scene::Slice Scene::GetSlice(eSliceAxis axis)
{
    SliceSlot &slot = slices_[static_cast<std::size_t>(axis)];
    if (volume_ != nullptr)
        RenewSlice(axis, slot);
    return {slot.levels, slot.levelsStep};
}

void Scene::RenewSlice(eSliceAxis axis, SliceSlot &slot)
{
    SliceKey const key = MakeKey(axis);
    bool const isThere = (slot.shown && slot.shown->Covers(key)) || (slot.wished && slot.wished->Covers(key));
    if (isThere)
        return;
    if (!IsQuick(axis, key))
    {
        WishSlice(axis, key);
        return;
    }
    ContentPtr const slice = MakeSlice(content_, axis, key.index, key.projection, key.thickness, key.step);
    bool const isSmall = slice->GetData().GetSamples().GetNumSamples() <= s_quickLevels;
    slot.shown = key;
    slot.wished.reset();
    slot.levelsStep = 1;
    slot.levels = isSmall ? ImageLevels::Build(slice) : std::make_shared<ImageLevels const>(slice);
    // Smaller levels follow.
    if (!isSmall && GetZoom() < 1)
        WishSlice(axis, key);
}

bool Scene::IsSlicePending(eSliceAxis axis) const
{
    SliceSlot const &slot = slices_[static_cast<std::size_t>(axis)];
    return volume_ != nullptr && !(slot.shown && slot.shown->Covers(MakeKey(axis)));
}

Plane Scene::GetObliquePlane(float zoom) const
{
    Rotation const rotation = GetObliqueRotation();
    // The place on the plane that is nearest to the focus is in the middle.
    vec3 const cut = GetCutPlace();
    vec3 const distance = focus_ - cut;
    return {cut + rotation.right * rotation.right.Dot(distance) + rotation.down * rotation.down.Dot(distance),
            rotation.right / zoom, rotation.down / zoom};
}

bool Scene::TakePicture(PictureSlot &slot, unsigned int purpose, ImageBase &picture, Compose compose)
{
    if (slot.shown != revision_ && slot.wished != revision_)
    {
        slot.wished = revision_;
        auto work = [this, &slot, compose = std::move(compose), revision = revision_, content = content_,
                     height = picture.GetNumRows(),
                     width = picture.GetNumColumns()](Jobs::Progress const &) -> Jobs::Finish
        {
            std::shared_ptr<ImageBase> made(ManufactureImage(e_format_A8R8G8B8, height, width));
            compose(*made);
            return [this, &slot, revision, made]
            {
                slot.picture = made;
                slot.shown = revision;
                // Nothing else has changed: the number of the state stays.
                changed_();
            };
        };
        GetWork(purpose).Wish(purpose, std::move(work), failed_);
    }
    bool const hasSize = slot.picture != nullptr && slot.picture->CheckDimensionMatch(picture);
    if (hasSize)
        std::memcpy(picture.GetSamplesB(), slot.picture->GetSamplesB(), picture.GetTotalByteSize());
    return hasSize;
}

bool Scene::ComposeOblique(ImageBase &picture, Pixel background)
{
    Plane const plane = GetObliquePlane(static_cast<float>(GetZoom()));
    GetTones();
    bool const isQuick = CountBytes(*volume_) <= s_quickObliqueBytes;
    if (isQuick)
    {
        ComposePlane(picture, *volume_, plane, *tones_, background);
        return true;
    }
    return TakePicture(obliquePicture_, e_purpose_oblique, picture,
                       [content = content_, plane, tones = tones_, background](ImageBase &made)
                       { ComposePlane(made, *content->Get<VolumeBase>(), plane, *tones, background); });
}

void Scene::SetRotation(Rotation const &rotation)
{
    rotation_ = rotation;
    Changed();
}

void Scene::SetTurnZoom(double zoom)
{
    turnZoom_ = std::clamp(zoom, 0.25, 8.0);
    Changed();
}

SmallVolumePtr const &Scene::GetSmallVolume()
{
    int const channel = settings_.tones.channel;
    bool const isRight = isSmallWished_ && smallChannel_ == channel;
    if (volume_ == nullptr || isRight)
        return small_;
    isSmallWished_ = true;
    smallChannel_ = channel;
    GetWork(e_purpose_small).Drop(e_purpose_small);
    auto work = [this, channel, content = content_](Jobs::Progress const &progress) -> Jobs::Finish
    {
        SmallVolumePtr const made = MakeSmallVolume(*content, channel, s_smallSize, progress);
        return [this, made]
        {
            small_ = made;
            ++smallRevision_;
            if (std::exchange(isWindowToFit_, false))
                FitWindow();
            Changed();
        };
    };
    GetWork(e_purpose_small).Wish(e_purpose_small, std::move(work), failed_);
    return small_;
}

bool Scene::ComposeTurned(ImageBase &picture, Pixel background)
{
    SmallVolumePtr const &small = GetSmallVolume();
    if (small == nullptr)
        return false;
    GetTones();
    return TakePicture(turnedPicture_, e_purpose_turned, picture,
                       [small, rotation = rotation_, zoom = turnZoom_, tones = tones_, background](ImageBase &made)
                       { ComposeProjection(made, *small, rotation, zoom, *tones, background); });
}

void Scene::FitWindow()
{
    if (GetSmallVolume() == nullptr)
    {
        isWindowToFit_ = true;
        return;
    }
    settings_.tones.low = small_->low;
    settings_.tones.high = small_->high > small_->low ? small_->high : small_->low + 1.0 / 65536;
    Changed();
}

} // namespace viewer::volumes
