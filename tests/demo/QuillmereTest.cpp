// The town that is built in: its map, its texts, and whether what they promise is so.
#include "Scene.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace world {
namespace {

int RoomCount() { return static_cast<int>(Quillmere().rooms.size()); }

const Room& RoomOf(int room) { return Quillmere().rooms[static_cast<std::size_t>(room)]; }

int RoomNamed(std::string_view id) { return NumberOf(Quillmere().rooms, id); }

std::optional<int> WayFrom(int room, Direction way) {
    const int to = RoomOf(room).ways[static_cast<std::size_t>(way)];
    return to == Nowhere ? std::nullopt : std::optional(to);
}

bool IsPlainAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; });
}

// Prose that is there, in plain characters, without two blanks in a row or any at the ends.
bool IsProse(const std::string& text) {
    return !text.empty() && IsPlainAscii(text) && !Contains(text, "  ") && text.front() != ' ' &&
           text.back() != ' ';
}

bool IsSentence(const std::string& text) {
    return IsProse(text) && std::string_view(".!?)\"").find(text.back()) != std::string_view::npos;
}

TEST(Quillmere, HasAboutTwentyFiveRooms) {
    EXPECT_GE(RoomCount(), 23);
    EXPECT_LE(RoomCount(), 27);
}

TEST(Quillmere, BeginsOnTheGreenWithAllEightWaysOpen) {
    EXPECT_EQ(RoomOf(StartRoom).id, "green");
    for (const DirectionRow& row : Directions()) {
        const bool isLevel = row.direction != Direction::Up && row.direction != Direction::Down;
        EXPECT_EQ(WayFrom(StartRoom, row.direction).has_value(), isLevel) << row.word;
    }
}

TEST(Quillmere, LeadsByEveryExitToARoomAndBack) {
    for (int room = 0; room < RoomCount(); ++room) {
        for (const DirectionRow& row : Directions()) {
            const std::optional<int> next = WayFrom(room, row.direction);
            if (!next)
                continue;
            ASSERT_LT(*next, RoomCount());
            EXPECT_NE(*next, room) << RoomOf(room).id;
            EXPECT_EQ(WayFrom(*next, row.opposite), room) << RoomOf(room).id << ' ' << row.word;
        }
    }
}

TEST(Quillmere, HasNoTwoWaysFromOneRoomToAnother) {
    for (int room = 0; room < RoomCount(); ++room) {
        std::set<int> reached;
        for (const DirectionRow& row : Directions()) {
            const std::optional<int> next = WayFrom(room, row.direction);
            EXPECT_TRUE(!next || reached.insert(*next).second) << RoomOf(room).id;
        }
        EXPECT_FALSE(reached.empty()) << RoomOf(room).id;
    }
}

TEST(Quillmere, UsesAllTenDirections) {
    for (const DirectionRow& row : Directions()) {
        int uses = 0;
        for (int room = 0; room < RoomCount(); ++room)
            uses += WayFrom(room, row.direction) ? 1 : 0;
        EXPECT_GT(uses, 1) << row.word;
    }
}

// A step in each direction, as east, north and up.
constexpr std::array<std::array<int, 3>, DirectionCount> kSteps = {{
    {0, 1, 0},
    {1, 1, 0},
    {1, 0, 0},
    {1, -1, 0},
    {0, -1, 0},
    {-1, -1, 0},
    {-1, 0, 0},
    {-1, 1, 0},
    {0, 0, 1},
    {0, 0, -1},
}};

TEST(Quillmere, LiesFlatOnAGridAndIsWholeFromTheStart) {
    std::map<int, std::array<int, 3>> places = {{StartRoom, {0, 0, 0}}};
    std::vector<int> toVisit = {StartRoom};
    while (!toVisit.empty()) {
        const int room = toVisit.back();
        toVisit.pop_back();
        for (std::size_t way = 0; way < kSteps.size(); ++way) {
            const std::optional<int> next = WayFrom(room, static_cast<Direction>(way));
            if (!next)
                continue;
            std::array<int, 3> place = places[room];
            for (std::size_t axis = 0; axis < 3; ++axis)
                place[axis] += kSteps[way][axis];
            if (places.emplace(*next, place).second)
                toVisit.push_back(*next);
            EXPECT_EQ(places[*next], place) << RoomOf(*next).id << " is in two places";
        }
    }
    std::set<std::array<int, 3>> taken;
    for (const auto& [room, place] : places)
        EXPECT_TRUE(taken.insert(place).second) << RoomOf(room).id << " shares its place";
    EXPECT_EQ(places.size(), Quillmere().rooms.size());
}

TEST(Quillmere, GivesEveryRoomANameATitleAndProseOfItsOwn) {
    std::set<std::string> names;
    std::set<std::string> titles;
    std::set<std::string> proses;
    for (const Room& room : Quillmere().rooms) {
        EXPECT_TRUE(names.insert(room.id).second) << room.id;
        EXPECT_TRUE(titles.insert(room.title).second) << room.title;
        EXPECT_TRUE(proses.insert(room.prose).second) << room.title;
        EXPECT_TRUE(IsProse(room.title)) << room.id;
        EXPECT_TRUE(IsSentence(room.prose)) << room.id;
        EXPECT_GT(room.prose.size(), 100U) << room.id;
        EXPECT_LT(room.prose.size(), 400U) << room.id;
    }
}

TEST(Quillmere, HasOneBellAndOnePianoUnderARoof) {
    for (const auto feature : {&Room::bell, &Room::piano})
        EXPECT_EQ(std::ranges::count(Quillmere().rooms, true, feature), 1);
    for (const Room& room : Quillmere().rooms)
        EXPECT_FALSE(room.piano && room.sky) << room.title;
}

TEST(Quillmere, HasWeatherOverMoreThanHalfOfItAndNoneBelowGround) {
    const auto open = std::ranges::count(Quillmere().rooms, true, &Room::sky);
    EXPECT_GT(open, RoomCount() / 2);
    std::set<std::string> roofed;
    for (int room = 0; room < RoomCount(); ++room) {
        if (!RoomOf(room).sky)
            roofed.insert(RoomOf(room).title);
        const std::optional<int> below = WayFrom(room, Direction::Down);
        EXPECT_TRUE(!below || !RoomOf(*below).sky || RoomOf(room).sky) << "sky under a roof";
    }
    EXPECT_EQ(roofed,
              (std::set<std::string>{"Archive Cellar", "Bakehouse", "Boathouse", "Flour Loft",
                                     "Inkworks", "Old Drain", "Schoolroom", "Scribes' Hall",
                                     "Sunken Reading Room", "Vellum House"}));
}

TEST(Quillmere, HasAHandfulOfCreaturesSomeOfWhichAttack) {
    const auto& kinds = Quillmere().kinds;
    EXPECT_GE(kinds.size(), 5U);
    EXPECT_LE(kinds.size(), 8U);
    const auto attackers = std::ranges::count(kinds, true, &Kind::attacks);
    EXPECT_GT(attackers, 1);
    EXPECT_LT(attackers, static_cast<std::ptrdiff_t>(kinds.size()) - 1);
}

TEST(Quillmere, HasOnlyCreaturesThatAreWhole) {
    std::set<int> rooms;
    std::set<std::string> names;
    for (const Kind& kind : Quillmere().kinds) {
        EXPECT_TRUE(names.insert(kind.id).second) << kind.id;
        EXPECT_TRUE(kind.name.starts_with("the ") && IsProse(kind.name)) << kind.id;
        EXPECT_EQ(Lower(kind.name), kind.name) << "capitals would never be found";
        EXPECT_TRUE(IsSentence(kind.sight)) << kind.id;
        EXPECT_GT(kind.life, 0) << kind.id;
        EXPECT_TRUE(kind.aim > 0 && kind.aim <= 100) << kind.id;
        EXPECT_TRUE(kind.bite > 0 && kind.bite < MaxLife / 2) << kind.id;
        for (const std::string& blow : kind.blows)
            EXPECT_TRUE(IsProse(blow) && Lower(blow) == blow) << kind.id;
        EXPECT_NE(kind.room, Nowhere) << kind.id;
        EXPECT_NE(kind.room, StartRoom) << "one who faints wakes there";
        EXPECT_TRUE(rooms.insert(kind.room).second) << "two in one room";
    }
}

TEST(Quillmere, SeesItsCreaturesUnderTheNamesTheyAreFoughtBy) {
    for (const Kind& kind : Quillmere().kinds)
        EXPECT_TRUE(Contains(Lower(kind.sight), LastWord(kind.name))) << kind.id;
}

TEST(Quillmere, HasOnlyThingsThatAreWhole) {
    std::set<std::string> names;
    for (const Thing& thing : Quillmere().things) {
        EXPECT_TRUE(names.insert(thing.id).second) << thing.id;
        EXPECT_TRUE(thing.name.starts_with("a ") || thing.name.starts_with("an ")) << thing.id;
        EXPECT_TRUE(IsProse(thing.name)) << thing.id;
        EXPECT_EQ(Lower(thing.name), thing.name) << "capitals would never be found";
        EXPECT_TRUE(IsSentence(thing.sight)) << thing.id;
        EXPECT_TRUE(IsSentence(thing.look)) << thing.id;
        EXPECT_NE(thing.home, Nowhere) << thing.id;
        EXPECT_EQ(thing.food > 0, IsSentence(thing.eaten)) << thing.id;
        EXPECT_TRUE(thing.worn.empty() || IsProse(thing.worn)) << thing.id;
        EXPECT_TRUE(thing.guard == 0 || !thing.worn.empty()) << thing.id;
        EXPECT_LE(thing.food, MaxLife) << thing.id;
    }
    EXPECT_GE(names.size(), 8U);
}

TEST(Quillmere, HasThingsToEatToWearAndToCarryAbout) {
    int food = 0;
    int clothes = 0;
    int guards = 0;
    int others = 0;
    for (const Thing& thing : Quillmere().things) {
        food += thing.food > 0 ? 1 : 0;
        clothes += thing.worn.empty() ? 0 : 1;
        guards += thing.guard;
        others += thing.food == 0 && thing.worn.empty() ? 1 : 0;
    }
    EXPECT_GE(food, 2);
    EXPECT_GE(clothes, 3);
    EXPECT_GE(guards, 1);
    EXPECT_GE(others, 1);
}

// Every thing is taken at home by the last word of its name, which is that of no creature there and
// of no other thing.
TEST(Quillmere, LetsEachThingBeTakenByAWordOfItsOwn) {
    std::set<std::string_view> words;
    for (std::size_t each = 0; each < Quillmere().things.size(); ++each) {
        const Thing& thing = Quillmere().things[each];
        Scene scene;
        Player& ada = scene.Join("Ada");
        ada.room = thing.home;
        scene.Type(ada, "get " + thing.id);
        EXPECT_EQ(ada.carried, std::vector<int>{static_cast<int>(each)}) << thing.id;
        EXPECT_TRUE(words.insert(LastWord(thing.name)).second) << thing.id;
    }
}

TEST(Quillmere, HasOnlyTopicsThatAreWhole) {
    std::set<std::string> words;
    for (const Topic& topic : Quillmere().topics) {
        EXPECT_TRUE(words.insert(topic.word).second) << topic.word;
        EXPECT_TRUE(IsProse(topic.word) && Lower(topic.word) == topic.word) << topic.word;
        EXPECT_FALSE(Contains(topic.word, " ")) << topic.word;
        EXPECT_TRUE(IsProse(topic.about)) << topic.word;
        EXPECT_FALSE(topic.paragraphs.empty()) << topic.word;
        for (const std::string& paragraph : topic.paragraphs)
            EXPECT_TRUE(IsSentence(paragraph)) << topic.word << ": " << paragraph;
    }
    for (const char* word : {"menus", "keypad", "macros", "aliases", "triggers", "sound"})
        EXPECT_TRUE(words.contains(word)) << word;
}

TEST(Quillmere, HasEveryTextAndNoOther) {
    std::set<std::string> names;
    for (const auto& [name, lines] : Quillmere().texts) {
        names.insert(name);
        EXPECT_FALSE(lines.empty()) << name;
        for (const std::string& line : lines) {
            EXPECT_TRUE(IsPlainAscii(line)) << line;
            EXPECT_TRUE(line.size() <= ProseWidth || name == "flood") << line;
        }
    }
    EXPECT_EQ(names, (std::set<std::string>{"flood", "greeting", "map", "welcome"}));
}

TEST(Quillmere, FloodsWithSentencesThatFitAWindow) {
    const std::vector<std::string>& lines = LinesOf(Quillmere(), "flood");
    EXPECT_GE(lines.size(), 10U);
    EXPECT_EQ(std::set<std::string>(lines.begin(), lines.end()).size(), lines.size());
    for (const std::string& line : lines) {
        EXPECT_TRUE(IsSentence(line)) << line;
        EXPECT_LE(line.size(), 100U) << line;
    }
}

// Where a word of the drawn map stands: its line, and its first column.
struct Spot {
    int line;
    int column;
};

// The upper part of the map is drawn, the lower part told.
std::vector<std::string> DrawnMap() {
    const std::vector<std::string>& map = LinesOf(Quillmere(), "map");
    return {map.begin(), std::ranges::find(map, "")};
}

std::string ToldMap() {
    const std::vector<std::string>& map = LinesOf(Quillmere(), "map");
    std::string told;
    for (auto line = std::ranges::find(map, ""); line != map.end(); ++line)
        told += ' ' + Clean(*line);
    return told;
}

// The whole title stands there, or its first word alone: the rest may be on the line below.
std::optional<Spot> SpotOf(const Room& room) {
    const std::string title = Lower(room.title) + ' ';
    for (const std::string& word : {title, title.substr(0, title.find(' ') + 1)}) {
        int number = 0;
        for (const std::string& line : DrawnMap()) {
            std::string drawn = ' ' + Lower(line) + ' ';
            std::ranges::replace(drawn, '-', ' ');
            const std::size_t at = drawn.find(' ' + word);
            if (at != std::string::npos)
                return Spot{number, static_cast<int>(at)};
            ++number;
        }
    }
    return std::nullopt;
}

TEST(QuillmereMap, NamesEveryRoom) {
    std::string map;
    for (const std::string& line : LinesOf(Quillmere(), "map"))
        map += Lower(line) + ' ';
    std::ranges::replace(map, '-', ' ');
    for (const Room& room : Quillmere().rooms) {
        std::string words = Lower(room.title) + ' ';
        while (!words.empty()) {
            const std::string word = words.substr(0, words.find(' '));
            EXPECT_TRUE(Contains(map, word)) << room.title;
            words.erase(0, word.size() + 1);
        }
    }
}

TEST(QuillmereMap, DrawsEveryRoomOnTheLevelOfTheGreenAndTellsOfTheOthers) {
    std::set<std::string> drawn;
    for (const Room& room : Quillmere().rooms) {
        if (SpotOf(room))
            drawn.insert(room.title);
    }
    const std::string told = ToldMap();
    for (const Room& room : Quillmere().rooms)
        EXPECT_NE(drawn.contains(room.title), Contains(told, "the " + room.title + " ("))
            << room.title;
}

TEST(QuillmereMap, DrawsEveryWayInItsDirection) {
    int ways = 0;
    for (int room = 0; room < RoomCount(); ++room) {
        for (std::size_t way = 0; way < 8; ++way) {
            const std::optional<int> next = WayFrom(room, static_cast<Direction>(way));
            const std::optional<Spot> from = SpotOf(RoomOf(room));
            if (!next || !from)
                continue;
            const std::optional<Spot> to = SpotOf(RoomOf(*next));
            ASSERT_TRUE(to) << RoomOf(*next).title;
            const std::string told = RoomOf(room).title + " to " + RoomOf(*next).title;
            const int north = kSteps[way][1];
            const int east = kSteps[way][0];
            EXPECT_EQ(from->line > to->line, north > 0) << told;
            EXPECT_EQ(from->line < to->line, north < 0) << told;
            EXPECT_TRUE(east == 0 || (to->column > from->column) == (east > 0)) << told;
            EXPECT_TRUE(east != 0 || std::abs(to->column - from->column) < 8) << told;
            ++ways;
        }
    }
    EXPECT_GT(ways, 40);
}

// The room that the map tells of lies above or below the one in brackets behind it.
TEST(QuillmereMap, TellsWhatLiesAboveAndBelowWhat) {
    const std::string told = ToldMap();
    const std::size_t down = told.find("Down:");
    for (int room = 0; room < RoomCount(); ++room) {
        for (const Direction way : {Direction::Up, Direction::Down}) {
            const std::optional<int> next = WayFrom(room, way);
            if (!next || !SpotOf(RoomOf(room)))
                continue;
            const std::string words =
                "the " + RoomOf(*next).title + " (" + RoomOf(room).title + ')';
            const std::size_t at = told.find(words);
            EXPECT_NE(at, std::string::npos) << words;
            EXPECT_EQ(at > down, way == Direction::Down) << words;
        }
    }
}

// What stands in quotation marks in a text.
std::vector<std::string> QuotedIn(const std::string& text) {
    std::vector<std::string> quoted;
    for (std::size_t open = 0; (open = text.find('"', open)) != std::string::npos;) {
        const std::size_t close = text.find('"', open + 1);
        quoted.push_back(text.substr(open + 1, close - open - 1));
        open = close == std::string::npos ? close : close + 1;
    }
    return quoted;
}

// Whether the world knows the word that a line begins with.
bool IsKnown(const std::string& line) {
    Scene scene;
    return !Contains(scene.Type(scene.Join("Ada"), line.substr(0, line.find(' '))),
                     "The geese look blank.");
}

// Aliases that the texts propose, and words of the game that they have a trigger wait for.
const std::set<std::string> kNotToType = {"ga", "t", "t ada hello", "You are hungry",
                                          "attacks you!"};

// Every word that the texts tell a player to type.
std::vector<std::string> ToType() {
    std::vector<std::string> texts = LinesOf(Quillmere(), "welcome");
    for (const Topic& topic : Quillmere().topics)
        std::ranges::copy(topic.paragraphs, std::back_inserter(texts));
    for (const Room& room : Quillmere().rooms)
        texts.push_back(room.prose);
    std::vector<std::string> lines;
    for (const std::string& text : texts) {
        for (std::string quoted : QuotedIn(text)) {
            if (kNotToType.contains(quoted))
                continue;
            for (std::size_t end = 0; !quoted.empty();) {
                end = std::min(quoted.find(';'), quoted.size());
                lines.push_back(quoted.substr(0, end));
                quoted.erase(0, end + 1);
            }
        }
    }
    return lines;
}

TEST(QuillmereHelp, HasNoOddQuotationMark) {
    for (const Topic& topic : Quillmere().topics) {
        for (const std::string& paragraph : topic.paragraphs)
            EXPECT_EQ(std::ranges::count(paragraph, '"') % 2, 0) << paragraph;
    }
    EXPECT_GT(ToType().size(), 20U);
}

TEST(QuillmereHelp, NamesOnlyWordsThatExist) {
    for (const std::string& line : ToType())
        EXPECT_TRUE(IsKnown(line)) << line;
}

TEST(QuillmereHelp, NamesOnlyTopicsThatExist) {
    int named = 0;
    for (const std::string& line : ToType()) {
        if (!line.starts_with("help "))
            continue;
        EXPECT_EQ(std::ranges::count(Quillmere().topics, line.substr(5), &Topic::word), 1) << line;
        ++named;
    }
    EXPECT_GE(named, 4);
}

// A line that a topic proposes, where it proposes to type it, and what comes of it.
struct Promise {
    const char* name;
    const char* topic;
    const char* line;
    const char* room;
    const char* answer;
};

void PrintTo(const Promise& row, std::ostream* out) { *out << row.name; }

class QuillmerePromises : public ::testing::TestWithParam<Promise> {};

TEST_P(QuillmerePromises, AreKept) {
    const Promise& row = GetParam();
    const auto topic = std::ranges::find(Quillmere().topics, row.topic, &Topic::word);
    ASSERT_NE(topic, Quillmere().topics.end());
    bool isTold = false;
    for (const std::string& paragraph : topic->paragraphs) {
        isTold = isTold || (Contains(paragraph, row.line) &&
                            Contains(paragraph, RoomOf(RoomNamed(row.room)).title));
    }
    EXPECT_TRUE(isTold);
    Scene scene;
    Player& ada = scene.Join("Ada");
    ada.room = RoomNamed(row.room);
    EXPECT_TRUE(Contains(scene.Type(ada, row.line), row.answer));
}

const Promise kPromises[] = {
    {"BreadInTheBakehouse", "food", "get bread", "bakehouse", "You take a warm loaf of bread."},
    {"TheBellAtTheFerry", "sound", "ring bell", "ferry", "You ring the bell."},
    {"TheRatInTheArchive", "fighting", "kill rat", "cellar", "You go for the brown rat!"},
};

INSTANTIATE_TEST_SUITE_P(All, QuillmerePromises, ::testing::ValuesIn(kPromises),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(QuillmereHelp, TellsWhereCreaturesAttack) {
    const auto topic = std::ranges::find(Quillmere().topics, "fighting", &Topic::word);
    ASSERT_NE(topic, Quillmere().topics.end());
    const std::string& told = topic->paragraphs.at(0);
    for (const Kind& kind : Quillmere().kinds) {
        EXPECT_TRUE(!kind.attacks || Contains(told, "the " + RoomOf(kind.room).title)) << kind.id;
    }
}

TEST(QuillmereHelp, ProposesAWalkByKeypadThatLeadsBackToTheGreen) {
    const auto topic = std::ranges::find(Quillmere().topics, "keypad", &Topic::word);
    ASSERT_NE(topic, Quillmere().topics.end());
    ASSERT_TRUE(Contains(topic->paragraphs.at(0), "try 8, then -, then +, then 2."));
    int room = StartRoom;
    for (const Direction way :
         {Direction::North, Direction::Up, Direction::Down, Direction::South}) {
        ASSERT_TRUE(WayFrom(room, way));
        room = *WayFrom(room, way);
    }
    EXPECT_EQ(room, StartRoom);
}

// What the topic on triggers has the client wait for is what the world really says.
TEST(QuillmereHelp, ProposesTriggersThatFire) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    ada.beatsSinceMeal = BeatsUntilHungry - 1;
    Beat(scene.world);
    EXPECT_TRUE(Contains(Scene::Read(ada), "You are hungry"));
    ada.room = *WayFrom(RoomNamed("drain"), Direction::Up);
    EXPECT_TRUE(Contains(scene.Type(ada, "down"), "attacks you!"));
    scene.Type(ada, "flee");
    EXPECT_FALSE(ada.foe);
}

TEST(QuillmereHelp, ProposesAnAliasThatFeeds) {
    Scene scene;
    Player& ada = scene.Join("Ada");
    ada.room = RoomNamed("orchard");
    EXPECT_TRUE(Contains(scene.Type(ada, "get apple"), "You take"));
    EXPECT_TRUE(Contains(scene.Type(ada, "eat apple"), "You eat"));
}

} // namespace
} // namespace world
