#include "terminal/AutoLog.h"

#include "base/Error.h"
#include "config/FreshFolder.h"
#include "fakes/Fakes.h"
#include "net/Connection.h"
#include "support/ErrorOf.h"
#include "terminal/Output.h"

namespace mw {
namespace {

constexpr const char* kDate = "2026-11-21 12:00:00";

class SessionLog : public RuleTest {
protected:
    SessionLog() {
        AutoLogOn = true;
        LogFilePath = PathOf("session.log");
    }

    ~SessionLog() override { CloseLog(); }

    std::string PathOf(const std::string& name) const { return (Folder.Path / name).string(); }

    std::string Logged() const { return Folder.ContentOf("session.log"); }

    static std::string Record(const std::string& line) {
        return "\"" + std::string(kDate) + ": " + line + "\"\r\n";
    }

    FreshFolder Folder;
};

TEST_F(SessionLog, WritesALineAsOneQuotedRecordWhoseCloseStandsOnTheNextLine) {
    OpenLog();
    WriteLogLine("You are hungry.\n");
    CloseLog();
    EXPECT_EQ(Logged(), "\"2026-11-21 12:00:00: You are hungry.\n\"\r\n");
}

TEST_F(SessionLog, WritesTheDateAndTimeOfEachLine) {
    OpenLog();
    WriteLogLine("one\n");
    fakes::Date = "2026-11-21 12:00:01";
    WriteLogLine("two\n");
    EXPECT_EQ(Logged(), Record("one\n") + "\"2026-11-21 12:00:01: two\n\"\r\n");
}

TEST_F(SessionLog, QuotesInsideAreNotDoubledOnPurpose) {
    OpenLog();
    WriteLogLine("She says \"hi\"\n");
    EXPECT_EQ(Logged(), Record("She says \"hi\"\n"));
}

TEST_F(SessionLog, EveryByteIsWrittenAsItIs) {
    std::string line;
    for (int byte = 0; byte < 256; ++byte)
        line += static_cast<char>(byte);
    OpenLog();
    WriteLogLine(line);
    EXPECT_EQ(Logged(), Record(line));
}

TEST_F(SessionLog, ALineIsInTheFileAtOnce) {
    OpenLog();
    WriteLogLine("one\n");
    EXPECT_EQ(Logged(), Record("one\n"));
    EXPECT_TRUE(LogFileOpen);
}

TEST_F(SessionLog, OpeningAppendsToWhatIsThere) {
    std::ofstream(LogFilePath, std::ios::binary) << "before\r\n";
    OpenLog();
    WriteLogLine("one\n");
    CloseLog();
    OpenLog();
    WriteLogLine("two\n");
    CloseLog();
    EXPECT_EQ(Logged(), "before\r\n" + Record("one\n") + Record("two\n"));
}

TEST_F(SessionLog, OpeningMakesTheFileAndTakesANumber) {
    LogFileNumber = 0;
    EXPECT_FALSE(LogFileOpen);
    OpenLog();
    EXPECT_TRUE(LogFileOpen);
    EXPECT_GT(LogFileNumber, 0);
    EXPECT_TRUE(std::filesystem::exists(LogFilePath));
}

TEST_F(SessionLog, ClosingEndsIt) {
    OpenLog();
    CloseLog();
    EXPECT_FALSE(LogFileOpen);
    WriteLogLine("late\n");
    EXPECT_EQ(Logged(), "");
}

TEST_F(SessionLog, ClosingTwiceIsHarmless) {
    CloseLog();
    OpenLog();
    WriteLogLine("one\n");
    CloseLog();
    CloseLog();
    EXPECT_FALSE(LogFileOpen);
    EXPECT_EQ(Logged(), Record("one\n"));
}

TEST_F(SessionLog, WritesOnlyWhenItIsOnAndOpen) {
    OpenLog();
    AutoLogOn = false;
    WriteLogLine("off\n");
    EXPECT_EQ(Logged(), "");
    AutoLogOn = true;
    WriteLogLine("on\n");
    EXPECT_EQ(Logged(), Record("on\n"));
    CloseLog();
    WriteLogLine("closed\n");
    EXPECT_EQ(Logged(), Record("on\n"));
}

TEST_F(SessionLog, OneThatIsStillOpenIsClosedByTheNext) {
    OpenLog();
    WriteLogLine("one\n");
    LogFilePath = PathOf("other.log");
    OpenLog();
    WriteLogLine("two\n");
    EXPECT_EQ(Logged(), Record("one\n"));
    EXPECT_EQ(Folder.ContentOf("other.log"), Record("two\n"));
}

TEST_F(SessionLog, AFileThatCanNotBeOpenedRaisesPathFileAccess) {
    for (const std::string& path : {PathOf(""), PathOf("missing/session.log"), std::string()}) {
        LogFilePath = path;
        EXPECT_EQ(ErrorOf(OpenLog), PathFileAccess) << path;
        EXPECT_FALSE(LogFileOpen);
        WriteLogLine("nowhere\n");
    }
}

TEST_F(SessionLog, AFailedOpeningClosesTheOldLogAndSpoilsNoLaterOne) {
    OpenLog();
    WriteLogLine("one\n");
    LogFilePath = PathOf("");
    EXPECT_EQ(ErrorOf(OpenLog), PathFileAccess);
    EXPECT_FALSE(LogFileOpen);
    LogFilePath = PathOf("session.log");
    OpenLog();
    WriteLogLine("two\n");
    EXPECT_EQ(Logged(), Record("one\n") + Record("two\n"));
}

TEST_F(SessionLog, AFailedWriteIsIgnoredAndSpoilsNoLaterLog) {
    LogFilePath = "/dev/full";
    OpenLog();
    EXPECT_NO_THROW(WriteLogLine("lost\n"));
    EXPECT_NO_THROW(WriteLogLine(std::string(100000, 'x')));
    EXPECT_TRUE(LogFileOpen);
    LogFilePath = PathOf("session.log");
    OpenLog();
    WriteLogLine("kept\n");
    EXPECT_EQ(Logged(), Record("kept\n"));
}

TEST_F(SessionLog, ItsPathIsReadInTheClientsCodePage) {
    LogFilePath = PathOf("caf\xe9.log");
    OpenLog();
    WriteLogLine("one\n");
    EXPECT_EQ(Folder.ContentOf(u8"caf\u00e9.log"), Record("one\n"));
}

TEST_F(SessionLog, TakesTheCompletedLinesOfTheOutput) {
    OpenLog();
    std::string text = "no end yet";
    AppendOutput(text);
    EXPECT_EQ(Logged(), "");
    text = ", now\r\none more\r\n";
    AppendOutput(text);
    EXPECT_EQ(Logged(), Record("no end yet, now\n"));
    text.clear();
    AppendOutput(text);
    EXPECT_EQ(Logged(), Record("no end yet, now\n") + Record("one more\n"));
}

TEST_F(SessionLog, StatusLinesAreNotLogged) {
    OpenLog();
    AppendStatus("\nConnection Closed\n");
    std::string text = "line\n";
    AppendOutput(text);
    EXPECT_EQ(Logged(), Record("line\n"));
}

TEST_F(SessionLog, StaysOpenAtASocketErrorOnPurpose) {
    wskTCP_Connect();
    wskTCP_Error(10054, "reset");
    EXPECT_TRUE(LogFileOpen);
    WriteLogLine("still here\n");
    wskTCP_Connect();
    WriteLogLine("and again\n");
    EXPECT_EQ(Logged(), Record("still here\n") + Record("and again\n"));
}

} // namespace
} // namespace mw
