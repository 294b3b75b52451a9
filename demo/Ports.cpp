#include "Ports.h"

#include <QNetworkProxy>
#include <QRandomGenerator>
#include <QTcpServer>

namespace world {
namespace {

constexpr int kFirstFreePort = 20000;
constexpr int kPortTries = 100;

bool ListenExactly(QTcpServer& listener, int port) {
    return listener.listen(QHostAddress::LocalHost, static_cast<quint16>(port));
}

// The system would hand out a port above those the client can store.
bool ListenSomewhere(QTcpServer& listener) {
    for (int tries = 0; tries < kPortTries; ++tries) {
        if (ListenExactly(listener,
                          QRandomGenerator::global()->bounded(kFirstFreePort, LastPort + 1)))
            return true;
    }
    return false;
}

} // namespace

bool ListenAt(QTcpServer& listener, int port) {
    listener.setProxy(QNetworkProxy::NoProxy);
    return port == 0 ? ListenSomewhere(listener) : ListenExactly(listener, port);
}

} // namespace world
