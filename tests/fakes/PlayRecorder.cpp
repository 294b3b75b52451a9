// What sound triggers ask for, written down instead of played: fakes::Played.
#include "fakes/Fakes.h"
#include "sound/PlaySound.h"

#include <sstream>

namespace {

void RecordPlay(const char* kind, const std::string& fileName, const std::string& address,
                std::int32_t volume, std::int16_t priority) {
    std::ostringstream call;
    call << kind << ' ' << fileName << '|' << address << '|' << volume << '|' << priority;
    fakes::Played.push_back(call.str());
    fakes::Calls.push_back("Play " + call.str());
    if (fakes::OnCall)
        fakes::OnCall(fakes::Calls.back());
}

} // namespace

namespace mw {

void PlayWave(const std::string& fileName, const std::string& address, std::int32_t volume,
              std::int16_t priority) {
    RecordPlay("wave", fileName, address, volume, priority);
}

void PlayMusic(const std::string& fileName, const std::string& address, std::int32_t volume,
               std::int16_t priority) {
    RecordPlay("music", fileName, address, volume, priority);
}

} // namespace mw
