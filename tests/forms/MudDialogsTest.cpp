#include "config/MudChooser.h"
#include "config/frmAddMud.h"
#include "config/frmConnect.h"
#include "forms/DialogTest.h"

#include <QClipboard>
#include <QLabel>

namespace mw {
namespace {

using forms::Boxes;
using forms::Files;
using forms::FilesIn;
using forms::WaitFor;

using Names = std::vector<std::string>;

Names NamesIn(const QComboBox* chooser) {
    Names names;
    for (int i = 0; i < chooser->count(); ++i)
        names.push_back(chooser->itemText(i).toStdString());
    return names;
}

class MudDialog : public forms::DialogTest {
protected:
    MudDialog() {
        PrepareFolders();
        AddToList("Northern Realms", "192.0.2.10", 4000);
        AddToList("Third", "third.example", -5);
        ShowFrame();
    }

    static void AddToList(const std::string& name, const std::string& address, std::int16_t port) {
        MudList.push_back({name, address, port});
    }

    std::string ListFile() const { return Folder.ContentOf("Data/muds.lst"); }
};

class AddDialog : public MudDialog {
protected:
    void OpenIt() {
        QTest::mouseClick(Frame->cmdNew, Qt::LeftButton);
        TakeOver<frmAddMud>();
    }

    QLineEdit* Box(const char* name) const { return In<QLineEdit>(name); }

    void Fill(const QString& name, const QString& address, const QString& port) const {
        TypeInto(Box("txtmName"), name);
        TypeInto(Box("txtmAddress"), address);
        TypeInto(Box("txtmPort"), port);
    }

    void Add(const QString& name, const QString& address, const QString& port) const {
        Fill(name, address, port);
        Click("cmdmAdd");
    }

    // Nothing was added, and the dialog waits with what was typed.
    void ExpectRefused(const std::string& message) const {
        EXPECT_EQ(Closer.Texts, Boxes{message});
        ASSERT_FALSE(Dialog.isNull());
        EXPECT_TRUE(Dialog->isVisible());
        EXPECT_EQ(MudList.size(), 3u);
        EXPECT_EQ(Frame->Chooser->count(), 3);
        EXPECT_EQ(FilesIn(Folder.Path), Before);
    }

    Files Before = FilesIn(Folder.Path);
};

struct Refused {
    const char* Name;
    const char* Texts[3]; // name, address, port
    const char* Message;
};

void PrintTo(const Refused& row, std::ostream* out) { *out << row.Name; }

class Refusals : public AddDialog, public testing::WithParamInterface<Refused> {};

TEST_P(Refusals, LeaveTheDialogOpenAndTheListAlone) {
    const auto& [name, address, port] = GetParam().Texts;
    OpenIt();
    bool wasOpen = false;
    Closer.MayClose = [&] {
        wasOpen = Dialog->isVisible();
        return true;
    };
    Add(name, address, port);
    EXPECT_TRUE(wasOpen);
    ExpectRefused(GetParam().Message);
    EXPECT_EQ(Box("txtmName")->text(), name);
    EXPECT_EQ(Box("txtmAddress")->text(), address);
    EXPECT_EQ(Box("txtmPort")->text(), port);
}

const Refused kRefusals[] = {
    {"NothingAtAll", {"", "", ""}, "Mud name invalid"},
    {"TheNameComesFirst", {" ", "", "x"}, "Mud name invalid"},
    {"ANameOfOneBlank", {" ", "a.example", "4000"}, "Mud name invalid"},
    {"NoAddress", {"New", "", "4000"}, "Mud Address Invalid"},
    {"AnAddressOfOneBlank", {"New", " ", "4000"}, "Mud Address Invalid"},
    {"TheAddressBeforeThePort", {"New", "", "x"}, "Mud Address Invalid"},
    {"NoPort", {"New", "a.example", ""}, "Mud Port Invalid"},
    {"APortOfOneBlank", {"New", "a.example", " "}, "Mud Port Invalid"},
    {"APortOfTwoBlanksIsNoNumber", {"New", "a.example", "  "}, "Port Not Valid"},
    {"APortWithALetter", {"New", "a.example", "40a0"}, "Port Not Valid"},
    {"APortInWords", {"New", "a.example", "telnet"}, "Port Not Valid"},
    {"TooGreatAPort", {"New", "a.example", "99999"}, "Run-time error 6: Overflow"},
    {"OneTooGreat", {"New", "a.example", "32768"}, "Run-time error 6: Overflow"},
    {"OneTooSmall", {"New", "a.example", "-32769"}, "Run-time error 6: Overflow"},
    {"APortBeyondAnyNumber", {"New", "a.example", "1e999"}, "Run-time error 6: Overflow"},
};

INSTANTIATE_TEST_SUITE_P(AddMud, Refusals, testing::ValuesIn(kRefusals),
                         [](const auto& row) { return row.param.Name; });

TEST_F(AddDialog, AfterARefusalTheTextCanBePutRight) {
    OpenIt();
    Add("New", "a.example", "40a0");
    Box("txtmPort")->clear();
    TypeInto(Box("txtmPort"), "400");
    Click("cmdmAdd");
    EXPECT_TRUE(Closed());
    EXPECT_EQ(MudList.back().Port, 400);
}

TEST_F(AddDialog, AddsAGameWithItsFolderAndWritesTheList) {
    OpenIt();
    Add("New Game", "new.example", "4001");
    EXPECT_TRUE(Closed());
    MudEntry expected;
    expected.Name = "New Game";
    expected.Address = "new.example";
    expected.Port = 4001;
    ASSERT_EQ(MudList.size(), 4u);
    EXPECT_TRUE(MudList[3] == expected);
    EXPECT_EQ(NamesIn(Frame->Chooser), (Names{"Testmere", "Northern Realms", "Third", "New Game"}));
    EXPECT_EQ(ListFile(), FormatMudList(MudList));
    EXPECT_TRUE(Folder.HasFolder("New Game/sounds"));
    EXPECT_EQ(Closer.Texts, Boxes{});
}

TEST_F(AddDialog, TheGameThatWasChosenStaysTheCurrentOne) {
    cboMud_Click(1);
    OpenIt();
    Add("New", "new.example", "4001");
    EXPECT_TRUE(Closed());
    EXPECT_EQ(CurrentMud, 1);
    EXPECT_EQ(Frame->Chooser->currentIndex(), 1);
    EXPECT_EQ(Frame->lblAddress->text(), "192.0.2.10");
}

struct Port {
    const char* Name;
    const char* Text;
    int Number;
};

void PrintTo(const Port& row, std::ostream* out) { *out << row.Name; }

class Ports : public AddDialog, public testing::WithParamInterface<Port> {};

TEST_P(Ports, AreTakenAsNumbers) {
    OpenIt();
    Add("New", "a.example", GetParam().Text);
    EXPECT_TRUE(Closed());
    EXPECT_EQ(MudList.back().Port, GetParam().Number);
    EXPECT_EQ(Closer.Texts, Boxes{});
}

const Port kPorts[] = {
    {"Plain", "23", 23},           {"Greatest", "32767", 32767}, {"Smallest", "-32768", -32768},
    {"ZeroIsStored", "0", 0},      {"Hexadecimal", "&H50", 80},  {"WithAPoint", "23.0", 23},
    {"InBlanks", "  4000 ", 4000},
};

INSTANTIATE_TEST_SUITE_P(AddMud, Ports, testing::ValuesIn(kPorts),
                         [](const auto& row) { return row.param.Name; });

TEST_F(AddDialog, EnterOnCancelAddsNothing) {
    OpenIt();
    Fill("Fourth", "fourth.example", "1");
    Button("cmdCancel")->setFocus();
    QTest::keyClick(Button("cmdCancel"), Qt::Key_Return);
    EXPECT_TRUE(Closed());
    EXPECT_EQ(MudList.size(), 3u);
}

TEST_F(AddDialog, EnterAdds) {
    for (const char* box : {"txtmName", "txtmAddress", "txtmPort"}) {
        const std::size_t count = MudList.size();
        OpenIt();
        Fill("New", "a.example", "1");
        Box(box)->setFocus();
        QTest::keyClick(Box(box), Qt::Key_Return);
        EXPECT_TRUE(Closed());
        EXPECT_EQ(MudList.size(), count + 1) << box;
    }
}

TEST_F(AddDialog, EscapeAndCancelDropWhatWasTyped) {
    for (const bool byKey : {true, false}) {
        OpenIt();
        Fill("New", "a.example", "1");
        if (byKey)
            QTest::keyClick(Box("txtmPort"), Qt::Key_Escape);
        else
            Click("cmdCancel");
        EXPECT_TRUE(Closed());
        EXPECT_EQ(MudList.size(), 3u);
        EXPECT_EQ(FilesIn(Folder.Path), Before);
    }
}

// A break in one of these texts would make the file unreadable at the next start.
TEST_F(AddDialog, PastedBreaksBecomeBlanks) {
    OpenIt();
    QApplication::clipboard()->setText("one\r\ntwo\nthree\rfour");
    Box("txtmName")->paste();
    Box("txtmAddress")->paste();
    EXPECT_EQ(Box("txtmName")->text(), "one two three four");
    QApplication::clipboard()->setText("40\n");
    Box("txtmPort")->paste();
    Click("cmdmAdd");
    EXPECT_TRUE(Closed());
    ASSERT_EQ(MudList.size(), 4u);
    EXPECT_EQ(MudList[3].Name, "one two three four");
    EXPECT_EQ(MudList[3].Address, "one two three four");
    EXPECT_EQ(MudList[3].Port, 40);
    EXPECT_TRUE(ParseMudList(ListFile(), DefaultMudList()).back() == MudList[3]);
}

TEST_F(AddDialog, TakesTextsAsTheyAreTyped) {
    OpenIt();
    const QString name = QString::fromUtf8("<b>Caf\xC3\xA9<b> & \"Co\" =[End]");
    Box("txtmName")->setText(name); // QTest has no key for every letter
    TypeInto(Box("txtmAddress"), " a.example ");
    TypeInto(Box("txtmPort"), "1");
    Click("cmdmAdd");
    EXPECT_TRUE(Closed());
    ASSERT_EQ(MudList.size(), 4u);
    EXPECT_EQ(MudList[3].Name, "<b>Caf\xE9<b> & \"Co\" =[End]");
    EXPECT_EQ(MudList[3].Address, " a.example ");
    EXPECT_EQ(Frame->Chooser->itemText(3), name);
    EXPECT_TRUE(ParseMudList(ListFile(), DefaultMudList()).back() == MudList[3]);
}

TEST_F(AddDialog, ANameThatCannotBeAFolderOfAGameGetsNone) {
    const QString outside = QString::fromStdString("../" + Folder.Path.filename().string() + "-x");
    for (const QString& name :
         {QString("../x"), outside, QString(".."), QString("."), QString("a/b"), QString("C:\\x"),
          QString("Data"), QString("Macros"), QString("/")}) {
        OpenIt();
        Add(name, "a.example", "1");
        EXPECT_TRUE(Closed()) << name.toStdString();
        EXPECT_EQ(MudList.back().Name, name.toStdString());
        EXPECT_EQ(Frame->Chooser->itemText(Frame->Chooser->count() - 1), name);
    }
    Files after = FilesIn(Folder.Path);
    EXPECT_EQ(after.erase("Data/muds.lst"), 1u);
    EXPECT_EQ(after, Before);
    EXPECT_FALSE(std::filesystem::exists(Folder.Path / outside.toStdString()));
    EXPECT_EQ(Closer.Texts, Boxes{});
}

TEST_F(AddDialog, AFolderThatIsThereStaysAsItIs) {
    std::filesystem::create_directory(Folder.Path / "New");
    OpenIt();
    Add("New", "a.example", "1");
    EXPECT_TRUE(Closed());
    EXPECT_FALSE(Folder.HasFolder("New/sounds"));
    EXPECT_EQ(Closer.Texts, Boxes{});
}

TEST_F(AddDialog, AGameWhoseFolderCannotBeMadeIsListedAllTheSame) {
    ApplicationFolder = Folder.Path / "gone";
    OpenIt();
    Add("New", "a.example", "1");
    EXPECT_EQ(Closer.Texts, Boxes{"Run-time error 75: Path/File access error"});
    EXPECT_TRUE(Closed());
    EXPECT_EQ(MudList.back().Name, "New");
}

TEST_F(AddDialog, LocksTheFrameAndComesToTheTopTwice) {
    const forms::Raises raises("frmAddMud");
    OpenIt();
    EXPECT_EQ(raises.Count, 1);
    EXPECT_EQ(QApplication::activeModalWidget(), Dialog);
    Click("cmdCancel");
    EXPECT_EQ(raises.Count, 2);
    EXPECT_TRUE(Closed());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(AddDialog, TheTabKeyVisitsItsControlsInOrder) {
    OpenIt();
    EXPECT_EQ(TabOrder(), (Names{"txtmName", "txtmAddress", "txtmPort", "cmdmAdd", "cmdCancel"}));
}

TEST_F(AddDialog, BeginsEmpty) {
    OpenIt();
    for (const char* box : {"txtmName", "txtmAddress", "txtmPort"})
        EXPECT_EQ(Box(box)->text(), "") << box;
}

class ChooseDialog : public MudDialog {
protected:
    ChooseDialog() { Item("mnutoolbar")->trigger(); }

    void OpenIt() { Open<frmConnect>("mnuADCmud"); }

    QComboBox* Chooser() const { return In<QComboBox>("cboMud"); }

    // Presses Down in the chooser.
    void ChooseNext() const {
        Chooser()->setFocus();
        QTest::keyClick(Chooser(), Qt::Key_Down);
    }

    void ExpectShown(const std::string& address, const std::string& port) const {
        EXPECT_EQ(In<QLabel>("lblMud")->text().toStdString(), address);
        EXPECT_EQ(In<QLabel>("lblPort")->text().toStdString(), port);
    }

    // Adds a game by the dialog's own button.
    void AddGame(const QString& name) {
        Click("cmdAdd");
        const QPointer<frmAddMud> inner = Dialog->findChild<frmAddMud*>();
        ASSERT_NE(inner, nullptr);
        EXPECT_EQ(QApplication::activeModalWidget(), inner);
        inner->txtmName->setText(name);
        inner->txtmAddress->setText("a.example");
        inner->txtmPort->setText("1");
        QTest::mouseClick(inner->cmdmAdd, Qt::LeftButton);
        EXPECT_TRUE(WaitFor([&] { return inner.isNull(); }));
        EXPECT_EQ(QApplication::activeModalWidget(), Dialog);
    }
};

TEST_F(ChooseDialog, ShowsTheCurrentGameAmongAllOthers) {
    cboMud_Click(1);
    OpenIt();
    EXPECT_EQ(NamesIn(Chooser()), (Names{"Testmere", "Northern Realms", "Third"}));
    EXPECT_EQ(Chooser()->currentIndex(), 1);
    ExpectShown("192.0.2.10", "4000");
    EXPECT_EQ(CurrentMud, 1);
}

TEST_F(ChooseDialog, ChoosingMakesTheGameTheCurrentOneInTheToolbarToo) {
    OpenIt();
    ExpectShown("127.0.0.1", std::to_string(Server.Port()));
    ChooseNext();
    EXPECT_EQ(CurrentMud, 1);
    ExpectShown("192.0.2.10", "4000");
    EXPECT_EQ(Frame->Chooser->currentIndex(), 1);
    EXPECT_EQ(Frame->lblAddress->text(), "192.0.2.10");
    EXPECT_EQ(Frame->lblPort->text(), "4000");
    ChooseNext();
    EXPECT_EQ(CurrentMud, 2);
    ExpectShown("third.example", "-5");
    EXPECT_EQ(Frame->Chooser->currentIndex(), 2);
}

TEST_F(ChooseDialog, TheChosenGameIsTheOneConnectedTo) {
    MudList[1].Address = "127.0.0.1";
    MudList[1].Port = Server.Port();
    OpenIt();
    ChooseNext();
    Click("cmdDone");
    ASSERT_TRUE(Closed());
    Item("mnuConnect")->trigger();
    EXPECT_TRUE(PanelShows(1, "Connected to: Northern Realms"));
}

TEST_F(ChooseDialog, ItsAddButtonOpensTheAddDialogAndBothChoosersGetTheName) {
    OpenIt();
    ChooseNext();
    AddGame("New");
    const Names all{"Testmere", "Northern Realms", "Third", "New"};
    EXPECT_EQ(NamesIn(Chooser()), all);
    EXPECT_EQ(NamesIn(Frame->Chooser), all);
    EXPECT_EQ(CurrentMud, 1);
    ExpectShown("192.0.2.10", "4000");
    EXPECT_TRUE(Folder.HasFolder("New/sounds"));
    ChooseNext();
    ChooseNext();
    EXPECT_EQ(CurrentMud, 3);
    ExpectShown("a.example", "1");
}

TEST_F(ChooseDialog, DeletesTheChosenGameAndGoesBackToTheFirst) {
    std::filesystem::create_directories(Folder.Path / "Northern Realms/sounds");
    OpenIt();
    ChooseNext();
    Click("cmdDelete");
    EXPECT_EQ(Closer.Texts, Boxes{});
    EXPECT_EQ(MudList.size(), 2u);
    const Names left{"Testmere", "Third"};
    EXPECT_EQ(NamesIn(Chooser()), left);
    EXPECT_EQ(NamesIn(Frame->Chooser), left);
    EXPECT_EQ(Chooser()->currentIndex(), 0);
    EXPECT_EQ(Frame->Chooser->currentIndex(), 0);
    EXPECT_EQ(CurrentMud, 0);
    ExpectShown("127.0.0.1", std::to_string(Server.Port()));
    EXPECT_EQ(Frame->lblAddress->text(), "127.0.0.1");
    EXPECT_EQ(ListFile(), FormatMudList(MudList));
    EXPECT_TRUE(Folder.HasFolder("Northern Realms/sounds"));
}

TEST_F(ChooseDialog, DeletesTheLastGame) {
    OpenIt();
    ChooseNext();
    ChooseNext();
    Click("cmdDelete");
    EXPECT_EQ(NamesIn(Chooser()), (Names{"Testmere", "Northern Realms"}));
    EXPECT_EQ(CurrentMud, 0);
    ExpectShown("127.0.0.1", std::to_string(Server.Port()));
}

TEST_F(ChooseDialog, RefusesToDeleteTheFirstGame) {
    const Files before = FilesIn(Folder.Path);
    OpenIt();
    Click("cmdDelete");
    EXPECT_EQ(Closer.Texts, Boxes{"You cannot delete this mud"});
    EXPECT_EQ(MudList.size(), 3u);
    EXPECT_EQ(Chooser()->count(), 3);
    EXPECT_EQ(FilesIn(Folder.Path), before);
    EXPECT_TRUE(Dialog->isVisible());
}

TEST_F(ChooseDialog, AllGamesButTheFirstCanBeDeleted) {
    OpenIt();
    for (int games = 2; games > 0; --games) {
        ChooseNext();
        Click("cmdDelete");
    }
    Click("cmdDelete");
    EXPECT_EQ(NamesIn(Frame->Chooser), Names{"Testmere"});
    EXPECT_EQ(Closer.Texts, Boxes{"You cannot delete this mud"});
}

TEST_F(ChooseDialog, DoneEnterAndEscapeCloseItAndTheChoiceStays) {
    OpenIt();
    ChooseNext();
    Click("cmdDone");
    EXPECT_TRUE(Closed());
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        OpenIt();
        QTest::keyClick(Dialog->focusWidget(), key);
        EXPECT_TRUE(Closed());
    }
    EXPECT_EQ(CurrentMud, 1);
}

TEST_F(ChooseDialog, LocksTheFrameWhileItIsUp) {
    Item("mnutoolbar")->trigger(); // the toolbar can be clicked
    OpenIt();
    EXPECT_EQ(QApplication::activeModalWidget(), Dialog);
    ClickInFrame(Frame->cmdConn);
    EXPECT_EQ(Panel(1), "");
    Click("cmdDone");
    EXPECT_TRUE(Closed());
    ClickInFrame(Frame->cmdConn);
    EXPECT_TRUE(PanelShows(1, "Connected to: Testmere"));
}

TEST_F(ChooseDialog, ComesToTheTopWhenItIsShownAndWhenItGoes) {
    const forms::Raises raises("frmConnect");
    OpenIt();
    EXPECT_EQ(raises.Count, 1);
    const QRect place = Dialog->geometry();
    Click("cmdDone");
    EXPECT_EQ(raises.Count, 2);
    EXPECT_EQ(Dialog->geometry(), place);
    EXPECT_FALSE(Dialog->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST_F(ChooseDialog, TheTabKeyVisitsItsControlsInOrder) {
    OpenIt();
    EXPECT_EQ(TabOrder(), (Names{"cboMud", "cmdAdd", "cmdDelete", "cmdDone"}));
}

TEST_F(ChooseDialog, ALongAddressDoesNotWidenItAndIsShownAsItIs) {
    OpenIt();
    const int width = Dialog->minimumSizeHint().width();
    MudList[1].Address = "<b>" + std::string(2000, 'a') + "</b>";
    ChooseNext();
    EXPECT_EQ(In<QLabel>("lblMud")->text().toStdString(), MudList[1].Address);
    EXPECT_EQ(In<QLabel>("lblMud")->textFormat(), Qt::PlainText);
    LetEventsRun();
    EXPECT_EQ(Dialog->minimumSizeHint().width(), width);
}

class ToolbarButtons : public MudDialog {};

TEST_F(ToolbarButtons, DeleteDeletesTheChosenGame) {
    Frame->Chooser->setFocus();
    QTest::keyClick(Frame->Chooser, Qt::Key_Down);
    QTest::mouseClick(Frame->cmdDel, Qt::LeftButton);
    EXPECT_EQ(NamesIn(Frame->Chooser), (Names{"Testmere", "Third"}));
    EXPECT_EQ(CurrentMud, 0);
    EXPECT_EQ(Frame->lblAddress->text(), "127.0.0.1");
    EXPECT_EQ(ListFile(), FormatMudList(MudList));
    EXPECT_EQ(Closer.Texts, Boxes{});
}

TEST_F(ToolbarButtons, DeleteIsRefusedForTheFirstGame) {
    QTest::mouseClick(Frame->cmdDel, Qt::LeftButton);
    EXPECT_EQ(Closer.Texts, Boxes{"You cannot delete this mud"});
    EXPECT_EQ(MudList.size(), 3u);
}

TEST_F(ToolbarButtons, NewOpensTheAddDialogOnce) {
    QTest::mouseClick(Frame->cmdNew, Qt::LeftButton);
    TakeOver<frmAddMud>();
    ClickInFrame(Frame->cmdNew);
    EXPECT_EQ(Frame->findChildren<frmAddMud*>().size(), 1);
}

TEST_F(ToolbarButtons, NeitherCanBeUsedWhileConnected) {
    Connect();
    QTest::mouseClick(Frame->cmdNew, Qt::LeftButton);
    QTest::mouseClick(Frame->cmdDel, Qt::LeftButton);
    EXPECT_EQ(Frame->findChild<frmAddMud*>(), nullptr);
    EXPECT_EQ(Closer.Texts, Boxes{});
    EXPECT_EQ(MudList.size(), 3u);
}

} // namespace
} // namespace mw
