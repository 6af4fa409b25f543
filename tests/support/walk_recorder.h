// A walker that records the calls of its hooks.
#ifndef QUILLMARSH_TESTS_SUPPORT_WALK_RECORDER_H
#define QUILLMARSH_TESTS_SUPPORT_WALK_RECORDER_H

#include <quillmarsh/basetools/filesystem.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace quillmarsh::tests
{

/// Records level, index, path below the root with "/" between its parts, and name.
class WalkRecorder : public file_system::FileSystemWalker
{
public:
    explicit WalkRecorder(string const &root) : root_(root) {}

    /// Walks, and returns the record, with ";" after each entry. A failed walk adds "-" at the end.
    string Record()
    {
        lines_.clear();
        bool const succeeds = Walk(root_);
        return lines_ + (succeeds ? "" : "-");
    }

    string cancelAt, refused;

private:
    void Add(string const &line) { lines_ += line + ";"; }

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
        Add("begin");
        if (cancelAt == "begin")
            CancelWalk();
    }
    void OnEndWalk() override { Add("end"); }
    void OnFile(unsigned int level, unsigned int index, string const &path, string const &name) override
    {
        Add("file " + Describe(level, index, path, name));
    }
    bool OnDirectory(unsigned int level, unsigned int index, string const &path, string const &name) override
    {
        Add("directory " + Describe(level, index, path, name));
        return name != refused;
    }

    string root_, lines_;
};

} // namespace quillmarsh::tests

#endif
