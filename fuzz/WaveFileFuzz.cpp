// Any bytes as the beginning of a wave file that a web server sent.
#include "fuzz/Input.h"
#include "sound/WaveFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const std::string head = Text(bytes, count);
    if (!mw::IsPlayableWave(head.substr(0, count / 2), count))
        return 0;
    Must(mw::IsPlayableWave(head, count)); // the rest can't spoil what is there
    Must(mw::IsPlayableWave(head, count / 2));
    return 0;
}
