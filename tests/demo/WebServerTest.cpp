#include "WebServer.h"

#include "Mute.h"
#include "Reply.h"
#include "Scene.h"
#include "Synthesis.h"
#include "Visitor.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include <QElapsedTimer>

namespace world {
namespace {

using namespace std::string_literals;
using std::chrono::milliseconds;

constexpr milliseconds kLong = std::chrono::hours(1);
constexpr milliseconds kShort{150};
constexpr std::size_t kBigPage = std::size_t{8} << 20; // more than the system takes at once

const std::string kGetHome = "GET / HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n";
const std::string kGetSound = "GET /sound HTTP/1.1\r\nRange: bytes=0-\r\n\r\n";
const std::string kGetBig = "GET /big HTTP/1.1\r\n\r\n";

class WebPages : public ::testing::Test {
protected:
    void SetUp() override { Start(kLong); }

    void Start(milliseconds patience) {
        const Pages pages = {{"/", {"text/html", "<p>home</p>"}},
                             {"/sound", {"audio/wav", std::string(LargestWave, '\xfe')}},
                             {"/big", {"audio/wav", std::string(kBigPage, '\xff')}}};
        server = std::make_unique<WebServer>(pages, patience);
        ASSERT_TRUE(server->Listen(0));
    }

    int Port() const { return server->Port(); }

    bool Has(std::size_t clients) {
        return WaitFor([=, this] { return server->Clients() == clients; });
    }

    std::unique_ptr<WebServer> server;
};

// What a client received until the other end closed.
Reply ReplyOf(Visitor& client) {
    EXPECT_TRUE(client.IsClosed());
    const std::optional<Reply> reply = ParseReply(client.received);
    EXPECT_TRUE(reply) << client.received;
    return reply.value_or(Reply{});
}

Reply Ask(int port, std::string_view request) {
    Visitor client(port);
    client.Send(request);
    return ReplyOf(client);
}

// Lets events run for a while.
void Pause(milliseconds time) {
    bool isOver = false;
    QTimer::singleShot(time, Qt::PreciseTimer, [&] { isOver = true; });
    ASSERT_TRUE(WaitFor([&] { return isOver; }));
}

TEST_F(WebPages, AreServedAndTheConnectionCloses) {
    const Reply reply = Ask(Port(), kGetHome);
    EXPECT_EQ(reply.status, "200 OK");
    EXPECT_EQ(reply.fields.at("Content-Type"), "text/html");
    EXPECT_EQ(reply.body, "<p>home</p>");
    EXPECT_TRUE(IsWhole(reply));
    EXPECT_TRUE(Has(0));
}

TEST_F(WebPages, ComeWholeWhateverTheirSize) {
    const Reply reply = Ask(Port(), kGetBig);
    EXPECT_TRUE(IsWhole(reply));
    EXPECT_EQ(reply.body.size(), kBigPage);
}

TEST_F(WebPages, ComeOnceThoughMoreIsSentInTheMiddleOfTheAnswer) {
    Visitor client(Port());
    client.Send(kGetBig);
    ASSERT_TRUE(WaitFor([&] { return !client.received.empty(); }));
    client.Send(kGetBig);
    EXPECT_TRUE(IsWhole(ReplyOf(client)));
}

TEST_F(WebPages, ComeWithoutTheirBodyToOneWhoAsksForTheHead) {
    const Reply reply = Ask(Port(), "HEAD /big HTTP/1.0\r\n\r\n");
    EXPECT_EQ(reply.status, "200 OK");
    EXPECT_EQ(reply.fields.at("Content-Length"), std::to_string(kBigPage));
    EXPECT_EQ(reply.body, "");
}

TEST_F(WebPages, AreServedToOneWhoSendsByteByByte) {
    Visitor client(Port());
    ASSERT_TRUE(WaitFor([&] { return client.socket.state() == QTcpSocket::ConnectedState; }));
    client.socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
    for (const char byte : kGetHome) {
        EXPECT_EQ(client.received, "");
        client.Send({&byte, 1});
        client.socket.flush();
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(ReplyOf(client).status, "200 OK");
}

TEST_F(WebPages, AreServedToOneWhoClosesHisHalfAfterAsking) {
    for (const std::string& request : {kGetHome, kGetSound}) {
        Visitor client(Port());
        client.Send(request);
        ASSERT_TRUE(client.ClosesItsHalf());
        EXPECT_TRUE(IsWhole(ReplyOf(client)));
    }
}

// The end of what this client sends is there when its request is read, it holds next to nothing
// itself, and the server is done with it before it reads.
TEST_F(WebPages, OfTheLargestSoundsSizeComeWholeToOneWhoClosesHisHalfAndReadsLate) {
    const Mute client(Port());
    ASSERT_TRUE(Has(1));
    ASSERT_TRUE(client.Send(kGetSound));
    client.CloseItsHalf();
    ASSERT_TRUE(Has(0));
    const std::optional<Reply> reply = ParseReply(client.ReadLate());
    ASSERT_TRUE(reply);
    EXPECT_TRUE(IsWhole(*reply));
    EXPECT_EQ(reply->body.size(), LargestWave);
}

TEST_F(WebPages, AreServedOneAfterTheOther) {
    for (int count = 0; count < 2 * static_cast<int>(MaxWebClients); ++count)
        ASSERT_EQ(Ask(Port(), kGetHome).status, "200 OK") << count;
    EXPECT_TRUE(Has(0));
}

TEST_F(WebPages, AreServedToManyAtOnce) {
    std::vector<std::unique_ptr<Visitor>> crowd;
    for (std::size_t i = 0; i < MaxWebClients; ++i)
        crowd.push_back(std::make_unique<Visitor>(Port()));
    ASSERT_TRUE(Has(MaxWebClients));
    for (const auto& client : crowd)
        client->Send(kGetHome);
    for (const auto& client : crowd)
        EXPECT_EQ(ReplyOf(*client).status, "200 OK");
}

TEST_F(WebPages, GoToTheFirstRequestOfAConnectionAlone) {
    const Reply reply = Ask(Port(), kGetHome + "GET /none HTTP/1.1\r\n\r\n");
    EXPECT_EQ(reply.status, "200 OK");
    EXPECT_TRUE(IsWhole(reply)) << "a second answer would be behind the body";
}

struct BadRequest {
    const char* name;
    std::string bytes;
    std::string status;
};

void PrintTo(const BadRequest& row, std::ostream* out) { *out << row.name; }

const std::string kMuch(std::size_t{4} << 20, 'x'); // more than the two ends hold between them

const BadRequest kBadRequests[] = {
    {"APathThatIsNotThere", "GET /none HTTP/1.1\r\n\r\n", "404 Not Found"},
    {"LinesOfAGame", "look\n\nquit\n", "400 Bad Request"},
    {"PostingMuch", "POST / HTTP/1.1\r\n\r\n" + kMuch, "405 Method Not Allowed"},
    {"AHeadWithoutEnd", "GET / HTTP/1.1\r\nX: " + kMuch, "431 Request Header Fields Too Large"},
    {"NoiseWithoutEnd", kMuch, "431 Request Header Fields Too Large"},
};

class BadWebRequests : public WebPages, public ::testing::WithParamInterface<BadRequest> {};

TEST_P(BadWebRequests, AreAnsweredWholeThoughMoreKeepsComing) {
    const Reply reply = Ask(Port(), GetParam().bytes);
    EXPECT_EQ(reply.status, GetParam().status);
    EXPECT_TRUE(IsWhole(reply));
    EXPECT_TRUE(Has(0));
    EXPECT_EQ(Ask(Port(), kGetHome).status, "200 OK") << "others are served on";
}

INSTANTIATE_TEST_SUITE_P(All, BadWebRequests, ::testing::ValuesIn(kBadRequests),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(WebPages, TakeSixtyFourClientsAndCloseOnTheNextOne) {
    std::vector<std::unique_ptr<Visitor>> crowd;
    for (std::size_t i = 0; i < MaxWebClients; ++i)
        crowd.push_back(std::make_unique<Visitor>(Port()));
    ASSERT_TRUE(Has(MaxWebClients));
    Visitor late(Port());
    EXPECT_TRUE(late.IsClosed());
    EXPECT_EQ(late.received, "");
    EXPECT_EQ(server->Clients(), MaxWebClients);
    crowd[0]->Send(kGetHome);
    EXPECT_EQ(ReplyOf(*crowd[0]).status, "200 OK") << "those who are in are served";
    ASSERT_TRUE(Has(MaxWebClients - 1));
    EXPECT_EQ(Ask(Port(), kGetHome).status, "200 OK") << "a place that is left is free again";
}

struct Dawdler {
    const char* name;
    std::string bytes; // all that it ever sends
};

void PrintTo(const Dawdler& row, std::ostream* out) { *out << row.name; }

const Dawdler kDawdlers[] = {
    {"SendsNothing", ""},
    {"SendsHalfARequestLine", "GET / HT"},
    {"LeavesOutTheEmptyLine", "GET / HTTP/1.1\r\nHost: x\r\n"},
    {"ReadsNothingOfALongAnswer", kGetBig},
    {"NeverClosesAfterItsAnswer", kGetHome},
};

class WebDawdlers : public WebPages, public ::testing::WithParamInterface<Dawdler> {};

TEST_P(WebDawdlers, AreDroppedWhenTheirTimeIsOverAndNotBefore) {
    Start(kShort);
    QElapsedTimer clock;
    clock.start();
    const Mute client(Port());
    ASSERT_TRUE(client.Send(GetParam().bytes));
    ASSERT_TRUE(Has(1));
    ASSERT_TRUE(Has(0));
    EXPECT_GE(clock.elapsed(), (kShort * 9 / 10).count()) << "less what a coarse timer may spare";
    EXPECT_LT(client.ReadLate().size(), kBigPage);
    EXPECT_FALSE(server->TimerRuns());
}

INSTANTIATE_TEST_SUITE_P(All, WebDawdlers, ::testing::ValuesIn(kDawdlers),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(WebPages, AreStillThereForOneWhoReadsAShortAnswerLate) {
    Start(kShort);
    const Mute client(Port());
    ASSERT_TRUE(client.Send(kGetHome));
    ASSERT_TRUE(Has(1));
    ASSERT_TRUE(Has(0));
    const std::optional<Reply> reply = ParseReply(client.ReadLate());
    ASSERT_TRUE(reply);
    EXPECT_TRUE(IsWhole(*reply));
}

TEST_F(WebPages, AreNotWaitedForByOneWhoDripsBytesForEver) {
    Start(kShort);
    Visitor client(Port());
    QTimer drip;
    QObject::connect(&drip, &QTimer::timeout, &drip, [&] { client.Send("x"); });
    drip.start(10);
    EXPECT_TRUE(client.IsClosed());
    EXPECT_EQ(client.received, "");
}

TEST_F(WebPages, AreNotDelayedByOneWhoSendsOnForEverAfterHisAnswer) {
    Start(kShort);
    Visitor client(Port());
    client.Send(kGetHome);
    QTimer drip;
    QObject::connect(&drip, &QTimer::timeout, &drip, [&] { client.Send("x"); });
    drip.start(10);
    ASSERT_TRUE(Has(1));
    EXPECT_TRUE(Has(0));
    EXPECT_TRUE(Contains(client.received, "<p>home</p>"));
}

TEST_F(WebPages, GiveTimeToReadAnewWhenTheHeadIsThere) {
    constexpr milliseconds patience{1000};
    Start(patience);
    const Mute client(Port());
    ASSERT_TRUE(Has(1));
    Pause(patience * 11 / 20);
    ASSERT_TRUE(client.Send(kGetBig));
    Pause(patience * 11 / 20);
    EXPECT_EQ(server->Clients(), 1U) << "time to send is not taken from the time to read";
    EXPECT_TRUE(Has(0));
}

TEST_F(WebPages, RunNoTimerWhileNobodyIsConnected) {
    EXPECT_FALSE(server->TimerRuns());
    Visitor client(Port());
    ASSERT_TRUE(Has(1));
    EXPECT_TRUE(server->TimerRuns());
    client.Send(kGetHome);
    EXPECT_EQ(ReplyOf(client).status, "200 OK");
    ASSERT_TRUE(Has(0));
    EXPECT_FALSE(server->TimerRuns());
}

TEST_F(WebPages, ForgetOneWhoVanishes) {
    for (const std::string& sent : {""s, "GET /"s, kGetBig}) {
        {
            Visitor client(Port());
            client.Send(sent);
            ASSERT_TRUE(Has(1)) << sent;
            client.socket.abort();
        }
        EXPECT_TRUE(Has(0)) << sent;
        EXPECT_FALSE(server->TimerRuns()) << sent;
    }
}

TEST_F(WebPages, AreNotServedOnAPortThatIsTaken) {
    WebServer second({});
    EXPECT_FALSE(second.Listen(Port()));
    EXPECT_EQ(Ask(Port(), kGetHome).status, "200 OK");
}

TEST_F(WebPages, EndForEveryoneWithTheServer) {
    const int port = Port();
    Visitor idle(port);
    Visitor halfway(port);
    halfway.Send("GET / HTTP/1.1\r\n");
    const Mute mute(port);
    ASSERT_TRUE(mute.Send(kGetBig));
    ASSERT_TRUE(Has(3));
    server.reset();
    EXPECT_TRUE(idle.IsClosed());
    EXPECT_TRUE(halfway.IsClosed());
    EXPECT_LT(mute.ReadLate().size(), kBigPage);
    Visitor late(port);
    EXPECT_TRUE(WaitFor([&] { return late.socket.error() == QTcpSocket::ConnectionRefusedError; }));
}

} // namespace
} // namespace world
