#include "Sounds.h"

#include "Wait.h"

#include <stdexcept>

#include <QFile>

namespace journey {
namespace {

constexpr const char* kOptions = "^Sound$";
constexpr int kLoud = 2000; // of 32768, where silence is 0 throughout

} // namespace

void OpenSoundOptions(const Client& player) {
    player.Press({"alt+c", "s"});
    player.TakeKeys(kOptions);
}

void CloseSoundOptions(const Client& player) {
    player.Press("Return"); // Done
    player.WaitToClose(kOptions);
    player.TakeKeys(Client::kFrame);
}

void Toggle(const Client& player, const std::vector<SoundOption>& options) {
    int focus = EnableMsp;
    for (const SoundOption option : options) {
        for (; focus < option; ++focus)
            player.Press("Tab");
        player.Press("space"); // at once; by its letter a box would take a tenth of a second
    }
}

void ChangeSoundOptions(const Client& player, const std::vector<SoundOption>& options) {
    OpenSoundOptions(player);
    Toggle(player, options);
    CloseSoundOptions(player);
}

FileTexts SoundsOf(const Client& player) { return FilesBelow(player.Home + "/127.0.0.1/sounds"); }

void WaitForSound(const Client& player, const std::string& name) {
    WaitFor(name + " to be there", [&] { return SoundsOf(player).contains(name); });
    player.WaitToClose(kDownload);
}

void WaitToHear(const Client& player) {
    int loudest = 0;
    if (!Becomes([&] { return (loudest = player.Loudest()) > kLoud; }))
        throw std::runtime_error("Waited for a loud sound, and the loudest sample is " +
                                 std::to_string(loudest));
}

bool IsSilent(const Client& player) { return !QFile::exists(player.SoundFile()); }

} // namespace journey
