#include "Ports.h"

#include <gtest/gtest.h>

#include <QHostAddress>
#include <QTcpServer>

namespace world {
namespace {

TEST(Ports, AFreeOneIsOneTheClientCanStore) {
    for (int count = 0; count < 50; ++count) {
        QTcpServer listener;
        ASSERT_TRUE(ListenAt(listener, 0));
        EXPECT_GT(listener.serverPort(), 1023);
        EXPECT_LE(listener.serverPort(), LastPort);
    }
}

TEST(Ports, OnlyTheLocalMachineIsServed) {
    QTcpServer listener;
    ASSERT_TRUE(ListenAt(listener, 0));
    EXPECT_EQ(listener.serverAddress(), QHostAddress(QHostAddress::LocalHost));
}

TEST(Ports, TheOneThatIsGivenIsTheOneThatIsTaken) {
    QTcpServer first;
    ASSERT_TRUE(ListenAt(first, 0));
    const int port = first.serverPort();
    first.close();
    QTcpServer second;
    ASSERT_TRUE(ListenAt(second, port));
    EXPECT_EQ(second.serverPort(), port);
}

TEST(Ports, OneThatIsTakenIsNotBegunOn) {
    QTcpServer first;
    ASSERT_TRUE(ListenAt(first, 0));
    QTcpServer second;
    EXPECT_FALSE(ListenAt(second, first.serverPort()));
    EXPECT_FALSE(second.isListening());
    EXPECT_TRUE(first.isListening());
}

} // namespace
} // namespace world
