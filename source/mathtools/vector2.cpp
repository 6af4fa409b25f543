#include <quillmarsh/mathtools/vector2.h>

#include "source/mathtools/degrees.h"

namespace quillmarsh
{

vec2 vec2::RotationCCW(float angle) const
{
    SineCosine const turn(angle);
    return vec2(turn.cosine * x - turn.sine * y, turn.sine * x + turn.cosine * y);
}

void OrthoNormalize(vec2 &a, vec2 &b)
{
    a.Unitize();
    b -= b.ProjectionTo(a);
    b.Unitize();
}

} // namespace quillmarsh
