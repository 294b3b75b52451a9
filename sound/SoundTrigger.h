// Sound triggers of the MUD Sound Protocol: "!!SOUND(" and "!!MUSIC(" in the game text.
//
// The walk calls ParseSoundTrigger when a trigger stands at the front of IncomingBuffer, at the
// start of a line. The parser takes it out of the text and asks the players for the sound.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace mw {

// A trigger's ")" must be among this many characters.
inline constexpr std::size_t kLongestTrigger = 32767;

struct SoundTrigger {
    std::string FileName; // as in the text, without an extension added
    std::string Address;
    std::string Type;        // collected and not used
    std::int32_t Volume = 0; // 0 when none was given
    std::int16_t Priority = 0;
    std::size_t Length = 0; // characters the trigger takes up; 0 when it is not complete

    bool operator==(const SoundTrigger&) const = default;
};

// Reads the trigger at the beginning of text. Volume and priority count only when a blank follows
// their value; one that is no number or out of its range counts as not given.
SoundTrigger ReadSoundTrigger(std::string_view text);

// Takes the trigger off the front of IncomingBuffer and has it played: true. False, with the buffer
// as it was, when its ")" is not there. Shows a message when the buffer holds no trigger word.
// Raises what PlayWave and PlayMusic raise.
bool ParseSoundTrigger();

} // namespace mw
