// The dialogs of the main frame: while one is up it stands on top and the frame is locked.
//
// Every editor and chooser derives from it. It takes the lock when it loads and gives it back when
// it unloads, brings its window to the top of the window order both times, and remembers its size.
// Windows that are not the frame's, such as a download or the manual, stay free.
#pragma once

#include <QDialog>

namespace mw {

class LockedDialog : public QDialog {
    Q_OBJECT

public:
    // name is the form's: the size is kept under it. Deletes itself when closed.
    LockedDialog(const char* name, const QString& title, QWidget* frame);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
};

} // namespace mw
