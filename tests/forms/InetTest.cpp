#include "ui/Inet.h"

#include "forms/HttpTexts.h"
#include "forms/WebServer.h"

#include <chrono>
#include <gtest/gtest.h>
#include <optional>
#include <thread>

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

namespace mw {
namespace {

using forms::kEarlyHints;
using forms::Redirection;
using forms::Repeated;
using forms::WebServer;
using forms::Whole;
using inetVersion::OpenURL;

using Body = std::optional<std::string>;

const Body kNothing;

struct Row {
    const char* Name;
    std::string Answer;
    Body Expected;
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.Name; }

class InetAnswers : public testing::TestWithParam<Row> {};

TEST_P(InetAnswers, GiveTheirBodyOrNothing) {
    const WebServer server(GetParam().Answer);
    EXPECT_EQ(OpenURL(server.Root() + "/client/clientver.txt"), GetParam().Expected);
    EXPECT_EQ(server.Paths(), std::vector<std::string>{"/client/clientver.txt"});
}

const Row kAnswers[] = {
    {"AWholeBody", Whole("1.3"), "1.3"},
    {"AnEmptyBody", Whole(""), ""},
    {"ABodyOfAnyBytes", Whole(std::string("\0\r\n\xFF", 4)), std::string("\0\r\n\xFF", 4)},
    {"ABodyThatEndsWithTheConnection", "HTTP/1.0 200 OK\r\n\r\n1.3", "1.3"},
    {"ABodyInChunks",
     "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1\r\n1\r\n2\r\n.3\r\n0\r\n\r\n", "1.3"},
    {"NotModifiedHasNone", "HTTP/1.1 304 Not Modified\r\n\r\n", ""},
    {"NotFound", "HTTP/1.1 404 Not Found\r\nContent-Length: 3\r\n\r\n9.9", kNothing},
    {"Forbidden", "HTTP/1.1 403 Forbidden\r\nContent-Length: 3\r\n\r\n9.9", kNothing},
    {"AServersError", "HTTP/1.1 500 Oops\r\nContent-Length: 3\r\n\r\n9.9", kNothing},
    {"AHangUp", "", kNothing},
    {"ABodyShorterThanAnnounced", "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n9.9", kNothing},
    {"ChunksWithoutTheirEnd", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\n9.9\r\n",
     kNothing},
    {"AChunkOfNoLength", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\n9.9\r\n",
     kNothing},
    {"ALengthThatIsNone", "HTTP/1.1 200 OK\r\nContent-Length: lots\r\n\r\n9.9", kNothing},
    {"ANegativeLength", "HTTP/1.1 200 OK\r\nContent-Length: -3\r\n\r\n9.9", kNothing},
    {"Garbage", "\x01\x02garbage\r\n\r\n9.9", kNothing},
    {"ABodyWithoutAHead", "9.9", kNothing},
    {"AGamesGreeting", "Welcome!\r\nBy what name are you known?", kNothing},
    {"AHeadWithoutEnd", "HTTP/1.1 200 OK\r\nX: " + std::string(2'000'000, 'x'), kNothing},
    {"TheLargestBody", Whole(std::string(64 * 1024, '1')), std::string(64 * 1024, '1')},
    {"OneByteMore", Whole(std::string(64 * 1024 + 1, '1')), kNothing},
    {"AMegabyte", Whole(std::string(1024 * 1024, '1')), kNothing},
    {"AThousandInterimAnswers", Repeated(kEarlyHints, 1000) + Whole("1.3"), "1.3"},
    {"AMillionInterimAnswers", Repeated(kEarlyHints, 1'000'000), kNothing},
    {"AnInterimAnswerAlone", kEarlyHints, kNothing},
    {"NoContentThatHasSome", "HTTP/1.1 204 No Content\r\nContent-Length: 3\r\n\r\n9.9", ""},
    {"RangeNotSatisfiable", "HTTP/1.1 416 No Range\r\nContent-Length: 3\r\n\r\n9.9", kNothing},
    {"AnotherPartThanAll", "HTTP/1.1 206 Partial\r\nContent-Length: 3\r\n\r\n1.3", "1.3"},
    {"AStatusOfFiveDigits", "HTTP/1.1 99999 Huge\r\n\r\n9.9", kNothing},
    {"AnUnknownVersion", "HTTP/9.9 200 OK\r\nContent-Length: 3\r\n\r\n9.9", kNothing},
    {"AnOldestVersion", "HTTP/0.9 200 OK\r\nContent-Length: 3\r\n\r\n9.9", kNothing},
    {"LineEndsBeforeTheAnswer", "\r\n\r\n" + Whole("9.9"), kNothing},
    {"TheHelloOfTls", std::string("\x16\x03\x03\x00\x7A\x02\x00\x00\x76\x03\x03", 11), kNothing},
    {"ALengthOf2To63", "HTTP/1.1 200 OK\r\nContent-Length: 9223372036854775808\r\n\r\n9.9", "9.9"},
    {"ALengthBeyondTheLargest", "HTTP/1.1 200 OK\r\nContent-Length: 67108865\r\n\r\n9.9", kNothing},
    {"AChunkOf40Digits",
     "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" + std::string(40, 'f') + "\r\n9.9",
     kNothing},
    {"AChallenge", "HTTP/1.1 401 No\r\nWWW-Authenticate: Basic\r\nContent-Length: 3\r\n\r\n9.9",
     kNothing},
    {"CompressedWithoutBeingAsked",
     "HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\nContent-Length: 3\r\n\r\n1.3", "1.3"},
    {"HighBytesInTheHeader",
     "HTTP/1.1 200 \xC4rger\r\nX-\xC4: \xFF\r\nContent-Length: 3\r\n\r\n1.3", "1.3"},
    {"AHeaderOfTenMegabytes", "HTTP/1.1 200 OK\r\n" + Repeated("X: 1234567890\r\n", 700'000),
     kNothing},
    {"AMegabyteThatWasNotAnnounced", "HTTP/1.0 200 OK\r\n\r\n" + std::string(1024 * 1024, '1'),
     kNothing},
};

INSTANTIATE_TEST_SUITE_P(Inet, InetAnswers, testing::ValuesIn(kAnswers),
                         [](const auto& row) { return row.param.Name; });

// Answers the paths /0, /1, … with one redirection each, and the last with the body.
class Hops : public WebServer {
public:
    explicit Hops(int count)
        : WebServer([count](const Visit& visit) {
              const int hop = std::stoi(visit.Path.substr(1));
              visit.Send(hop < count ? Redirection("/" + std::to_string(hop + 1)) : Whole("1.3"));
          }) {}
};

TEST(Inet, FollowsFiveRedirections) {
    const Hops server(5);
    EXPECT_EQ(OpenURL(server.Root() + "/0"), "1.3");
    EXPECT_EQ(server.Paths().size(), 6u);
}

TEST(Inet, DoesNotFollowASixth) {
    const Hops server(6);
    EXPECT_EQ(OpenURL(server.Root() + "/0"), kNothing);
    EXPECT_EQ(server.Paths().size(), 6u);
}

TEST(Inet, FollowsARedirectionToAnotherServer) {
    const WebServer other(Whole("1.3"));
    const WebServer server(Redirection(other.Root() + "/there"));
    EXPECT_EQ(OpenURL(server.Root()), "1.3");
    EXPECT_EQ(other.Paths(), std::vector<std::string>{"/there"});
}

TEST(Inet, IsNotLedToAFileOfThisMachine) {
    const QTemporaryDir folder;
    QFile file(folder.filePath("version"));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write("9.9");
    file.close();
    const std::string address = "file://" + file.fileName().toStdString();
    EXPECT_EQ(OpenURL(WebServer(Redirection(address)).Root()), kNothing);
    EXPECT_EQ(OpenURL(address), kNothing);
}

class InetSchemes : public testing::TestWithParam<const char*> {};

TEST_P(InetSchemes, AreRefusedWithoutAVisit) {
    const WebServer other(Whole("9.9"));
    const std::string address = std::string(GetParam()) + "://" + other.Host() + "/x";
    EXPECT_EQ(OpenURL(WebServer(Redirection(address)).Root()), kNothing);
    EXPECT_EQ(OpenURL(address), kNothing);
    EXPECT_TRUE(other.Paths().empty());
}

INSTANTIATE_TEST_SUITE_P(Inet, InetSchemes,
                         testing::Values("ftp", "gopher", "dict", "telnet", "tftp", "nonsense"),
                         [](const auto& scheme) { return std::string(scheme.param); });

TEST(Inet, HasNothingWithoutAServer) {
    std::string gone;
    {
        const WebServer server(Whole("1.3"));
        gone = server.Root();
    }
    EXPECT_EQ(OpenURL(gone), kNothing);
}

TEST(Inet, HasNothingForAnAddressThatIsNone) {
    for (const char* address : {"", " ", "http://", "http://[", "http://127.0.0.1:99999/", "\xFF"})
        EXPECT_EQ(OpenURL(address), kNothing) << address;
}

// Cut off inside its head, an answer counts as one without a body, as an empty version file does.
TEST(Inet, NeverGivesAPartOfAnAnswerThatIsCutOff) {
    const std::string answer = Whole("1.30");
    std::atomic<std::size_t> length = 0;
    const WebServer server([&](const WebServer::Visit& visit) {
        visit.Send(std::string_view(answer).substr(0, length));
    });
    const std::size_t head = answer.find("\r\n\r\n") + 4;
    for (; length < answer.size(); ++length) {
        const Body body = OpenURL(server.Root());
        EXPECT_TRUE(body == kNothing || (length < head && body == "")) << answer.substr(0, length);
    }
    EXPECT_EQ(OpenURL(server.Root()), "1.30");
}

TEST(Inet, PutsAnAnswerTogetherWhereverItIsSplit) {
    const std::string_view answer = "HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\n1.30";
    std::atomic<std::size_t> length = 0;
    const WebServer server([&](const WebServer::Visit& visit) {
        const std::size_t split = length;
        visit.Send(answer.substr(0, split));
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
        visit.Send(answer.substr(split));
    });
    for (; length <= answer.size(); ++length)
        EXPECT_EQ(OpenURL(server.Root()), "1.30") << length;
}

TEST(Inet, GivesAServerThatDripsThreeSeconds) {
    const WebServer server([](const WebServer::Visit& visit) {
        visit.Send("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n");
        for (int i = 0; i < 1000 && visit.Send("1"); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
    });
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(OpenURL(server.Root()), kNothing);
    EXPECT_GE(clock.elapsed(), 2900);
}

} // namespace
} // namespace mw
