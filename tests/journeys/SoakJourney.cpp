// Play at speed, now in the demo world, now against a hostile server: walks, fights, talk, floods,
// sounds, editors, colours, scrolling back, connecting again. Whatever the client needs, it needs
// no more of it at the end than at the beginning.
//
// A minute of it is a test, the same every time, that leaves half of a core to those beside it.
// QUILLMERE_SOAK_SECONDS asks for more, at full speed and by another seed, which is printed and can
// be given: QUILLMERE_SOAK_SEED.
#include "Editors.h"
#include "Files.h"
#include "Health.h"
#include "Journey.h"
#include "Sounds.h"
#include "Wait.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <random>
#include <stdexcept>

#include <QElapsedTimer>

namespace journey {
namespace {

using namespace std::chrono_literals;

// What the client needs when all is quiet.
struct Need {
    double Mb = 0;
    double Handles = 0;
    double Threads = 0;
    double MsForALine = 0; // a thousandth of it
};

class Soak : public WireJourney {
protected:
    Soak() {
        PutFile(Player.Home + "/Data/muds.lst",
                GameList({{"Quillmere", Town.Address.section(':', -1).toStdString()},
                          {"Foe", Server.PortText().toStdString()}}));
        Player.Set("SDL_DISKAUDIOFILE", "/dev/null");
    }

    int Any(int end) { return std::uniform_int_distribution<int>(0, end - 1)(Random); }

    template <typename Choices> auto AnyOf(const Choices& choices) {
        return choices[static_cast<std::size_t>(Any(static_cast<int>(std::size(choices))))];
    }

    // A minute's play rests until it has used less than half of the time that it has taken.
    void Rest() {
        if (IsAtSpeed)
            return;
        Becomes([this] { return UsedMs() < kShare * static_cast<double>(Clock.elapsed()); });
    }

    double UsedMs() const {
        return OwnCpuMs() + CpuMs(Player.Process) + CpuMs(Screen.Server) + CpuMs(Town.Process);
    }

    bool HasTimeLeft() const { return !Clock.hasExpired(qint64{1000} * Seconds); }

    // With the keys that choose the game.
    void Choose(const QString& key) {
        Push(Chooser);
        WaitFor("the list of games", [this] { return Player.HasList(); });
        Player.Press(key);
        Player.ChooseFromList({"Return"});
    }

    void WaitToSeeSinceTheConnection(const std::string& words) const {
        WaitFor("the output to show \"" + words + '"', [&] {
            const std::string text = Player.Shown();
            const std::size_t start = text.rfind("Attempting connection to: ");
            return text.find(words, start == std::string::npos ? 0 : start) != std::string::npos;
        });
    }

    void EnterTheWorld() {
        Choose("Up");
        Push(ConnectButton);
        WaitToSeeSinceTheConnection("By what name are you known?");
        Player.Enter("ada");
        Player.Enter("goose7");
        WaitToSeeSinceTheConnection("Welcome to Quillmere, Ada.");
    }

    void LeaveTheWorld() { Push(DisconnectButton); }

    void MeetTheFoe() {
        Choose("Down");
        ConnectAgain();
    }

    void LeaveTheFoe() {
        Push(DisconnectButton);
        WaitForTheEndOfTheConnection();
    }

    void Walk() {
        for (int steps = 1 + Any(8); steps > 0; --steps)
            Player.Keypad(AnyOf(std::string_view("12346789+-")));
    }

    void Speak() {
        static const QString kLines[] = {
            "look",     "map",          "who",     "score",       "inventory", "say Well met!",
            "kill rat", "attack goose", "flee",    "get bread",   "eat bread", "wear coat",
            "colours",  "options",      "probe",   "ring bell",   "sounds",    "hush",
            "help",     "drop loaf",    "emote x", "look;map;sc", "nonsense",  "flood 200"};
        for (int lines = 1 + Any(4); lines > 0; --lines)
            Player.Enter(AnyOf(kLines));
    }

    struct Dialog {
        const char* ItemKey;
        const char* Title;
    };
    static constexpr Dialog kDialogs[] = {
        {"a", kAliases}, {"t", kTriggers}, {"m", kMacros}, {"f", kSetup}};

    void Open(const Dialog& dialog) {
        OpenEditor(Player, dialog.ItemKey, dialog.Title);
        LeaveEditor(Player, "Escape", dialog.Title);
    }

    void OpenADialog() { Open(AnyOf(kDialogs)); }

    // Of one of the colours, in the setup dialog. To one of a few: the output keeps each colour
    // that it has ever shown, some hundred bytes, and no player chooses thousands.
    void ChangeAColour() {
        OpenEditor(Player, "f", kSetup);
        for (int tabs = 1 + Any(10); tabs > 0; --tabs)
            Player.Press("Tab");
        Player.Press("space");
        Player.TakeKeys("^Select Color$");
        Player.Press({"alt+h", "ctrl+a"});
        Player.Type('#' + QString::number(0x400000 + 0x111111 * Any(8), 16));
        Player.Press("Return");
        Player.WaitToClose("^Select Color$");
        Player.TakeKeys(kSetup);
        LeaveEditor(Player, "Escape", kSetup);
    }

    void ScrollBack() {
        Player.Press({"Prior", "Prior"});
        Screen.Turn(Any(5), 400, Client::kUpper);
        Player.ReturnToEnd();
    }

    using Act = void (Soak::*)();

    void PlayInTheWorld(int acts) {
        static constexpr Act kActs[] = {&Soak::Walk,      &Soak::Walk,        &Soak::Speak,
                                        &Soak::Speak,     &Soak::OpenADialog, &Soak::ChangeAColour,
                                        &Soak::ScrollBack};
        EnterTheWorld();
        for (; acts > 0; --acts) {
            (this->*AnyOf(kActs))();
            Rest();
        }
        LeaveTheWorld();
    }

    // What the first dialog, sound or tune makes is kept from then on, as are the threads that
    // play.
    void DoEverythingOnce() {
        EnterTheWorld();
        for (const Dialog& dialog : kDialogs)
            Open(dialog);
        ChangeAColour();
        Player.Enter("sounds"); // they are fetched, and played the next time
        WaitFor("the last sound to be there", [this] {
            return FilesBelow(Player.Home + "/Quillmere/sounds").contains("rain.wav");
        });
        Player.WaitToClose(kDownload);
        const int threads = ThreadsOf(Player.Process);
        Player.Enter("sounds");
        WaitFor("the sounds to play", [&] { return ThreadsOf(Player.Process) > threads; });
        LeaveTheWorld();
    }

    Attack AnyAttack() {
        std::vector<Attack> attacks = TextAttacks();
        for (const auto& more : {TelnetAttacks(), SoundAttacks()})
            attacks.insert(attacks.end(), more.begin(), more.end());
        attacks.push_back({"Mixture", "", Mixture(Random, 50000)});
        Attack attack = AnyOf(attacks);
        attack.Least = attack.Packet == 0 ? 100000 : 100;
        return attack;
    }

    void SufferTheFoe(int attacks) {
        MeetTheFoe();
        for (; attacks > 0; --attacks) {
            const Attack attack = AnyAttack();
            SCOPED_TRACE(attack.Name);
            Way->Begin(attack);
            if (Any(2) == 0)
                Player.Enter("flee");
            Way->Stop();
            if (Any(4) == 0) {
                Way->Reset();
                ConnectAgain();
            }
            Rest();
        }
        LetRead();
        TypeALine();
        if (!BoxesLeft().isEmpty())
            throw std::runtime_error("A message box is left.");
        Needs.push_back(Measure());
        TellRound();
        LeaveTheFoe();
    }

    void TellRound() const {
        const Need& need = Needs.back();
        std::printf("round %zu: %.1f MB, %.0f handles, %.0f threads, %.2f ms\n", Needs.size(),
                    need.Mb, need.Handles, need.Threads, need.MsForALine);
        std::fflush(stdout);
    }

    // The cost of a line is measured with the same text each time, and is the least of some: a text
    // during which the screen is drawn costs half as much again.
    Need Measure() {
        constexpr int kLines = 20000;
        constexpr int kTexts = 12;
        std::string text;
        for (int line = 0; line < kLines; ++line)
            text += "\x1b[0;32mThe tide comes in over the ferry stage.\x1b[0;37m\r\n";
        double cost = std::numeric_limits<double>::infinity();
        for (int i = 0; i < kTexts; ++i) {
            const double before = FirstThreadMs(Player.Process);
            Way->Send(text);
            LetRead();
            cost = std::min(cost, FirstThreadMs(Player.Process) - before);
        }
        return {ResidentMb(Player.Process), 1.0 * HandlesOf(Player.Process),
                1.0 * ThreadsOf(Player.Process), 1000 * cost / kLines};
    }

    // What that share of a part of the needs lies below: what is needed for a moment, and what
    // other programs do to the times, is not in it.
    double Quantile(double share, double Need::*what, std::size_t from, std::size_t to) const {
        std::vector<double> values;
        for (std::size_t i = from; i < to; ++i)
            values.push_back(Needs.at(i).*what);
        const auto count = static_cast<double>(values.size());
        const auto at = values.begin() + static_cast<std::ptrdiff_t>(share * count);
        std::nth_element(values.begin(), at, values.end());
        return *at;
    }

    // Each stop lets the next wave begin that waits. The device is closed a while after the last
    // sound, which gives back its memory too. The last need is what it is then, or after the
    // longest wait.
    void WaitForSilence() {
        MeetTheFoe();
        Need& last = Needs.back();
        Becomes([&] {
            Way->Send("\r\n!!SOUND(Off)!!MUSIC(Off)\r\n");
            LetRead();
            last.Mb = ResidentMb(Player.Process);
            last.Handles = HandlesOf(Player.Process);
            last.Threads = ThreadsOf(Player.Process);
            return last.Handles <= Of(&Need::Handles).First &&
                   last.Threads <= Of(&Need::Threads).First;
        });
    }

    struct Trend {
        double First;
        double Last;
    };

    // A fifth of the time in the beginning, once what is kept is there, and the last fifth. The
    // least of each, if no other share is asked for.
    Trend Of(double Need::*what, double share = 0) const {
        const std::size_t part = std::max(Needs.size() / 5, kPart);
        return {Quantile(share, what, part, 2 * part),
                Quantile(share, what, Needs.size() - part, Needs.size())};
    }

    Trend Tell(const char* name, double Need::*what, double share = 0) const {
        const Trend trend = Of(what, share);
        std::printf("%-28s %8.2f %8.2f\n", name, trend.First, trend.Last);
        return trend;
    }

    static constexpr double kShare = 0.4;
    static constexpr std::size_t kPart = 2; // of the rounds, the smallest that is compared
    static constexpr std::size_t kFewestRounds = 3 * kPart;

    // A minute is over before all that is kept is there, of the lines above all.
    double MostMb() const { return IsAtSpeed ? 2 : 20; }

    static int Number(const char* variable, int otherwise) {
        return qEnvironmentVariableIsSet(variable) ? qEnvironmentVariableIntValue(variable)
                                                   : otherwise;
    }

    const bool IsAtSpeed = qEnvironmentVariableIsSet("QUILLMERE_SOAK_SECONDS");
    const int Seconds = Number("QUILLMERE_SOAK_SECONDS", 60);
    const unsigned Seed = static_cast<unsigned>(Number(
        "QUILLMERE_SOAK_SEED", IsAtSpeed ? static_cast<int>(std::random_device()() % 1000000) : 1));
    std::mt19937 Random{Seed};
    QElapsedTimer Clock;
    World Town;
    std::vector<Need> Needs;
};

TEST_F(Soak, NeedsNoMoreAtTheEndThanAtTheBeginning) {
    std::printf("Seed %u\n", Seed);
    Clock.start();
    Player.Start();
    Toolbar = FindToolbar(Screen.Look());
    for (const char* key : {"Down", "Up"}) {
        Choose(key);
        ChangeSoundOptions(Player, {EnableMsp});
    }
    DoEverythingOnce();
    while (HasTimeLeft() || Needs.size() < kFewestRounds) {
        PlayInTheWorld(6);
        SufferTheFoe(6);
    }
    std::printf("%zu rounds\n", Needs.size());
    WaitForSilence();
    const Trend memory = Tell("MB", &Need::Mb);
    const Trend handles = Tell("handles", &Need::Handles);
    const Trend threads = Tell("threads", &Need::Threads);
    // A quarter: one reading in a thousand is a third lower than any other.
    const Trend lines = Tell("ms for a thousand lines", &Need::MsForALine, 0.25);
    EXPECT_LT(memory.Last, memory.First + MostMb());
    EXPECT_LE(handles.Last, handles.First);
    EXPECT_LE(threads.Last, threads.First);
    if (IsAtSpeed) { // beside other tests, what a line costs is not the same
        EXPECT_LT(lines.Last, lines.First * 1.25);
    }
}

} // namespace
} // namespace journey
