#include <quillmarsh/basetools/diagnostics.h>

#include <quillmarsh/basetools/syncprimitives.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/platform/dialogs.h>

#include <cstdlib>
#include <cxxabi.h>
#include <ostream>

namespace quillmarsh
{
namespace
{

using platform::DialogRequest;
using platform::eDialogAnswer;
using platform::eDialogButtons;

struct TypeSize
{
    char const *name;
    std::size_t size;
    std::size_t expected;
};

constexpr TypeSize s_typeSizes[] = {
    {"bool", sizeof(bool), 1},
    {"char", sizeof(char), 1},
    {"unsigned char", sizeof(unsigned char), 1},
    {"short", sizeof(short), 2},
    {"unsigned short", sizeof(unsigned short), 2},
    {"int", sizeof(int), 4},
    {"unsigned int", sizeof(unsigned int), 4},
    {"long", sizeof(long), 4},
    {"unsigned long", sizeof(unsigned long), 4},
    {"float", sizeof(float), 4},
    {"double", sizeof(double), 8},
};

/// Removes every `prefix` at the beginning of a name, and directly behind a "<", "," or blank within it.
string WithoutNamespace(string name, string const &prefix)
{
    for (std::size_t at = name.find(prefix); at != string::npos; at = name.find(prefix, at))
    {
        bool const isOwnNamespace = at == 0 || string("<, (").find(name[at - 1]) != string::npos;
        if (isOwnNamespace)
            name.erase(at, prefix.size());
        else
            at += prefix.size();
    }
    return name;
}

} // namespace

string GetTypeName(std::type_info const &type)
{
    int status = 0;
    std::unique_ptr<char, decltype(&std::free)> const demangled(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), &std::free);
    string name = demangled ? demangled.get() : type.name();
    // Only one implementation of the standard library has its strings in an inline namespace.
    if (name == "std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >")
        return "string";
    return WithoutNamespace(std::move(name), "quillmarsh::");
}

string FormatClassName(string const &typeName)
{
    for (string const prefix : {"struct ", "class "})
    {
        if (typeName.size() > prefix.size() && typeName.compare(0, prefix.size(), prefix) == 0)
            return typeName.substr(prefix.size());
    }
    return typeName;
}

string FormatObjectName(string const &typeName, void const *object)
{
    string address;
    ToString(address, const_cast<void *>(object));
    return FormatClassName(typeName) + "@" + address;
}

string FormatSourceCodeLocation(string const &file, unsigned int line, bool forceKernelName)
{
    string location = file + "(" + std::to_string(line) + ")";
    if (forceKernelName)
        ForceWinKernelName(location);
    return location;
}

bool ShowDialogAbortRetryIgnore(bool &ignoreAlways, unsigned int defaultButton, string const &title,
                                string const &message, string const &file, unsigned int line)
{
    if (ignoreAlways)
        return false;

    DialogRequest request;
    request.buttons = eDialogButtons::e_abortRetryIgnore;
    request.defaultAnswer = defaultButton == 2   ? eDialogAnswer::e_retry
                            : defaultButton == 3 ? eDialogAnswer::e_ignore
                                                 : eDialogAnswer::e_abort;
    request.title = title;
    request.text = "@ " + FormatSourceCodeLocation(file, line) + "\n! " + message;

    eDialogAnswer const answer = platform::PresentDialog(request);
    ignoreAlways = answer != eDialogAnswer::e_abort && answer != eDialogAnswer::e_retry;
    return answer == eDialogAnswer::e_abort;
}

bool ShowDialogCancelOk(unsigned int defaultButton, string const &title, string const &text)
{
    eDialogAnswer const defaultAnswer = defaultButton == 2 ? eDialogAnswer::e_cancel : eDialogAnswer::e_ok;
    return platform::PresentDialog({eDialogButtons::e_cancelOk, defaultAnswer, title, text}) == eDialogAnswer::e_cancel;
}

void ShowDialogOk(string const &title, string const &text)
{
    platform::PresentDialog({eDialogButtons::e_ok, eDialogAnswer::e_ok, title, text});
}

bool CheckBuiltInTypeSizes(ostream &out)
{
    bool allFit = true;
    for (TypeSize const &type : s_typeSizes)
    {
        if (type.size == type.expected)
            continue;
        allFit = false;
        out << type.name << " has size " << type.size << " byte(s). Expected " << type.expected << " byte(s)."
            << std::endl;
    }
    return allFit;
}

bool AssertionSite::Report(char const *title, string const &message)
{
    bool ignoreAlways = ignoreAlways_.load(std::memory_order_relaxed);
    bool const wantsTrap = ShowDialogAbortRetryIgnore(ignoreAlways, 1, title, message, file_, line_);
    ignoreAlways_.store(ignoreAlways, std::memory_order_relaxed);
    return wantsTrap;
}

} // namespace quillmarsh
