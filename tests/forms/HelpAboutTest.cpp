#include "app/frmAbout.h"
#include "app/frmHelp.h"
#include "base/Version.h"
#include "forms/DialogTest.h"
#include "forms/OpenedPages.h"

#include <curl/curl.h>
#include <set>

#include <QDir>
#include <QDirIterator>
#include <QLabel>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextTable>

namespace mw {
namespace {

using forms::Boxes;
using forms::WaitFor;
using forms::Window;

QByteArray ContentOf(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QFile::ReadOnly)) << path.toStdString();
    return file.readAll();
}

// The built-in file of an address as the help window has it.
QString BuiltIn(const QUrl& address) { return ":" + address.path(); }

// What the links, pictures and style sheets of a page lead to.
QList<QUrl> LinksOf(const QUrl& page) {
    static const QRegularExpression kLink("(?:href|src)\\s*=\\s*[\"']([^\"']*)[\"']");
    QList<QUrl> links;
    auto found = kLink.globalMatch(QString::fromUtf8(ContentOf(BuiltIn(page))));
    while (found.hasNext())
        links.append(page.resolved(QUrl(found.next().captured(1))));
    return links;
}

bool HasPlace(const QUrl& page, const QString& place) {
    const QRegularExpression id("(?:id|name)\\s*=\\s*[\"']" + QRegularExpression::escape(place) +
                                "[\"']");
    return QString::fromUtf8(ContentOf(BuiltIn(page))).contains(id);
}

QList<QUrl> Pages() {
    QList<QUrl> pages;
    for (const QString& name : QDir(MANUAL_FOLDER).entryList({"*.html"}, QDir::Files))
        pages.append(QUrl("qrc:/manual/" + name));
    return pages;
}

TEST(Manual, IsWholeInTheProgram) {
    int files = 0;
    for (QDirIterator it(MANUAL_FOLDER, QDir::Files, QDirIterator::Subdirectories); it.hasNext();) {
        const QString file = it.next();
        const QString name = QDir(MANUAL_FOLDER).relativeFilePath(file);
        EXPECT_EQ(ContentOf(":/manual/" + name), ContentOf(file)) << name.toStdString();
        ++files;
    }
    EXPECT_GT(files, 1);
}

TEST(Manual, HasNoLinkThatLeadsNowhere) {
    for (const QUrl& page : Pages()) {
        for (const QUrl& link : LinksOf(page)) {
            const std::string where =
                page.fileName().toStdString() + " " + link.url().toStdString();
            if (link.scheme() != "qrc") {
                EXPECT_TRUE(link.scheme() == "https" || link.scheme() == "http") << where;
                continue;
            }
            EXPECT_TRUE(QFile::exists(BuiltIn(link))) << where;
            EXPECT_TRUE(!link.hasFragment() || HasPlace(link, link.fragment())) << where;
        }
    }
}

TEST(Manual, CanBeReadFromItsContentsByLinks) {
    const QUrl contents("qrc:/manual/index.html");
    std::set<QUrl> seen{contents};
    QList<QUrl> left{contents};
    while (!left.isEmpty()) {
        for (const QUrl& link : LinksOf(left.takeFirst())) {
            const QUrl page = link.adjusted(QUrl::RemoveFragment);
            if (page.scheme() == "qrc" && page.path().endsWith(".html") && seen.insert(page).second)
                left.append(page);
        }
    }
    for (const QUrl& page : Pages())
        EXPECT_TRUE(seen.count(page)) << page.fileName().toStdString();
}

class HelpWindow : public forms::FrameTest {
protected:
    void Open() {
        Item("mnuGHlp")->trigger();
        Help = Window<frmHelp>();
        ASSERT_NE(Help, nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowActive(Help));
    }

    void Click(const char* name) const { QTest::mouseClick(Button(name), Qt::LeftButton); }

    QPushButton* Button(const char* name) const { return Help->findChild<QPushButton*>(name); }

    std::string Page() const { return Help->Pages->source().fileName().toStdString(); }

    // Goes to the page's next link by the keyboard and follows it.
    void FollowLink(int number) const {
        for (int i = 0; i < number; ++i)
            QTest::keyClick(Help->Pages, Qt::Key_Tab);
        QTest::keyClick(Help->Pages, Qt::Key_Return);
    }

    QPointer<frmHelp> Help;
};

TEST_F(HelpWindow, ShowsTheManualsFirstPageBesideTheGame) {
    Open();
    EXPECT_EQ(Page(), "index.html");
    EXPECT_TRUE(Help->Pages->toPlainText().contains("Quillmere Mud Client"));
    EXPECT_TRUE(Help->Pages->hasFocus());
    EXPECT_FALSE(Help->isModal());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    Connect(); // one can play meanwhile
    EXPECT_TRUE(Help->isVisible());
}

TEST_F(HelpWindow, ShowsEveryPageWithText) {
    Open();
    for (const QUrl& page : Pages()) {
        Help->Pages->setSource(page);
        EXPECT_GT(Help->Pages->toPlainText().size(), 100) << page.fileName().toStdString();
        EXPECT_EQ(Help->Pages->source(), page);
    }
}

TEST_F(HelpWindow, ShowsEveryPageInItsWidth) {
    Open();
    for (const QUrl& page : Pages()) {
        Help->Pages->setSource(page);
        EXPECT_EQ(Help->Pages->horizontalScrollBar()->maximum(), 0)
            << page.fileName().toStdString();
    }
}

TEST_F(HelpWindow, KeepsTheColumnsOfTablesApart) {
    Open();
    int tables = 0;
    for (const QUrl& page : Pages()) {
        Help->Pages->setSource(page);
        for (QTextFrame* const frame : Help->Pages->document()->rootFrame()->childFrames()) {
            const auto* const table = qobject_cast<QTextTable*>(frame);
            if (table == nullptr)
                continue;
            const QTextTableCellFormat cell = table->cellAt(0, 0).format().toTableCellFormat();
            EXPECT_GE(cell.leftPadding(), 4) << page.fileName().toStdString();
            EXPECT_GE(cell.rightPadding(), 4) << page.fileName().toStdString();
            ++tables;
        }
    }
    EXPECT_GT(tables, 10);
}

TEST_F(HelpWindow, GoesBackAndForwardOverTheLinksThatWereFollowed) {
    Open();
    EXPECT_FALSE(Button("cmdBack")->isEnabled());
    EXPECT_FALSE(Button("cmdForward")->isEnabled());
    FollowLink(2);
    const std::string second = Page();
    ASSERT_NE(second, "index.html");
    Click("cmdBack");
    EXPECT_EQ(Page(), "index.html");
    EXPECT_FALSE(Button("cmdBack")->isEnabled());
    Click("cmdForward");
    EXPECT_EQ(Page(), second);
    Click("cmdContents");
    EXPECT_EQ(Page(), "index.html");
}

TEST_F(HelpWindow, LeavesTheWebToTheSystemsBrowser) {
    const forms::OpenedPages browser;
    Open();
    Help->Pages->setHtml("<a href='https://game.example/page'>a page of the web</a>");
    FollowLink(1);
    EXPECT_EQ(browser.Addresses, Boxes{"https://game.example/page"});
    EXPECT_EQ(Help->Pages->toPlainText(), "a page of the web");
}

TEST_F(HelpWindow, EscapeAndItsButtonCloseIt) {
    for (int round = 0; round < 2; ++round) {
        Open();
        if (round == 0)
            QTest::keyClick(Help->Pages, Qt::Key_Escape);
        else
            Click("cmdClose");
        EXPECT_TRUE(WaitFor([this] { return Help.isNull(); }));
    }
}

TEST_F(HelpWindow, IsOpenOnceAndComesToTheFrontWhenAskedForAgain) {
    Open();
    FollowLink(2);
    const std::string page = Page();
    const forms::Raises raises("frmHelp");
    const QPointer<frmHelp> first = Help;
    Open();
    EXPECT_EQ(Help, first);
    EXPECT_EQ(Page(), page);
    EXPECT_EQ(raises.Count, 1);
    const auto windows = QApplication::topLevelWidgets();
    EXPECT_EQ(std::count_if(windows.begin(), windows.end(),
                            [](QWidget* window) { return qobject_cast<frmHelp*>(window); }),
              1);
}

class AboutWindow : public forms::DialogTest {};

TEST_F(AboutWindow, NamesTheProgramItsVersionAndItsLibraries) {
    Open<frmAbout>("mnuAbout");
    const QString text = In<QLabel>("lblAbout")->text();
    for (const std::string& part :
         {std::string("Quillmere Mud Client"), "Version " + DottedVersion(kOwnVersion),
          std::string("licence"), "Qt " + std::string(qVersion()),
          "libcurl " + std::string(curl_version_info(CURLVERSION_NOW)->version)})
        EXPECT_TRUE(text.contains(QString::fromStdString(part))) << part;
    EXPECT_FALSE(text.contains("%"));
}

TEST_F(AboutWindow, ShowsItsTextWhole) {
    Open<frmAbout>("mnuAbout");
    const auto* const text = In<QLabel>("lblAbout");
    EXPECT_GE(text->height(), text->heightForWidth(text->width()));
}

TEST_F(AboutWindow, IsNoLargerThanTheScreenWhateverSizeWasKept) {
    SaveUserSetting("MwClient", "Dialogs", "frmAbout", "5000x5000");
    Open<frmAbout>("mnuAbout");
    EXPECT_EQ(Dialog->size(), Dialog->screen()->availableSize());
}

TEST_F(AboutWindow, LocksTheFrameUntilItIsClosed) {
    Open<frmAbout>("mnuAbout");
    EXPECT_EQ(QApplication::activeModalWidget(), Dialog);
    QTest::keyClick(Dialog, Qt::Key_Escape);
    EXPECT_TRUE(Closed());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(AboutWindow, TakesTheKeysFromTheFrameThatIsLocked) {
    Open<frmAbout>("mnuAbout");
    Frame->activateWindow();
    LetEventsRun();
    EXPECT_EQ(QApplication::activeWindow(), Dialog);
}

TEST_F(AboutWindow, LocksNothingButTheFrame) {
    Item("mnuGHlp")->trigger();
    const QPointer<frmHelp> manual = Window<frmHelp>();
    ASSERT_TRUE(WaitFor([&] { return manual->isVisible(); }));
    Open<frmAbout>("mnuAbout");
    QTest::keyClick(manual->windowHandle(), Qt::Key_Escape);
    EXPECT_TRUE(WaitFor([&] { return !manual || !manual->isVisible(); }));
}

TEST_F(AboutWindow, OkClosesIt) {
    Open<frmAbout>("mnuAbout");
    QTest::mouseClick(Dialog->findChild<QPushButton*>(), Qt::LeftButton);
    EXPECT_TRUE(Closed());
}

} // namespace
} // namespace mw
