#include "stackdrawer.h"

#include "stackshaders.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace viewer::volumes
{

using namespace quillmarsh;

namespace
{

/// Distance of the eye from the middle, where the longest side of the volume is 2.
constexpr float s_eyeDistance = 5;
/// Part of the area that the ball around a volume fills; its corners are seldom of interest.
constexpr double s_fitPart = 1.0;
/// Opacity of a way of 1 through full values.
constexpr double s_opacity = 20;
/// Seconds that a picture may take while it changes, and at rest.
constexpr double s_quickSeconds = 0.025;
constexpr double s_fullSeconds = 0.12;
/// Seconds without a change until the fine picture is drawn.
constexpr double s_restSeconds = 0.25;
/// A guess for the first picture, as for a slow machine.
constexpr double s_firstSecondsPerPixel = 2e-8;
constexpr unsigned int s_minSlices = 48;
constexpr double s_minScale = 0.25;
constexpr unsigned int s_numTones = 256;

bool AreEqual(vec3 const &a, vec3 const &b)
{
    return a.x == b.x && a.y == b.y && a.z == b.z;
}

template<typename Read>
string ReadLog(Read read)
{
    char text[1024] = {};
    GLsizei length = 0;
    read(static_cast<GLsizei>(sizeof(text) - 1), &length, text);
    return text;
}

} // namespace

bool StackFunctions::Load()
{
    bool isComplete = true;
    auto const load = [&]<typename Function>(char const *name, Function &function)
    {
        function = reinterpret_cast<Function>(platform::OpenGLContext::FindCurrentFunction(name));
        isComplete = isComplete && function != nullptr;
    };
#define VIEWER_STACK_LOAD(name, type) load("gl" #name, name);
    VIEWER_STACK_FUNCTIONS(VIEWER_STACK_LOAD)
#undef VIEWER_STACK_LOAD
    return isComplete;
}

bool StackView::IsSame(StackView const &other) const
{
    return AreEqual(rotation.right, other.rotation.right) && AreEqual(rotation.down, other.rotation.down) &&
           zoom == other.zoom && density == other.density && tones == other.tones;
}

AutoPtr<StackDrawer> StackDrawer::Create(string &reason)
{
    StackFunctions gl;
    if (!gl.Load())
    {
        reason = "The renderer has no OpenGL.";
        return nullptr;
    }
    AutoPtr<StackDrawer> drawer(new StackDrawer(gl));
    drawer->secondsPerPixel_ = s_firstSecondsPerPixel;
    return drawer->Prepare(reason) ? std::move(drawer) : nullptr;
}

StackDrawer::~StackDrawer()
{
    gl_.DeleteFramebuffers(1, &framebuffer_);
    GLuint const textures[] = {samples_, tonesTexture_, picture_};
    gl_.DeleteTextures(3, textures);
    gl_.DeleteVertexArrays(1, &vertexArray_);
    gl_.DeleteProgram(slices_.name);
    gl_.DeleteProgram(shown_.name);
}

bool StackDrawer::MakeProgram(Program &program, char const *vertexShader, char const *fragmentShader, string &reason)
{
    program.name = gl_.CreateProgram();
    for (auto const &[kind, source] : {std::pair<GLenum, char const *>(GL_VERTEX_SHADER, vertexShader),
                                       std::pair<GLenum, char const *>(GL_FRAGMENT_SHADER, fragmentShader)})
    {
        GLuint const shader = gl_.CreateShader(kind);
        gl_.ShaderSource(shader, 1, &source, nullptr);
        gl_.CompileShader(shader);
        gl_.AttachShader(program.name, shader);
        // It lives as long as the program.
        gl_.DeleteShader(shader);
    }
    gl_.LinkProgram(program.name);
    GLint isLinked = GL_FALSE;
    gl_.GetProgramiv(program.name, GL_LINK_STATUS, &isLinked);
    if (isLinked == GL_TRUE)
        return true;
    reason = "The driver refuses the shaders of volumes: " +
             ReadLog([&](GLsizei size, GLsizei *length, GLchar *text)
                     { gl_.GetProgramInfoLog(program.name, size, length, text); });
    return false;
}

GLuint StackDrawer::MakeTexture(GLenum target, GLenum filter)
{
    GLuint name = 0;
    gl_.GenTextures(1, &name);
    gl_.BindTexture(target, name);
    gl_.TexParameteri(target, GL_TEXTURE_MIN_FILTER, static_cast<GLint>(filter));
    gl_.TexParameteri(target, GL_TEXTURE_MAG_FILTER, static_cast<GLint>(filter));
    for (auto const edge : {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T, GL_TEXTURE_WRAP_R})
        gl_.TexParameteri(target, static_cast<GLenum>(edge), GL_CLAMP_TO_EDGE);
    gl_.BindTexture(target, 0);
    return name;
}

bool StackDrawer::Prepare(string &reason)
{
    if (!MakeProgram(slices_, s_sliceVertexShader, s_sliceFragmentShader, reason) ||
        !MakeProgram(shown_, s_pictureVertexShader, s_pictureFragmentShader, reason))
        return false;
    gl_.GenVertexArrays(1, &vertexArray_);
    gl_.GenFramebuffers(1, &framebuffer_);
    gl_.ActiveTexture(GL_TEXTURE0);
    samples_ = MakeTexture(GL_TEXTURE_3D, GL_LINEAR);
    tonesTexture_ = MakeTexture(GL_TEXTURE_2D, GL_LINEAR);
    picture_ = MakeTexture(GL_TEXTURE_2D, GL_LINEAR);
    return true;
}

void StackDrawer::SetVolume(SmallVolumePtr volume)
{
    if (volume == volume_)
        return;
    volume_ = std::move(volume);
    isDrawn_ = false;
    if (volume_ == nullptr)
        return;
    auto const width = static_cast<GLsizei>(volume_->numColumns);
    auto const height = static_cast<GLsizei>(volume_->numRows);
    auto const depth = static_cast<GLsizei>(volume_->numLayers);
    gl_.ActiveTexture(GL_TEXTURE0);
    gl_.BindTexture(GL_TEXTURE_3D, samples_);
    gl_.PixelStorei(GL_UNPACK_ALIGNMENT, 1);
    if (volume_->isColour)
        gl_.TexImage3D(GL_TEXTURE_3D, 0, GL_RGBA8, width, height, depth, 0, GL_BGRA, GL_UNSIGNED_BYTE,
                       volume_->colours.data());
    else
        gl_.TexImage3D(GL_TEXTURE_3D, 0, GL_R16, width, height, depth, 0, GL_RED, GL_UNSIGNED_SHORT,
                       volume_->values.data());
    gl_.PixelStorei(GL_UNPACK_ALIGNMENT, 4);
    gl_.BindTexture(GL_TEXTURE_3D, 0);
}

void StackDrawer::LoadTones(StackView const &view, ToneMap const &tones)
{
    std::array<Pixel, s_numTones> colours;
    // Exposure and window together: the values that black and white come from.
    double const factor = std::exp2(-view.tones.exposure);
    for (unsigned int i = 0; i < s_numTones; ++i)
    {
        double const part = view.tones.low + (view.tones.high - view.tones.low) * i / (s_numTones - 1);
        colours[i] = tones.MapValue(part * factor);
    }
    gl_.BindTexture(GL_TEXTURE_2D, tonesTexture_);
    gl_.TexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, s_numTones, 1, 0, GL_BGRA, GL_UNSIGNED_BYTE, colours.data());
    gl_.BindTexture(GL_TEXTURE_2D, 0);
}

StackDrawer::Effort StackDrawer::ChooseEffort(unsigned int width, unsigned int height, unsigned int numSlices,
                                              double seconds) const
{
    double const room = seconds / secondsPerPixel_;
    double const pixels = double(width) * height;
    // First fewer slices, then fewer pixels, then fewer slices again.
    double const half = std::min(double(numSlices), 2.0 * s_minSlices);
    double slices = std::clamp(room / pixels, half, double(numSlices));
    double const scale = std::clamp(std::sqrt(room / (pixels * slices)), s_minScale, 1.0);
    slices = std::clamp(room / (pixels * scale * scale), std::min(slices, double(s_minSlices)), slices);
    Effort effort;
    effort.width = std::max(1U, static_cast<unsigned int>(std::lround(width * scale)));
    effort.height = std::max(1U, static_cast<unsigned int>(std::lround(height * scale)));
    effort.numSlices = static_cast<unsigned int>(std::lround(slices));
    effort.isFull = scale == 1 && effort.numSlices == numSlices;
    return effort;
}

bool StackDrawer::ResizePicture(unsigned int width, unsigned int height)
{
    gl_.BindFramebuffer(GL_FRAMEBUFFER, framebuffer_);
    if (width != pictureWidth_ || height != pictureHeight_)
    {
        gl_.BindTexture(GL_TEXTURE_2D, picture_);
        gl_.TexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, static_cast<GLsizei>(width), static_cast<GLsizei>(height), 0,
                       GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
        gl_.BindTexture(GL_TEXTURE_2D, 0);
        gl_.FramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, picture_, 0);
        pictureWidth_ = width;
        pictureHeight_ = height;
    }
    return gl_.CheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
}

void StackDrawer::SetVariables(Effort const &effort, StackView const &view, double aspect)
{
    SmallVolume const &volume = *volume_;
    vec3 const &half = volume.halfExtent;
    Rotation const &rotation = view.rotation;
    vec3 const &away = rotation.away;
    int axis = 0;
    for (int i = 1; i < 3; ++i)
        axis = std::abs(away.ToPtr()[i]) > std::abs(away.ToPtr()[axis]) ? i : axis;
    float const slope = away.ToPtr()[axis];
    auto const set3 = [&](char const *name, vec3 const &value)
    { gl_.Uniform3f(slices_.Find(gl_, name), value.x, value.y, value.z); };
    float const rows[] = {rotation.right.x, rotation.right.y, rotation.right.z, rotation.down.x, rotation.down.y,
                          rotation.down.z,  away.x,           away.y,           away.z};
    gl_.UniformMatrix3fv(slices_.Find(gl_, "rotation"), 1, GL_TRUE, rows);
    set3("halfExtent", half);
    set3("end", volume.end);
    auto const lens = static_cast<float>(s_fitPart * view.zoom * double(s_eyeDistance) / double(half.Length()));
    set3("lens", {aspect > 1 ? lens / static_cast<float>(aspect) : lens,
                  aspect > 1 ? lens : lens * static_cast<float>(aspect), s_eyeDistance});
    gl_.Uniform1i(slices_.Find(gl_, "axis"), axis);
    gl_.Uniform1f(slices_.Find(gl_, "count"), static_cast<float>(effort.numSlices));
    gl_.Uniform1f(slices_.Find(gl_, "isForward"), slope < 0 ? 1.0F : 0.0F);
    double const width = view.tones.high - view.tones.low;
    double const factor = std::exp2(view.tones.exposure);
    gl_.Uniform2f(slices_.Find(gl_, "window"), static_cast<float>((volume.high - volume.low) * factor / width),
                  static_cast<float>((volume.low * factor - view.tones.low) / width));
    gl_.Uniform1i(slices_.Find(gl_, "isColour"), volume.isColour ? 1 : 0);
    double const step = 2.0 * double(half.ToPtr()[axis]) / effort.numSlices / std::abs(double(slope));
    gl_.Uniform1f(slices_.Find(gl_, "opacity"), static_cast<float>(s_opacity * view.density * step));
    set3("sampleStep", {1.0F / static_cast<float>(volume.numColumns), 1.0F / static_cast<float>(volume.numRows),
                        1.0F / static_cast<float>(volume.numLayers)});
    set3("light", (away - rotation.right * -0.35F + rotation.down * 0.45F).Unit());
    gl_.Uniform1i(slices_.Find(gl_, "samples"), 0);
    gl_.Uniform1i(slices_.Find(gl_, "tones"), 1);
}

void StackDrawer::DrawSlices(Effort const &effort, StackView const &view, double aspect, Pixel background)
{
    gl_.Viewport(0, 0, static_cast<GLsizei>(effort.width), static_cast<GLsizei>(effort.height));
    auto const channel = [background](unsigned int shift)
    { return static_cast<float>(background >> shift & 255) / 255; };
    gl_.ClearColor(channel(16), channel(8), channel(0), 1);
    gl_.Clear(GL_COLOR_BUFFER_BIT);
    gl_.UseProgram(slices_.name);
    SetVariables(effort, view, aspect);
    gl_.ActiveTexture(GL_TEXTURE1);
    gl_.BindTexture(GL_TEXTURE_2D, tonesTexture_);
    gl_.ActiveTexture(GL_TEXTURE0);
    gl_.BindTexture(GL_TEXTURE_3D, samples_);
    gl_.Enable(GL_BLEND);
    gl_.BlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    gl_.DrawArraysInstanced(GL_TRIANGLE_STRIP, 0, 4, static_cast<GLsizei>(effort.numSlices));
    gl_.Disable(GL_BLEND);
    gl_.BindTexture(GL_TEXTURE_3D, 0);
    gl_.ActiveTexture(GL_TEXTURE1);
    gl_.BindTexture(GL_TEXTURE_2D, 0);
    gl_.ActiveTexture(GL_TEXTURE0);
}

void StackDrawer::Refresh(unsigned int width, unsigned int height, StackView const &view, ToneMap const &tones,
                          Pixel background)
{
    bool const isSame = isDrawn_ && width == areaWidth_ && height == areaHeight_ && view_.IsSame(view);
    if (isSame && !IsToRefine())
        return;
    if (!isSame)
        changeTime_ = Clock::now();
    unsigned int const numSlices =
        std::clamp(2 * std::max({volume_->numColumns, volume_->numRows, volume_->numLayers}), 2 * s_minSlices, 256U);
    Effort const effort = ChooseEffort(width, height, numSlices, isSame ? s_fullSeconds : s_quickSeconds);
    if (!ResizePicture(effort.width, effort.height))
        return;
    LoadTones(view, tones);
    Clock::time_point const begin = Clock::now();
    DrawSlices(effort, view, double(width) / height, background);
    gl_.Finish();
    double const seconds = std::chrono::duration<double>(Clock::now() - begin).count();
    double const pixels = double(effort.width) * effort.height * effort.numSlices;
    secondsPerPixel_ = std::max((secondsPerPixel_ + seconds / pixels) / 2, 1e-12);
    view_ = view;
    areaWidth_ = width;
    areaHeight_ = height;
    isDrawn_ = true;
    isCoarse_ = !isSame && !effort.isFull;
}

bool StackDrawer::IsToRefine() const
{
    return isCoarse_ && std::chrono::duration<double>(Clock::now() - changeTime_).count() > s_restSeconds;
}

void StackDrawer::ShowPicture(GLint target, GLint const *viewport, gui::Rectangle const &area)
{
    gl_.BindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(target));
    auto const x = static_cast<GLint>(std::lround(area.x));
    auto const y = static_cast<GLint>(std::lround(area.y + area.height));
    gl_.Viewport(viewport[0] + x, viewport[1] + viewport[3] - y, static_cast<GLsizei>(std::lround(area.width)),
                 static_cast<GLsizei>(std::lround(area.height)));
    gl_.UseProgram(shown_.name);
    gl_.Uniform1i(shown_.Find(gl_, "picture"), 0);
    gl_.BindTexture(GL_TEXTURE_2D, picture_);
    gl_.DrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    gl_.BindTexture(GL_TEXTURE_2D, 0);
}

void StackDrawer::Draw(gui::Rectangle const &area, StackView const &view, ToneMap const &tones, Pixel background)
{
    auto const width = static_cast<unsigned int>(std::max(std::lround(area.width), 0L));
    auto const height = static_cast<unsigned int>(std::max(std::lround(area.height), 0L));
    if (volume_ == nullptr || width == 0 || height == 0)
        return;
    GLint target = 0;
    gl_.GetIntegerv(GL_FRAMEBUFFER_BINDING, &target);
    GLint viewport[4] = {};
    gl_.GetIntegerv(GL_VIEWPORT, viewport);
    gl_.Disable(GL_SCISSOR_TEST);
    gl_.BindVertexArray(vertexArray_);
    gl_.ActiveTexture(GL_TEXTURE0);
    Refresh(width, height, view, tones, background);
    ShowPicture(target, viewport, area);
    gl_.BindVertexArray(0);
    gl_.UseProgram(0);
}

} // namespace viewer::volumes
