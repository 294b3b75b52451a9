// The sound switches of the current game, as the dialog frmSndSetup changes them. They reach the
// file when the mud list is saved next.
#pragma once

namespace mw {

// Each raises Subscript out of range without a current game.

// "Enable MSP": all four switches follow it.
void chkMSP_Click(bool checked);

void chkWave_Click(bool checked);
void chkMidi_Click(bool checked);
void chkDownloads_Click(bool checked);

} // namespace mw
