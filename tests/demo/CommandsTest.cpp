#include "Commands.h"

#include "Scene.h"

#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

namespace world {
namespace {

constexpr std::string_view kUnknown = "The geese look blank.";

TEST(WorldCommands, EveryDirectionWalksByWordAndByLetters) {
    const int rooms = static_cast<int>(Quillmere().rooms.size());
    for (const DirectionRow& row : Directions()) {
        for (const std::string_view typed : {row.word, row.letters}) {
            for (int room = 0; room < rooms; ++room) {
                Scene scene;
                Player& ada = scene.Join("Ada");
                ada.room = room;
                scene.Type(ada, typed);
                EXPECT_EQ(ada.room, RoomTo(scene.world, room, row.direction).value_or(room))
                    << typed;
            }
        }
    }
}

TEST(WorldCommands, WordsMayBeInCapitalsAndHaveBlanksAround) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    scene.Type(ada, "  NORTH ");
    EXPECT_EQ(ada.room, *RoomTo(scene.world, StartRoom, Direction::North));
}

TEST(WorldCommands, LookShowsTheRoomByBothItsWords) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    const std::string seen = scene.Type(ada, "look");
    EXPECT_TRUE(Contains(seen, RoomAt(scene.world, StartRoom).title));
    EXPECT_TRUE(Contains(seen, "Exits: north, northeast, east, southeast, south, southwest, west, "
                               "northwest."));
    EXPECT_EQ(scene.Type(ada, "l"), seen);
}

TEST(WorldCommands, LookWithANameShowsThatAlone) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    ada.room = scene.RoomNamed("bakehouse");
    EXPECT_EQ(scene.Type(ada, "look bread"),
              Prose(ProseColour, Quillmere().things.at(0).look, ProseWidth));
    Creature& rat = scene.CreatureNamed("brown-rat");
    ada.room = rat.kind->room;
    EXPECT_EQ(scene.Type(ada, "l the brown RAT"), Prose(CreatureColour, rat.kind->sight));
    rat.life = 0;
    for (const char* line : {"look rat", "look bread", "look goose"})
        EXPECT_EQ(scene.Type(ada, line), Line(ProseColour, "You see no such thing here.")) << line;
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
    for (const char* line : {"dance", "lookk", "sayhello", "hel", ";", "n;s", "\xe4"})
        EXPECT_TRUE(Contains(scene.Type(ada, line), kUnknown)) << line;
}

// The words that help lists as commands: "  look or l: see the room again".
std::vector<std::string> WordsIn(const std::string& help) {
    const std::string front = std::string(ProseColour) + "  ";
    std::vector<std::string> words;
    for (std::size_t at = 0; (at = help.find(front, at)) != std::string::npos;) {
        at += front.size();
        const std::string names = help.substr(at, help.find(": ", at) - at);
        const std::size_t also = names.find(" or ");
        words.push_back(names.substr(0, also));
        if (also != std::string::npos)
            words.push_back(names.substr(also + 4));
    }
    return words;
}

TEST(WorldCommands, HelpNamesEveryWordInColour) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    const std::string help = scene.Type(ada, "help");
    const std::vector<std::string> words = WordsIn(help);
    const std::set<std::string> expected = {
        "look",   "l",       "map",   "say",    "tell", "emote",     "who",    "get",
        "take",   "drop",    "wear",  "remove", "eat",  "inventory", "i",      "kill",
        "attack", "flee",    "score", "sc",     "ring", "colours",   "colors", "sounds",
        "hush",   "options", "probe", "flood",  "help", "?",         "quit"};
    EXPECT_EQ(std::set<std::string>(words.begin(), words.end()), expected);
    EXPECT_EQ(words.size(), expected.size()) << "no word means two things";
    EXPECT_TRUE(EveryLineHasItsColour(help));
    EXPECT_EQ(scene.Type(ada, "?"), help);
}

TEST(WorldCommands, HelpNamesEveryDirectionAndEveryTopic) {
    Scene scene;
    const std::string help = scene.Type(scene.Join("Ada"), "help");
    for (const DirectionRow& row : Directions())
        EXPECT_TRUE(Contains(help, std::string(row.word) + " (" + std::string(row.letters) + ')'));
    for (const Topic& topic : Quillmere().topics)
        EXPECT_TRUE(Contains(help, Line(ExitColour, "  help " + topic.word + ": " + topic.about)));
}

TEST(WorldCommands, EveryWordOfHelpIsKnown) {
    Scene asked;
    for (const std::string& word : WordsIn(asked.Type(asked.Join("Ada"), "help"))) {
        Scene scene;
        Player& ada = scene.Join("Ada");
        const std::string read = scene.Type(ada, word);
        EXPECT_FALSE(Contains(read, kUnknown)) << word;
        EXPECT_TRUE(!read.empty() || ada.probe == ProbeState::Wanted) << word;
    }
}

TEST(WorldCommands, HelpWithATopicShowsAllOfItAndNothingElse) {
    for (const Topic& topic : Quillmere().topics) {
        Scene scene;
        Player& ada = scene.Join("Ada");
        std::string expected = Line(TitleColour, Capital(topic.about) + ':');
        for (const std::string& paragraph : topic.paragraphs)
            expected += Prose(ProseColour, paragraph);
        EXPECT_EQ(scene.Type(ada, "help " + topic.word), expected);
    }
}

TEST(WorldCommands, ATopicMayBeInCapitals) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    EXPECT_EQ(scene.Type(ada, "HELP Keypad"), scene.Type(ada, "help keypad"));
    EXPECT_TRUE(Contains(scene.Type(ada, "? keypad"), "Walking without words:"));
}

TEST(WorldCommands, HelpWithoutSuchATopicListsTheWords) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    const std::string list = scene.Type(ada, "help");
    for (const char* line : {"help geese", "help key", "help keypads", "help keypad macros"})
        EXPECT_EQ(scene.Type(ada, line), list) << line;
}

TEST(WorldCommands, ATopicFollowsANarrowWindow) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    ada.telnet.columns = 50;
    const std::string& paragraph = Quillmere().topics.at(0).paragraphs.back();
    EXPECT_TRUE(Contains(scene.Type(ada, "help " + Quillmere().topics.at(0).word),
                         Prose(ProseColour, paragraph, 50)));
}

TEST(WorldCommands, TheMapIsShownAsItStandsAndWhereOneIs) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    ada.telnet.columns = 40;
    ada.room = scene.RoomNamed("loft");
    std::string expected;
    for (const std::string& line : LinesOf(Quillmere(), "map"))
        expected += Line(ExitColour, line);
    EXPECT_EQ(scene.Type(ada, "map"), expected + Line(ProseColour, "You are here: Flour Loft."));
}

TEST(WorldCommands, ScoreTellsLifeFightsAndHunger) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    ada.life = 13;
    ada.kills = 1;
    EXPECT_EQ(scene.Type(ada, "score"), Line(NoticeColour, "Ada: 13 of 20 life, fights won 1.") +
                                            Line(HungerColour, "You are well fed."));
    ada.beatsSinceMeal = BeatsUntilHungry;
    EXPECT_TRUE(Contains(scene.Type(ada, "sc"), "You are hungry."));
}

TEST(WorldCommands, RingingTheBellIsReadAndHeardByTheRoomAlone) {
    Scene scene;
    scene.world.soundRoot = "http://127.0.0.1:8080/sounds/";
    Player& ada = scene.Join("Ada");
    Player& bob = scene.Join("Bob");
    Player& far = scene.Join("Far");
    Player& deaf = scene.Join("Deaf");
    ada.room = bob.room = deaf.room = scene.RoomNamed("ferry");
    deaf.telnet = {};
    Player& atTheGate = scene.Connect();
    atTheGate.room = ada.room;
    const std::string trigger =
        "!!SOUND(bell.wav V=90 P=60 U=http://127.0.0.1:8080/sounds/bell.wav )\r\n";
    EXPECT_EQ(scene.Type(ada, "ring"),
              "\x1b[0;1;37mYou ring the bell. It hums on for a while.\r\n" + trigger);
    const std::string seen = "\x1b[0;1;37mAda rings the bell. It hums on for a while.\r\n";
    EXPECT_EQ(Scene::Read(bob), seen + trigger);
    EXPECT_EQ(Scene::Read(deaf), seen) << "a client that takes no sounds is asked for none";
    EXPECT_EQ(Scene::Read(far), "");
    EXPECT_EQ(Scene::Read(atTheGate), "");
}

TEST(WorldCommands, OfManyWhoRingTheFirstEightAreHeardUntilTheNextBeat) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    Player& bob = scene.Join("Bob");
    ada.room = bob.room = scene.RoomNamed("ferry");
    for (int beats = 0; beats < 2; ++beats) {
        for (int rings = 0; rings < 8; ++rings)
            EXPECT_TRUE(
                Contains(scene.Type(rings % 2 == 0 ? ada : bob, "ring"), "!!SOUND(bell.wav "));
        Scene::Read(bob);
        EXPECT_EQ(scene.Type(ada, "ring"),
                  Line(NoticeColour, "You ring the bell. It is still humming."));
        EXPECT_EQ(Scene::Read(bob), Line(NoticeColour, "Ada rings the bell. It is still humming."));
        Beat(scene.world);
    }
}

TEST(WorldCommands, ABellIsRungByItsNameToo) {
    for (const char* line : {"ring bell", "RING the brass Bell", "ring  bell "}) {
        Scene scene;
        Player& ada = scene.Join("Ada");
        ada.room = scene.RoomNamed("ferry");
        EXPECT_TRUE(Contains(scene.Type(ada, line), "!!SOUND(bell.wav ")) << line;
    }
}

TEST(WorldCommands, NothingElseIsRungAndNoBellWhereNoneHangs) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    const std::string refusal = Line(ProseColour, "There is no such thing to ring here.");
    for (const char* line : {"ring", "ring bell"})
        EXPECT_EQ(scene.Type(ada, line), refusal) << line;
    ada.room = scene.RoomNamed("ferry");
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

TEST(WorldCommands, HushStopsWhatTheOneWhoAsksHears) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    Player& bob = scene.Join("Bob");
    EXPECT_TRUE(Contains(scene.Type(ada, "hush"), "!!SOUND(Off)"));
    EXPECT_EQ(Scene::Read(bob), "");
}

TEST(WorldCommands, AtTheGateNoWordAsksForASound) {
    for (const char* line : {"sounds", "ring bell", "hush"}) {
        Scene scene;
        Player& player = scene.Connect();
        player.telnet.ours[SoundOption] = OptionState::On;
        player.room = scene.RoomNamed("ferry");
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
    for (const char* line :
         {"look",       "look goose", "map",     "who",    "help",  "help menus", "score",
          "kill",       "kill rat",   "flee",    "get",    "drop",  "wear",       "remove",
          "eat",        "inventory",  "say",     "say hi", "tell",  "tell ada x", "emote",
          "emote hops", "colours",    "options", "probe",  "flood", "n",          "nw",
          "ring",       "sounds",     "hush",    "xyzzy",  "quit"}) {
        const std::string read = scene.Type(ada, line);
        EXPECT_FALSE(read.empty()) << line;
        EXPECT_TRUE(EveryLineHasItsColour(read)) << line;
    }
}

} // namespace
} // namespace world
