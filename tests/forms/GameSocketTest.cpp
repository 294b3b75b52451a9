#include "ui/qt/GameSocket.h"

#include "base/Error.h"
#include "forms/GameServer.h"
#include "ui/Socket.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <QDialog>
#include <QTimer>

namespace mw {
namespace {

using forms::GameServer;
using forms::WaitFor;
using Events = std::vector<std::string>;
using Lengths = std::vector<std::size_t>;

// Listens to a socket as the output window does and writes down what it hears.
class GameSocketTest : public testing::Test {
protected:
    GameSocketTest() {
        QObject::connect(&Socket, &GameSocket::connected, &Context, [this] { Hear("connected"); });
        QObject::connect(&Socket, &GameSocket::dataArrival, &Context, [this] { Arrive(); });
        QObject::connect(&Socket, &GameSocket::closed, &Context, [this] { Hear("closed"); });
        QObject::connect(&Socket, &GameSocket::error, &Context, [this](int number, QString text) {
            EXPECT_FALSE(text.isEmpty());
            Hear("error " + std::to_string(number));
        });
    }

    void Hear(const std::string& event) {
        EXPECT_FALSE(InCall) << event << " was told from inside a call";
        Heard.push_back(event);
        StatesThen.push_back(Socket.State());
    }

    void Arrive() {
        EXPECT_FALSE(InCall);
        const std::string arrival = Socket.GetData();
        EXPECT_FALSE(arrival.empty());
        EXPECT_LE(arrival.size(), 32767u);
        Arrivals.push_back(arrival.size());
        Got += arrival;
        if (const auto react = OnArrival) // a copy: it may replace itself
            react();
    }

    void Open(const std::string& host, std::int16_t port) {
        InCall = true;
        Socket.Connect(host, port);
        InCall = false;
    }

    void Send(std::string_view bytes) {
        InCall = true;
        Socket.Send(bytes);
        InCall = false;
    }

    void Close() {
        InCall = true;
        Socket.Close();
        InCall = false;
    }

    void BeConnected() {
        Open("127.0.0.1", Server.Port());
        ASSERT_TRUE(Hears({"connected"}));
        ASSERT_TRUE(Server.HasVisitor());
    }

    bool Hears(const Events& events) {
        return WaitFor([&] { return Heard.size() >= events.size(); }) && Heard == events;
    }

    // Whether something of what was sent lies before the server, which reads when events run.
    bool HasLeft(int milliseconds = 0) const {
        pollfd look = {static_cast<int>(Server.Visitor->socketDescriptor()), POLLIN, 0};
        return ::poll(&look, 1, milliseconds) == 1;
    }

    bool Leaves() const { return HasLeft(10000); }

    // Has the server send bytes so that all of them wait, behind an arrival of one byte.
    void SendAtOnce(const std::string& bytes, const std::function<void()>& then = nullptr) {
        OnArrival = [this, bytes, then] {
            OnArrival = then;
            Server.Send(bytes);
            WaitFor([this] { return Server.Visitor->bytesToWrite() == 0; });
            forms::WaitAMoment([this] { return Got.size() > 1; }); // nothing comes from inside
        };
        Server.Send("x");
    }

    // The numbers of an error that ends an attempt to connect.
    std::string ErrorOf(const std::string& host, std::int16_t port) {
        Open(host, port);
        WaitFor([&] { return !Heard.empty(); });
        EXPECT_EQ(Heard.size(), 1u);
        EXPECT_EQ(Socket.State(), SocketError);
        return Heard.empty() ? "" : Heard.front();
    }

    QObject Context;
    GameServer Server;
    GameSocket Socket;
    Events Heard;
    std::vector<int> StatesThen; // the state at each event heard
    std::string Got;
    Lengths Arrivals; // in bytes
    bool InCall = false;
    std::function<void()> OnArrival;
};

TEST_F(GameSocketTest, IsClosedAtFirst) {
    EXPECT_EQ(Socket.State(), SocketClosed);
    EXPECT_EQ(Socket.GetData(), "");
}

TEST_F(GameSocketTest, ClosingAClosedSocketChangesNothing) {
    Close();
    Close();
    EXPECT_EQ(Socket.State(), SocketClosed);
}

TEST_F(GameSocketTest, ConnectsAndHasTheStatesOfEachStage) {
    Open("127.0.0.1", Server.Port());
    EXPECT_EQ(Socket.State(), SocketConnecting);
    ASSERT_TRUE(Hears({"connected"}));
    EXPECT_EQ(Socket.State(), SocketConnected);
    ASSERT_TRUE(Server.HasVisitor());
    Server.HangUp();
    ASSERT_TRUE(Hears({"connected", "closed"}));
    EXPECT_EQ(Socket.State(), SocketClosing);
    Close();
    EXPECT_EQ(Socket.State(), SocketClosed);
    EXPECT_EQ(StatesThen, (std::vector<int>{SocketConnected, SocketClosing}));
}

TEST_F(GameSocketTest, ResolvesANameFirst) {
    Open("never-asked-before.invalid", Server.Port());
    EXPECT_EQ(Socket.State(), SocketResolving);
}

TEST_F(GameSocketTest, ConnectsByName) {
    Open("localhost", Server.Port());
    ASSERT_TRUE(Hears({"connected"}));
    EXPECT_EQ(Socket.State(), SocketConnected);
}

TEST_F(GameSocketTest, SendsTheBytesAsTheyAre) {
    BeConnected();
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    Send(all);
    EXPECT_TRUE(Server.Gets(all));
}

TEST_F(GameSocketTest, SendsOneByOneInOrder) {
    BeConnected();
    for (const char c : std::string_view("look\r"))
        Send({&c, 1});
    EXPECT_TRUE(Server.Gets("look\r"));
}

TEST_F(GameSocketTest, SendsBeforeAndAfterAConnectionAreDropped) {
    Send("early");
    Open("127.0.0.1", Server.Port());
    Send("too early");
    ASSERT_TRUE(Hears({"connected"}));
    ASSERT_TRUE(Server.HasVisitor());
    Send("now");
    EXPECT_TRUE(Server.Gets("now"));
    Close();
    Send("late");
    EXPECT_TRUE(Server.VisitorLeaves());
    EXPECT_EQ(Server.Received, "now");
}

TEST_F(GameSocketTest, WhatWasSentBeforeAClosingStillGoesOut) {
    BeConnected();
    Send("quit\r");
    Close();
    EXPECT_TRUE(Server.VisitorLeaves());
    EXPECT_EQ(Server.Received, "quit\r");
}

TEST_F(GameSocketTest, HandsOverAtMost32767BytesAtOnce) {
    BeConnected();
    std::string sent;
    for (int i = 0; sent.size() < 100000; ++i)
        sent += std::to_string(i) + ' ';
    Server.Send(sent);
    ASSERT_TRUE(WaitFor([&] { return Got.size() >= sent.size(); }));
    EXPECT_EQ(Got, sent);
}

TEST_F(GameSocketTest, FillsAnArrivalWhenMoreIsWaiting) {
    BeConnected();
    SendAtOnce(std::string(90000, 'y'));
    ASSERT_TRUE(WaitFor([this] { return Got.size() == 90001; }));
    EXPECT_EQ(std::ranges::max(Arrivals), 32767u);
}

TEST_F(GameSocketTest, OneByteMoreThanFitsIsTheNextArrival) {
    BeConnected();
    SendAtOnce(std::string(32767, 'y'));
    ASSERT_TRUE(WaitFor([this] { return Got.size() == 32768; }));
    EXPECT_EQ(Arrivals, (Lengths{1, 32767}));
    Got.clear();
    Arrivals.clear();
    SendAtOnce(std::string(32768, 'y'));
    ASSERT_TRUE(WaitFor([this] { return Got.size() == 32769; }));
    EXPECT_EQ(Arrivals, (Lengths{1, 32767, 1}));
}

TEST_F(GameSocketTest, ALineIsOnItsWayAtOnceAndABeginningWaits) {
    BeConnected();
    Send("look");
    EXPECT_FALSE(HasLeft());
    Send("\r");
    EXPECT_TRUE(Leaves());
    EXPECT_TRUE(Server.Gets("look\r"));
}

TEST_F(GameSocketTest, AnswersToOneArrivalGoOutTogetherBeforeTheNext) {
    BeConnected();
    SendAtOnce(std::string(32768, 'y'), [this] {
        if (Arrivals.size() == 3) {
            EXPECT_TRUE(Leaves());
            return;
        }
        Send("one\r");
        Send("two\r");
        EXPECT_FALSE(HasLeft());
    });
    EXPECT_TRUE(Server.Gets("one\rtwo\r"));
    EXPECT_EQ(Arrivals.size(), 3u);
}

TEST_F(GameSocketTest, AnswersOf16KiBGoOutTogetherAndWithOneByteMoreBeforeTheArrivalEnds) {
    BeConnected();
    const std::string most = std::string(16383, 'a') + '\r';
    OnArrival = [&] {
        Send(most);
        EXPECT_FALSE(HasLeft());
        Send("b");
        EXPECT_TRUE(Leaves());
    };
    Server.Send("x");
    EXPECT_TRUE(Server.Gets(most + "b"));
}

TEST_F(GameSocketTest, TellsTheTextBeforeTheClose) {
    BeConnected();
    const std::string farewell(600000, 'z'); // more than is read ahead
    std::size_t gotAtClose = 0;
    QObject::connect(&Socket, &GameSocket::closed, &Context, [&] { gotAtClose = Got.size(); });
    Server.Send(farewell);
    Server.HangUp();
    ASSERT_TRUE(Hears({"connected", "closed"}));
    EXPECT_EQ(gotAtClose, farewell.size());
}

TEST_F(GameSocketTest, TellsAResetAsAnError) {
    BeConnected();
    Server.Reset();
    ASSERT_TRUE(Hears({"connected", "error 10054"}));
    EXPECT_EQ(Socket.State(), SocketError);
    EXPECT_TRUE(Socket.GetData().empty());
}

TEST_F(GameSocketTest, TellsTheTextBeforeAReset) {
    BeConnected();
    Server.Send("last words");
    ASSERT_TRUE(WaitFor([this] { return Server.Visitor->bytesToWrite() == 0; }));
    Server.Reset();
    ASSERT_TRUE(Hears({"connected", "error 10054"}));
    EXPECT_EQ(Got, "last words");
}

// A server that closes with bytes of ours unread breaks the connection off, and writing then fails
// before the last text has been read.
TEST_F(GameSocketTest, TellsTheLastTextAlsoWhileItIsSending) {
    BeConnected();
    QObject::disconnect(Server.Visitor, &QTcpSocket::readyRead, nullptr, nullptr);
    Server.Visitor->setReadBufferSize(1);
    for (int i = 0; i < 100; ++i) {
        Send(std::string(100, 'n'));
        QCoreApplication::processEvents();
    }
    Server.Send("You are thrown out.\r\n");
    Server.Visitor->flush();
    Server.Visitor->abort();
    Send("what?\r");
    ASSERT_TRUE(WaitFor([this] { return Heard.size() == 2; }));
    EXPECT_EQ(Got, "You are thrown out.\r\n");
    EXPECT_EQ(Heard[1], "error 10054");
}

// Whoever answers a farewell meets a closed door: the server has closed all the same.
TEST_F(GameSocketTest, ACloseStaysACloseWhenTheLastTextIsAnswered) {
    BeConnected();
    OnArrival = [this] { Send("bye\r"); };
    Server.Send("Farewell!");
    Server.Visitor->flush();
    ::shutdown(static_cast<int>(Server.Visitor->socketDescriptor()), SHUT_WR);
    Server.Visitor->abort();
    ASSERT_TRUE(WaitFor([this] { return Heard.size() == 2; }));
    EXPECT_EQ(Got, "Farewell!");
    EXPECT_EQ(Heard[1], "closed");
}

TEST_F(GameSocketTest, TellsARefusal) {
    const std::int16_t port = Server.Port();
    Server.StopListening();
    EXPECT_EQ(ErrorOf("127.0.0.1", port), "error 10061");
}

TEST_F(GameSocketTest, TellsAnUnknownHost) {
    EXPECT_EQ(ErrorOf("no-such-host.invalid", 4000), "error 11001");
}

TEST_F(GameSocketTest, APortThatIsNoneEndsInAnErrorAfterTheCall) {
    EXPECT_EQ(ErrorOf("127.0.0.1", 0), "error 10049");
    Close();
    Heard.clear();
    EXPECT_EQ(ErrorOf("127.0.0.1", -1), "error 10049");
}

TEST_F(GameSocketTest, AnAddressThatIsNoneEndsInAnErrorAfterTheCall) {
    EXPECT_EQ(ErrorOf("", Server.Port()), "error 10049");
}

TEST_F(GameSocketTest, ConnectingTwiceRaisesAndLeavesTheConnectionUnharmed) {
    BeConnected();
    GameServer other;
    try {
        Socket.Connect("127.0.0.1", other.Port());
        ADD_FAILURE() << "nothing was raised";
    } catch (const Error& error) {
        EXPECT_EQ(error, (Error{40020, "wskTCP", "Invalid operation at current state"}));
    }
    Send("still here");
    EXPECT_TRUE(Server.Gets("still here"));
    Server.Send("welcome");
    EXPECT_TRUE(WaitFor([this] { return Got == "welcome"; }));
    EXPECT_EQ(other.Visitors, 0);
    EXPECT_EQ(Heard, Events{"connected"});
}

TEST_F(GameSocketTest, ConnectingRaisesUntilTheEndWasAnsweredWithClose) {
    EXPECT_EQ(ErrorOf("127.0.0.1", 0), "error 10049");
    EXPECT_THROW(Socket.Connect("127.0.0.1", Server.Port()), Error);
    Close();
    Heard.clear();
    BeConnected();
    Server.HangUp();
    ASSERT_TRUE(Hears({"connected", "closed"}));
    EXPECT_THROW(Socket.Connect("127.0.0.1", Server.Port()), Error);
}

TEST_F(GameSocketTest, CloseDropsTheEventsUnderWay) {
    Open("127.0.0.1", 0); // its error is under way now
    Close();
    EXPECT_EQ(Socket.State(), SocketClosed);
    BeConnected();
    EXPECT_EQ(Heard, Events{"connected"});
}

TEST_F(GameSocketTest, CloseDropsTheConnectUnderWay) {
    Open("127.0.0.1", Server.Port());
    ASSERT_TRUE(WaitFor([this] { return Socket.State() != SocketConnecting; }));
    Close();
    Heard.clear();
    ASSERT_TRUE(WaitFor([this] { return Server.Visitors == 1; }));
    ASSERT_TRUE(Server.VisitorLeaves());
    EXPECT_EQ(Heard, Events{});
}

TEST_F(GameSocketTest, CloseDropsTheTextThatWasNotRead) {
    BeConnected();
    OnArrival = [this] { Close(); };
    Server.Send(std::string(40000, 'a'));
    ASSERT_TRUE(Server.VisitorLeaves());
    EXPECT_LE(Got.size(), 32767u);
    EXPECT_EQ(Socket.GetData(), "");
    EXPECT_EQ(Heard, Events{"connected"});
}

TEST_F(GameSocketTest, AServerThatNeverReadsEndsInAnError) {
    Server.ReadNothing();
    Open("127.0.0.1", Server.Port());
    ASSERT_TRUE(Hears({"connected"}));
    const std::string block(16384, 'x');
    std::size_t sent = 0;
    constexpr std::size_t kSurelyTooMuch = 64 * 1024 * 1024;
    while (Socket.State() == SocketConnected && sent < kSurelyTooMuch) {
        Send(block);
        sent += block.size();
        QCoreApplication::processEvents();
    }
    ASSERT_TRUE(Hears({"connected", "error 10055"}));
    EXPECT_GT(sent, std::size_t{1024 * 1024});
    EXPECT_LT(sent, kSurelyTooMuch);
}

TEST_F(GameSocketTest, ASendQueueOfOneMebibyteIsNotTooMuch) {
    BeConnected();
    Send(std::string(1024 * 1024, 'x'));
    EXPECT_EQ(Socket.State(), SocketConnected);
    EXPECT_TRUE(WaitFor([this] { return Server.Received.size() == 1024 * 1024; }));
    EXPECT_EQ(Heard, Events{"connected"});
}

TEST_F(GameSocketTest, AFastServerWaitsWhileABoxIsOpenAndNothingIsLost) {
    constexpr std::size_t kAll = 48 * 1024 * 1024;
    BeConnected();
    qint64 held = 0;
    std::size_t ahead = 0;
    OnArrival = [&] {
        OnArrival = nullptr;
        QDialog box;
        qint64 before = -1;
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, &box, [&] {
            held = Server.Visitor->bytesToWrite();
            if (held == before) // the server has come to a stop
                box.accept();
            before = held;
        });
        look.start(100);
        box.exec();
        for (std::string more = Socket.GetData(); !more.empty(); more = Socket.GetData()) {
            Got += more;
            ahead += more.size();
        }
    };
    Server.Send(std::string(kAll, 'f'));
    ASSERT_TRUE(WaitFor([&] { return Got.size() == kAll; }));
    // What has left the server lies in the system's buffers and a little of it in ours.
    EXPECT_GT(held, qint64{kAll / 2});
    EXPECT_EQ(ahead, 65536u);
}

TEST_F(GameSocketTest, TextThatArrivesWhileABoxIsOpenIsDeliveredAfterIt) {
    BeConnected();
    OnArrival = [this] {
        OnArrival = nullptr;
        QDialog box;
        Server.Send("second");
        QTimer::singleShot(50, &box, [&] {
            EXPECT_EQ(Got, "first "); // not from inside the handler that waits
            box.accept();
        });
        box.exec();
    };
    Server.Send("first ");
    ASSERT_TRUE(WaitFor([this] { return Got == "first second"; }));
}

TEST_F(GameSocketTest, ACloseWhileABoxIsOpenIsToldAfterTheText) {
    BeConnected();
    OnArrival = [this] {
        OnArrival = nullptr;
        QDialog box;
        Server.Send("second");
        Server.HangUp();
        WaitFor([this] { return Socket.State() == SocketClosing; });
        EXPECT_EQ(Heard, Events{"connected"});
    };
    Server.Send("first ");
    ASSERT_TRUE(Hears({"connected", "closed"}));
    EXPECT_EQ(Got, "first second");
}

TEST_F(GameSocketTest, AResetWhileABoxIsOpenIsToldAfterTheText) {
    BeConnected();
    OnArrival = [this] {
        OnArrival = nullptr;
        Server.Send("second");
        WaitFor([this] { return Server.Visitor->bytesToWrite() == 0; });
        Server.Reset();
        forms::WaitAMoment([this] { return Heard.size() > 1; });
    };
    Server.Send("first ");
    ASSERT_TRUE(Hears({"connected", "error 10054"}));
    EXPECT_EQ(Got, "first second");
}

TEST_F(GameSocketTest, ConnectsAgainFromInsideAHandler) {
    BeConnected();
    OnArrival = [this] {
        OnArrival = nullptr;
        Close();
        Open("127.0.0.1", Server.Port());
    };
    Server.Send("go");
    ASSERT_TRUE(Hears({"connected", "connected"}));
    ASSERT_TRUE(WaitFor([this] { return Server.Visitors == 2; }));
    ASSERT_TRUE(Server.HasVisitor());
    Got.clear();
    Server.Send("new");
    EXPECT_TRUE(WaitFor([this] { return Got == "new"; }));
}

TEST_F(GameSocketTest, MayBeDestroyedByAHandlerThatWaits) {
    auto* const socket = new GameSocket;
    bool arrived = false;
    QObject::connect(socket, &GameSocket::dataArrival, &Context, [&] {
        socket->GetData();
        arrived = true;
        delete socket;
    });
    socket->Connect("127.0.0.1", Server.Port());
    ASSERT_TRUE(Server.HasVisitor());
    Server.Send(std::string(100000, 'x'));
    ASSERT_TRUE(Server.VisitorLeaves());
    EXPECT_TRUE(arrived);
}

// Each way a connection can end; the next one works like the first.
class Endings : public GameSocketTest, public testing::WithParamInterface<int> {};

TEST_P(Endings, AreFollowedByAnotherConnection) {
    BeConnected();
    switch (GetParam()) {
    case 0:
        Server.HangUp();
        ASSERT_TRUE(Hears({"connected", "closed"}));
        break;
    case 1:
        Server.Reset();
        ASSERT_TRUE(Hears({"connected", "error 10054"}));
        break;
    case 2:
        Send(std::string(1024 * 1024 + 1, 'x'));
        ASSERT_TRUE(Hears({"connected", "error 10055"}));
        break;
    case 3: // the player's own wish: no event
        break;
    case 4:
        Close();
        Heard.clear();
        EXPECT_EQ(ErrorOf("no-such-host.invalid", 4000), "error 11001");
        break;
    default:
        Close();
        Heard.clear();
        EXPECT_EQ(ErrorOf("127.0.0.1", 0), "error 10049");
    }
    Close();
    EXPECT_EQ(Socket.State(), SocketClosed);
    Heard.clear();
    Got.clear();
    BeConnected();
    Server.Send("hello again");
    EXPECT_TRUE(WaitFor([this] { return Got == "hello again"; }));
    Send("yes");
    EXPECT_TRUE(WaitFor([this] { return Server.Received == "yes"; }));
}

INSTANTIATE_TEST_SUITE_P(OfAConnection, Endings, testing::Range(0, 6));

} // namespace
} // namespace mw
