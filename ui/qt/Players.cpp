// The players of a build without sound: what is asked for is not played.
#include "ui/Players.h"

namespace mw {

void PlayWave(const std::string&, const std::string&, std::int32_t, std::int16_t) {}

void PlayMusic(const std::string&, const std::string&, std::int32_t, std::int16_t) {}

void wavPlayer::Stop() {}

void midiPlayer::Stop() {}

} // namespace mw
