// The built program: its options, its first lines, and how it stops.
#include "Book.h"
#include "Folder.h"
#include "Mute.h"
#include "Ports.h"
#include "Reply.h"
#include "Scene.h"
#include "Server.h"
#include "Synthesis.h"
#include "Visitor.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <QProcess>
#include <QProcessEnvironment>
#include <QTcpServer>

namespace world {
namespace {

QString Name(const std::string& path) { return QString::fromStdString(path); }

enum class Players { InAFileOfTheirOwn, WhereTheProgramWants };

// Whatever it is told, it keeps its players in a folder that goes with it.
struct Program {
    Folder home;
    QProcess process;
    std::string out;
    std::string log;

    explicit Program(QStringList arguments, Players players = Players::InAFileOfTheirOwn,
                     void (*hangUp)(int) = SIG_DFL) {
        process.setChildProcessModifier([hangUp] { std::signal(SIGHUP, hangUp); });
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_DATA_HOME", Name(home.Path("")));
        process.setProcessEnvironment(environment);
        if (players == Players::InAFileOfTheirOwn)
            arguments = QStringList{"--players", Name(home.Path("players.json"))} + arguments;
        QObject::connect(&process, &QProcess::readyReadStandardOutput, &process,
                         [this] { out += process.readAllStandardOutput().toStdString(); });
        QObject::connect(&process, &QProcess::readyReadStandardError, &process,
                         [this] { log += process.readAllStandardError().toStdString(); });
        process.start(WORLD_PROGRAM, arguments);
    }
    ~Program() {
        process.kill();
        process.waitForFinished();
    }

    bool Listens() {
        return WaitFor([this] { return out.ends_with('\n'); });
    }

    int Port() const { return NumberAfter("Listening on 127.0.0.1:"); }
    int HttpPort() const { return NumberAfter("Serving http://127.0.0.1:"); }

    bool Ends() {
        return WaitFor([this] { return process.state() == QProcess::NotRunning; });
    }

    // Tells it to stop. True when it does so cleanly.
    bool Stops() {
        Signal(SIGTERM);
        return Ends() && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    }

    // Nobody when it is gone: 0 would be all of this test's own group.
    void Signal(int number) const {
        if (const qint64 id = process.processId(); id > 0)
            ::kill(static_cast<pid_t>(id), number);
    }

private:
    int NumberAfter(std::string_view words) const {
        const std::size_t at = out.find(words);
        return at == std::string::npos ? 0 : std::atoi(out.c_str() + at + words.size());
    }
};

// A world that leaves the ports of other worlds alone.
const QStringList kAnyPorts = {"--port", "0", "--http-port", "0"};

// The body of a page, once it is there whole.
std::string PageOf(const Program& program, const std::string& path) {
    Visitor client(program.HttpPort());
    client.Send("GET " + path + " HTTP/1.1\r\n\r\n");
    EXPECT_TRUE(client.IsClosed());
    const std::optional<Reply> reply = ParseReply(client.received);
    EXPECT_TRUE(reply && reply->status == "200 OK" && IsWhole(*reply)) << client.received;
    return reply.value_or(Reply{}).body;
}

TEST(WorldProgram, SaysAtOnceInTwoLinesWhereItListensAndServes) {
    Program program(kAnyPorts);
    ASSERT_TRUE(program.Listens());
    EXPECT_EQ(program.out, "Listening on 127.0.0.1:" + std::to_string(program.Port()) +
                               "\nServing http://127.0.0.1:" + std::to_string(program.HttpPort()) +
                               "/\n");
    EXPECT_LE(program.Port(), 32767);
    EXPECT_LE(program.HttpPort(), 32767);
    EXPECT_NE(program.Port(), program.HttpPort());
}

TEST(WorldProgram, TellsOnItsHomePageWhereTheGameIs) {
    Program program(kAnyPorts);
    ASSERT_TRUE(program.Listens());
    EXPECT_TRUE(Contains(PageOf(program, "/"), std::to_string(program.Port())));
}

TEST(WorldProgram, PublishesVersionOneUnlessToldOtherwise) {
    Program program(kAnyPorts);
    ASSERT_TRUE(program.Listens());
    EXPECT_EQ(PageOf(program, "/client/clientver.txt"), "1");
}

TEST(WorldProgram, PublishesAnyTextAsTheVersion) {
    for (const char* version : {"2", "1.10 beta", "", "-1", "a\nb", "\xc3\xa9"}) {
        Program program(kAnyPorts + QStringList{"--client-version", version});
        ASSERT_TRUE(program.Listens()) << version << program.log;
        EXPECT_EQ(PageOf(program, "/client/clientver.txt"), version);
    }
}

TEST(WorldProgram, ServesTheManualThatItsHomePageLeadsTo) {
    Program program(kAnyPorts);
    ASSERT_TRUE(program.Listens());
    ASSERT_TRUE(Contains(PageOf(program, "/"), "href=\"/manual/index.html\""));
    EXPECT_TRUE(Contains(PageOf(program, "/manual/index.html"), "manual.css"));
    EXPECT_TRUE(Contains(PageOf(program, "/manual/manual.css"), "{"));
}

struct Fetched {
    const char* path;
    const char* type;
    std::string (*make)();
};

void PrintTo(const Fetched& row, std::ostream* out) { *out << row.path; }

class WorldProgramSounds : public ::testing::TestWithParam<Fetched> {};

// As the game client asks for them, and as one that closes its half at once does.
TEST_P(WorldProgramSounds, AreFetchedWhole) {
    Program program(kAnyPorts);
    ASSERT_TRUE(program.Listens());
    for (const bool closesItsHalf : {false, true}) {
        Visitor client(program.HttpPort());
        client.Send("GET " + std::string(GetParam().path) +
                    " HTTP/1.1\r\nHost: 127.0.0.1\r\nRange: bytes=0-\r\n\r\n");
        ASSERT_TRUE(!closesItsHalf || client.ClosesItsHalf());
        ASSERT_TRUE(client.IsClosed());
        const std::optional<Reply> reply = ParseReply(client.received);
        ASSERT_TRUE(reply && IsWhole(*reply)) << closesItsHalf;
        EXPECT_EQ(reply->status, "200 OK");
        EXPECT_EQ(reply->fields.at("Content-Type"), GetParam().type);
        EXPECT_TRUE(reply->body == GetParam().make());
    }
}

const Fetched kFetched[] = {
    {"/sounds/rain.wav", "audio/wav", RainWave},
    {"/sounds/thunder.wav", "audio/wav", ThunderWave},
    {"/sounds/bell.wav", "audio/wav", BellWave},
    {"/sounds/tune.mid", "audio/midi", TuneMidi},
};

INSTANTIATE_TEST_SUITE_P(All, WorldProgramSounds, ::testing::ValuesIn(kFetched),
                         [](const auto& row) {
                             const std::string path = row.param.path;
                             const std::size_t begin = path.rfind('/') + 1;
                             return path.substr(begin, path.find('.') - begin);
                         });

TEST(WorldProgram, ServesEverySoundAtTheAddressItGivesToAPlayer) {
    Program program(kAnyPorts);
    ASSERT_TRUE(program.Listens());
    Visitor ada(program.Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ada.TakeSounds();
    ASSERT_TRUE(ada.Type("sounds", "\r\n!!SOUND(bell.wav )\r\n"));
    const std::vector<std::string> addresses = AddressesIn(ada.received);
    EXPECT_EQ(addresses.size(), 4U);
    const std::string root = "http://127.0.0.1:" + std::to_string(program.HttpPort());
    for (const std::string& address : addresses) {
        ASSERT_TRUE(address.starts_with(root + "/sounds/")) << address;
        EXPECT_NE(PageOf(program, address.substr(root.size())), "") << address;
    }
}

// The game is there, its pages are not, and one line says why.
void ExpectGameAlone(Program& program, int takenPort) {
    ASSERT_TRUE(program.Listens());
    EXPECT_EQ(program.out, "Listening on 127.0.0.1:" + std::to_string(program.Port()) + "\n");
    const std::string line =
        "Port " + std::to_string(takenPort) + " is taken: the game goes on without its web pages\n";
    EXPECT_TRUE(WaitFor([&] { return program.log == line; })) << program.log;
    Visitor ada(program.Port());
    EXPECT_TRUE(ada.LogIn("Ada"));
    ada.TakeSounds();
    EXPECT_TRUE(ada.Type("sounds", "\r\n!!SOUND(bell.wav )\r\n"));
    EXPECT_EQ(AddressesIn(ada.received), std::vector<std::string>{});
    EXPECT_TRUE(program.Stops());
}

TEST(WorldProgram, PlaysOnWithoutPagesWhenTheirPortIsTaken) {
    Program first(kAnyPorts);
    ASSERT_TRUE(first.Listens());
    Program second({"--port", "0", "--http-port", QString::number(first.HttpPort())});
    ExpectGameAlone(second, first.HttpPort());
}

TEST(WorldProgram, PlaysOnWithoutPagesWhenTheirPortIsThatOfTheGame) {
    QTcpServer listener;
    ASSERT_TRUE(ListenAt(listener, 0));
    const int port = listener.serverPort();
    listener.close();
    const QString number = QString::number(port);
    Program program({"--port", number, "--http-port", number});
    ExpectGameAlone(program, port);
    EXPECT_EQ(program.Port(), port);
}

// The port is held here so that no reader of another world meets this one. Where it cannot be held,
// another world has it, which is as good.
TEST(WorldProgram, ServesOnPort8080UnlessToldOtherwise) {
    QTcpServer listener;
    ListenAt(listener, 8080);
    Program program({"--port", "0"});
    ASSERT_TRUE(program.Listens());
    EXPECT_TRUE(WaitFor([&] {
        return program.HttpPort() == 8080 || program.log.starts_with("Port 8080 is taken:");
    })) << program.out
        << program.log;
}

class WorldProgramSignals : public ::testing::TestWithParam<int> {};

TEST_P(WorldProgramSignals, EndItCleanlyWithAWordToThePlayers) {
    Program program(kAnyPorts);
    ASSERT_TRUE(program.Listens());
    Visitor ada(program.Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    Visitor reader(program.HttpPort());
    reader.Send("GET / HT");
    ASSERT_TRUE(WaitFor([&] { return reader.socket.state() == QTcpSocket::ConnectedState; }));
    program.Signal(GetParam());
    ASSERT_TRUE(program.Ends());
    EXPECT_EQ(program.process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.process.exitCode(), 0);
    EXPECT_TRUE(ada.Sees("The world is rolled up for the night."));
    EXPECT_TRUE(reader.IsClosed());
    EXPECT_TRUE(LoadBook(program.home.Path("players.json")).contains("Ada"));
}

INSTANTIATE_TEST_SUITE_P(All, WorldProgramSignals, ::testing::Values(SIGTERM, SIGINT, SIGHUP),
                         [](const auto& row) { return std::string(sigabbrev_np(row.param)); });

TEST(WorldProgram, OutlivesItsTerminalWhenToldSoFromTheStart) {
    Program program(kAnyPorts, Players::InAFileOfTheirOwn, SIG_IGN);
    ASSERT_TRUE(program.Listens());
    program.Signal(SIGHUP);
    Visitor ada(program.Port());
    EXPECT_TRUE(ada.LogIn("Ada"));
    EXPECT_TRUE(program.Stops());
}

TEST(WorldProgram, IsNotEndedByAPipeThatNobodyReads) {
    Program program(kAnyPorts);
    ASSERT_TRUE(program.Listens());
    program.Signal(SIGPIPE);
    Visitor ada(program.Port());
    EXPECT_TRUE(ada.LogIn("Ada"));
    EXPECT_TRUE(program.Stops());
}

TEST(WorldProgram, LogsALineForEachConnection) {
    Program program(kAnyPorts);
    ASSERT_TRUE(program.Listens());
    Visitor ada(program.Port());
    ASSERT_TRUE(ada.Sees("By what name"));
    const std::string line = "connected 127.0.0.1:" + std::to_string(ada.socket.localPort()) + "\n";
    EXPECT_TRUE(WaitFor([&] { return program.log == line; })) << program.log;
}

TEST(WorldProgram, LogsALineForOneThatItTurnsAway) {
    Program program(kAnyPorts);
    ASSERT_TRUE(program.Listens());
    std::vector<std::unique_ptr<Visitor>> crowd;
    for (std::size_t each = 0; each < MaxClients; ++each)
        crowd.push_back(std::make_unique<Visitor>(program.Port()));
    for (const auto& visitor : crowd)
        ASSERT_TRUE(visitor->Sees("By what name")) << "all may come at once";
    Visitor late(program.Port());
    ASSERT_TRUE(late.Sees("The town is full."));
    EXPECT_TRUE(late.IsClosed());
    EXPECT_TRUE(WaitFor([&] { return Contains(program.log, "refused 127.0.0.1:"); }));
    EXPECT_EQ(std::ranges::count(program.log, '\n'), static_cast<std::ptrdiff_t>(MaxClients) + 1);
}

TEST(WorldProgram, RemembersThePlayersInTheFileThatItIsTold) {
    const Folder folder;
    const QStringList arguments = kAnyPorts + QStringList{"--players", Name(folder.Path("a/b"))};
    {
        Program program(arguments);
        ASSERT_TRUE(program.Listens());
        Visitor ada(program.Port());
        ASSERT_TRUE(ada.LogIn("Ada"));
        ASSERT_TRUE(program.Stops());
        EXPECT_EQ(program.home.Names(), std::vector<std::string>{});
    }
    EXPECT_EQ(folder.Mode("a/b"), 0600);
    Program program(arguments);
    ASSERT_TRUE(program.Listens());
    Visitor ada(program.Port());
    ASSERT_TRUE(ada.Sees("By what name"));
    EXPECT_TRUE(ada.Type("ada", "The book knows you"));
    EXPECT_TRUE(ada.Type("secret", "Welcome to Quillmere, Ada."));
}

TEST(WorldProgram, RemembersThePlayersInTheFolderOfTheUsersDataUnlessToldOtherwise) {
    Program program(kAnyPorts, Players::WhereTheProgramWants);
    ASSERT_TRUE(program.Listens());
    Visitor ada(program.Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ASSERT_TRUE(program.Stops());
    EXPECT_EQ(program.home.Mode("quillmere-world/players.json"), 0600);
    EXPECT_TRUE(LoadBook(program.home.Path("quillmere-world/players.json")).contains("Ada"));
}

TEST(WorldProgram, EndsWithStatusOneAndAWordWhenThePlayersCannotBeRead) {
    const Folder folder;
    const std::string file = folder.Path("players.json");
    for (const char* damage : {"", "Ada secret\n", "{\"players\": ["}) {
        folder.Write("players.json", damage);
        Program program(kAnyPorts + QStringList{"--players", Name(file)});
        ASSERT_TRUE(program.Ends());
        EXPECT_EQ(program.process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(program.process.exitCode(), 1);
        EXPECT_EQ(program.out, "");
        EXPECT_EQ(program.log, file + " can't be read: it is no list of players\n");
        EXPECT_EQ(folder.Read("players.json"), damage) << "it is left as it was";
    }
}

TEST(WorldProgram, EndsWithStatusOneAndAWordWhileAnotherKeepsItsPlayersInTheFile) {
    const Folder folder;
    const std::string file = folder.Path("players.json");
    const QStringList arguments = kAnyPorts + QStringList{"--players", Name(file)};
    Program first(arguments);
    ASSERT_TRUE(first.Listens());
    Program second(arguments);
    ASSERT_TRUE(second.Ends());
    EXPECT_EQ(second.process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(second.process.exitCode(), 1);
    EXPECT_EQ(second.out, "");
    EXPECT_EQ(second.log, file + " can't be read: another world keeps its players there\n");
    first.Signal(SIGKILL);
    ASSERT_TRUE(first.Ends());
    Program third(arguments);
    EXPECT_TRUE(third.Listens()) << "one that was killed keeps nobody out";
}

TEST(WorldProgram, PlaysOnWithAWordWhenThePlayersCannotBeWritten) {
    const Folder folder;
    folder.Write("file", "x");
    const std::string file = folder.Path("file/players.json");
    Program program(kAnyPorts + QStringList{"--players", Name(file)});
    ASSERT_TRUE(program.Listens());
    Visitor ada(program.Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    ASSERT_TRUE(program.Stops());
    EXPECT_TRUE(program.log.ends_with("\nThe players can't be written to " + file + '\n'))
        << program.log;
    EXPECT_TRUE(ada.Sees("The world is rolled up for the night."));
}

// What the system says of the program, one number behind the words.
long StatusOf(const Program& program, std::string_view words) {
    std::ifstream file("/proc/" + std::to_string(program.process.processId()) + "/status");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(words))
            return std::atol(line.c_str() + words.size());
    }
    ADD_FAILURE() << "the system does not tell of " << words;
    return 0;
}

// How often the program was set going and how long it ran, in ticks of the system.
struct Effort {
    long turns;
    long ticks;

    bool operator==(const Effort&) const = default;
};

Effort EffortOf(const Program& program) {
    std::ifstream file("/proc/" + std::to_string(program.process.processId()) + "/stat");
    const std::string stat(std::istreambuf_iterator<char>(file), {});
    std::istringstream fields(stat.substr(stat.rfind(')') + 1));
    std::string skipped;
    for (int field = 3; field < 14; ++field)
        fields >> skipped;
    long user = -1;
    long system = -1;
    fields >> user >> system;
    EXPECT_GE(system, 0) << stat;
    return {StatusOf(program, "voluntary_ctxt_switches:") +
                StatusOf(program, "nonvoluntary_ctxt_switches:"),
            user + system};
}

// True when the program does nothing at all for half a second, now or after what it still has to
// do.
bool FallsAsleep(const Program& program) {
    for (int tries = 0; tries < 10; ++tries) {
        const Effort before = EffortOf(program);
        std::this_thread::sleep_for(std::chrono::milliseconds(500));
        if (EffortOf(program) == before)
            return true;
    }
    return false;
}

// True as soon as the program has done something since. A turn counts when it is over.
bool HasDoneMore(const Program& program, const Effort& before) {
    for (int tries = 0; tries < 500 && EffortOf(program) == before; ++tries)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return EffortOf(program) != before;
}

// "Aa" to "Hz": a name for each number below 208.
std::string NameOf(int number) {
    return {static_cast<char>('A' + number / 26), static_cast<char>('a' + number % 26)};
}

TEST(WorldProgram, SleepsWhileTwoHundredPlayersAreIdle) {
    const Folder folder;
    Book book;
    for (int each = 0; each < 200; ++each)
        book[NameOf(each)] = NewAccount("secret", 1);
    ASSERT_TRUE(SaveBook(folder.Path("players.json"), book));
    Program program(kAnyPorts + QStringList{"--hunger", "3600", "--players",
                                            Name(folder.Path("players.json"))});
    ASSERT_TRUE(program.Listens());
    std::vector<std::unique_ptr<Visitor>> crowd;
    for (int each = 0; each < 200; ++each) {
        crowd.push_back(std::make_unique<Visitor>(program.Port()));
        ASSERT_TRUE(crowd.back()->LogIn(NameOf(each))) << each;
    }
    EXPECT_TRUE(FallsAsleep(program));
    const Effort asleep = EffortOf(program);
    EXPECT_TRUE(crowd[0]->Type("who", NameOf(199) + ", Goose Green"));
    EXPECT_TRUE(HasDoneMore(program, asleep)) << "what is measured shows what is done";
}

TEST(WorldProgram, NeitherGrowsNorWaitsWhenAFloodIsNotRead) {
    Program program(kAnyPorts);
    ASSERT_TRUE(program.Listens());
    Visitor ada(program.Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    const Mute mute(program.Port());
    ASSERT_TRUE(mute.Send("Mute\rsecret\r"));
    ASSERT_TRUE(ada.Sees("Mute comes in off the road."));
    const long before = StatusOf(program, "VmRSS:");
    ASSERT_TRUE(mute.Send("flood 100000\r"));
    for (int times = 0; times < 50; ++times)
        ASSERT_TRUE(ada.Type("score", "You are well fed."));
    EXPECT_TRUE(FallsAsleep(program)) << "nothing is done until something is read";
    EXPECT_LT(StatusOf(program, "VmRSS:") - before, 10 * 1024) << "kilobytes of a hundred thousand";
    EXPECT_TRUE(ada.Type("who", "Mute, Goose Green"));
    EXPECT_TRUE(program.Stops()) << "what is unsent keeps nobody";
}

TEST(WorldProgram, SendsAFloodWholeToOneWhoReadsItLate) {
    Program program(kAnyPorts);
    ASSERT_TRUE(program.Listens());
    Visitor ada(program.Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    const Mute mute(program.Port());
    ASSERT_TRUE(mute.Send("Mute\rsecret\rflood 3000\r"));
    ASSERT_TRUE(ada.Sees("Mute comes in off the road."));
    ASSERT_TRUE(ada.Type("say hello", "You say: hello"));
    const std::string late = mute.ReadLateUntil("[20/20] > \x1b[0;37m\xff\xf9\r");
    EXPECT_GT(late.size(), 3000U * 1024);
    EXPECT_TRUE(Contains(late, "The flood is over.\r\n"));
    EXPECT_TRUE(Contains(late, "Ada says: hello\r\n"));
}

TEST(WorldProgram, ExplainsItsOptions) {
    Program program({"--help"});
    ASSERT_TRUE(program.Ends());
    EXPECT_EQ(program.process.exitCode(), 0);
    for (const char* option :
         {"--port", "--hunger", "--round", "--http-port", "--client-version", "--players"})
        EXPECT_TRUE(Contains(program.out, option)) << option;
}

TEST(WorldProgram, EndsWithStatusOneWhenThePortIsTaken) {
    Program first(kAnyPorts);
    ASSERT_TRUE(first.Listens());
    Program second({"--port", QString::number(first.Port()), "--http-port", "0"});
    ASSERT_TRUE(second.Ends());
    EXPECT_EQ(second.process.exitCode(), 1);
    EXPECT_EQ(second.log, "Port " + std::to_string(first.Port()) + " is taken\n");
}

struct BadOption {
    const char* name;
    QStringList arguments;
};

void PrintTo(const BadOption& row, std::ostream* out) { *out << row.name; }

class WorldProgramOptions : public ::testing::TestWithParam<BadOption> {};

TEST_P(WorldProgramOptions, AreRefusedWithStatusOneAndAWord) {
    Program program(GetParam().arguments);
    ASSERT_TRUE(program.Ends());
    EXPECT_EQ(program.process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.process.exitCode(), 1);
    EXPECT_EQ(program.out, "");
    EXPECT_NE(program.log, "");
}

const BadOption kBadOptions[] = {
    {"APortTheClientCannotStore", {"--port", "32768"}},
    {"ANegativePort", {"--port", "-1"}},
    {"APortInLetters", {"--port", "home"}},
    {"APortWithoutNumber", {"--port"}},
    {"NoTimeBetweenPangs", {"--hunger", "0"}},
    {"RoundsTooShort", {"--round", "9"}},
    {"APortOfPagesThatIsNone", {"--port", "0", "--http-port", "65536"}},
    {"ANegativePortOfPages", {"--port", "0", "--http-port", "-1"}},
    {"APortOfPagesInLetters", {"--port", "0", "--http-port", "web"}},
    {"AnEmptyPortOfPages", {"--port", "0", "--http-port", ""}},
    {"APortOfPagesWithoutNumber", {"--port", "0", "--http-port"}},
    {"AVersionWithoutText", {"--port", "0", "--client-version"}},
    {"PlayersWithoutAFile", {"--port", "0", "--players"}},
    {"AnUnknownOption", {"--colour"}},
};

INSTANTIATE_TEST_SUITE_P(All, WorldProgramOptions, ::testing::ValuesIn(kBadOptions),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace world
