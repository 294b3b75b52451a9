// The telnet protocol of one connection (RFC 854, with 857 echo, 1091 terminal type, 1073 window
// size, and option 90 of the MUD Sound Protocol), without any input or output of its own.
//
// The server hands in bytes as they arrive, cut anywhere, and gets back whole lines and the bytes
// to answer with. An option is answered only when its state changes, so no two ends can loop.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace world {

inline constexpr std::size_t MaxLine = 512;          // the rest of a longer line is dropped
inline constexpr std::size_t MaxSubnegotiation = 64; // far above any terminal name or window size

enum class OptionState : std::uint8_t { Off, Asked, On, Refused };

// Where one connection stands between two calls of Decode.
struct Telnet {
    enum class Stage : std::uint8_t { Data, Command, Option, Sub, SubCommand };
    Stage stage = Stage::Data;
    std::uint8_t verb = 0;                 // the DO, DONT, WILL or WONT whose option comes next
    bool afterCr = false;                  // a LF or NUL now belongs to the CR before it
    std::string line;                      // the line that has no end yet
    std::string sub;                       // the sub-negotiation that has no end yet
    std::array<OptionState, 256> ours{};   // what this end does: WILL and WONT
    std::array<OptionState, 256> theirs{}; // what the other end does: DO and DONT
    bool hidesTyping = false;              // as last wished, whatever the other end made of it
    std::string terminal;                  // its name, at most 40 printable characters
    int columns = 0;                       // 0 while the window size is unknown
};

// What a run of bytes came to: the lines it completed, without their ends, and bytes to send.
struct TelnetInput {
    std::vector<std::string> lines;
    std::string replies;
};

// Whether the client has agreed to be asked for sounds.
bool TakesSounds(const Telnet& telnet);

// The requests that open a connection: terminal type, window size and sounds.
std::string Opening(Telnet& telnet);

// Asks the other end to stop showing what is typed, or to show it again. Empty when that was asked
// already: an end that refuses is not asked a second time.
std::string HideTyping(Telnet& telnet, bool hide);

// Takes bytes as they came. Malformed telnet is dropped; memory stays within the two limits above.
TelnetInput Decode(Telnet& telnet, std::string_view bytes);

} // namespace world
