// The program quillmere-world: reads its options, serves until it is told to stop.
#include "Server.h"

#include <csignal>
#include <iostream>
#include <optional>
#include <random>
#include <sys/signalfd.h>
#include <unistd.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QSocketNotifier>

namespace {

// SIGTERM and SIGINT become readable bytes: what answers them runs in the event loop.
int StopSignals() {
    sigset_t stops;
    sigemptyset(&stops);
    sigaddset(&stops, SIGTERM);
    sigaddset(&stops, SIGINT);
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

std::optional<world::Settings> ReadSettings(const QCoreApplication& app) {
    QCommandLineParser parser;
    parser.setApplicationDescription("A small game world on 127.0.0.1.");
    parser.addHelpOption();
    parser.addOptions({
        {"port", "Port to listen on; 0 takes any free one up to 32767.", "number", "1234"},
        {"hunger", "Seconds from one slow step (hunger, healing) to the next.", "seconds", "30"},
        {"round", "Milliseconds from one round of a fight to the next.", "milliseconds", "1500"},
    });
    parser.process(app);
    const auto port = NumberOf(parser, "port", 0, world::LastPort);
    const auto hunger = NumberOf(parser, "hunger", 1, 3600);
    const auto round = NumberOf(parser, "round", 10, 60000);
    if (!port || !hunger || !round)
        return std::nullopt;
    return world::Settings{*port, std::chrono::milliseconds(*round), std::chrono::seconds(*hunger),
                           Dice()};
}

} // namespace

int main(int argc, char** argv) {
    const int stopSignals = StopSignals();
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName("quillmere-world");
    const std::optional<world::Settings> settings = ReadSettings(app);
    if (!settings)
        return 1;
    world::Server server(*settings);
    if (!server.Listen()) {
        std::cerr << "Port " << settings->port << " is taken\n";
        return 1;
    }
    QSocketNotifier stop(stopSignals, QSocketNotifier::Read);
    QObject::connect(&stop, &QSocketNotifier::activated, &app, [&server] {
        server.Close();
        QCoreApplication::quit();
    });
    std::cout << "Listening on 127.0.0.1:" << server.Port() << std::endl;
    return QCoreApplication::exec();
}
