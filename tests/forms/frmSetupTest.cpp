#include "config/frmSetup.h"

#include "config/ClientConfig.h"
#include "config/MRegistry.h"
#include "config/Setup.h"
#include "forms/Choosers.h"
#include "forms/DialogTest.h"
#include "forms/Pictures.h"
#include "ui/OutputControls.h"
#include "ui/qt/Text.h"

#include <QClipboard>
#include <QFontInfo>

namespace mw {
namespace {

using forms::Boxes;
using forms::LooksAt;
using forms::Takes;
using forms::WaitFor;

const QColor kUnpainted(0xC0, 0xC0, 0xC0);

QColor Shade(std::int32_t colour) {
    return {colour & 255, (colour >> 8) & 255, (colour >> 16) & 255};
}

std::string FamilyOfThisMachine() { return QFontInfo(QFont("DejaVu Sans")).family().toStdString(); }

class SetupDialog : public forms::DialogTest {
protected:
    SetupDialog() {
        for (std::size_t slot = 0; slot < Palette.size(); ++slot)
            Palette[slot] = Rgb(static_cast<std::int32_t>(10 * slot), 90, 30);
    }

    void OpenIt() { Open<frmSetup>("mnuSetUp"); }

    void OpenAgain() {
        Dialog->close();
        ASSERT_TRUE(Closed());
        OpenIt();
    }

    QToolButton* SwatchOf(const char* name) const { return In<QToolButton>(name); }

    // The colour that the player sees on the swatch.
    QColor ColourOn(const char* name) const {
        QToolButton* const swatch = SwatchOf(name);
        return swatch->grab().toImage().pixelColor(swatch->rect().center());
    }

    void ClickSwatch(const char* name) const { QTest::mouseClick(SwatchOf(name), Qt::LeftButton); }

    void Choose(const char* swatch, const QColor& colour) {
        Chooser.OnColours = Takes(colour);
        ClickSwatch(swatch);
    }

    void CancelAt(const char* swatch, const QColor& colour) {
        Chooser.OnColours = LooksAt(colour);
        ClickSwatch(swatch);
    }

    QLineEdit* EscapeBox() const { return In<QLineEdit>("txtEscChar"); }

    void ReplaceEscape(const QString& text) const {
        EscapeBox()->setFocus();
        EscapeBox()->selectAll();
        QTest::keyClick(EscapeBox(), Qt::Key_Delete);
        QTest::keyClicks(EscapeBox(), text);
    }

    std::string Label(const char* name) const { return In<QLabel>(name)->text().toStdString(); }

    static std::string InRegistry(const char* key) {
        return ReadSetting("MwClient", "Settings", key, "nothing");
    }

    static std::string InUserSettings(const char* key) {
        return GetUserSetting("MwClient", "Settings", key, "nothing");
    }

    void ReceiveInBrightRed(const std::string& text) const {
        Server.Send("\x1b[0;1;31m" + text + "\r");
        ASSERT_TRUE(Shows(text));
    }

    void PasteEscape(const QString& text) const {
        ReplaceEscape("");
        QApplication::clipboard()->setText(text);
        QTest::keyClick(EscapeBox(), Qt::Key_V, Qt::ControlModifier);
    }

    // The looks of the output's last character.
    QTextCharFormat LastFormat() const {
        OutputBox()->Apply();
        QTextCursor end(OutputBox()->document());
        end.movePosition(QTextCursor::End);
        return end.charFormat();
    }

    forms::Choosers Chooser;
};

TEST_F(SetupDialog, HasItsTitleAndSaysWhatEachSwatchIs) {
    OpenIt();
    EXPECT_EQ(Dialog->windowTitle(), "Fonts Setup");
    EXPECT_EQ(Dialog->objectName(), "frmSetup");
    for (const Swatch& row : kSwatches) {
        QToolButton* const swatch = SwatchOf(row.Control);
        ASSERT_NE(swatch, nullptr) << row.Control;
        EXPECT_EQ(swatch->toolTip(), row.Colour);
        EXPECT_EQ(swatch->accessibleName(), row.Colour);
    }
    EXPECT_EQ(Dialog->findChildren<QToolButton*>().size(), 15);
    forms::KeepPicture(Dialog->grab(), "setup-distinct-colours");
}

TEST_F(SetupDialog, LocksTheFrameAndComesToTheTopTwice) {
    const forms::Raises raises("frmSetup");
    OpenIt();
    EXPECT_EQ(raises.Count, 1);
    EXPECT_EQ(QApplication::activeModalWidget(), Dialog);
    EXPECT_EQ(Dialog->windowFlags() & Qt::WindowStaysOnTopHint, Qt::WindowFlags{});
    ClickInFrame(Frame->cmdNew);
    EXPECT_EQ(Frame->findChildren<QDialog*>().size(), 1) << "the frame takes no click";
    Click("cmdClose");
    ASSERT_TRUE(Closed());
    EXPECT_EQ(raises.Count, 2);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(SetupDialog, PaintsPicGreyTwiceAndPicLGreyNotOnPurpose) {
    OpenIt();
    EXPECT_EQ(ColourOn("picGrey"), Shade(Palette[MwLGrey]));
    EXPECT_EQ(ColourOn("picLGrey"), kUnpainted);
}

TEST_F(SetupDialog, PaintsTheOtherThirteenSwatchesInTheirOwnColours) {
    OpenIt();
    for (std::size_t i = 2; i < std::size(kSwatches); ++i)
        EXPECT_EQ(ColourOn(kSwatches[i].Control), Shade(Palette[kSwatches[i].PaletteSlot]))
            << kSwatches[i].Control;
}

TEST_F(SetupDialog, ShowsTheFontAndTheEscapeCharacter) {
    OutputFontName = "Some Font";
    OutputFontSize = "17";
    EscapeChar = "||";
    OpenIt();
    EXPECT_EQ(Label("lblFontName"), "Some Font");
    EXPECT_EQ(Label("lblFontSize"), "17");
    EXPECT_EQ(EscapeBox()->text(), "||");
}

TEST_F(SetupDialog, ShowsTextsOfTheStoreAsPlainText) {
    OutputFontName = "<b>bold</b>";
    OpenIt();
    EXPECT_EQ(In<QLabel>("lblFontName")->textFormat(), Qt::PlainText);
    EXPECT_EQ(Label("lblFontName"), "<b>bold</b>");
}

TEST_F(SetupDialog, FillingTheEscapeBoxRunsItsChangeHandler) {
    EscapeChar = "#";
    ASSERT_EQ(InUserSettings("EscChar"), "nothing");
    OpenIt();
    EXPECT_EQ(InUserSettings("EscChar"), "#");
    EXPECT_EQ(EscapeChar, "#");
}

TEST_F(SetupDialog, WithoutAnEscapeCharacterOpensWithAnEmptyBoxAndWritesNone) {
    EscapeChar.clear();
    OpenIt();
    EXPECT_EQ(EscapeBox()->text(), "");
    EXPECT_EQ(InUserSettings("EscChar"), "nothing");
}

class EachSwatch : public SetupDialog, public testing::WithParamInterface<Swatch> {
protected:
    const char* Name() const { return GetParam().Control; }
};

TEST_P(EachSwatch, StoresTheChosenColourInItsOwnSlotAlone) {
    OpenIt();
    PaletteTable expected = Palette;
    expected[GetParam().PaletteSlot] = Rgb(1, 2, 250);
    Choose(Name(), QColor(1, 2, 250));
    EXPECT_EQ(Palette, expected);
}

TEST_P(EachSwatch, KeepsItsOldColourOnScreenWhilePicGreyShowsTheNewOneOnPurpose) {
    OpenIt();
    const QColor before = ColourOn(Name());
    Choose(Name(), QColor(1, 2, 250));
    EXPECT_EQ(ColourOn("picGrey"), QColor(1, 2, 250));
    if (GetParam().PaletteSlot != MwGrey) {
        EXPECT_EQ(ColourOn(Name()), before);
    }
}

TEST_P(EachSwatch, ShowsTheNewColourAfterDefault) {
    OpenIt();
    Choose(Name(), QColor(1, 2, 250));
    Click("cmdDefault");
    EXPECT_EQ(ColourOn(Name()), QColor(1, 2, 250));
}

TEST_P(EachSwatch, IsWorkedByTheKeyboard) {
    OpenIt();
    Chooser.OnColours = Takes(QColor(1, 2, 250));
    SwatchOf(Name())->setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(SwatchOf(Name())->hasFocus());
    QTest::keyClick(SwatchOf(Name()), Qt::Key_Space);
    EXPECT_EQ(Palette[GetParam().PaletteSlot], Rgb(1, 2, 250));
}

INSTANTIATE_TEST_SUITE_P(Swatches, EachSwatch, testing::ValuesIn(kSwatches),
                         [](const auto& row) { return std::string(row.param.Control); });

TEST_F(SetupDialog, ReopenedShowsTheNewColour) {
    OpenIt();
    Choose("picBRed", QColor(1, 2, 250));
    OpenAgain();
    EXPECT_EQ(ColourOn("picBRed"), QColor(1, 2, 250));
    EXPECT_EQ(ColourOn("picGrey"), Shade(Palette[MwLGrey]));
}

TEST_F(SetupDialog, StoresBlackAfterTheFirstCancelOnPurpose) {
    OpenIt();
    CancelAt("picBRed", QColor(1, 2, 250));
    EXPECT_EQ(Palette[MwBRed], 0);
    EXPECT_EQ(ColourOn("picGrey"), QColor(Qt::black));
    EXPECT_EQ(Chooser.FirstColours, std::vector<QColor>{QColor(Qt::black)});
}

TEST_F(SetupDialog, StoresTheColourLastHeldAfterALaterCancelOnPurpose) {
    OpenIt();
    Choose("picBRed", QColor(1, 2, 250));
    CancelAt("picBBlue", QColor(99, 99, 99));
    EXPECT_EQ(Palette[MwBBlue], Rgb(1, 2, 250));
    EXPECT_EQ(ColourOn("picGrey"), QColor(1, 2, 250));
    EXPECT_EQ(Chooser.FirstColours, (std::vector{QColor(Qt::black), QColor(1, 2, 250)}))
        << "it begins with what it holds, not with the slot's colour";
}

TEST_F(SetupDialog, TheColourChooserBeginsWithBlackAtEachOpening) {
    OpenIt();
    Choose("picBRed", QColor(1, 2, 250));
    OpenAgain();
    CancelAt("picBBlue", QColor(99, 99, 99));
    EXPECT_EQ(Palette[MwBBlue], 0);
    EXPECT_EQ(Chooser.FirstColours.back(), QColor(Qt::black));
}

TEST_F(SetupDialog, TheNextColourSequenceOfTheGameHasTheNewColour) {
    Connect();
    ReceiveInBrightRed("Before");
    const QColor old = Shade(Palette[MwBRed]);
    EXPECT_EQ(LastFormat().foreground().color(), old);
    OpenIt();
    Choose("picBRed", QColor(1, 2, 250));
    Receive("Without a sequence");
    EXPECT_EQ(LastFormat().foreground().color(), old);
    ReceiveInBrightRed("After");
    EXPECT_EQ(LastFormat().foreground().color(), QColor(1, 2, 250));
}

TEST_F(SetupDialog, TheFontChooserBeginsWithTheFontOfTheOutput) {
    OutputFontName = FamilyOfThisMachine();
    OutputFontSize = "17";
    OpenIt();
    Click("cmdFont");
    ASSERT_EQ(Chooser.FirstFonts.size(), 1u);
    EXPECT_EQ(Chooser.FirstFonts[0].family().toStdString(), FamilyOfThisMachine());
    EXPECT_EQ(Chooser.FirstFonts[0].pointSize(), 17);
    EXPECT_EQ(Chooser.FirstFonts[0].style(), QFont::StyleNormal);
}

TEST_F(SetupDialog, TheChosenFontIsTheFontOfNewOutput) {
    OpenIt();
    Chooser.OnFonts = Takes(QFont(ToQString(FamilyOfThisMachine()), 22));
    Click("cmdFont");
    EXPECT_EQ(OutputFontName, FamilyOfThisMachine());
    EXPECT_EQ(OutputFontSize, "22");
    EXPECT_EQ(Label("lblFontName"), FamilyOfThisMachine());
    EXPECT_EQ(Label("lblFontSize"), "22");
    EXPECT_EQ(In<QLabel>("lblFontName")->font().pointSize(), 22);
    EXPECT_EQ(In<QLabel>("lblFontName")->font().family().toStdString(), FamilyOfThisMachine());
    Connect();
    Receive("Large");
    EXPECT_EQ(LastFormat().font().pointSize(), 22);
    EXPECT_EQ(LastFormat().font().family().toStdString(), FamilyOfThisMachine());
}

TEST_F(SetupDialog, IsNoWiderForALongNameThanTheScreen) {
    OutputFontName = std::string(3000, 'W');
    OpenIt();
    EXPECT_LE(Dialog->minimumSizeHint().width(), 1000);
}

TEST_F(SetupDialog, TheNameIsShownInTheSizeOfTheOutput) {
    OpenIt();
    Chooser.OnFonts = Takes(QFont(ToQString(FamilyOfThisMachine()), 201));
    Click("cmdFont");
    EXPECT_EQ(Label("lblFontSize"), "201");
    EXPECT_EQ(In<QLabel>("lblFontName")->font().pointSize(), 10);
}

TEST_F(SetupDialog, TheFontButtonKeepsTheBaseFontInTheRegistryOnPurpose) {
    OpenIt();
    Chooser.OnFonts = Takes(QFont(ToQString(FamilyOfThisMachine()), 22));
    Click("cmdFont");
    EXPECT_EQ(InRegistry("Font"), "10");
    EXPECT_EQ(InRegistry("Name"), "Courier");
    EXPECT_EQ(InUserSettings("Font"), "nothing");
    EXPECT_EQ(InUserSettings("Name"), "nothing");
}

TEST_F(SetupDialog, TheFontButtonWritesAfterACancelTooOnPurpose) {
    OutputFontName = "No Such Font";
    OutputFontSize = "17";
    OpenIt();
    ASSERT_EQ(InRegistry("Font"), "nothing");
    Chooser.OnFonts = LooksAt(QFont(ToQString(FamilyOfThisMachine()), 22));
    Click("cmdFont");
    EXPECT_EQ(OutputFontName, "No Such Font");
    EXPECT_EQ(OutputFontSize, "17");
    EXPECT_EQ(InRegistry("Font"), "10");
    EXPECT_EQ(InRegistry("Name"), "Courier");
    EXPECT_EQ(Label("lblFontName"), "No Such Font");
    EXPECT_EQ(Label("lblFontSize"), "17");
    EXPECT_EQ(In<QLabel>("lblFontName")->font().pointSize(), 17);
}

TEST_F(SetupDialog, TheBaseFontIsWhatTheBoxOfTheOutputHas) {
    EXPECT_EQ(OutputBox()->font().family().toStdString(), rtfOutPut::kBaseFontName);
    EXPECT_EQ(std::to_string(OutputBox()->font().pointSize()), rtfOutPut::kBaseFontSize);
}

struct BadSize {
    const char* Name;
    const char* Size;
    int Preset;
};

void PrintTo(const BadSize& row, std::ostream* out) { *out << row.Name; }

class BadSizes : public SetupDialog, public testing::WithParamInterface<BadSize> {};

TEST_P(BadSizes, OfTheStoreAreSurvivedByTheFontChooser) {
    OutputFontSize = GetParam().Size;
    OpenIt();
    EXPECT_EQ(Label("lblFontSize"), GetParam().Size);
    Click("cmdFont");
    ASSERT_EQ(Chooser.FirstFonts.size(), 1u);
    EXPECT_EQ(Chooser.FirstFonts[0].pointSize(), GetParam().Preset);
    EXPECT_EQ(OutputFontSize, GetParam().Size);
    EXPECT_EQ(Closer.Texts, Boxes{});
}

const BadSize kBadSizes[] = {
    {"Empty", "", 10},      {"AWord", "large", 10},   {"Zero", "0", 10},
    {"Negative", "-4", 10}, {"AFraction", "9.5", 10}, {"BeyondAnyNumber", "99999999999", 10},
};

INSTANTIATE_TEST_SUITE_P(Rows, BadSizes, testing::ValuesIn(kBadSizes),
                         [](const auto& row) { return row.param.Name; });

TEST_F(SetupDialog, DefaultLeavesThePaletteOnPurpose) {
    OpenIt();
    Choose("picBRed", QColor(1, 2, 250));
    const PaletteTable before = Palette;
    Click("cmdDefault");
    EXPECT_EQ(Palette, before);
    for (const Swatch& row : kSwatches)
        EXPECT_EQ(ColourOn(row.Control), Shade(before[row.PaletteSlot])) << row.Control;
}

TEST_F(SetupDialog, DefaultWritesTheFontWhereTheStartDoesNotReadItOnPurpose) {
    OutputFontName = "Some Font";
    OutputFontSize = "17";
    OpenIt();
    Click("cmdDefault");
    EXPECT_EQ(OutputFontName, "Courier");
    EXPECT_EQ(OutputFontSize, "10");
    EXPECT_EQ(Label("lblFontName"), "Courier");
    EXPECT_EQ(Label("lblFontSize"), "10");
    EXPECT_EQ(InUserSettings("Font"), "10");
    EXPECT_EQ(InUserSettings("Name"), "Courier");
    EXPECT_EQ(InRegistry("Font"), "nothing");
    EXPECT_EQ(InRegistry("Name"), "nothing");
}

TEST_F(SetupDialog, DefaultSetsTheEscapeCharacter) {
    EscapeChar = "||";
    OpenIt();
    Click("cmdDefault");
    EXPECT_EQ(EscapeBox()->text(), ";");
    EXPECT_EQ(EscapeChar, ";");
    EXPECT_EQ(InUserSettings("EscChar"), ";");
}

TEST_F(SetupDialog, DefaultSetsTheEscapeCharacterOfAnEmptiedBoxToo) {
    EscapeChar = "#";
    OpenIt();
    ReplaceEscape("");
    Click("cmdDefault");
    EXPECT_EQ(EscapeChar, ";");
}

TEST_F(SetupDialog, AnEmptiedEscapeBoxKeepsTheCharacterBefore) {
    EscapeChar = "#";
    OpenIt();
    ReplaceEscape("");
    EXPECT_EQ(EscapeBox()->text(), "");
    EXPECT_EQ(EscapeChar, "#");
    EXPECT_EQ(InUserSettings("EscChar"), "#");
    OpenAgain();
    EXPECT_EQ(EscapeBox()->text(), "#");
}

TEST_F(SetupDialog, TwoCharactersAreTheEscapeCharacterTogether) {
    Connect();
    OpenIt();
    ReplaceEscape("||");
    EXPECT_EQ(EscapeChar, "||");
    EXPECT_EQ(InUserSettings("EscChar"), "||");
    EXPECT_EQ(InRegistry("EscChar"), "nothing");
    Click("cmdClose");
    ASSERT_TRUE(Closed());
    Server.Received.clear();
    Enter("n||s|e;w");
    EXPECT_TRUE(Server.Gets("n||s|e;w\r")) << Server.Received; // several separate nothing
}

TEST_F(SetupDialog, ANewEscapeCharacterSeparatesTheNextCommands) {
    Connect();
    OpenIt();
    ReplaceEscape("#");
    Click("cmdClose");
    ASSERT_TRUE(Closed());
    Server.Received.clear();
    Enter("n#s;e");
    EXPECT_TRUE(Server.Gets("n\rs;e\r")) << Server.Received;
}

TEST_F(SetupDialog, TakesNoLineBreakIntoTheEscapeCharacter) {
    OpenIt();
    PasteEscape("a\r\nMwBlack=x\nb");
    EXPECT_EQ(EscapeChar, "a MwBlack=x b");
}

TEST_F(SetupDialog, WhatTheCodePageLacksIsAQuestionMarkAsEscapeCharacter) {
    OpenIt();
    PasteEscape(QString(QChar(0x3BB)));
    EXPECT_EQ(EscapeChar, "?");
    PasteEscape(QString(QChar(0x20AC)));
    EXPECT_EQ(EscapeChar, "\x80");
}

struct Way {
    const char* Name;
    void (*Leave)(QDialog& dialog);
};

void PrintTo(const Way& row, std::ostream* out) { *out << row.Name; }

void ClickIn(QDialog& dialog, const char* button) {
    QTest::mouseClick(dialog.findChild<QPushButton*>(button), Qt::LeftButton);
}

const Way kWays[] = {
    {"Close", [](QDialog& dialog) { ClickIn(dialog, "cmdClose"); }},
    {"Cancel", [](QDialog& dialog) { ClickIn(dialog, "cmdCancel"); }},
    {"TheEscapeKey", [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }},
    {"TheWindowsButton", [](QDialog& dialog) { dialog.close(); }},
    {"Return", [](QDialog& dialog) { QTest::keyClick(dialog.focusWidget(), Qt::Key_Return); }},
};

class Leaving : public SetupDialog, public testing::WithParamInterface<Way> {};

TEST_P(Leaving, UndoesNothing) {
    OpenIt();
    Choose("picBRed", QColor(1, 2, 250));
    Chooser.OnFonts = Takes(QFont(ToQString(FamilyOfThisMachine()), 22));
    Click("cmdFont");
    ReplaceEscape("#");
    const PaletteTable before = Palette;
    GetParam().Leave(*Dialog);
    EXPECT_TRUE(Closed());
    EXPECT_EQ(Palette, before);
    EXPECT_EQ(Palette[MwBRed], Rgb(1, 2, 250));
    EXPECT_EQ(OutputFontSize, "22");
    EXPECT_EQ(EscapeChar, "#");
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(Closer.Texts, Boxes{});
}

INSTANTIATE_TEST_SUITE_P(Ways, Leaving, testing::ValuesIn(kWays),
                         [](const auto& row) { return row.param.Name; });

TEST_F(SetupDialog, WritesNoFileBeforeTheProgramStops) {
    const forms::Files before = forms::FilesIn(Folder.Path);
    OpenIt();
    Choose("picBRed", QColor(1, 2, 250));
    ReplaceEscape("#");
    Click("cmdClose");
    ASSERT_TRUE(Closed());
    EXPECT_EQ(forms::FilesIn(Folder.Path), before);
    PrepareFolders();
    SaveClientConfig();
    const std::string file = Folder.ContentOf("Data/client.cfg");
    EXPECT_NE(file.find("MwBRed=&HFA0201\r\n"), std::string::npos) << file;
    EXPECT_NE(file.find("Esc=#\r\n"), std::string::npos) << file;
}

TEST_F(SetupDialog, StopsWithTheProgramWhileAColourIsBeingChosen) {
    OpenIt();
    Chooser.OnColours = [this](QColorDialog&) { Frame->close(); };
    ClickSwatch("picBRed");
    EXPECT_TRUE(Closed());
    EXPECT_TRUE(SavingMode);
    EXPECT_EQ(Palette[MwBRed], 0) << "as after a Cancel";
    EXPECT_EQ(Closer.Texts, Boxes{});
}

TEST_F(SetupDialog, StopsWithTheProgramWhileAFontIsBeingChosen) {
    OpenIt();
    Chooser.OnFonts = [this](QFontDialog&) { Frame->close(); };
    Click("cmdFont");
    EXPECT_TRUE(Closed());
    EXPECT_TRUE(SavingMode);
    EXPECT_EQ(OutputFontName, "Courier");
    EXPECT_EQ(OutputFontSize, "10");
}

TEST_F(SetupDialog, TheGameGoesOnWhileAColourIsBeingChosen) {
    Connect();
    OpenIt();
    Chooser.OnColours = [this](QColorDialog& chooser) {
        Receive("You hear a goose.");
        chooser.setCurrentColor(QColor(1, 2, 250));
        chooser.accept();
    };
    ClickSwatch("picBRed");
    EXPECT_EQ(Palette[MwBRed], Rgb(1, 2, 250));
    EXPECT_NE(Shown().find("You hear a goose."), std::string::npos);
}

TEST_F(SetupDialog, VisitsEveryControlByTheTabKey) {
    OpenIt();
    ASSERT_NE(Dialog->focusWidget(), nullptr);
    std::vector<std::string> expected;
    for (const Swatch& row : kSwatches)
        expected.emplace_back(row.Control);
    for (const char* name : {"cmdFont", "txtEscChar", "cmdDefault", "cmdClose", "cmdCancel"})
        expected.emplace_back(name);
    EXPECT_EQ(TabOrder(), expected);
}

TEST_F(SetupDialog, HasRoomForEveryTextAtItsFirstSize) {
    Palette = kDefaultPalette;
    OpenIt();
    for (const QLabel* const label : Dialog->findChildren<QLabel*>())
        EXPECT_GE(label->width(), label->sizeHint().width()) << label->text().toStdString();
    forms::KeepPicture(Dialog->grab(), "setup");
    Chooser.OnFonts = Takes(QFont(ToQString(FamilyOfThisMachine()), 22));
    Click("cmdFont");
    Choose("picBRed", QColor(1, 2, 250));
    LetEventsRun();
    forms::KeepPicture(Dialog->grab(), "setup-changed");
    EXPECT_GE(In<QLabel>("lblFontName")->width(), In<QLabel>("lblFontName")->sizeHint().width());
}

} // namespace
} // namespace mw
