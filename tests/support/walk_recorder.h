// Walker that keeps a record of its hooks.
#ifndef QUILLMARSH_TESTS_SUPPORT_WALK_RECORDER_H
#define QUILLMARSH_TESTS_SUPPORT_WALK_RECORDER_H

#include <quillmarsh/basetools/filesystem.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace quillmarsh::tests
{

/// Writes down what it is told: level, index, path below the root with "/" between its pieces, and name.
class WalkRecorder : public file_system::FileSystemWalker
{
public:
    explicit WalkRecorder(string const &root) : root_(root) {}

    std::vector<string> lines;
    string cancelAt;
    string refused;

private:
    string Describe(unsigned int level, unsigned int index, string const &path, string const &name)
    {
        if (name == cancelAt)
            CancelWalk();
        EXPECT_EQ(path.substr(0, root_.size()), root_);
        string below = path.substr(root_.size());
        std::replace(below.begin(), below.end(), file_system::GetPathSeparator(), '/');
        return std::to_string(level) + '.' + std::to_string(index) + ' ' + below + ' ' + name;
    }

    void OnBeginWalk(string const &root) override
    {
        EXPECT_EQ(root, root_);
        lines.push_back("begin");
        if (cancelAt == "begin")
            CancelWalk();
    }
    void OnEndWalk() override { lines.push_back("end"); }
    void OnFile(unsigned int level, unsigned int index, string const &path, string const &name) override
    {
        lines.push_back("file " + Describe(level, index, path, name));
    }
    bool OnDirectory(unsigned int level, unsigned int index, string const &path, string const &name) override
    {
        lines.push_back("directory " + Describe(level, index, path, name));
        return name != refused;
    }

    string root_;
};

} // namespace quillmarsh::tests

#endif
