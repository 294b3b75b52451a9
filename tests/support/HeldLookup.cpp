// Stands before the system's looking up of host names, linked into a test or loaded into the client
// before its libraries. A look-up of "held.test" begins by making the file that
// QUILLMERE_HELD_LOOKUP names, and lasts until that is removed; a minute and a half at most, so
// that whoever waits for it fails and does not hang. No such host is found.
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <netdb.h>
#include <thread>
#include <unistd.h>

extern "C" int getaddrinfo(const char* host, const char* service, const addrinfo* hints,
                           addrinfo** found) {
    using Lookup = decltype(&getaddrinfo);
    if (host == nullptr || std::strcmp(host, "held.test") != 0)
        return reinterpret_cast<Lookup>(::dlsym(RTLD_NEXT, "getaddrinfo"))(host, service, hints,
                                                                           found);
    const char* const file = std::getenv("QUILLMERE_HELD_LOOKUP");
    ::close(::open(file, O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
    for (int i = 0; i < 9000 && ::access(file, F_OK) == 0; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    ::unlink(file);
    return EAI_NONAME;
}
