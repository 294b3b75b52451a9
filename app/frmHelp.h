// The manual in a window of its own, beside the game: one can read and play.
//
// The pages are those of docs/manual, built into the program. Links to the web open in the system's
// browser.
#pragma once

#include <QTextBrowser>
#include <QWidget>

namespace mw {

class frmHelp : public QWidget {
    Q_OBJECT

public:
    frmHelp();

    QTextBrowser* Pages;

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

// Shows the manual's first page, in the window that is open already if there is one.
void ShowHelp();

} // namespace mw
