#include "browser/Browser.h"

#include "config/Environment.h"
#include "fakes/Fakes.h"
#include "net/http/VersionCheck.h"

#include <algorithm>

namespace mw {
namespace {

using Steps = std::vector<std::string>;

constexpr const char* kHome = "http://www.quillmere.example";

class BrowserRules : public RuleTest {
protected:
    // The window is there and shows its first page.
    static void Open() {
        OpenWebSite();
        frmBrowser_Load();
        timNav_Timer();
        fakes::Calls.clear();
    }

    static void Arrive(const std::string& name, const std::string& address) {
        fakes::PageIsBusy = false;
        fakes::PageName = name;
        fakes::PageAddress = address;
    }

    // Returns the calls that it leads to.
    static Steps PressEnterIn(const std::string& text) {
        fakes::AddressBox = text;
        fakes::Calls.clear();
        cboAdd_KeyPress('\r');
        return fakes::Calls;
    }

    static Steps Tick() {
        fakes::Calls.clear();
        timNav_Timer();
        return fakes::Calls;
    }

    const Environment Home{"QUILLMERE_WEB_ROOT", kHome};
};

class Opening : public BrowserRules {};

TEST_F(Opening, FromTheMenuBeginsWithTheMakersWebSite) {
    OpenWebSite();
    EXPECT_EQ(StartAddress, kHome);
    EXPECT_EQ(fakes::Calls, Steps{"ShowBrowser"});
}

TEST_F(Opening, FromThePromptsYesBeginsWithTheMakersWebSite) {
    cmdYes_Click(false);
    EXPECT_EQ(StartAddress, kHome);
    EXPECT_EQ(fakes::CallsOf("ShowBrowser"), 1);
}

TEST_F(Opening, DoesNotFollowThePromptsNo) {
    cmdNo_Click(false);
    EXPECT_EQ(StartAddress, "");
    EXPECT_EQ(fakes::CallsOf("ShowBrowser"), 0);
}

TEST_F(Opening, PutsTheHomeAddressIntoTheBoxAndGoesThere) {
    OpenWebSite();
    fakes::Calls.clear();
    frmBrowser_Load();
    EXPECT_EQ(fakes::Calls, (Steps{"Start timNav", std::string("cboAdd ") + kHome,
                                   std::string("Navigate ") + kHome}));
}

TEST_F(Opening, LeavesTheHomeAddressOutOfTheListOnPurpose) {
    Open();
    EXPECT_TRUE(TypedAddresses.empty());
    const Steps calls = PressEnterIn(kHome);
    EXPECT_EQ(calls.front(), std::string("cboAdd add ") + kHome) << "it is new to the list";
    EXPECT_EQ(TypedAddresses, Steps{kHome});
}

TEST_F(Opening, ForgetsTheListAndTheBusyTextOfTheWindowBefore) {
    Open();
    PressEnterIn("http://a.example");
    fakes::PageIsBusy = true;
    Tick();
    ASSERT_TRUE(working);
    frmBrowser_Load();
    EXPECT_TRUE(TypedAddresses.empty());
    EXPECT_EQ(Tick(), Steps{"lblWork Working.."});
}

class Entering : public BrowserRules {
protected:
    Entering() { Open(); }
};

TEST_F(Entering, AnAddressAddsItToTheListAndGoesThere) {
    EXPECT_EQ(
        PressEnterIn("http://a.example/x"),
        (Steps{"cboAdd add http://a.example/x", "Start timNav", "Navigate http://a.example/x"}));
    EXPECT_EQ(TypedAddresses, Steps{"http://a.example/x"});
}

TEST_F(Entering, TheSameAddressTwiceAddsItOnceAndGoesThereTwice) {
    PressEnterIn("http://a.example");
    EXPECT_EQ(PressEnterIn("http://a.example"),
              (Steps{"Start timNav", "Navigate http://a.example"}));
    EXPECT_EQ(TypedAddresses, Steps{"http://a.example"});
}

TEST_F(Entering, ComparesWithEveryEntryAndNotJustTheLast) {
    for (const char* address : {"a", "b", "c", "a", "b"})
        PressEnterIn(address);
    EXPECT_EQ(TypedAddresses, (Steps{"a", "b", "c"})) << "in order of entry";
}

struct Other {
    const char* Name;
    const char* Text;
};

void PrintTo(const Other& row, std::ostream* out) { *out << row.Name; }

class OtherAddresses : public Entering, public testing::WithParamInterface<Other> {};

TEST_P(OtherAddresses, AreEntriesOfTheirOwn) {
    PressEnterIn("http://a.example");
    PressEnterIn(GetParam().Text);
    EXPECT_EQ(TypedAddresses, (Steps{"http://a.example", GetParam().Text}));
}

const Other kOthers[] = {
    {"AnotherCase", "http://A.example"}, {"AnotherEnd", "http://a.example/"},
    {"WithABlank", "http://a.example "}, {"WithoutTheScheme", "a.example"},
    {"ABeginning", "http://a"},          {"Nothing", ""},
};

INSTANTIATE_TEST_SUITE_P(Rows, OtherAddresses, testing::ValuesIn(kOthers),
                         [](const auto& row) { return row.param.Name; });

TEST_F(Entering, WritesNoOtherKey) {
    fakes::AddressBox = "http://a.example";
    for (int key = 0; key < 256; ++key) {
        if (key != '\r')
            cboAdd_KeyPress(static_cast<char>(key));
    }
    EXPECT_TRUE(TypedAddresses.empty());
    EXPECT_TRUE(fakes::Calls.empty());
}

TEST_F(Entering, ManyAddressesKeepsThemAll) {
    for (int i = 0; i < 1000; ++i)
        PressEnterIn(std::to_string(i));
    EXPECT_EQ(TypedAddresses.size(), 1000u);
    EXPECT_EQ(TypedAddresses.back(), "999");
}

struct Address {
    const char* Name;
    const char* Typed;
    const char* Visited;
};

void PrintTo(const Address& row, std::ostream* out) { *out << row.Name; }

class Addresses : public Entering, public testing::WithParamInterface<Address> {};

TEST_P(Addresses, WithoutASchemeAreTakenForHttp) {
    const Steps calls = PressEnterIn(GetParam().Typed);
    EXPECT_EQ(calls.back(), std::string("Navigate ") + GetParam().Visited);
    EXPECT_EQ(TypedAddresses, Steps{GetParam().Typed}) << "the list has what was typed";
}

const Address kAddresses[] = {
    {"Host", "a.example", "http://a.example"},
    {"HostAndPath", "a.example/b?c=d", "http://a.example/b?c=d"},
    {"HostAndPort", "localhost:8080", "http://localhost:8080"},
    {"Http", "http://a.example", "http://a.example"},
    {"Https", "https://a.example", "https://a.example"},
    {"AnotherScheme", "ftp://a.example", "ftp://a.example"},
    {"AnAddressInAQuestion", "a.example/?next=http://b.example",
     "http://a.example/?next=http://b.example"},
};

INSTANTIATE_TEST_SUITE_P(Rows, Addresses, testing::ValuesIn(kAddresses),
                         [](const auto& row) { return row.param.Name; });

TEST_F(BrowserRules, TheHomeAddressWithoutASchemeIsTakenForHttpToo) {
    const Environment bare("QUILLMERE_WEB_ROOT", "www.quillmere.example:8080");
    OpenWebSite();
    frmBrowser_Load();
    EXPECT_EQ(fakes::Calls.back(), "Navigate http://www.quillmere.example:8080");
}

TEST_F(Entering, AnEntryOfTheListIsGoneTo) {
    fakes::AddressBox = "http://a.example";
    cboAdd_Click();
    EXPECT_EQ(fakes::Calls, (Steps{"Start timNav", "Navigate http://a.example"}));
    EXPECT_TRUE(TypedAddresses.empty()) << "a selection adds nothing";
}

struct Press {
    const char* Key;
    Steps Calls;
};

void PrintTo(const Press& row, std::ostream* out) { *out << '"' << row.Key << '"'; }

class Buttons : public BrowserRules, public testing::WithParamInterface<Press> {};

TEST_P(Buttons, GoByTheirKeys) {
    Open();
    tbrMain_ButtonClick(GetParam().Key);
    EXPECT_EQ(fakes::Calls, GetParam().Calls);
    EXPECT_TRUE(TypedAddresses.empty());
}

const Press kPresses[] = {
    {"Back", {"GoBack"}},
    {"Forward", {"GoForward"}},
    {"Stop", {"Stop page"}},
    {"Home", {std::string("Navigate ") + kHome}},
    {"Refresh", {"Refresh page"}},
    {"", {}},
    {"back", {}},
    {"HOME", {}},
    {"Home ", {}},
    {"Backward", {}},
    {"Search", {}},
};

INSTANTIATE_TEST_SUITE_P(Rows, Buttons, testing::ValuesIn(kPresses));

TEST_F(BrowserRules, HomeGoesToTheHomeAddressAndNotToTheBoxes) {
    Open();
    fakes::AddressBox = "http://a.example";
    tbrMain_ButtonClick("Home");
    EXPECT_EQ(fakes::Calls, Steps{std::string("Navigate ") + kHome});
    EXPECT_EQ(fakes::AddressBox, "http://a.example");
}

class Waiting : public BrowserRules {
protected:
    Waiting() {
        Open();
        fakes::PageIsBusy = true;
    }
};

TEST_F(Waiting, GrowsTheLabelByTwoDotsATick) {
    EXPECT_EQ(Tick(), Steps{"lblWork Working.."});
    EXPECT_TRUE(working);
    EXPECT_EQ(Tick(), Steps{"lblWork Working...."});
    EXPECT_EQ(Tick(), Steps{"lblWork Working......"});
}

TEST_F(Waiting, StopsTheLabelAtSixtyDots) {
    for (int tick = 0; tick < 29; ++tick)
        Tick();
    EXPECT_EQ(WorkText, "Working" + std::string(58, '.'));
    EXPECT_EQ(Tick(), Steps{"lblWork Working" + std::string(60, '.')});
    EXPECT_EQ(Tick(), Steps{});
    EXPECT_EQ(WorkText, "Working" + std::string(60, '.'));
}

TEST_F(Waiting, KeepsTheTimerGoing) {
    EXPECT_EQ(std::ranges::count(Tick(), "Stop timNav"), 0);
    EXPECT_EQ(std::ranges::count(Tick(), "Stop timNav"), 0);
}

TEST_F(Waiting, EndsWithThePagesNameAndAddress) {
    Tick();
    Arrive("A page", "http://a.example/");
    EXPECT_EQ(Tick(), (Steps{"Stop timNav", "lblWork A page", "cboAdd http://a.example/"}));
    EXPECT_FALSE(working);
    EXPECT_EQ(WorkText, "A page");
}

TEST_F(Waiting, BeginsAnewWithTheNextPage) {
    Tick();
    Tick();
    Arrive("A page", "http://a.example/");
    Tick();
    fakes::PageIsBusy = true;
    EXPECT_EQ(Tick(), Steps{"lblWork Working.."});
}

TEST_F(Waiting, AfterAFailureEndsWithTheNameThatThePageViewReports) {
    Tick();
    Arrive("", "http://dead.example/");
    EXPECT_EQ(Tick(), (Steps{"Stop timNav", "lblWork ", "cboAdd http://dead.example/"}));
    EXPECT_EQ(WorkText, "");
}

TEST_F(Waiting, TakesADottedNameForNoBusyText) {
    Arrive(std::string(80, '.'), "http://a.example/");
    Tick();
    fakes::PageIsBusy = true;
    EXPECT_EQ(Tick(), Steps{"lblWork Working.."});
}

TEST_F(Waiting, AddsNoArrivedAddressToTheList) {
    Arrive("A page", "http://a.example/");
    Tick();
    EXPECT_TRUE(TypedAddresses.empty());
}

TEST_F(BrowserRules, ANewPagesNameIsTheCaptionAndNothingElse) {
    Open();
    Arrive("A page", "http://a.example/");
    wbrScreen_NavigateComplete();
    EXPECT_EQ(fakes::Calls, Steps{"caption A page"});
    Arrive("Another", "http://b.example/");
    fakes::PageIsBusy = true; // the rest of it is under way
    wbrScreen_NavigateComplete();
    EXPECT_EQ(fakes::Calls.back(), "caption Another");
}

} // namespace
} // namespace mw
