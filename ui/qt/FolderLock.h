// One client at a time keeps its files in an application folder.
#pragma once

#include <QString>

namespace mw {

// Takes folder, which exists, for this program until it gives it back or ends, however it ends.
// False when another one has it. True too where the file system knows no locks.
bool LockFolder(const QString& folder);

// Gives back what was taken last.
void UnlockFolder();

} // namespace mw
