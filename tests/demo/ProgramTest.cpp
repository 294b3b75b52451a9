// The built program: its options, its first line, and how it stops.
#include "Scene.h"
#include "Visitor.h"

#include <csignal>
#include <gtest/gtest.h>
#include <string>

#include <QProcess>

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

    int Port() const { return std::stoi(out.substr(out.rfind(':') + 1)); }

    bool Ends() {
        return WaitFor([this] { return process.state() == QProcess::NotRunning; });
    }

    void Signal(int number) const { ::kill(static_cast<pid_t>(process.processId()), number); }
};

TEST(WorldProgram, SaysInOneLineWhereItListens) {
    Program program({"--port", "0"});
    ASSERT_TRUE(program.Listens());
    EXPECT_EQ(program.out, "Listening on 127.0.0.1:" + std::to_string(program.Port()) + "\n");
    EXPECT_LE(program.Port(), 32767);
}

class WorldProgramSignals : public ::testing::TestWithParam<int> {};

TEST_P(WorldProgramSignals, EndItCleanlyWithAWordToThePlayers) {
    Program program({"--port", "0"});
    ASSERT_TRUE(program.Listens());
    Visitor ada(program.Port());
    ASSERT_TRUE(ada.LogIn("Ada"));
    program.Signal(GetParam());
    ASSERT_TRUE(program.Ends());
    EXPECT_EQ(program.process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.process.exitCode(), 0);
    EXPECT_TRUE(ada.Sees("The world is rolled up for the night."));
}

INSTANTIATE_TEST_SUITE_P(Both, WorldProgramSignals, ::testing::Values(SIGTERM, SIGINT),
                         [](const auto& row) {
                             return std::string(row.param == SIGTERM ? "Term" : "Int");
                         });

TEST(WorldProgram, LogsALineForEachConnection) {
    Program program({"--port", "0"});
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
    for (const char* option : {"--port", "--hunger", "--round"})
        EXPECT_TRUE(Contains(program.out, option)) << option;
}

TEST(WorldProgram, EndsWithStatusOneWhenThePortIsTaken) {
    Program first({"--port", "0"});
    ASSERT_TRUE(first.Listens());
    Program second({"--port", QString::number(first.Port())});
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
    {"AnUnknownOption", {"--colour"}},
};

INSTANTIATE_TEST_SUITE_P(All, WorldProgramOptions, ::testing::ValuesIn(kBadOptions),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace world
