#include "ui/qt/FolderLock.h"

#ifdef Q_OS_WIN
#include <qt_windows.h>
#else
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QFile>
#endif

namespace mw {

#ifdef Q_OS_WIN

namespace {

HANDLE Held = INVALID_HANDLE_VALUE;

} // namespace

// A file that nobody else can open while it is open here, and that goes with its handle.
bool LockFolder(const QString& folder) {
    const QString file = folder + "/quillmere.lock";
    Held = CreateFileW(reinterpret_cast<const wchar_t*>(file.utf16()), GENERIC_WRITE, 0, nullptr,
                       CREATE_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    return Held != INVALID_HANDLE_VALUE || GetLastError() != ERROR_SHARING_VIOLATION;
}

void UnlockFolder() {
    if (Held != INVALID_HANDLE_VALUE)
        CloseHandle(Held);
    Held = INVALID_HANDLE_VALUE;
}

#else

namespace {

int Held = -1;

} // namespace

// The folder itself is locked, by a descriptor that stays open: no file is needed, and the system
// gives the lock back when the program is gone.
bool LockFolder(const QString& folder) {
    Held = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    return Held < 0 || ::flock(Held, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

void UnlockFolder() {
    if (Held >= 0)
        ::close(Held);
    Held = -1;
}

#endif

} // namespace mw
