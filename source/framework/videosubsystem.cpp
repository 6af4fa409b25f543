#include <quillmarsh/framework/videosubsystem.h>

namespace quillmarsh
{

VideoSubsystem::VideoSubsystem() = default;

VideoSubsystem::~VideoSubsystem() = default;

} // namespace quillmarsh
