#include "app/Placement.h"

#include "base/Notice.h"
#include "config/MRegistry.h"
#include "fakes/Fakes.h"
#include "support/ErrorOf.h"

#include <ostream>

namespace mw {

static void PrintTo(const Rectangle& r, std::ostream* out) {
    *out << r.Left << "," << r.Top << " " << r.Width << "x" << r.Height;
}

namespace {

using Steps = std::vector<std::string>;
using Screen = Rectangle;

const std::vector<Screen> kOne = {{0, 0, 1000, 700}};
// The second stands left of the first, the third right of it behind a gap.
const std::vector<Screen> kThree = {{0, 0, 1000, 700}, {-800, 100, 800, 600}, {1500, 0, 400, 300}};

struct Usable {
    const char* Name;
    KeptPlacement Kept; // left, top, width, height
    const std::vector<Screen>* Screens;
    Rectangle Place;
};

void PrintTo(const Usable& row, std::ostream* out) { *out << row.Name; }

class UsablePlacements : public testing::TestWithParam<Usable> {};

TEST_P(UsablePlacements, AreTakenOver) {
    EXPECT_EQ(UsablePlacement(GetParam().Kept, *GetParam().Screens), GetParam().Place);
}

const Usable kUsable[] = {
    {"InTheMiddle", {"100", "70", "800", "560"}, &kOne, {100, 70, 800, 560}},
    {"TheWholeScreen", {"0", "0", "1000", "700"}, &kOne, {0, 0, 1000, 700}},
    {"PartlyOffToTheLeft", {"-736", "0", "800", "560"}, &kOne, {-736, 0, 800, 560}},
    {"PartlyOffToTheRight", {"936", "0", "800", "560"}, &kOne, {936, 0, 800, 560}},
    {"PartlyOffAbove", {"0", "-496", "800", "560"}, &kOne, {0, -496, 800, 560}},
    {"PartlyOffBelow", {"0", "636", "800", "560"}, &kOne, {0, 636, 800, 560}},
    {"TheSmallest", {"0", "0", "64", "64"}, &kOne, {0, 0, 64, 64}},
    {"HugeIsMadeAsLargeAsTheScreen",
     {"0", "0", "2147483647", "2147483647"},
     &kOne,
     {0, 0, 1000, 700}},
    {"WiderThanTheScreen", {"10", "20", "1001", "100"}, &kOne, {10, 20, 1000, 100}},
    {"HigherThanTheScreen", {"10", "20", "100", "701"}, &kOne, {10, 20, 100, 700}},
    {"OtherFormsOfNumbers", {" 1e2 ", "&H46", "800.5", "+560"}, &kOne, {100, 70, 800, 560}},
    {"OnTheSecondScreen", {"-700", "200", "500", "400"}, &kThree, {-700, 200, 500, 400}},
    {"OnTheThirdScreen", {"1600", "50", "200", "200"}, &kThree, {1600, 50, 200, 200}},
    {"AcrossTwoScreens", {"-400", "150", "800", "400"}, &kThree, {-400, 150, 800, 400}},
    {"AsLargeAsAllScreensTogether", {"-800", "0", "9999", "9999"}, &kThree, {-800, 0, 2700, 700}},
};

INSTANTIATE_TEST_SUITE_P(Rows, UsablePlacements, testing::ValuesIn(kUsable),
                         [](const auto& row) { return row.param.Name; });

struct Unusable {
    const char* Name;
    KeptPlacement Kept; // left, top, width, height
    const std::vector<Screen>* Screens;
};

void PrintTo(const Unusable& row, std::ostream* out) { *out << row.Name; }

class UnusablePlacements : public testing::TestWithParam<Unusable> {};

TEST_P(UnusablePlacements, CountAsAbsent) {
    EXPECT_EQ(UsablePlacement(GetParam().Kept, *GetParam().Screens), std::nullopt);
}

const Unusable kUnusable[] = {
    {"NothingKept", {"", "", "", ""}, &kOne},
    {"NoLeft", {"", "70", "800", "560"}, &kOne},
    {"NoTop", {"100", "", "800", "560"}, &kOne},
    {"NoWidth", {"100", "70", "", "560"}, &kOne},
    {"NoHeight", {"100", "70", "800", ""}, &kOne},
    {"LeftIsNoNumber", {"left", "70", "800", "560"}, &kOne},
    {"TopIsNoNumber", {"100", "7o", "800", "560"}, &kOne},
    {"WidthIsNoNumber", {"100", "70", "80 0", "560"}, &kOne},
    {"HeightIsNoNumber", {"100", "70", "800", "560px"}, &kOne},
    {"LeftBeyond32Bits", {"-2147483649", "70", "800", "560"}, &kOne},
    {"WidthBeyond32Bits", {"100", "70", "2147483648", "560"}, &kOne},
    {"HeightBeyondEveryRange", {"100", "70", "800", "1e999"}, &kOne},
    {"NoSize", {"100", "70", "0", "0"}, &kOne},
    {"NoWideness", {"100", "70", "0", "560"}, &kOne},
    {"NoHighness", {"100", "70", "800", "0"}, &kOne},
    {"NegativeWidth", {"900", "70", "-800", "560"}, &kOne},
    {"NegativeHeight", {"100", "600", "800", "-560"}, &kOne},
    {"TheLeastOfAllWidths", {"100", "70", "-2147483648", "560"}, &kOne},
    {"OffToTheLeft", {"-800", "70", "800", "560"}, &kOne},
    {"OffToTheRight", {"1000", "70", "800", "560"}, &kOne},
    {"OffAbove", {"100", "-560", "800", "560"}, &kOne},
    {"OffBelow", {"100", "700", "800", "560"}, &kOne},
    {"AlmostOffToTheLeft", {"-737", "70", "800", "560"}, &kOne},
    {"AlmostOffToTheRight", {"937", "70", "800", "560"}, &kOne},
    {"AlmostOffAbove", {"100", "-497", "800", "560"}, &kOne},
    {"AlmostOffBelow", {"100", "637", "800", "560"}, &kOne},
    {"TooNarrowToTakeHoldOf", {"100", "70", "63", "560"}, &kOne},
    {"TooLowToTakeHoldOf", {"100", "70", "800", "63"}, &kOne},
    {"FarAway", {"2147483647", "2147483647", "2147483647", "2147483647"}, &kOne},
    {"FarAwayTheOtherWay", {"-2147483648", "-2147483648", "2147483647", "2147483647"}, &kOne},
    {"OnAScreenThatIsGone", {"-700", "200", "500", "400"}, &kOne},
    {"InTheGapBetweenScreens", {"1050", "50", "400", "200"}, &kThree},
    {"BesideTheSecondScreen", {"-700", "20", "500", "100"}, &kThree},
    {"ALittleOnEachOfTwoScreens", {"-40", "150", "80", "400"}, &kThree},
};

INSTANTIATE_TEST_SUITE_P(Rows, UnusablePlacements, testing::ValuesIn(kUnusable),
                         [](const auto& row) { return row.param.Name; });

TEST(DefaultPlacements, AreFourFifthsInTheMiddle) {
    EXPECT_EQ(DefaultPlacement({0, 0, 1000, 700}), (Rectangle{100, 70, 800, 560}));
    EXPECT_EQ(DefaultPlacement({-800, 100, 800, 600}), (Rectangle{-720, 160, 640, 480}));
    EXPECT_EQ(DefaultPlacement({0, 27, 1366, 741}), (Rectangle{136, 101, 1092, 592}));
}

constexpr const char* kKeptState = "MwClient/Windows/gWinState";

class FramePlacement : public RuleTest {
protected:
    static void Keep(const std::string& top, const std::string& left, const std::string& width,
                     const std::string& height) {
        KeepSetting("Windows", "gTop", top);
        KeepSetting("Windows", "gLeft", left);
        KeepSetting("Windows", "gWidth", width);
        KeepSetting("Windows", "gHeight", height);
    }

    static Steps Kept() {
        Steps values;
        for (const char* const key : {"gTop", "gLeft", "gWidth", "gHeight"})
            values.push_back(ReadSetting("MwClient", "Windows", key, "absent"));
        return values;
    }

    static void BeAt(const Rectangle& place, WindowState state) {
        fakes::Place = place;
        fakes::State = state;
    }
};

TEST_F(FramePlacement, IsRestored) {
    Keep("20", "10", "640", "480");
    RestorePlacement();
    EXPECT_EQ(fakes::Place, (Rectangle{10, 20, 640, 480}));
    EXPECT_EQ(fakes::State, WindowState::Normal);
    EXPECT_EQ(fakes::Calls, Steps{"PlaceFrame"});
}

TEST_F(FramePlacement, IsTheDefaultAtTheFirstStart) {
    RestorePlacement();
    EXPECT_EQ(fakes::Place, (Rectangle{100, 70, 800, 560}));
    EXPECT_EQ(Notice, "");
}

TEST_F(FramePlacement, IsTheDefaultWhenOneValueIsOfNoUse) {
    Keep("20", "10", "640", "high");
    RestorePlacement();
    EXPECT_EQ(fakes::Place, (Rectangle{100, 70, 800, 560}));
}

TEST_F(FramePlacement, IsTheDefaultOnThePrimaryScreenWhenItsScreenIsGone) {
    fakes::Screens = kThree;
    Keep("150", "3000", "640", "480");
    RestorePlacement();
    EXPECT_EQ(fakes::Place, DefaultPlacement(kThree[0]));
    Keep("150", "-700", "640", "480");
    RestorePlacement();
    EXPECT_EQ(fakes::Place, (Rectangle{-700, 150, 640, 480}));
    fakes::Screens = kOne;
    RestorePlacement();
    EXPECT_EQ(fakes::Place, DefaultPlacement(kOne[0]));
}

TEST_F(FramePlacement, IsTheDefaultWithANoticeWhenTheStoreCannotBeRead) {
    Keep("20", "10", "640", "480");
    fakes::OpenCode = 5;
    RestorePlacement();
    EXPECT_EQ(fakes::Place, (Rectangle{100, 70, 800, 560}));
    EXPECT_EQ(Notice, "Settings could not be read: Could not open registry section");
}

struct StateRow {
    const char* Name;
    const char* Kept;
    WindowState State;
};

void PrintTo(const StateRow& row, std::ostream* out) { *out << row.Name; }

class KeptStates : public FramePlacement, public testing::WithParamInterface<StateRow> {};

TEST_P(KeptStates, MaximiseAndNothingElse) {
    fakes::State = WindowState::Minimised;
    Keep("20", "10", "640", "480");
    fakes::UserSettings[kKeptState] = GetParam().Kept;
    RestorePlacement();
    EXPECT_EQ(fakes::State, GetParam().State);
    EXPECT_EQ(fakes::Place, (Rectangle{10, 20, 640, 480})); // for when it is made smaller again
}

const StateRow kStates[] = {
    {"Normal", "0", WindowState::Normal},
    {"MinimisedComesBackNormal", "1", WindowState::Normal},
    {"Maximised", "2", WindowState::Maximised},
    {"Empty", "", WindowState::Normal},
    {"Unknown", "3", WindowState::Normal},
    {"BelowZero", "-2", WindowState::Normal},
    {"AWord", "Maximised", WindowState::Normal},
};

INSTANTIATE_TEST_SUITE_P(Rows, KeptStates, testing::ValuesIn(kStates),
                         [](const auto& row) { return row.param.Name; });

TEST_F(FramePlacement, IsMaximisedOverTheDefaultWhenOnlyTheStateWasKept) {
    fakes::UserSettings[kKeptState] = "2";
    RestorePlacement();
    EXPECT_EQ(fakes::State, WindowState::Maximised);
    EXPECT_EQ(fakes::Place, (Rectangle{100, 70, 800, 560}));
}

TEST_F(FramePlacement, IsKeptInPixels) {
    BeAt({-10, 20, 640, 480}, WindowState::Normal);
    KeepPlacement();
    EXPECT_EQ(Kept(), (Steps{"20", "-10", "640", "480"}));
    EXPECT_EQ(fakes::UserSettings, (std::map<std::string, std::string>{{kKeptState, "0"}}));
}

TEST_F(FramePlacement, OfAMinimisedFrameIsNotKeptButItsStateIs) {
    Keep("20", "10", "640", "480");
    BeAt({1, 2, 3, 4}, WindowState::Minimised);
    KeepPlacement();
    EXPECT_EQ(Kept(), (Steps{"20", "10", "640", "480"}));
    EXPECT_EQ(fakes::UserSettings[kKeptState], "1");
}

TEST_F(FramePlacement, OfAMaximisedFrameIsWhereItWouldBeOtherwise) {
    BeAt({10, 20, 640, 480}, WindowState::Maximised);
    KeepPlacement();
    EXPECT_EQ(Kept(), (Steps{"20", "10", "640", "480"}));
    EXPECT_EQ(fakes::UserSettings[kKeptState], "2");
}

TEST_F(FramePlacement, KeepsTheStateOutOfTheRegistry) {
    KeepPlacement();
    EXPECT_EQ(fakes::Registry["SOFTWARE\\MwClient\\Windows"].size(), 4u);
    EXPECT_FALSE(fakes::Registry["SOFTWARE\\MwClient\\Windows"].contains("gWinState"));
}

TEST_F(FramePlacement, ThatWasKeptIsRestored) {
    for (const WindowState state : {WindowState::Normal, WindowState::Maximised}) {
        const Rectangle place{-30, 40, 700, 500};
        BeAt(place, state);
        KeepPlacement();
        BeAt({}, WindowState::Normal);
        RestorePlacement();
        EXPECT_EQ(fakes::Place, place);
        EXPECT_EQ(fakes::State, state);
    }
}

TEST_F(FramePlacement, ThatCannotBeKeptGivesANoticeAndRaisesNothing) {
    fakes::SetCode = 5;
    BeAt({10, 20, 640, 480}, WindowState::Maximised);
    EXPECT_EQ(ErrorOf(KeepPlacement), 0);
    EXPECT_EQ(Notice, "Settings could not be kept: Could not set key value");
    EXPECT_EQ(fakes::UserSettings[kKeptState], "2"); // the other store takes it
}

} // namespace
} // namespace mw
