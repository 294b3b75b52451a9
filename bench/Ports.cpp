// The ports for the benches: they answer what the rules need and do nothing. The settings store and
// the version check are the real ones.
#include "sound/PlaySound.h"
#include "ui/BrowserControls.h"
#include "ui/Clock.h"
#include "ui/Disk.h"
#include "ui/DownloadControls.h"
#include "ui/Events.h"
#include "ui/FrameControls.h"
#include "ui/Inet.h"
#include "ui/InputControls.h"
#include "ui/MessageBox.h"
#include "ui/OutputControls.h"
#include "ui/Players.h"
#include "ui/Socket.h"
#include "ui/SplashControls.h"
#include "ui/UpdateControls.h"
#include "ui/UserSettings.h"

namespace mw {

namespace {
std::size_t OutputLength = 0;
}

void ShowMessage(std::string_view) {}
std::string GeneralDate() { return {}; }
void DoEvents() {}

void wskTCP::SendData(std::string_view) {}
std::int16_t wskTCP::State() { return SocketConnected; }

std::size_t rtfOutPut::TextLength() { return OutputLength; }
void rtfOutPut::Append(std::string_view text, std::int32_t, const std::string&,
                       const std::string&) {
    OutputLength += text.size();
}
void rtfOutPut::RemoveFirst(std::size_t count) { OutputLength -= count; }
void rtfOutPut::MoveCaretToEnd() {}
void rtfOutPut::SetRedraw(bool) {}

void rtfScroll::ShowCopyOfOutput() {}
void rtfScroll::Hide() {}

std::int16_t vslRTF::Max() { return 0; }
std::int16_t vslRTF::Value() { return 0; }
void vslRTF::SetMaxAndValue(std::int16_t) {}
void vslRTF::SetChange(std::int16_t, std::int16_t) {}

std::string cboInput::Text() { return {}; }
void cboInput::SetText(std::string_view) {}
std::size_t cboInput::TextLength() { return 0; }
void cboInput::Select(std::size_t, std::size_t) {}
void cboInput::AddItem(std::string_view) {}
void cboInput::RemoveFirstItem() {}

void stsBar::SetPanel(Panel, std::string_view) {}
void ShowFrame() {}

void SetCaption(SplashLabel, std::string_view) {}
void SetEnabled(SplashTimer, bool) {}
void ShowSplash() {}
void UnloadSplash() {}
void SetCaption(UpdateLabel, std::string_view) {}
void LoadUpdatePrompt() {}
void ShowUpdatePrompt() {}

void ShowBrowser() {}
void SetBrowserCaption(const std::string&) {}
void SetWorkCaption(const std::string&) {}
void SetNavTimer(bool) {}
std::string cboAdd::Text() { return {}; }
void cboAdd::SetText(const std::string&) {}
void cboAdd::AddItem(const std::string&) {}
void wbrScreen::Navigate(const std::string&) {}
void wbrScreen::GoBack() {}
void wbrScreen::GoForward() {}
void wbrScreen::Stop() {}
void wbrScreen::Refresh() {}
bool wbrScreen::Busy() { return false; }
std::string wbrScreen::LocationName() { return {}; }
std::string wbrScreen::LocationURL() { return {}; }

void SaveUserSetting(const std::string&, const std::string&, const std::string&,
                     const std::string&) {}
void PlayWave(const std::string&, const std::string&, std::int32_t, std::int16_t) {}
void PlayMusic(const std::string&, const std::string&, std::int32_t, std::int16_t) {}
void wavPlayer::Stop() {}
void midiPlayer::Stop() {}

void OpenDownloadWindow(std::int32_t, std::int16_t, const std::string&) {}
void SetProgress(std::int32_t, std::int16_t) {}
void CloseDownloadWindow(std::int32_t) {}
void ShowWebBox(const std::string&, bool) {}
void HideWebBox() {}
std::uint64_t FreeSpace(const std::filesystem::path&) { return 0; }
void inet::Execute(std::int32_t, const inet::Request&) {}
std::optional<std::string> inet::GetHeader(std::int32_t) { return std::nullopt; }
std::optional<std::string> inet::GetChunk(std::int32_t, std::size_t) { return std::nullopt; }
void inet::Cancel(std::int32_t) {}

} // namespace mw
