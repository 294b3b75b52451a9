// The tour: a short visit to the demo world with real key presses on a virtual display.
//
// Leaves pictures and the text that the player saw in the folder given.
#include "Client.h"
#include "Display.h"
#include "Wait.h"
#include "World.h"

#include <exception>
#include <iostream>
#include <stdexcept>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QHostAddress>
#include <QNetworkProxy>
#include <QTcpServer>

namespace {

using namespace journey;

constexpr int kRoundMs = 300; // a fight short enough for the tour

constexpr int kGamePort = 1234; // of the built-in game

bool IsFree(int port) {
    QTcpServer probe;
    probe.setProxy(QNetworkProxy::NoProxy);
    return probe.listen(QHostAddress::LocalHost, static_cast<quint16>(port));
}

struct Tour {
    explicit Tour(const QString& folder) : Folder(folder) {}

    QDir Folder;
    Display Screen;
    bool IsBuiltInGame = IsFree(kGamePort);
    World Town{{.RoundMs = kRoundMs, .Port = IsBuiltInGame ? kGamePort : 0}};
    Client Player{Screen};

    void Picture(const QString& name) const {
        const QString file = Folder.absoluteFilePath(name + ".png");
        Screen.Save(file);
        std::cout << file.toStdString() << '\n';
    }

    void Walk(const char* keys) {
        for (const char* key = keys; *key != '\0'; ++key) {
            Player.Keypad(*key);
            Player.WaitToSee("Exits:");
            Player.WaitToSee("] >");
        }
    }

    void ComeIn() {
        Player.Launch({"--connect", IsBuiltInGame ? "Quillmere" : Town.Address});
        Player.WaitForSplash();
        Picture("1-splash");
        Player.WaitForFrame();
        Player.WaitToSee("By what name are you known?");
        Player.Enter("Ada");
        Player.WaitToSee("Choose a password");
        Player.Enter("goose7");
        Player.WaitToSee("Welcome to Quillmere, Ada.");
        Player.Enter("look");
        Player.WaitToSee("Goose Green");
        Player.WaitToSee("] >");
        Picture("2-connected");
        Player.Press("alt+c");
        Picture("3-menu");
        Player.Press({"Escape", "Escape"}); // the menu, the menu bar
        Player.ClickCommandLine();
    }

    void LookAbout() {
        Walk("8-+62");
        Player.Enter("say What fine paper this is.");
        Player.WaitToSee("You say: What fine paper");
        Walk("44");
        Player.Enter("get bread;eat bread");
        Player.WaitToSee("You eat a loaf");
        Picture("4-map-walk");
    }

    void Fight() {
        Walk("62+");
        Player.Enter("kill rat");
        Player.WaitToSee("You have beaten the brown rat!");
        Player.Enter("score");
        Player.WaitToSee("life, loaves");
        Player.WaitToSee("] >");
        Picture("5-fight");
    }

    void ReadBack() {
        Player.Press("Prior");
        Player.Press("Prior");
        Player.Press("Prior");
        Player.Enter("help");
        WaitFor("the help in the lower box", [this] {
            return Player.Shown(Client::kLower).find("leave the world") != std::string::npos;
        });
        Picture("6-scroll-back");
        Player.ReturnToEnd();
        Player.WaitToSee("quit: leave the world");
    }

    void Leave() {
        Player.Enter("quit");
        Player.WaitToSee("Good-bye, Ada.");
        Player.WaitToSee("Connection Closed");
        Picture("7-left");
        const std::string text = Player.Shown();
        QFile file(Folder.absoluteFilePath("transcript.txt"));
        if (!file.open(QFile::WriteOnly) || file.write(text.data(), qsizetype(text.size())) < 0)
            throw std::runtime_error("The transcript can't be written");
        std::cout << file.fileName().toStdString() << '\n';
        Player.ExitByMenu();
        if (Player.WaitForEnd() != 0)
            throw std::runtime_error("The client did not end well: " + Player.Log());
    }
};

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    if (argc != 2) {
        std::cerr << "Usage: tour FOLDER\n";
        return 2;
    }
    try {
        QDir().mkpath(app.arguments().at(1));
        Tour tour(app.arguments().at(1));
        tour.ComeIn();
        tour.LookAbout();
        tour.Fight();
        tour.ReadBack();
        tour.Leave();
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}
