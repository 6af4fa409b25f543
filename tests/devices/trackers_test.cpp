// Orientation and position trackers.
#include <quillmarsh/devices/orientationtracker.h>
#include <quillmarsh/devices/positiontracker.h>

#include <quillmarsh/mathtools/transforms.h>

#include "tests/support/controller_device.h"
#include "tests/support/math_values.h"

#include <gtest/gtest.h>

#include <random>

namespace quillmarsh::tests
{
namespace
{

class TestOrientationTracker : public AttachedController<OrientationTracker>
{
public:
    using OrientationTracker::GetRequestedSamplingMode;
    using OrientationTracker::ReportHardwareCaps_ResetControls;
    using OrientationTracker::ReportHardwareCaps_SamplingMode;
    using OrientationTracker::SetOrientation;

    /// Returns the axes as the columns of a matrix.
    mat3 Corrected() const
    {
        mat3 axes;
        GetOrientation(axes.Row0(), axes.Row1(), axes.Row2());
        return axes.Transposed();
    }
    mat3 Raw() const
    {
        mat3 axes;
        GetOrientationRaw(axes.Row0(), axes.Row1(), axes.Row2());
        return axes.Transposed();
    }
    vec3 RawAngles() const
    {
        vec3 angles;
        GetOrientationRaw(angles.x, angles.y, angles.z);
        return angles;
    }
    quat RawQuaternion() const
    {
        quat orientation;
        GetOrientationRaw(orientation);
        return orientation;
    }

    string calls;
    bool answer = true;

protected:
    bool Call(string const &name)
    {
        calls += name;
        return answer;
    }
    bool DoResetOrientation() override { return Call("o"); }
    bool DoResetHead() override { return Call("h"); }
    bool DoResetPitch() override { return Call("p"); }
    bool DoResetRoll() override { return Call("r"); }
    bool DoChangeSamplingMode(eSamplingMode mode) override
    {
        return Call(std::to_string(mode) + "to" + std::to_string(GetRequestedSamplingMode()) + " ");
    }
};

class TestPositionTracker : public AttachedController<PositionTracker>
{
public:
    using PositionTracker::ReportHardwareCaps;
    using PositionTracker::SetPosition;

protected:
    bool DoResetPosition() override { return true; }
    bool DoResetX() override { return false; }
    bool DoResetY() override { return true; }
    bool DoResetZ() override { return true; }
};

mat3 Euler(float head, float pitch, float roll)
{
    mat3 matrix;
    GenerateEulerHPR_MV(matrix, head, pitch, roll);
    return matrix;
}

constexpr float s_tolerance = 2e-5f;

TEST(OrientationTracker, CorrectsByReversalInsideAndTransformOutside)
{
    std::mt19937 engine(6);
    for (int i = 0; i < 100; ++i)
    {
        vec3 const angles = MakeRandom<vec3>(engine);
        float const head = 179.0f * angles.x, pitch = 80.0f * angles.y, roll = 179.0f * angles.z;
        mat3 const transform = Euler(20.0f, 30.0f, static_cast<float>(i));

        TestOrientationTracker tracker;
        tracker.SetOrientation(head, pitch, roll);
        EXPECT_TRUE(IsNear(tracker.Raw(), Euler(head, pitch, roll), s_tolerance));
        EXPECT_TRUE(IsNear(tracker.Corrected(), tracker.Raw(), s_tolerance));

        tracker.SetTransform(transform);
        EXPECT_TRUE(IsNear(tracker.Corrected(), tracker.Raw(), s_tolerance)) << "only from the next reading on";
        for (unsigned int axes = 0; axes < 8; ++axes)
        {
            auto const sign = [axes](unsigned int bit) { return (axes & bit) != 0 ? -1.0f : 1.0f; };
            tracker.SetReverseHead((axes & 1) != 0);
            tracker.SetReversePitch((axes & 2) != 0);
            tracker.SetReverseRoll((axes & 4) != 0);
            tracker.EnableReverseModifiers(true);
            tracker.SetOrientation(head, pitch, roll);
            mat3 const reversed = Euler(head * sign(1), pitch * sign(2), roll * sign(4));
            EXPECT_TRUE(IsNear(tracker.Corrected(), transform * reversed, s_tolerance)) << "axes " << axes;
            tracker.EnableReverseModifiers(false);
            tracker.SetOrientation(head, pitch, roll);
            EXPECT_TRUE(IsNear(tracker.Corrected(), transform * tracker.Raw(), s_tolerance));
        }
    }
}

TEST(OrientationTracker, TakesOrientationsInFourForms)
{
    TestOrientationTracker tracker;
    tracker.SetOrientation(370.0f, 100.0f, -190.0f);
    EXPECT_EQ(tracker.RawAngles(), vec3(370.0f, 100.0f, -190.0f));
    EXPECT_TRUE(IsNear(tracker.Raw(), Euler(10.0f, 80.0f, 170.0f), s_tolerance));
    EXPECT_EQ(tracker.RawQuaternion(), quat::IDENTITY);

    quat const orientation = quat(vec3(1.0f, 2.0f, 3.0f).Unit(), 50.0f) * 2.0f;
    tracker.SetOrientation(orientation);
    mat3 expected;
    orientation.Unit().ToRotationMatrixMV(expected);
    EXPECT_TRUE(IsNear(tracker.Raw(), expected, s_tolerance));
    EXPECT_EQ(tracker.RawQuaternion(), orientation) << "unchanged";
    EXPECT_EQ(tracker.RawAngles(), vec3(370.0f, 100.0f, -190.0f)) << "untouched";

    // Heading is atan2(3, 12), pitch asin(4 / 13).
    tracker.SetOrientation(vec3(3.0f, -4.0f, 12.0f), 370.0f);
    EXPECT_TRUE(IsNear(tracker.Raw(), Euler(14.0362435f, 17.9202044f, 10.0f), s_tolerance));
    EXPECT_EQ(tracker.RawQuaternion(), orientation) << "untouched";

    // The tracker does not check the axes, so these stay not orthogonal.
    tracker.SetOrientation(vec3(0.0f, 5.0f, 0.0f), vec3(0.0f, 3.0f, 4.0f));
    EXPECT_TRUE(IsNear(tracker.Raw(), mat3(0.8f, 0.0f, 0.0f, 0.0f, 1.0f, 0.6f, 0.0f, 0.0f, 0.8f)));

    tracker.EnableHPRModifier(true);
    tracker.SetOrientation(30.0f, 40.0f, 50.0f);
    GenerateEulerPHR_MV(expected, 30.0f, 40.0f, 50.0f);
    EXPECT_TRUE(IsNear(tracker.Raw(), expected, s_tolerance));

    tracker.ResetInputReadings();
    EXPECT_TRUE(tracker.Corrected() == mat3::IDENTITY && tracker.Raw() == mat3::IDENTITY);
    EXPECT_TRUE(tracker.RawAngles() == vec3::ZERO && tracker.RawQuaternion() == quat::IDENTITY);
}

TEST(OrientationTracker, ChangesModesThatAreSupported)
{
    using Mode = OrientationTracker::eSamplingMode;
    TestOrientationTracker tracker;
    tracker.SetOrientation(10.0f, 20.0f, 30.0f);
    EXPECT_FALSE(tracker.SetSamplingMode(Mode::EulerSamplingMode));
    EXPECT_EQ(tracker.RawAngles(), vec3::ZERO) << "a refused change clears too";
    EXPECT_TRUE(tracker.SetSamplingMode(Mode::NoSamplingMode));
    EXPECT_FALSE(tracker.SetSamplingMode(static_cast<Mode>(3)));
    EXPECT_EQ(tracker.calls, "");

    tracker.ReportHardwareCaps_SamplingMode(Mode::EulerSamplingMode, true);
    tracker.ReportHardwareCaps_SamplingMode(Mode::QuaternionSamplingMode, true);
    EXPECT_TRUE(tracker.SetSamplingMode(Mode::EulerSamplingMode));
    tracker.answer = false;
    EXPECT_FALSE(tracker.SetSamplingMode(Mode::QuaternionSamplingMode));
    EXPECT_EQ(tracker.GetSamplingMode(), Mode::EulerSamplingMode);
    EXPECT_EQ(tracker.GetRequestedSamplingMode(), Mode::EulerSamplingMode);
    EXPECT_EQ(tracker.calls, "0to1 1to2 ");
}

TEST(OrientationTracker, ResetsWhatTheHardwareCan)
{
    TestOrientationTracker tracker;
    auto const resetAll = [&tracker]
    {
        string results;
        for (bool const result :
             {tracker.ResetOrientation(), tracker.ResetHead(), tracker.ResetPitch(), tracker.ResetRoll()})
            results += result ? '1' : '0';
        return results;
    };
    EXPECT_EQ(resetAll(), "0000");
    EXPECT_EQ(tracker.calls, "");
    tracker.ReportHardwareCaps_ResetControls(true, false, true, true);
    EXPECT_EQ(resetAll(), "1011");
    EXPECT_EQ(tracker.calls, "opr");
    tracker.answer = false;
    EXPECT_EQ(resetAll(), "0000");
}

TEST(PositionTracker, ReversesThenTransforms)
{
    TestPositionTracker tracker;
    vec3 const position(1.0f, 2.0f, 3.0f);
    tracker.SetReverseX(true);
    tracker.SetPosition(position);
    EXPECT_EQ(tracker.GetPosition(), vec3(-1.0f, 2.0f, 3.0f));
    EXPECT_EQ(tracker.GetPositionRaw(), position);

    mat4 transform;
    GenerateTranslateMV(transform, 10.0f, 20.0f, 30.0f);
    transform.Row3() = vec4(0.0f, 0.0f, 0.0f, 2.0f);
    tracker.SetTransform(transform);
    tracker.SetReverseX(false);
    tracker.SetReverseZ(true);
    tracker.SetPosition(position);
    EXPECT_EQ(tracker.GetPosition(), vec3(5.5f, 11.0f, 13.5f));

    transform.Row3() = vec4(0.0f, 0.0f, 0.0f, 0.0f);
    tracker.SetTransform(transform);
    tracker.SetPosition(position);
    EXPECT_EQ(tracker.GetPosition(), vec3::INFINITY);
    tracker.ResetInputReadings();
    EXPECT_EQ(tracker.GetPosition(), vec3::ZERO);
    EXPECT_EQ(tracker.GetPositionRaw(), vec3::ZERO);

    tracker.ReportHardwareCaps(false, true, true, false);
    EXPECT_FALSE(tracker.ResetPosition() || tracker.ResetX() || tracker.ResetZ());
    EXPECT_TRUE(tracker.ResetY());
}

TEST(Trackers, DumpTheirCapabilities)
{
    TestOrientationTracker orientation;
    orientation.ReportHardwareCaps_ResetControls(true, false, false, true);
    orientation.ReportHardwareCaps_SamplingMode(OrientationTracker::QuaternionSamplingMode, true);
    EXPECT_EQ(DumpText(orientation), "\tResetOrientation: true\n\tResetHead.......: false\n\tResetPitch......: false\n"
                                     "\tResetRoll.......: true\n\tEulerMode.......: false\n\tQuaternionMode..: true\n");
    TestPositionTracker position;
    position.ReportHardwareCaps(false, true, false, false);
    EXPECT_EQ(DumpText(position),
              "\tResetPosition: false\n\tResetX.......: true\n\tResetY.......: false\n\tResetZ.......: false\n");
}

} // namespace
} // namespace quillmarsh::tests
