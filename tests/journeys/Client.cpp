#include "Client.h"

#include "Wait.h"

#include <stdexcept>

#include <QDir>
#include <QFile>
#include <QProcessEnvironment>

namespace journey {
namespace {

constexpr const char* kTitle = "^Quillmere Mud Client V";

struct Keycap {
    char Key;
    const char* Code;
};

// Names such as KP_5 would change Num Lock, so the keypad's keys are pressed by their codes.
constexpr Keycap kKeypad[] = {
    {'7', "79"}, {'8', "80"}, {'9', "81"}, {'-', "82"}, {'4', "83"}, {'5', "84"},
    {'6', "85"}, {'+', "86"}, {'1', "87"}, {'2', "88"}, {'3', "89"}, {'0', "90"},
};

// Nothing of the desktop that the journey is started on reaches the program.
QProcessEnvironment CleanEnvironment(const QString& folder, const QString& display) {
    const QProcessEnvironment own = QProcessEnvironment::systemEnvironment();
    QProcessEnvironment clean;
    for (const char* kept : {"PATH", "LD_LIBRARY_PATH", "ASAN_OPTIONS", "LSAN_OPTIONS"}) {
        if (own.contains(kept))
            clean.insert(kept, own.value(kept));
    }
    clean.insert("DISPLAY", display);
    clean.insert("QT_QPA_PLATFORM", "xcb");
    clean.insert("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    clean.insert("LANG", "C.UTF-8");
    clean.insert("HOME", folder);
    clean.insert("XDG_CONFIG_HOME", folder + "/config");
    clean.insert("XDG_DATA_HOME", folder + "/data");
    clean.insert("XDG_RUNTIME_DIR", folder + "/runtime");
    clean.insert("QUILLMERE_GAME_HOST", "127.0.0.1");
    return clean;
}

} // namespace

Client::Client(const Display& screen) : Screen(&screen) {
    QDir(Folder.path()).mkpath("runtime");
    QFile::setPermissions(Folder.filePath("runtime"),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    Process.setProcessEnvironment(CleanEnvironment(Folder.path(), screen.Name));
    Process.setProcessChannelMode(QProcess::MergedChannels);
}

Client::~Client() { StopChild(Process); }

void Client::Start(const QStringList& arguments) {
    StartChild(Process, CLIENT_PROGRAM, QStringList{"--home", Folder.filePath("home")} + arguments);
    QStringList windows;
    WaitFor("the client's window", [&] {
        if (Process.state() == QProcess::NotRunning)
            throw std::runtime_error("The client ended at its start: " + Log());
        windows = Screen->Windows(kTitle);
        return !windows.isEmpty();
    });
    WaitFor("the client's window to take the keys", [&] {
        return Screen->Do({"windowfocus", windows.first()});
    });
    WaitFor("the toolbar",
            [this] { return FindToolbar(Screen->Look()).size() > DisconnectButton; });
}

int Client::StartRefused(int boxes) {
    StartChild(Process, CLIENT_PROGRAM, {"--home", Folder.filePath("home")});
    QString answered;
    for (int box = 1; box <= boxes; ++box) {
        WaitFor("message box " + std::to_string(box), [&] {
            const QStringList windows = Screen->Windows(".");
            if (windows.isEmpty() || windows.first() == answered ||
                !Screen->Do({"windowfocus", windows.first()}))
                return false;
            answered = windows.first();
            return true;
        });
        Press("Return");
    }
    return WaitForEnd();
}

void Client::Press(const QString& keys) const { Screen->Do({"key", keys}); }

void Client::Type(const QString& text) const { Screen->Do({"type", "--delay", "5", "--", text}); }

void Client::Enter(const QString& line) const {
    Type(line);
    Press("Return");
}

void Client::Keypad(char key) const {
    for (const Keycap& cap : kKeypad) {
        if (cap.Key == key)
            return Press(cap.Code);
    }
    throw std::runtime_error(std::string("The keypad has no key ") + key);
}

void Client::ClickCommandLine() const { Screen->Click(480, 661); }

void Client::ClickToolbar(ToolbarPlace place) const {
    WaitFor("a toolbar control to be usable", [&] { return CanUse(place); });
    const Area control = FindToolbar(Screen->Look()).at(place);
    Screen->Click((control.Left + control.Right) / 2, (control.Top + control.Bottom) / 2);
}

bool Client::CanUse(ToolbarPlace place) const {
    const Picture screen = Screen->Look();
    const std::vector<Area> controls = FindToolbar(screen);
    return controls.size() > place && IsUsable(screen, controls.at(place));
}

std::string Client::Shown(int height) const {
    std::string text;
    Screen->ClearClipboard();
    WaitFor("text in the output", [&] {
        Screen->Click(400, height);
        Press("ctrl+a");
        Press("ctrl+c");
        return Becomes([&] { return !(text = Screen->Clipboard()).empty(); },
                       std::chrono::seconds(1));
    });
    // Takes the selection back, elsewhere, or it would be a double click.
    Screen->Click(600, height + 50);
    ClickCommandLine();
    return text;
}

void Client::ReturnToEnd() const {
    Screen->Click(400, kUpper);
    Press("End");
    ClickCommandLine();
}

void Client::WaitToSee(std::string_view words) {
    WaitFor("the output to show \"" + std::string(words) + '"', [&] {
        const std::string text = Shown();
        const std::size_t found = text.find(words, Seen);
        if (found == std::string::npos)
            return false;
        Seen = found + words.size();
        return true;
    });
}

bool Client::HasStatus() const { return CountOf(Screen->Look(), Status, {0, 0, 0}) > 0; }

void Client::AnswerBox() const {
    const auto boxes = [this] { return Screen->Windows(".").size() - 1; };
    WaitFor("a message box", [&] { return boxes() > 0; });
    Press("Return");
    WaitFor("the message box to go", [&] { return boxes() == 0; });
}

void Client::ExitByMenu() const {
    Press("alt+f");
    Press("Up"); // from the menu's head to its last item
    Press("Return");
}

int Client::WaitForEnd() {
    WaitFor("the client to end", [this] { return Process.state() == QProcess::NotRunning; });
    return Process.exitStatus() == QProcess::NormalExit ? Process.exitCode() : -Process.exitCode();
}

std::string Client::Log() { return Process.readAll().toStdString(); }

} // namespace journey
