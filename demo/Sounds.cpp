#include "Sounds.h"

#include "Synthesis.h"
#include "World.h"

namespace world {
namespace {

constexpr std::string_view kWaveWord = "!!SOUND(";
constexpr std::string_view kMusicWord = "!!MUSIC(";
constexpr std::string_view kMusicMark = ".mid";

// In the order of Sound.
constexpr SoundFile kFiles[] = {
    {Sound::Rain, "rain.wav", "audio/wav", kWaveWord, RainWave},
    {Sound::Thunder, "thunder.wav", "audio/wav", kWaveWord, ThunderWave},
    {Sound::Bell, "bell.wav", "audio/wav", kWaveWord, BellWave},
    {Sound::Tune, "tune.mid", "audio/midi", kMusicWord, TuneMidi},
};

struct Form {
    std::string_view text;
    Cue cue;
};

// The music comes first, because of what WithoutMistakableWaves tells. No file is asked for from
// its address twice: a client may fetch the first while it reads the second.
constexpr Form kForms[] = {
    {"Music, with a volume, a priority and its address:", {Sound::Tune, 70, 50}},
    {"A bell, with a volume, a priority and its address:", {Sound::Bell, 90, 60}},
    {"Thunder, with a volume and its address:", {Sound::Thunder, 80}},
    {"Rain, with its address alone:", {Sound::Rain}},
    {"The bell again, softly, without an address:", {Sound::Bell, 30, 0, false}},
    {"And once more, by its name alone:", {Sound::Bell, 0, 0, false}},
};

void AppendNumber(std::string& trigger, std::string_view parameter, int value) {
    if (value > 0)
        trigger += std::string(parameter) + std::to_string(value);
}

} // namespace

std::span<const SoundFile> SoundFiles() { return kFiles; }

// A blank stands before the bracket: without one behind it a number does not count.
std::string Trigger(const Cue& cue, std::string_view root) {
    const SoundFile& file = kFiles[static_cast<std::size_t>(cue.sound)];
    std::string trigger(file.word);
    trigger += file.name;
    AppendNumber(trigger, " V=", cue.volume);
    AppendNumber(trigger, " P=", cue.priority);
    if (cue.hasAddress && !root.empty())
        trigger += " U=" + std::string(root) + std::string(file.name);
    trigger += " )\r\n";
    return trigger;
}

void TellWithSound(const World& world, Player& player, std::string_view colour,
                   std::string_view text, const Cue& cue) {
    Tell(player, colour, text);
    if (TakesSounds(player.telnet))
        player.lines += Trigger(cue, world.soundRoot);
}

void ShowSounds(const World& world, Player& player) {
    Tell(player, NoticeColour, "Some lines here are not for the eye: they name a sound to play.");
    if (!TakesSounds(player.telnet)) {
        Tell(player, ProseColour, "Your client has not agreed to that, so there are none for you.");
        return;
    }
    TellProse(
        player, ProseColour,
        "A client that has the file plays it. One that has not may fetch it from the address, "
        "and plays it the next time.");
    if (world.soundRoot.empty())
        Tell(player, ProseColour, "Nothing can be fetched today, so no line has an address.");
    for (const Form& form : kForms)
        TellWithSound(world, player, ExitColour, form.text, form.cue);
}

void Hush(Player& player) {
    const std::string stop = TakesSounds(player.telnet) ? "!!SOUND(Off)!!MUSIC(Off)" : "";
    Tell(player, NoticeColour, "You ask for silence, and get it." + stop);
}

std::string WithoutMistakableWaves(std::string lines) {
    const std::size_t mark = lines.rfind(kMusicMark);
    if (mark == std::string::npos)
        return lines;
    std::string left;
    std::size_t begin = 0;
    while (begin < mark) {
        const std::size_t end = lines.find('\n', begin);
        if (end == std::string::npos)
            break;
        const std::size_t next = end + 1;
        if (lines.compare(begin, kWaveWord.size(), kWaveWord) != 0)
            left.append(lines, begin, next - begin);
        begin = next;
    }
    return left.append(lines, begin);
}

} // namespace world
