// The window of one download: what is fetched, how far it is, and a way to stop it.
#pragma once

#include <cstdint>

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QWidget>

namespace mw {

class frmDownload : public QWidget {
    Q_OBJECT

public:
    frmDownload(std::int32_t download, std::int16_t slot, const QString& fileName);

    QLabel* lblSlot; // the slot's number; not shown
    QProgressBar* ProgressBar;
    QPushButton* cmdCancel;

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void PlaceBySlot(std::int16_t slot);

    std::int32_t Download;
};

} // namespace mw
