// Calls in a process of their own, which may give up its rights without harm to the tests.
#pragma once

#include <linux/capability.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

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
