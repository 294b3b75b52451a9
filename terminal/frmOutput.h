// The output window: the game's text, the copy that is shown while scrolled back, the scroll bar,
// and the socket with its timers.
//
// Keys go to the frmOutput handlers of automation/CommandLine.h, the socket's events to
// net/Connection.h, the scroll bar to terminal/Output.h.
#pragma once

#include <QScrollBar>
#include <QSplitter>
#include <QTimer>
#include <QWidget>

class QKeyEvent;

namespace mw {

class Announcer;
class GameSocket;
class OutputView;

class frmOutput : public QWidget {
    Q_OBJECT

public:
    explicit frmOutput(QWidget* parent = nullptr);
    ~frmOutput() override;

    OutputView* rtfOutPut;
    OutputView* rtfScroll; // above rtfOutPut, while scrolled back
    QScrollBar* vslRTF;
    GameSocket* wskTCP;
    QTimer tmrConnect{this};
    QTimer tmrLog{this};

    void ShowScrollBack();
    void HideScrollBack();

    // What the bar is to be at the next frame. Moving it at every append of a flood would cost more
    // than the text itself.
    struct BarState {
        int Maximum = 0; // the value, too
        int SmallChange = 1;
        int LargeChange = 10;

        bool operator==(const BarState&) const = default;
    };
    void MoveBarLater(const BarState& state);
    void MoveBarNow(); // if it waits
    BarState Bar;      // as it was asked for last
    bool BarWaits = false;

    // Page Up, Page Down and End move vslRTF; true when the key was one of them.
    bool ScrollKey(const QKeyEvent& event);

    bool Hooked = false; // OutputWindowMessage is told of the box's edits and its end

signals:
    // Tab was pressed, or Shift and Tab. A window within another would keep the focus.
    void tabKey(bool next);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void closeEvent(QCloseEvent* event) override;

private:
    OutputView* MakeBox(const char* name, const QString& accessibleName);
    void WireSocket();
    void WireTimers();
    void ScrollBarMoved();
    void PlaceCopy();
    void ScrollBy(int change);
    bool KeyDown(QKeyEvent* event);

    QSplitter* Boxes;
    Announcer* NewText; // to screen readers
    QTimer BarFrame{this};
};

} // namespace mw
