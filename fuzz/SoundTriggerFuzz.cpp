// Any text behind a trigger's opening: parsed, and what it asks for looked up and fetched.
#include "config/MudList.h"
#include "fuzz/Fresh.h"
#include "sound/SoundTrigger.h"
#include "terminal/IncomingBuffer.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const Fresh fresh;
    mw::MudList[0].SndW = mw::MudList[0].SndD = true;
    mw::Append(mw::IncomingBuffer, count % 2 == 0 ? "!!SOUND(" : "!!MUSIC(");
    mw::Append(mw::IncomingBuffer, Text(bytes, count));
    const std::size_t before = mw::View(mw::IncomingBuffer).size();
    const bool complete = mw::ParseSoundTrigger();
    // Taken out exactly when it is complete.
    Must(complete == (mw::View(mw::IncomingBuffer).size() < before));
    return 0;
}
