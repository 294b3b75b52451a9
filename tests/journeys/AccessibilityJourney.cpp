// A visit to the demo world without eyes and mouse: every control is found by its role and name on
// the accessibility bus, and what the game says is heard there.
#include "AccessibilityBus.h"
#include "Files.h"
#include "Journey.h"
#include "Wait.h"

namespace journey {
namespace {

constexpr int kFocused = 12; // a state
constexpr int kReturn = 0xff0d;

class Accessibility : public WorldJourney {
protected:
    Accessibility() {
        PutTownInTheList();
        Player.Set("DBUS_SESSION_BUS_ADDRESS", Reader.SessionAddress);
        Player.Set("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    }

    void Say(const QString& line) const {
        Reader.Write("Command line", line);
        Reader.PressKey(kReturn);
    }

    void ComeInByName() {
        Reader.Press("push button", "Connect");
        Reader.WaitToHear("By what name are you known?");
        Say("ada");
        Reader.WaitToHear("Choose a password");
        Say("goose7");
        Reader.WaitToHear("Welcome to Quillmere, Ada.");
        Reader.WaitToHear("] >");
    }

    void MakeTrigger(const QString& text, const QString& reaction) const {
        Reader.Press("menu item", "Triggers");
        Reader.Find("dialog", "Triggers");
        Reader.Press("push button", "New");
        Reader.Write("When a line contains", text);
        Reader.Write("send this reaction", reaction);
        Reader.Press("push button", "Add");
        Reader.Find("list item", text);
        Reader.Press("push button", "Done");
        WaitFor("the editor to close", [this] { return !Reader.Has("dialog", "Triggers"); });
        Player.TakeKeys(Client::kFrame);
    }

    AccessibilityBus Reader{Screen};
};

TEST_F(Accessibility, TheWorldIsPlayedByNamesAndEventsAlone) {
    Player.Start();
    ComeInByName();
    EXPECT_TRUE(Reader.HasState(Reader.Find("combo box", "Command line"), kFocused) ||
                Reader.HasState(Reader.Find("text", "Command line"), kFocused));
    EXPECT_EQ(Reader.Name(Reader.Find("label", "Connected to")), "Connected to: Quillmere");

    Say("north");
    Reader.WaitToHear("North Gate");
    Reader.WaitForInsertion("North Gate");
    const Control output = Reader.Find("text", "Game output");
    const QString text = Reader.TextOf(output);
    const auto place = text.lastIndexOf("North Gate");
    ASSERT_GE(place, 0) << text.toStdString();
    EXPECT_EQ(Reader.LineAt(output, static_cast<int>(place) + 3).trimmed(), "North Gate");

    MakeTrigger("You say: hello", "score");
    Say("say hello");
    Reader.WaitToHear("You say: hello");
    Reader.WaitToHear("Ada: 20 of 20 life");

    Reader.Press("menu item", "Exit");
    EXPECT_EQ(Player.WaitForEnd(), 0);
    EXPECT_NE(FileText(Player.Home + "/Macros/Default.mco").find("Trigger=You say: hello\r\n"),
              std::string::npos);
}

} // namespace
} // namespace journey
