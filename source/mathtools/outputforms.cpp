#include <quillmarsh/mathtools/outputforms.h>

#include <quillmarsh/basetools/streamsentries.h>

#include <atomic>
#include <ostream>

namespace quillmarsh
{

namespace
{

/// The default form of a class, and the form that a program has set instead.
template<typename Form>
class CurrentForm
{
public:
    static void Set(NumberSequenceOutputForm const *form) { s_pForm = form; }
    static NumberSequenceOutputForm const &Get()
    {
        static Form const defaultForm;
        NumberSequenceOutputForm const *const form = s_pForm;
        return form ? *form : defaultForm;
    }

private:
    static inline std::atomic<NumberSequenceOutputForm const *> s_pForm = nullptr;
};

/// Restores a stream's precision at the end of a scope.
class PrecisionSentry : NoCopy
{
public:
    explicit PrecisionSentry(ostream &out) : out_(out), oldPrecision_(out.precision()) {}
    ~PrecisionSentry() { out_.precision(oldPrecision_); }

private:
    ostream &out_;
    std::streamsize oldPrecision_;
};

void PrintNumber(ostream &out, NumberSequenceBoundOutputForm const &bound, unsigned int index)
{
    switch (bound.GetValueType())
    {
    case NumberSequenceBoundOutputForm::e_valueTypeInt:
        out << bound.GetValueInt(index);
        return;
    case NumberSequenceBoundOutputForm::e_valueTypeUInt:
        out << bound.GetValueUInt(index);
        return;
    case NumberSequenceBoundOutputForm::e_valueTypeDouble:
        out << bound.GetValueDouble(index);
        return;
    }
    out << "BadValueType";
}

} // namespace

// --------------------------------------------------------------------------------------------------------------- forms

bool NumberSequenceOutputForm::GetNumberProlog(unsigned int, string &) const
{
    return false;
}

bool NumberSequenceOutputForm::GetNumberEpilog(unsigned int, string &) const
{
    return false;
}

NumberSequenceOutputForm::~NumberSequenceOutputForm() = default;

VectorOutputForm::~VectorOutputForm() = default;

NumberSequenceBoundOutputForm_float VectorOutputForm::operator()(vec2 const &value) const
{
    return NumberSequenceBoundOutputForm_float(*this, value.ToPtr(), 2, 2);
}

NumberSequenceBoundOutputForm_float VectorOutputForm::operator()(vec3 const &value) const
{
    return NumberSequenceBoundOutputForm_float(*this, value.ToPtr(), 3, 3);
}

NumberSequenceBoundOutputForm_float VectorOutputForm::operator()(vec4 const &value) const
{
    return NumberSequenceBoundOutputForm_float(*this, value.ToPtr(), 4, 4);
}

void VectorOutputForm::SetCurrentOutputForm(NumberSequenceOutputForm const *form)
{
    CurrentForm<VectorOutputForm>::Set(form);
}

NumberSequenceOutputForm const &VectorOutputForm::GetCurrentOutputForm()
{
    return CurrentForm<VectorOutputForm>::Get();
}

MatrixOutputForm::~MatrixOutputForm() = default;

NumberSequenceBoundOutputForm_float MatrixOutputForm::operator()(mat2 const &value) const
{
    return NumberSequenceBoundOutputForm_float(*this, value.ToPtr(), 4, 2);
}

NumberSequenceBoundOutputForm_float MatrixOutputForm::operator()(mat3 const &value) const
{
    return NumberSequenceBoundOutputForm_float(*this, value.ToPtr(), 9, 3);
}

NumberSequenceBoundOutputForm_float MatrixOutputForm::operator()(mat4 const &value) const
{
    return NumberSequenceBoundOutputForm_float(*this, value.ToPtr(), 16, 4);
}

void MatrixOutputForm::SetCurrentOutputForm(NumberSequenceOutputForm const *form)
{
    CurrentForm<MatrixOutputForm>::Set(form);
}

NumberSequenceOutputForm const &MatrixOutputForm::GetCurrentOutputForm()
{
    return CurrentForm<MatrixOutputForm>::Get();
}

ColorOutputForm::~ColorOutputForm() = default;

NumberSequenceBoundOutputForm_float ColorOutputForm::operator()(color4f const &value) const
{
    return NumberSequenceBoundOutputForm_float(*this, value.ToPtr(), 4, 4);
}

NumberSequenceBoundOutputForm_ubyte ColorOutputForm::operator()(color4b const &value) const
{
    return NumberSequenceBoundOutputForm_ubyte(*this, value.ToPtr(), 4, 4);
}

void ColorOutputForm::SetCurrentOutputForm(NumberSequenceOutputForm const *form)
{
    CurrentForm<ColorOutputForm>::Set(form);
}

NumberSequenceOutputForm const &ColorOutputForm::GetCurrentOutputForm()
{
    return CurrentForm<ColorOutputForm>::Get();
}

QuaternionOutputForm::~QuaternionOutputForm() = default;

bool QuaternionOutputForm::GetNumberProlog(unsigned int index, string &text) const
{
    if (index != 0)
        return false;
    text = axisProlog_;
    return true;
}

bool QuaternionOutputForm::GetNumberEpilog(unsigned int index, string &text) const
{
    if (index != 2)
        return false;
    text = axisEpilog_;
    return true;
}

NumberSequenceBoundOutputForm_float QuaternionOutputForm::operator()(quat const &value) const
{
    return NumberSequenceBoundOutputForm_float(*this, value.ToPtr(), 4, 4);
}

void QuaternionOutputForm::SetCurrentOutputForm(NumberSequenceOutputForm const *form)
{
    CurrentForm<QuaternionOutputForm>::Set(form);
}

NumberSequenceOutputForm const &QuaternionOutputForm::GetCurrentOutputForm()
{
    return CurrentForm<QuaternionOutputForm>::Get();
}

// --------------------------------------------------------------------------------------------------------- bound forms

NumberSequenceBoundOutputForm::NumberSequenceBoundOutputForm(NumberSequenceOutputForm const &form,
                                                             unsigned int numNumbers, unsigned int numNumbersPerRow)
    : form_(form),
      numNumbers_(numNumbers),
      numNumbersPerRow_(numNumbersPerRow == 0 ? 1 : numNumbersPerRow)
{
}

int NumberSequenceBoundOutputForm::GetValueInt(unsigned int) const
{
    return 0;
}

unsigned int NumberSequenceBoundOutputForm::GetValueUInt(unsigned int) const
{
    return 0;
}

double NumberSequenceBoundOutputForm::GetValueDouble(unsigned int) const
{
    return 0.0;
}

NumberSequenceBoundOutputForm_float::NumberSequenceBoundOutputForm_float(NumberSequenceOutputForm const &form,
                                                                         float const *values, unsigned int numNumbers,
                                                                         unsigned int numNumbersPerRow)
    : NumberSequenceBoundOutputForm(form, numNumbers, numNumbersPerRow),
      values_(values)
{
}

NumberSequenceBoundOutputForm::eValueType NumberSequenceBoundOutputForm_float::GetValueType() const
{
    return e_valueTypeDouble;
}

double NumberSequenceBoundOutputForm_float::GetValueDouble(unsigned int index) const
{
    return static_cast<double>(GetValue(index));
}

NumberSequenceBoundOutputForm_ubyte::NumberSequenceBoundOutputForm_ubyte(NumberSequenceOutputForm const &form,
                                                                         unsigned char const *values,
                                                                         unsigned int numNumbers,
                                                                         unsigned int numNumbersPerRow)
    : NumberSequenceBoundOutputForm(form, numNumbers, numNumbersPerRow),
      values_(values)
{
}

NumberSequenceBoundOutputForm::eValueType NumberSequenceBoundOutputForm_ubyte::GetValueType() const
{
    return e_valueTypeUInt;
}

unsigned int NumberSequenceBoundOutputForm_ubyte::GetValueUInt(unsigned int index) const
{
    return GetValue(index);
}

ostream &operator<<(ostream &out, NumberSequenceBoundOutputForm const &bound)
{
    NumberSequenceOutputForm const &form = bound.GetForm();
    StreamFormatFlagsSentry const flagsSentry(out);
    PrecisionSentry const precisionSentry(out);
    out.precision(form.GetFPNumberPrecision());
    out.unsetf(std::ios_base::floatfield);
    out.setf(static_cast<std::ios_base::fmtflags>(form.GetFPNumberFormat()));

    string text;
    unsigned int const numNumbers = bound.GetNumNumbers();
    for (unsigned int index = 0; index < numNumbers; ++index)
    {
        bool const isLast = index + 1 == numNumbers;
        bool const opensRow = index % bound.GetNumNumbersPerRow() == 0;
        bool const closesRow = (index + 1) % bound.GetNumNumbersPerRow() == 0;
        if (opensRow)
            out << form.GetSequenceProlog();
        if (form.GetNumberProlog(index, text))
            out << text;
        out.width(form.GetNumberWidth());
        PrintNumber(out, bound, index);
        if (form.GetNumberEpilog(index, text))
            out << text;
        if (closesRow)
            out << form.GetSequenceEpilog();
        else if (!isLast)
            out << form.GetNumberSeparator();
        if (closesRow && !isLast && form.GetMultiline())
            out << '\n';
    }
    return out;
}

} // namespace quillmarsh
