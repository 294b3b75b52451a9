// The client program as a player has it before them: windows, keys, a mouse, text to read.
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

// The four texts in the settings that tell where the frame stands.
struct KeptPlace {
    QString Left = "0";
    QString Top = "0";
    QString Width = QString::number(Display::Width);
    QString Height = QString::number(Display::Height);
};

struct Client {
    // The screen must outlive the client. The frame is going to fill it, and no newer version is
    // going to be found.
    explicit Client(const Display& screen);

    // Ends the program there and then, so that it saves nothing.
    ~Client();

    // For the next start.
    void Set(const QString& variable, const QString& value); // of its environment
    void Keep(const KeptPlace& place) const;                 // in its settings
    QString SettingsFile() const;

    // A look-up of the host "held.test" makes this file, and lasts until it is removed.
    void HoldLookups();
    QString HeldLookup() const;

    // Starts the program in its home folder: what was built, or QUILLMERE_PROGRAM.
    void Launch(const QStringList& arguments = {});

    // The splash is there with its coloured title; the frame can be used.
    void WaitForSplash() const;
    void WaitForFrame();

    // Starts the program and waits for its frame with the toolbar.
    void Start(const QStringList& arguments = {});

    // Its visible windows whose title holds the words, by id.
    QStringList Windows(const QString& title) const;
    bool ShowsSplash() const;
    QStringList Boxes() const; // the message boxes among them

    // Waits for a window and gives it the keys.
    void TakeKeys(const QString& title) const;
    void WaitToClose(const QString& title) const;

    // Keys, by the names of the window system: "Up", "alt+f".
    void Press(const QString& keys) const;
    void Press(const QStringList& keys) const; // one after the other
    void Type(const QString& text) const;
    void Enter(const QString& line) const; // types it and presses Return
    void Keypad(char key) const;           // one of 0 to 9, +, -

    // Keys that choose from a menu or the chooser's list. Keys that follow a choice sooner than the
    // list has gone would be lost, so it is waited for.
    void ChooseFromMenu(const QString& menuKey, const QStringList& keys) const;
    void ChooseFromList(const QStringList& keys) const; // which is about to open
    bool HasList() const;                               // a menu or a list is open

    void ClickCommandLine() const;
    void ClickToolbar(ToolbarPlace place) const; // waits until the control is usable
    bool CanUse(ToolbarPlace place) const;
    bool HasToolbar() const;
    void ToggleToolbar() const; // by the menu Configuration

    // All text of the output; while it is scrolled back, the earlier text.
    std::string Shown() const;

    // The same without waiting for text: empty when there is none, or a dialog is in the way.
    std::string Copied() const;

    std::string LastShown() const; // what was copied last

    // The earlier output stands over that which goes on.
    bool IsScrolledBack() const;

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

    // What it plays is written here instead of being heard, from its first sound on and anew when
    // five silent seconds lie between two. The file is missing until then.
    QString SoundFile() const;
    int Loudest() const; // sample in the sound file, of 32768; 0 for silence

    std::string Log(); // what the program wrote on its standard output and error

    static constexpr const char* kFrame = "^Quillmere Mud Client V"; // its title
    static constexpr int kUpper = 200; // a row in the earlier output while it is scrolled back
    static constexpr Area Output{0, 56, 984, 640};
    static constexpr Area Status{0, 680, 480, 700};
    static constexpr Area Notice{480, 680, 880, 700}; // a long one also stands to the left

    QProcess Process;
    QTemporaryDir Folder;
    QString Home; // below Folder, unless it is set to another client's

private:
    const Display* Screen;
    std::size_t Seen = 0; // where in the output the search for new words begins
    mutable std::string Last;
};

} // namespace journey
