// The windows of the downloads, and the boxes that the web causes.
#pragma once

#include <cstdint>
#include <string>

namespace mw {

// A download window, under the number of its download. slot is shown nowhere, but kept on the
// window's label. Closing the window in any way calls frmDownload_Unload (net/http/DownLoad.h).
// None of the calls nests.
void OpenDownloadWindow(std::int32_t download, std::int16_t slot, const std::string& fileName);
void SetProgress(std::int32_t download, std::int16_t percent);
void CloseDownloadWindow(std::int32_t download);

// Shows text in a box of its own and returns at once; WebBox_Closed (net/http/WebBoxes.h) is called
// when the player has closed it. isError: with the critical icon and the title "Error".
void ShowWebBox(const std::string& text, bool isError);

// Takes that box away, if there is one, without telling.
void HideWebBox();

} // namespace mw
