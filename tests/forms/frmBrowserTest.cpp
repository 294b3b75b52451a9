#include "browser/frmBrowser.h"

#include "forms/BrowserTest.h"
#include "forms/OpenedPages.h"

#include <filesystem>
#include <unistd.h>

#include <QAbstractItemView>

namespace mw {
namespace {

using forms::LinkTo;
using forms::PageText;
using forms::Says;
using forms::Script;
using forms::WaitFor;
using forms::Window;

using Texts = std::vector<std::string>;

class BrowserWindow : public forms::BrowserTest {};

TEST_F(BrowserWindow, OpensOnTheHomePage) {
    Serve("/", "Home", "<h1>Quillmere</h1><p>A page from the server of the tests.</p>");
    Open();
    EXPECT_EQ(Browser->objectName(), "frmBrowser");
    EXPECT_EQ(Box(), Web.Address("")) << "the home address is in the box at once";
    ASSERT_TRUE(Ends("Home"));
    EXPECT_EQ(Caption(), "Home");
    EXPECT_EQ(Box(), Web.Address("/"));
    EXPECT_EQ(List(), Texts{}) << "and not in its list";
    EXPECT_EQ(Requests("/"), 1u);
    EXPECT_FALSE(Browser->isModal());
    EXPECT_TRUE(WaitFor([this] { return IsPainted(); }));
    forms::KeepPicture(Browser->grab(), "browser");
}

TEST_F(BrowserWindow, HasFiveButtonsWithTheirKeys) {
    OpenAtHome();
    Texts keys;
    for (const QAction* const action : Browser->tbrMain->actions())
        keys.push_back(action->objectName().toStdString());
    EXPECT_EQ(keys, (Texts{"Back", "Forward", "Stop", "Home", "Refresh"}));
}

TEST_F(BrowserWindow, OpenedTwiceIsOneWindowThatKeepsItsPage) {
    OpenAtHome();
    GoTo(Web.Address("/other"));
    ASSERT_TRUE(Ends("Other page"));
    const QPointer<frmBrowser> first = Browser;
    Open();
    EXPECT_EQ(Browser, first);
    WaitAWhile();
    EXPECT_EQ(Caption(), "Other page");
    EXPECT_EQ(Requests("/"), 1u);
}

TEST_F(BrowserWindow, OpenedAgainAfterItsEndBeginsAnew) {
    OpenAtHome();
    GoTo(Web.Address("/other"));
    ASSERT_TRUE(Ends("Other page"));
    Browser->close();
    ASSERT_TRUE(WaitFor([this] { return Browser.isNull(); }));
    OpenAtHome();
    EXPECT_EQ(List(), Texts{});
    EXPECT_EQ(Requests("/"), 2u);
}

TEST_F(BrowserWindow, OpenedAgainWhileItIsMinimisedComesBack) {
    OpenAtHome();
    Browser->showMinimized();
    LetEventsRun();
    Item("mnuMwWite")->trigger();
    EXPECT_TRUE(WaitFor([this] { return !Browser->isMinimized(); }));
}

TEST_F(BrowserWindow, ShowsTheBusyTextUntilThePageIsThere) {
    Web.Answers.erase("/");
    Web.Otherwise = [](forms::Visit&) {};
    OpenAtItsOwnPace();
    EXPECT_EQ(Browser->timNav.interval(), 250);
    for (const char* text : {"Working..", "Working....", "Working......"})
        EXPECT_TRUE(WaitFor([&] { return Label() == text; })) << text;
    ASSERT_TRUE(WasAsked("/"));
    Web.Last().Send(PageText("Late"));
    EXPECT_TRUE(Ends("Late"));
    EXPECT_EQ(Caption(), "Late");
}

TEST_F(BrowserWindow, GoesToTheAddressThatIsEntered) {
    OpenAtHome();
    GoTo(Web.Address("/other"));
    ASSERT_TRUE(Ends("Other page"));
    EXPECT_EQ(Caption(), "Other page");
    EXPECT_EQ(Box(), Web.Address("/other"));
    EXPECT_EQ(List(), Texts{Web.Address("/other")});
}

TEST_F(BrowserWindow, IsBusyAsSoonAsAnAddressIsEntered) {
    OpenAtHome();
    GoTo(Web.Address("/other"));
    EXPECT_TRUE(Browser->wbrScreen->Busy()) << "before the engine has begun";
    EXPECT_TRUE(Ends("Other page"));
}

TEST_F(BrowserWindow, TakesAnAddressWithoutASchemeForHttp) {
    OpenAtHome();
    GoTo(Web.Host() + "/other");
    ASSERT_TRUE(Ends("Other page"));
    EXPECT_EQ(Box(), Web.Address("/other"));
    EXPECT_EQ(List(), Texts{Web.Host() + "/other"}) << "as it was typed";
}

TEST_F(BrowserWindow, TakesTheKeypadsEnterToo) {
    OpenAtHome();
    Write(Web.Address("/other"));
    PressInBox(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_TRUE(Ends("Other page"));
}

TEST_F(BrowserWindow, EnterTwiceOnOneAddressAddsItOnceAndGoesTwice) {
    OpenAtHome();
    const std::string address = Web.Address("/other");
    for (std::size_t time = 1; time <= 2; ++time) {
        GoTo(address);
        ASSERT_TRUE(WasAsked("/other", time));
        ASSERT_TRUE(Ends("Other page"));
    }
    EXPECT_EQ(List(), Texts{address});
}

TEST_F(BrowserWindow, OtherLettersOfAnAddressAreAnotherEntry) {
    OpenAtHome();
    GoTo(Web.Address("/other"));
    ASSERT_TRUE(Ends("Other page"));
    GoTo(Web.Address("/OTHER"));
    ASSERT_TRUE(Ends("Not here"));
    EXPECT_EQ(List(), (Texts{Web.Address("/other"), Web.Address("/OTHER")}));
}

TEST_F(BrowserWindow, GoesToAPlaceOnThePageThatItShows) {
    OpenAtHome();
    for (const char* place : {"/#news", "/#end", "/#end", "/"}) {
        SCOPED_TRACE(place);
        GoTo(Web.Address(place));
        EXPECT_TRUE(Ends("Home"));
        EXPECT_EQ(Box(), Web.Address(place));
    }
}

class EntryList : public BrowserWindow {
protected:
    void OpenWithTwoEntries() {
        Serve("/third", "Third page");
        OpenAtHome();
        for (const auto& [path, title] :
             {std::pair{"/other", "Other page"}, {"/third", "Third page"}}) {
            GoTo(Web.Address(path));
            ASSERT_TRUE(Ends(title));
        }
    }
};

TEST_F(EntryList, IsWalkedByTheArrowKeys) {
    OpenWithTwoEntries();
    Browser->cboAdd->setCurrentIndex(1);
    PressInBox(Qt::Key_Up);
    ASSERT_TRUE(WasAsked("/other", 2));
    ASSERT_TRUE(Ends("Other page"));
    EXPECT_EQ(Box(), Web.Address("/other"));
    EXPECT_EQ(List().size(), 2u);
}

TEST_F(EntryList, IsOpenedAndChosenFromByKeys) {
    OpenWithTwoEntries();
    Browser->cboAdd->setFocus();
    Browser->cboAdd->showPopup();
    QWidget* const list = QApplication::activePopupWidget();
    ASSERT_NE(list, nullptr);
    QWidget* const rows = Browser->cboAdd->view();
    QTest::keyClick(rows, Qt::Key_Home);
    QTest::keyClick(rows, Qt::Key_Return);
    ASSERT_TRUE(WasAsked("/other", 2));
    ASSERT_TRUE(Ends("Other page"));
    EXPECT_EQ(List().size(), 2u);
}

TEST_F(EntryList, IsLeftAloneByTheWheel) {
    OpenWithTwoEntries();
    Browser->cboAdd->setCurrentIndex(1);
    TurnWheel(Browser->cboAdd, 120);
    EXPECT_EQ(Browser->cboAdd->currentIndex(), 1);
    EXPECT_EQ(Box(), Web.Address("/third"));
}

TEST_F(EntryList, TakesTheSameEntryAgain) {
    OpenWithTwoEntries();
    Click("Home");
    ASSERT_TRUE(HasCaption("Home"));
    ASSERT_TRUE(WaitFor([this] { return !Browser->wbrScreen->Busy(); }));
    Browser->cboAdd->setFocus();
    Browser->cboAdd->showPopup();
    QTest::keyClick(Browser->cboAdd->view(), Qt::Key_End);
    QTest::keyClick(Browser->cboAdd->view(), Qt::Key_Return);
    EXPECT_TRUE(WasAsked("/third", 2));
    EXPECT_TRUE(Ends("Third page"));
}

TEST_F(EntryList, IsNotGoneToWhenTheBoxLosesTheKeys) {
    OpenWithTwoEntries();
    for (const char* path : {"/other", "/third"}) {
        SCOPED_TRACE(path);
        const std::size_t before = Requests(path);
        Write(Web.Address(path));
        View()->setFocus();
        WaitAWhile();
        EXPECT_EQ(Requests(path), before) << "neither Enter was pressed nor an entry chosen";
        EXPECT_EQ(Box(), Web.Address(path)) << "it waits for Enter";
    }
}

TEST_F(EntryList, IsNotGoneToWhenTheWindowCloses) {
    OpenWithTwoEntries();
    const std::size_t before = Web.Requests.size();
    Browser->close();
    ASSERT_TRUE(WaitFor([this] { return Browser.isNull(); }));
    WaitAWhile();
    EXPECT_EQ(Web.Requests.size(), before);
}

TEST_F(EntryList, LeavesAnAddressInOtherLettersAsItWasTyped) {
    OpenWithTwoEntries();
    Write(Web.Address("/THIRD"));
    View()->setFocus();
    WaitAWhile();
    EXPECT_EQ(Box(), Web.Address("/THIRD"));
    EXPECT_EQ(Requests("/third"), 1u);
}

TEST_F(BrowserWindow, ALinkIsFollowedWhileLabelAndBoxStayOnPurpose) {
    Serve("/", "Home", LinkTo("/other"));
    OpenAtHome();
    ASSERT_TRUE(ClickPageUntil([this] { return Caption() == "Other page"; }));
    WaitAWhile();
    EXPECT_FALSE(Browser->timNav.isActive());
    EXPECT_EQ(Label(), "Home");
    EXPECT_EQ(Box(), Web.Address("/"));
    EXPECT_EQ(List(), Texts{});
}

TEST_F(BrowserWindow, GoesBackAndForward) {
    OpenAtHome();
    GoTo(Web.Address("/other"));
    ASSERT_TRUE(Ends("Other page"));
    Click("Back");
    EXPECT_TRUE(HasCaption("Home"));
    Click("Forward");
    EXPECT_TRUE(HasCaption("Other page"));
}

TEST_F(BrowserWindow, GoesNowhereWithoutAPageBeforeOrBehind) {
    OpenAtHome();
    Click("Back");
    Click("Forward");
    Click("Stop");
    WaitAWhile();
    EXPECT_EQ(Caption(), "Home");
    EXPECT_EQ(Web.Requests.size(), 1u);
}

TEST_F(BrowserWindow, HomeGoesToTheHomePage) {
    OpenAtHome();
    GoTo(Web.Address("/other"));
    ASSERT_TRUE(Ends("Other page"));
    Click("Home");
    EXPECT_TRUE(HasCaption("Home"));
    EXPECT_EQ(Requests("/"), 2u);
}

TEST_F(BrowserWindow, RefreshLoadsThePageAgain) {
    OpenAtHome();
    for (std::size_t times = 2; times <= 3; ++times) {
        Click("Refresh");
        EXPECT_TRUE(WasAsked("/", times));
        EXPECT_TRUE(WaitFor([this] { return !Browser->wbrScreen->Busy(); }));
    }
    WaitAWhile();
    EXPECT_EQ(Requests("/"), 3u);
}

TEST_F(BrowserWindow, StopEndsAPageThatWouldNeverEnd) {
    OpenAtHome();
    ServeWithoutEnd("/half");
    GoTo(Web.Address("/half"));
    ASSERT_TRUE(WasAsked("/half"));
    ASSERT_TRUE(IsBusy());
    Click("Stop");
    EXPECT_TRUE(Ends());
    EXPECT_TRUE(Web.Last().Leaves());
    EXPECT_EQ(Label(), PageName());
    EXPECT_EQ(Box(), Location());
}

TEST_F(BrowserWindow, StopEndsAServerThatNeverAnswers) {
    OpenAtHome();
    Web.Answers["/mute"] = [](forms::Visit&) {};
    GoTo(Web.Address("/mute"));
    ASSERT_TRUE(WasAsked("/mute"));
    Click("Stop");
    EXPECT_TRUE(Ends());
    EXPECT_TRUE(Web.Last().Leaves());
}

TEST_F(BrowserWindow, StopEndsAWayThatHasNotBegun) {
    OpenAtHome();
    GoTo(Web.Address("/other"));
    Click("Stop");
    EXPECT_TRUE(Ends("Home"));
    EXPECT_EQ(Box(), Web.Address("/"));
}

TEST_F(BrowserWindow, StopEndsAPageThatPoursWithoutEnd) {
    OpenAtHome();
    Web.Answers["/flood"] =
        forms::PoursBehind("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\n\r\n<title>Flood</title>",
                           std::string(4096, 'x') + "<br>");
    GoTo(Web.Address("/flood"));
    ASSERT_TRUE(WasAsked("/flood"));
    ASSERT_TRUE(IsBusy());
    Click("Stop");
    EXPECT_TRUE(Ends());
    EXPECT_TRUE(Web.Last().Leaves());
}

TEST_F(BrowserWindow, AnAddressEnteredWhileAPageLoadsTakesItsPlace) {
    OpenAtHome();
    ServeWithoutEnd("/half");
    GoTo(Web.Address("/half"));
    ASSERT_TRUE(WasAsked("/half"));
    Web.Answers["/slow"] = [](forms::Visit&) {};
    GoTo(Web.Address("/slow"));
    ASSERT_TRUE(WasAsked("/slow"));
    WaitAWhile();
    EXPECT_TRUE(Browser->timNav.isActive()) << "the new page is still under way";
    EXPECT_EQ(Label().substr(0, 9), "Working..");
    for (const auto& visit : Web.Visits) {
        if (visit->Path == "/slow")
            visit->Send(PageText("Slow page"));
    }
    EXPECT_TRUE(Ends("Slow page"));
    EXPECT_EQ(Box(), Web.Address("/slow"));
}

struct Failure {
    const char* Name;
    std::string Answer; // bytes, and the connection is closed behind them
};

const Failure kFailures[] = {
    {"NoByte", ""},
    {"NoHttp", "hello\r\n\r\n"},
    {"NoContent", "HTTP/1.1 204 No Content\r\n\r\n"},
    {"AnEmptyPage", "HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n"},
    {"ACutBody", "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: 999\r\n\r\n<p>cut"},
    {"ABadChunk", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\n"},
    {"NotFoundWithoutAPage", "HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n"},
    {"AServerError", "HTTP/1.1 500 Oops\r\nContent-Length: 0\r\n\r\n"},
    {"APasswordAsked", "HTTP/1.1 401 Unauthorized\r\nWWW-Authenticate: Basic realm=\"x\"\r\n"
                       "Content-Length: 0\r\n\r\n"},
    {"ARedirectionToAFile", "HTTP/1.1 302 Found\r\nLocation: file:///etc/passwd\r\n"
                            "Content-Length: 0\r\n\r\n"},
    {"ARedirectionToItself",
     "HTTP/1.1 302 Found\r\nLocation: /badARedirectionToItself\r\nContent-Length: 0\r\n\r\n"},
    {"ADownload", "HTTP/1.1 200 OK\r\nContent-Type: application/octet-stream\r\n"
                  "Content-Disposition: attachment; filename=\"gift.bin\"\r\n"
                  "Content-Length: 4\r\n\r\ngift"},
};

// In one window, one after the other: each has to leave it usable for the next.
TEST_F(BrowserWindow, FailuresEndWithTheNameAndAddressThatThePageViewReports) {
    OpenAtHome();
    for (const Failure& row : kFailures) {
        SCOPED_TRACE(row.Name);
        const std::string path = std::string("/bad") + row.Name;
        Web.Answers[path] = Says(row.Answer);
        GoTo(Web.Address(path));
        ASSERT_TRUE(WasAsked(path));
        EXPECT_TRUE(Ends());
        EXPECT_EQ(Label(), PageName());
        EXPECT_EQ(Box(), Location());
        EXPECT_EQ(Closer.Texts, forms::Boxes{});
        GoTo(Web.Address("/other"));
        EXPECT_TRUE(Ends("Other page")) << "the window goes on";
    }
}

TEST_F(BrowserWindow, AnAddressThatIsNoneIsNotGoneTo) {
    OpenAtHome();
    for (const char* address :
         {"http://127.0.0.1:port/x", "127.0.0.256", "http://1.2.3.4.5/x", "http://quillmere.1",
          "http://quillmere.0x1./", "http://4294967296", "http://[::1%25lo]/", "http://[v1.x]/"}) {
        SCOPED_TRACE(address);
        GoTo(address);
        ASSERT_TRUE(Ends("Home"));
        EXPECT_EQ(Box(), Web.Address("/"));
    }
    EXPECT_EQ(Caption(), "Home");
    EXPECT_EQ(Web.Requests.size(), 1u);
}

TEST_F(BrowserWindow, GoesToTheNumbersOfAHost) {
    OpenAtHome();
    const std::string port = Web.Host().substr(Web.Host().find(':'));
    for (const char* host : {"127.1", "2130706433", "0x7f.0.0.1", "127.0.0.1."}) {
        SCOPED_TRACE(host);
        GoTo(host + port + "/other");
        EXPECT_TRUE(Ends("Other page"));
        EXPECT_EQ(Box(), Web.Address("/other"));
        GoTo(Web.Address("/"));
        ASSERT_TRUE(Ends("Home"));
    }
    GoTo("http://[::ffff:127.0.0.1]" + port + "/other");
    EXPECT_TRUE(Ends());
    EXPECT_EQ(Box(), "http://[::ffff:127.0.0.1]" + port + "/other");
}

TEST_F(BrowserWindow, AServerThatIsNotThereEndsWithTheNameThatThePageViewReports) {
    OpenAtHome();
    GoTo("http://127.0.0.1:1/x");
    ASSERT_TRUE(Ends());
    EXPECT_NE(Label().substr(0, 7), "Working");
    EXPECT_EQ(Label(), PageName());
    EXPECT_EQ(Box(), Location());
}

TEST_F(BrowserWindow, APageThatIsNotThereShowsWhatTheServerSays) {
    OpenAtHome();
    GoTo(Web.Address("/nowhere"));
    EXPECT_TRUE(Ends("Not here"));
    EXPECT_EQ(Caption(), "Not here");
    EXPECT_EQ(Box(), Web.Address("/nowhere"));
}

TEST_F(BrowserWindow, FollowsARedirectionAndShowsWhereItLed) {
    OpenAtHome();
    Web.Answers["/moved"] = Says(forms::Redirection("/other"));
    GoTo(Web.Address("/moved"));
    EXPECT_TRUE(Ends("Other page"));
    EXPECT_EQ(Box(), Web.Address("/other"));
    EXPECT_EQ(List(), Texts{Web.Address("/moved")});
}

struct Refused {
    const char* Name;
    const char* Address;
};

const Refused kRefused[] = {
    {"AFile", "file:///etc/passwd"},
    {"AFileWithAHost", "file://localhost/etc/passwd"},
    {"AScript", "javascript:document.title='Taken'"},
    {"AScriptWithSlashes", "javascript://x/%0adocument.title='Taken'"},
    {"Ftp", "ftp://127.0.0.1/x"},
    {"Data", "data:text/html,<title>Taken</title>"},
    {"DataWithSlashes", "data://text/html,<title>Taken</title>"},
    {"Chrome", "chrome://version"},
    {"ViewSource", "view-source:http://127.0.0.1:1/"},
    {"Resource", "qrc:///manual/index.html"},
    {"Blob", "blob:http://127.0.0.1/x"},
    {"Mail", "mailto:x@127.0.0.1"},
    {"AnEmptyHost", "http://"},
    {"Nothing", ""},
    {"Blanks", "   "},
};

class RefusedAddresses : public BrowserWindow {
protected:
    static constexpr const char* kBlocked = "about:blank#blocked"; // the engine's own refusal
    const forms::OpenedPages System; // nor are they handed to the system's browser
};

TEST_F(RefusedAddresses, AreNotGoneToAndGiveWayToThePagesOwn) {
    OpenAtHome();
    for (const Refused& row : kRefused) {
        SCOPED_TRACE(row.Name);
        if (Caption() != "Home") { // the row before was followed
            GoTo(Web.Address("/"));
            ASSERT_TRUE(Ends("Home"));
        }
        GoTo(row.Address);
        EXPECT_TRUE(Ends());
        EXPECT_EQ(Label(), "Home");
        EXPECT_EQ(Caption(), "Home");
        EXPECT_EQ(Box(), Web.Address("/"));
    }
    WaitAWhile();
    EXPECT_EQ(Caption(), "Home");
    EXPECT_EQ(Location(), Web.Address("/"));
    EXPECT_EQ(Web.Requests.size(), 1u);
    EXPECT_EQ(System.Addresses, Texts{});
    EXPECT_EQ(Closer.Texts, forms::Boxes{});
}

TEST_F(RefusedAddresses, AreNotFollowedFromAPage) {
    Open();
    for (const Refused& row : kRefused) {
        const std::string address = row.Address;
        if (address.starts_with("javascript:") || address.empty() || address[0] == ' ')
            continue; // what a page does on its own ground is its own affair
        SCOPED_TRACE(row.Name);
        const std::string path = std::string("/to") + row.Name;
        Serve(path, "Link",
              "<a id=a href=\"" + address + "\">x</a>" +
                  Script("onload = () => { a.click(); "
                         "setTimeout(() => document.title = 'Clicked'); };"));
        GoTo(Web.Address("/"));
        ASSERT_TRUE(Ends("Home")); // nothing of the row before is left
        GoTo(Web.Address(path));
        EXPECT_TRUE(WaitFor([this] { return Caption() == "Clicked" || Location() == kBlocked; }));
        WaitAWhile();
        EXPECT_TRUE(Location() == Web.Address(path) || Location() == kBlocked) << Location();
    }
    EXPECT_EQ(System.Addresses, Texts{});
    EXPECT_EQ(Closer.Texts, forms::Boxes{});
}

class Pages : public BrowserWindow {
protected:
    // Opens a page whose script writes what it got into the title.
    bool ScriptSays(const std::string& code, const std::string& outcome) {
        Serve("/", "Home", Script("const say = t => document.title = t;" + code));
        Open();
        const bool said = HasCaption(outcome);
        EXPECT_TRUE(said) << Caption();
        return said;
    }

    static std::filesystem::path HomeFolder() { return qgetenv("HOME").toStdString(); }

    // The files below the home folder that hold that text or have it in their names.
    static Texts FilesWith(const std::string& text) {
        Texts found;
        for (const auto& [name, contents] : forms::FilesIn(HomeFolder())) {
            if (name.find(text) != std::string::npos || contents.find(text) != std::string::npos)
                found.push_back(name);
        }
        return found;
    }

    // Empty folders are nothing that is kept.
    static Texts FilesOfTheEngine() {
        Texts found;
        for (const auto& [name, contents] : forms::FilesIn(HomeFolder())) {
            if (name.find("QtWebEngine") != std::string::npos && !contents.empty())
                found.push_back(name);
        }
        return found;
    }
};

TEST_F(Pages, OpenNoWindows) {
    ScriptSays("say(String(window.open('/other')));", "null");
    WaitAWhile();
    EXPECT_EQ(Requests("/other"), 0u);
    EXPECT_EQ(forms::VisibleWindows().size(), 2) << "frame and browser";
}

TEST_F(Pages, OpenNoWindowsByAClickEither) {
    Serve("/", "Home", LinkTo("/other", "target=_blank onclick=\"document.title='Clicked'\""));
    OpenAtHome();
    ASSERT_TRUE(ClickPageUntil([this] { return Caption() == "Clicked"; }));
    WaitAWhile();
    EXPECT_EQ(forms::VisibleWindows().size(), 2) << "frame and browser";
    EXPECT_EQ(Requests("/other"), 0u);
}

TEST_F(Pages, DoNotCloseTheWindow) {
    ScriptSays("window.close(); say('still here');", "still here");
    WaitAWhile();
    ASSERT_FALSE(Browser.isNull());
    EXPECT_TRUE(Browser->isVisible());
}

TEST_F(Pages, AreNotToldWhereThePlayerIs) {
    ScriptSays("navigator.geolocation.getCurrentPosition(() => say('told'), "
               "e => say('refused ' + e.code));",
               "refused 1");
}

TEST_F(Pages, MayNotShowNotifications) {
    ScriptSays("Notification.requestPermission().then(say);", "denied");
}

TEST_F(Pages, MayNotListenOrWatch) {
    ScriptSays("navigator.mediaDevices.getUserMedia({audio: true, video: true})"
               ".then(() => say('listens'), () => say('refused'));",
               "refused");
}

TEST_F(Pages, MayNotReadTheClipboard) {
    ScriptSays("navigator.clipboard.readText().then(() => say('read'), () => say('refused'));",
               "refused");
}

TEST_F(Pages, ReadNoLocalFiles) {
    ScriptSays("fetch('file:///etc/passwd').then(() => say('read'), () => say('refused'));",
               "refused");
}

// What another site's frame shows is hidden from the page, as a file would be.
TEST_F(Pages, ShowNoLocalFilesInAFrame) {
    forms::HttpServer elsewhere;
    elsewhere.Answers["/"] = Says(PageText("Elsewhere"));
    Serve("/", "Home",
          "<iframe src='file:///etc/passwd'></iframe><iframe src='" + elsewhere.Address("/") +
              "'></iframe>" +
              Script("const at = frame => { try { return frame.location.href; } "
                     "catch (e) { return 'hidden'; } };"
                     "onload = () => document.title = at(frames[0]) + ', ' + at(frames[1]);"));
    Open();
    EXPECT_TRUE(HasCaption("about:blank, hidden")) << Caption();
}

TEST_F(Pages, StartNoDownloads) {
    Web.Answers["/gift"] = Says("HTTP/1.1 200 OK\r\nContent-Type: application/octet-stream\r\n"
                                "Content-Disposition: attachment; filename=\"gift.bin\"\r\n"
                                "Content-Length: 9\r\n\r\nthe-gift!");
    Serve("/", "Home", Script("setTimeout(() => location = '/gift', 100);"));
    Open();
    ASSERT_TRUE(WasAsked("/gift"));
    EXPECT_TRUE(Ends("Home"));
    WaitAWhile();
    // Until it is told that nobody wants them, the engine has the first bytes in a file of its own.
    Texts kept;
    WaitFor([&] {
        kept = FilesWith("gift");
        return kept.empty();
    });
    EXPECT_EQ(kept, Texts{});
    EXPECT_EQ(forms::VisibleWindows().size(), 2) << "nobody is asked";
    EXPECT_EQ(Caption(), "Home");
}

TEST_F(Pages, KeepTheirCookiesWhileTheWindowIsOpenAndNoLonger) {
    Serve("/", "Home", "", "Set-Cookie: secret=sesame4711; Max-Age=99999\r\n");
    OpenAtHome();
    Click("Refresh");
    ASSERT_TRUE(WasAsked("/", 2));
    EXPECT_NE(Web.Requests.back().find("sesame4711"), std::string::npos);
    Browser->close();
    ASSERT_TRUE(WaitFor([this] { return Browser.isNull(); }));
    WaitAWhile(); // it would be written down by now
    OpenAtHome();
    EXPECT_EQ(Web.Requests.back().find("sesame4711"), std::string::npos);
}

TEST_F(Pages, LeaveNothingOnTheDisk) {
    Serve("/", "Home sesame4711",
          "sesame4711" +
              Script("localStorage.x = 'sesame4711'; const o = indexedDB.open('sesame4711'); "
                     "o.onupgradeneeded = () => o.result.createObjectStore('sesame4711');"
                     "o.onsuccess = () => caches.open('sesame4711').then("
                     "c => c.put('/sesame4711', new Response('sesame4711'))).then("
                     "() => document.title = 'stored', () => document.title = 'not stored');"),
          "Set-Cookie: secret=sesame4711; Max-Age=99999\r\nCache-Control: max-age=99999\r\n");
    Open();
    ASSERT_TRUE(HasCaption("stored")) << Caption();
    WaitAWhile();
    EXPECT_EQ(FilesWith("sesame4711"), Texts{});
    Browser->close();
    ASSERT_TRUE(WaitFor([this] { return Browser.isNull(); }));
    WaitAWhile();
    EXPECT_EQ(FilesWith("sesame4711"), Texts{});
    EXPECT_EQ(FilesOfTheEngine(), Texts{});
}

TEST_F(Pages, MaySayATitleInEveryScriptAndItIsShownAsText) {
    Serve("/", "&lt;b&gt;Gänse &amp; 東&lt;/b&gt;");
    Open();
    EXPECT_TRUE(Ends("<b>Gänse & 東</b>"));
    EXPECT_EQ(Caption(), "<b>Gänse & 東</b>");
    EXPECT_EQ(Browser->lblWork->textFormat(), Qt::PlainText);
}

TEST_F(Pages, ThatChangeTheirTitleChangeTheCaption) {
    Serve("/", "Home", Script("setTimeout(() => document.title = 'Renamed', 100);"));
    Open();
    EXPECT_TRUE(HasCaption("Renamed"));
}

TEST_F(Pages, WithAnEndlessTitleDoNotWidenTheWindow) {
    Serve("/", std::string(5000, 'W'));
    Open();
    EXPECT_TRUE(WaitFor([this] { return Label().size() > 1000; }));
    EXPECT_LE(Browser->width(), 1000);
}

TEST_F(Pages, MayShowAMessageAndGoOn) {
    ScriptSays("alert('Honk'); say('went on');", "went on");
    EXPECT_EQ(Closer.Texts.size(), 1u);
}

TEST_F(Pages, ShowThreeMessagesUntilThePlayerGoesOn) {
    Serve("/", "Home",
          Script("for (let i = 0; i < 9; ++i) { alert('Honk ' + i); confirm('?'); }"
                 "fetch('/over?' + confirm('?'));"));
    Open();
    const auto showsThree = [this](std::size_t page) {
        ASSERT_TRUE(WasAsked("/over?false", page));
        EXPECT_EQ(Closer.Texts, (forms::Boxes{"Honk 0", "?", "Honk 1"})) << page;
        Closer.Texts.clear();
    };
    showsThree(1);
    Click("Refresh");
    showsThree(2);
    Click("Home");
    showsThree(3);
}

TEST_F(Pages, ThatLoadThemselvesAnewShowNoMoreMessages) {
    Serve("/", "Home", Script("alert('Honk'); setTimeout(() => location.reload(), 1);"));
    Open();
    EXPECT_TRUE(WasAsked("/", 6));
    EXPECT_EQ(Closer.Texts, forms::Boxes(3, "Honk"));
}

TEST_F(Pages, CutTheirMessagesToAThousandCharacters) {
    ScriptSays("alert('a'.repeat(1000)); alert('b'.repeat(1001)); say('went on');", "went on");
    EXPECT_EQ(Closer.Texts, (forms::Boxes{std::string(1000, 'a'), std::string(1000, 'b')}));
}

struct LongMessage {
    const char* Name;
    const char* Text; // in the page's script
};

void PrintTo(const LongMessage& row, std::ostream* out) { *out << row.Name; }

class LongMessages : public Pages, public testing::WithParamInterface<LongMessage> {};

TEST_P(LongMessages, LeaveTheirBoxesOnTheScreen) {
    std::vector<QSize> sizes;
    QTimer closer;
    QObject::connect(&closer, &QTimer::timeout, &closer, [&sizes] {
        if (auto* const box = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            sizes.push_back(box->size());
            box->reject();
        }
    });
    closer.start(2);
    Closer.MayClose = [] { return false; };
    ScriptSays("const text = '" + std::string(GetParam().Text) +
                   "'.repeat(1000); alert(text); confirm(text); prompt(text); say('went on');",
               "went on");
    EXPECT_EQ(sizes.size(), 3u);
    const QSize screen = QGuiApplication::primaryScreen()->availableSize();
    for (const QSize& size : sizes) {
        EXPECT_LE(size.width(), screen.width());
        EXPECT_LT(size.height(), screen.height());
    }
}

const LongMessage kLongMessages[] = {
    {"LineFeeds", "\\n"}, {"CarriageReturns", "\\r"}, {"Tabs", "\\t"},
    {"Words", "words "},  {"OneWord", "W"},           {"Markup", "<br>"},
};

INSTANTIATE_TEST_SUITE_P(Browser, LongMessages, testing::ValuesIn(kLongMessages),
                         [](const auto& row) { return row.param.Name; });

TEST_F(Pages, ThatShowAMessageDoNotKeepTheWindowOpen) {
    Serve("/", "Home", Script("alert('Honk');"));
    bool isClosed = false;
    Closer.MayClose = [&] {
        if (!isClosed && Browser) {
            isClosed = true;
            Browser->close();
        }
        return true;
    };
    Open();
    EXPECT_TRUE(WaitFor([&] { return isClosed; }));
    EXPECT_TRUE(WaitFor([this] { return Browser.isNull(); }));
}

class PagesThatWantToStay : public Pages {
protected:
    // Such a page asks only after it was clicked.
    void OpenAndClick() {
        Serve("/", "Home",
              LinkTo("/x", "onclick=\"document.title='Clicked'; return false\"") +
                  Script("onbeforeunload = e => { e.preventDefault(); "
                         "return e.returnValue = 'no'; };"));
        OpenAtHome();
        ASSERT_TRUE(ClickPageUntil([this] { return Caption() == "Clicked"; }));
    }
};

TEST_F(PagesThatWantToStay, AreLeft) {
    OpenAndClick();
    Browser->close();
    EXPECT_TRUE(WaitFor([this] { return Browser.isNull(); }));
}

TEST_F(PagesThatWantToStay, GiveTheirNameAndAddressWhenThePlayerStays) {
    OpenAndClick();
    int questions = 0;
    Closer.MayClose = [&questions] {
        ++questions;
        QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
        return false; // it is closed already
    };
    GoTo(Web.Address("/other"));
    EXPECT_TRUE(Ends("Clicked"));
    EXPECT_EQ(Box(), Web.Address("/"));
    EXPECT_EQ(questions, 1);
    EXPECT_EQ(Requests("/other"), 0u);
}

TEST_F(PagesThatWantToStay, AreLeftForAnotherPageWhenThePlayerSaysSo) {
    OpenAndClick();
    GoTo(Web.Address("/other"));
    EXPECT_TRUE(Ends("Other page"));
    EXPECT_EQ(Box(), Web.Address("/other"));
    EXPECT_EQ(Closer.Texts.size(), 1u);
}

TEST_F(BrowserWindow, LaysItselfOutOnEveryResize) {
    OpenAtHome();
    Browser->setMinimumSize(0, 0);
    for (const QSize& size : {QSize(900, 640), QSize(300, 200), QSize(1600, 1000), QSize(500, 900),
                              QSize(201, 300), QSize(101, 300)}) {
        SCOPED_TRACE(std::to_string(size.width()) + "x" + std::to_string(size.height()));
        Browser->resize(size);
        ASSERT_TRUE(WaitFor([&] { return Browser->size() == size; }));
        const QRect bar = Browser->tbrMain->geometry();
        const QRect box = Browser->cboAdd->geometry();
        const QRect view = View()->geometry();
        const QRect label = Browser->lblWork->geometry();
        EXPECT_EQ(box.left(), 0);
        EXPECT_EQ(box.top(), bar.bottom() + 1) << "directly under the toolbar";
        EXPECT_EQ(box.width(), size.width() - 100);
        EXPECT_EQ(view.topLeft(), QPoint(0, box.bottom() + 1));
        EXPECT_EQ(view.width(), size.width());
        EXPECT_EQ(view.bottom() + 1, label.top());
        EXPECT_EQ(label.bottom() + 1, size.height()) << "at the bottom";
    }
}

TEST_F(BrowserWindow, LeavesTheBoxAsItIsWhenTheWindowIsNoWiderThanWhatStaysFree) {
    OpenAtHome();
    Browser->setMinimumSize(0, 0);
    Browser->resize(400, 300);
    const QRect before = Browser->cboAdd->geometry();
    ASSERT_EQ(before.width(), 300);
    for (const int width : {100, 99, 50, 1}) {
        Browser->resize(width, 300);
        ASSERT_EQ(Browser->width(), width);
        EXPECT_EQ(Browser->cboAdd->geometry(), before) << width;
        EXPECT_EQ(View()->width(), width);
    }
    Browser->resize(101, 300);
    EXPECT_EQ(Browser->cboAdd->width(), 1);
}

TEST_F(BrowserWindow, SurvivesAWindowLowerThanItsBars) {
    OpenAtHome();
    Browser->setMinimumSize(0, 0);
    Browser->resize(400, 10);
    EXPECT_EQ(View()->height(), 0);
    Browser->resize(400, 300);
    EXPECT_GT(View()->height(), 100);
}

TEST_F(BrowserWindow, ExitOfItsMenuClosesIt) {
    OpenAtHome();
    QAction* const exit = Browser->Menu->findChild<QAction*>("mnuExit");
    ASSERT_NE(exit, nullptr);
    EXPECT_EQ(exit->text(), "E&xit");
    exit->trigger();
    EXPECT_TRUE(WaitFor([this] { return Browser.isNull(); }));
    EXPECT_TRUE(Frame->isVisible());
}

TEST_F(BrowserWindow, ClosesWhileAPageLoads) {
    ServeWithoutEnd("/");
    Open();
    ASSERT_TRUE(WasAsked("/"));
    Browser->close();
    EXPECT_TRUE(WaitFor([this] { return Browser.isNull(); }));
    EXPECT_TRUE(Web.Last().Leaves());
}

TEST_F(BrowserWindow, ClosesBeforeItsFirstRequest) {
    Open();
    Browser->close();
    EXPECT_TRUE(WaitFor([this] { return Browser.isNull(); }));
    OpenAtHome();
}

TEST_F(BrowserWindow, OpensAndClosesManyTimes) {
    for (int time = 0; time < 4; ++time) {
        OpenAtHome();
        Browser->close();
        ASSERT_TRUE(WaitFor([this] { return Browser.isNull(); }));
    }
    EXPECT_EQ(Requests("/"), 4u);
}

TEST_F(BrowserWindow, ClosesWithTheFrame) {
    OpenAtHome();
    Frame->close();
    EXPECT_TRUE(WaitFor([this] { return Browser.isNull(); }));
    EXPECT_TRUE(SavingMode);
}

TEST_F(BrowserWindow, LetsTheGameGoOn) {
    OpenAtHome();
    Connect();
    Receive("You hear a goose.");
    EXPECT_TRUE(Browser->isVisible());
}

// In a program of its own: the page view is looked for once in a run.
class PageViewFile : public forms::BrowserTest {
protected:
    // Opens the window and ends with 0 when the notices and what the system's browser was asked to
    // open are these.
    void OpenAndEnd(const std::string& notice, const Texts& opened) {
        const forms::OpenedPages system;
        Item("mnuMwWite")->trigger();
        const bool isAsExpected = Notice == notice && system.Addresses == opened &&
                                  (Window<frmBrowser>() != nullptr) == opened.empty();
        if (!isAsExpected)
            fprintf(stderr, "notice: %s, opened: %zu\n", Notice.c_str(), system.Addresses.size());
        _exit(isAsExpected ? 0 : 1);
    }

    Texts HomePage() const { return {Web.Address("")}; }

    static constexpr const char* kMissing =
        "The web page opens in the system's browser: the page view is not installed";
};

TEST_F(PageViewFile, ThatIsNotThereLeavesThePageToTheSystemsBrowser) {
    EXPECT_EXIT(
        {
            qputenv("QUILLMERE_PAGE_VIEW", "/nowhere/at.all");
            OpenAndEnd(kMissing, HomePage());
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(PageViewFile, ThatIsNoLibraryLeavesThePageToTheSystemsBrowser) {
    Folder.MakeFile("broken.so");
    EXPECT_EXIT(
        {
            qputenv("QUILLMERE_PAGE_VIEW", (Folder.Path / "broken.so").c_str());
            OpenAndEnd(kMissing, HomePage());
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(PageViewFile, IsUsedWithANoticeForRootAlone) {
    EXPECT_EXIT(
        {
            OpenAndEnd(geteuid() == 0
                           ? "Web pages are shown without their sandbox, because you are root"
                           : "",
                       {});
        },
        testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace mw
