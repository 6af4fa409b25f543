#include "benchpicture.h"

#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/sampleddataoperations.h>
#include <quillmarsh/dataobjects/sampletransfer.h>
#include <quillmarsh/framework/frameworkprofiler.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/videorenderer.h>

#include <algorithm>
#include <bit>
#include <cmath>

namespace workbench
{

using namespace quillmarsh;
using sampled_data::SampledData;

namespace
{

constexpr color4b s_background(24, 27, 34, 255);
constexpr color4b s_floor(58, 64, 78, 255);
constexpr color4b s_textColor(214, 219, 228, 255);
constexpr color4b s_dimTextColor(140, 148, 163, 255);
constexpr color4b s_white(255, 255, 255, 255);
/// Colours of the balls, in turn.
constexpr color4b s_ballColors[] = {
    {240, 101, 86, 255},  {244, 162, 80, 255}, {246, 208, 96, 255},
    {120, 196, 128, 255}, {84, 170, 214, 255}, {150, 134, 222, 255},
};

/// In pixels.
constexpr float s_margin = 24;
constexpr float s_titleHeight = 22;
constexpr float s_hintHeight = 18;
constexpr float s_floorThickness = 2;
constexpr float s_minRadius = 5;
constexpr float s_maxRadius = 22;
constexpr unsigned int s_ballTextureSize = 64;
/// Larger images are made smaller for their texture.
constexpr unsigned int s_maxImageSize = 1024;
/// Part of the window that the image may take in width and height.
constexpr float s_imagePart = 0.42f;

/// Returns a white disc with a soft edge.
AutoPtr<ImageBase> MakeDisc()
{
    AutoPtr<ImageBase> image(ManufactureImage(e_format_A8R8G8B8, s_ballTextureSize, s_ballTextureSize));
    constexpr float s_center = s_ballTextureSize / 2.0f;
    // One texel at each side stays empty, so that the edge is soft at any size.
    constexpr float s_radius = s_center - 1;
    for (unsigned int row = 0; row < s_ballTextureSize; ++row)
    {
        for (unsigned int column = 0; column < s_ballTextureSize; ++column)
        {
            float const distance =
                std::hypot(static_cast<float>(row) + 0.5f - s_center, static_cast<float>(column) + 0.5f - s_center);
            float const coverage = std::clamp(s_radius - distance + 0.5f, 0.0f, 1.0f);
            unsigned char *const texel = image->SampleB(row, column);
            std::fill_n(texel, 3, static_cast<unsigned char>(255));
            texel[3] = static_cast<unsigned char>(std::lround(coverage * 255));
        }
    }
    return image;
}

/// Returns the upper edge of the floor.
float GetFloor(vec2 const &window)
{
    return window.y - 2.5f * s_margin;
}

/// Returns the lower edge of the title, which no ball reaches.
constexpr float GetCeiling()
{
    return 1.5f * s_margin + s_titleHeight;
}

AutoPtr<gui::FontTexture> MakeFont()
{
    gui::FontTexture::CreationParams params;
    params.Family = "Arial";
    params.TextureWidth = 512;
    params.ACWidthEmptyGlyph = 0.2f;
    return gui::FontTexture::CreateFontTexture(params);
}

/// Returns a copy of an image that fits into a texture: with powers of two as its size.
SampledData FitToTexture(ImageBase const &image)
{
    AutoPtr<ImageBase> copy(ManufactureImage(image.GetSampleFormat(), image.GetNumRows(), image.GetNumColumns()));
    TransferSamples2D(*copy, image, false);
    SampledData data(std::move(copy));
    sampled_data::ChangeFormat(data, e_format_A8R8G8B8);
    auto const fit = [](unsigned int size) { return std::min(std::bit_ceil(size), s_maxImageSize); };
    return sampled_data::Resample(data, {fit(image.GetNumRows()), fit(image.GetNumColumns())},
                                  sampled_data::eSizeFilter::e_area);
}

} // namespace

BenchPicture::BenchPicture(Balls const &balls, DataBench const &data)
    : balls_(balls),
      data_(data),
      ballTexture_(*MakeDisc(), true)
{
}

void BenchPicture::CreateVideoResources()
{
    if (font_ == nullptr)
        font_ = MakeFont();
    ballTexture_.CreateVideoRendererResource(*renderer_);
    font_->CreateVideoRendererResource(*renderer_);
    if (image_ != nullptr)
        image_->CreateVideoRendererResource(*renderer_);
    hasResources_ = true;
}

void BenchPicture::ReleaseVideoResources()
{
    hasResources_ = false;
    ballTexture_.ReleaseVideoRendererResource();
    font_->ReleaseVideoRendererResource();
    if (image_ != nullptr)
        image_->ReleaseVideoRendererResource();
}

void BenchPicture::Draw()
{
    if (renderer_ == nullptr || !hasResources_)
        return;
    QUILLMARSH_PROFILE_BLOCK("BenchPicture::Draw");
    UpdateImage();
    gui::Renderer &renderer = renderer_->GetGUIRenderer();
    gui::Renderer::ClearParams clear;
    clear.Color = s_background;
    renderer.ClearBuffers(clear);
    renderer.Begin();
    DrawImage(renderer);
    DrawBalls(renderer);
    DrawText(renderer);
    renderer.End();
}

void BenchPicture::DrawBalls(gui::Renderer &renderer)
{
    vec2 const window = renderer.GetWindowSize();
    float const floor = GetFloor(window);
    renderer.DrawRectangle(gui::RectangleC({s_margin, floor, window.x - 2 * s_margin, s_floorThickness}, s_floor));
    unsigned int const count = balls_.GetNumBalls();
    if (count == 0)
        return;
    float const spacing = (window.x - 2 * s_margin) / static_cast<float>(count);
    float const radius = std::clamp(spacing / 2, s_minRadius, s_maxRadius);
    float const pixelsPerMetre =
        (floor - GetCeiling() - 2 * radius) / static_cast<float>(balls_.GetStartHeight(count - 1));
    gui::RectangleCT ball({0, 0, 2 * radius, 2 * radius}, s_white);
    for (unsigned int index = 0; index < count; ++index)
    {
        float const height = static_cast<float>(balls_.GetHeight(index));
        ball.SetPosition(s_margin + (static_cast<float>(index) + 0.5f) * spacing - radius,
                         floor - 2 * radius - height * pixelsPerMetre);
        ball.SetColor(s_ballColors[index % std::size(s_ballColors)]);
        renderer.DrawRectangle(ballTexture_, ball);
    }
}

void BenchPicture::DrawText(gui::Renderer &renderer)
{
    gui::DrawTextParams params;
    params.metrics.Height = s_titleHeight;
    params.position = vec2(s_margin, s_margin);
    params.color = s_textColor;
    text_ = MakeString(balls_.GetNumBalls()) + " balls, " + MakeString(balls_.GetNumBounces()) + " bounces";
    renderer.DrawText(*font_, text_, params);
    params.metrics.Height = s_hintHeight;
    params.position.y = GetFloor(renderer.GetWindowSize()) + s_margin / 2;
    params.color = s_dimTextColor;
    text_ = image_ == nullptr ? "Type 'help' in the terminal, or 'load FILE' to see a picture here."
                              : "Type 'help' in the terminal.";
    renderer.DrawText(*font_, text_, params);
}

void BenchPicture::DrawImage(gui::Renderer &renderer)
{
    if (image_ == nullptr)
        return;
    vec2 const room = renderer.GetWindowSize() * s_imagePart;
    float const scale = std::min({room.x / imageSize_.x, room.y / imageSize_.y, 4.0f});
    vec2 const size = imageSize_ * scale;
    float const left = std::floor(renderer.GetWindowSize().x - s_margin - size.x);
    gui::RectangleCT const rectangle({left, s_margin, size.x, size.y}, s_white);
    renderer.DrawRectangle(*image_, rectangle);
    gui::RectangleC frame(rectangle, s_floor);
    frame.Grow(1);
    renderer.DrawRectangleFrame(frame, 1);
}

void BenchPicture::UpdateImage()
{
    if (imageRevision_ == data_.GetRevision())
        return;
    imageRevision_ = data_.GetRevision();
    image_.reset();
    ImageBase const *const image = data_.FindImage();
    if (image == nullptr || image->GetNumSamples() == 0)
        return;
    imageSize_ = vec2(static_cast<float>(image->GetNumColumns()), static_cast<float>(image->GetNumRows()));
    try
    {
        SampledData const data = FitToTexture(*image);
        image_ = std::make_unique<gui::Texture>(*data.Get<ImageBase>(), true);
        image_->CreateVideoRendererResource(*renderer_);
    }
    catch (Exception const &failure)
    {
        image_.reset();
        GetConOut() << e_warning << "The image cannot be drawn: " << failure.GetMessage() << e_info << std::endl;
    }
}

} // namespace workbench
