// Directory of its own for a test that writes files.
#ifndef QUILLMARSH_TESTS_SUPPORT_SCRATCH_DIRECTORY_H
#define QUILLMARSH_TESTS_SUPPORT_SCRATCH_DIRECTORY_H

#include <quillmarsh/platform/types.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

namespace quillmarsh::tests
{

/// A name with the system's separators.
inline string Preferred(std::filesystem::path name)
{
    return name.make_preferred().string();
}

/// Empty directory under the system's one for temporary files; goes with all that is in it at the end of the scope.
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
    /// Full name of something in the directory.
    string operator/(string const &name) const { return Preferred(path_ / name); }

    /// Writes a file and gives its full name.
    string Write(string const &name, string const &text) const
    {
        string const full = *this / name;
        std::ofstream(full, std::ios::binary) << text;
        return full;
    }

private:
    std::filesystem::path path_;
};

/// All of a file; empty when it is not there.
inline string ReadFile(std::filesystem::path const &name)
{
    std::ifstream file(name, std::ios::binary);
    return string(std::istreambuf_iterator<char>(file), {});
}

} // namespace quillmarsh::tests

#endif
