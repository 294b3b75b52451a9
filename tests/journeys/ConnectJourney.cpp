// Starts that connect at once, to a game of the list or to a new one.
#include "Files.h"
#include "Journey.h"
#include "Wait.h"

#include <QDir>

namespace journey {
namespace {

class ConnectAtStart : public ServerJourney {
protected:
    std::string List() const { return FileText(Player.Home + "/Data/muds.lst"); }

    void ConnectTo(const QString& game) {
        Player.Start({"--connect", game});
        Server.WaitForPlayer();
        Player.Enter("look");
        Server.Expect("look\r");
    }

    // The built-in game and another one at the server.
    std::string ListWith(const std::string& name) const {
        return GameList({{"Quillmere", "1234"}, {name, Server.PortText().toStdString()}});
    }
};

TEST_F(ConnectAtStart, AddsAnOrdinaryGameOnce) {
    const std::string added = ListWith("127.0.0.1");
    ConnectTo(Server.Address());
    EXPECT_EQ(List(), added);
    EXPECT_TRUE(QDir(Player.Home + "/127.0.0.1/sounds").exists());
    Exit();
    ConnectTo(Server.Address());
    Exit();
    EXPECT_EQ(List(), added);
    ConnectTo("127.0.0.1"); // now the name of a game
    Exit();
    EXPECT_EQ(List(), added);
}

struct Wrong {
    const char* Name;
    const char* Game;
};

void PrintTo(const Wrong& row, std::ostream* out) { *out << row.Name; }

class ConnectAtStartToNothing : public ConnectAtStart,
                                public ::testing::WithParamInterface<Wrong> {};

TEST_P(ConnectAtStartToNothing, IsToldAndTheClientCanBeUsed) {
    const std::string list = ListWith("Far");
    PutFile(Player.Home + "/Data/muds.lst", list);
    Player.Launch({"--connect", GetParam().Game});
    WaitFor("the box", [this] { return !Player.Boxes().isEmpty(); });
    Moment("1-told");
    Player.AnswerBox();
    Player.WaitForFrame();
    EXPECT_EQ(List(), list);
    Player.ClickToolbar(Chooser);
    Player.ChooseFromList({"Down", "Return"});
    Player.ClickToolbar(ConnectButton);
    Server.WaitForPlayer();
    Player.Enter("look");
    Server.Expect("look\r");
    Exit();
    EXPECT_EQ(List(), list);
}

const Wrong kWrong[] = {
    {"AnUnknownName", "Nowhere"},
    {"ANameLikeAnOption", "-v"},
    {"APortThatDoesNotFit", "127.0.0.1:99999"},
};

INSTANTIATE_TEST_SUITE_P(Rows, ConnectAtStartToNothing, ::testing::ValuesIn(kWrong),
                         [](const auto& row) { return row.param.Name; });

} // namespace
} // namespace journey
