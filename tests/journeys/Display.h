// A virtual display with a keyboard, a mouse and a clipboard.
//
// Keys and clicks go through the window system, as a person's do. There is no window manager, so a
// window that is to have the keys is given the focus here.
#pragma once

#include <string>

#include <QProcess>
#include <QString>
#include <QStringList>

namespace journey {

struct Colour {
    int Red = 0;
    int Green = 0;
    int Blue = 0;

    bool operator==(const Colour&) const = default;
};

// A rectangle of the screen; Right and Bottom are the first column and row outside it.
struct Area {
    int Left = 0;
    int Top = 0;
    int Right = 0;
    int Bottom = 0;

    bool operator==(const Area&) const = default;
};

struct Picture {
    int Width = 0;
    int Height = 0;
    std::string Pixels; // three bytes each, row by row
};

Colour ColourAt(const Picture& picture, int x, int y);

// How many pixels of the area look like the colour, the soft edges of letters left aside.
int CountOf(const Picture& picture, const Area& area, const Colour& colour);

// Chains of xdotool commands. What is put in one chain costs one start of the program.
QStringList ClickAt(int x, int y);
QStringList PressOf(const QStringList& keys); // by their names: "Up", "alt+f"

struct Display {
    static constexpr int Width = 1000; // filled by the client's window in most journeys
    static constexpr int Height = 700;

    // Starts the display and waits until it is there. Num Lock is on, keys do not repeat.
    Display();
    ~Display();
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;

    // Runs one chain of xdotool commands. False when it reports failure.
    bool Do(const QStringList& commands) const;

    void Click(int x, int y) const;
    void Drag(int fromX, int fromY, int toX, int toY) const;
    void Turn(int notchesUp, int x, int y) const; // the wheel; negative: down

    // The visible windows of the process whose title holds the words, by id.
    QStringList Windows(const QString& title, qint64 process) const;

    // Where the window stands; an empty area when it is gone.
    Area PlaceOf(const QString& window) const;

    // The sizes of the icons that the window bears: "16 x 16".
    QStringList IconsOf(const QString& window) const;

    // Empties the clipboard, so that what is copied next can be told from what was there.
    void ClearClipboard() const;

    // The text on the clipboard; empty when there is none.
    std::string Clipboard() const;

    Picture Look() const;

    // For a picture: waits until what was begun is drawn, and two looks in a row see the same.
    void LetSettle() const;
    void Save(const QString& file) const; // as PNG

    QString Name; // ":1"
    QProcess Server;

private:
    QByteArray Run(const QString& program, const QStringList& arguments, bool* succeeded) const;
};

} // namespace journey
