#include "canvas.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/gui/gui_renderer.h>
#include <quillmarsh/videorendererobjects/vro_textures.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace viewer
{
namespace
{

using namespace quillmarsh;
using video_renderer_objects::Texture2D;

constexpr unsigned int s_tileSize = 256;
constexpr unsigned int s_pixelByteSize = 4;

/// Sum of bytes that tells pictures apart, in four lanes that do not wait for each other.
class PixelSum
{
public:
    void Add(unsigned char const *bytes, std::size_t byteSize)
    {
        constexpr std::size_t step = sizeof(lanes_);
        std::array<std::uint64_t, s_numLanes> words = {};
        for (; byteSize >= step; bytes += step, byteSize -= step)
        {
            std::memcpy(words.data(), bytes, step);
            Mix(words);
        }
        words = {};
        std::memcpy(words.data(), bytes, byteSize);
        Mix(words);
    }
    std::uint64_t Get() const
    {
        std::uint64_t sum = 0;
        for (std::uint64_t const lane : lanes_)
            sum = (std::rotl(sum, 23) ^ lane) * s_factor;
        return sum;
    }

private:
    static constexpr std::size_t s_numLanes = 4;
    /// An odd number with its bits well spread.
    static constexpr std::uint64_t s_factor = 0x9E3779B97F4A7C15;

    void Mix(std::array<std::uint64_t, s_numLanes> const &words)
    {
        for (std::size_t lane = 0; lane < s_numLanes; ++lane)
            lanes_[lane] = std::rotl((lanes_[lane] ^ words[lane]) * s_factor, 29);
    }

    std::array<std::uint64_t, s_numLanes> lanes_ = {1, 2, 3, 4};
};

/// Loads sources with their first row at the top for its own life.
class TopRowFirst : NoCopy
{
public:
    TopRowFirst() { Texture2D::SetSourceRowOrderBottomToTop(false); }
    ~TopRowFirst() { Texture2D::SetSourceRowOrderBottomToTop(saved_); }

private:
    bool saved_ = Texture2D::IsSourceRowOrderBottomToTop();
};

} // namespace

/// Texture of a part of the picture. At the right and lower edges the part may be smaller than the texture.
class Canvas::Tile : public gui::Texture
{
public:
    Tile(ImageBase const &picture, unsigned int x, unsigned int y)
        : Texture(e_format_A8R8G8B8, false, s_tileSize, s_tileSize),
          picture_(picture),
          x_(x),
          y_(y),
          width_(std::min(picture.GetNumColumns() - x, s_tileSize)),
          height_(std::min(picture.GetNumRows() - y, s_tileSize))
    {
        SetMipFilter(e_filter_none);
    }

    /// Notes whether the picture has changed here.
    void Compare()
    {
        PixelSum sum;
        for (unsigned int row = 0; row < height_; ++row)
            sum.Add(picture_.SampleB(y_ + row, x_), std::size_t{width_} * s_pixelByteSize);
        isChanged_ = isChanged_ || sum.Get() != sum_;
        sum_ = sum.Get();
    }

    void Draw(gui::Renderer &renderer, vec2 const &origin)
    {
        if (GetVideoRendererResource() == nullptr)
            CreateVideoRendererResource(renderer.GetParentVideoRenderer());
        else if (isChanged_)
            Load(*GetVideoRendererResource());
        isChanged_ = false;
        vec2 const size(static_cast<float>(width_), static_cast<float>(height_));
        vec2 const position = origin + vec2(static_cast<float>(x_), static_cast<float>(y_));
        gui::RectangleCT drawn(gui::Rectangle(position, size), color4b(255, 255, 255, 255));
        drawn.uMin = drawn.vMin = 0;
        drawn.uMax = size.x / s_tileSize;
        drawn.vMax = size.y / s_tileSize;
        renderer.DrawRectangle(*this, drawn);
    }

    /// Copies the part for a texture that has just been created, which wants an image of its own size. Later changes
    /// are loaded from the picture itself.
    ImageBase *GenerateSourceImage(bool &originBottom) override
    {
        originBottom = false;
        AutoPtr<ImageBase> image(ManufactureImage(e_format_A8R8G8B8, s_tileSize, s_tileSize));
        for (unsigned int row = 0; row < s_tileSize; ++row)
        {
            std::size_t const byteSize = row < height_ ? std::size_t{width_} * s_pixelByteSize : 0;
            unsigned char *const to = image->SampleB(row, 0);
            if (byteSize != 0)
                std::memcpy(to, picture_.SampleB(y_ + row, x_), byteSize);
            std::memset(to + byteSize, 0, image->GetRowByteSize() - byteSize);
        }
        return image.release();
    }
    void ReleaseSourceImage(ImageBase *image) override { delete image; }

private:
    void Load(Texture2D &texture) const
    {
        TopRowFirst const rowOrder;
        texture.LoadLevel(0, picture_, height_, width_, 0, 0, y_, x_);
    }

    ImageBase const &picture_;
    unsigned int x_;
    unsigned int y_;
    unsigned int width_;
    unsigned int height_;
    std::uint64_t sum_ = 0;
    bool isChanged_ = true;
};

/// Registered texture that is never drawn: with it the manager tells the canvas that the renderer's resources go, as
/// they do when a device is lost.
class Canvas::Release : public gui::TileTexture
{
public:
    explicit Release(std::shared_ptr<Canvas *> canvas)
        : TileTexture(e_format_A8R8G8B8, false, 1, 1, 1, 1),
          canvas_(std::move(canvas))
    {
    }

    void CreateVideoRendererResource(VideoRenderer &) override {}
    void ReleaseVideoRendererResource() override
    {
        if (*canvas_ != nullptr)
            (*canvas_)->ReleaseTextures();
    }

private:
    std::shared_ptr<Canvas *> canvas_;
};

Canvas::Canvas() : picture_(ManufactureImage(e_format_A8R8G8B8, 0, 0)), self_(std::make_shared<Canvas *>(this))
{
    if (!gui::Manager::IsCreated())
        return;
    static unsigned int s_numCanvases = 0;
    releaseName_ = "viewer/canvas" + MakeString(++s_numCanvases);
    AutoPtr<gui::TileTexture> release = std::make_unique<Release>(self_);
    gui::Manager::Instance().RegisterTileTexture(releaseName_, release);
}

Canvas::~Canvas()
{
    *self_ = nullptr;
    if (!releaseName_.empty() && gui::Manager::IsCreated())
        gui::Manager::Instance().UnregisterTileTexture(releaseName_);
}

void Canvas::Resize(unsigned int width, unsigned int height)
{
    width = std::max(width, 1u);
    height = std::max(height, 1u);
    if (picture_->GetNumColumns() == width && picture_->GetNumRows() == height)
        return;
    tiles_.clear();
    picture_->ReserveSampleStorage(height, width);
    MakeTiles();
}

void Canvas::MakeTiles()
{
    for (unsigned int y = 0; y < picture_->GetNumRows(); y += s_tileSize)
    {
        for (unsigned int x = 0; x < picture_->GetNumColumns(); x += s_tileSize)
            tiles_.push_back(std::make_unique<Tile>(*picture_, x, y));
    }
}

void Canvas::Update()
{
    for (AutoPtr<Tile> const &tile : tiles_)
        tile->Compare();
}

void Canvas::Draw(gui::Renderer &renderer, vec2 const &position)
{
    // The component may stand between pixels.
    mat4 transform;
    renderer.GetTransform(transform);
    vec2 const offset(transform[3][0], transform[3][1]);
    vec2 const origin(std::round(offset.x + position.x) - offset.x, std::round(offset.y + position.y) - offset.y);
    for (AutoPtr<Tile> const &tile : tiles_)
        tile->Draw(renderer, origin);
}

void Canvas::ReleaseTextures()
{
    for (AutoPtr<Tile> const &tile : tiles_)
        tile->ReleaseVideoRendererResource();
}

} // namespace viewer
