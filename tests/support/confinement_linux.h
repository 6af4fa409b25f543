// Keeps a test that does anything at random away from the files of the machine.
#ifndef QUILLMARSH_TESTS_SUPPORT_CONFINEMENT_LINUX_H
#define QUILLMARSH_TESTS_SUPPORT_CONFINEMENT_LINUX_H

#include <string>
#include <vector>

#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace quillmarsh::tests
{

/// From now on, the process and its children can read files only below `readable`, and change them only below
/// `writable`; names that do not exist do not count. Returns false when the kernel cannot do that.
inline bool ConfineFiles(std::vector<std::string> const &readable, std::vector<std::string> const &writable)
{
    // The version of the kernel's interface from which truncation is a right of its own.
    constexpr long truncateVersion = 3;
    long const version = syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    if (version < 1)
        return false;
    constexpr __u64 reading = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_READ_DIR;
    __u64 writing = LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_REMOVE_DIR |
                    LANDLOCK_ACCESS_FS_MAKE_REG | LANDLOCK_ACCESS_FS_MAKE_DIR | LANDLOCK_ACCESS_FS_MAKE_SYM;
#if defined(LANDLOCK_ACCESS_FS_TRUNCATE)
    if (version >= truncateVersion)
        writing |= LANDLOCK_ACCESS_FS_TRUNCATE;
#else
    static_cast<void>(truncateVersion);
#endif
    landlock_ruleset_attr rules = {};
    rules.handled_access_fs = reading | writing;
    int const ruleset = static_cast<int>(syscall(SYS_landlock_create_ruleset, &rules, sizeof rules, 0));
    auto const allow = [ruleset](std::string const &directory, __u64 access)
    {
        landlock_path_beneath_attr rule = {};
        rule.allowed_access = access;
        rule.parent_fd = open(directory.c_str(), O_PATH | O_CLOEXEC);
        bool const isAllowed =
            rule.parent_fd < 0 || syscall(SYS_landlock_add_rule, ruleset, LANDLOCK_RULE_PATH_BENEATH, &rule, 0) == 0;
        close(rule.parent_fd);
        return isAllowed;
    };
    bool isConfined = ruleset >= 0;
    for (std::string const &directory : readable)
        isConfined = isConfined && allow(directory, reading);
    for (std::string const &directory : writable)
        isConfined = isConfined && allow(directory, reading | writing);
    isConfined = isConfined && prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
                 syscall(SYS_landlock_restrict_self, ruleset, 0) == 0;
    close(ruleset);
    return isConfined;
}

} // namespace quillmarsh::tests

#endif
