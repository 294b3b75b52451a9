#include "forms/DialogTest.h"
#include "forms/Pictures.h"
#include "sound/frmSndSetup.h"

#include <ostream>

#include <QLabel>

namespace mw {
namespace {

using forms::Boxes;
using forms::Files;
using forms::FilesIn;
using forms::WaitFor;
using forms::Window;

struct Switches {
    bool Msp = false;
    bool SndW = false;
    bool SndM = false;
    bool SndD = false;

    bool operator==(const Switches&) const = default;
};

void PrintTo(const Switches& switches, std::ostream* out) {
    *out << (switches.Msp ? "Msp " : "") << (switches.SndW ? "SndW " : "")
         << (switches.SndM ? "SndM " : "") << (switches.SndD ? "SndD" : "");
}

constexpr Switches kAllOn{true, true, true, true};
constexpr Switches kAllOff;

const char* const kOthers[] = {"chkWave", "chkMidi", "chkDownloads"};

class SoundDialog : public forms::DialogTest {
protected:
    SoundDialog() {
        PrepareFolders();
        MudEntry other = MudList[0];
        other.Name = "Other";
        MudList.push_back(other);
        ShowFrame();
    }

    static void Set(const Switches& switches, std::size_t game = 0) {
        MudList[game].Msp = switches.Msp;
        MudList[game].SndW = switches.SndW;
        MudList[game].SndM = switches.SndM;
        MudList[game].SndD = switches.SndD;
    }

    static Switches Of(std::size_t game) {
        const MudEntry& mud = MudList[game];
        return {mud.Msp, mud.SndW, mud.SndM, mud.SndD};
    }

    void OpenIt() { Open<frmSndSetup>("mnuSound"); }

    void OpenWith(const Switches& switches) {
        Set(switches);
        OpenIt();
    }

    QCheckBox* Box(const char* name) const { return In<QCheckBox>(name); }

    // What the four boxes show.
    Switches Shown() const {
        return {Box("chkMSP")->isChecked(), Box("chkWave")->isChecked(),
                Box("chkMidi")->isChecked(), Box("chkDownloads")->isChecked()};
    }

    void ExpectOthers(bool enabled) const {
        EXPECT_TRUE(Box("chkMSP")->isEnabled());
        for (const char* const name : kOthers)
            EXPECT_EQ(Box(name)->isEnabled(), enabled) << name;
    }

    void Tick(const char* name) const {
        QCheckBox* const box = Box(name);
        QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(8, box->height() / 2));
    }
};

TEST_F(SoundDialog, IsNoWiderForALongName) {
    MudList[0].Name = std::string(1000, 'W');
    OpenIt();
    EXPECT_EQ(Dialog->width(), 320);
}

TEST_F(SoundDialog, LooksLikeThis) {
    MudList[0].Name = "Test & <b>mere</b>";
    OpenWith({true, true, false, true});
    EXPECT_EQ(Dialog->windowTitle(), "Sound");
    EXPECT_EQ(Box("chkMSP")->text(), "&Enable MSP");
    EXPECT_EQ(Box("chkWave")->text(), "Allow &Wav Files");
    EXPECT_EQ(Box("chkMidi")->text(), "Allow &Midi Files");
    EXPECT_EQ(Box("chkDownloads")->text(), "&Allow Download");
    const auto* const game = Dialog->findChild<QLabel*>();
    EXPECT_EQ(game->text(), "Sounds of Test & <b>mere</b>");
    EXPECT_EQ(game->textFormat(), Qt::PlainText);
    forms::KeepPicture(Dialog->grab(), "sound-options");
}

TEST_F(SoundDialog, LooksLikeThisWhenItIsOff) {
    OpenWith(kAllOff);
    ExpectOthers(false);
    forms::KeepPicture(Dialog->grab(), "sound-options-off");
}

struct Opening {
    const char* Name;
    Switches Before;
    Switches Shown;
};

void PrintTo(const Opening& row, std::ostream* out) { *out << row.Name; }

class Openings : public SoundDialog, public testing::WithParamInterface<Opening> {};

TEST_P(Openings, ShowTheSwitchesAndChangeNone) {
    OpenWith(GetParam().Before);
    EXPECT_EQ(Shown(), GetParam().Shown);
    ExpectOthers(GetParam().Before.Msp);
    EXPECT_EQ(Of(0), GetParam().Before);
    Click("cmdDone");
    EXPECT_TRUE(Closed());
    EXPECT_EQ(Of(0), GetParam().Before);
}

const Opening kOpenings[] = {
    {"AllOn", kAllOn, kAllOn},
    {"AllOff", kAllOff, kAllOff},
    {"MspAlone", {true, false, false, false}, {true, false, false, false}},
    {"Waves", {true, true, false, false}, {true, true, false, false}},
    {"Midi", {true, false, true, false}, {true, false, true, false}},
    {"Downloads", {true, false, false, true}, {true, false, false, true}},
    {"WithoutMspTheOthersAreClearWhateverTheyAre", {false, true, true, true}, kAllOff},
    {"WithoutMspOneIsClearToo", {false, true, false, false}, kAllOff},
};

INSTANTIATE_TEST_SUITE_P(SndSetup, Openings, testing::ValuesIn(kOpenings),
                         [](const auto& row) { return row.param.Name; });

TEST_F(SoundDialog, ClearingMspClearsAllAndLocksTheOthers) {
    OpenWith(kAllOn);
    Tick("chkMSP");
    EXPECT_EQ(Shown(), kAllOff);
    EXPECT_EQ(Of(0), kAllOff);
    ExpectOthers(false);
}

TEST_F(SoundDialog, SettingMspSetsAllAndFreesTheOthers) {
    OpenWith(kAllOff);
    Tick("chkMSP");
    EXPECT_EQ(Shown(), kAllOn);
    EXPECT_EQ(Of(0), kAllOn);
    ExpectOthers(true);
}

TEST_F(SoundDialog, SettingMspSetsWhatWasOffBefore) {
    OpenWith({true, false, true, false});
    Tick("chkMSP");
    Tick("chkMSP");
    EXPECT_EQ(Shown(), kAllOn);
    EXPECT_EQ(Of(0), kAllOn);
}

struct OwnSwitch {
    const char* Box;
    Switches AfterClearing; // all the others are on
};

void PrintTo(const OwnSwitch& row, std::ostream* out) { *out << row.Box; }

class OwnSwitches : public SoundDialog, public testing::WithParamInterface<OwnSwitch> {};

TEST_P(OwnSwitches, FollowTheirBox) {
    OpenWith(kAllOn);
    Tick(GetParam().Box);
    EXPECT_EQ(Of(0), GetParam().AfterClearing);
    EXPECT_EQ(Shown(), GetParam().AfterClearing);
    ExpectOthers(true);
    Tick(GetParam().Box);
    EXPECT_EQ(Of(0), kAllOn);
    EXPECT_EQ(Shown(), kAllOn);
}

TEST_P(OwnSwitches, FollowTheBlankKeyToo) {
    OpenWith(kAllOn);
    Box(GetParam().Box)->setFocus();
    QTest::keyClick(Box(GetParam().Box), Qt::Key_Space);
    EXPECT_EQ(Of(0), GetParam().AfterClearing);
}

TEST_P(OwnSwitches, StayWhileTheirBoxIsLocked) {
    OpenWith({false, true, true, true});
    Tick(GetParam().Box);
    QTest::keyClick(Box(GetParam().Box), Qt::Key_Space);
    EXPECT_EQ(Of(0), (Switches{false, true, true, true}));
    EXPECT_EQ(Shown(), kAllOff);
}

const OwnSwitch kOwnSwitches[] = {
    {"chkWave", {true, false, true, true}},
    {"chkMidi", {true, true, false, true}},
    {"chkDownloads", {true, true, true, false}},
};

INSTANTIATE_TEST_SUITE_P(SndSetup, OwnSwitches, testing::ValuesIn(kOwnSwitches),
                         [](const auto& row) { return row.param.Box; });

TEST_F(SoundDialog, ChangesTheCurrentGameAlone) {
    Set({true, false, true, false}, 0);
    CurrentMud = 1;
    OpenIt();
    EXPECT_EQ(Dialog->findChild<QLabel*>()->text(), "Sounds of Other");
    Tick("chkMSP");
    EXPECT_EQ(Of(1), kAllOn);
    EXPECT_EQ(Of(0), (Switches{true, false, true, false}));
}

TEST_F(SoundDialog, WithoutACurrentGameSaysSoAndStaysAway) {
    CurrentMud = 7;
    Item("mnuSound")->trigger();
    EXPECT_EQ(Closer.Texts, Boxes{"Run-time error 9: Subscript out of range"});
    LetEventsRun();
    EXPECT_EQ(Window<frmSndSetup>(), nullptr);
    EXPECT_TRUE(Frame->isEnabled());
}

TEST_F(SoundDialog, LocksTheFrameWhileItIsUp) {
    OpenWith(kAllOff);
    EXPECT_EQ(QApplication::activeModalWidget(), Dialog);
    ClickInFrame(Frame->cmdNew);
    EXPECT_EQ(Frame->findChild<QDialog*>("frmAddMud"), nullptr);
    Click("cmdDone");
    EXPECT_TRUE(Closed());
    ClickInFrame(Frame->cmdNew);
    EXPECT_NE(Frame->findChild<QDialog*>("frmAddMud"), nullptr);
}

TEST_F(SoundDialog, ComesToTheTopWhenItIsShownAndWhenItGoes) {
    const forms::Raises raises("frmSndSetup");
    OpenIt();
    const int shown = raises.Count;
    EXPECT_GE(shown, 1);
    Click("cmdDone");
    EXPECT_TRUE(Closed());
    EXPECT_GT(raises.Count, shown);
}

TEST_F(SoundDialog, ClosesByEscapeAndEnterAndKeepsWhatWasSet) {
    for (const auto key : {Qt::Key_Escape, Qt::Key_Return}) {
        OpenWith(kAllOff);
        Tick("chkMSP");
        QTest::keyClick(Dialog, key);
        EXPECT_TRUE(Closed());
        EXPECT_EQ(Of(0), kAllOn);
    }
}

TEST_F(SoundDialog, IsWorkedByItsLetters) {
    OpenWith(kAllOn);
    QTest::keyClick(Dialog, Qt::Key_W, Qt::AltModifier);
    QTest::keyClick(Dialog, Qt::Key_A, Qt::AltModifier);
    EXPECT_TRUE(WaitFor([] { return Of(0) == Switches{true, false, true, false}; }));
    QTest::keyClick(Dialog, Qt::Key_M, Qt::AltModifier);
    EXPECT_TRUE(WaitFor([] { return Of(0) == Switches{true, false, false, false}; }));
    QTest::keyClick(Dialog, Qt::Key_E, Qt::AltModifier);
    EXPECT_TRUE(WaitFor([] { return Of(0) == kAllOff; }));
    QTest::keyClick(Dialog, Qt::Key_D, Qt::AltModifier);
    EXPECT_TRUE(Closed());
}

TEST_F(SoundDialog, WritesNothingByItself) {
    const Files before = FilesIn(Folder.Path);
    OpenWith(kAllOff);
    Tick("chkMSP");
    Click("cmdDone");
    EXPECT_TRUE(Closed());
    EXPECT_EQ(FilesIn(Folder.Path), before);
}

TEST_F(SoundDialog, ReachesTheFileWhenTheListIsSaved) {
    OpenWith(kAllOff);
    Tick("chkMSP");
    Tick("chkMidi");
    SaveMudList();
    EXPECT_NE(Folder.ContentOf("Data/muds.lst")
                  .find("SndD=True\r\nSndM=False\r\nMsp=True\r\nSndW=True\r\n[Mud]\r\n"
                        "Mud=Other\r\n"),
              std::string::npos);
}

TEST_F(SoundDialog, ReachesTheFileWhenTheProgramEnds) {
    MacroSets[0].Name = "Default";
    OpenWith(kAllOn);
    Tick("chkDownloads");
    Click("cmdDone");
    EXPECT_TRUE(Closed());
    EXPECT_EQ(RunUntil([this] { Frame->close(); }), 0);
    EXPECT_NE(Folder.ContentOf("Data/muds.lst")
                  .find("SndD=False\r\nSndM=True\r\nMsp=True\r\nSndW=True\r\n[Mud]\r\n"),
              std::string::npos);
}

} // namespace
} // namespace mw
