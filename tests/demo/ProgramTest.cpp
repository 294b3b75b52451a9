// The built program: its options, its first lines, and how it stops.
#include "Ports.h"
#include "Reply.h"
#include "Scene.h"
#include "Synthesis.h"
#include "Visitor.h"

#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <sys/socket.h>
#include <vector>

#include <QProcess>
#include <QTcpServer>

namespace world {
namespace {

struct Program {
    QProcess process;
    std::string out;
    std::string log;

    explicit Program(const QStringList& arguments) {
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

    void Signal(int number) const { ::kill(static_cast<pid_t>(process.processId()), number); }

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
        if (closesItsHalf) {
            ASSERT_TRUE(WaitFor([&] {
                return client.socket.state() == QTcpSocket::ConnectedState &&
                       client.socket.bytesToWrite() == 0;
            }));
            ::shutdown(static_cast<int>(client.socket.socketDescriptor()), SHUT_WR);
        }
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
    EXPECT_TRUE(ada.Type("sounds", "\r\n!!SOUND(bell.wav )\r\n"));
    EXPECT_EQ(AddressesIn(ada.received), std::vector<std::string>{});
    program.Signal(SIGTERM);
    ASSERT_TRUE(program.Ends());
    EXPECT_EQ(program.process.exitCode(), 0);
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
}

INSTANTIATE_TEST_SUITE_P(Both, WorldProgramSignals, ::testing::Values(SIGTERM, SIGINT),
                         [](const auto& row) {
                             return std::string(row.param == SIGTERM ? "Term" : "Int");
                         });

TEST(WorldProgram, LogsALineForEachConnection) {
    Program program(kAnyPorts);
    ASSERT_TRUE(program.Listens());
    Visitor ada(program.Port());
    ASSERT_TRUE(ada.Sees("By what name"));
    const std::string line = "connected 127.0.0.1:" + std::to_string(ada.socket.localPort()) + "\n";
    EXPECT_TRUE(WaitFor([&] { return program.log == line; })) << program.log;
}

TEST(WorldProgram, ExplainsItsOptions) {
    Program program({"--help"});
    ASSERT_TRUE(program.Ends());
    EXPECT_EQ(program.process.exitCode(), 0);
    for (const char* option : {"--port", "--hunger", "--round", "--http-port", "--client-version"})
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
    {"AnUnknownOption", {"--colour"}},
};

INSTANTIATE_TEST_SUITE_P(All, WorldProgramOptions, ::testing::ValuesIn(kBadOptions),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace world
