#include <quillmarsh/gui/gui_transform.h>

#include <quillmarsh/mathtools/transforms.h>

namespace quillmarsh::gui
{

namespace
{

/// Multiplies the parts of a transform, for column vectors: the part that acts last comes first.
class Product
{
public:
    explicit Product(mat4 &out) : out_(out) { out_.SetIdentity(); }

    /// Writes the first part, and multiplies the following ones.
    void ConcatToOut(mat4 const &part)
    {
        if (isEmpty_)
            out_ = part;
        else
            out_ *= part;
        isEmpty_ = false;
    }

private:
    mat4 &out_;
    bool isEmpty_ = true;
};

} // namespace

void Transform::GenerateMV(mat4 &matrix) const
{
    Product product(matrix);
    mat4 part;
    if (translation != vec3::ZERO)
    {
        GenerateTranslateMV(part, translation.x, translation.y, translation.z);
        product.ConcatToOut(part);
    }
    struct Turn
    {
        float angle;
        eAxis axis;
    };
    for (Turn const turn : {Turn{rotation.z, e_axisZ}, Turn{rotation.x, e_axisX}, Turn{rotation.y, e_axisY}})
    {
        if (turn.angle == 0)
            continue;
        GenerateRotateMV(part, turn.angle, turn.axis);
        product.ConcatToOut(part);
    }
    if (scale != vec3::ONE)
    {
        GenerateNonUniformScale(part, scale.x, scale.y, scale.z);
        product.ConcatToOut(part);
    }
}

void Transform::GenerateVM(mat4 &matrix) const
{
    GenerateMV(matrix);
    matrix.Transpose();
}

Transform::operator mat4() const
{
    mat4 matrix;
    GenerateVM(matrix);
    return matrix;
}

} // namespace quillmarsh::gui
