// The command line's window: one editable box that drops down the history.
//
// Keys go to the handlers of automation/CommandLine.h first. The rules live there and in
// automation/CommandBox.h; the box only shows what they set.
#pragma once

#include <QComboBox>
#include <QKeyEvent>
#include <QWidget>

namespace mw {

// True when the menus are to have the key: Alt and a key without a macro. Raises nothing.
bool IsMenuKey(const QKeyEvent& event);

class frmInput : public QWidget {
    Q_OBJECT

public:
    explicit frmInput(QWidget* parent = nullptr);

signals:
    // Page Up or Page Down was pressed: the output's affair.
    void pageKey(QKeyEvent* event);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool KeyDown(QKeyEvent* event);
    bool KeyPress(QKeyEvent* event);
    static void KeyInList(const QKeyEvent& event);

    QComboBox* cboInput;
};

} // namespace mw
