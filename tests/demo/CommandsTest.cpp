#include "Commands.h"

#include "Scene.h"

#include <gtest/gtest.h>
#include <string>

namespace world {
namespace {

int RoomWith(bool Features::*feature) {
    int room = 0;
    while (!(RoomAt(room).has.*feature))
        ++room;
    return room;
}

int RoomWithBread() { return RoomWith(&Features::bread); }

TEST(WorldCommands, EveryDirectionWalksByWordAndByLetters) {
    for (const DirectionRow& row : Directions()) {
        for (const std::string_view typed : {row.word, row.letters}) {
            for (int room = 0; room < static_cast<int>(Rooms().size()); ++room) {
                Scene scene;
                Player& ada = scene.Join("Ada");
                ada.room = room;
                scene.Type(ada, typed);
                EXPECT_EQ(ada.room, RoomTo(room, row.direction).value_or(room)) << typed;
            }
        }
    }
}

TEST(WorldCommands, WordsMayBeInCapitalsAndHaveBlanksAround) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    scene.Type(ada, "  NORTH ");
    EXPECT_EQ(ada.room, *RoomTo(StartRoom, Direction::North));
}

TEST(WorldCommands, LookShowsTheRoomByBothItsWords) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    const std::string seen = scene.Type(ada, "look");
    EXPECT_TRUE(Contains(seen, Rooms()[StartRoom].title));
    EXPECT_TRUE(Contains(seen, "Exits: north, northeast, east, south, southwest, west."));
    EXPECT_EQ(scene.Type(ada, "l"), seen);
}

TEST(WorldCommands, AnEmptyLineOnlyBringsThePromptAgain) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    ada.wantsPrompt = false;
    EXPECT_EQ(scene.Type(ada, "  "), "");
    EXPECT_TRUE(ada.wantsPrompt);
}

TEST(WorldCommands, AnUnknownWordGetsAFriendlyLine) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    for (const char* line : {"dance", "lookk", "sayhello", ";", "n;s", "\xe4"})
        EXPECT_TRUE(Contains(scene.Type(ada, line), "The geese look blank.")) << line;
}

TEST(WorldCommands, SayReachesTheRoomAndNoOther) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    Player& bob = scene.Join("Bob");
    Player& far = scene.Join("Far");
    far.room = 3;
    EXPECT_EQ(scene.Type(ada, "say Good  day, Bob!"),
              Line(SpeechColour, "You say: Good  day, Bob!"));
    EXPECT_EQ(Scene::Read(bob), Line(SpeechColour, "Ada says: Good  day, Bob!"));
    EXPECT_EQ(Scene::Read(far), "");
}

TEST(WorldCommands, SayStripsWhatCouldSteerAnothersScreen) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    Player& bob = scene.Join("Bob");
    scene.Type(ada, "say a\x1b[0;31mb\x07\x7f\xff\xf9"
                    "c");
    EXPECT_EQ(Scene::Read(bob), Line(SpeechColour, "Ada says: a[0;31mb\xf9"
                                                   "c"));
}

TEST(WorldCommands, SayIsCutToTwoHundredCharacters) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    Player& bob = scene.Join("Bob");
    scene.Type(ada, "say " + std::string(500, 'x'));
    const std::string heard = Scene::Read(bob);
    EXPECT_TRUE(Contains(heard, std::string(196, 'x')));
    EXPECT_LE(heard.size(), Line(SpeechColour, "Ada says: ").size() + MaxSpeech);
}

TEST(WorldCommands, SayWithoutWordsSaysNothing) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    Player& bob = scene.Join("Bob");
    EXPECT_TRUE(Contains(scene.Type(ada, "say "), "You open your mouth"));
    EXPECT_EQ(Scene::Read(bob), "");
}

TEST(WorldCommands, WhoListsThoseWhoPlayAndWhere) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    Player& bob = scene.Join("Bob");
    bob.room = RoomWithBread();
    scene.Connect().name = "Cy";
    const std::string list = scene.Type(ada, "who");
    EXPECT_TRUE(Contains(list, "Ada, Goose Green"));
    EXPECT_TRUE(Contains(list, "Bob, Bakehouse"));
    EXPECT_FALSE(Contains(list, "Cy"));
}

TEST(WorldCommands, HelpNamesEveryWordInColour) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    const std::string help = scene.Type(ada, "help");
    for (const char* word : {"look", "say", "who", "kill", "attack", "score", "get", "eat", "ring",
                             "sounds", "quit", "northeast", "(ne)"})
        EXPECT_TRUE(Contains(help, word)) << word;
    EXPECT_TRUE(EveryLineHasItsColour(help));
}

TEST(WorldCommands, ScoreTellsLifeLoavesHungerAndTerminal) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    ada.life = 13;
    ada.loaves = 2;
    ada.kills = 1;
    ada.terminal = "DEC-VT100";
    const std::string score = scene.Type(ada, "score");
    EXPECT_TRUE(Contains(score, "Ada: 13 of 20 life, loaves 2, rats beaten 1."));
    EXPECT_TRUE(Contains(score, "You are well fed."));
    EXPECT_TRUE(Contains(score, "DEC-VT100"));
    ada.beatsSinceMeal = BeatsUntilHungry;
    EXPECT_TRUE(Contains(scene.Type(ada, "sc"), "You are hungry."));
}

TEST(WorldCommands, BreadIsTakenInTheBakehouseOnly) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    EXPECT_TRUE(Contains(scene.Type(ada, "get bread"), "no such thing"));
    ada.room = RoomWithBread();
    EXPECT_TRUE(Contains(scene.Type(ada, "get bread"), "You take a warm loaf"));
    EXPECT_TRUE(Contains(scene.Type(ada, "take a LOAF"), "You take a warm loaf"));
    EXPECT_TRUE(Contains(scene.Type(ada, "get oven"), "no such thing"));
    EXPECT_TRUE(Contains(scene.Type(ada, "get"), "no such thing"));
    EXPECT_EQ(ada.loaves, 2);
}

TEST(WorldCommands, NobodyCarriesMoreThanThreeLoaves) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    ada.room = RoomWithBread();
    for (int i = 0; i < 5; ++i)
        scene.Type(ada, "get bread");
    EXPECT_EQ(ada.loaves, MaxLoaves);
}

TEST(WorldCommands, EatingBreadStillsHungerAndHeals) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    Player& bob = scene.Join("Bob");
    ada.loaves = 1;
    ada.life = 10;
    ada.beatsSinceMeal = 9;
    EXPECT_TRUE(Contains(scene.Type(ada, "eat bread"), "You eat a loaf"));
    EXPECT_EQ(ada.life, 10 + LifeOfALoaf);
    EXPECT_EQ(ada.loaves, 0);
    EXPECT_FALSE(IsHungry(ada));
    EXPECT_TRUE(Contains(Scene::Read(bob), "Ada eats a loaf of bread."));
    EXPECT_TRUE(Contains(scene.Type(ada, "eat bread"), "You have no bread."));
    EXPECT_TRUE(Contains(scene.Type(ada, "eat goose"), "only bread"));
}

TEST(WorldCommands, RingingTheBellIsReadAndHeardByTheRoomAlone) {
    Scene scene;
    scene.world.soundRoot = "http://127.0.0.1:8080/sounds/";
    Player& ada = scene.Join("Ada");
    Player& bob = scene.Join("Bob");
    Player& far = scene.Join("Far");
    ada.room = bob.room = RoomWith(&Features::bell);
    Player& atTheGate = scene.Connect();
    atTheGate.room = ada.room;
    const std::string trigger =
        "!!SOUND(bell.wav V=90 P=60 U=http://127.0.0.1:8080/sounds/bell.wav )\r\n";
    EXPECT_EQ(scene.Type(ada, "ring"),
              "\x1b[0;1;37mYou ring the bell. It hums on for a while.\r\n" + trigger);
    EXPECT_EQ(Scene::Read(bob),
              "\x1b[0;1;37mAda rings the bell. It hums on for a while.\r\n" + trigger);
    EXPECT_EQ(Scene::Read(far), "");
    EXPECT_EQ(Scene::Read(atTheGate), "");
}

TEST(WorldCommands, ABellIsRungByItsNameToo) {
    for (const char* line : {"ring bell", "RING the brass Bell", "ring  bell "}) {
        Scene scene;
        Player& ada = scene.Join("Ada");
        ada.room = RoomWith(&Features::bell);
        EXPECT_TRUE(Contains(scene.Type(ada, line), "!!SOUND(bell.wav ")) << line;
    }
}

TEST(WorldCommands, NothingElseIsRungAndNoBellWhereNoneHangs) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    const std::string refusal = Line(ProseColour, "There is no such thing to ring here.");
    for (const char* line : {"ring", "ring bell"})
        EXPECT_EQ(scene.Type(ada, line), refusal) << line;
    ada.room = RoomWith(&Features::bell);
    for (const char* line : {"ring goose", "ring bells", "ring bell twice", "ring doorbell"})
        EXPECT_EQ(scene.Type(ada, line), refusal) << line;
}

TEST(WorldCommands, SoundsAreShownToTheOneWhoAsks) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    Player& bob = scene.Join("Bob");
    const std::string read = scene.Type(ada, "sounds");
    for (const char* trigger : {"\r\n!!SOUND(", "\r\n!!MUSIC("})
        EXPECT_TRUE(Contains(read, trigger)) << trigger;
    EXPECT_EQ(Scene::Read(bob), "");
}

TEST(WorldCommands, AtTheGateNoWordAsksForASound) {
    for (const char* line : {"sounds", "ring bell"}) {
        Scene scene;
        Player& player = scene.Connect();
        player.room = RoomWith(&Features::bell);
        const std::string read = scene.Type(player, line) + scene.Type(player, line);
        EXPECT_FALSE(read.empty()) << line;
        EXPECT_FALSE(Contains(read, "!!")) << line;
    }
}

TEST(WorldCommands, QuitSaysGoodByeAndLeaves) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    Player& bob = scene.Join("Bob");
    EXPECT_TRUE(Contains(scene.Type(ada, "quit"), "Good-bye, Ada."));
    EXPECT_EQ(ada.stage, Stage::Gone);
    EXPECT_TRUE(Contains(Scene::Read(bob), "Ada takes the road out of town."));
    EXPECT_EQ(scene.Type(ada, "look"), "");
}

TEST(WorldCommands, EverythingAPlayerReadsHasItsColour) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    for (const char* line : {"look", "who", "help", "score", "kill", "kill rat", "get", "eat",
                             "say", "say hi", "n", "nw", "ring", "sounds", "xyzzy", "quit"}) {
        const std::string read = scene.Type(ada, line);
        EXPECT_FALSE(read.empty()) << line;
        EXPECT_TRUE(EveryLineHasItsColour(read)) << line;
    }
}

} // namespace
} // namespace world
