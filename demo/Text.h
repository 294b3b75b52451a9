// The look of the world: colours, lines, and the frame of a message.
//
// Everything a player reads is built here. A line always begins with its colour, because the client
// checks its triggers once per colour run; only what asks for a sound (Sounds.h) has none. A
// message is what one write to a socket carries.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace world {

// The client compares colour codes whole: "0;" or "0;1;" and one of 30 to 37 are the ones it knows.
inline constexpr std::string_view TitleColour = "\x1b[0;1;33m";
inline constexpr std::string_view ProseColour = "\x1b[0;37m";
inline constexpr std::string_view NoticeColour = "\x1b[0;1;37m";
inline constexpr std::string_view ExitColour = "\x1b[0;36m";
inline constexpr std::string_view CreatureColour = "\x1b[0;1;31m";
inline constexpr std::string_view PeopleColour = "\x1b[0;1;32m";
inline constexpr std::string_view SpeechColour = "\x1b[0;1;36m";
inline constexpr std::string_view HungerColour = "\x1b[0;33m";
inline constexpr std::string_view PromptColour = "\x1b[0;32m";

inline constexpr std::size_t ProseWidth = 78;
inline constexpr std::size_t MaxSpeech = 200; // what one player's line may put on another's screen

// One line of text in one colour, with its line end.
std::string Line(std::string_view colour, std::string_view text);

// Text broken at blanks into lines of at most width characters. A longer word keeps its length.
std::string Prose(std::string_view colour, std::string_view text, std::size_t width = ProseWidth);

// What a player typed, safe to show to others: no control characters, no byte 255, no blanks at
// either end, at most MaxSpeech characters, and of exclamation marks in a row the first alone: two
// begin what makes a client play or stop sounds, and it heeds a stop wherever it stands.
std::string Clean(std::string_view typed);

// For the front of a sentence: with a capital when it begins in a small letter.
std::string Capital(std::string_view text);

// The whole text when there is no blank in it.
std::string_view LastWord(std::string_view text);

// A to Z become a to z; every other byte stays.
std::string Lower(std::string_view text);

// What one write carries.
struct Outgoing {
    std::string negotiation;
    std::string lines;
    std::string prompt;
    bool afterPrompt = true; // the write before ended with a prompt, or there was none
    std::string probe;       // a sequence that the client answers; nothing may stand behind it
};

bool IsEmpty(const Outgoing& outgoing);

// Frames a write. The client loses the last byte of every chunk it reads and holds back line breaks
// that end one, so text that follows a prompt begins with a line break, and all ends with a CR to
// lose. An empty prompt is left out together with its go-ahead.
std::string Message(const Outgoing& outgoing);

} // namespace world
