// Macros, aliases and triggers made in the editors and used in the demo world; and a second set of
// them, used, kept, and found again the next day.
#include "Editors.h"
#include "Files.h"
#include "Journey.h"
#include "Tour.h"

namespace journey {
namespace {

// In an editor that has just got an entry: the first one is selected, and its texts are shown.
void SelectFirst(const Client& player) { player.Press({"shift+Tab", "Home"}); }

class Automation : public WorldJourney {
protected:
    Automation() { PutTownInTheList(); }

    void MakeMacros() {
        OpenEditor(Player, "m", kMacros);
        Player.Type("score;");
        Player.Press("Tab");
        Player.Type("kill ");
        Moment("macros",
               "Configuration, Macros. F1 is going to send \"score\". F2 has no semicolon "
               "at its end, so its words wait in the command line for the rest.");
        LeaveEditor(Player, "alt+d", kMacros);
    }

    void MakeAliases() {
        OpenEditor(Player, "a", kAliases);
        AddEntry(Player, "gb", "get bread");
        AddEntry(Player, "bye", "quit");
        SelectFirst(Player);
        Moment("aliases",
               "Configuration, Alias's. A line that begins with \"gb\" is going to begin "
               "with \"get bread\".");
        LeaveEditor(Player, "Escape", kAliases);
    }

    void MakeTriggers() {
        OpenEditor(Player, "t", kTriggers);
        AddEntry(Player, "You take a warm loaf", "eat bread");
        AddEntry(Player, "You go for", "say Have at you!");
        SelectFirst(Player);
        Moment("triggers",
               "Configuration, Triggers. When the game says the one, the client answers "
               "with the other.");
        LeaveEditor(Player, "Escape", kTriggers);
    }
};

TEST_F(Automation, IsMadeInTheEditorsAndHelpsInTheWorld) {
    BeginChapter("Macros, aliases, triggers");
    ComeIn();
    MakeMacros();
    MakeAliases();
    MakeTriggers();
    ReleaseAlt(Player);

    Player.Press("F1");
    Player.WaitToSee("Ada: ");
    Walk(Player, '4', "Bakehouse");
    Player.Enter("gb");
    Player.WaitToSee("You take a warm loaf");
    Player.WaitToSee("You eat a loaf");
    Moment("alias-and-trigger", "F1 has told the score. In the bakehouse \"gb\" took a loaf, and "
                                "the trigger had it eaten at once.");

    Walk(Player, '6', "Goose Green");
    Walk(Player, '2', "Scribes' Hall");
    Walk(Player, '+', "Archive Cellar");
    Player.Press("F2");
    Player.Enter("rat");
    Player.WaitToSee("You go for the brown rat!");
    Player.WaitToSee("You say: Have at you!");
    Player.WaitToSee("You have beaten the brown rat!");
    Moment("macro-and-trigger", "F2 and the word \"rat\" began a fight, and a trigger found the "
                                "words for it.");
    Player.Enter("bye");
    Player.WaitToSee("Good-bye, Ada.");
    Player.WaitToSee("Connection Closed");
}

class SecondSet : public ServerJourney {
protected:
    std::string File(const QString& name) const { return FileText(Player.Home + '/' + name); }

    // F1 of the set "Default".
    void MakeAMacroOfTheFirstSet() {
        OpenEditor(Player, "m", kMacros);
        Player.Type("score;");
        LeaveEditor(Player, "alt+d", kMacros);
    }

    // With macros for Alt+K and Ctrl+B.
    void MakeTheSecondSet() {
        OpenEditor(Player, "m", kMacros);
        Player.Press("alt+n");
        Player.TakeKeys("^New Macro Set$");
        Player.Type("Hunt");
        Player.Press("Return");
        Player.TakeKeys(kMacros);
        Screen.Click(0, 0); // nowhere: the dialog keeps the keys
        Player.Press("alt+s");
        Player.Press("Tab");
        Player.Press("Tab");
        Player.Press("Right"); // the tab "Alt Keys"
        for (int i = 0; i < 11; ++i)
            Player.Press("Tab"); // to the box of Alt+K
        Player.Type("kill ");
        Moment("1-macros");
        Player.Press("ctrl+Tab"); // the tab "Ctrl Keys", at the box of Ctrl+A
        Player.Press("Tab");
        Player.Type("flee;");
        LeaveEditor(Player, "alt+d", kMacros);
    }

    void MakeItsAliasAndTriggers() {
        OpenEditor(Player, "a", kAliases);
        AddEntry(Player, "gt", "tell group");
        Moment("2-aliases");
        LeaveEditor(Player, "Escape", kAliases);

        OpenEditor(Player, "t", kTriggers);
        AddEntry(Player, "You are hungry", "eat bread;drink");
        AddEntry(Player, "hungry", "sigh");
        Moment("3-triggers");
        LeaveEditor(Player, "Escape", kTriggers);
    }

    void ChooseTheSecondSet() {
        OpenEditor(Player, "m", kMacros);
        Player.Press("alt+s");
        Player.Press("Down");
        LeaveEditor(Player, "alt+d", kMacros);
    }

    void GetHungry() { SendText("\r\n\x1b[0;31mYou are hungry.\r\n\x1b[0;37mThe rain stops."); }

    void ExpectAliasAndAltMacro() {
        Player.Enter("gt hello");
        Server.Expect("tell group hello\r");
        Player.Press("alt+k");
        Player.Enter("rat");
        Server.Expect("kill rat\r");
    }

    void ExpectBothSetsInTheirFiles() {
        EXPECT_NE(File("Data/client.cfg").find("[Macros]\r\nDefault\r\nHunt\r\n[END]\r\n"),
                  std::string::npos);
        EXPECT_EQ(File("Macros/Default.mco"), "NormKey112=score;\r\n[End]\r\n");
        const std::string hunt = "CTRLkey66=flee;\r\nAltKey75=kill \r\n"
                                 "[Trigger]\r\nValue=0\r\nTrigger=You are hungry\r\n"
                                 "React=eat bread;drink\r\n~\r\n"
                                 "[Trigger]\r\nValue=1\r\nTrigger=hungry\r\nReact=sigh\r\n~\r\n"
                                 "[Alias]\r\nValue=0\r\nAlias=gt\r\nReplace=tell group\r\n"
                                 "IsEnabled=True\r\n[End]\r\n";
        EXPECT_EQ(File("Macros/Hunt.mco"), hunt);
    }
};

TEST_F(SecondSet, IsMadeUsedAndFoundAgain) {
    Connect();
    MakeAMacroOfTheFirstSet();
    MakeTheSecondSet();
    MakeItsAliasAndTriggers();
    GetHungry();
    Server.Expect("eat bread\rdrink\rsigh\r");
    ReleaseAlt(Player);
    Player.Press("F1"); // plain keys are the first set's, whatever set is current
    Server.Expect("score\r");
    ExpectAliasAndAltMacro();
    Player.Press("ctrl+b");
    Server.Expect("flee\r");
    Exit();
    ExpectBothSetsInTheirFiles();

    // The next day the first set is current, and the second is chosen in the editor.
    Connect();
    Player.Press("F1");
    Server.Expect("score\r");
    Player.Enter("gt hello");
    Server.Expect("gt hello\r");
    ChooseTheSecondSet();
    ExpectAliasAndAltMacro();
    // Reactions are not read back: each match now sends a bare line, on purpose.
    GetHungry();
    Server.Expect("\r\r");
    Exit();
}

} // namespace
} // namespace journey
