// The ways in which the program ends.
#include "Journey.h"

#include <csignal>

namespace journey {
namespace {

class Stop : public ServerJourney {};

TEST_F(Stop, ByTheMenuEndsTheConnectionAndTheProgram) {
    Connect();
    Player.ExitByMenu();
    EXPECT_EQ(Player.WaitForEnd(), 0);
    Server.WaitForPlayerToLeave();
    EXPECT_EQ(Server.Unread(), "");
}

TEST_F(Stop, ByTheMenuWithoutAConnection) {
    Player.Start();
    Moment("1-first-start");
    Player.ExitByMenu();
    EXPECT_EQ(Player.WaitForEnd(), 0);
}

TEST_F(Stop, ByASignalEndsItAtOnce) {
    Connect();
    Player.Process.terminate();
    const int status = Player.WaitForEnd();
    EXPECT_TRUE(status == 0 || status == -SIGTERM) << status;
    Server.WaitForPlayerToLeave();
}

} // namespace
} // namespace journey
