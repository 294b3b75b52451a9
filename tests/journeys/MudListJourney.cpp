// The player's own games: added, chosen, played and deleted by the toolbar; the file after each
// step, byte for byte.
#include "Files.h"
#include "Journey.h"
#include "Wait.h"

#include <QDir>

namespace journey {
namespace {

const ListedGame kBuiltIn{"Quillmere", "1234"};

class Games : public ServerJourney {
protected:
    static constexpr const char* kAddDialog = "^Add Mud$";

    std::string List() const { return FileText(Player.Home + "/Data/muds.lst"); }

    void OpenAddDialog() {
        Player.ClickToolbar(NewButton);
        Player.TakeKeys(kAddDialog);
    }

    // Into the three fields of the dialog, which may hold something.
    void Fill(const QString& name, const QString& address, const QString& port) {
        Player.Press("alt+n");
        for (const QString& text : {name, address, port}) {
            Player.Press({"ctrl+a", "Delete"});
            Player.Type(text);
            Player.Press("Tab");
        }
    }

    void CloseAddDialog(const QString& key) {
        Player.Press(key);
        Player.WaitToClose(kAddDialog);
        Player.TakeKeys(Client::kFrame);
    }
};

TEST_F(Games, AreAddedChosenPlayedAndDeleted) {
    Player.Start();
    const std::string builtIn = GameList({kBuiltIn});
    EXPECT_EQ(List(), builtIn);
    OpenAddDialog();
    Fill("Northern Realms", "127.0.0.1", Server.PortText());
    Moment("1-add");
    CloseAddDialog("Return");
    const ListedGame added{"Northern Realms", Server.PortText().toStdString()};
    WaitFor("the folder of its sounds",
            [this] { return QDir(Player.Home + "/Northern Realms/sounds").exists(); });
    EXPECT_EQ(List(), GameList({kBuiltIn, added}));

    Player.ClickToolbar(Chooser);
    Player.Press("Down");
    Moment("2-choose");
    Player.ChooseFromList({"Return"});
    Player.ClickToolbar(ConnectButton);
    Server.WaitForPlayer();
    Player.WaitToSee("Attempting connection to: Northern Realms");
    Player.Enter("look");
    Server.Expect("look\r");
    Moment("3-connected");
    EXPECT_FALSE(Player.CanUse(NewButton));
    EXPECT_FALSE(Player.CanUse(DeleteButton));
    Player.ClickToolbar(DisconnectButton);
    Server.WaitForPlayerToLeave();

    Player.ClickToolbar(DeleteButton);
    WaitFor("the game to leave the file", [&] { return List() == builtIn; });
    EXPECT_TRUE(QDir(Player.Home + "/Northern Realms/sounds").exists()) << "sounds are kept";
    Player.ClickToolbar(DeleteButton); // now of the built-in game
    WaitFor("the refusal", [this] { return !Player.Boxes().isEmpty(); });
    Moment("4-refused");
    Player.AnswerBox();
    EXPECT_EQ(List(), builtIn);
    Player.TakeKeys(Client::kFrame);
    Exit();
    EXPECT_EQ(List(), builtIn);
}

TEST_F(Games, ThatLackSomethingAreRefusedAndTheDialogStaysOpen) {
    Player.Start();
    OpenAddDialog();
    const QString rows[][3] = {
        {"", "", ""},
        {" ", "127.0.0.1", "4000"},
        {"Far", "", "4000"},
        {"Far", " ", "4000"},
        {"Far", "127.0.0.1", ""},
        {"Far", "127.0.0.1", "40a0"},
        {"Far", "127.0.0.1", "99999"}, // an overflow
    };
    for (const auto& row : rows) {
        SCOPED_TRACE((row[0] + '|' + row[1] + '|' + row[2]).toStdString());
        Fill(row[0], row[1], row[2]);
        Player.Press("Return");
        Player.AnswerBox();
        Player.TakeKeys(kAddDialog);
        EXPECT_EQ(List(), GameList({kBuiltIn}));
    }
    Fill("Far", "127.0.0.1", "&H50"); // meant: a number too
    CloseAddDialog("Return");
    EXPECT_EQ(List(), GameList({kBuiltIn, {"Far", "80"}}));
    OpenAddDialog();
    CloseAddDialog("Escape");
    EXPECT_EQ(List(), GameList({kBuiltIn, {"Far", "80"}}));
}

} // namespace
} // namespace journey
