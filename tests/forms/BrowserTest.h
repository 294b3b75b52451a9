// Base of the browser window's tests: a web server in the test's process is the maker's site, and
// the window is opened by the frame's menu.
#pragma once

#include "browser/Browser.h"
#include "browser/frmBrowser.h"
#include "forms/FrameTest.h"
#include "forms/HttpServer.h"
#include "forms/Pictures.h"
#include "forms/WaitFor.h"
#include "forms/WebServer.h"

#include <algorithm>

#include <QDeadlineTimer>
#include <QMenu>

namespace forms {

// An answer with a page of that title.
inline std::string PageText(const std::string& title, const std::string& body = "",
                            const std::string& fields = "", const std::string& status = "200 OK") {
    const std::string page = "<!DOCTYPE html><html><head><title>" + title +
                             "</title><link rel=icon href=data:,></head><body>" + body +
                             "</body></html>";
    return "HTTP/1.1 " + status + "\r\nContent-Type: text/html; charset=utf-8\r\n" + fields +
           "Connection: close\r\nContent-Length: " + std::to_string(page.size()) + "\r\n\r\n" +
           page;
}

// A link as large as the page, so that a click anywhere follows it.
inline std::string LinkTo(const std::string& address, const std::string& more = "") {
    return "<a " + more + " href=\"" + address +
           "\" style='position:fixed;inset:0;background:#7cb'>go</a>";
}

inline std::string Script(const std::string& code) { return "<script>" + code + "</script>"; }

class BrowserTest : public FrameTest {
protected:
    BrowserTest() {
        mw::ResetBrowser();
        Web.Otherwise = Says(PageText("Not here", "", "", "404 Not Found"));
        Serve("/", "Home");
        Serve("/other", "Other page");
    }

    void Serve(const std::string& path, const std::string& title, const std::string& body = "",
               const std::string& fields = "") {
        Web.Answers[path] = Says(PageText(title, body, fields));
    }

    // As a player does, so that nothing of the window is left when the server goes.
    ~BrowserTest() override {
        if (Browser)
            Browser->close();
        LetEventsRun();
    }

    // A page that begins and never ends.
    void ServeWithoutEnd(const std::string& path) {
        Web.Answers[path] =
            SaysAndStalls("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: "
                          "100000\r\n\r\n<title>Half</title>the first half");
    }

    void OpenAtItsOwnPace() {
        Item("mnuMwWite")->trigger();
        Browser = Window<mw::frmBrowser>();
        ASSERT_NE(Browser, nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowActive(Browser));
    }

    // The window looks after its page more often than a player would notice.
    void Open() {
        constexpr int kQuickly = 10; // milliseconds
        OpenAtItsOwnPace();
        if (Browser) // what it showed may have closed it
            Browser->timNav.setInterval(kQuickly);
    }

    void OpenAtHome() {
        Open();
        ASSERT_TRUE(Ends("Home"));
    }

    // The label shows that name and the timer is at rest.
    bool Ends(const std::string& name) const {
        return WaitFor([&] { return !Browser->timNav.isActive() && Label() == name; });
    }

    bool Ends() const {
        return WaitFor([&] { return !Browser->timNav.isActive(); });
    }

    // The label grows.
    bool IsBusy() const {
        return WaitFor([&] { return Label().starts_with("Working...."); });
    }

    bool HasCaption(const std::string& name) const {
        return WaitFor([&] { return Caption() == name; });
    }

    std::string Label() const { return Browser->lblWork->text().toStdString(); }
    std::string Caption() const { return Browser->windowTitle().toStdString(); }
    std::string Box() const { return Browser->cboAdd->currentText().toStdString(); }

    // Where the page view says it is, and the name of what it shows there.
    std::string Location() const {
        return Browser->wbrScreen->LocationURL().toString().toStdString();
    }
    std::string PageName() const { return Browser->wbrScreen->LocationName().toStdString(); }

    std::vector<std::string> List() const {
        std::vector<std::string> entries;
        for (int i = 0; i < Browser->cboAdd->count(); ++i)
            entries.push_back(Browser->cboAdd->itemText(i).toStdString());
        return entries;
    }

    void PressInBox(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        QTest::keyClick(Browser->cboAdd, static_cast<Qt::Key>(key), modifiers);
    }

    void Write(const std::string& address) const {
        Browser->cboAdd->setFocus();
        PressInBox(Qt::Key_A, Qt::ControlModifier);
        PressInBox(Qt::Key_Delete);
        QTest::keyClicks(Browser->cboAdd, QString::fromStdString(address));
    }

    void GoTo(const std::string& address) const {
        Write(address);
        PressInBox(Qt::Key_Return);
    }

    void Click(const char* key) const {
        auto* const action = Browser->tbrMain->findChild<QAction*>(key);
        ASSERT_NE(action, nullptr) << key;
        QTest::mouseClick(Browser->tbrMain->widgetForAction(action), Qt::LeftButton);
    }

    QWidget* View() const { return Browser->wbrScreen->Widget(); }

    // Something of the page is to be seen.
    bool IsPainted() const {
        const QImage picture = View()->grab().toImage();
        QImage plain = picture;
        plain.fill(picture.pixelColor(0, 0));
        return picture != plain;
    }

    // A page takes clicks as soon as it is painted, so the click is repeated until it tells; later
    // each time, because another click on a link begins its way anew.
    bool ClickPageUntil(const std::function<bool()>& condition) const {
        constexpr int kFirstWait = 50; // milliseconds
        constexpr int kLastWait = 8000;
        for (int wait = kFirstWait; wait <= kLastWait && !condition(); wait *= 2) {
            QWidget* const inner = View()->focusProxy();
            QTest::mouseClick(inner, Qt::LeftButton, Qt::NoModifier, inner->rect().center());
            const QDeadlineTimer patience(wait);
            WaitFor([&] { return condition() || patience.hasExpired(); });
        }
        return condition();
    }

    std::size_t Requests(const std::string& path) const {
        const std::vector<std::string> paths = Web.Paths();
        return static_cast<std::size_t>(std::ranges::count(paths, path));
    }

    bool WasAsked(const std::string& path, std::size_t count = 1) const {
        return WaitFor([&] { return Requests(path) >= count; });
    }

    // For what must not come: as long as a page takes to come to another view, which has to start
    // first, and to come back for more.
    static void WaitAWhile() {
        HttpServer elsewhere;
        elsewhere.Answers["/"] = Says(
            PageText("Here", Script("fetch('/more').then(() => document.title = 'And more');")));
        elsewhere.Answers["/more"] = Says(PageText("More"));
        mw::PageView* const other = mw::LoadPageView();
        ASSERT_NE(other, nullptr);
        other->Navigate(QUrl(QString::fromStdString(elsewhere.Address("/"))));
        EXPECT_TRUE(WaitFor([&] { return other->LocationName() == "And more"; }));
        delete other->Widget();
    }

    HttpServer Web;
    MakersSite Site{"http://" + Web.Host()};
    QPointer<mw::frmBrowser> Browser;
};

} // namespace forms
