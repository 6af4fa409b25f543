// Events and flags that processes share, even when one of them dies.
#include <quillmarsh/basetools/syncprimitives.h>

#include <gtest/gtest.h>

#include "source/platform/linux/namedobjectfile.h"

#include <csignal>
#include <functional>
#include <set>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillmarsh
{
namespace
{

string MakeName(string const &stem)
{
    return "quillmarsh-test-" + stem + std::to_string(getpid());
}

/// A process that does its work, reports that, and waits until it is killed.
class OtherProcess : NoCopy
{
public:
    explicit OtherProcess(std::function<void()> const &work)
    {
        int ends[2];
        EXPECT_EQ(pipe(ends), 0);
        child_ = fork();
        if (child_ == 0)
        {
            work();
            char const done = '.';
            if (write(ends[1], &done, 1) == 1)
                pause();
            _exit(1);
        }
        close(ends[1]);
        char done = 0;
        EXPECT_EQ(read(ends[0], &done, 1), 1);
        close(ends[0]);
    }

    ~OtherProcess() { Kill(); }

    void Kill()
    {
        if (child_ > 0 && kill(child_, SIGKILL) == 0)
            waitpid(std::exchange(child_, -1), nullptr, 0);
    }

private:
    pid_t child_;
};

TEST(NamedObjects, FlagIsHeldAgainstAnotherProcessAndFreeAfterItsCrash)
{
    string const name = MakeName("flag");
    OtherProcess other([&name] { EXPECT_TRUE((new SingleInstanceFlagSentry(name))->IsAcquired()); });
    EXPECT_FALSE(SingleInstanceFlagSentry(name).IsAcquired());
    EXPECT_TRUE(SingleInstanceFlagSentry("Global\\" + name).IsAcquired());
    other.Kill();
    EXPECT_TRUE(SingleInstanceFlagSentry(name).IsAcquired());
    EXPECT_NE(access(platform::MakeNamedObjectPath(name).c_str(), F_OK), 0);
}

TEST(NamedObjects, EventWakesAnotherProcess)
{
    string const name = MakeName("event");
    Event question(false, false, name + "q");
    Event answer(false, false, name + "a");
    pid_t const child = fork();
    if (child == 0)
    {
        Event theirQuestion(true, true, name + "q");
        Event theirAnswer(true, true, name + "a");
        for (int i = 0; i < 100; ++i)
        {
            theirQuestion.WaitInfinite();
            theirAnswer.Set();
        }
        _exit(0);
    }
    for (int i = 0; i < 100; ++i)
    {
        bool timedOut = false;
        question.Set();
        ASSERT_TRUE(answer.Wait(20000, timedOut));
        ASSERT_FALSE(timedOut);
    }
    waitpid(child, nullptr, 0);
}

TEST(NamedObjects, EventOfACrashedProcessLeavesNoState)
{
    string const name = MakeName("crash");
    bool timedOut = false;
    {
        OtherProcess other([&name] { new Event(true, true, name); });
        Event shared(false, false, name);
        EXPECT_TRUE(shared.Wait(0, timedOut) && !timedOut);
        other.Kill();
        EXPECT_TRUE(shared.Wait(0, timedOut) && !timedOut);
    }
    {
        OtherProcess other([&name] { new Event(true, true, name); });
        other.Kill();
        // The file of the dead process still exists.
        EXPECT_EQ(access(platform::MakeNamedObjectPath(name).c_str(), F_OK), 0);
    }
    Event fresh(false, true, name);
    EXPECT_TRUE(fresh.Wait(0, timedOut) && timedOut);
}

TEST(NamedObjects, PathsStayInTheirFolderAndApart)
{
    std::set<string> paths;
    string const longName(255, 'x');
    std::set<string> names = {"a", "A", "../a", "a/b", "a%2fb", "..", ".", "Global\\a", "Global\\../a"};
    names.insert({longName, longName + "y", longName + "z", "Global\\" + string(253, '/')});
    for (string const &name : names)
    {
        string const path = platform::MakeNamedObjectPath(name);
        std::size_t const slash = path.rfind('/');
        EXPECT_TRUE(path.starts_with("/dev/shm/quillmarsh-") || path.starts_with("/tmp/quillmarsh-")) << path;
        EXPECT_EQ(path.find("quillmarsh-"), slash + 1) << path;
        EXPECT_LE(path.size() - slash, 256u);
        EXPECT_TRUE(paths.insert(path).second) << name;
    }
    EXPECT_EQ(platform::MakeNamedObjectPath("Local\\a"), platform::MakeNamedObjectPath("a"));
    for (string const &name : {string(), string("Local\\"), string("a\\b"), string(261, 'a')})
        EXPECT_EQ(platform::MakeNamedObjectPath(name), "") << name;
}

} // namespace
} // namespace quillmarsh
