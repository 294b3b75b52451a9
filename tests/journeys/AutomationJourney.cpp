// A set, an alias, triggers and macros made in the editors, used, and found again the next day.
#include "Files.h"
#include "Journey.h"

namespace journey {
namespace {

class Automation : public ServerJourney {
protected:
    // Opens an editor by the keyboard: Configuration and the access key of its item.
    void OpenEditor(const QString& itemKey, const QString& title) {
        Player.Press({"alt+c", itemKey});
        Player.TakeKeys(title);
    }

    // Ends an editor by one of its keys and gives the keys back to the frame.
    void Leave(const QString& keys, const QString& title) {
        Player.Press(keys);
        Player.WaitToClose(title);
        Player.TakeKeys(Client::kFrame);
        Player.ClickCommandLine();
    }

    // The button "New" has the keys when an editor opens and after each entry.
    void AddEntry(const QString& text, const QString& action) {
        Player.Press("space");
        Player.Type(text);
        Player.Press("Tab");
        Player.Type(action);
        Player.Press("shift+Tab");
        Player.Press("Return");
    }

    std::string File(const QString& name) const { return FileText(Player.Home + '/' + name); }
};

TEST_F(Automation, IsMadeInTheEditorsUsedAndKept) {
    Connect();
    OpenEditor("m", "^Macros$");
    Player.Type("score;"); // F1 of the set "Default"
    Leave("alt+d", "^Macros$");

    OpenEditor("m", "^Macros$");
    Player.Press("alt+n");
    Player.TakeKeys("^New Macro Set$");
    Player.Type("Hunt");
    Player.Press("Return");
    Player.TakeKeys("^Macros$");
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
    Leave("alt+d", "^Macros$");

    OpenEditor("a", "^Aliases$");
    AddEntry("gt", "tell group");
    Moment("2-aliases");
    Leave("Escape", "^Aliases$");

    OpenEditor("t", "^Triggers$");
    AddEntry("You are hungry", "eat bread;drink");
    AddEntry("hungry", "sigh");
    Moment("3-triggers");
    Leave("Escape", "^Triggers$");

    Player.Enter("gt hello");
    Server.Expect("tell group hello\r");
    SendText("\r\n\x1b[0;31mYou are hungry.\r\n\x1b[0;37mThe rain stops.");
    Server.Expect("eat bread\rdrink\rsigh\r");
    // The menu has seen the Alt key come up, not the command line: for that one it is still held,
    // on purpose, until it goes down and up again.
    Player.Press("Alt_L");
    Player.Press("F1"); // plain keys are the first set's, whatever set is current
    Server.Expect("score\r");
    Player.Press("alt+k");
    Player.Enter("rat");
    Server.Expect("kill rat\r");
    Player.Press("ctrl+b");
    Server.Expect("flee\r");

    Player.ExitByMenu();
    EXPECT_EQ(Player.WaitForEnd(), 0);
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

    // The next day the first set is current, and the second is chosen in the editor.
    Connect();
    Player.Press("F1");
    Server.Expect("score\r");
    Player.Enter("gt hello");
    Server.Expect("gt hello\r");
    OpenEditor("m", "^Macros$");
    Player.Press("alt+s");
    Player.Press("Down");
    Leave("alt+d", "^Macros$");
    Player.Enter("gt hello");
    Server.Expect("tell group hello\r");
    Player.Press("alt+k");
    Player.Enter("rat");
    Server.Expect("kill rat\r");
    // Reactions are not read back: each match now sends a bare line, on purpose.
    SendText("\r\n\x1b[0;31mYou are hungry.\r\n\x1b[0;37mThe rain stops.");
    Server.Expect("\r\r");
    Player.ExitByMenu();
    EXPECT_EQ(Player.WaitForEnd(), 0);
}

} // namespace
} // namespace journey
