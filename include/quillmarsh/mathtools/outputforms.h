// Forms in which vectors, matrices, quaternions and colours print to a text stream.
#ifndef QUILLMARSH_MATHTOOLS_OUTPUTFORMS_H
#define QUILLMARSH_MATHTOOLS_OUTPUTFORMS_H

#include <quillmarsh/mathtools/color4f.h>
#include <quillmarsh/mathtools/quaternion.h>
#include <quillmarsh/platform/types.h>

#include <ios>

namespace quillmarsh
{

/// Notation of floating-point numbers: format flags of the standard streams, of which others may be set as well.
enum eFPNumberFormat : int
{
    e_fpFormatGeneral = 0,
    e_fpFormatFixed = static_cast<int>(std::ios_base::fixed),
    e_fpFormatScientific = static_cast<int>(std::ios_base::scientific)
};

/// How a number looks. Any thread that has it to itself.
class QUILLMARSH_API NumberOutputForm
{
public:
    /// @name Least width in characters
    /// @{
    int GetNumberWidth() const { return numberWidth_; }
    void SetNumberWidth(int width) { numberWidth_ = width; }
    /// @}

    /// @name Digits of a floating-point number
    /// @{
    int GetFPNumberPrecision() const { return fpNumberPrecision_; }
    void SetFPNumberPrecision(int precision) { fpNumberPrecision_ = precision; }
    /// @}

    /// @name Notation of floating-point numbers
    /// @{
    eFPNumberFormat GetFPNumberFormat() const { return fpNumberFormat_; }
    void SetFPNumberFormat(eFPNumberFormat format) { fpNumberFormat_ = format; }
    /// @}

private:
    int numberWidth_ = 0;
    int fpNumberPrecision_ = 6;
    eFPNumberFormat fpNumberFormat_ = e_fpFormatGeneral;
};

/// How rows of numbers look: a prolog, the numbers with a separator between them, and an epilog, for each row.
///
/// A form of one of the derived classes is called with a value, and a stream prints what comes back:
/// `out << VectorOutputForm()(position)`. Any thread that has it to itself.
class QUILLMARSH_API NumberSequenceOutputForm : public NumberOutputForm
{
public:
    /// Text in front of the number at `index`, counted through all rows. False when there is none, and `text` is as
    /// it was.
    virtual bool GetNumberProlog(unsigned int index, string &text) const;
    /// Text behind the number, likewise.
    virtual bool GetNumberEpilog(unsigned int index, string &text) const;
    virtual ~NumberSequenceOutputForm();

    /// @name A row a line
    /// @{
    bool GetMultiline() const { return multiline_; }
    void SetMultiline(bool multiline) { multiline_ = multiline; }
    /// @}

    /// @name Text in front of a row
    /// @{
    string const &GetSequenceProlog() const { return sequenceProlog_; }
    void SetSequenceProlog(string const &text) { sequenceProlog_ = text; }
    /// @}

    /// @name Text between the numbers of a row
    /// @{
    string const &GetNumberSeparator() const { return numberSeparator_; }
    void SetNumberSeparator(string const &text) { numberSeparator_ = text; }
    /// @}

    /// @name Text behind a row
    /// @{
    string const &GetSequenceEpilog() const { return sequenceEpilog_; }
    void SetSequenceEpilog(string const &text) { sequenceEpilog_ = text; }
    /// @}

private:
    bool multiline_ = false;
    string sequenceProlog_ = "[";
    string numberSeparator_ = ", ";
    string sequenceEpilog_ = "]";
};

/// Numbers bound to a form, ready to print.
///
/// It borrows both, so it is made and printed in one expression.
class QUILLMARSH_API NumberSequenceBoundOutputForm
{
public:
    /// Kinds of numbers that can be bound.
    enum eValueType
    {
        e_valueTypeInt = 0,
        e_valueTypeUInt = 1,
        e_valueTypeDouble = 2
    };

    /// `numNumbersPerRow` 0 counts as 1.
    NumberSequenceBoundOutputForm(NumberSequenceOutputForm const &form, unsigned int numNumbers,
                                  unsigned int numNumbersPerRow);

    /// Which of the three functions below has the numbers.
    virtual eValueType GetValueType() const = 0;
    virtual int GetValueInt(unsigned int index) const;
    virtual unsigned int GetValueUInt(unsigned int index) const;
    virtual double GetValueDouble(unsigned int index) const;

    NumberSequenceOutputForm const &GetForm() const { return form_; }
    unsigned int GetNumNumbers() const { return numNumbers_; }
    unsigned int GetNumNumbersPerRow() const { return numNumbersPerRow_; }

protected:
    ~NumberSequenceBoundOutputForm() = default;

private:
    NumberSequenceOutputForm const &form_;
    unsigned int numNumbers_;
    unsigned int numNumbersPerRow_;
};

/// Prints the numbers; the stream's flags and precision are afterwards as they were.
QUILLMARSH_API ostream &operator<<(ostream &out, NumberSequenceBoundOutputForm const &bound);

/// Bound floats, printed as doubles.
class QUILLMARSH_API NumberSequenceBoundOutputForm_float final : public NumberSequenceBoundOutputForm
{
public:
    NumberSequenceBoundOutputForm_float(NumberSequenceOutputForm const &form, float const *values,
                                        unsigned int numNumbers, unsigned int numNumbersPerRow);

    eValueType GetValueType() const override;
    double GetValueDouble(unsigned int index) const override;
    float GetValue(unsigned int index) const { return values_[index]; }

private:
    float const *values_;
};

/// Bound bytes, printed as numbers.
class QUILLMARSH_API NumberSequenceBoundOutputForm_ubyte final : public NumberSequenceBoundOutputForm
{
public:
    NumberSequenceBoundOutputForm_ubyte(NumberSequenceOutputForm const &form, unsigned char const *values,
                                        unsigned int numNumbers, unsigned int numNumbersPerRow);

    eValueType GetValueType() const override;
    unsigned int GetValueUInt(unsigned int index) const override;
    unsigned char GetValue(unsigned int index) const { return values_[index]; }

private:
    unsigned char const *values_;
};

// Each class below has a current form of its own, which is process-wide and not locked: programs set it before their
// threads start.

/// Form of vectors.
class QUILLMARSH_API VectorOutputForm : public NumberSequenceOutputForm
{
public:
    ~VectorOutputForm() override;
    /// Takes over what any form says of rows and numbers.
    using NumberSequenceOutputForm::operator=;

    /// @name Binding
    /// @{
    NumberSequenceBoundOutputForm_float operator()(vec2 const &value) const;
    NumberSequenceBoundOutputForm_float operator()(vec3 const &value) const;
    NumberSequenceBoundOutputForm_float operator()(vec4 const &value) const;
    /// @}

    /// @name Current form
    /// The form is borrowed as long as it is the current one; null brings the default back.
    /// @{
    static void SetCurrentOutputForm(NumberSequenceOutputForm const *form);
    static NumberSequenceOutputForm const &GetCurrentOutputForm();
    /// @}
};

/// Form of matrices, row by row.
class QUILLMARSH_API MatrixOutputForm : public NumberSequenceOutputForm
{
public:
    ~MatrixOutputForm() override;
    /// Takes over what any form says of rows and numbers.
    using NumberSequenceOutputForm::operator=;

    /// @name Binding
    /// @{
    NumberSequenceBoundOutputForm_float operator()(mat2 const &value) const;
    NumberSequenceBoundOutputForm_float operator()(mat3 const &value) const;
    NumberSequenceBoundOutputForm_float operator()(mat4 const &value) const;
    /// @}

    /// @name Current form
    /// See VectorOutputForm.
    /// @{
    static void SetCurrentOutputForm(NumberSequenceOutputForm const *form);
    static NumberSequenceOutputForm const &GetCurrentOutputForm();
    /// @}
};

/// Form of colours: red, green, blue, alpha as floats, or the four bytes as they are in memory.
class QUILLMARSH_API ColorOutputForm : public NumberSequenceOutputForm
{
public:
    ~ColorOutputForm() override;
    /// Takes over what any form says of rows and numbers.
    using NumberSequenceOutputForm::operator=;

    /// @name Binding
    /// @{
    NumberSequenceBoundOutputForm_float operator()(color4f const &value) const;
    NumberSequenceBoundOutputForm_ubyte operator()(color4b const &value) const;
    /// @}

    /// @name Current form
    /// See VectorOutputForm.
    /// @{
    static void SetCurrentOutputForm(NumberSequenceOutputForm const *form);
    static NumberSequenceOutputForm const &GetCurrentOutputForm();
    /// @}
};

/// Form of quaternions, whose vector part stands between two texts of its own: [(x, y, z), w].
class QUILLMARSH_API QuaternionOutputForm : public NumberSequenceOutputForm
{
public:
    ~QuaternionOutputForm() override;
    /// Takes over what any form says of rows and numbers.
    using NumberSequenceOutputForm::operator=;

    bool GetNumberProlog(unsigned int index, string &text) const override;
    bool GetNumberEpilog(unsigned int index, string &text) const override;

    /// @name Text in front of the vector part
    /// @{
    string const &GetAxisProlog() const { return axisProlog_; }
    void SetAxisProlog(string const &text) { axisProlog_ = text; }
    /// @}

    /// @name Text behind the vector part
    /// @{
    string const &GetAxisEpilog() const { return axisEpilog_; }
    void SetAxisEpilog(string const &text) { axisEpilog_ = text; }
    /// @}

    /// Binding.
    NumberSequenceBoundOutputForm_float operator()(quat const &value) const;

    /// @name Current form
    /// See VectorOutputForm.
    /// @{
    static void SetCurrentOutputForm(NumberSequenceOutputForm const *form);
    static NumberSequenceOutputForm const &GetCurrentOutputForm();
    /// @}

private:
    string axisProlog_ = "(";
    string axisEpilog_ = ")";
};

} // namespace quillmarsh

#endif
