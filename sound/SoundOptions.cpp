#include "sound/SoundOptions.h"

#include "config/MudList.h"

namespace mw {
namespace {

MudEntry& Current() {
    MudAt(CurrentMud); // raises when there is none
    return MudList[static_cast<std::size_t>(CurrentMud)];
}

} // namespace

void chkMSP_Click(bool checked) {
    MudEntry& mud = Current();
    mud.Msp = mud.SndW = mud.SndM = mud.SndD = checked;
}

void chkWave_Click(bool checked) { Current().SndW = checked; }

void chkMidi_Click(bool checked) { Current().SndM = checked; }

void chkDownloads_Click(bool checked) { Current().SndD = checked; }

} // namespace mw
