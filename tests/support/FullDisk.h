// A disk that is full.
#pragma once

#include <csignal>
#include <sys/resource.h>

// While it lives, no file of this process grows beyond so many bytes.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) : Handler(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &Before);
        const rlimit full{bytes, Before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &full);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk() {
        ::setrlimit(RLIMIT_FSIZE, &Before);
        std::signal(SIGXFSZ, Handler);
    }

private:
    void (*Handler)(int);
    rlimit Before{};
};
