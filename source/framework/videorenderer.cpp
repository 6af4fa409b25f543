#include <quillmarsh/framework/videorenderer.h>

namespace quillmarsh
{

VideoRenderer::VideoRenderer() = default;

VideoRenderer::~VideoRenderer() = default;

} // namespace quillmarsh
