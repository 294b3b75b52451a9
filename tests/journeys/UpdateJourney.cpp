// A newer version is announced: the prompt beside the start, the answer kept, the web site opened.
#include "Journey.h"
#include "Site.h"
#include "Wait.h"
#include "World.h"

#include <QFile>
#include <QHostAddress>
#include <QNetworkProxy>
#include <QSettings>
#include <QTcpServer>

namespace journey {
namespace {

constexpr const char* kPrompt = "^New Version$";

class Update : public Journey {
protected:
    Update() {
        Player.Set("QUILLMERE_WEB_ROOT", Town.WebRoot);
        Player.Set("QTWEBENGINE_DISABLE_SANDBOX", "1");
    }

    QString Kept(const QString& key) const {
        const QSettings settings(Player.Folder.filePath("config/Quillmere/MwClient.conf"),
                                 QSettings::IniFormat);
        return settings.value("Update/" + key).toString();
    }

    void WaitForPromptOverSplash() const {
        WaitFor("the prompt over the splash",
                [this] { return !Player.Windows(kPrompt).isEmpty() && Player.ShowsSplash(); });
    }

    void Answer(const QStringList& keys) {
        Player.TakeKeys(kPrompt);
        Player.Press(keys);
        Player.WaitToClose(kPrompt);
    }

    void Stop() {
        Player.TakeKeys(Client::kFrame);
        Exit();
    }

    World Town{"9.5"};
};

TEST_F(Update, LeadsToTheWebSiteAndIsAnnouncedAgainAtTheNextStart) {
    Player.Launch();
    WaitForPromptOverSplash();
    Player.TakeKeys(kPrompt);
    Moment("1-prompt");
    Player.WaitForFrame();
    Moment("2-frame");
    EXPECT_EQ(Kept("Version"), "");
    Answer({"alt+d", "alt+y"}); // don't show again, yes
    WaitToSeeSite(Player, Screen);
    Moment("3-site");
    EXPECT_EQ(Kept("Version"), "9.5");
    EXPECT_EQ(Kept("Check"), "0");
    CloseSite(Player);
    Stop();

    Player.Launch(); // meant: whatever was ticked
    WaitFor("the prompt again", [this] { return !Player.Windows(kPrompt).isEmpty(); });
}

TEST_F(Update, IsAnsweredWithNoWhileTheStartGoesOn) {
    Player.Launch();
    WaitForPromptOverSplash();
    Answer({"alt+n"});
    WaitFor("the answer to be kept",
            [this] { return Kept("Version") == "9.5" && Kept("Check") == "1"; });
    Player.WaitForFrame();
    EXPECT_TRUE(Player.Windows(kPrompt).isEmpty());
    EXPECT_TRUE(Player.Windows(kSite).isEmpty());
    Stop();
}

TEST_F(Update, LeftUnansweredDoesNotHoldUpTheStop) {
    Player.Launch();
    Player.WaitForFrame();
    Player.Process.terminate();
    EXPECT_EQ(Player.WaitForEnd(), 0);
    EXPECT_EQ(Kept("Version"), "");
    EXPECT_TRUE(Player.Windows(kSite).isEmpty());
}

struct Page {
    const char* Name;
    const char* Published;
};

void PrintTo(const Page& row, std::ostream* out) { *out << row.Name; }

class NoUpdate : public Journey, public ::testing::WithParamInterface<Page> {};

TEST_P(NoUpdate, StartsWithoutAPrompt) {
    World town{GetParam().Published};
    Player.Set("QUILLMERE_WEB_ROOT", town.WebRoot);
    Player.Launch();
    Player.WaitForFrame();
    EXPECT_TRUE(Player.Windows(kPrompt).isEmpty());
    EXPECT_TRUE(Player.Boxes().isEmpty());
}

const Page kPages[] = {{"TheSameVersion", "1.0"}, {"NoNumber", "<html>9.5</html>"}};

INSTANTIATE_TEST_SUITE_P(Rows, NoUpdate, ::testing::ValuesIn(kPages),
                         [](const auto& row) { return row.param.Name; });

TEST_F(Update, OfAServerThatNeverAnswersIsNotWaitedForLong) {
    QTcpServer mute;
    mute.setProxy(QNetworkProxy::NoProxy);
    ASSERT_TRUE(mute.listen(QHostAddress::LocalHost));
    Player.Set("QUILLMERE_WEB_ROOT", QStringLiteral("http://127.0.0.1:%1").arg(mute.serverPort()));
    Player.Launch();
    WaitFor("the client to ask", [&mute] { return mute.hasPendingConnections(); });
    Player.WaitForFrame();
    EXPECT_TRUE(Player.Windows(kPrompt).isEmpty());
    Stop();
}

TEST_F(Update, OfAHostThatIsLookedUpForLongIsNotWaitedForLong) {
    Player.HoldLookups();
    Player.Set("QUILLMERE_WEB_ROOT", "http://held.test");
    Player.Start();
    EXPECT_TRUE(Player.Windows(kPrompt).isEmpty());
    Stop();
    EXPECT_TRUE(QFile::exists(Player.HeldLookup())) << "the start or the stop waited for it";
}

} // namespace
} // namespace journey
