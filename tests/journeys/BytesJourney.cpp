// What goes over the wire, byte for byte, when a person plays with real keys.
#include "Journey.h"

#include <string>
#include <string_view>

namespace journey {
namespace {

using namespace std::string_view_literals;

class Bytes : public ServerJourney {
protected:
    void ExpectNothingMore() {
        // Whatever the client sent before its answer to this has arrived when the answer has.
        Server.Send("\xff\xfd\x18\r");
        Server.Expect("\xff\xfb\x18");
        EXPECT_EQ(Server.Unread(), "");
    }
};

TEST_F(Bytes, AnswerTheHandshakeOfAServer) {
    Connect();
    Server.Send(
        "\xff\xfd\x18\xff\xfd\x1f\xff\xfb\x01\xff\xfb\x03\xff\xfd\x01\xff\xfe\x05\xff\xfc\x05"
        "\r"sv);
    Server.Expect("\xff\xfb\x18\xff\xfc\x1f\xff\xfd\x01\xff\xfe\x03\xff\xfb\x01"sv);
    Server.Send("\xff\xfa\x18\x01\xff\xf0\r"sv);
    const std::string_view terminal("\xff\xfa\0DEC-VT100\xff\xf0", 14);
    Server.Expect(terminal);
    SendText("The gate opens.");
    Player.WaitToSee("The gate opens.");
    EXPECT_EQ(Player.Shown(), "\nAttempting connection to: 127.0.0.1The gate opens.");
    ExpectNothingMore();
}

TEST_F(Bytes, AreOneCarriageReturnALine) {
    Connect();
    Player.Enter("n;s");
    Server.Expect("n\rs\r");
    Player.Press("Return");
    Server.Expect("\r");
    Player.Enter("say What's \"that\"? (100% sure) ~{}|");
    Server.Expect("say What's \"that\"? (100% sure) ~{}|\r");
    Player.Type("look");
    Player.Press("KP_Enter");
    Server.Expect("look\r");
    ExpectNothingMore();
}

TEST_F(Bytes, AnswerTheColourProbe) {
    Connect();
    Server.Send("Checking for colour\x1b[2K\r\n\r"sv);
    Server.Expect("SMWCLIENT\r");
    ExpectNothingMore();
}

struct Key {
    char key;
    std::string_view sent;
};

TEST_F(Bytes, AreAWordForEachKeyOfTheKeypad) {
    Connect();
    Player.Type("half a line"); // stays in the command line, whatever the keypad sends
    for (const Key& row :
         {Key{'1', "southwest\r"}, Key{'2', "south\r"}, Key{'3', "southeast\r"}, Key{'4', "west\r"},
          Key{'5', "look\r"}, Key{'6', "east\r"}, Key{'7', "northwest\r"}, Key{'8', "north\r"},
          Key{'9', "northeast\r"}, Key{'+', "down\r"}, Key{'-', "up\r"}}) {
        Player.Keypad(row.key);
        Server.Expect(row.sent);
    }
    Player.Press("Return");
    Server.Expect("half a line\r");
    ExpectNothingMore();
}

TEST_F(Bytes, AreRecalledFromTheHistory) {
    Connect();
    for (const char* line : {"first", "second", "third"})
        Player.Enter(line);
    Server.Expect("first\rsecond\rthird\r");
    Player.Press("Up");
    Player.Press("Return");
    Server.Expect("third\r");
    for (int i = 0; i < 3; ++i)
        Player.Press("Up");
    Player.Press("Return");
    Server.Expect("second\r");
    ExpectNothingMore();
}

struct Arrival {
    const char* name;
    std::string_view sent;
    std::string_view shown; // behind "<"
};

const Arrival kArrivals[] = {
    {"GoAheadIsDropped", "a\xff\xf9z."sv, "az"},
    {"TwoTimes255IsOneCharacter", "a\xff\xffz."sv, "a\xc3\xbfz"},
    {"TheLastByteIsLost", "abc"sv, "ab"},
    {"TheLastByteIsLostAlsoWhenItIsAlone", "a"sv, ""},
    {"AHalfCommandAtTheEndIsLost", "ab\xff\xfd"sv, "ab"},
    {"NulTakesNoRoom", "a\0z."sv, "az"},
    {"BellIsADot", "a\x07z."sv, "a\xc2\xb7z"},
    {"WesternLetters", "\xe9\x80."sv, "\xc3\xa9\xe2\x82\xac"},
    {"AnEscapeWithoutEndWaits", "a\x1b[0;3."sv, "a"},
};

void PrintTo(const Arrival& row, std::ostream* out) { *out << row.name; }

class ArrivingBytes : public ServerJourney, public ::testing::WithParamInterface<Arrival> {};

TEST_P(ArrivingBytes, AreShownAsAPlayerShouldSeeThem) {
    Connect();
    // The answer tells that an arrival has been read, so that the next one is another.
    Server.Send("<\xff\xfd\x18\r"sv);
    Server.Expect("\xff\xfb\x18");
    Server.Send(GetParam().sent);
    const std::string expected = "127.0.0.1<" + std::string(GetParam().shown);
    Player.WaitToSee(expected);
    EXPECT_TRUE(Player.Shown().ends_with(expected)) << Player.Shown();
}

INSTANTIATE_TEST_SUITE_P(All, ArrivingBytes, ::testing::ValuesIn(kArrivals),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace journey
