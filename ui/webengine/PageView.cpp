// The page view by Qt WebEngine. Pages come from the web and stay there: no local files, no
// downloads, no other windows, no permissions, few messages, and nothing is kept on the disk.
#include "ui/qt/PageView.h"

#include "ui/qt/ShownText.h"

#include <QHostAddress>
#include <QRegularExpression>
#include <QWebEngineDownloadRequest>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <QWebEngineView>

namespace mw {
namespace {

// The client waits behind each message of a page. Counted anew when the player goes somewhere by
// the window's own controls.
constexpr int kMostMessages = 3;
constexpr int kLongestMessage = 1000; // characters

bool IsOfTheWeb(const QUrl& address) {
    return address.scheme() == "http" || address.scheme() == "https";
}

// A host that ends in a number or stands in brackets has to be an IP address, of no zone (URL
// Standard, 3.5). To any other the engine doesn't go, and tells nothing of it.
bool HasHost(const QUrl& address) {
    static const QRegularExpression number("(^|\\.)([0-9]+|0x[0-9a-f]*)\\.?$");
    QString host = address.host();
    if (!number.match(host).hasMatch() && !address.authority().contains('['))
        return !host.isEmpty();
    if (host.endsWith('.'))
        host.chop(1);
    const QHostAddress ip(host);
    return !ip.isNull() && ip.scopeId().isEmpty();
}

class Page : public QWebEnginePage {
public:
    using QWebEnginePage::QWebEnginePage;

    void PlayerGoes() { MessagesLeft = kMostMessages; }

    // The player has gone to an address, and neither a page has begun to load nor has it turned out
    // that none will.
    bool IsAwaited = false;

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
    void javaScriptAlert(const QUrl& origin, const QString& text) override {
        if (MayShowMessage())
            QWebEnginePage::javaScriptAlert(origin, ShownText(text.left(kLongestMessage)));
    }
    bool javaScriptConfirm(const QUrl& origin, const QString& text) override {
        const bool isYes = MayShowMessage() && QWebEnginePage::javaScriptConfirm(
                                                   origin, ShownText(text.left(kLongestMessage)));
        if (!isYes) // a page that is to be left asks so too, and then stays
            IsAwaited = false;
        return isYes;
    }
    bool javaScriptPrompt(const QUrl& origin, const QString& text, const QString& given,
                          QString* answer) override {
        return MayShowMessage() && QWebEnginePage::javaScriptPrompt(
                                       origin, ShownTextInLines(text.left(kLongestMessage)),
                                       given.left(kLongestMessage), answer);
    }

private:
    bool MayShowMessage() {
        if (MessagesLeft == 0)
            return false;
        --MessagesLeft;
        return true;
    }

    int MessagesLeft = kMostMessages;
};

class WebEngineView : public QWebEngineView, public PageView {
public:
    explicit WebEngineView(QWidget* parent)
        : QWebEngineView(parent), Profile(new QWebEngineProfile(this)), // off the record
          Shown(new Page(Profile, this)) {
        QWebEngineSettings* const settings = Shown->settings();
        settings->setAttribute(QWebEngineSettings::LocalContentCanAccessFileUrls, false);
        settings->setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, false);
        settings->setAttribute(QWebEngineSettings::PluginsEnabled, false);
        settings->setAttribute(QWebEngineSettings::FullScreenSupportEnabled, false);
        setPage(Shown);
        setContextMenuPolicy(Qt::NoContextMenu);
        connect(Shown, &QWebEnginePage::featurePermissionRequested, Shown,
                [this](const QUrl& origin, QWebEnginePage::Feature feature) {
                    Shown->setFeaturePermission(origin, feature,
                                                QWebEnginePage::PermissionDeniedByUser);
                });
        connect(Profile, &QWebEngineProfile::downloadRequested, this,
                [](QWebEngineDownloadRequest* request) { request->cancel(); });
        connect(Shown, &QWebEnginePage::loadStarted, this, [this] {
            IsLoading = true;
            Shown->IsAwaited = false;
        });
        connect(Shown, &QWebEnginePage::loadFinished, this, [this] {
            IsLoading = false;
            Tell();
        });
        // A place on the page that is shown is reached without loading.
        connect(Shown, &QWebEnginePage::urlChanged, this, [this] { Shown->IsAwaited = false; });
        connect(Shown, &QWebEnginePage::titleChanged, this, [this] { Tell(); });
    }

    // The page goes before its profile.
    ~WebEngineView() override { delete Shown; }

    QWidget* Widget() override { return this; }
    void Navigate(const QUrl& address) override {
        if (!address.isValid() || !IsOfTheWeb(address) || !HasHost(address))
            return;
        Shown->PlayerGoes();
        Shown->IsAwaited = true; // told at once, for whoever watches
        load(address);
    }
    void GoBack() override {
        Shown->PlayerGoes();
        back();
    }
    void GoForward() override {
        Shown->PlayerGoes();
        forward();
    }
    void Stop() override {
        Shown->IsAwaited = false; // what has not begun ends without a word
        stop();
    }
    void Refresh() override {
        Shown->PlayerGoes();
        reload();
    }
    bool Busy() const override { return Shown->IsAwaited || IsLoading; }
    QString LocationName() const override { return title(); }
    QUrl LocationURL() const override { return url(); }

private:
    void Tell() {
        if (NavigateComplete)
            NavigateComplete();
    }

    QWebEngineProfile* Profile;
    Page* Shown;
    bool IsLoading = false;
};

} // namespace
} // namespace mw

extern "C" Q_DECL_EXPORT mw::PageView* quillmere_make_page_view(QWidget* parent) {
    return new mw::WebEngineView(parent);
}
