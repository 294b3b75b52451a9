// The demo world, running for one journey on ports of its own, and the way into it.
#pragma once

#include "Client.h"

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace journey {

// The program is what was built, or QUILLMERE_WORLD_PROGRAM.
struct World {
    explicit World(const QString& clientVersion = "1"); // which it publishes
    ~World();

    QString Address;      // "127.0.0.1:20000"
    QString WebRoot;      // "http://127.0.0.1:20001"
    QTemporaryDir Folder; // of its players
    QProcess Process;
};

// The answers to a name.
inline constexpr const char* kNewcomer = "Choose a password";
inline constexpr const char* kKnown = "The book knows you";

// Answers the questions at the gate. The player is in the world afterwards.
void LogIn(Client& player, const QString& name, const char* answer = kNewcomer);

// One step by the keypad. Waits until the room is seen.
void Walk(Client& player, char key, const char* room);

} // namespace journey
