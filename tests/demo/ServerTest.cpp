#include "Server.h"

#include "Folder.h"
#include "Mute.h"
#include "Ports.h"
#include "Scene.h"
#include "Visitor.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace world {
namespace {

using namespace std::string_literals;

constexpr std::string_view kOpening = "\r\n\xff\xfd\x18\xff\xfd\x1f\xff\xfb\x5a"
                                      "\x1b[0;1;33mQ U I L L M E R E\r\n";

Settings QuickSettings() {
    const auto everyBlowLands = [](int) { return 0; };
    return {0, std::chrono::milliseconds(10), std::chrono::hours(1), everyBlowLands, {}};
}

class WorldServer : public ::testing::Test {
protected:
    void SetUp() override { Start(QuickSettings()); }

    void Start(const Settings& settings) {
        server = std::make_unique<Server>(settings);
        ASSERT_TRUE(server->Listen());
    }

    int Port() const { return server->Port(); }

    std::unique_ptr<Server> server;
};

bool WalksToTheBell(Visitor& visitor) {
    return visitor.Type("e", "Paper Market") && visitor.Type("se", "Ferry Stage");
}

bool WalksToTheRat(Visitor& visitor) {
    return visitor.Type("s", "Scribes' Hall") && visitor.Type("d", "Archive Cellar");
}

// A chunk of text begins with CR LF, one of negotiation with IAC; both end with the CR to lose.
bool IsFramed(std::string_view chunk) {
    return (chunk.starts_with("\r\n") || chunk.starts_with('\xff')) && chunk.ends_with('\r');
}

// The lines of a chunk, without the break it begins with and what follows the last line end.
std::string TextIn(std::string_view chunk) {
    const std::size_t begin = chunk.find("\x1b[");
    const std::size_t end = chunk.rfind("\r\n");
    if (begin == std::string_view::npos || end < begin)
        return {};
    return std::string(chunk.substr(begin, end + 2 - begin));
}

TEST_F(WorldServer, PicksAFreePortTheClientCanStore) {
    EXPECT_GT(Port(), 1023);
    EXPECT_LE(Port(), LastPort);
}

TEST_F(WorldServer, DoesNotBeginOnAPortThatIsTaken) {
    Settings settings = QuickSettings();
    settings.port = Port();
    Server second(settings);
    EXPECT_FALSE(second.Listen());
}

TEST_F(WorldServer, GreetsAndAsksForTheName) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.Sees("\x1b[0;32mBy what name are you known? \x1b[0;37m\xff\xf9\r"));
    EXPECT_TRUE(ada.received.starts_with(kOpening));
}

TEST_F(WorldServer, HidesThePasswordWhileItIsTyped) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.Sees("By what name"));
    ASSERT_TRUE(ada.Type("ada", "\x1b[0;32mPassword: \x1b[0;37m\xff\xf9\r"));
    EXPECT_TRUE(ada.received.starts_with("\r\n\xff\xfb\x01\x1b["));
    ASSERT_TRUE(ada.Type("secret", "\x1b[0;32m[20/20] > \x1b[0;37m\xff\xf9\r"));
    EXPECT_TRUE(ada.received.starts_with("\r\n\xff\xfc\x01\x1b["));
    EXPECT_FALSE(Contains(ada.received, "secret"));
}

TEST_F(WorldServer, AClientThatRefusesEchoIsNotAskedAgain) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.Sees("By what name"));
    ASSERT_TRUE(ada.Type("ada", "\xff\xfb\x01"));
    ada.Forget();
    ada.Send("\xff\xfe\x01");
    ASSERT_TRUE(ada.Type("secret", "[20/20] > "));
    EXPECT_FALSE(Contains(ada.received, "\xff\xfb\x01"));
}

TEST_F(WorldServer, RemembersAPassword) {
    Visitor first(Port());
    ASSERT_TRUE(first.LogIn("Ada"));
    ASSERT_TRUE(first.Type("quit", "Good-bye"));
    Visitor second(Port());
    ASSERT_TRUE(second.Sees("By what name"));
    ASSERT_TRUE(second.Type("ada", "The book knows you"));
    ASSERT_TRUE(second.Type("wrong", "That is not the word."));
    ASSERT_TRUE(second.Type("secret", "[20/20] > "));
}

TEST_F(WorldServer, ClosesAfterThreeWrongPasswordsAndShowsTypingAgain) {
    Visitor first(Port());
    ASSERT_TRUE(first.LogIn("Ada"));
    Visitor second(Port());
    ASSERT_TRUE(second.Sees("By what name"));
    ASSERT_TRUE(second.Type("ada", "Password: "));
    second.Send("one\rtwo\rthree\r");
    ASSERT_TRUE(second.IsClosed());
    EXPECT_TRUE(Contains(second.received, "The gate stays shut."));
    EXPECT_TRUE(Contains(second.received, "\xff\xfc\x01"));
    EXPECT_TRUE(first.Type("look", "Goose Green"));
}

TEST_F(WorldServer, LetsAPlayerWalkTheWholeWayToTheRat) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ASSERT_TRUE(ada.Type("s", "Scribes' Hall"));
    ASSERT_TRUE(ada.Type("down", "A brown rat sits"));
    ASSERT_TRUE(ada.Type("west", "Old Drain"));
    ASSERT_TRUE(ada.Type("u", "Reed Bank"));
    ASSERT_TRUE(ada.Type("northeast", "Goose Green"));
}

TEST_F(WorldServer, TakesEveryKindOfLineEnd) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ada.Forget();
    ada.Send("say one\rsay two\r\nsay three\r\0say four\n"s);
    ASSERT_TRUE(ada.Sees("You say: four"));
    for (const char* heard : {"You say: one", "You say: two", "You say: three"})
        EXPECT_TRUE(Contains(ada.received, heard)) << heard;
    EXPECT_FALSE(Contains(ada.received, "The geese look blank"));
}

TEST_F(WorldServer, AnEmptyLineBringsThePromptAlone) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ASSERT_TRUE(ada.Type("", "\xff\xf9\r"));
    EXPECT_EQ(ada.received, "\r\n\x1b[0;32m[20/20] > \x1b[0;37m\xff\xf9\r");
}

TEST_F(WorldServer, AsksForTheTerminalAndTakesTheClientsShortAnswer) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ada.Forget();
    ada.Send("\xff\xfb\x18");
    ASSERT_TRUE(ada.Sees("\xff\xf0\r"));
    EXPECT_EQ(ada.received, "\xff\xfa\x18\x01\xff\xf0\r");
    ada.Send("\xff\xfa\0DEC-VT100\xff\xf0"s);
    ASSERT_TRUE(ada.Type("options", "Your terminal is a DEC-VT100."));
}

TEST_F(WorldServer, WrapsProseToTheWindow) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ada.Send("\xff\xfb\x1f\xff\xfa\x1f\0\x2d\0\x18\xff\xf0"s);
    ASSERT_TRUE(ada.Type("look", "Exits:"));
    EXPECT_TRUE(Contains(ada.received, Prose(ProseColour, Quillmere().rooms[StartRoom].prose, 45)));
}

TEST_F(WorldServer, TwoPlayersSeeEachOther) {
    Visitor ada(Port());
    Visitor bob(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ada.Forget();
    ASSERT_TRUE(bob.LogIn("Bob"));
    EXPECT_TRUE(Contains(bob.received, "Ada is here."));
    EXPECT_TRUE(ada.Sees("\r\n\x1b[0;1;32mBob comes in off the road.\r\n\x1b[0;32m[20/20] > "));
    ASSERT_TRUE(ada.Type("say hello", "You say: hello"));
    EXPECT_TRUE(bob.Sees("\r\n\x1b[0;1;36mAda says: hello\r\n\x1b[0;32m[20/20] > "));
    ASSERT_TRUE(ada.Type("who", "Bob, Goose Green"));
    ASSERT_TRUE(ada.Type("w", "Bakehouse"));
    EXPECT_TRUE(bob.Sees("Ada leaves west."));
    ASSERT_TRUE(ada.Type("e", "Goose Green"));
    EXPECT_TRUE(bob.Sees("Ada arrives from the west."));
    ASSERT_TRUE(ada.Type("quit", "Good-bye, Ada."));
    EXPECT_TRUE(bob.Sees("Ada takes the road out of town."));
}

TEST_F(WorldServer, EveryWriteIsFramedAndEveryLineHasItsColour) {
    Visitor ada(Port());
    Visitor bob(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ASSERT_TRUE(bob.LogIn("Bob"));
    ada.TakeSounds();
    for (const char* line :
         {"look", "who", "help", "help menus", "map", "score", "dance", "say hello", "tell bob hi",
          "emote hops", "get bread", "inventory", "colours", "options", "sounds", "hush", ""})
        ASSERT_TRUE(ada.Type(line, "\xff\xf9\r")) << line;
    ada.Send("\xff\xfb\x18\xff\xfd\x03\xff\xfb\x05");
    ASSERT_TRUE(WalksToTheRat(ada));
    ASSERT_TRUE(ada.Type("kill rat", "You have beaten the brown rat!"));
    ASSERT_TRUE(ada.Type("quit", "Good-bye"));
    ASSERT_TRUE(ada.IsClosed());
    EXPECT_GT(ada.chunks.size(), 10U);
    for (const Visitor* visitor : {&ada, &bob}) {
        for (const std::string& chunk : visitor->chunks) {
            EXPECT_TRUE(IsFramed(chunk)) << ::testing::PrintToString(chunk);
            EXPECT_TRUE(EveryLineHasItsColour(TextIn(chunk))) << ::testing::PrintToString(chunk);
        }
    }
}

TEST_F(WorldServer, WhatHappensInOneTurnComesInOneWrite) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ada.chunks.clear();
    ada.Send("n\rs\rsay done\r");
    ASSERT_TRUE(ada.Sees("You say: done"));
    ASSERT_EQ(ada.chunks.size(), 1U);
    EXPECT_EQ(ada.chunks[0].find("[20/20] > "), ada.chunks[0].rfind("[20/20] > "));
}

// From the ferry stage a way leads through three rooms to the piano, short enough for one turn.
constexpr std::string_view kToThePiano = "nw\rw\rw\ru\r";

TEST_F(WorldServer, AsksForSoundsOnLinesOfTheirOwnBeforeThePrompt) {
    server->OfferSoundsAt(8081);
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ada.TakeSounds();
    ASSERT_TRUE(WalksToTheBell(ada));
    ASSERT_TRUE(ada.Type("ring", "\xff\xf9\r"));
    EXPECT_EQ(ada.received,
              "\r\n\x1b[0;1;37mYou ring the bell. It hums on for a while.\r\n"
              "!!SOUND(bell.wav V=90 P=60 U=http://127.0.0.1:8081/sounds/bell.wav )\r\n"
              "\x1b[0;32m[20/20] > \x1b[0;37m\xff\xf9\r");
}

TEST_F(WorldServer, AsksForSoundsWithoutAnAddressWhileNoneAreServed) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ada.TakeSounds();
    ASSERT_TRUE(ada.Type("sounds", "\r\n!!SOUND(bell.wav )\r\n"));
    EXPECT_TRUE(Contains(ada.received, "\r\n!!MUSIC(tune.mid V=70 P=50 )\r\n"));
    EXPECT_EQ(AddressesIn(ada.received), std::vector<std::string>{});
}

TEST_F(WorldServer, AsksForNoSoundsBeforeAClientAgreesAndNoneAfterItTakesThatBack) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ASSERT_TRUE(WalksToTheBell(ada));
    ASSERT_TRUE(ada.Type("ring", "\xff\xf9\r"));
    EXPECT_FALSE(Contains(ada.received, "!!"));
    ada.TakeSounds();
    ASSERT_TRUE(ada.Type("ring", "\xff\xf9\r"));
    EXPECT_TRUE(Contains(ada.received, "!!SOUND(bell.wav"));
    ada.Send("\xff\xfe\x5a");
    ASSERT_TRUE(ada.Type("ring", "\xff\xf9\r"));
    EXPECT_FALSE(Contains(ada.received, "!!"));
}

TEST_F(WorldServer, LeavesOutTheWaveThatATuneInTheSameWriteWouldTurnIntoMusic) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ada.TakeSounds();
    ASSERT_TRUE(WalksToTheBell(ada));
    ada.chunks.clear();
    ada.Send("ring\r" + std::string(kToThePiano));
    ASSERT_TRUE(ada.Sees("!!MUSIC(tune.mid "));
    ASSERT_EQ(ada.chunks.size(), 1U);
    EXPECT_TRUE(Contains(ada.chunks[0], "You ring the bell."));
    EXPECT_FALSE(Contains(ada.chunks[0], "!!SOUND("));
}

TEST_F(WorldServer, LeavesOutTheWaveThatAnothersSpeechWouldTurnIntoMusic) {
    Visitor ada(Port());
    Visitor bob(Port());
    for (Visitor* visitor : {&ada, &bob}) {
        ASSERT_TRUE(visitor->LogIn(visitor == &ada ? "Ada" : "Bob"));
        visitor->TakeSounds();
        ASSERT_TRUE(WalksToTheBell(*visitor));
    }
    bob.Forget();
    ada.Send("ring\rsay I like .mid files\r");
    ASSERT_TRUE(bob.Sees("Ada says: I like .mid files\r\n"));
    EXPECT_TRUE(Contains(bob.received, "Ada rings the bell."));
    EXPECT_FALSE(Contains(bob.received, "!!"));
}

TEST_F(WorldServer, AnOverlongLineLosesItsRestAndNothingElse) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ada.Forget();
    ada.Send("say " + std::string(20000, 'x') + "\rsay next\r");
    ASSERT_TRUE(ada.Sees("You say: next"));
    EXPECT_EQ(ada.received.find("You say: x"), ada.received.rfind("You say: x"));
    EXPECT_FALSE(Contains(ada.received, std::string(MaxSpeech, 'x')));
    EXPECT_FALSE(Contains(ada.received, "The geese look blank"));
}

TEST_F(WorldServer, OneWhoFloodsAndReadsIsAnsweredToTheLastLine) {
    Visitor ada(Port());
    Visitor bob(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ASSERT_TRUE(bob.LogIn("Bob"));
    std::string flood;
    for (int i = 0; i < 500; ++i)
        flood += "l\r";
    ada.Send(flood + "say done\r");
    ASSERT_TRUE(bob.Type("w", "Bakehouse")) << "others go on meanwhile";
    ASSERT_TRUE(ada.Sees("You say: done"));
}

// How often the words stand in the message that has most of them; each turn sends one.
int MostATurn(std::string_view received, std::string_view words) {
    int most = 0;
    int count = 0;
    for (std::size_t at = 0; at < received.size(); ++at) {
        if (received.substr(at).starts_with("\xff\xf9"))
            count = 0;
        else if (received.substr(at).starts_with(words))
            most = std::max(most, ++count);
    }
    return most;
}

int MostSaidATurn(std::string_view received) { return MostATurn(received, "You say: "); }

TEST_F(WorldServer, OneTurnCarriesOutEightLinesOfAPlayer) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ada.Forget();
    std::string flood;
    for (int i = 0; i < 3 * MaxLinesATurn; ++i)
        flood += "say x\r";
    ada.Send(flood + "say done\r");
    ASSERT_TRUE(ada.Sees("You say: done"));
    EXPECT_EQ(MostSaidATurn(ada.received), MaxLinesATurn);
}

TEST_F(WorldServer, OneWhoTalksOnAndOnIsHeardAtThePaceAndNobodyElseWaits) {
    Settings settings = QuickSettings();
    settings.pace = std::chrono::hours(1);
    Start(settings);
    Visitor ada(Port());
    Visitor bob(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ASSERT_TRUE(bob.LogIn("Bob"));
    bob.Forget();
    std::string talk;
    for (int i = 0; i < 2 * MaxLinesAhead; ++i)
        talk += "say " + std::to_string(1000 + i) + '\r';
    ada.Send(talk);
    const int nameAndPassword = 2;
    const int last = 1000 + MaxLinesAhead - nameAndPassword - 1;
    ASSERT_TRUE(bob.Sees("Ada says: " + std::to_string(last) + "\r\n"));
    for (int times = 0; times < 20; ++times) {
        ASSERT_TRUE(bob.Type("score", "Bob: "));
        EXPECT_FALSE(Contains(bob.received, "Ada says: ")) << bob.received;
    }
    EXPECT_TRUE(server->PaceTimerRuns());
}

TEST_F(WorldServer, ThePaceStandsStillWhileNobodyIsBehindIt) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.Sees("By what name"));
    EXPECT_FALSE(server->PaceTimerRuns());
    ASSERT_TRUE(ada.LogIn("Ada"));
    EXPECT_TRUE(WaitFor([this] { return !server->PaceTimerRuns(); }));
}

TEST_F(WorldServer, OneTurnReadsAKibibyteOfAPlayer) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ada.Forget();
    const std::string line = "say " + std::string(MaxSpeech - 4, 'x') + '\r';
    std::string flood;
    for (int i = 0; i < 40; ++i)
        flood += line;
    ada.Send(flood + "say done\r");
    ASSERT_TRUE(ada.Sees("You say: done"));
    const int fitting = static_cast<int>(MaxRead) / static_cast<int>(line.size()) + 1;
    EXPECT_LT(fitting, MaxLinesATurn);
    EXPECT_EQ(MostSaidATurn(ada.received), fitting);
}

// Four ends of lines lie in 1,024 bytes, in no fewer; and wherever those begin, in no more.
TEST_F(WorldServer, OneTurnReadsNotAByteMoreThanAKibibyteAndNotAByteLess) {
    for (const std::size_t length : {341U, 256U}) {
        Visitor ada(Port());
        ASSERT_TRUE(ada.LogIn("Ada"));
        ada.Forget();
        std::string flood = "l\r"; // the others end where a second kibibyte begins
        for (int i = 0; i < 40; ++i)
            flood += "say " + std::string(length - 5, 'x') + '\r';
        ada.Send(flood + "say done\r");
        ASSERT_TRUE(ada.Sees("You say: done"));
        EXPECT_EQ(MostSaidATurn(ada.received), 4) << length;
    }
}

using Crowd = std::vector<std::unique_ptr<Mute>>;

// Each has said everything before the first of them is heard.
Crowd CrowdThatSays(int port, const std::vector<std::string>& words) {
    Crowd crowd;
    for (const std::string& each : words) {
        crowd.push_back(std::make_unique<Mute>(port));
        EXPECT_TRUE(crowd.back()->Send(each));
    }
    return crowd;
}

TEST_F(WorldServer, OneTurnHearsOnePasswordOfAllAndTheOthersGoOnBetween) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    const Mute talker(Port());
    ASSERT_TRUE(talker.Send("Tom\rsecret\r"));
    ASSERT_TRUE(ada.Sees("Tom comes in off the road."));
    ada.Forget();
    const Crowd crowd =
        CrowdThatSays(Port(), {"Bea\rsecret\r", "Cyd\rsecret\r", "Dan\rsecret\r", "Eve\rsecret\r"});
    std::string talk;
    for (int i = 0; i < 12 * MaxLinesATurn; ++i)
        talk += "say x\r";
    ASSERT_TRUE(talker.Send(talk));
    ASSERT_TRUE(ada.Sees("Eve comes in"));
    EXPECT_EQ(MostATurn(ada.received, "comes in off the road."), MaxPasswordsATurn);
    const std::size_t bea = ada.received.find("Bea comes in");
    const std::size_t cyd = ada.received.find("Cyd comes in");
    ASSERT_LT(bea, cyd);
    EXPECT_TRUE(Contains(ada.received.substr(bea, cyd - bea), "Tom says: x"));
}

TEST_F(WorldServer, OneWhoTriesAPasswordAgainStandsBehindAllWhoWait) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    const Mute first(Port());
    ASSERT_TRUE(first.Send("Bea\rsecret\rquit\r"));
    ASSERT_TRUE(ada.Sees("Bea takes the road out of town."));
    ada.Forget();
    const Crowd crowd =
        CrowdThatSays(Port(), {"Bea\rwrong\rwrong\rsecret\r", "Cyd\rsecret\r", "Dan\rsecret\r"});
    ASSERT_TRUE(ada.Sees("Bea comes in"));
    EXPECT_TRUE(Contains(ada.received, "Cyd comes in"));
    EXPECT_TRUE(Contains(ada.received, "Dan comes in"));
}

TEST_F(WorldServer, TakesThreeHundredClientsAndTurnsTheNextOneAway) {
    ASSERT_EQ(MaxClients, 300U);
    std::vector<std::unique_ptr<Visitor>> crowd;
    for (std::size_t i = 0; i < MaxClients; ++i) {
        crowd.push_back(std::make_unique<Visitor>(Port()));
        ASSERT_TRUE(crowd.back()->Sees("By what name")) << i;
    }
    Visitor late(Port());
    ASSERT_TRUE(late.IsClosed());
    EXPECT_EQ(late.received,
              "\r\n\x1b[0;1;37mThe town is full. Please try again later.\r\n\x1b[0;37m\r");
    ASSERT_TRUE(crowd[0]->LogIn("Ada")) << "those who are in play on";
    ASSERT_TRUE(crowd[0]->Type("quit", "Good-bye"));
    ASSERT_TRUE(crowd[0]->IsClosed());
    Visitor next(Port());
    EXPECT_TRUE(next.Sees("By what name")) << "a place that is left is free again";
}

TEST_F(WorldServer, AClientThatNeverReadsIsDroppedWhileAnotherPlaysOn) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    const Mute mute(Port());
    ada.Forget();
    ASSERT_TRUE(mute.Send("Mute\rsecret\r"));
    ASSERT_TRUE(ada.Sees("Mute comes in off the road."));
    const std::string words(MaxSpeech - 4, 'x');
    int lines = 0;
    while (!Contains(ada.received, "Mute fades from sight.") && lines < 20000) {
        ASSERT_TRUE(ada.Type("say " + words, "You say: x")) << "after " << lines << " lines";
        ++lines;
    }
    EXPECT_TRUE(Contains(ada.received, "Mute fades from sight."));
    EXPECT_GT(lines, MaxQueue / 300) << "a short pause costs nobody the connection";
    ASSERT_TRUE(ada.Type("who", "Ada, Goose Green"));
    EXPECT_FALSE(Contains(ada.received, "Mute"));
}

TEST_F(WorldServer, AClientThatAsksAndNeverReadsIsDropped) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    const Mute mute(Port());
    ada.Forget();
    std::string flood = "Mute\rsecret\r";
    for (int i = 0; i < 5000; ++i)
        flood += "l\r";
    ASSERT_TRUE(mute.Send(flood));
    EXPECT_TRUE(ada.Sees("Mute fades from sight."));
}

TEST_F(WorldServer, QuitClosesAfterTheGoodBye) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ada.Forget();
    ada.Send("quit\rsay still here\r");
    ASSERT_TRUE(ada.IsClosed());
    EXPECT_EQ(ada.received, "\r\n\x1b[0;1;37mGood-bye, Ada. The geese will remember you.\r\n"
                            "\x1b[0;37m\r");
}

TEST_F(WorldServer, OneWhoVanishesIsSeenToFade) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    {
        Visitor bob(Port());
        ASSERT_TRUE(bob.LogIn("Bob"));
        bob.socket.abort();
    }
    EXPECT_TRUE(ada.Sees("Bob fades from sight."));
}

TEST_F(WorldServer, WhatWasSentBeforeClosingIsStillCarriedOut) {
    Visitor ada(Port());
    Visitor bob(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ASSERT_TRUE(bob.LogIn("Bob"));
    std::string words;
    for (int i = 0; i < 20; ++i)
        words += "say " + std::to_string(i) + "\r";
    bob.Send(words + "say farewell\r");
    bob.socket.disconnectFromHost();
    ASSERT_TRUE(ada.Sees("Bob fades from sight."));
    EXPECT_TRUE(Contains(ada.received, "Bob says: farewell"));
}

TEST_F(WorldServer, AnOlderConnectionOfTheSamePlayerIsClosed) {
    Visitor older(Port());
    ASSERT_TRUE(older.LogIn("Ada"));
    Visitor newer(Port());
    ASSERT_TRUE(newer.LogIn("Ada"));
    ASSERT_TRUE(older.IsClosed());
    EXPECT_TRUE(Contains(older.received, "by another door"));
    EXPECT_TRUE(newer.Type("look", "Goose Green"));
}

TEST_F(WorldServer, AFightGoesOnByItselfAndItsTimerStopsWithIt) {
    Visitor ada(Port());
    Visitor bob(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ASSERT_TRUE(bob.LogIn("Bob"));
    ASSERT_TRUE(ada.Type("s;d", "The geese look blank"));
    for (Visitor* visitor : {&ada, &bob}) {
        ASSERT_TRUE(WalksToTheRat(*visitor));
    }
    EXPECT_FALSE(server->FightTimerRuns());
    ASSERT_TRUE(ada.Type("kill rat", "You go for the brown rat!"));
    EXPECT_TRUE(server->FightTimerRuns());
    EXPECT_TRUE(bob.Sees("Ada goes for the brown rat!"));
    EXPECT_TRUE(ada.Sees("You have beaten the brown rat!"));
    EXPECT_TRUE(bob.Sees("Ada has beaten the brown rat!"));
    EXPECT_TRUE(WaitFor([&] { return !server->FightTimerRuns(); }));
    EXPECT_TRUE(Contains(ada.received, "[13/20] > "));
}

TEST_F(WorldServer, AFightEndsWithTheConnection) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ASSERT_TRUE(WalksToTheRat(ada));
    ASSERT_TRUE(ada.Type("kill rat", "You go for the brown rat!"));
    ada.socket.abort();
    EXPECT_TRUE(WaitFor([&] { return !server->FightTimerRuns(); }));
    EXPECT_TRUE(WaitFor([&] { return !server->BeatTimerRuns(); }));
}

TEST_F(WorldServer, TheSlowTimerRunsOnlyWhileSomeonePlays) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.Sees("By what name"));
    EXPECT_FALSE(server->BeatTimerRuns());
    ASSERT_TRUE(ada.LogIn("Ada"));
    EXPECT_TRUE(server->BeatTimerRuns());
    ASSERT_TRUE(ada.Type("quit", "Good-bye"));
    EXPECT_TRUE(WaitFor([&] { return !server->BeatTimerRuns(); }));
}

TEST_F(WorldServer, HungerComesUnasked) {
    Settings settings = QuickSettings();
    settings.beat = std::chrono::milliseconds(10);
    Start(settings);
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    EXPECT_TRUE(
        ada.Sees("\r\n\x1b[0;33mYou are hungry.\r\n\x1b[0;32m[20/20] > \x1b[0;37m\xff\xf9\r"));
}

TEST_F(WorldServer, ClosingSaysGoodByeToEveryoneAtOnce) {
    Visitor ada(Port());
    Visitor atTheGate(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ASSERT_TRUE(atTheGate.Sees("By what name"));
    server->Close();
    EXPECT_TRUE(ada.IsClosed());
    EXPECT_TRUE(atTheGate.IsClosed());
    EXPECT_TRUE(Contains(ada.received, "The world is rolled up for the night."));
    EXPECT_TRUE(Contains(atTheGate.received, "The world is rolled up for the night."));
}

constexpr std::string_view kPrompt = "\x1b[0;32m[20/20] > \x1b[0;37m\xff\xf9\r";

TEST_F(WorldServer, ProbesWithASequenceThatNothingFollows) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ASSERT_TRUE(ada.Type("probe", "\x1b[2K\r"));
    EXPECT_EQ(ada.received,
              "\r\n\x1b[0;1;37mThe porter asks your client for its name.\r\n\x1b[2K\r");
    ASSERT_TRUE(ada.Type("SMWCLIENT", kPrompt));
    EXPECT_EQ(ada.received, "\x1b[0;1;37mIt answers: SMWCLIENT. It shows colours, then.\r\n" +
                                std::string(kPrompt));
    ASSERT_TRUE(ada.Type("SMWCLIENT", "The geese look blank."));
}

TEST_F(WorldServer, AClientThatDoesNotAnswerAProbePlaysOn) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ASSERT_TRUE(ada.Type("probe", "\x1b[2K\r"));
    ASSERT_TRUE(ada.Type("look", kPrompt));
    ASSERT_TRUE(ada.Type("probe", "\x1b[2K\r")) << "it can be asked again";
}

TEST_F(WorldServer, AProbeWaitsUntilAFloodIsOver) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ASSERT_TRUE(ada.Type("flood 100\rprobe", "\x1b[2K\r"));
    EXPECT_TRUE(ada.received.ends_with("The flood is over.\r\n\x1b[2K\r"))
        << "nothing may follow it";
    EXPECT_EQ(ada.received.find("\x1b[2K"), ada.received.rfind("\x1b[2K"));
}

// The lines of a flood that came, without the frames of the writes they came in.
std::string WithoutFrames(std::string text) {
    const std::string frame = "\x1b[0;37m\r\x1b";
    for (std::size_t at = 0; (at = text.find(frame, at)) != std::string::npos;)
        text.erase(at, frame.size() - 1);
    return text;
}

bool HasPrompt(const Visitor& visitor) {
    return WaitFor([&] { return visitor.received.ends_with(kPrompt); });
}

TEST_F(WorldServer, SendsAFloodWholeWithoutAPromptBeforeItsEnd) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ada.Forget();
    ada.Send("flood 500\r");
    ASSERT_TRUE(HasPrompt(ada));
    const std::string end = "\x1b[0;1;37mThe flood is over.\r\n" + std::string(kPrompt);
    ASSERT_TRUE(ada.received.ends_with(end));
    EXPECT_EQ(ada.received.find("[20/20]"), ada.received.rfind("[20/20]"));
    std::string flood = WithoutFrames(ada.received);
    flood.erase(flood.size() - end.size());
    ASSERT_TRUE(flood.starts_with("\r\n"));
    flood.erase(0, 2);
    EXPECT_TRUE(EveryLineHasItsColour(flood));
    EXPECT_GE(flood.size(), 500U * 1024);
    EXPECT_LT(flood.size(), 500U * 1024 + 200);
}

TEST_F(WorldServer, AnotherPlaysAndIsHeardWhileAFloodRuns) {
    Visitor ada(Port());
    Visitor bob(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ASSERT_TRUE(bob.LogIn("Bob"));
    ASSERT_TRUE(HasPrompt(ada));
    ada.Forget();
    ada.Send("flood 4000\r");
    for (int times = 0; times < 5; ++times) {
        ASSERT_TRUE(bob.Type("say hello", "You say: hello"));
        EXPECT_FALSE(Contains(bob.received, "ferryman"));
    }
    EXPECT_FALSE(Contains(ada.received, "The flood is over.")) << "it was over too soon to tell";
    ASSERT_TRUE(HasPrompt(ada));
    EXPECT_GT(ada.received.size(), 4000U * 1024);
    EXPECT_TRUE(Contains(ada.received, "\x1b[0;1;36mBob says: hello\r\n"));
}

TEST_F(WorldServer, OneWhoTypesDuringAFloodIsAnsweredWithinIt) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ada.Forget();
    ada.Send("flood 300\rsay hello\r\r");
    ASSERT_TRUE(HasPrompt(ada));
    EXPECT_LT(ada.received.find("You say: hello"), ada.received.find("The flood is over."));
    EXPECT_EQ(ada.received.find("[20/20]"), ada.received.rfind("[20/20]"));
}

TEST_F(WorldServer, QuittingEndsAFlood) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ada.Send("flood 100000\rquit\r");
    ASSERT_TRUE(ada.IsClosed());
    EXPECT_TRUE(Contains(ada.received, "Good-bye, Ada."));
    EXPECT_LT(ada.received.size(), 1000U * 1024);
}

class WorldServerBook : public WorldServer {
protected:
    void SetUp() override { Restart(); }

    void Restart() {
        server.reset();
        Settings settings = QuickSettings();
        settings.book = folder.Path("players.json");
        Start(settings);
    }

    Folder folder;
};

TEST_F(WorldServerBook, BringsAPlayerBackAsTheyLeft) {
    Visitor first(Port());
    ASSERT_TRUE(first.LogIn("Ada"));
    ASSERT_TRUE(first.Type("w", "Bakehouse"));
    ASSERT_TRUE(first.Type("get bread", "You take a warm loaf"));
    ASSERT_TRUE(first.Type("quit", "Good-bye"));
    server->Close();
    Restart();
    Visitor second(Port());
    ASSERT_TRUE(second.Sees("By what name"));
    ASSERT_TRUE(second.Type("ada", "The book knows you"));
    ASSERT_TRUE(second.Type("wrong", "That is not the word."));
    ASSERT_TRUE(second.Type("secret", "Goose Green"));
    ASSERT_TRUE(second.Type("inventory", "a warm loaf of bread"));
}

TEST_F(WorldServerBook, KeepsWhatThoseHaveWhoPlayWhileItCloses) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ASSERT_TRUE(ada.Type("w", "Bakehouse"));
    ASSERT_TRUE(ada.Type("get bread", "You take a warm loaf"));
    server->Close();
    EXPECT_EQ(LoadBook(folder.Path("players.json")).at("Ada").carried,
              std::vector<std::string>{"loaf"});
    EXPECT_EQ(folder.Mode("players.json"), 0600);
}

TEST_F(WorldServerBook, IsWrittenASecondAfterANewName) {
    Visitor ada(Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    EXPECT_EQ(folder.Mode("players.json"), 0) << "what changes at once shares a write";
    ASSERT_TRUE(WaitFor([this] { return folder.Mode("players.json") != 0; }));
    const Book book = LoadBook(folder.Path("players.json"));
    ASSERT_TRUE(book.contains("Ada"));
    EXPECT_TRUE(IsPassword(book.at("Ada"), "secret"));
    EXPECT_EQ(folder.Mode("players.json"), 0600);
}

TEST_F(WorldServerBook, IsNotWrittenForThoseWhoOnlyLookIn) {
    Visitor player(Port());
    ASSERT_TRUE(player.Sees("By what name"));
    ASSERT_TRUE(player.Type("ada", "Password: "));
    server->Close();
    EXPECT_EQ(folder.Mode("players.json"), 0);
}

TEST_F(WorldServerBook, ThatIsDamagedIsRefusedAndLeftAsItWas) {
    folder.Write("players.json", "{\"players\": [");
    Settings settings = QuickSettings();
    settings.book = folder.Path("players.json");
    EXPECT_THROW(Server{settings}, std::runtime_error);
    EXPECT_EQ(folder.Read("players.json"), "{\"players\": [");
}

} // namespace
} // namespace world
