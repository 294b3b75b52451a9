// Calls in a process of their own, which may give up its rights or be killed without harm to the
// tests.
#pragma once

#include <csignal>
#include <cstdint>
#include <linux/capability.h>
#include <map>
#include <string>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

// What call returns (0 to 255) in a process that has no rights but those of its user: for root too
// a closed file is closed. Negative when the process is ended by a signal, by one after 20 seconds.
template <typename Call> int WithoutRights(Call call) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::alarm(20);
        __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
        __user_cap_data_struct none[2]{};
        ::syscall(SYS_capset, &header, none);
        ::_exit(call());
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

enum class Moment { Before, Behind };

// Does work in a child process. look is told each call of the system, before it and behind it, and
// answers whether the child is to be killed there, exactly. False when work was done to its end.
template <typename Work, typename Look> bool KilledWhen(Work work, Look look) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        ::raise(SIGSTOP);
        work();
        ::_exit(0);
    }
    int status = 0;
    std::uint64_t number = 0;
    ::waitpid(child, &status, 0);
    ::ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    while (WIFSTOPPED(status)) {
        __ptrace_syscall_info info{};
        if (WSTOPSIG(status) == (SIGTRAP | 0x80))
            ::ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof info, &info);
        const bool isBefore = info.op == PTRACE_SYSCALL_INFO_ENTRY;
        if (isBefore)
            number = info.entry.nr;
        if (isBefore || info.op == PTRACE_SYSCALL_INFO_EXIT) {
            if (look(number, isBefore ? Moment::Before : Moment::Behind)) {
                ::kill(child, SIGKILL);
                ::waitpid(child, &status, 0);
                return true;
            }
        }
        ::ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
        ::waitpid(child, &status, 0);
    }
    return false;
}

// What a call of the system does to files; empty for one that changes none.
inline std::string ChangeBy(std::uint64_t number) {
    static const std::map<std::uint64_t, std::string> changes = {
        {SYS_openat, "open"},        {SYS_close, "close"},         {SYS_write, "write"},
        {SYS_pwrite64, "write"},     {SYS_writev, "write"},        {SYS_ftruncate, "cut"},
        {SYS_fallocate, "lengthen"}, {SYS_fsync, "sync"},          {SYS_fdatasync, "sync"},
        {SYS_renameat, "rename"},    {SYS_renameat2, "rename"},    {SYS_unlinkat, "remove"},
        {SYS_linkat, "link"},        {SYS_mkdirat, "make folder"}, {SYS_fchmod, "permit"},
        {SYS_fchmodat, "permit"},
#ifdef SYS_rename // not every processor has the older ones
        {SYS_open, "open"},          {SYS_creat, "open"},          {SYS_rename, "rename"},
        {SYS_unlink, "remove"},      {SYS_link, "link"},           {SYS_mkdir, "make folder"},
        {SYS_chmod, "permit"},
#endif
    };
    const auto found = changes.find(number);
    return found == changes.end() ? "" : found->second;
}

// Does work in a child process that is killed before or behind its call-th call that changes files.
// False when work was done without coming to that call.
template <typename Work> bool KilledAt(int call, Moment moment, Work work) {
    int seen = 0;
    return KilledWhen(work, [&](std::uint64_t number, Moment where) {
        if (ChangeBy(number).empty())
            return false;
        seen += where == Moment::Before ? 1 : 0;
        return seen == call && where == moment;
    });
}

// The changes of files that work comes to, done in a child process.
template <typename Work> std::vector<std::string> ChangesBy(Work work) {
    std::vector<std::string> changes;
    KilledWhen(work, [&changes](std::uint64_t number, Moment where) {
        if (where == Moment::Before && !ChangeBy(number).empty())
            changes.push_back(ChangeBy(number));
        return false;
    });
    return changes;
}
