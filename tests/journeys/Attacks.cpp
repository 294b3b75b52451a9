#include "Attacks.h"

#include <iterator>

namespace journey {
namespace {

using namespace std::string_literals;

constexpr unsigned kSeed = 1; // of what is random and the same in every run
constexpr std::size_t kBlock = 30000;

const std::string kWords = "The tide comes in over the ferry stage. ";
const std::string kLine = kWords + "\r\n";
const std::string kDigits(40, '9');

std::string Times(std::size_t count, const std::string& text) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

// The text as often as it takes to be worth a send.
std::string Much(const std::string& text) { return Times(kBlock / text.size() + 1, text); }

std::string EveryByte() {
    std::string bytes;
    for (int code = 0; code < 256; ++code)
        bytes += static_cast<char>(code);
    return bytes;
}

std::string RandomBytes() {
    std::mt19937 random(kSeed);
    std::uniform_int_distribution<int> code(0, 255);
    std::string bytes;
    while (bytes.size() < 10 * kBlock)
        bytes += static_cast<char>(code(random));
    return bytes;
}

// One command for each option.
std::string OfEveryOption(const std::string& command) {
    std::string bytes;
    for (const char option : EveryByte())
        bytes += command + option;
    return bytes;
}

// Each with another name.
std::string MissingSounds() {
    std::string triggers;
    for (int number = 0; triggers.size() < kBlock; ++number)
        triggers += "\r\n!!SOUND(gone" + std::to_string(number) + " )";
    return triggers;
}

std::string FixedMixture() {
    std::mt19937 random(kSeed);
    return Mixture(random, 10 * kBlock);
}

constexpr std::size_t kOptions = 300000; // bytes of a hundred thousand commands
// The answer is twice as long, and a client is right to leave who does not read it in time.
constexpr std::size_t kQuestions = 100000; // bytes
constexpr std::size_t kTriggers = 200000;  // bytes, thousands of triggers

} // namespace

std::vector<Attack> TextAttacks() {
    return {
        {"LinesWithoutEnd", "", Much(kLine)},
        {"AnEndlessLine", "", Much(kWords)},
        {"AnEndlessWord", "", Much("x")},
        {"APromptWithoutALineEnd", "", Much("[20 of 20] > ")},
        {"AnEndlessSequence", "\x1b[", Much("31;")},
        {"AnEscWithoutEndThenLines", "\x1b", Much("a stone falls into the well\r\n")},
        {"NothingButEscs", "", Much("\x1b")},
        {"BeginningsOfSequences", "", Much("\x1b[")},
        {"BeginningsOfSequencesAndText", "", Much("\x1b[0;3a stone falls\r\n")},
        {"SequencesCutByLineBreaks", "", Much("\x1b[0;\r\n31\r\nm")},
        {"ColourCodesWithoutText", "", Much("\x1b[0;31m\x1b[0;32m")},
        {"AColourForEachLetter", "", Much("\x1b[0;31ma\x1b[0;32mb")},
        {"AColourForEachShortLine", "", Much("\x1b[0;31ma\r\n\x1b[0;32mb\r\n")},
        {"ColoursOfTenThousandParameters", "", "\x1b[" + Times(10000, "1;") + "31mred\r\n"},
        {"ColoursOfHugeParameters", "", "\x1b[" + std::string(20000, '9') + "mwhite\r\n"},
        {"ColoursOfNegativeParameters", "", Much("\x1b[-1;-" + kDigits + "mwhite\r\n")},
        {"QuestionsForTheClientsName", "", Much("\x1b[2K\r\n"), kQuestions, 2000, 1},
        {"CursorsThatAreMovedAndScreensThatAreCleared", "", Much("\x1b[2J\x1b[999;999Hm\x1b]0;xm")},
        {"Nuls", "", std::string(kBlock, '\0')},
        {"EveryByteOverAndOver", "", Much(EveryByte())},
        {"RandomBytes", "", RandomBytes()},
        {"AnythingInAnyOrder", "", FixedMixture(), 300000},
        {"OnlyCarriageReturns", "", Much("\r")},
        {"OnlyLineFeeds", "", Much("\n")},
        {"LineBreaksTheWrongWayRound", "", Much("\n\r")},
        {"OnlyTabs", "", Much("\t")},
        {"OnlyBlanks", "", Much(" ")},
        {"BellsAndBackspaces", "", Much("\a\b\x7f")},
        {"LettersOfOtherEncodings", "", Much("\xc3\xa9\xe6\xbc\xa2\xf0\x9f\x8c\x8a\xfe\xfd\x81")},
        {"MarkUp", "", Much("<b>&amp;<img src=x><table><tr><td>\r\n")},
        {"OneByteAPacket", "", Much(kLine), 30000, 1},
        {"OneByteInTenMilliseconds", "", kLine, 30, 1, 10},
    };
}

std::vector<Attack> TelnetAttacks() {
    return {
        {"WillForEveryOption", "", Much(OfEveryOption("\xff\xfb")), kOptions},
        {"WontForEveryOption", "", Much(OfEveryOption("\xff\xfc")), kOptions},
        {"DoForEveryOption", "", Much(OfEveryOption("\xff\xfd")), kOptions},
        {"DontForEveryOption", "", Much(OfEveryOption("\xff\xfe")), kOptions},
        {"OneOptionOnAndOff", "", Much("\xff\xfb\x01\xff\xfc\x01\xff\xfd\x01\xff\xfe\x01"),
         kOptions},
        {"EscapedBytes", "", Much("\xff\xff")},
        {"GoAheadsAndOtherCommands", "", Much("\xff\xf9\xff\xf1\xff\xf4\xff\xf6\xff\xf0")},
        {"ASubNegotiationWithoutEnd", "\xff\xfa\x18", Much(kWords)},
        {"BeginningsOfSubNegotiations", "", Much("\xff\xfa\xff\xfa\x18"), kQuestions, 2000, 1},
        {"QuestionsForTheTerminal", "", Much("\xff\xfa\x18\x01\xff\xf0"), kQuestions, 2000, 1},
        {"HalfCommandsAtArrivalEnds", "", "ab\xff" + "cd\xff\xfd"s + "ef\xff\xfa\x18", 10000, 3},
        {"CommandsInTheMiddleOfSequences", "", Much("\x1b[0;\xff\xf9"s + "31\xff\xfb\x03mred\r\n"),
         kOptions},
    };
}

std::vector<Attack> SoundAttacks() {
    const std::string wave = "\r\n!!SOUND(drop.wav V=20 )";
    const std::string music = "\r\n!!MUSIC(tune.mid V=20 )";
    return {
        {"Sounds", "", Much(wave), kTriggers},
        {"Music", "", Much(music), kTriggers},
        {"SoundsAndMusic", "", Much(wave + music), kTriggers},
        {"Stops", "", Much("!!SOUND(Off)!!MUSIC(Off)")},
        {"SoundsAndTheirStops", "", Much(wave + "!!SOUND(Off)"), kTriggers},
        {"LongSoundsAndTheirStops", "", Much("\r\n!!SOUND(long.wav )!!SOUND(Off)"), kTriggers},
        {"MusicAndItsStops", "", Much(music + "!!MUSIC(Off)"), kTriggers},
        {"SoundsThatAreMissing", "", MissingSounds(), kTriggers},
        {"BeginningsOfTriggers", "", Much("\r\n!!SOUND(rain\r\n!!MUSIC(\r\n!!SOUND"), kTriggers},
        {"ATriggerWithoutEnd", "\r\n!!SOUND(", Much("rain")},
        {"TriggersInTriggers", "", Much("\r\n!!SOUND(!!MUSIC(!!SOUND(rain)))"), kTriggers},
        {"TriggersThatAreLong", "", "\r\n!!SOUND(" + std::string(30000, 'a') + ")"},
        {"TriggersWithNuls", "", Much("\r\n!!SOUND(ra\0in\0.wav \0V=\0)"s), kTriggers},
        {"TriggersWithLineBreaks", "", Much("\r\n!!SOUND(ra\r\nin.wav\r\nV=20\r\n)\r\n"),
         kTriggers},
        {"AThousandBracketsATrigger", "", "\r\n!!SOUND(drop.wav V=1 " + std::string(1000, ')')},
        {"NumbersOfFortyDigits", "",
         Much("\r\n!!SOUND(drop.wav V=" + kDigits + " L=" + kDigits + " P=" + kDigits + " )"),
         kTriggers},
        {"NumbersBelowNothing", "", Much("\r\n!!SOUND(drop.wav V=-" + kDigits + " L=-1 P=-32769 )"),
         kTriggers},
        {"NumbersThatAreNone", "", Much("\r\n!!MUSIC(tune.mid V=1e9 P=&HFFFFFFFF L=nan )"),
         kTriggers},
        {"WordsThatAreAlmostTriggers", "", Much("\r\n!!sound(rain)\r\n!SOUND(rain)\r\n!!!")},
    };
}

std::string Mixture(std::mt19937& random, std::size_t size) {
    static const std::string kParts[] = {
        "\x1b",
        "\x1b[",
        "0;31m",
        "\x1b[0;1;32m",
        "\x1b[1;5;34m",
        "\x1b[2K",
        ";",
        "m",
        "\xff",
        "\xff\xff",
        "\xff\xfb\x01",
        "\xff\xfd\x1f",
        "\xff\xfa\x18\x01\xff\xf0",
        "\xff\xfa\x1f",
        "\xff\xf9",
        "\r",
        "\n",
        "\r\n",
        "\0"s,
        "\t",
        "\x8f\xe9",
        "\r\n!!SOUND(",
        "\r\n!!MUSIC(",
        "!!SOUND(Off)",
        "rain.wav",
        " V=50 ",
        " P=-1 ",
        ")",
        "!",
        kWords,
        kLine,
        std::string(300, 'x'),
    };
    std::uniform_int_distribution<std::size_t> part(0, std::size(kParts) - 1);
    std::string text;
    while (text.size() < size)
        text += kParts[part(random)];
    return text;
}

} // namespace journey
