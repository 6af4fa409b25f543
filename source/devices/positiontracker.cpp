#include <quillmarsh/devices/positiontracker.h>

#include "source/devices/dumpline.h"

namespace quillmarsh
{

PositionTracker::~PositionTracker() = default;

string PositionTracker::GetControllerInterfaceName() const
{
    return "PositionTracker";
}

void PositionTracker::DumpControllerInfo(ostream &out, unsigned int tabs) const
{
    DumpLine(out, tabs, "ResetPosition: ", isResetPositionSupported_);
    DumpLine(out, tabs, "ResetX.......: ", isResetXSupported_);
    DumpLine(out, tabs, "ResetY.......: ", isResetYSupported_);
    DumpLine(out, tabs, "ResetZ.......: ", isResetZSupported_);
}

void PositionTracker::ResetInputReadings()
{
    position_ = vec3::ZERO;
    rawPosition_ = vec3::ZERO;
}

void PositionTracker::PreSampleUpdate() {}

void PositionTracker::PostSampleUpdate() {}

void PositionTracker::OnBeginAsyncSampleRead() {}

void PositionTracker::OnEndAsyncSampleRead() {}

void PositionTracker::ReportHardwareCaps(bool resetPosition, bool resetX, bool resetY, bool resetZ)
{
    isResetPositionSupported_ = resetPosition;
    isResetXSupported_ = resetX;
    isResetYSupported_ = resetY;
    isResetZSupported_ = resetZ;
}

void PositionTracker::SetPosition(vec3 const &position)
{
    rawPosition_ = position;
    vec4 const reversed(position.x * reverseSignX_, position.y * reverseSignY_, position.z * reverseSignZ_, 1.0f);
    vec4 transformed(transform_.Row0().Dot(reversed), transform_.Row1().Dot(reversed), transform_.Row2().Dot(reversed),
                     transform_.Row3().Dot(reversed));
    position_ = transformed.Normalize();
}

} // namespace quillmarsh
