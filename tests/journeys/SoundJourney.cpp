// Sounds of the demo world: switched on, fetched and heard.
#include "Files.h"
#include "Journey.h"
#include "Sounds.h"
#include "Wait.h"
#include "WebServer.h"

#include <QFile>

namespace journey {
namespace {

class Sounds : public WorldJourney {
protected:
    void GoToTheBell() {
        Walk(Player, '6', "Paper Market");
        Walk(Player, '3', "Ferry Stage");
    }

    void Ring() {
        Player.Enter("ring");
        Player.WaitToSee("You ring the bell. It hums on for a while.");
        Player.WaitToSee("] >");
    }

    std::string Served(const std::string& name) const {
        return ServedAt(Town.WebRoot + "/sounds/" + QString::fromStdString(name));
    }

    // Those of each game in the list: downloads, music, triggers, waves; T for one that is on.
    std::string Switches() const {
        std::string switches;
        const QString list = QString::fromStdString(FileText(Player.Home + "/Data/muds.lst"));
        for (const QString& line : list.split("\r\n")) {
            if (line == "[Mud]")
                switches += ' ';
            else if (line.startsWith("Snd") || line.startsWith("Msp"))
                switches += line.endsWith("=True") ? 'T' : 'F';
        }
        return switches;
    }
};

// Meant: the file's last switch of the waves goes to the first game when the list is loaded.
TEST_F(Sounds, AreFetchedThenHeardAndAtTheNextStartOnlyTheWavesAreOffOnPurpose) {
    ComeIn();
    GoToTheBell();
    OpenSoundOptions(Player);
    Moment("1-all-off");
    Toggle(Player, {EnableMsp});
    Moment("2-all-on");
    CloseSoundOptions(Player);
    Ring();
    WaitForSound(Player, "bell.wav");
    EXPECT_TRUE(SoundsOf(Player) == (FileTexts{{"bell.wav", Served("bell.wav")}}));
    EXPECT_TRUE(IsSilent(Player)) << "what has just been fetched is not played";
    Ring();
    WaitToHear(Player);
    EXPECT_EQ(Player.Shown().find("!!"), std::string::npos);
    Exit();
    EXPECT_EQ(Switches(), " FFFF TTTT");

    QFile::remove(Player.SoundFile());
    ComeIn(kKnown);
    GoToTheBell();
    Ring();
    EXPECT_EQ(Switches(), " FFFF TTTT");
    OpenSoundOptions(Player);
    Moment("3-waves-off");
    EXPECT_TRUE(IsSilent(Player));
    Toggle(Player, {AllowWaves});
    CloseSoundOptions(Player);
    Ring();
    WaitToHear(Player);
    Exit();
    EXPECT_EQ(Switches(), " FFFT TTTT");
}

TEST_F(Sounds, ThatAreSwitchedOffAreNeitherFetchedNorHeard) {
    ComeIn();
    GoToTheBell();
    for (const std::vector<SoundOption>& toggled :
         {std::vector<SoundOption>{},     // all are off
          {EnableMsp, AllowWaves},        // the waves alone are off
          {AllowWaves, AllowDownload}}) { // the downloads alone
        ChangeSoundOptions(Player, toggled);
        Ring();
        EXPECT_TRUE(Player.Windows(kDownload).isEmpty());
        EXPECT_TRUE(SoundsOf(Player).empty());
    }
    ChangeSoundOptions(Player, {AllowDownload});
    Ring();
    WaitForSound(Player, "bell.wav");
    EXPECT_TRUE(IsSilent(Player));
}

TEST_F(Sounds, OfMusicAreFetchedAndHeardByTheSwitchOfTheWavesOnPurpose) {
    ComeIn();
    ChangeSoundOptions(Player, {EnableMsp, AllowMusic});
    Walk(Player, '4', "Bakehouse");
    Walk(Player, '-', "The piano begins to play, rather slowly.");
    WaitForSound(Player, "tune.mid");
    EXPECT_TRUE(SoundsOf(Player) == (FileTexts{{"tune.mid", Served("tune.mid")}}));
    EXPECT_TRUE(IsSilent(Player));
    Walk(Player, '+', "Bakehouse");
    Walk(Player, '-', "The piano begins to play, rather slowly.");
    WaitToHear(Player);
}

TEST_F(Sounds, OfTheWholeWorldAreFetchedAtOnceAndTheTextStaysReadable) {
    ComeIn();
    ChangeSoundOptions(Player, {EnableMsp});
    Player.Enter("sounds");
    for (const char* name : {"tune.mid", "bell.wav", "thunder.wav", "rain.wav"}) {
        WaitForSound(Player, name);
        EXPECT_TRUE(SoundsOf(Player).at(name) == Served(name)) << name;
    }
    for (const char* line :
         {"Music, with a volume, a priority and its address:\n",
          "A bell, with a volume, a priority and its address:\n",
          "Thunder, with a volume and its address:\n", "Rain, with its address alone:\n",
          "The bell again, softly, without an address:\n", "And once more, by its name alone:\n",
          "] >"})
        Player.WaitToSee(line);
    EXPECT_EQ(Player.Shown().find("!!"), std::string::npos);
    Moment("1-text");
    Player.Enter("sounds");
    WaitToHear(Player);
}

TEST_F(Sounds, WithoutADeviceLeaveANoticeAndTheGameGoesOn) {
    Player.Set("SDL_AUDIODRIVER", "nonsense");
    ComeIn();
    GoToTheBell();
    ChangeSoundOptions(Player, {EnableMsp});
    Ring();
    WaitForSound(Player, "bell.wav");
    EXPECT_EQ(CountOf(Screen.Look(), Client::Notice, {}), 0);
    Ring();
    WaitFor("a notice", [this] { return CountOf(Screen.Look(), Client::Notice, {}) > 0; });
    Moment("1-notice");
    Ring();
    EXPECT_TRUE(Player.Boxes().isEmpty());
    Exit();
    EXPECT_TRUE(IsSilent(Player));
}

} // namespace
} // namespace journey
