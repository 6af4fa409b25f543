#include <quillmarsh/mathtools/vector3.h>

#include "source/mathtools/degrees.h"

namespace quillmarsh
{

vec3 &vec3::RotationAroundUnit(vec3 const &unitAxis, float angle, vec3 const &source)
{
    SineCosine const turn(angle);
    float const along = unitAxis.Dot(source) * (1.0f - turn.cosine);
    return *this = source * turn.cosine + unitAxis * along + unitAxis.Cross(source) * turn.sine;
}

void OrthoNormalize(vec3 &a, vec3 &b, vec3 &c)
{
    a.Unitize();
    b -= b.ProjectionTo(a);
    b.Unitize();
    c -= c.ProjectionTo(a) + c.ProjectionTo(b);
    c.Unitize();
}

} // namespace quillmarsh
