#include "source/gui/robot/pathparser.h"

#include "source/gui/robot/latin1.h"

#include <quillmarsh/basetools/exception.h>

#include <cstring>

namespace quillmarsh::gui::robot_parts
{

namespace
{

constexpr char s_escape = '\\';
constexpr char s_anyText = '*';
constexpr char s_anyCharacter = '?';
constexpr char s_szSpecial[] = "'\"*?\\";
constexpr char s_szBlanks[] = " \t";
constexpr std::size_t s_maxIndexDigits = 9;

/// Reads a path from its start to its end.
class PathParser
{
public:
    explicit PathParser(string const &text) : text_(text) {}

    std::vector<ComponentPath::Step> Parse()
    {
        if (!IsUtf8(text_))
            QUILLMARSH_THROW(GUIException, "The path " + text_ + " is no UTF-8.");
        std::vector<ComponentPath::Step> steps;
        bool isDeep = !ReadSeparator(true);
        do
        {
            steps.push_back(ParseStep());
            steps.back().isDeep = steps.size() == 1 ? isDeep || isDeepSeparator_ : isDeepSeparator_;
        } while (ReadSeparator(false));
        if (at_ < text_.size())
            Fail("a \"/\" is expected");
        return steps;
    }

private:
    [[noreturn]] void Fail(string const &mistake) const
    {
        QUILLMARSH_THROW(GUIException, "The path " + text_ + " is wrong at character " +
                                           MakeString(static_cast<unsigned int>(at_ + 1)) + ": " + mistake + ".");
    }

    char Peek() const { return at_ < text_.size() ? text_[at_] : '\0'; }
    void SkipBlanks()
    {
        while (at_ < text_.size() && std::strchr(s_szBlanks, text_[at_]) != nullptr)
            ++at_;
    }
    bool Eat(char wanted)
    {
        bool const isThere = at_ < text_.size() && text_[at_] == wanted;
        at_ += isThere ? 1 : 0;
        return isThere;
    }

    /// Reads "/" or "//". A path may begin without one.
    bool ReadSeparator(bool isFirst)
    {
        SkipBlanks();
        bool const isThere = Eat('/');
        isDeepSeparator_ = isThere && Eat('/');
        if (isThere || !isFirst)
            SkipBlanks();
        return isThere;
    }

    ComponentPath::Step ParseStep()
    {
        ComponentPath::Step step;
        std::size_t const begin = at_;
        step.className = ReadClassName();
        std::size_t const endOfName = at_;
        SkipBlanks();
        ReadCaption(step);
        if (begin == at_ || (step.className.empty() && !step.hasCaption && endOfName == begin))
            Fail("a class or a caption in quotes is expected");
        std::size_t end = step.hasCaption ? at_ : endOfName;
        SkipBlanks();
        if (Peek() == '[')
        {
            ReadIndex(step);
            end = at_;
        }
        step.text = text_.substr(begin, end - begin);
        if (step.className == "*")
            step.className.clear();
        return step;
    }

    /// Reads a name with its namespaces and template arguments.
    string ReadClassName()
    {
        std::size_t const begin = at_;
        int depth = 0;
        for (; at_ < text_.size(); ++at_)
        {
            char const c = text_[at_];
            if (depth == 0 && std::strchr("/'\"[] \t", c) != nullptr)
                break;
            depth += c == '<' ? 1 : c == '>' ? -1 : 0;
        }
        return text_.substr(begin, at_ - begin);
    }

    void ReadCaption(ComponentPath::Step &step)
    {
        char const quote = Peek();
        if (quote != '\'' && quote != '"')
            return;
        std::size_t const begin = at_++;
        for (; Peek() != quote; ++at_)
        {
            if (Peek() == s_escape && at_ + 1 < text_.size())
                step.caption += text_[at_++];
            if (at_ >= text_.size())
            {
                at_ = begin;
                Fail("the quote has no end");
            }
            // Escapes and wildcards stay.
            step.caption += text_[at_];
        }
        ++at_;
        step.hasCaption = true;
    }

    void ReadIndex(ComponentPath::Step &step)
    {
        ++at_;
        SkipBlanks();
        std::size_t const begin = at_;
        while (Peek() >= '0' && Peek() <= '9')
            ++at_;
        string const digits = text_.substr(begin, at_ - begin);
        SkipBlanks();
        if (digits.empty() || digits.size() > s_maxIndexDigits || !Eat(']'))
            Fail("an index from 0 on and a \"]\" are expected");
        step.hasIndex = ToValue(digits, step.index);
    }

    string const &text_;
    std::size_t at_ = 0;
    bool isDeepSeparator_ = false;
};

/// Returns the index behind a character of several bytes.
std::size_t SkipCharacter(string const &text, std::size_t at)
{
    constexpr unsigned int mask = 0xc0, continuation = 0x80;
    do
        ++at;
    while (at < text.size() && (static_cast<unsigned char>(text[at]) & mask) == continuation);
    return at;
}

} // namespace

std::vector<ComponentPath::Step> ParsePath(string const &text)
{
    return PathParser(text).Parse();
}

bool IsSpecial(char c)
{
    return c != '\0' && std::strchr(s_szSpecial, c) != nullptr;
}

bool MatchesPattern(string const &caption, string const &pattern)
{
    std::size_t inCaption = 0;
    std::size_t inPattern = 0;
    // The last "*", and where the caption goes on behind what it stands for.
    std::size_t star = string::npos;
    std::size_t behindStar = 0;
    while (inCaption < caption.size())
    {
        bool const isEscaped = inPattern + 1 < pattern.size() && pattern[inPattern] == s_escape;
        std::size_t const place = inPattern + (isEscaped ? 1 : 0);
        if (inPattern < pattern.size() && !isEscaped && pattern[inPattern] == s_anyText)
        {
            star = inPattern++;
            behindStar = inCaption;
        }
        else if (place < pattern.size() && !isEscaped && pattern[place] == s_anyCharacter)
        {
            inCaption = SkipCharacter(caption, inCaption);
            inPattern = place + 1;
        }
        else if (place < pattern.size() && pattern[place] == caption[inCaption])
        {
            ++inCaption;
            inPattern = place + 1;
        }
        else if (star != string::npos)
        {
            inPattern = star + 1;
            inCaption = behindStar = SkipCharacter(caption, behindStar);
        }
        else
            return false;
    }
    while (inPattern < pattern.size() && pattern[inPattern] == s_anyText)
        ++inPattern;
    return inPattern == pattern.size();
}

string StripPattern(string const &pattern)
{
    string text;
    for (std::size_t i = 0; i < pattern.size(); ++i)
    {
        if (pattern[i] == s_escape && i + 1 < pattern.size())
            ++i;
        else if (pattern[i] == s_anyText || pattern[i] == s_anyCharacter)
            continue;
        text += pattern[i];
    }
    return text;
}

} // namespace quillmarsh::gui::robot_parts
