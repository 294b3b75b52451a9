// The sound players. None of the calls waits for a sound to end.
#pragma once

#include <cstdint>
#include <string>

namespace mw {

// Plays a wave sound or music of the current game, by file name. address is where the file can be
// fetched, the extension alone when the server gave none. volume (0 to 100) and priority are 0 when
// not given.
void PlayWave(const std::string& fileName, const std::string& address, std::int32_t volume,
              std::int16_t priority);
void PlayMusic(const std::string& fileName, const std::string& address, std::int32_t volume,
               std::int16_t priority);

namespace wavPlayer {
void Stop();
}

namespace midiPlayer {
void Stop();
}

} // namespace mw
