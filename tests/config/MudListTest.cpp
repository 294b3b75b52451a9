#include "config/MudList.h"

#include "base/Error.h"
#include "config/Environment.h"
#include "config/FreshFolder.h"
#include "config/MakerAddresses.h"
#include "fakes/Fakes.h"
#include "support/ErrorOf.h"

namespace mw {
namespace {

class GameList : public RuleTest {};

TEST_F(GameList, BeginsWithTheMakersGameAlone) {
    const Environment host("QUILLMERE_GAME_HOST", nullptr);
    const std::vector<MudEntry> list = DefaultMudList();
    ASSERT_EQ(list.size(), 1u);
    EXPECT_EQ(list[0].Name, "Quillmere");
    EXPECT_EQ(list[0].Address, GameHost());
    EXPECT_EQ(list[0].Port, 1234);
    EXPECT_FALSE(list[0].Msp);
    EXPECT_FALSE(list[0].SndW);
    EXPECT_FALSE(list[0].SndM);
    EXPECT_FALSE(list[0].SndD);
}

TEST_F(GameList, TakesTheMakersHostFromTheEnvironment) {
    const Environment host("QUILLMERE_GAME_HOST", "game.example");
    EXPECT_EQ(DefaultMudList()[0].Address, "game.example");
}

TEST_F(GameList, ReturnsToItsStart) {
    MudList.resize(3);
    MudList[0].Name = "Other";
    CurrentMud = 2;
    ResetMudList();
    EXPECT_EQ(MudList, DefaultMudList());
    EXPECT_EQ(CurrentMud, 0);
}

TEST_F(GameList, HasAnEntryForEachIndexInside) {
    MudList.resize(3);
    for (std::int16_t index = 0; index < 3; ++index)
        EXPECT_EQ(&MudAt(index), &MudList[static_cast<std::size_t>(index)]);
}

TEST_F(GameList, HasNoneForAnIndexOutside) {
    constexpr std::int16_t kOutside[] = {1, 2, 32767, -1, -32768};
    for (const std::int16_t index : kOutside)
        EXPECT_EQ(ErrorOf([index] { MudAt(index); }), SubscriptOutOfRange) << index;
}

TEST_F(GameList, HasItsLastEntryAtTheLargestIndex) {
    MudList.resize(32768);
    MudList.back().Name = "last";
    EXPECT_EQ(MudAt(32767).Name, "last");
}

TEST_F(GameList, HoldsNewEntriesWithAllSoundsOff) {
    MudEntry entry;
    EXPECT_EQ(entry.Name + entry.Address, "");
    EXPECT_EQ(entry.Port, 0);
    EXPECT_FALSE(entry.Msp || entry.SndW || entry.SndM || entry.SndD);
}

TEST_F(GameList, TellsEntriesApartByEachField) {
    const MudEntry plain;
    std::vector<MudEntry> others(7);
    others[0].Name = "x";
    others[1].Address = "x";
    others[2].Port = 1;
    others[3].Msp = true;
    others[4].SndW = true;
    others[5].SndM = true;
    others[6].SndD = true;
    for (std::size_t i = 0; i < others.size(); ++i)
        EXPECT_FALSE(others[i] == plain) << "field " << i;
    EXPECT_TRUE(MudEntry() == plain);
}

class GameFolders : public RuleTest {
protected:
    FreshFolder Folder;
};

TEST_F(GameFolders, AreMadeOnceWithTheirSounds) {
    MakeGameFolders("Northern Realms");
    EXPECT_TRUE(Folder.HasFolder("Northern Realms/sounds"));
    MakeGameFolders("Northern Realms");
    EXPECT_EQ(Folder.Contents().size(), 2u);
}

TEST_F(GameFolders, ThatAreThereGetNoSoundsOnPurpose) {
    MakeFolder("Northern Realms");
    MakeGameFolders("Northern Realms");
    EXPECT_FALSE(Folder.HasFolder("Northern Realms/sounds"));
}

TEST_F(GameFolders, AreNotMadeOfNamesThatCannotBeFoldersOfOurs) {
    for (const char* const name : {"", "/", "..", ".", "a/b", "a\\b", "C:", "Data", "Macros"})
        MakeGameFolders(name);
    EXPECT_TRUE(Folder.IsEmpty());
}

TEST_F(GameFolders, ThatCannotBeMadeArePathErrors) {
    ApplicationFolder = Folder.Path / "gone";
    EXPECT_EQ(ErrorOf([] { MakeGameFolders("Northern Realms"); }), PathFileAccess);
    EXPECT_TRUE(Folder.IsEmpty());
}

constexpr const char* kVariable = "QUILLMERE_TEST_VARIABLE";

TEST(MakerAddress, IsTheFallbackWhileTheVariableIsNotSet) {
    const Environment unset(kVariable, nullptr);
    EXPECT_EQ(EnvironmentOr(kVariable, "built in"), "built in");
}

TEST(MakerAddress, IsTheFallbackWhileTheVariableIsEmpty) {
    const Environment empty(kVariable, "");
    EXPECT_EQ(EnvironmentOr(kVariable, "built in"), "built in");
}

TEST(MakerAddress, IsTheVariableWhenThereIsOne) {
    const Environment set(kVariable, "host.example");
    EXPECT_EQ(EnvironmentOr(kVariable, "built in"), "host.example");
}

TEST(MakerAddress, OfTheGameIsBuiltInUnlessTheEnvironmentHasOne) {
    {
        const Environment unset("QUILLMERE_GAME_HOST", nullptr);
        EXPECT_EQ(GameHost(), QUILLMERE_GAME_HOST);
    }
    const Environment set("QUILLMERE_GAME_HOST", "host.example");
    EXPECT_EQ(GameHost(), "host.example");
}

TEST(MakerAddress, OfTheWebSiteIsBuiltInUnlessTheEnvironmentHasOne) {
    {
        const Environment unset("QUILLMERE_WEB_ROOT", nullptr);
        EXPECT_EQ(WebRoot(), QUILLMERE_WEB_ROOT);
    }
    const Environment set("QUILLMERE_WEB_ROOT", "http://site.example");
    EXPECT_EQ(WebRoot(), "http://site.example");
}

} // namespace
} // namespace mw
