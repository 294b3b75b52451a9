#include "automation/frmAlias.h"
#include "automation/frmMacros.h"
#include "automation/frmTrigger.h"
#include "forms/DialogTest.h"

#include <QCheckBox>
#include <QClipboard>
#include <QInputDialog>

namespace mw {
namespace {

using forms::Boxes;
using forms::WaitFor;

class EditorTest : public forms::DialogTest {
protected:
    static std::vector<std::string> Rows(const QListWidget* list) {
        std::vector<std::string> rows;
        for (int i = 0; i < list->count(); ++i)
            rows.push_back(list->item(i)->text().toStdString());
        return rows;
    }
};

using Texts = std::vector<std::string>;
using AliasTable = std::vector<AliasEntry>;

class AliasEditor : public EditorTest {
protected:
    void OpenIt() { Open<frmAlias>("mnuAlias"); }

    QListWidget* List() const { return In<QListWidget>("lstAlias"); }
    QLineEdit* Alias() const { return In<QLineEdit>("txtAlias"); }
    QPlainTextEdit* Action() const { return In<QPlainTextEdit>("txtAction"); }
    QCheckBox* Disable() const { return In<QCheckBox>("chkDisable"); }

    void Add(const QString& alias, const QString& replace) {
        Click("cmdNew");
        TypeInto(Alias(), alias);
        TypeInto(Action(), replace);
        Click("cmdAdd");
    }
};

TEST_F(AliasEditor, LocksTheFrameWhileItIsUp) {
    OpenIt();
    EXPECT_EQ(QApplication::activeModalWidget(), Dialog);
    Click("cmdDone");
    EXPECT_TRUE(Closed());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(AliasEditor, KeepsABlankThatBreaksNoLine) {
    OpenIt();
    Click("cmdNew");
    TypeInto(Alias(), "bonjour");
    Action()->setPlainText(QString::fromLatin1("bonjour\xA0!\ntout"));
    Click("cmdAdd");
    EXPECT_EQ(CurrentSet().Aliases[0].Replace, "bonjour\xA0! tout");
}

TEST_F(AliasEditor, WithoutASelectionOnlyNewAndTheWaysOutCanBeUsed) {
    OpenIt();
    EXPECT_TRUE(Button("cmdNew")->isEnabled());
    EXPECT_TRUE(Button("cmdDone")->isEnabled());
    EXPECT_TRUE(Button("cmdCancel")->isEnabled());
    for (const char* name : {"cmdAdd", "cmdEdit", "cmdDelete"})
        EXPECT_FALSE(Button(name)->isEnabled()) << name;
    EXPECT_FALSE(Disable()->isEnabled());
    EXPECT_FALSE(Alias()->isEnabled());
}

TEST_F(AliasEditor, TheFocusAloneSelectsNothing) {
    CurrentSet().Aliases = {{"a", "1", true}};
    OpenIt();
    EXPECT_EQ(Dialog->focusWidget(), Button("cmdNew"));
    Click("cmdNew");
    List()->setEnabled(true);
    List()->setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(Alias()->isEnabled());
    EXPECT_FALSE(Disable()->isEnabled() && List()->selectedItems().isEmpty());
}

TEST_F(AliasEditor, AddsWhatIsTypedSelectsItAndClearsTheBoxes) {
    OpenIt();
    Add("gt", "tell group ");
    EXPECT_EQ(CurrentSet().Aliases, (AliasTable{{"gt", "tell group ", true}}));
    EXPECT_EQ(Rows(List()), (Texts{"gt"}));
    EXPECT_EQ(List()->currentRow(), 0);
    EXPECT_EQ(Alias()->text(), "");
    EXPECT_FALSE(Alias()->isEnabled());
    EXPECT_FALSE(Action()->isEnabled());
    EXPECT_FALSE(Button("cmdAdd")->isEnabled());
    EXPECT_TRUE(Button("cmdNew")->isEnabled());
    EXPECT_TRUE(Button("cmdDelete")->isEnabled());
}

TEST_F(AliasEditor, ShowsWhatWasAddedAsSoonAsItIsEditedOrClicked) {
    OpenIt();
    Add("gt", "tell group ");
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      List()->visualItemRect(List()->item(0)).center());
    EXPECT_EQ(Alias()->text(), "gt");
    Add("l", "look");
    Click("cmdEdit");
    EXPECT_EQ(Alias()->text(), "l");
    EXPECT_EQ(Action()->toPlainText(), "look");
}

TEST_F(AliasEditor, RefusesAnEmptyAliasAndStaysOpenForIt) {
    OpenIt();
    Add("", "look");
    EXPECT_EQ(Closer.Texts, (Boxes{"There is no alias"}));
    EXPECT_TRUE(Alias()->isEnabled());
    EXPECT_EQ(CurrentSet().Aliases, AliasTable(1));
}

TEST_F(AliasEditor, EnterInTheAliasBoxAdds) {
    OpenIt();
    Click("cmdNew");
    QTest::keyClicks(Alias(), "l");
    QTest::keyClick(Alias(), Qt::Key_Return);
    EXPECT_EQ(CurrentSet().Aliases, (AliasTable{{"l", "", true}}));
}

TEST_F(AliasEditor, EnterOfEitherKindInTheReplacementsBoxAdds) {
    OpenIt();
    for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) {
        Click("cmdNew");
        TypeInto(Alias(), "l");
        TypeInto(Action(), "look");
        QTest::keyClick(Action(), enter,
                        enter == Qt::Key_Enter ? Qt::KeypadModifier : Qt::NoModifier);
    }
    EXPECT_EQ(CurrentSet().Aliases, (AliasTable{{"l", "look", true}, {"l", "look", true}}));
}

TEST_F(AliasEditor, ShiftAndEnterTypeNothingIntoTheReplacement) {
    OpenIt();
    Click("cmdNew");
    TypeInto(Action(), "look");
    QTest::keyClick(Action(), Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(Action()->toPlainText(), "look");
    EXPECT_TRUE(Action()->isEnabled());
}

TEST_F(AliasEditor, BreaksPastedIntoTheReplacementBecomeBlanks) {
    OpenIt();
    Click("cmdNew");
    TypeInto(Alias(), "l");
    QApplication::clipboard()->setText("a\nb");
    Action()->paste();
    Click("cmdAdd");
    EXPECT_EQ(CurrentSet().Aliases[0].Replace, "a b");
}

TEST_F(AliasEditor, RowsMapToIndicesAcrossTheGapsOfAFile) {
    CurrentSet().Aliases = {{}, {"b", "2", true}, {}, {"d", "4", true}};
    OpenIt();
    EXPECT_EQ(Rows(List()), (Texts{"b", "d"}));
    List()->setCurrentRow(1);
    EXPECT_EQ(Alias()->text(), "d");
    EXPECT_EQ(Action()->toPlainText(), "4");
    Click("cmdDelete");
    EXPECT_EQ(CurrentSet().Aliases, (AliasTable{{}, {"b", "2", false}, {}}));
    EXPECT_EQ(Rows(List()), (Texts{"b"}));
}

TEST_F(AliasEditor, StoresOverTheEditedEntryAndSaysSoOnItsButton) {
    CurrentSet().Aliases = {{"a", "1", false}};
    OpenIt();
    List()->setCurrentRow(0);
    Click("cmdEdit");
    EXPECT_EQ(Button("cmdAdd")->text(), "&Store");
    QTest::keyClicks(Alias(), "new");
    Click("cmdAdd");
    EXPECT_EQ(CurrentSet().Aliases, (AliasTable{{"new", "1", false}}));
    EXPECT_EQ(Button("cmdAdd")->text(), "&Add");
    EXPECT_EQ(Rows(List()), (Texts{"new"}));
}

TEST_F(AliasEditor, TheCheckBoxActsOnTheSelectionAndDoesNotFollowItOnPurpose) {
    CurrentSet().Aliases = {{"a", "1", false}, {"b", "2", true}};
    OpenIt();
    List()->setCurrentRow(0);
    EXPECT_FALSE(Disable()->isChecked());
    List()->setCurrentRow(1);
    QTest::mouseClick(Disable(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(8, Disable()->height() / 2));
    EXPECT_FALSE(CurrentSet().Aliases[1].IsEnabled);
    EXPECT_EQ(List()->currentRow(), 1);
    List()->setCurrentRow(0);
    EXPECT_TRUE(Disable()->isChecked());
    QTest::mouseClick(Disable(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(8, Disable()->height() / 2));
    EXPECT_TRUE(CurrentSet().Aliases[0].IsEnabled);
}

TEST_F(AliasEditor, ADeletionDisablesTheOthersOnPurpose) {
    CurrentSet().Aliases = {{"a", "1", true}, {"b", "2", true}, {"c", "3", true}};
    OpenIt();
    List()->setCurrentRow(1);
    Click("cmdDelete");
    EXPECT_EQ(CurrentSet().Aliases, (AliasTable{{"a", "1", false}, {"c", "3", false}}));
    EXPECT_EQ(Rows(List()), (Texts{"a", "c"}));
}

TEST_F(AliasEditor, ClosingDropsWhatIsTypedAndNotAdded) {
    for (const char* button : {"cmdDone", "cmdCancel"}) {
        OpenIt();
        Click("cmdNew");
        TypeInto(Alias(), "gone");
        Click(button);
        EXPECT_TRUE(Closed());
        EXPECT_EQ(CurrentSet().Aliases, AliasTable(1));
    }
}

TEST_F(AliasEditor, EscapeCloses) {
    OpenIt();
    QTest::keyClick(Dialog, Qt::Key_Escape);
    EXPECT_TRUE(Closed());
}

TEST_F(AliasEditor, RemembersItsSize) {
    OpenIt();
    Dialog->resize(777, 444);
    Click("cmdDone");
    ASSERT_TRUE(Closed());
    OpenIt();
    EXPECT_EQ(Dialog->size(), QSize(777, 444));
}

class TriggerEditor : public EditorTest {
protected:
    void OpenIt() { Open<frmTrigger>("mnuTriggers"); }

    QListWidget* List() const { return In<QListWidget>("lstTrigger"); }
    QLineEdit* Trigger() const { return In<QLineEdit>("txtTrigger"); }
    QPlainTextEdit* Action() const { return In<QPlainTextEdit>("txtAction"); }
    const std::vector<TriggerEntry>& Table() const { return CurrentSet().Triggers.Entries(); }
};

using Triggers = std::vector<TriggerEntry>;

TEST_F(TriggerEditor, KeepsABlankThatBreaksNoLine) {
    OpenIt();
    Click("cmdNew");
    TypeInto(Trigger(), "bonjour");
    Action()->setPlainText(QString::fromLatin1("bonjour\xA0!\ntout"));
    Click("cmdAdd");
    EXPECT_EQ(CurrentSet().Triggers.Entries()[0].React, "bonjour\xA0!\r\ntout");
}

TEST_F(TriggerEditor, AddsAReactionOfSeveralLinesWithoutTildes) {
    OpenIt();
    Click("cmdNew");
    TypeInto(Trigger(), "You are hungry");
    TypeInto(Action(), "say ~hello~");
    QTest::keyClick(Action(), Qt::Key_Return);
    QTest::keyClicks(Action(), "eat");
    Click("cmdAdd");
    EXPECT_EQ(Table(), (Triggers{{"You are hungry", "say -hello-\r\neat"}}));
}

// A break in one of these texts would make the set's file unreadable at the next start.
TEST_F(TriggerEditor, PastedBreaksBecomeBlanks) {
    OpenIt();
    Click("cmdNew");
    QApplication::clipboard()->setText("one\r\ntwo\nthree");
    Trigger()->paste();
    TypeInto(Action(), "y");
    Click("cmdAdd");
    EXPECT_EQ(Table()[0].Trigger, "one two three");
}

TEST_F(TriggerEditor, RefusesEmptyTextsWithTheirMessages) {
    OpenIt();
    Click("cmdNew");
    Click("cmdAdd");
    TypeInto(Trigger(), "x");
    Click("cmdAdd");
    EXPECT_EQ(Closer.Texts, (Boxes{"No trigger entered", "No action entered"}));
    EXPECT_EQ(Table(), Triggers(1));
}

TEST_F(TriggerEditor, GoesBackToBrowsingAfterAdding) {
    OpenIt();
    Click("cmdNew");
    for (const char* name : {"cmdNew", "cmdEdit", "cmdDelete"})
        EXPECT_FALSE(Button(name)->isEnabled()) << name;
    EXPECT_FALSE(List()->isEnabled());
    TypeInto(Trigger(), "x");
    TypeInto(Action(), "y");
    Click("cmdAdd");
    for (const char* name : {"cmdNew", "cmdEdit", "cmdDelete"})
        EXPECT_TRUE(Button(name)->isEnabled()) << name;
    EXPECT_TRUE(List()->isEnabled());
    EXPECT_FALSE(Trigger()->isEnabled());
}

TEST_F(TriggerEditor, ShowsEveryEntryAndTheTextsOfTheSelectedOne) {
    CurrentSet().Triggers = {{"a", "1\r\n2"}, {"", ""}, {"c", "3"}};
    OpenIt();
    EXPECT_EQ(Rows(List()), (Texts{"a", "", "c"}));
    List()->setCurrentRow(0);
    EXPECT_EQ(Trigger()->text(), "a");
    EXPECT_EQ(Action()->toPlainText(), "1\n2");
}

TEST_F(TriggerEditor, ChangesAndDeletesTheSelectedEntry) {
    CurrentSet().Triggers = {{"a", "1"}, {"b", "2"}};
    OpenIt();
    List()->setCurrentRow(1);
    Click("cmdEdit");
    QTest::keyClicks(Trigger(), "bb");
    Click("cmdAdd");
    EXPECT_EQ(Table(), (Triggers{{"a", "1"}, {"bb", "2"}}));
    List()->setCurrentRow(0);
    Click("cmdDelete");
    EXPECT_EQ(Table(), (Triggers{{"bb", "2"}}));
    Click("cmdDelete");
    EXPECT_EQ(Table(), Triggers(1));
    EXPECT_EQ(Rows(List()), (Texts{""}));
}

class MacroEditor : public EditorTest {
protected:
    void OpenIt() { Open<frmMacros>("Macros"); }

    QComboBox* Sets() const { return In<QComboBox>("cboMacro"); }
    QLineEdit* Box(const char* name) const { return In<QLineEdit>(name); }

    // Answers the question for a set's name as soon as it comes up.
    void AnswerName(const QString& name) {
        QTimer::singleShot(0, Frame.get(), [this, name] {
            auto* const question = Dialog->findChild<QInputDialog*>();
            if (question == nullptr)
                return AnswerName(name);
            Question = question->labelText();
            question->setTextValue(name);
            question->accept();
        });
    }

    void AddSet(const QString& name) {
        AnswerName(name);
        Click("cmdNMacro");
    }

    QString Question;
};

TEST_F(MacroEditor, ShowsTheTextsOfTheCurrentSet) {
    SetKeyText(CurrentSet().NormKey, 112, "f1");
    SetKeyText(CurrentSet().NormKey, 123, "f12");
    SetKeyText(CurrentSet().AltKey, 65, "alt a");
    SetKeyText(CurrentSet().CtrlKey, 90, "ctrl z");
    OpenIt();
    EXPECT_EQ(Box("txtF0")->text(), "f1");
    EXPECT_EQ(Box("txtF11")->text(), "f12");
    EXPECT_EQ(Box("TxtAlt0")->text(), "alt a");
    EXPECT_EQ(Box("txtCtrl25")->text(), "ctrl z");
    EXPECT_EQ(Box("txtF1")->text(), "");
    EXPECT_EQ(Sets()->currentText(), "Default");
}

TEST_F(MacroEditor, HasItsThreeTabsWithALabelForEachBox) {
    OpenIt();
    const auto* const tabs = In<QTabWidget>("tsbMacros");
    ASSERT_EQ(tabs->count(), 3);
    EXPECT_EQ(tabs->tabText(0), "F Keys");
    EXPECT_EQ(tabs->tabText(1), "Alt Keys");
    EXPECT_EQ(tabs->tabText(2), "Ctrl Keys");
    for (const char* name : {"lblF1", "lblF12", "lblAltA", "lblAltZ", "lblCtrlA", "lblCtrlZ"})
        EXPECT_NE(In<QLabel>(name), nullptr) << name;
}

TEST_F(MacroEditor, DoneStoresAllBoxesAndCloses) {
    SetKeyText(CurrentSet().NormKey, 113, "old");
    SetKeyText(CurrentSet().NormKey, 33, "not shown here");
    OpenIt();
    TypeInto(Box("txtF0"), "look;");
    Box("txtF1")->clear();
    Box("TxtAlt10")->setText("kill ");
    Box("txtCtrl0")->setText("n;n;");
    Click("cmdDone");
    EXPECT_TRUE(Closed());
    EXPECT_EQ(CurrentSet().NormKey, (KeyTable{{33, "not shown here"}, {112, "look;"}}));
    EXPECT_EQ(CurrentSet().AltKey, (KeyTable{{75, "kill "}}));
    EXPECT_EQ(CurrentSet().CtrlKey, (KeyTable{{65, "n;n;"}}));
}

TEST_F(MacroEditor, PastedBreaksBecomeBlanks) {
    OpenIt();
    QApplication::clipboard()->setText("n;\ns;");
    Box("txtF0")->paste();
    Box("TxtAlt0")->paste();
    Box("txtCtrl0")->paste();
    Click("cmdDone");
    EXPECT_EQ(KeyText(CurrentSet().NormKey, 112), "n; s;");
    EXPECT_EQ(KeyText(CurrentSet().AltKey, 65), "n; s;");
    EXPECT_EQ(KeyText(CurrentSet().CtrlKey, 65), "n; s;");
}

TEST_F(MacroEditor, ClosingWithoutDoneStoresNothing) {
    OpenIt();
    TypeInto(Box("txtF0"), "lost");
    QTest::keyClick(Dialog, Qt::Key_Escape);
    EXPECT_TRUE(Closed());
    EXPECT_TRUE(CurrentSet().NormKey.empty());
}

TEST_F(MacroEditor, ChoosingAnotherSetDropsWhatWasNotStored) {
    MacroSets.push_back(OneMacroSet("Second")[0]);
    SetKeyText(MacroSets[1].NormKey, 112, "second");
    OpenIt();
    TypeInto(Box("txtF0"), "lost");
    Sets()->setCurrentIndex(1);
    EXPECT_EQ(CurrentMacroSet, 1);
    EXPECT_EQ(CurrentMacroSetName, "Second");
    EXPECT_EQ(Box("txtF0")->text(), "second");
    Click("cmdDone");
    EXPECT_TRUE(MacroSets[0].NormKey.empty());
    EXPECT_EQ(MacroSets[1].NormKey, (KeyTable{{112, "second"}}));
}

TEST_F(MacroEditor, IsNoWiderForALongName) {
    OpenIt();
    const int width = Dialog->width();
    Click("cmdDone");
    ASSERT_TRUE(Closed());
    MacroSets[0].Name = std::string(100, 'W');
    OpenIt();
    EXPECT_EQ(Sets()->currentText(), QString(100, 'W'));
    EXPECT_EQ(Dialog->width(), width);
}

TEST_F(MacroEditor, TheWheelChoosesNoSet) {
    MacroSets.push_back(OneMacroSet("Second")[0]);
    OpenIt();
    TypeInto(Box("txtF0"), "kept");
    TurnWheel(Sets(), -120);
    EXPECT_EQ(CurrentMacroSet, 0);
    EXPECT_EQ(Box("txtF0")->text(), "kept");
}

TEST_F(MacroEditor, FillingTheChooserIsNotChoosing) {
    MacroSets.push_back(OneMacroSet("Second")[0]);
    CurrentMacroSet = 1;
    OpenIt();
    EXPECT_EQ(CurrentMacroSet, 1);
    EXPECT_EQ(CurrentMacroSetName, ""); // only a choice of the player's is recorded
    EXPECT_EQ(Sets()->currentIndex(), 1);
}

TEST_F(MacroEditor, ANewSetIsShownEmptyAndTakesNothingOfTheOldOne) {
    SetKeyText(CurrentSet().NormKey, 112, "old");
    OpenIt();
    AddSet("Second");
    EXPECT_EQ(Question, "Macro set name?");
    EXPECT_EQ(CurrentMacroSet, 1);
    EXPECT_EQ(Sets()->currentText(), "Second");
    EXPECT_EQ(Box("txtF0")->text(), "");
    TypeInto(Box("txtF0"), "new");
    Click("cmdDone");
    EXPECT_EQ(KeyText(MacroSets[0].NormKey, 112), "old");
    EXPECT_EQ(KeyText(MacroSets[1].NormKey, 112), "new");
}

TEST_F(MacroEditor, ANameThatCannotBeAFileNameIsRefused) {
    OpenIt();
    AddSet("a/b");
    EXPECT_EQ(Closer.Texts.size(), 1u);
    AddSet(" ");
    EXPECT_EQ(Closer.Texts.size(), 1u);
    EXPECT_EQ(MacroSets.size(), 1u);
}

TEST_F(MacroEditor, TheTwentyThirdSetIsRefusedWithATextThatSaysTwentyOnPurpose) {
    MacroSets.resize(22);
    OpenIt();
    Click("cmdNMacro");
    EXPECT_EQ(Closer.Texts, (Boxes{"There is a maximum of 20 macrosets"}));
    EXPECT_EQ(MacroSets.size(), 22u);
}

TEST_F(MacroEditor, PlainKeysPlayTheFirstSetsTextsWhateverSetIsCurrentOnPurpose) {
    MacroSets.push_back(OneMacroSet("Second")[0]);
    SetKeyText(MacroSets[0].NormKey, 116, "first;");
    SetKeyText(MacroSets[1].NormKey, 116, "second;");
    SetKeyText(MacroSets[1].CtrlKey, 75, "control;");
    CurrentMacroSet = 1;
    Connect();
    Press(Qt::Key_F5);
    EXPECT_TRUE(Server.Gets("first\r"));
    QTest::keyPress(Input(), Qt::Key_Control);
    Press(Qt::Key_K, Qt::ControlModifier);
    QTest::keyRelease(Input(), Qt::Key_Control);
    EXPECT_TRUE(Server.Gets("first\rcontrol\r"));
}

} // namespace
} // namespace mw
