#include "ui/qt/GameSocket.h"

#include "base/Error.h"
#include "ui/Socket.h"
#include "ui/qt/Text.h"

#include <utility>

#include <QNetworkProxy>
#include <QPointer>

#ifdef Q_OS_LINUX
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace mw {
namespace {

// The customary error numbers of sockets.
constexpr int kBadAddress = 10049;
constexpr int kReset = 10054;
constexpr int kNoBuffers = 10055;

constexpr qint64 kMostTogether = 16384; // bytes of answers

struct ErrorRow {
    QAbstractSocket::SocketError Code;
    int Number;
    const char* Description;
};

constexpr ErrorRow kErrors[] = {
    {QAbstractSocket::ConnectionRefusedError, 10061, "Connection is forcefully rejected"},
    {QAbstractSocket::HostNotFoundError, 11001, "Host not found"},
    {QAbstractSocket::SocketTimeoutError, 10060, "The connection attempt timed out"},
    {QAbstractSocket::SocketAccessError, 10013, "Permission denied"},
    {QAbstractSocket::SocketResourceError, 10024, "Too many open sockets"},
    {QAbstractSocket::AddressInUseError, 10048, "Address in use"},
    {QAbstractSocket::SocketAddressNotAvailableError, kBadAddress, "Address not available"},
    {QAbstractSocket::NetworkError, 10065, "The network or host can't be reached"},
};

ErrorRow RowOf(QAbstractSocket::SocketError code) {
    for (const ErrorRow& row : kErrors) {
        if (row.Code == code)
            return row;
    }
    return {code, 10050, "The network failed"};
}

} // namespace

GameSocket::GameSocket(QObject* parent) : QObject(parent) {}

GameSocket::~GameSocket() { Close(); }

std::int16_t GameSocket::State() const {
    if (Failed)
        return SocketError;
    if (PeerClosed)
        return SocketClosing;
    if (!Tcp)
        return SocketClosed;
    switch (Tcp->state()) {
    case QAbstractSocket::HostLookupState:
        return SocketResolving;
    case QAbstractSocket::ConnectingState:
        return SocketConnecting;
    case QAbstractSocket::ConnectedState:
        return SocketConnected;
    default:
        return SocketConnecting; // between two addresses of one host
    }
}

void GameSocket::Connect(const std::string& host, std::int16_t port) {
    if (State() != SocketClosed)
        Raise(InvalidSocketState, "wskTCP");
    ++Generation;
    Tcp = std::make_unique<QTcpSocket>();
    Tcp->setProxy(QNetworkProxy::NoProxy);
    Tcp->setReadBufferSize(kReadBuffer);
    // Queued, so that nothing happens inside a call; Later drops what a Close has outrun.
    connect(Tcp.get(), &QTcpSocket::connected, this, [this] { OnConnected(); });
    connect(Tcp.get(), &QTcpSocket::readyRead, this, [this] { Later([this] { OnReadyRead(); }); });
    connect(Tcp.get(), &QTcpSocket::disconnected, this, [this] {
        PeerClosed = true;
        Later([this] { OnEnded(); });
    });
    connect(Tcp.get(), &QTcpSocket::errorOccurred, this,
            [this](QAbstractSocket::SocketError code) { OnError(code); });
    if (port <= 0 || host.empty())
        Fail(kBadAddress, tr("Address not available"));
    else
        Tcp->connectToHost(ToQString(host), static_cast<quint16>(port));
}

void GameSocket::Close() {
    ++Generation;
    Failed = PeerClosed = Broken = EndWaits = LineWaits = false;
    Rest.clear();
#ifdef Q_OS_LINUX
    if (Watch >= 0)
        ::close(Watch);
    Watch = -1;
#endif
    if (!Tcp)
        return;
    Tcp->disconnect(this);
    Tcp->flush(); // what was sent before still goes out
    Tcp->close();
    Tcp.release()->deleteLater(); // it may be the sender of the event that runs
}

void GameSocket::Send(std::string_view bytes) {
    if (State() != SocketConnected)
        return;
    Tcp->write(bytes.data(), static_cast<qint64>(bytes.size()));
    // At once, instead of behind what waits to be painted; what an arrival is answered with
    // together, or a server that asks thousands of things at once would keep the player waiting.
    LineWaits = LineWaits || bytes.ends_with('\r');
    if (!Draining || Tcp->bytesToWrite() > kMostTogether)
        SendLines();
    if (Tcp->bytesToWrite() > kLongestSendQueue)
        Fail(kNoBuffers, tr("The server does not read what is sent"));
}

// To a server that has closed this would bring a reset before its close is told.
void GameSocket::SendLines() {
    if (std::exchange(LineWaits, false) && Tcp && IsOpen())
        Tcp->flush();
}

std::string GameSocket::GetData() {
    if (Rest.isEmpty())
        return Tcp ? Tcp->read(kLongestArrival).toStdString() : std::string();
    std::string data = Rest.left(kLongestArrival).toStdString();
    Rest.remove(0, kLongestArrival);
    return data;
}

void GameSocket::Later(const std::function<void()>& event) {
    const auto send = [this, event, generation = Generation] {
        if (generation == Generation)
            event();
    };
    QMetaObject::invokeMethod(this, send, Qt::QueuedConnection);
}

void GameSocket::OnConnected() {
    Tcp->setSocketOption(QAbstractSocket::LowDelayOption, 1);
#ifdef Q_OS_LINUX
    Watch = ::fcntl(static_cast<int>(Tcp->socketDescriptor()), F_DUPFD_CLOEXEC, 0);
#endif
    Later([this] { emit connected(); });
}

// Bytes that arrive while a handler waits inside (a message box) are not signalled again, so all
// that is there is handed over, and a signal from inside is left to the call that is under way.
void GameSocket::OnReadyRead() {
    if (Draining)
        return;
    const QPointer<GameSocket> alive(this); // a handler may close the output window
    Draining = true;
    while (Tcp && !Failed && (!Rest.isEmpty() || Tcp->bytesAvailable() > 0)) {
        emit dataArrival();
        if (!alive)
            return;
        SendLines();
    }
    Draining = false;
    if (EndWaits)
        OnEnded();
}

// The end is told after the text that came before it.
void GameSocket::OnEnded() {
    EndWaits = Draining;
    if (Draining)
        return;
    const QPointer<GameSocket> alive(this);
    const std::uint64_t generation = Generation;
    OnReadyRead();
    if (!alive || generation != Generation || Failed)
        return;
    if (Broken)
        Fail(kReset, tr("The connection was reset by the server"));
    else
        emit closed();
}

void GameSocket::OnError(QAbstractSocket::SocketError code) {
    if (code == QAbstractSocket::RemoteHostClosedError) { // the disconnected signal follows
        Broken = WasReset();
        SaveRest();
        return;
    }
    const ErrorRow row = RowOf(code);
    Fail(row.Number, tr(row.Description));
}

void GameSocket::Fail(int number, const QString& description) {
    if (Failed)
        return;
    Failed = true;
    Later([this, number, description] { emit error(number, description); });
}

// When writing fails, Qt throws away what it and the system have received and not handed on yet.
void GameSocket::SaveRest() {
    Rest += Tcp->readAll();
#ifdef Q_OS_LINUX
    char block[16384];
    while (Watch >= 0) {
        const ssize_t size = ::recv(Watch, block, sizeof block, MSG_DONTWAIT);
        if (size <= 0)
            return;
        Rest.append(block, size);
    }
#endif
}

#ifdef Q_OS_LINUX
int GameSocket::TcpState() const {
    tcp_info info{};
    socklen_t size = sizeof info;
    const bool isTold = Watch >= 0 && ::getsockopt(Watch, IPPROTO_TCP, TCP_INFO, &info, &size) == 0;
    return isTold ? info.tcpi_state : 0;
}
#endif

bool GameSocket::IsOpen() const {
#ifdef Q_OS_LINUX
    return TcpState() == TCP_ESTABLISHED;
#else
    return true;
#endif
}

// Qt reports a reset as a close. The kernel knows better, and tells by the second descriptor that
// was kept of the connection: after a server's close it waits for ours, after a reset it is gone.
bool GameSocket::WasReset() const {
#ifdef Q_OS_LINUX
    return TcpState() == TCP_CLOSE;
#else
    return false;
#endif
}

} // namespace mw
