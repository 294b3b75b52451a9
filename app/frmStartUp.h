// The splash window: what it is doing, in one line, while the client's files are loaded or saved.
//
// Its timers call app/StartUp.h, which writes the labels through ui/SplashControls.h. Closing it
// ends the program while nothing has been shown yet; while files are saved it can't be closed.
#pragma once

#include <QLabel>
#include <QTimer>
#include <QWidget>

namespace mw {

class frmStartUp : public QWidget {
    Q_OBJECT

public:
    frmStartUp();

    QLabel* rtbTitle;
    QLabel* lblLoading;
    QLabel* lblStatus;
    QLabel* lblDots;
    QLabel* lblUpdateText;
    QLabel* lblCurVersion;
    QLabel* lblYourVersion;
    QTimer timerLoad;
    QTimer timerFinished;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void LoadTick();
    void FinishedTick();
};

} // namespace mw
