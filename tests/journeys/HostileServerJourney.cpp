// A game server that wishes the client ill: floods, storms, traps and sudden ends. No row may cost
// the player more than a moment.
#include "Editors.h"
#include "Files.h"
#include "Siege.h"
#include "Sounds.h"
#include "Wait.h"
#include "WebServer.h"
#include "support/SoundFiles.h"

#include <QFile>

namespace journey {
namespace {

using namespace std::string_literals;

class HostileServer : public Siege {
protected:
    Attack Tide() const { return TextAttacks().front(); }
};

TEST_F(HostileServer, SendsTextOfEveryKind) {
    Begin();
    for (const Attack& attack : TextAttacks())
        Bear(attack);
}

TEST_F(HostileServer, StormsWithTelnetCommands) {
    Begin();
    for (const Attack& attack : TelnetAttacks())
        Bear(attack);
}

class HostileToEars : public HostileServer {
protected:
    // As short as a server would have it, to ask for many.
    static std::string Wave(double seconds = 0.05) {
        constexpr sounds::WaveFormat kSmall{1, 1, 8000, 8};
        return sounds::Wave(std::string(static_cast<std::size_t>(kSmall.Rate * seconds), '\x60'),
                            kSmall);
    }

    static std::string Tune() { return sounds::Tune(60, 0.25); }

    // With the sounds on, and played a while.
    void BeginWithSounds() {
        // Meant: a sound with ".mid" in the text behind it is music.
        PutFiles(Player.Home + "/127.0.0.1/sounds", {{"drop.wav", Wave()},
                                                     {"long.wav", Wave(10)},
                                                     {"drop.wav.mid", Tune()},
                                                     {"tune.mid", Tune()}});
        Begin();
        ChangeSoundOptions(Player, {EnableMsp});
        for (const char* trigger : {"!!SOUND(drop.wav)", "!!MUSIC(tune.mid)"}) {
            Way->Send("\r\n"s + trigger + "\r\n");
            LetRead();
        }
        WaitToHear(Player);
        for (const Attack& attack : SoundAttacks()) { // loading instruments again takes more
            Way->Begin(attack);
            Way->Stop();
        }
        LetRead();
        KeepState();
    }

    // As !!SOUND asks for it, with an address if there is one.
    void AskFor(const std::string& name, const std::string& address) {
        Way->Send("\r\n!!SOUND(" + name + " U=" + address + " )\r\n");
        LetRead();
    }

    void ExpectNoWindowMore() const { EXPECT_TRUE(Player.Windows(kDownload).isEmpty()); }

    WebServer Web;
};

TEST_F(HostileToEars, AsksForSoundsByTheThousand) {
    BeginWithSounds();
    for (const Attack& attack : SoundAttacks())
        Bear(attack);
}

struct BadName {
    const char* Row;
    std::string Name;
};

// What leads out of the folder of the sounds, or can be no name, is not even asked for.
const BadName kBadNames[] = {
    {"ANameInTheFolderAbove", "../loot.wav"},
    {"ANameFourFoldersAbove", "../../../../loot.wav"},
    {"ANameAboveBehindAFolder", "rain/../../loot.wav"},
    {"ANameAboveWithBackslashes", "..\\..\\loot.wav"},
    {"AnAbsoluteName", "/tmp/quillmere-loot.wav"},
    {"ANameOnADrive", "c:\\loot.wav"},
    {"ANameRelativeToADrive", "c:loot.wav"},
    {"ANameOnAShare", "\\\\127.0.0.1\\share\\loot.wav"},
    {"ANameOfAStream", "rain.wav:loot.wav"},
    {"ANameWithANul", "lo\0ot.wav"s},
    {"ANameWithALineBreak", "lo\r\not.wav"},
    {"ANameWithAControlByte", "lo\x01ot.wav"},
    {"ANameThatIsAFolder", "rain.wav/"},
    {"ANameOfTheFolderItself", "./loot.wav"},
    {"ANameOfThreeHundredLetters", std::string(300, 'a')},
    {"ANameOfThirtyThousandLetters", std::string(30000, 'a')},
};

struct OddName {
    const char* Row;
    std::string Name;
    std::string Kept; // under the name that the address gives
};

// A device elsewhere, a code, another encoding: here they are letters.
const OddName kOddNames[] = {
    {"ANameOfADevice", "con.wav", "con.wav"},
    {"ANameOfAnotherDevice", "nul.wav", "nul.wav"},
    {"ANameInCode", "%2e%2e%2floot.wav", "code.wav"},
    {"ANameInLatin1", "l\xf6\xf6t.wav", "latin.wav"},
    {"ANameInUtf8", "l\xc3\xb6t.wav", "utf.wav"},
    {"ANameOfAHomeFolder", "~/loot.wav", "home.wav"},
    {"ANameThatIsACommand", "|touch${IFS}loot;.wav", "command.wav"},
    {"NoName", "", "none.wav"},
};

TEST_F(HostileToEars, GivesSoundsNamesThatLeadElsewhere) {
    BeginWithSounds();
    Web.Serve("loot.wav", Wave());
    for (const BadName& row : kBadNames) {
        Bear(row.Row, [&] {
            AskFor(row.Name, Web.AddressOf("loot.wav"));
            ExpectNoWindowMore();
            EXPECT_TRUE(Web.Asked.empty());
        });
    }
    for (const OddName& row : kOddNames) {
        Bear(row.Row, [&] {
            Web.Serve(row.Kept, Wave());
            AskFor(row.Name, Web.AddressOf(row.Kept));
            WaitForSound(Player, row.Kept);
            Known.insert("home/127.0.0.1/sounds/" + row.Kept);
        });
    }
    EXPECT_FALSE(QFile::exists("/tmp/quillmere-loot.wav"));
}

struct BadAddress {
    const char* Row;
    std::string Address;
};

// {} is the web server. What is no address of the web is not asked for.
const BadAddress kBadAddresses[] = {
    {"AnAddressOfAFile", "file:///etc/passwd"},
    {"AnAddressByFtp", "ftp://127.0.0.1/loot"},
    {"AnAddressThatIsAScript", "javascript:alert(1"},
    {"AnAddressThatIsData", "data:audio/wav;base64,aaaa"},
    {"AnAddressOfAnOldScheme", "gopher://127.0.0.1:9/loot"},
    {"AnAddressWithoutAScheme", "127.0.0.1/loot"},
    {"AnAddressWithoutAHost", "http:///loot"},
    {"AnAddressOfNothing", "http://"},
    {"AnAddressWithAPortAlone", "http://:9/loot"},
    {"AnAddressWithBackslashes", "http://{}/rain\\..\\loot"},
    {"AnAddressOfAnotherDrive", "http://{}/c:loot"},
    {"AnAddressWithALineBreak", "http://{}/lo\r\not"},
    {"AnAddressOfAThousandLetters", "http://{}/" + std::string(1000, 'a')},
};

struct OddAddress {
    const char* Row;
    std::string Address;
    std::string Asked;
    std::string Kept;
};

const OddAddress kOddAddresses[] = {
    {"AnAddressThatClimbs", "http://{}/a/../../../climbs.wav", "climbs.wav", "climbs.wav"},
    {"AnAddressThatClimbsInCode", "http://{}/..%2f..%2fcode.wav", "..%2f..%2fcode.wav",
     "..%2f..%2fcode.wav"},
    {"AnAddressWithAQuestion", "http://{}/a.wav?b/../c.wav", "a.wav?b/../c.wav", "c.wav"},
    {"AnAddressWithAnotherPath", "http://{}//etc//passwd.wav", "/etc//passwd.wav", "passwd.wav"},
    {"AnAddressWithAPassword", "http://user:pass@{}/secret.wav", "secret.wav", "secret.wav"},
    {"AnAddressWithTwoHosts", "http://127.0.0.2@{}/host.wav", "host.wav", "host.wav"},
};

// Each is told in a box.
const BadAddress kUselessAddresses[] = {
    {"AnAddressWithThePortNought", "http://127.0.0.1:0/loot"},
    {"AnAddressWithAPortTooHigh", "http://127.0.0.1:99999/loot"},
    {"AnAddressWithAPortThatIsNone", "http://127.0.0.1:http/loot"},
    {"AnAddressWithAPortBelowNothing", "http://127.0.0.1:-1/loot"},
    {"AnAddressOfAHostThatIsUnknown", "http://" + std::string(64, 'x') + "/loot"},
    {"AnAddressOfIpV6", "http://[::1]:9/loot"},
    {"AnAddressOfBrokenIpV6", "http://[::1/loot"},
    {"AnAddressWithABlankForAHost", "http://%20/loot"},
    {"AnAddressThatRefuses", "http://127.0.0.1:9/loot"},
};

class HostileWithAddresses : public HostileToEars {
protected:
    std::string Filled(std::string address) const {
        const std::string root = Web.AddressOf(""); // "http://127.0.0.1:40000/"
        const std::size_t place = address.find("{}");
        if (place != std::string::npos)
            address.replace(place, 2, root.substr(7, root.size() - 8));
        return address;
    }

    void AnswerError() {
        Player.TakeKeys("^Error$");
        Player.Press("Return");
        Player.WaitToClose("^Error$");
        Player.WaitToClose(kDownload);
        Player.TakeKeys(Client::kFrame);
    }
};

TEST_F(HostileWithAddresses, GivesSoundsAddressesOfEveryKind) {
    BeginWithSounds();
    for (const BadAddress& row : kBadAddresses) {
        Bear(row.Row, [&] {
            AskFor("rain", Filled(row.Address));
            ExpectNoWindowMore();
            EXPECT_TRUE(Web.Asked.empty());
        });
    }
    for (const OddAddress& row : kOddAddresses) {
        Bear(row.Row, [&] {
            Web.Serve(row.Asked, Wave());
            AskFor("rain", Filled(row.Address));
            WaitForSound(Player, row.Kept);
            Known.insert("home/127.0.0.1/sounds/" + row.Kept);
        });
    }
    for (const BadAddress& row : kUselessAddresses) {
        Bear(row.Row, [&] {
            AskFor("rain", Filled(row.Address));
            AnswerError();
        });
    }
}

class HostileToThePlayer : public HostileServer {
protected:
    void WhileADialogIsOpen(const char* row, const QString& itemKey, const char* title) {
        Bear(Called(row), [&] {
            OpenEditor(Player, itemKey, title);
            Time([&] {
                Player.Press("Escape");
                Player.WaitToClose(title);
            });
            Player.TakeKeys(Client::kFrame);
            Player.ClickCommandLine();
            PressKeys(1);
        });
    }

    Attack Called(const char* row) const {
        Attack attack = Tide();
        attack.Name = row;
        return attack;
    }

    QString Frame() const { return Player.Windows(Client::kFrame).value(0); }

    void ResizeTo(const QString& width, const QString& height) {
        Screen.Do({"windowsize", Frame(), width, height});
        PressKeys(1);
    }
};

TEST_F(HostileToThePlayer, FloodsWhateverThePlayerDoes) {
    Begin();
    WhileADialogIsOpen("WhileTheAliasesAreOpen", "a", kAliases);
    WhileADialogIsOpen("WhileTheTriggersAreOpen", "t", kTriggers);
    WhileADialogIsOpen("WhileTheMacrosAreOpen", "m", kMacros);
    WhileADialogIsOpen("WhileTheSetupIsOpen", "f", kSetup);
    WhileADialogIsOpen("WhileTheSoundOptionsAreOpen", "s", "^Sound$");
    Bear(Called("WhileAMenuIsOpen"), [this] {
        Player.Press("alt+f");
        WaitFor("the menu to open", [this] { return Player.HasList(); });
        Time([this] {
            Player.Press("Escape");
            WaitFor("the menu to close", [this] { return !Player.HasList(); });
        });
        Player.Press("Escape"); // the menu bar is left too
        Player.ClickCommandLine();
        PressKeys(1);
    });
    Bear(Called("WhileScrolledBack"), [this] {
        Player.Press({"Prior", "Prior"});
        PressKeys(3);
        Player.ReturnToEnd();
    });
    Bear(Called("WhileEverythingIsSelectedAndCopied"), [this] {
        Player.Copied(); // what is selected may be gone before it is copied
        PressKeys(1);
    });
    // Without a window manager a window that is minimised is one that is not mapped.
    Bear(Called("WhileTheWindowIsMinimised"), [this] {
        const QString frame = Frame();
        Screen.Do({"windowunmap", "--sync", frame});
        Time([this] { WaitFor("the window to go", [this] { return Frame().isEmpty(); }); });
        Screen.Do({"windowmap", "--sync", frame});
        Player.TakeKeys(Client::kFrame);
        PressKeys(2);
    });
    Bear(Called("WhileTheWindowIsResized"), [this] {
        for (const char* width : {"300", "900", "420", "1000"})
            ResizeTo(width, "500");
        ResizeTo(QString::number(Display::Width), QString::number(Display::Height));
    });
    Bear(Called("WhileThePlayerTypesALongLine"), [this] {
        const QString line(200, 'y');
        Way->ListenFor(line.toStdString() + '\r');
        Player.Enter(line);
        Way->Heard("the long line");
        PressKeys(2);
    });
    Bear(Called("WhileThePlayerWalks"), [this] {
        Way->ListenFor("northwest\rnorth\rnortheast\r");
        for (const char key : {'7', '8', '9'})
            Player.Keypad(key);
        Way->Heard("three steps");
    });
    Way->Begin(Tide());
    Player.ExitByMenu();
    EXPECT_EQ(Player.WaitForEnd(), 0) << "during a flood";
}

struct Fragment {
    const char* Row;
    std::string Text;
};

const Fragment kFragments[] = {
    {"InTheMiddleOfATrigger", "\r\n!!SOUND(drop.wav V="},
    {"InTheMiddleOfASequence", "\x1b[0;3"},
    {"InTheMiddleOfASubNegotiation", "\xff\xfa\x18"},
    {"InTheMiddleOfACommand", "\xff\xfd"},
    {"InTheMiddleOfALine", "The bridge sways and then it"},
    {"BehindNothingButEscs", std::string(60000, '\x1b')},
    {"BehindAnEndlessSequence", "\x1b[" + std::string(60000, ';')},
    {"BehindAnEndlessLine", std::string(200000, 'x')},
};

class HostileAndGone : public HostileServer {
protected:
    void Close() {
        Way->EndSending();
        WaitForTheEndOfTheConnection();
        ConnectAgain();
    }

    void Reset() {
        Way->Reset();
        ConnectAgain();
    }
};

TEST_F(HostileAndGone, ClosesInTheMiddleOfEverything) {
    Begin();
    for (const Fragment& row : kFragments) {
        Bear(row.Row, [&] {
            Way->Send(row.Text);
            Time([this] { Close(); });
            Way->Send(row.Text);
            Reset();
        });
    }
    Bear("InTheMiddleOfAFlood", [this] {
        Way->Begin(Tide());
        Way->Stop();
        Close();
        Way->Begin(Tide());
        Reset();
    });
    Bear("AtOnceInALoop", [this] {
        for (int i = 0; i < Times(5); ++i)
            Close();
    });
    Bear("AtOnceInALoopByResets", [this] {
        for (int i = 0; i < Times(5); ++i)
            Reset();
    });
    Bear("WithoutEverReading", [this] {
        Attack attack = TelnetAttacks().at(2); // each command is answered
        attack.Least = 0;
        Way->StopReading();
        Way->Begin(attack);
        WaitForTheEndOfTheConnection();
        ConnectAgain();
    });
}

// The player's triggers answer what the server says, and the server says it again.
class HostileEcho : public HostileServer {
protected:
    void Echo(const char* row, const std::string& reply) {
        Bear(row, [&] {
            Way->AnswerLines(reply);
            Way->Send(reply + '\r');
            PressKeys(3);
            Way->AnswerLines("");
        });
    }
};

TEST_F(HostileEcho, SetsOffThePlayersTriggersWithoutEnd) {
    const std::string tide = "You say: the tide!\x1b[0;32m\r\n";
    Begin();
    OpenEditor(Player, "t", kTriggers);
    AddEntry(Player, "tide", "say the tide");
    AddEntry(Player, "moon", "say the moon;say the moon;say the moon");
    AddEntry(Player, "sea", QString(200, 's'));
    LeaveEditor(Player, "Escape", kTriggers);
    ReleaseAlt(Player);
    KeepState();
    Echo("AReactionThatIsSaidAgain", tide);
    Echo("ThreeReactionsForEachThatIsSaidAgain", "You say: the moon!\x1b[0;32m\r\n");
    Echo("TwoTriggersForEachLine", "The tide and the moon!\x1b[0;32m\r\n");
    Bear({"AReactionToEachLineOfAFlood", "", tide, 100000});
    Bear("LongReactionsThatNobodyReads", [this] {
        Way->StopReading();
        Way->Begin({"", "", "the sea\x1b[0;32m\r\n", 0});
        WaitForTheEndOfTheConnection();
        ConnectAgain();
    });
}

} // namespace
} // namespace journey
