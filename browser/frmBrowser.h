// The browser window. The page view is loaded with the plug-in when the window first opens.
#pragma once

#include "ui/qt/PageView.h"

#include <QComboBox>
#include <QLabel>
#include <QMenuBar>
#include <QTimer>
#include <QToolBar>
#include <QWidget>

namespace mw {

class frmBrowser : public QWidget {
    Q_OBJECT

public:
    // view is a page view without a parent.
    explicit frmBrowser(PageView* view);
    ~frmBrowser() override;

    QMenuBar* Menu;
    QToolBar* tbrMain;
    QComboBox* cboAdd;
    PageView* wbrScreen;
    QLabel* lblWork;
    QTimer timNav;

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void AddButton(const char* key, QStyle::StandardPixmap icon, const QString& toolTip);
};

// The plug-in's page view, or nullptr when it can't be had.
PageView* LoadPageView();

} // namespace mw
