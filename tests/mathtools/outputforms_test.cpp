#include <quillmarsh/mathtools/outputforms.h>

#include <gtest/gtest.h>

#include <cmath>

#include <iomanip>
#include <sstream>

namespace quillmarsh
{
namespace
{

string Print(NumberSequenceBoundOutputForm const &bound)
{
    std::ostringstream out;
    out << bound;
    return out.str();
}

TEST(Color, BytesSurviveConversionToFloatsAndBack)
{
    for (int i = 0; i < 256; ++i)
    {
        auto const byte = static_cast<unsigned char>(i);
        color4b const color(byte, 0, 255, static_cast<unsigned char>(255 - i));
        ASSERT_EQ(color4b(color4f(color)), color);
    }
}

TEST(Color, FloatsAreTruncatedToTheirLowByte)
{
    float const infinity = std::numeric_limits<float>::infinity();
    std::pair<float, int> const rows[] = {{1.0f, 255}, {0.999f, 254}, {0.0f, 0},      {2.0f, 510 - 256}, {-0.01f, 254},
                                          {1e30f, 0},  {infinity, 0}, {-infinity, 0}, {std::nanf(""), 0}};
    for (auto const &[channel, byte] : rows)
        EXPECT_EQ(color4b(color4f(0.0f, channel, 0.0f, 0.0f)).g, byte) << channel;
}

TEST(Color, ArithmeticIncludesAlpha)
{
    color4f const a(0.5f, 1.0f, 2.0f, 4.0f);
    EXPECT_EQ(a + a, a * 2.0f);
    EXPECT_EQ(a * a / a, a);
    EXPECT_EQ((-a).a, -4.0f);
    float const reciprocal = 1.0f / 3.0f;
    color4f divided = color4f(5.0f, 7.0f, 0.1f, 1.0f);
    EXPECT_EQ(divided / 3.0f, divided * reciprocal);
    EXPECT_NE(divided / 3.0f, divided / color4f(3.0f, 3.0f, 3.0f, 3.0f));
    EXPECT_EQ(divided /= 3.0f, color4f(5.0f, 7.0f, 0.1f, 1.0f).Mul(reciprocal));
    EXPECT_NEAR(a.Luminance(), 0.299 * 0.5 + 0.587 * 1.0 + 0.114 * 2.0, 1e-7);
}

TEST(OutputForms, PrintRowsInTheirBrackets)
{
    EXPECT_EQ(Print(VectorOutputForm()(vec3(1.0f, -2.5f, 1e-7f))), "[1, -2.5, 1e-07]");
    EXPECT_EQ(Print(MatrixOutputForm()(mat2(1.0f, 2.0f, 3.0f, 4.0f))), "[1, 2][3, 4]");
    EXPECT_EQ(Print(ColorOutputForm()(color4f(1.0f, 0.5f, 0.0f, 1.0f))), "[1, 0.5, 0, 1]");
    EXPECT_EQ(Print(ColorOutputForm()(color4b(1, 2, 3, 4))), "[3, 2, 1, 4]");
    EXPECT_EQ(Print(QuaternionOutputForm()(quat(1.0f, 2.0f, 3.0f, 4.0f))), "[(1, 2, 3), 4]");

    MatrixOutputForm form;
    form.SetMultiline(true);
    form.SetNumberWidth(6);
    form.SetFPNumberPrecision(2);
    form.SetFPNumberFormat(e_fpFormatFixed);
    form.SetSequenceProlog("<");
    form.SetNumberSeparator("|");
    form.SetSequenceEpilog(">");
    EXPECT_EQ(Print(form(mat2(1.0f, 2.0f, 3.0f, 4.126f))), "<  1.00|  2.00>\n<  3.00|  4.13>");

    QuaternionOutputForm quaternions;
    quaternions = form;
    quaternions.SetAxisProlog("{");
    EXPECT_EQ(Print(quaternions(quat::IDENTITY)), "<{  0.00|  0.00|  0.00)|  1.00>");
}

TEST(OutputForms, CountsAtTheEdge)
{
    VectorOutputForm const form;
    float const values[] = {1.0f, 2.0f, 3.0f};
    EXPECT_EQ(Print(NumberSequenceBoundOutputForm_float(form, values, 2, 0)), "[1][2]");
    EXPECT_EQ(Print(NumberSequenceBoundOutputForm_float(form, values, 0, 3)), "");
    // An incomplete row has no closing bracket.
    EXPECT_EQ(Print(NumberSequenceBoundOutputForm_float(form, values, 3, 2)), "[1, 2][3");
}

TEST(OutputForms, ValueTypeChoosesTheNumber)
{
    struct Bound final : NumberSequenceBoundOutputForm
    {
        Bound(NumberSequenceOutputForm const &form, int newType)
            : NumberSequenceBoundOutputForm(form, 1, 1),
              type(newType)
        {
        }
        eValueType GetValueType() const override { return static_cast<eValueType>(type); }
        int GetValueInt(unsigned int) const override { return -1; }
        double GetValueDouble(unsigned int) const override { return 0.5; }
        int type;
    };
    VectorOutputForm const form;
    EXPECT_EQ(Print(Bound(form, 0)), "[-1]");
    EXPECT_EQ(Print(Bound(form, 1)), "[0]");
    EXPECT_EQ(Print(Bound(form, 2)), "[0.5]");
    EXPECT_EQ(Print(Bound(form, 3)), "[BadValueType]");
}

TEST(OutputForms, LeaveTheStreamAsItWas)
{
    std::ostringstream out;
    out << std::fixed << std::showpos << std::setprecision(3);
    std::ios_base::fmtflags const flags = out.flags();
    VectorOutputForm form;
    form.SetFPNumberPrecision(9);
    out << form(vec2(0.5f, 0.1f));
    EXPECT_EQ(out.str(), "[+0.5, +0.100000001]");
    EXPECT_EQ(out.flags(), flags);
    EXPECT_EQ(out.precision(), 3);
}

TEST(OutputForms, CurrentFormIsOneForEachClassAndNullIsTheDefault)
{
    NumberSequenceOutputForm const &defaultForm = ColorOutputForm::GetCurrentOutputForm();
    VectorOutputForm custom;
    ColorOutputForm::SetCurrentOutputForm(&custom);
    EXPECT_EQ(&ColorOutputForm::GetCurrentOutputForm(), &custom);
    EXPECT_NE(&VectorOutputForm::GetCurrentOutputForm(), &custom);
    ColorOutputForm::SetCurrentOutputForm(nullptr);
    EXPECT_EQ(&ColorOutputForm::GetCurrentOutputForm(), &defaultForm);
}

} // namespace
} // namespace quillmarsh
