// Forms in which vectors, matrices, quaternions and colours print to a text stream.
#ifndef QUILLMARSH_MATHTOOLS_OUTPUTFORMS_H
#define QUILLMARSH_MATHTOOLS_OUTPUTFORMS_H

#include <quillmarsh/mathtools/color4f.h>
#include <quillmarsh/mathtools/quaternion.h>
#include <quillmarsh/platform/types.h>

#include <ios>

namespace quillmarsh
{

/// Notation of floating-point numbers: format flags of the standard streams. Other flags may be added.
enum eFPNumberFormat : int
{
    e_fpFormatGeneral = 0,
    e_fpFormatFixed = static_cast<int>(std::ios_base::fixed),
    e_fpFormatScientific = static_cast<int>(std::ios_base::scientific)
};

/// Layout of a number. Each getter returns what its setter has stored. One thread at a time.
class QUILLMARSH_API NumberOutputForm
{
public:
    /// @name Width
    /// Least number of characters; 0 at first.
    /// @{
    int GetNumberWidth() const { return numberWidth_; }
    void SetNumberWidth(int width) { numberWidth_ = width; }
    /// @}

    /// @name Precision
    /// Number of digits of a floating-point number, as for a standard stream; 6 at first.
    /// @{
    int GetFPNumberPrecision() const { return fpNumberPrecision_; }
    void SetFPNumberPrecision(int precision) { fpNumberPrecision_ = precision; }
    /// @}

    /// @name Notation
    /// Of floating-point numbers; general at first.
    /// @{
    eFPNumberFormat GetFPNumberFormat() const { return fpNumberFormat_; }
    void SetFPNumberFormat(eFPNumberFormat format) { fpNumberFormat_ = format; }
    /// @}

private:
    int numberWidth_ = 0;
    int fpNumberPrecision_ = 6;
    eFPNumberFormat fpNumberFormat_ = e_fpFormatGeneral;
};

/// Layout of rows of numbers. Each row has a prolog, the numbers with a separator between them, and an epilog.
///
/// A form of one of the derived classes is called with a value, and its result is printed:
/// `out << VectorOutputForm()(position)`. One thread at a time.
class QUILLMARSH_API NumberSequenceOutputForm : public NumberOutputForm
{
public:
    /// Gives the text in front of the number at `index`, counted through all rows. Returns false, and leaves `text`
    /// alone, when there is none.
    virtual bool GetNumberProlog(unsigned int index, string &text) const;
    /// Gives the text behind the number, likewise.
    virtual bool GetNumberEpilog(unsigned int index, string &text) const;
    virtual ~NumberSequenceOutputForm();

    /// @name Lines
    /// If true, each row has a line of its own; false at first.
    /// @{
    bool GetMultiline() const { return multiline_; }
    void SetMultiline(bool multiline) { multiline_ = multiline; }
    /// @}

    /// @name Prolog
    /// Text in front of a row; "[" at first.
    /// @{
    string const &GetSequenceProlog() const { return sequenceProlog_; }
    void SetSequenceProlog(string const &text) { sequenceProlog_ = text; }
    /// @}

    /// @name Separator
    /// Text between the numbers of a row; ", " at first.
    /// @{
    string const &GetNumberSeparator() const { return numberSeparator_; }
    void SetNumberSeparator(string const &text) { numberSeparator_ = text; }
    /// @}

    /// @name Epilog
    /// Text behind a row; "]" at first.
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

/// Numbers together with their form, ready to print.
///
/// Both are borrowed, so the object is made and printed in one expression.
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

    /// @name Numbers
    /// GetValueType() tells which of the three functions behind it gives the numbers; the other two give 0. `index`
    /// counts through all rows.
    /// @{
    virtual eValueType GetValueType() const = 0;
    virtual int GetValueInt(unsigned int index) const;
    virtual unsigned int GetValueUInt(unsigned int index) const;
    virtual double GetValueDouble(unsigned int index) const;
    /// @}

    /// The form.
    NumberSequenceOutputForm const &GetForm() const { return form_; }
    /// Number of the numbers in all rows.
    unsigned int GetNumNumbers() const { return numNumbers_; }
    /// Number of the numbers in a row, at least 1.
    unsigned int GetNumNumbersPerRow() const { return numNumbersPerRow_; }

protected:
    ~NumberSequenceBoundOutputForm() = default;

private:
    NumberSequenceOutputForm const &form_;
    unsigned int numNumbers_;
    unsigned int numNumbersPerRow_;
};

/// Prints the numbers, and restores the stream's flags and precision.
QUILLMARSH_API ostream &operator<<(ostream &out, NumberSequenceBoundOutputForm const &bound);

/// Bound floats, printed as doubles.
class QUILLMARSH_API NumberSequenceBoundOutputForm_float final : public NumberSequenceBoundOutputForm
{
public:
    /// `values` is borrowed.
    NumberSequenceBoundOutputForm_float(NumberSequenceOutputForm const &form, float const *values,
                                        unsigned int numNumbers, unsigned int numNumbersPerRow);

    eValueType GetValueType() const override;
    double GetValueDouble(unsigned int index) const override;
    /// Number by index, which is below the number of numbers.
    float GetValue(unsigned int index) const { return values_[index]; }

private:
    float const *values_;
};

/// Bound bytes, printed as numbers.
class QUILLMARSH_API NumberSequenceBoundOutputForm_ubyte final : public NumberSequenceBoundOutputForm
{
public:
    /// `values` is borrowed.
    NumberSequenceBoundOutputForm_ubyte(NumberSequenceOutputForm const &form, unsigned char const *values,
                                        unsigned int numNumbers, unsigned int numNumbersPerRow);

    eValueType GetValueType() const override;
    unsigned int GetValueUInt(unsigned int index) const override;
    /// Number by index, which is below the number of numbers.
    unsigned char GetValue(unsigned int index) const { return values_[index]; }

private:
    unsigned char const *values_;
};

// Each class below has a current form of its own. It is shared by the whole process without a lock: programs set it
// before their threads start.

/// Form of vectors.
class QUILLMARSH_API VectorOutputForm : public NumberSequenceOutputForm
{
public:
    ~VectorOutputForm() override;
    /// Copies the layout of rows and numbers from any form.
    using NumberSequenceOutputForm::operator=;

    /// @name Binding
    /// Joins a value to the form, for printing.
    /// @{
    NumberSequenceBoundOutputForm_float operator()(vec2 const &value) const;
    NumberSequenceBoundOutputForm_float operator()(vec3 const &value) const;
    NumberSequenceBoundOutputForm_float operator()(vec4 const &value) const;
    /// @}

    /// @name Current form
    /// A form that all parts of a program can use. It is borrowed as long as it is the current one; null sets the
    /// default again.
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
    /// Copies the layout of rows and numbers from any form.
    using NumberSequenceOutputForm::operator=;

    /// @name Binding
    /// Joins a value to the form, for printing.
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
    /// Copies the layout of rows and numbers from any form.
    using NumberSequenceOutputForm::operator=;

    /// @name Binding
    /// Joins a value to the form, for printing.
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

/// Form of quaternions. The vector part stands between two texts of its own: [(x, y, z), w].
class QUILLMARSH_API QuaternionOutputForm : public NumberSequenceOutputForm
{
public:
    ~QuaternionOutputForm() override;
    /// Copies the layout of rows and numbers from any form.
    using NumberSequenceOutputForm::operator=;

    bool GetNumberProlog(unsigned int index, string &text) const override;
    bool GetNumberEpilog(unsigned int index, string &text) const override;

    /// @name Prolog of the axis
    /// Text in front of the vector part; "(" at first.
    /// @{
    string const &GetAxisProlog() const { return axisProlog_; }
    void SetAxisProlog(string const &text) { axisProlog_ = text; }
    /// @}

    /// @name Epilog of the axis
    /// Text behind the vector part; ")" at first.
    /// @{
    string const &GetAxisEpilog() const { return axisEpilog_; }
    void SetAxisEpilog(string const &text) { axisEpilog_ = text; }
    /// @}

    /// Joins the quaternion to the form, for printing.
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
