#include "ui/qt/FolderLock.h"

#ifdef Q_OS_WIN
#include <qt_windows.h>
#else
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>

#include <QFile>
#endif

namespace mw {

#ifdef Q_OS_WIN

// A file that nobody else can open while it is open here, and that goes with its handle.
bool LockFolder(const QString& folder) {
    const QString file = folder + "/quillmere.lock";
    const HANDLE handle =
        CreateFileW(reinterpret_cast<const wchar_t*>(file.utf16()), GENERIC_WRITE, 0, nullptr,
                    CREATE_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    return handle != INVALID_HANDLE_VALUE || GetLastError() != ERROR_SHARING_VIOLATION;
}

#else

// The folder itself is locked, by a descriptor that stays open: no file is needed, and the system
// gives the lock back when the program is gone.
bool LockFolder(const QString& folder) {
    const int descriptor =
        ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    return descriptor < 0 || ::flock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

#endif

} // namespace mw
