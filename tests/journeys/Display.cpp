#include "Display.h"

#include "Wait.h"

#include <cstdlib>
#include <stdexcept>
#include <utility>

#include <QProcessEnvironment>

namespace journey {
namespace {

constexpr int kSoftness = 24; // how far a channel may be from the colour that is looked for

bool LooksLike(const Colour& a, const Colour& b) {
    return std::abs(a.Red - b.Red) <= kSoftness && std::abs(a.Green - b.Green) <= kSoftness &&
           std::abs(a.Blue - b.Blue) <= kSoftness;
}

} // namespace

Colour ColourAt(const Picture& picture, int x, int y) {
    const auto at = 3 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.Width) +
                         static_cast<std::size_t>(x));
    const auto channel = [&](std::size_t i) {
        return static_cast<int>(static_cast<unsigned char>(picture.Pixels.at(at + i)));
    };
    return {channel(0), channel(1), channel(2)};
}

int CountOf(const Picture& picture, const Area& area, const Colour& colour) {
    int count = 0;
    for (int y = area.Top; y < area.Bottom; ++y) {
        for (int x = area.Left; x < area.Right; ++x)
            count += LooksLike(ColourAt(picture, x, y), colour) ? 1 : 0;
    }
    return count;
}

QStringList ClickAt(int x, int y) {
    // Not xdotool's "click", which rests for a tenth of a second.
    return {"mousemove", QString::number(x), QString::number(y), "mousedown", "1", "mouseup", "1"};
}

QStringList PressOf(const QStringList& keys) { return QStringList{"key", "--delay", "0"} + keys; }

Display::Display() {
    const QString screen = QStringLiteral("%1x%2x24").arg(Width).arg(Height);
    StartChild(Server, "Xvfb",
               {"-displayfd", "1", "-screen", "0", screen, "-nolisten", "tcp", "-noreset", "-r"});
    QByteArray number;
    WaitFor("the virtual display to start", [&] {
        number += Server.readAllStandardOutput();
        return number.endsWith('\n');
    });
    Name = ':' + QString::fromLatin1(number.trimmed());
    if (!Do(PressOf({"Num_Lock"})))
        throw std::runtime_error("The virtual display takes no keys");
}

Display::~Display() { StopChild(Server); }

QByteArray Display::Run(const QString& program, const QStringList& arguments,
                        bool* succeeded) const {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", Name);
    process.setProcessEnvironment(environment);
    StartChild(process, program, arguments);
    // Not by looking again and again: these programs take a few milliseconds.
    WaitFor(program.toStdString() + " to end", [&process] {
        return process.waitForFinished(1000) || process.state() == QProcess::NotRunning;
    });
    *succeeded = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    return process.readAllStandardOutput();
}

bool Display::Do(const QStringList& commands) const {
    bool succeeded = false;
    Run("xdotool", commands, &succeeded);
    return succeeded;
}

void Display::Click(int x, int y) const { Do(ClickAt(x, y)); }

void Display::Drag(int fromX, int fromY, int toX, int toY) const {
    Do({"mousemove", QString::number(fromX), QString::number(fromY), "mousedown", "1", "mousemove",
        QString::number(toX), QString::number(toY), "mouseup", "1"});
}

void Display::Turn(int notchesUp, int x, int y) const {
    Do({"mousemove", QString::number(x), QString::number(y), "click", "--repeat",
        QString::number(std::abs(notchesUp)), "--delay", "5", notchesUp > 0 ? "4" : "5"});
}

QStringList Display::Windows(const QString& title, qint64 process) const {
    bool succeeded = false;
    const QByteArray ids = Run(
        "xdotool",
        {"search", "--all", "--onlyvisible", "--pid", QString::number(process), "--name", title},
        &succeeded);
    return QString::fromLatin1(ids).split('\n', Qt::SkipEmptyParts);
}

Area Display::PlaceOf(const QString& window) const {
    bool succeeded = false;
    const QByteArray lines = Run("xdotool", {"getwindowgeometry", "--shell", window}, &succeeded);
    const auto value = [&lines](const QByteArray& key) {
        const qsizetype start = lines.indexOf(key + '=') + key.size() + 1;
        return lines.mid(start, lines.indexOf('\n', start) - start).toInt();
    };
    if (!succeeded)
        return {};
    return {value("X"), value("Y"), value("X") + value("WIDTH"), value("Y") + value("HEIGHT")};
}

QStringList Display::IconsOf(const QString& window) const {
    bool succeeded = false;
    const QString drawn = Run("xprop", {"-id", window, "_NET_WM_ICON"}, &succeeded);
    QStringList sizes = drawn.split("Icon (").mid(1);
    for (QString& size : sizes)
        size.truncate(size.indexOf(')'));
    return sizes;
}

void Display::ClearClipboard() const {
    bool succeeded = false;
    Run("xclip", {"-i", "-selection", "clipboard", "/dev/null"}, &succeeded);
}

std::string Display::Clipboard() const {
    bool succeeded = false;
    const QByteArray text =
        Run("xclip", {"-o", "-selection", "clipboard", "-t", "UTF8_STRING"}, &succeeded);
    return succeeded ? text.toStdString() : std::string();
}

Picture Display::Look() const {
    bool succeeded = false;
    const QByteArray image = Run("import", {"-window", "root", "-depth", "8", "ppm:-"}, &succeeded);
    const qsizetype size = qsizetype{3} * Width * Height;
    if (!succeeded || image.size() < size)
        throw std::runtime_error("The screen can't be read");
    return {Width, Height, image.last(size).toStdString()};
}

void Display::LetSettle() const {
    std::string before;
    const auto isStill = [&] {
        const std::string last = std::exchange(before, Look().Pixels);
        return last == before;
    };
    Becomes(isStill, std::chrono::seconds(1)); // what never rests is taken as it is
}

void Display::Save(const QString& file) const {
    bool succeeded = false;
    Run("import", {"-window", "root", file}, &succeeded);
    if (!succeeded)
        throw std::runtime_error("No picture could be written to " + file.toStdString());
}

} // namespace journey
