// The prompt frmUpdate, which announces a newer client. None of the calls nests.
#pragma once

#include <string_view>

namespace mw {

enum class UpdateLabel { lblCurVer, lblCurVersion, lblYourVersion };

void SetCaption(UpdateLabel label, std::string_view text);

// Makes the prompt without showing it; its load calls frmUpdate_Load (net/http/VersionCheck.h).
void LoadUpdatePrompt();

// Shows the prompt on top of whatever else is open. Nothing happens when there is none.
void ShowUpdatePrompt();

} // namespace mw
