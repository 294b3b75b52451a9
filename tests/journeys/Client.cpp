#include "Client.h"

#include "Files.h"
#include "Wait.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPoint>
#include <QProcessEnvironment>

namespace journey {
namespace {

constexpr const char* kUntitled = "^Quillmere Mud Client$"; // the splash, and message boxes
constexpr const char* kNameless = "^$";                     // menus, and the lists of choosers
constexpr int kSplashWidth = 380;
constexpr int kSplashHeight = 230;
constexpr Area kSplashTitle{310, 235, 690, 345};
constexpr QPoint kCommandLine{480, 661};
constexpr int kFewestPixels = 25;
constexpr int kText = 1; // the type of a setting

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
    clean.insert("SDL_AUDIODRIVER", "disk"); // no sound device is needed
    clean.insert("SDL_DISKAUDIOFILE", folder + "/sound.raw");
    clean.insert("QUILLMERE_GAME_HOST", "127.0.0.1");
    clean.insert("QUILLMERE_WEB_ROOT", "http://127.0.0.1:9"); // nothing answers there
    return clean;
}

bool IsSplash(const Display& screen, const QString& window) {
    const Area place = screen.PlaceOf(window);
    return place.Right - place.Left == kSplashWidth && place.Bottom - place.Top == kSplashHeight;
}

} // namespace

Client::Client(const Display& screen) : Home(Folder.filePath("home")), Screen(&screen) {
    QDir(Folder.path()).mkpath("runtime");
    QFile::setPermissions(Folder.filePath("runtime"),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    Process.setProcessEnvironment(CleanEnvironment(Folder.path(), screen.Name));
    Process.setProcessChannelMode(QProcess::MergedChannels);
    Keep({});
}

Client::~Client() {
    Process.kill();
    Process.waitForFinished();
}

void Client::Set(const QString& variable, const QString& value) {
    QProcessEnvironment environment = Process.processEnvironment();
    environment.insert(variable, value);
    Process.setProcessEnvironment(environment);
}

void Client::Keep(const KeptPlace& place) const {
    const auto text = [](const QString& value) {
        return QJsonObject{{"type", kText}, {"value", value}};
    };
    const QJsonObject windows{{"gTop", text(place.Top)},
                              {"gLeft", text(place.Left)},
                              {"gWidth", text(place.Width)},
                              {"gHeight", text(place.Height)}};
    const QJsonDocument store(QJsonObject{{"SOFTWARE\\MwClient\\Windows", windows}});
    PutFile(SettingsFile(), store.toJson().toStdString());
}

void Client::HoldLookups() {
    Set("LD_PRELOAD", HELD_LOOKUP);
    Set("QUILLMERE_HELD_LOOKUP", HeldLookup());
}

QString Client::HeldLookup() const { return Folder.filePath("lookup"); }

QString Client::SettingsFile() const { return Folder.filePath("config/quillmere/registry.json"); }

void Client::Launch(const QStringList& arguments) {
    Seen = 0;
    StartChild(Process, qEnvironmentVariable("QUILLMERE_PROGRAM", CLIENT_PROGRAM),
               QStringList{"--home", Home} + arguments);
}

void Client::WaitForSplash() const {
    constexpr Colour kDarkBlue{0, 0, 160};
    constexpr Colour kPurple{140, 0, 140};
    WaitFor("the splash with its title", [&] {
        const Picture screen = Screen->Look();
        return ShowsSplash() && CountOf(screen, kSplashTitle, kDarkBlue) > kFewestPixels &&
               CountOf(screen, kSplashTitle, kPurple) > kFewestPixels;
    });
}

void Client::WaitForFrame() {
    QStringList windows;
    WaitFor("the client's window", [&] {
        if (Process.state() == QProcess::NotRunning)
            throw std::runtime_error("The client ended at its start: " + Log());
        windows = Windows(kFrame);
        return !windows.isEmpty();
    });
    WaitFor("the client's window to take the keys", [&] {
        return Screen->Do({"windowfocus", windows.first()});
    });
    WaitFor("the splash to go", [this] { return !ShowsSplash(); });
    WaitFor("the client's menu bar", [&] {
        const Area frame = Screen->PlaceOf(windows.first());
        return ColourAt(Screen->Look(), (frame.Left + frame.Right) / 2, frame.Top + 3).Red > 128;
    });
}

void Client::Start(const QStringList& arguments) {
    Launch(arguments);
    WaitForFrame();
    WaitFor("the toolbar", [this] { return HasToolbar(); });
}

QStringList Client::Windows(const QString& title) const {
    return Screen->Windows(title, Process.processId());
}

bool Client::ShowsSplash() const {
    const QStringList windows = Windows(kUntitled);
    return std::ranges::any_of(windows,
                               [this](const QString& id) { return IsSplash(*Screen, id); });
}

QStringList Client::Boxes() const {
    QStringList boxes = Windows(kUntitled);
    boxes.removeIf([this](const QString& id) { return IsSplash(*Screen, id); });
    return boxes;
}

void Client::TakeKeys(const QString& title) const {
    WaitFor("the window " + title.toStdString(), [&] {
        const QStringList windows = Windows(title);
        return !windows.isEmpty() && Screen->Do({"windowfocus", windows.last()});
    });
}

void Client::WaitToClose(const QString& title) const {
    WaitFor(title.toStdString() + " to close", [&] { return Windows(title).isEmpty(); });
}

void Client::Press(const QString& keys) const { Press(QStringList{keys}); }

void Client::Press(const QStringList& keys) const { Screen->Do(PressOf(keys)); }

void Client::Type(const QString& text) const { Screen->Do({"type", "--delay", "1", "--", text}); }

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

void Client::ChooseFromMenu(const QString& menuKey, const QStringList& keys) const {
    Press(menuKey);
    ChooseFromList(keys);
}

void Client::ChooseFromList(const QStringList& keys) const {
    WaitFor("a list to open", [this] { return HasList(); });
    Press(keys);
    WaitFor("the list to close", [this] { return !HasList(); });
}

bool Client::HasList() const { return !Windows(kNameless).isEmpty(); }

void Client::ClickCommandLine() const { Screen->Click(kCommandLine.x(), kCommandLine.y()); }

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

bool Client::HasToolbar() const { return FindToolbar(Screen->Look()).size() > DeleteButton; }

void Client::ToggleToolbar() const {
    const bool hadToolbar = HasToolbar();
    ChooseFromMenu("alt+c", {"Up", "Return"}); // the last item; two have its access key
    WaitFor(hadToolbar ? "the toolbar to go" : "the toolbar to come",
            [&] { return HasToolbar() != hadToolbar; });
}

std::string Client::Shown() const {
    std::string text;
    WaitFor("text in the output", [&] { return !(text = Copied()).empty(); });
    return text;
}

std::string Client::Copied() const {
    std::string text;
    Screen->ClearClipboard();
    Screen->Do(ClickAt(400, kUpper) + PressOf({"ctrl+a", "ctrl+c"}));
    if (Becomes([&] { return !(text = Screen->Clipboard()).empty(); }, std::chrono::seconds(1)))
        Last = text;
    // Takes the selection back, elsewhere, or it would be a double click.
    Screen->Do(ClickAt(600, kUpper + 50) + ClickAt(kCommandLine.x(), kCommandLine.y()));
    return text;
}

std::string Client::LastShown() const { return Last; }

// A pale line, the divider between the boxes, crosses the output beside the text.
bool Client::IsScrolledBack() const {
    constexpr Area kBesideText{900, 430, 901, 460};
    return CountOf(Screen->Look(), kBesideText, {0, 0, 0}) < kBesideText.Bottom - kBesideText.Top;
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
    QString box;
    WaitFor("a message box", [&] {
        box = Boxes().value(0);
        return !box.isEmpty() && Screen->Do({"windowfocus", box});
    });
    Press("Return");
    WaitFor("the message box to go", [&] { return !Boxes().contains(box); });
}

void Client::ExitByMenu() const { Press({"alt+f", "e"}); }

int Client::WaitForEnd() {
    WaitFor("the client to end", [this] { return Process.state() == QProcess::NotRunning; });
    return Process.exitStatus() == QProcess::NormalExit ? Process.exitCode() : -Process.exitCode();
}

QString Client::SoundFile() const { return Folder.filePath("sound.raw"); }

int Client::Loudest() const {
    const std::string bytes = FileText(SoundFile()); // 16 bits a sample, the low ones first
    int loudest = 0;
    for (std::size_t at = 1; at < bytes.size(); at += 2) {
        const int low = static_cast<unsigned char>(bytes[at - 1]);
        const int high = static_cast<unsigned char>(bytes[at]);
        loudest = std::max(loudest, std::abs(static_cast<std::int16_t>(high << 8 | low)));
    }
    return loudest;
}

std::string Client::Log() { return Process.readAll().toStdString(); }

} // namespace journey
