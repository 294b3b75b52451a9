#include "sound/SoundOptions.h"

#include "config/MudList.h"
#include "fakes/Fakes.h"
#include "support/ErrorOf.h"

namespace mw {
namespace {

class SoundOptions : public RuleTest {
protected:
    SoundOptions() {
        MudList = {{"Home", "h", 1, true, false, true, false},
                   {"Realm", "r", 2, false, false, false, false},
                   {"Isle", "i", 3, true, true, true, true}};
        Others = MudList;
        CurrentMud = 1;
    }

    MudEntry& Current() { return MudList.at(static_cast<std::size_t>(CurrentMud)); }

    // Msp, SndW, SndM, SndD of the current game.
    std::string Switches() {
        std::string text;
        for (const bool on : {Current().Msp, Current().SndW, Current().SndM, Current().SndD})
            text += on ? '1' : '0';
        return text;
    }

    std::vector<MudEntry> Others;
};

TEST_F(SoundOptions, AreAllOnWithMsp) {
    chkMSP_Click(true);
    EXPECT_EQ(Switches(), "1111");
}

TEST_F(SoundOptions, AreAllOffWithoutMsp) {
    CurrentMud = 2;
    chkMSP_Click(false);
    EXPECT_EQ(Switches(), "0000");
}

TEST_F(SoundOptions, AreAllOnWithMspWhateverTheyWere) {
    CurrentMud = 0;
    chkMSP_Click(true);
    EXPECT_EQ(Switches(), "1111");
}

TEST_F(SoundOptions, AreAllOffWithoutMspWhateverTheyWere) {
    CurrentMud = 0;
    chkMSP_Click(false);
    EXPECT_EQ(Switches(), "0000");
}

TEST_F(SoundOptions, AreSetOneByOne) {
    chkWave_Click(true);
    EXPECT_EQ(Switches(), "0100");
    chkMidi_Click(true);
    EXPECT_EQ(Switches(), "0110");
    chkDownloads_Click(true);
    EXPECT_EQ(Switches(), "0111");
}

TEST_F(SoundOptions, AreClearedOneByOne) {
    CurrentMud = 2;
    chkWave_Click(false);
    EXPECT_EQ(Switches(), "1011");
    chkMidi_Click(false);
    EXPECT_EQ(Switches(), "1001");
    chkDownloads_Click(false);
    EXPECT_EQ(Switches(), "1000"); // Msp stays when the others are off
}

TEST_F(SoundOptions, AreThoseOfTheCurrentGameAlone) {
    chkMSP_Click(true);
    chkWave_Click(false);
    EXPECT_EQ(MudList[0], Others[0]);
    EXPECT_EQ(MudList[2], Others[2]);
    EXPECT_EQ(MudList[1], (MudEntry{"Realm", "r", 2, true, false, true, true}));
}

TEST_F(SoundOptions, ReachTheTextOfTheMudList) {
    chkMSP_Click(true);
    chkMidi_Click(false);
    const std::string record = "Mud=Realm\r\nAddy=r\r\nPort=2\r\nSndD=True\r\nSndM=False\r\n"
                               "Msp=True\r\nSndW=True\r\n";
    EXPECT_NE(FormatMudList(MudList).find(record), std::string::npos) << FormatMudList(MudList);
}

TEST_F(SoundOptions, OfNoGameRaiseSubscriptOutOfRange) {
    for (const std::int16_t index : {std::int16_t{-1}, std::int16_t{3}, std::int16_t{32767}}) {
        CurrentMud = index;
        EXPECT_EQ(ErrorOf([] { chkMSP_Click(true); }), SubscriptOutOfRange);
        EXPECT_EQ(ErrorOf([] { chkWave_Click(true); }), SubscriptOutOfRange);
        EXPECT_EQ(ErrorOf([] { chkMidi_Click(true); }), SubscriptOutOfRange);
        EXPECT_EQ(ErrorOf([] { chkDownloads_Click(true); }), SubscriptOutOfRange);
    }
    EXPECT_EQ(MudList, Others);
}

} // namespace
} // namespace mw
