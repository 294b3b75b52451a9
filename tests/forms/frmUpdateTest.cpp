#include "net/http/frmUpdate.h"

#include "app/frmStartUp.h"
#include "base/Version.h"
#include "forms/FormTest.h"
#include "forms/GameServer.h"
#include "forms/HttpTexts.h"
#include "forms/OpenedPages.h"
#include "forms/WebServer.h"
#include "ui/SplashControls.h"
#include "ui/UpdateControls.h"

namespace mw {
namespace {

using forms::Boxes;
using forms::MakersSite;
using forms::WaitFor;
using forms::WebServer;
using forms::Whole;
using forms::Window;

class FrmUpdateTest : public forms::FormTest {
protected:
    // Runs the check against a site that publishes that text.
    void Check(const std::string& published, const Version& own = {1, 2, 5}) {
        const WebServer server(Whole(published));
        const MakersSite site(server.Root());
        CheckForUpdate(own);
        EXPECT_EQ(server.Paths(), Boxes{"/client/clientver.txt"});
        Prompt = Window<frmUpdate>();
    }

    void Announce() {
        Check("1.26");
        ASSERT_NE(Prompt, nullptr);
    }

    std::string Text(const char* label) const {
        return Prompt->findChild<QLabel*>(label)->text().toStdString();
    }

    void Click(QAbstractButton* button) const {
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
    }

    bool Closed() const {
        return WaitFor([this] { return Prompt.isNull(); });
    }

    static std::string Kept(const char* key) {
        return GetUserSetting("MwClient", "Update", key, "nothing");
    }

    QPointer<frmUpdate> Prompt;
};

TEST_F(FrmUpdateTest, ShowsBothVersionsWhenItIsLoaded) {
    PublishedVersion = "1.26";
    LoadUpdatePrompt();
    EXPECT_EQ(Window<frmUpdate>(), nullptr) << "loading shows nothing";
    ShowUpdatePrompt();
    Prompt = Window<frmUpdate>();
    ASSERT_NE(Prompt, nullptr);
    EXPECT_EQ(Text("lblYourVersion"), DottedVersion(kOwnVersion));
    EXPECT_EQ(Text("lblCurVersion"), "1.26");
    EXPECT_EQ(Text("lblCurVer"), "");
}

TEST_F(FrmUpdateTest, AnnouncesANewerVersion) {
    Announce();
    EXPECT_TRUE(updateAvailable);
    EXPECT_EQ(Text("lblCurVer"), "There is a new version of the client available");
    EXPECT_EQ(Text("lblCurVersion"), "Current Version 1.26");
    EXPECT_EQ(Text("lblYourVersion"), "Your Version 1.25");
    EXPECT_EQ(Prompt->chkShow->text(), "&Dont show me this again");
    EXPECT_FALSE(Prompt->chkShow->isChecked());
    EXPECT_EQ(Prompt->cmdYes->text(), "&Yes");
    EXPECT_EQ(Prompt->cmdNo->text(), "&No");
    EXPECT_EQ(Closer.Texts, Boxes{});
}

TEST_F(FrmUpdateTest, TheSplashSaysTheSame) {
    ShowSplash();
    const auto* const splash = Window<frmStartUp>();
    ASSERT_NE(splash, nullptr);
    Announce();
    EXPECT_EQ(splash->lblUpdateText->text(), "There is a new version of the client available");
    EXPECT_EQ(splash->lblCurVersion->text(), "Current Version 1.26");
    EXPECT_EQ(splash->lblYourVersion->text(), "Your Version 1.25");
}

struct Quiet {
    const char* Name;
    const char* Published;
};

void PrintTo(const Quiet& row, std::ostream* out) { *out << row.Name; }

class QuietChecks : public FrmUpdateTest, public testing::WithParamInterface<Quiet> {};

TEST_P(QuietChecks, ShowNothing) {
    ShowSplash();
    Check(GetParam().Published);
    EXPECT_EQ(Prompt, nullptr);
    EXPECT_FALSE(updateAvailable);
    EXPECT_EQ(Window<frmStartUp>()->lblUpdateText->text(), "");
    EXPECT_EQ(Closer.Texts, Boxes{});
}

const Quiet kQuiet[] = {
    {"Equal", "1.25"},
    {"Older", "1.24"},
    {"Empty", ""},
    {"NoNumber", "soon"},
    {"Page", "<html>"},
    {"TwoPoints", "9.9.9"},
    {"Signed", "+9"},
    {"Exponent", "9e9"},
    {"Endless", "99999999999999999999999999999999999999999"},
    {"Hexadecimal", "0x99"},
    {"Comma", "9,9"},
    {"TwoLines", "9\r\n9"},
};

INSTANTIATE_TEST_SUITE_P(Update, QuietChecks, testing::ValuesIn(kQuiet),
                         [](const auto& row) { return row.param.Name; });

TEST_F(FrmUpdateTest, AWhiteEndOfTheFileMakesNoDifference) {
    Check("1.26 \r\n");
    ASSERT_NE(Prompt, nullptr);
    EXPECT_EQ(Text("lblCurVersion"), "Current Version 1.26");
}

TEST_F(FrmUpdateTest, AnErrorOfTheServerShowsNothing) {
    const WebServer server("HTTP/1.1 404 Not Found\r\nContent-Length: 3\r\n\r\n9.9");
    const MakersSite site(server.Root());
    CheckForUpdate();
    EXPECT_EQ(server.Paths().size(), 1u);
    EXPECT_EQ(Window<frmUpdate>(), nullptr);
}

TEST_F(FrmUpdateTest, NoServerShowsNothing) {
    CheckForUpdate();
    EXPECT_EQ(Window<frmUpdate>(), nullptr);
    EXPECT_EQ(Closer.Texts, Boxes{});
}

TEST_F(FrmUpdateTest, LocksNothing) {
    Announce();
    EXPECT_FALSE(Prompt->isModal());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(Prompt->parentWidget(), nullptr);
}

TEST_F(FrmUpdateTest, ComesToTheTopWhenItIsShownAndWhenItGoes) {
    const forms::Raises raises("frmUpdate");
    Announce();
    const int shown = raises.Count;
    EXPECT_GE(shown, 1);
    Prompt->close();
    EXPECT_EQ(raises.Count, shown + 1);
}

struct Given {
    const char* Name;
    bool Yes;
    bool Ticked;
    const char* Check;
};

void PrintTo(const Given& row, std::ostream* out) { *out << row.Name; }

class UpdateAnswers : public FrmUpdateTest, public testing::WithParamInterface<Given> {};

TEST_P(UpdateAnswers, AreKeptAndLeadToTheSiteOnlyWithYes) {
    const forms::OpenedPages browser;
    Announce();
    if (GetParam().Ticked)
        Click(Prompt->chkShow);
    Click(GetParam().Yes ? Prompt->cmdYes : Prompt->cmdNo);
    EXPECT_TRUE(Closed());
    EXPECT_EQ(Kept("Version"), "1.26");
    EXPECT_EQ(Kept("Check"), GetParam().Check);
    EXPECT_EQ(browser.Addresses,
              GetParam().Yes ? Boxes{"http://127.0.0.1:1"} : Boxes{}); // the site of these tests
    EXPECT_FALSE(QFile::exists(forms::RegistryFile()));
}

const Given kAnswers[] = {
    {"Yes", true, false, "1"},
    {"YesAndNotAgain", true, true, "0"},
    {"No", false, false, "1"},
    {"NoAndNotAgain", false, true, "0"},
};

INSTANTIATE_TEST_SUITE_P(Update, UpdateAnswers, testing::ValuesIn(kAnswers),
                         [](const auto& row) { return row.param.Name; });

TEST_F(FrmUpdateTest, IsShownAgainAtTheNextStartWhateverWasAnsweredOnPurpose) {
    Announce();
    Click(Prompt->chkShow);
    Click(Prompt->cmdNo);
    ASSERT_TRUE(Closed());
    ASSERT_EQ(Kept("Check"), "0");
    Announce();
    EXPECT_FALSE(Prompt->chkShow->isChecked());
}

TEST_F(FrmUpdateTest, ClosedWithoutAnAnswerItKeepsNothing) {
    const forms::OpenedPages browser;
    for (const bool byKey : {true, false}) {
        Announce();
        Click(Prompt->chkShow);
        if (byKey)
            QTest::keyClick(Prompt, Qt::Key_Escape);
        else
            Prompt->close();
        EXPECT_TRUE(Closed());
        EXPECT_EQ(Kept("Version"), "nothing");
        EXPECT_EQ(Kept("Check"), "nothing");
    }
    EXPECT_EQ(browser.Addresses, Boxes{});
}

TEST_F(FrmUpdateTest, EnterSaysYes) {
    const forms::OpenedPages browser;
    Announce();
    EXPECT_EQ(Prompt->focusWidget(), Prompt->cmdYes);
    QTest::keyClick(Prompt, Qt::Key_Return);
    EXPECT_TRUE(Closed());
    EXPECT_EQ(browser.Addresses.size(), 1u);
}

TEST_F(FrmUpdateTest, EnterOnNoSaysNo) {
    const forms::OpenedPages browser;
    Announce();
    Prompt->cmdNo->setFocus();
    QTest::keyClick(Prompt->cmdNo, Qt::Key_Return);
    EXPECT_TRUE(Closed());
    EXPECT_EQ(browser.Addresses.size(), 0u);
}

TEST_F(FrmUpdateTest, AnAnswerKeepsTheVersionThatWasPublishedThen) {
    Check("2");
    ASSERT_NE(Prompt, nullptr);
    Click(Prompt->cmdNo);
    EXPECT_EQ(Kept("Version"), "2");
    ASSERT_TRUE(Closed());
    Check("3.10");
    ASSERT_NE(Prompt, nullptr);
    Click(Prompt->cmdNo);
    EXPECT_EQ(Kept("Version"), "3.1");
}

TEST_F(FrmUpdateTest, WithoutAPromptItsControlsDoNothing) {
    SetCaption(UpdateLabel::lblCurVer, "text");
    ShowUpdatePrompt();
    EXPECT_EQ(Window<frmUpdate>(), nullptr);
}

} // namespace
} // namespace mw
