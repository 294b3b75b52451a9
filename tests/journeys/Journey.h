// What every journey begins with: a display and a client that is not started yet.
//
// A journey that fails leaves its screen, the text shown and the client's messages in a folder of
// its name below build/journeys. With QUILLMERE_KEEP_PICTURES set, every journey leaves them, and
// the pictures of its marked moments too. The tour shows the moments that have a caption.
#pragma once

#include "Client.h"
#include "Display.h"
#include "GameServer.h"
#include "Wire.h"
#include "World.h"

#include <gtest/gtest.h>
#include <iosfwd>
#include <memory>
#include <string_view>
#include <vector>

#include <QString>

namespace journey {

void PrintTo(const Area& area, std::ostream* out); // "0,0 to 1000,700"

class Journey : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // File, Exit by the keyboard. The program ends with status 0.
    void Exit();

    // A moment worth a picture, when pictures are asked for.
    void Moment(const QString& name, const QString& caption = {}) const;

    // What a failure leaves, of a client: with a prefix to the files' names.
    void LeaveTraces(const QString& prefix, const Display& screen, Client& client) const;

    Display Screen;
    Client Player{Screen};

private:
    QString Folder() const;
};

// A journey against a server that the test plays itself.
class ServerJourney : public Journey {
protected:
    // Starts the client connected to the server.
    void Connect();

    // One arrival: the text is shown whole. The client drops the last byte of an arrival and holds
    // back line breaks that end one, so both are added here.
    void SendText(std::string_view text);

    // "About", which locks the frame while it is up.
    void OpenAndCloseAWindow() const;

    GameServer Server;
};

// A journey against a server that goes on sending while keys are pressed.
class WireJourney : public ServerJourney {
protected:
    // Starts the client connected.
    void ConnectByWire();

    // By the connect button. The connection before is over.
    void ConnectAgain();
    void WaitForTheEndOfTheConnection() const;

    // A click on a control of the toolbar, wherever it stood at the start.
    void Push(ToolbarPlace place) const;

    // Returns when the client has read everything.
    void LetRead();

    // Types a line. Returns the milliseconds until it is there.
    double TypeALine();

    QStringList BoxesLeft() const;

    std::unique_ptr<Wire> Way;
    std::vector<Area> Toolbar;

private:
    int Lines = 0; // typed
};

// A journey in the demo world.
class WorldJourney : public Journey {
protected:
    // The client finds the world where it is built in, as the one game of its list. Only the port
    // is another: the world's own may be taken.
    void PutTownInTheList();

    // Starts the client connected to the world, and Ada comes in.
    void ComeIn(const char* answer = kNewcomer);

    World Town;
    QString Game = Town.Address; // to connect to
};

} // namespace journey
