// The client program as a player has it before them: a window, keys, a mouse, text to read.
//
// What it shows is read as a player would copy it: a click into the output, Ctrl+A, Ctrl+C. The
// command line has the keys again afterwards. A wait that fails throws one line that tells for
// what.
#pragma once

#include "Display.h"
#include "Toolbar.h"

#include <string>
#include <string_view>

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace journey {

struct Client {
    // The screen must outlive the client.
    explicit Client(const Display& screen);
    ~Client();

    // Starts the program in its fresh home folder and waits for its window.
    void Start(const QStringList& arguments = {});

    // Starts the program on files that it refuses, answers that many message boxes and waits for
    // the end. Returns the exit status.
    int StartRefused(int boxes);

    // Keys, by the names of the window system: "Up", "alt+f".
    void Press(const QString& keys) const;
    void Type(const QString& text) const;
    void Enter(const QString& line) const; // types it and presses Return
    void Keypad(char key) const;           // one of 0 to 9, +, -

    void ClickCommandLine() const;
    void ClickToolbar(ToolbarPlace place) const; // waits until the control is usable
    bool CanUse(ToolbarPlace place) const;

    // All text of the output. While it is scrolled back, of the box at that height of the screen.
    std::string Shown(int height = kUpper) const;

    // Shows the end of the output again: a click into it, End.
    void ReturnToEnd() const;

    // Waits until the output shows the words behind everything waited for before.
    void WaitToSee(std::string_view words);

    // True when the left part of the status bar holds some text.
    bool HasStatus() const;

    // Answers a message box with Return. Waits for it to come and to go.
    void AnswerBox() const;

    // File, Exit by the keyboard.
    void ExitByMenu() const;

    // Waits for the end of the program. Returns its exit status, or minus the signal that ended it.
    int WaitForEnd();

    std::string Log(); // what the program wrote on its standard output and error

    static constexpr int kUpper = 200; // in the earlier output while it is scrolled back
    static constexpr int kLower = 540; // in the output that goes on
    static constexpr Area Output{0, 56, 984, 640};
    static constexpr Area Status{0, 680, 480, 700};

    QProcess Process;
    QTemporaryDir Folder;

private:
    const Display* Screen;
    std::size_t Seen = 0; // where in the output the search for new words begins
};

} // namespace journey
