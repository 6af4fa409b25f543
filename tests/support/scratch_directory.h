// A separate directory for a test that writes files.
#ifndef QUILLMARSH_TESTS_SUPPORT_SCRATCH_DIRECTORY_H
#define QUILLMARSH_TESTS_SUPPORT_SCRATCH_DIRECTORY_H

#include <quillmarsh/platform/types.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

namespace quillmarsh::tests
{

/// Returns a name with the system's separators.
inline string Preferred(std::filesystem::path name)
{
    return name.make_preferred().string();
}

/// An empty directory in the system's folder for temporary files. It is deleted with its content at the end of the
/// scope.
class ScratchDirectory : NoCopy
{
public:
    ScratchDirectory()
    {
        do
            path_ =
                std::filesystem::temp_directory_path() / ("quillmarsh-test-" + std::to_string(std::random_device()()));
        while (!std::filesystem::create_directory(path_));
    }

    ~ScratchDirectory()
    {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }

    std::filesystem::path const &GetPath() const { return path_; }
    /// Returns the full name of an entry in the directory.
    string operator/(string const &name) const { return Preferred(path_ / name); }

    std::ptrdiff_t CountEntries() const { return std::distance(std::filesystem::directory_iterator(path_), {}); }

    /// Writes a file and returns its full name.
    string Write(string const &name, string const &text) const
    {
        string const full = *this / name;
        std::ofstream(full, std::ios::binary) << text;
        return full;
    }

private:
    std::filesystem::path path_;
};

inline bool Contains(string const &text, string const &part)
{
    return text.find(part) != string::npos;
}

/// Returns the content of a file; empty when it does not exist.
inline string ReadFile(std::filesystem::path const &name)
{
    std::ifstream file(name, std::ios::binary);
    return string(std::istreambuf_iterator<char>(file), {});
}

} // namespace quillmarsh::tests

#endif
