// The program quillmere-world: reads its options, serves game and pages until it is told to stop.
#include "Ports.h"
#include "Server.h"
#include "Site.h"
#include "WebServer.h"

#include <csignal>
#include <iostream>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <sys/signalfd.h>
#include <unistd.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QSocketNotifier>
#include <QStandardPaths>

namespace {

constexpr int kLastTcpPort = 65535; // no client has to store the port of the pages

struct Options {
    world::Settings game;
    int httpPort = 0;
    std::string clientVersion;
};

// SIGTERM, SIGINT and SIGHUP become readable bytes: what answers them runs in the event loop. A
// SIGHUP that is ignored from the start, as nohup has it, would be read too if it were blocked.
int StopSignals() {
    sigset_t stops;
    sigemptyset(&stops);
    sigaddset(&stops, SIGTERM);
    sigaddset(&stops, SIGINT);
    struct sigaction hangUp {};
    sigaction(SIGHUP, nullptr, &hangUp);
    if (hangUp.sa_handler != SIG_IGN)
        sigaddset(&stops, SIGHUP);
    sigprocmask(SIG_BLOCK, &stops, nullptr);
    return signalfd(-1, &stops, SFD_CLOEXEC | SFD_NONBLOCK);
}

std::optional<int> NumberOf(const QCommandLineParser& parser, const QString& name, int least,
                            int most) {
    bool isNumber = false;
    const int number = parser.value(name).toInt(&isNumber);
    if (isNumber && number >= least && number <= most)
        return number;
    std::cerr << "--" << name.toStdString() << " takes a number from " << least << " to " << most
              << '\n';
    return std::nullopt;
}

std::function<int(int)> Dice() {
    return [engine = std::mt19937(std::random_device{}())](int sides) mutable {
        return std::uniform_int_distribution<int>(0, sides - 1)(engine);
    };
}

QString PlayersFile() {
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + "/players.json";
}

std::optional<Options> ReadOptions(const QCoreApplication& app) {
    QCommandLineParser parser;
    parser.setApplicationDescription("A small game world on 127.0.0.1.");
    parser.addHelpOption();
    parser.addOptions({
        {"port", "Port to listen on; 0 takes any free one up to 32767.", "number", "1234"},
        {"hunger", "Seconds from one slow step (hunger, healing) to the next.", "seconds", "30"},
        {"round", "Milliseconds from one round of a fight to the next.", "milliseconds", "1500"},
        {"http-port", "Port to serve web pages on; 0 takes any free one up to 32767.", "number",
         "8080"},
        {"client-version", "Version of the client to publish.", "text", "1"},
        {"players", "File that remembers the players.", "file", PlayersFile()},
    });
    parser.process(app);
    const auto port = NumberOf(parser, "port", 0, world::LastPort);
    const auto hunger = NumberOf(parser, "hunger", 1, 3600);
    const auto round = NumberOf(parser, "round", 10, 60000);
    const auto httpPort = NumberOf(parser, "http-port", 0, kLastTcpPort);
    if (!port || !hunger || !round || !httpPort)
        return std::nullopt;
    return Options{{*port, std::chrono::milliseconds(*round), std::chrono::seconds(*hunger), Dice(),
                    parser.value("players").toStdString()},
                   *httpPort,
                   parser.value("client-version").toStdString()};
}

// One write: a reader may take what it wants from the first line and close its end.
void Announce(int gamePort, std::optional<int> httpPort) {
    std::string lines = "Listening on 127.0.0.1:" + std::to_string(gamePort) + '\n';
    if (httpPort)
        lines += "Serving http://127.0.0.1:" + std::to_string(*httpPort) + "/\n";
    std::cout << lines << std::flush;
}

int Run(const Options& options, int stopSignals) {
    world::Server server(options.game);
    if (!server.Listen()) {
        std::cerr << "Port " << options.game.port << " is taken\n";
        return 1;
    }
    world::WebServer web(world::Site(server.Port(), options.clientVersion));
    const bool hasPages = web.Listen(options.httpPort);
    if (hasPages)
        server.OfferSoundsAt(web.Port());
    else
        std::cerr << "Port " << options.httpPort
                  << " is taken: the game goes on without its web pages\n";
    QSocketNotifier stop(stopSignals, QSocketNotifier::Read);
    QObject::connect(&stop, &QSocketNotifier::activated, &stop, [&server] {
        server.Close();
        QCoreApplication::quit();
    });
    Announce(server.Port(), hasPages ? std::optional(web.Port()) : std::nullopt);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    const int stopSignals = StopSignals();
    std::signal(SIGPIPE, SIG_IGN); // a log line may find its reader gone
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName("quillmere-world");
    const std::optional<Options> options = ReadOptions(app);
    if (!options)
        return 1;
    try {
        return Run(*options, stopSignals);
    } catch (const std::runtime_error& error) {
        std::cerr << options->game.book << " can't be read: " << error.what() << '\n';
        return 1;
    }
}
