// A web server on this machine that answers well or badly, as a test wants it to. It lives in the
// test's own thread, because transfers never wait.
#pragma once

#include "forms/GameServer.h"
#include "forms/HttpTexts.h"
#include "forms/WaitFor.h"

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <QTimer>

namespace forms {

// One request and the connection it came by. A test may keep it and go on answering later.
class Visit : public QObject {
public:
    explicit Visit(QTcpSocket* socket) : Socket(socket) { socket->setParent(this); }

    std::string Request; // with the blank line that ends it
    std::string Path;

    bool IsThere() const { return Socket->state() == QAbstractSocket::ConnectedState; }

    bool Leaves() const {
        return WaitFor([this] { return !IsThere(); });
    }

    void Send(std::string_view bytes) const {
        Socket->write(bytes.data(), static_cast<qint64>(bytes.size()));
        Socket->flush();
    }

    // Closes after what was sent.
    void HangUp() const { Socket->disconnectFromHost(); }

    void Reset() const { BreakOff(*Socket); }

    // Byte by byte, and hangs up.
    void Drip(std::string bytes) {
        auto* const drops = new QTimer(this);
        QObject::connect(drops, &QTimer::timeout, this,
                         [this, drops, bytes = std::move(bytes), at = std::size_t{0}]() mutable {
                             if (at < bytes.size() && IsThere())
                                 return Send(std::string_view(bytes).substr(at++, 1));
                             drops->stop();
                             HangUp();
                         });
        drops->start(1);
    }

    // The same piece again and again, as fast as the visitor takes it.
    void Pour(std::string piece) {
        const auto send = [this, piece = std::move(piece)] {
            constexpr qint64 kAhead = 256 * 1024;
            while (IsThere() && Socket->bytesToWrite() < kAhead) {
                Send(piece);
                Poured += static_cast<qint64>(piece.size());
            }
        };
        QObject::connect(Socket, &QTcpSocket::bytesWritten, this, send);
        send();
    }

    qint64 Poured = 0; // bytes so far

private:
    friend class HttpServer;

    QTcpSocket* Socket;
    std::string Unread;
};

class HttpServer {
public:
    using Answer = std::function<void(Visit&)>;

    explicit HttpServer(std::unique_ptr<QTcpServer> listener = std::make_unique<QTcpServer>())
        : Listener(std::move(listener)) {
        QObject::connect(Listener.get(), &QTcpServer::pendingConnectionAvailable, Listener.get(),
                         [this] { Welcome(); });
        if (!Listener->listen(QHostAddress::LocalHost))
            throw std::runtime_error("no free port");
    }

    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    std::string Host() const { return "127.0.0.1:" + std::to_string(Listener->serverPort()); }

    std::string Address(const std::string& path) const { return "http://" + Host() + path; }

    // Nobody listens there any more.
    void StopListening() const { Listener->close(); }

    bool HasVisits(std::size_t count) const {
        return WaitFor([&] { return Requests.size() >= count; });
    }

    // The visit that came last.
    Visit& Last() const { return *Visits.back(); }

    // What was asked for, in order.
    std::vector<std::string> Paths() const {
        std::vector<std::string> paths;
        for (const std::string& request : Requests) {
            const std::size_t begin = request.find(' ') + 1;
            paths.push_back(request.substr(begin, request.find(' ', begin) - begin));
        }
        return paths;
    }

    std::map<std::string, Answer> Answers; // by path
    Answer Otherwise = [](Visit&) {};      // keeps the visitor waiting
    std::vector<std::string> Requests;
    std::vector<std::unique_ptr<Visit>> Visits; // one a connection

private:
    void Welcome() {
        while (QTcpSocket* const socket = Listener->nextPendingConnection()) {
            Visits.push_back(std::make_unique<Visit>(socket));
            Visit* const visit = Visits.back().get();
            QObject::connect(socket, &QTcpSocket::readyRead, visit,
                             [this, visit] { Read(*visit); });
            Read(*visit); // some may have come before
        }
    }

    void Read(Visit& visit) {
        visit.Unread += visit.Socket->readAll().toStdString();
        std::size_t end = 0;
        while ((end = visit.Unread.find("\r\n\r\n")) != std::string::npos) {
            visit.Request = visit.Unread.substr(0, end + 4);
            visit.Unread.erase(0, end + 4);
            Requests.push_back(visit.Request);
            visit.Path = Paths().back();
            const auto found = Answers.find(visit.Path);
            (found == Answers.end() ? Otherwise : found->second)(visit);
        }
    }

    std::unique_ptr<QTcpServer> Listener;
};

// Answers. Each hangs up behind what it sends, unless it says otherwise.

inline HttpServer::Answer Says(const std::string& bytes) {
    return [bytes](Visit& visit) {
        visit.Send(bytes);
        visit.HangUp();
    };
}

inline HttpServer::Answer SaysAndStalls(const std::string& bytes) {
    return [bytes](Visit& visit) { visit.Send(bytes); };
}

inline HttpServer::Answer SaysAndResets(const std::string& bytes) {
    return [bytes](Visit& visit) {
        visit.Send(bytes);
        visit.Reset();
    };
}

inline HttpServer::Answer Drips(const std::string& bytes) {
    return [bytes](Visit& visit) { visit.Drip(bytes); };
}

inline HttpServer::Answer PoursBehind(const std::string& head, const std::string& piece) {
    return [head, piece](Visit& visit) {
        visit.Send(head);
        visit.Pour(piece);
    };
}

// Answers /0, /1, ... with one redirection each, count of them, and then otherwise.
inline HttpServer::Answer Redirects(int count, const std::string& atLast) {
    return [count, atLast](Visit& visit) {
        const int hop = std::stoi(visit.Path.substr(1));
        visit.Send(hop < count ? Redirection("/" + std::to_string(hop + 1)) : atLast);
        visit.HangUp();
    };
}

} // namespace forms
