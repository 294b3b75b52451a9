#include "World.h"

namespace world {
namespace {

using enum Direction;

constexpr DirectionRow kDirections[] = {
    {North, "north", "n", South, "the north"},
    {NorthEast, "northeast", "ne", SouthWest, "the northeast"},
    {East, "east", "e", West, "the east"},
    {SouthEast, "southeast", "se", NorthWest, "the southeast"},
    {South, "south", "s", North, "the south"},
    {SouthWest, "southwest", "sw", NorthEast, "the southwest"},
    {West, "west", "w", East, "the west"},
    {NorthWest, "northwest", "nw", SouthEast, "the northwest"},
    {Up, "up", "u", Down, "above"},
    {Down, "down", "d", Up, "below"},
};

enum RoomNumber {
    GooseGreen = StartRoom,
    NorthGate,
    GatehouseRoof,
    WindmillRise,
    PaperMarket,
    FerryStage,
    HeronIsland,
    ScribesHall,
    ArchiveCellar,
    OldDrain,
    ReedBank,
    Bakehouse,
    FlourLoft,
    QuietYard,
};

// In the order of RoomNumber.
constexpr Room kRooms[] = {
    {"Goose Green",
     "Grass cropped short by three generations of geese slopes to a pump and a leaning signpost. "
     "The geese look up as one, weigh you, and go back to the grass. They have seen better, and "
     "they have seen worse.",
     {.sky = true}},
    {"North Gate",
     "Two squat towers and an arch too low for a hay cart; the scars on the keystone tell how "
     "often it has been tried. Beyond the bars a causeway runs into fog. The gate will be "
     "opened, the porter says, when the fog lifts. It has not lifted this year.",
     {.sky = true}},
    {"Gatehouse Roof",
     "Warm sheets of lead, and a telescope chained to the parapet. From up here the town is a "
     "spilled box of tiles beside the mere, and the mere is a sheet of paper on which nobody has "
     "dared to make the first mark.",
     {.sky = true}},
    {"Windmill Rise",
     "The mill grinds rags, not corn: rags to pulp, pulp to paper. Its sails are patched with "
     "old letters, and when the wind is right a line of somebody's farewell goes slowly by "
     "overhead.",
     {.sky = true}},
    {"Paper Market",
     "Stalls of cream and blue and butcher's brown, held down by river stones. The sellers wet a "
     "thumb and lift each sheet to the light for you. Nobody shouts, since a shout would scatter "
     "the stock.",
     {.sky = true}},
    {"Ferry Stage",
     "Silvered planks reach out over water the colour of strong tea. The ferry is a flat punt on "
     "a rope, and a brass bell on a post calls it over. The ferryman takes no coin; he asks one "
     "true sentence for each crossing, and he can tell.",
     {.sky = true, .bell = true}},
    {"Heron Island",
     "A hump of turf, one hawthorn, and forty herons with the air of magistrates. Long grey "
     "feathers lie everywhere, the kind that make the best pens. The herons count them every "
     "evening.",
     {.sky = true}},
    {"Scribes' Hall",
     "Forty desks, forty candles, thirty-nine scribes. Nobody looks up. On the empty desk the "
     "ink is still wet, and the page is headed with today's date. Behind the lectern a trapdoor "
     "stands open."},
    {"Archive Cellar",
     "Ledgers lean together in the dark like men leaving an inn. The lowest shelf has been read "
     "by teeth. It smells of damp and lamp oil, and a gap in the west wall breathes cold air."},
    {"Old Drain",
     "A brick tunnel, ankle deep, that used to carry the town's spilled ink to the mere. The "
     "walls are blue-black to the shoulder. Daylight falls in stripes through a grating, and "
     "iron rungs climb towards it."},
    {"Reed Bank",
     "Reeds twice your height stand in ranks and whisper all at once, like a class whose teacher "
     "has left the room. A grating in the mud has been levered aside; iron rungs go down into "
     "the dark.",
     {.sky = true}},
    {"Bakehouse",
     "The oven takes up one wall and most of the conversation. Bread cools on a slatted board by "
     "the door, under a card that reads: TAKE A LOAF. THEN TAKE YOUR LEAVE. A ladder goes up "
     "through the flour dust.",
     {.bread = true}},
    {"Flour Loft",
     "Sacks to the rafters, and a white cat asleep on the whitest of them, known only by the "
     "purring. Two sets of prints cross the floor to a piano that nobody can have brought up the "
     "ladder: yours, and one of very small feet, in a hurry.",
     {.piano = true}},
    {"Quiet Yard",
     "The town lays its scribes to rest under blank slates, since they said enough in life. A "
     "yew drops its needles on all alike. On the newest stone somebody has chalked a question "
     "mark.",
     {.sky = true}},
};

constexpr Passage kPassages[] = {
    {GooseGreen, North, NorthGate},       {GooseGreen, NorthEast, WindmillRise},
    {GooseGreen, East, PaperMarket},      {GooseGreen, South, ScribesHall},
    {GooseGreen, SouthWest, ReedBank},    {GooseGreen, West, Bakehouse},
    {NorthGate, Up, GatehouseRoof},       {NorthGate, East, WindmillRise},
    {NorthGate, West, QuietYard},         {WindmillRise, South, PaperMarket},
    {PaperMarket, SouthEast, FerryStage}, {FerryStage, East, HeronIsland},
    {ScribesHall, West, ReedBank},        {ScribesHall, Down, ArchiveCellar},
    {ArchiveCellar, West, OldDrain},      {OldDrain, Up, ReedBank},
    {Bakehouse, Up, FlourLoft},           {Bakehouse, North, QuietYard},
};

constexpr Kind kKinds[] = {
    {"the brown rat", "A brown rat sits on a ledger, chewing through the year of the flood.",
     ArchiveCellar, 8, 45, 3},
    {"the one-eared rat", "A one-eared rat, long as your arm, watches you from the water.",
     OldDrain, 16, 60, 4},
};

} // namespace

std::span<const DirectionRow> Directions() { return kDirections; }

std::span<const Room> Rooms() { return kRooms; }

std::span<const Passage> Passages() { return kPassages; }

std::span<const Kind> Kinds() { return kKinds; }

} // namespace world
