#include "app/frmStartUp.h"

#include "app/frmMain.h"
#include "automation/MacroFiles.h"
#include "config/ClientConfig.h"
#include "forms/FormTest.h"
#include "forms/GameServer.h"
#include "forms/HttpTexts.h"
#include "forms/WebServer.h"
#include "net/http/frmUpdate.h"
#include "ui/SplashControls.h"

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QTextBlock>
#include <QTextDocument>

namespace mw {
namespace {

using forms::Boxes;
using forms::Files;
using forms::FilesIn;
using forms::WaitFor;
using forms::Window;

using Texts = std::vector<std::string>;

class FrmStartUpTest : public forms::FormTest {
protected:
    void Start() {
        StartProgram();
        Splash = Window<frmStartUp>();
        ASSERT_NE(Splash, nullptr);
        CountTicks();
    }

    // With timers that wait for nothing.
    void StartInAHurry() {
        Start();
        Splash->timerLoad.setInterval(0);
        Splash->timerFinished.setInterval(0);
    }

    void ShowSavingSplash() {
        SavingMode = true;
        ShowSplash();
        Splash = Window<frmStartUp>();
        ASSERT_NE(Splash, nullptr);
    }

    void CountTicks() {
        QObject::connect(&Splash->timerLoad, &QTimer::timeout, Splash, [this] {
            Statuses.push_back(Splash->lblStatus->text().toStdString());
            Dots.push_back(Splash->lblDots->text().toStdString());
        });
        QObject::connect(&Splash->timerFinished, &QTimer::timeout, Splash,
                         [this] { ++FinishedTicks; });
    }

    // The files of a client that was used before.
    void KeepGoodFiles() {
        PrepareFolders();
        MacroSets[0].Name = "Default";
        SaveMudList();
        SaveClientConfig();
        SaveAllMacroSets();
        ResetMacros();
    }

    void Keep(const std::string& name, const std::string& contents) const {
        std::ofstream(Folder.Path / name, std::ios::binary) << contents;
    }

    Files Kept() const { return FilesIn(Folder.Path); }

    // What a label looked like when it was painted last.
    class Painted : public QObject {
    public:
        explicit Painted(QLabel& label) { label.installEventFilter(this); }

        bool eventFilter(QObject* watched, QEvent* event) override {
            if (event->type() == QEvent::Paint) {
                const auto& label = static_cast<QLabel&>(*watched);
                Text = label.text().toStdString();
                Width = label.width();
            }
            return false;
        }

        std::string Text;
        int Width = 0;
    };

    static bool FrameShown() { return Window<frmMain>() != nullptr; }

    QPointer<frmStartUp> Splash;
    Texts Statuses; // after each tick that loads
    Texts Dots;
    int FinishedTicks = 0;
};

TEST_F(FrmStartUpTest, ShowsWhatIsGoingOn) {
    Start();
    EXPECT_EQ(Splash->lblLoading->text(), "Loading");
    for (const QLabel* const label : {Splash->lblDots, Splash->lblStatus, Splash->lblUpdateText,
                                      Splash->lblCurVersion, Splash->lblYourVersion})
        EXPECT_EQ(label->text(), "") << label->objectName().toStdString();
    EXPECT_TRUE(Splash->timerLoad.isActive());
    EXPECT_FALSE(Splash->timerFinished.isActive());
    EXPECT_EQ(Splash->timerLoad.interval(), 250);
    EXPECT_EQ(Splash->timerFinished.interval(), 500);
    EXPECT_TRUE(Folder.HasFolder("Data"));
    EXPECT_TRUE(Folder.HasFolder("Macros"));
}

struct TitleLine {
    const char* Text;
    QColor Colour;
    int Points;
};

TEST_F(FrmStartUpTest, ShowsWhatIsGoingOnBeforeItsWorkBegins) {
    Start();
    QLabel& status = *Splash->lblStatus;
    Painted painted(status);
    SetCaption(SplashLabel::lblStatus, "Checking for Updates");
    EXPECT_EQ(painted.Text, "Checking for Updates");
    EXPECT_GE(painted.Width, status.sizeHint().width());
}

TEST_F(FrmStartUpTest, BearsTheTitleInItsColoursAndSizes) {
    Start();
    const TitleLine lines[] = {
        {"Quill", QColor(0, 0, 160), 16},
        {"mere", QColor(140, 0, 140), 16},
        {"Mud Client", QColor(0, 0, 160), 12},
    };
    QTextDocument title;
    title.setHtml(Splash->rtbTitle->text());
    EXPECT_EQ(title.toPlainText(), "Quill\nmere\nMud Client");
    EXPECT_EQ(title.firstBlock().blockFormat().alignment(), Qt::AlignHCenter);
    for (const TitleLine& line : lines) {
        const QTextCharFormat format = title.find(line.Text).charFormat();
        EXPECT_EQ(format.foreground().color(), line.Colour) << line.Text;
        EXPECT_EQ(format.fontPointSize(), line.Points) << line.Text;
        EXPECT_EQ(format.fontFamilies().toStringList(), QStringList("Arial")) << line.Text;
    }
}

TEST_F(FrmStartUpTest, LoadsStageByStageAndOpensTheFrame) {
    QElapsedTimer clock;
    clock.start();
    Start();
    ASSERT_TRUE(WaitFor(FrameShown));
    EXPECT_GE(clock.elapsed(), 2600); // 2750 by timers that may be a little early
    EXPECT_EQ(Statuses, (Texts{"Mud List", "Client Configuration", "Macro Sets",
                               "Checking for Updates", "Completed"}));
    EXPECT_EQ(Dots, (Texts{".", "..", "...", "", ""}));
    EXPECT_EQ(FinishedTicks, 3);
    EXPECT_TRUE(WaitFor([this] { return Splash.isNull(); }));
    for (const char* file : {"Data/muds.lst", "Data/client.cfg", "Macros/Default.mco"})
        EXPECT_EQ(Kept().count(file), 1u) << file;
    EXPECT_EQ(Window<frmUpdate>(), nullptr);
    EXPECT_EQ(Closer.Texts, Boxes{});
}

TEST_F(FrmStartUpTest, OpensTheFrameWithWhatTheFilesHold) {
    KeepGoodFiles();
    MudEntry game;
    game.Name = "Northern Realms";
    Keep("Data/muds.lst", FormatMudList({game}));
    const Files before = Kept();
    StartInAHurry();
    ASSERT_TRUE(WaitFor(FrameShown));
    const auto* const frame = Window<frmMain>();
    ASSERT_EQ(frame->Chooser->count(), 2);
    EXPECT_EQ(frame->Chooser->itemText(0), "Quillmere");
    EXPECT_EQ(frame->Chooser->itemText(1), "Northern Realms");
    EXPECT_EQ(frame->windowTitle().toStdString(), FrameCaption());
    EXPECT_EQ(Kept(), before);
}

TEST_F(FrmStartUpTest, StaysLongerWithANewerVersionAndThePromptStaysInFront) {
    const forms::WebServer server(forms::Whole("99.5"));
    const forms::MakersSite site(server.Root());
    StartInAHurry();
    bool announced = false;
    QObject::connect(&Splash->timerFinished, &QTimer::timeout, Splash,
                     [&] { announced = Splash->lblCurVersion->text() == "Current Version 99.5"; });
    ASSERT_TRUE(WaitFor(FrameShown));
    EXPECT_TRUE(announced);
    EXPECT_EQ(FinishedTicks, 11);
    const auto* const prompt = Window<frmUpdate>();
    ASSERT_NE(prompt, nullptr);
    EXPECT_EQ(prompt->lblCurVersion->text(), "Current Version 99.5");
    EXPECT_FALSE(prompt->isModal());
}

TEST_F(FrmStartUpTest, ConnectsAtOnceWhenThatWasAskedFor) {
    forms::GameServer game;
    ConnectAtStart = "127.0.0.1:" + std::to_string(game.Port());
    StartInAHurry();
    ASSERT_TRUE(game.HasVisitor());
    EXPECT_EQ(MudList.back().Name, "127.0.0.1");
    EXPECT_EQ(Window<frmMain>()->Chooser->currentText(), "127.0.0.1");
    EXPECT_EQ(Closer.Texts, Boxes{});
}

TEST_F(FrmStartUpTest, DoesNotConnectFromAFrameThatIsToldToStopAtOnce) {
    ConnectAtStart = "Nowhere";
    MudList.push_back({"Quillmere", "127.0.0.1", 1234});
    ShowFrame();
    UnloadFrame();
    QCoreApplication::processEvents();
    EXPECT_EQ(Closer.Texts, Boxes{});
}

TEST_F(FrmStartUpTest, SaysSoWhenTheGameAskedForIsNone) {
    ConnectAtStart = "Nowhere";
    StartInAHurry();
    ASSERT_TRUE(WaitFor([this] { return !Closer.Texts.empty(); }));
    EXPECT_EQ(Closer.Texts, Boxes{"There is no game called \"Nowhere\", and it is not of the form "
                                  "HOST:PORT."});
    EXPECT_TRUE(FrameShown());
}

struct Malformed {
    const char* Name;
    const char* File;
    std::string Contents;
    Boxes Messages;
};

void PrintTo(const Malformed& row, std::ostream* out) { *out << row.Name; }

class MalformedFiles : public FrmStartUpTest, public testing::WithParamInterface<Malformed> {};

TEST_P(MalformedFiles, EndTheProgramWithStatusOneAndNothingWritten) {
    KeepGoodFiles();
    Keep(GetParam().File, GetParam().Contents);
    const Files before = Kept();
    StartInAHurry();
    EXPECT_EQ(RunProgram(), 1);
    EXPECT_EQ(Closer.Texts, GetParam().Messages);
    EXPECT_EQ(Kept(), before);
    EXPECT_FALSE(QFile::exists(forms::RegistryFile()));
    EXPECT_FALSE(FrameShown());
    EXPECT_FALSE(SavingMode);
}

// A list of one game with that port, and with what follows its record.
std::string ListOfOne(const std::string& port, const std::string& rest = "[End]\r\n") {
    return "[Mud]\r\nMud=A\r\nAddy=a\r\nPort=" + port +
           "\r\nSndD=False\r\nSndM=False\r\nMsp=False\r\nSndW=False\r\n" + rest;
}

const Malformed kMalformed[] = {
    {"AListOfSomethingElse",
     "Data/muds.lst",
     "nonsense\r\n[End]\r\n",
     {"An error has occured loading the mud list", "nonsense"}},
    {"AnEmptyLineInTheList",
     "Data/muds.lst",
     ListOfOne("1", "\r\n[End]\r\n"),
     {"An error has occured loading the mud list", ""}},
    {"APortBeyondSixteenBits", "Data/muds.lst", ListOfOne("99999"), {"Run-time error 6: Overflow"}},
    {"APortThatIsNone", "Data/muds.lst", ListOfOne("x"), {"Run-time error 13: Type mismatch"}},
    {"ARecordCutOff",
     "Data/muds.lst",
     "[Mud]\r\nMud=A\r\nAddy=a\r\nPort=1\r\n",
     {"Run-time error 62: Input past end of file"}},
    {"AnEmptyList", "Data/muds.lst", "", {"Run-time error 62: Input past end of file"}},
    {"ConfigurationColours",
     "Data/client.cfg",
     "[Colours]\r\nnonsense\r\n[END]\r\n",
     {"An Error has occured loading the configuration file", "nonsense"}},
    {"ConfigurationEscape",
     "Data/client.cfg",
     "[Config]\r\nnonsense\r\n[END]\r\n",
     {"And error as occured loading the configuration file", "nonsense"}},
    {"AMacroSet",
     "Macros/Default.mco",
     "nonsense\r\n[End]\r\n",
     {"An error has occured in loading a macroset", "Macroset Default", "Curreadline nonsense"}},
};

INSTANTIATE_TEST_SUITE_P(StartUp, MalformedFiles, testing::ValuesIn(kMalformed),
                         [](const auto& row) { return row.param.Name; });

// The places of the three files, when no file is there.
class OddPlaces : public FrmStartUpTest, public testing::WithParamInterface<const char*> {
protected:
    OddPlaces() {
        KeepGoodFiles();
        std::filesystem::remove(Place());
        ::alarm(60); // for a start that waits for ever
    }

    ~OddPlaces() override { ::alarm(0); }

    std::filesystem::path Place() const { return Folder.Path / GetParam(); }

    void ExpectRefusal(const std::string& message) {
        StartInAHurry();
        EXPECT_EQ(RunProgram(), 1);
        EXPECT_EQ(Closer.Texts, Boxes{message});
        EXPECT_FALSE(FrameShown());
    }
};

TEST_P(OddPlaces, OfAFolderEndTheProgramAndKeepIt) {
    std::filesystem::create_directory(Place());
    ExpectRefusal("Run-time error 75: Path/File access error");
    EXPECT_TRUE(std::filesystem::is_directory(Place()));
}

TEST_P(OddPlaces, OfAPipeEndTheProgramAndKeepIt) {
    ASSERT_EQ(::mkfifo(Place().c_str(), 0600), 0);
    ExpectRefusal("Run-time error 75: Path/File access error");
    EXPECT_TRUE(std::filesystem::is_fifo(Place()));
}

TEST_P(OddPlaces, OfALinkToNowhereEndTheProgramAndKeepIt) {
    std::filesystem::create_symlink("nowhere", Place());
    ExpectRefusal("Run-time error 53: File not found");
    EXPECT_TRUE(std::filesystem::is_symlink(Place()));
}

TEST_P(OddPlaces, OfAFileThatIsTooLargeEndTheProgramAndKeepIt) {
    Keep(GetParam(), "");
    std::filesystem::resize_file(Place(), kLargestFile + 1);
    ExpectRefusal("Run-time error 75: Path/File access error");
    EXPECT_EQ(std::filesystem::file_size(Place()), kLargestFile + 1);
}

INSTANTIATE_TEST_SUITE_P(StartUp, OddPlaces,
                         testing::Values("Data/muds.lst", "Data/client.cfg", "Macros/Default.mco"),
                         [](const auto& row) {
                             return row.index == 0   ? "Games"
                                    : row.index == 1 ? "Configuration"
                                                     : "Macros";
                         });

TEST_F(FrmStartUpTest, ShowsTheBeginningOfALineOfTenMegabytes) {
    KeepGoodFiles();
    Keep("Data/muds.lst", std::string(10'000'000, 'x') + "\r\n[End]\r\n");
    StartInAHurry();
    EXPECT_EQ(RunProgram(), 1);
    ASSERT_EQ(Closer.Texts.size(), 2u);
    EXPECT_EQ(Closer.Texts[0], "An error has occured loading the mud list");
    EXPECT_TRUE(Closer.Texts[1].starts_with(std::string(500, 'x')) &&
                Closer.Texts[1].ends_with("x..."))
        << Closer.Texts[1];
}

TEST_F(FrmStartUpTest, NoFurtherStageRunsWhileAMessageIsOpen) {
    KeepGoodFiles();
    Keep("Data/muds.lst", "nonsense\r\n[End]\r\n");
    StartInAHurry();
    QElapsedTimer open;
    Closer.MayClose = [&] {
        if (!open.isValid())
            open.start();
        return open.elapsed() > 50;
    };
    EXPECT_EQ(RunProgram(), 1);
    EXPECT_EQ(Closer.Texts.size(), 2u);
    EXPECT_EQ(mw::Splash.stage, 2);
    EXPECT_EQ(Splash->lblStatus->text(), "Mud List");
}

TEST_F(FrmStartUpTest, ClosedWhileItLoadsItEndsTheProgramAndSavesNothing) {
    Start();
    const Files before = Kept();
    QTimer::singleShot(0, Splash, &QWidget::close);
    EXPECT_EQ(RunProgram(), 0);
    EXPECT_EQ(Kept(), before);
    EXPECT_FALSE(QFile::exists(forms::RegistryFile()));
    EXPECT_EQ(Statuses, Texts{});
}

TEST_F(FrmStartUpTest, ClosedByTheWindowSystemAfterLoadingItSavesNothingEither) {
    StartInAHurry();
    Splash->timerFinished.setInterval(60'000);
    ASSERT_TRUE(WaitFor([this] { return Splash->timerFinished.isActive(); }));
    MudList[0].Name = "Changed";
    const Files before = Kept();
    QTimer::singleShot(0, Splash, [this] {
        QCloseEvent close;
        QCoreApplication::sendEvent(Splash->windowHandle(), &close);
    });
    EXPECT_EQ(RunProgram(), 0);
    EXPECT_EQ(Kept(), before);
    EXPECT_FALSE(FrameShown());
}

TEST_F(FrmStartUpTest, SavingItCannotBeClosed) {
    ShowSavingSplash();
    EXPECT_EQ(Splash->lblLoading->text(), "Saving");
    EXPECT_FALSE(Splash->close());
    QCloseEvent close;
    QCoreApplication::sendEvent(Splash->windowHandle(), &close);
    EXPECT_TRUE(Splash->isVisible());
    EXPECT_TRUE(Splash->timerLoad.isActive());
}

TEST_F(FrmStartUpTest, SavingItWritesStageByStageAndEndsTheProgram) {
    PrepareFolders();
    MacroSets[0].Name = "Default";
    ShowSavingSplash();
    Splash->timerLoad.setInterval(0);
    Splash->timerFinished.setInterval(0);
    CountTicks();
    EXPECT_EQ(RunProgram(), 0);
    EXPECT_EQ(Statuses, (Texts{"Mud List", "Client Configuration", "Macro Sets", "Completed"}));
    EXPECT_EQ(Dots, (Texts{".", "..", "...", "...."}));
    EXPECT_EQ(Splash->lblLoading->text(), "Saving");
    EXPECT_EQ(Folder.ContentOf("Data/muds.lst"), FormatMudList(MudList));
    for (const char* file : {"Data/client.cfg", "Macros/Default.mco"})
        EXPECT_NE(Folder.ContentOf(file), "") << file;
    EXPECT_EQ(FinishedTicks, 1);
    EXPECT_TRUE(Splash->isVisible()) << "it stays until the program has gone";
}

TEST_F(FrmStartUpTest, HasRoomForItsTextsInALargeFont) {
    const QFont before = QApplication::font();
    for (const int points : {11, 14, 20}) {
        QFont font = before;
        font.setPointSize(points);
        QApplication::setFont(font);
        ShowSavingSplash();
        for (const auto& [label, text] :
             {std::pair{SplashLabel::lblUpdateText,
                        "There is a new version of the client available"},
              {SplashLabel::lblStatus, "Checking for Updates"}})
            SetCaption(label, text);
        for (const QLabel* const label : {Splash->lblUpdateText, Splash->lblStatus})
            EXPECT_GE(label->width(), label->sizeHint().width()) << points;
        delete Splash;
    }
    QApplication::setFont(before);
}

TEST_F(FrmStartUpTest, ALongStatusDoesNotWidenIt) {
    Start();
    const QSize size = Splash->size();
    SetCaption(SplashLabel::lblUpdateText, std::string(1000, 'w'));
    LetEventsRun();
    EXPECT_EQ(Splash->size(), size);
}

TEST_F(FrmStartUpTest, WithoutASplashItsControlsDoNothing) {
    SetCaption(SplashLabel::lblStatus, "text");
    SetEnabled(SplashTimer::timerLoad, true);
    UnloadSplash();
    EXPECT_EQ(Window<frmStartUp>(), nullptr);
}

} // namespace
} // namespace mw
