// What every journey begins with: a display and a client that is not started yet.
//
// A journey that fails leaves its screen, the text shown and the client's messages in a folder of
// its name below build/journeys. With QUILLMERE_KEEP_PICTURES set, every journey leaves them, and
// the pictures of its marked moments too.
#pragma once

#include "Client.h"
#include "Display.h"
#include "GameServer.h"

#include <gtest/gtest.h>
#include <iosfwd>
#include <string_view>

#include <QString>

namespace journey {

void PrintTo(const Area& area, std::ostream* out); // "0,0 to 1000,700"

class Journey : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // A moment worth a picture, when pictures are asked for.
    void Moment(const QString& name) const;

    Display Screen;
    Client Player{Screen};

private:
    QString Folder() const;
    void LeaveTranscript();
};

// A journey against a server that the test plays itself.
class ServerJourney : public Journey {
protected:
    // Starts the client connected to the server.
    void Connect();

    // One arrival: the text is shown whole. The client drops the last byte of an arrival and holds
    // back line breaks that end one, so both are added here.
    void SendText(std::string_view text);

    GameServer Server;
};

} // namespace journey
