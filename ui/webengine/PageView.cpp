// The page view by Qt WebEngine. Pages come from the web and stay there: no local files, no
// downloads, no other windows, no permissions, and nothing is kept on the disk.
#include "ui/qt/PageView.h"

#include <QWebEngineDownloadRequest>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <QWebEngineView>

namespace mw {
namespace {

bool IsOfTheWeb(const QUrl& address) {
    return address.scheme() == "http" || address.scheme() == "https";
}

class Page : public QWebEnginePage {
public:
    using QWebEnginePage::QWebEnginePage;

protected:
    bool acceptNavigationRequest(const QUrl& address, NavigationType, bool) override {
        return IsOfTheWeb(address);
    }
    QWebEnginePage* createWindow(WebWindowType) override { return nullptr; }
    QStringList chooseFiles(FileSelectionMode, const QStringList&, const QStringList&) override {
        return {};
    }
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString&, int,
                                  const QString&) override {}
};

class WebEngineView : public QWebEngineView, public PageView {
public:
    explicit WebEngineView(QWidget* parent)
        : QWebEngineView(parent), Profile(new QWebEngineProfile(this)) { // off the record
        auto* const page = new Page(Profile, this);
        QWebEngineSettings* const settings = page->settings();
        settings->setAttribute(QWebEngineSettings::LocalContentCanAccessFileUrls, false);
        settings->setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, false);
        settings->setAttribute(QWebEngineSettings::PluginsEnabled, false);
        settings->setAttribute(QWebEngineSettings::FullScreenSupportEnabled, false);
        setPage(page);
        setContextMenuPolicy(Qt::NoContextMenu);
        connect(page, &QWebEnginePage::featurePermissionRequested, page,
                [page](const QUrl& origin, QWebEnginePage::Feature feature) {
                    page->setFeaturePermission(origin, feature,
                                               QWebEnginePage::PermissionDeniedByUser);
                });
        connect(Profile, &QWebEngineProfile::downloadRequested, this,
                [](QWebEngineDownloadRequest* request) { request->cancel(); });
        connect(page, &QWebEnginePage::loadStarted, this, [this] { IsLoading = true; });
        connect(page, &QWebEnginePage::loadFinished, this, [this] {
            IsLoading = false;
            Tell();
        });
        connect(page, &QWebEnginePage::titleChanged, this, [this] { Tell(); });
    }

    // The page goes before its profile.
    ~WebEngineView() override { delete page(); }

    QWidget* Widget() override { return this; }
    void Navigate(const QUrl& address) override {
        if (!address.isValid() || !IsOfTheWeb(address) || address.host().isEmpty())
            return;
        IsLoading = true; // told at once, for whoever watches
        load(address);
    }
    void GoBack() override { back(); }
    void GoForward() override { forward(); }
    void Stop() override { stop(); }
    void Refresh() override { reload(); }
    bool Busy() const override { return IsLoading; }
    QString LocationName() const override { return title(); }
    QUrl LocationURL() const override { return url(); }

private:
    void Tell() {
        if (NavigateComplete)
            NavigateComplete();
    }

    QWebEngineProfile* Profile;
    bool IsLoading = false;
};

} // namespace
} // namespace mw

extern "C" Q_DECL_EXPORT mw::PageView* quillmere_make_page_view(QWidget* parent) {
    return new mw::WebEngineView(parent);
}
