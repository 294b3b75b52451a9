#include "fakes/Fakes.h"

#include "app/MainFrame.h"
#include "app/StartUp.h"
#include "automation/CommandBox.h"
#include "automation/Macros.h"
#include "base/Globals.h"
#include "base/Notice.h"
#include "browser/Browser.h"
#include "config/FileHandler.h"
#include "config/MudList.h"
#include "config/Palette.h"
#include "net/Connection.h"
#include "net/Send.h"
#include "net/http/DownLoad.h"
#include "net/http/VersionCheck.h"
#include "net/http/WebBoxes.h"
#include "sound/PlaySound.h"
#include "terminal/Ansi.h"
#include "terminal/AutoLog.h"
#include "terminal/Incoming.h"
#include "terminal/OutPutScroll.h"
#include "terminal/Output.h"
#include "ui/BrowserControls.h"
#include "ui/Clock.h"
#include "ui/Disk.h"
#include "ui/DownloadControls.h"
#include "ui/Events.h"
#include "ui/Inet.h"
#include "ui/InputControls.h"
#include "ui/MessageBox.h"
#include "ui/Players.h"
#include "ui/RegistryStore.h"
#include "ui/Timers.h"
#include "ui/UserSettings.h"

#include <algorithm>
#include <limits>
#include <sstream>

namespace {

void Record(const std::string& call) {
    fakes::Calls.push_back(call);
    if (fakes::OnCall)
        fakes::OnCall(call);
}

std::string Words(std::string_view verb, std::string_view text) {
    return std::string(verb) + " " + std::string(text);
}

} // namespace

namespace fakes {

std::ptrdiff_t CallsOf(const std::string& call) {
    return std::count(Calls.begin(), Calls.end(), call);
}

std::ptrdiff_t PlaceOf(const std::string& call) {
    const auto found = std::find(Calls.begin(), Calls.end(), call);
    EXPECT_NE(found, Calls.end()) << "no call " << call;
    return found - Calls.begin();
}

std::string Sent() {
    std::string all;
    for (const std::string& piece : Sends)
        all += piece;
    return all;
}

} // namespace fakes

RuleTest::RuleTest() {
    mw::ResetGlobals();
    mw::ResetMacros();
    mw::ResetMudList();
    mw::ResetCommandBox();
    mw::ResetConnection();
    mw::ResetOutput();
    mw::ResetIncoming();
    mw::CloseLog();
    mw::AutoLogOn = false;
    mw::LogFilePath.clear();
    mw::LastSentChar = 0;
    mw::WholeSequenceMode = true;
    mw::PreviousProcedure = 0;
    mw::Palette = mw::kDefaultPalette;
    mw::Notice.clear();
    mw::SavingMode = false;
    mw::Splash = {};
    mw::ResetVersionCheck();
    mw::DropWebBoxes();
    mw::ResetDownloads();
    mw::PlayingPriority = 0;
    mw::ConnectAtStart.clear();
    mw::FolderIsTaken = false;
    fakes::Calls.clear();
    fakes::Sends.clear();
    fakes::SocketState = mw::SocketConnected;
    fakes::Arrivals.clear();
    fakes::Runs.clear();
    fakes::Shown.clear();
    fakes::ScrollMax = fakes::ScrollValue = fakes::SmallChange = fakes::LargeChange = 0;
    fakes::Input.clear();
    fakes::SelStart = fakes::SelLength = 0;
    fakes::Items.clear();
    fakes::ChosenMud.clear();
    fakes::Date = "2026-11-21 12:00:00";
    fakes::ListIndex = 0;
    fakes::Enabled.clear();
    fakes::Visible.clear();
    fakes::Checked.clear();
    fakes::Place = {};
    fakes::State = mw::WindowState::Normal;
    fakes::Screens = {{0, 0, 1000, 700}};
    fakes::SplashCaptions.clear();
    fakes::PromptCaptions.clear();
    fakes::Pages.clear();
    fakes::WaveState = fakes::MusicState = mw::PlayState::Stopped;
    fakes::FreeSpace = std::numeric_limits<std::uint64_t>::max();
    fakes::FreeSpaceAsked.clear();
    fakes::WaveFile.clear();
    fakes::MusicFile.clear();
    fakes::Transfers.clear();
    mw::ResetBrowser();
    fakes::AddressBox = fakes::PageName = fakes::PageAddress = "";
    fakes::PageIsBusy = false;
    fakes::NextColour.reset();
    fakes::NextFont.reset();
    fakes::Panels.clear();
    fakes::Messages.clear();
    fakes::Played.clear();
    fakes::UserSettings.clear();
    fakes::EventRuns = 0;
    fakes::Registry.clear();
    fakes::CreateCode = fakes::OpenCode = fakes::SetCode = fakes::QueryCode = fakes::OpenKeys = 0;
}

// What a test hung onto the fakes may hold its own variables.
RuleTest::~RuleTest() {
    fakes::OnCall = nullptr;
    fakes::OnEvents = nullptr;
    fakes::OnSend = nullptr;
}

namespace mw {

void ShowMessage(std::string_view text) {
    fakes::Messages.emplace_back(text);
    Record(Words("Message", text));
}

std::string GeneralDate() { return fakes::Date; }

namespace wskTCP {

void Connect(const std::string& host, std::int16_t port) {
    Record("Connect " + host + ":" + std::to_string(port));
}

void Close() {
    fakes::SocketState = SocketClosed;
    Record("Close");
}

void SendData(std::string_view bytes) {
    fakes::Sends.emplace_back(bytes);
    Record(Words("Send", bytes));
    if (fakes::OnSend)
        fakes::OnSend();
}

std::string GetData() {
    const std::string arrival = fakes::Arrivals.front();
    fakes::Arrivals.pop_front();
    return arrival;
}

std::int16_t State() { return fakes::SocketState; }

} // namespace wskTCP

namespace {
const char* Name(Timer timer) { return timer == Timer::Connect ? "tmrConnect" : "tmrLog"; }
} // namespace

void StartTimer(Timer timer, int intervalMs) {
    Record(Words("Start", Name(timer)) + " " + std::to_string(intervalMs));
}

void StopTimer(Timer timer) { Record(Words("Stop", Name(timer))); }

namespace rtfOutPut {

std::size_t TextLength() { return fakes::Shown.size(); }

void Append(std::string_view text, std::int32_t colour, const std::string& fontName,
            const std::string& fontSize) {
    fakes::Runs.push_back({std::string(text), colour, fontName, fontSize});
    fakes::Shown += text;
    std::ostringstream call;
    call << "Append " << std::hex << colour << ' ' << text;
    Record(call.str());
}

void RemoveFirst(std::size_t count) {
    fakes::Shown.erase(0, count);
    Record("RemoveFirst " + std::to_string(count));
}

void MoveCaretToEnd() { Record("CaretToEnd"); }

void SetRedraw(bool on) { Record(on ? "RedrawOn" : "RedrawOff"); }

void Refresh() { Record("Refresh"); }

std::int32_t Hook() {
    Record("Hook");
    return 4711;
}

void Unhook(std::int32_t token) { Record("Unhook " + std::to_string(token)); }

void CallPrevious(std::int32_t token, std::int32_t message) {
    Record("CallPrevious " + std::to_string(token) + " " + std::to_string(message));
}

} // namespace rtfOutPut

namespace rtfScroll {

void ShowCopyOfOutput() { Record("ShowScrollBack"); }

void Hide() { Record("HideScrollBack"); }

} // namespace rtfScroll

namespace vslRTF {

std::int16_t Max() { return fakes::ScrollMax; }

std::int16_t Value() { return fakes::ScrollValue; }

void SetMaxAndValue(std::int16_t maximum) {
    fakes::ScrollMax = fakes::ScrollValue = maximum;
    Record("ScrollMax " + std::to_string(maximum));
}

void SetChange(std::int16_t smallChange, std::int16_t largeChange) {
    fakes::SmallChange = smallChange;
    fakes::LargeChange = largeChange;
}

} // namespace vslRTF

namespace cboInput {

std::string Text() { return fakes::Input; }

void SetText(std::string_view text) {
    fakes::Input = text;
    fakes::SelStart = text.size();
    fakes::SelLength = 0;
    Record(Words("Input", text));
}

std::size_t TextLength() { return fakes::Input.size(); }

void Select(std::size_t start, std::size_t length) {
    fakes::SelStart = start;
    fakes::SelLength = length;
    Record("Select " + std::to_string(start) + " " + std::to_string(length));
}

void SetFocus() { Record("Focus cboInput"); }

void AddItem(std::string_view text) { fakes::Items.emplace_back(text); }

void RemoveFirstItem() { fakes::Items.erase(fakes::Items.begin()); }

} // namespace cboInput

namespace {
const char* Name(FrameControl control) {
    static const char* const kNames[] = {
        "cmdConn",   "cmdDisco", "cmdNew", "cmdDel",     "cboMud",  "mnuConnect", "mnuDisconnect",
        "mnuADCmud", "picTool",  "mnuMud", "mnutoolbar", "mnuEcho", "mnuInput"};
    return kNames[static_cast<int>(control)];
}
} // namespace

void SetEnabled(FrameControl control, bool enabled) {
    fakes::Enabled[control] = enabled;
    Record(Words(enabled ? "Enable" : "Disable", Name(control)));
}

void SetVisible(FrameControl control, bool visible) {
    fakes::Visible[control] = visible;
    Record(Words(visible ? "Show" : "Hide", Name(control)));
}

bool IsVisible(FrameControl control) { return fakes::Visible[control]; }

void SetChecked(FrameControl item, bool checked) {
    fakes::Checked[item] = checked;
    Record(Words(checked ? "Check" : "Uncheck", Name(item)));
}

namespace stsBar {

void SetPanel(Panel panel, std::string_view text) {
    fakes::Panels[panel] = text;
    Record("Panel " + std::to_string(panel) + " " + std::string(text));
}

} // namespace stsBar

namespace cboMud {

void AddItem(std::string_view name) { Record(Words("cboMud add", name)); }

void RemoveItem(std::int16_t index) { Record("cboMud remove " + std::to_string(index)); }

void Clear() { Record("cboMud clear"); }

void SetListIndex(std::int16_t index) {
    fakes::ListIndex = index;
    Record("cboMud index " + std::to_string(index));
}

std::int16_t ListIndex() { return fakes::ListIndex; }

std::string Text() { return fakes::ChosenMud; }

} // namespace cboMud

void lblAddress::SetCaption(std::string_view text) { Record(Words("lblAddress", text)); }

void lblPort::SetCaption(std::string_view text) { Record(Words("lblPort", text)); }

void ShowOutputWindow() { Record("ShowOutputWindow"); }

void ShowFrame() { Record("ShowFrame"); }

bool FrameIsShown() { return true; }

void UnloadFrame() { Record("UnloadFrame"); }

void UnloadOtherForms() { Record("UnloadOtherForms"); }

Rectangle FramePlace() { return fakes::Place; }

WindowState FrameState() { return fakes::State; }

void PlaceFrame(const Rectangle& place, WindowState state) {
    fakes::Place = place;
    fakes::State = state;
    Record("PlaceFrame");
}

std::vector<Rectangle> Screens() { return fakes::Screens; }

void SetCaption(SplashLabel label, std::string_view text) {
    static const char* const kNames[] = {"lblLoading",     "lblStatus",     "lblDots",
                                         "lblYourVersion", "lblCurVersion", "lblUpdateText"};
    fakes::SplashCaptions[label] = text;
    Record(Words(kNames[static_cast<int>(label)], text));
}

void SetEnabled(SplashTimer timer, bool enabled) {
    Record(Words(enabled ? "Start" : "Stop",
                 timer == SplashTimer::timerLoad ? "timerLoad" : "timerFinished"));
}

void ShowSplash() { Record("ShowSplash"); }

void UnloadSplash() { Record("UnloadSplash"); }

void SetCaption(UpdateLabel label, std::string_view text) {
    static const char* const kNames[] = {"lblCurVer", "lblCurVersion", "lblYourVersion"};
    fakes::PromptCaptions[label] = text;
    Record("prompt " + Words(kNames[static_cast<int>(label)], text));
}

void LoadUpdatePrompt() { Record("LoadUpdatePrompt"); }

void ShowUpdatePrompt() { Record("ShowUpdatePrompt"); }

std::optional<std::string> inetVersion::OpenURL(const std::string& url) {
    Record(Words("OpenURL", url));
    return fakes::Pages[url];
}

void ShowBrowser() { Record("ShowBrowser"); }

void SetBrowserCaption(const std::string& text) { Record(Words("caption", text)); }

void SetWorkCaption(const std::string& text) { Record(Words("lblWork", text)); }

void SetNavTimer(bool enabled) { Record(enabled ? "Start timNav" : "Stop timNav"); }

std::string cboAdd::Text() { return fakes::AddressBox; }

void cboAdd::SetText(const std::string& text) {
    fakes::AddressBox = text;
    Record(Words("cboAdd", text));
}

void cboAdd::AddItem(const std::string& text) { Record(Words("cboAdd add", text)); }

void wbrScreen::Navigate(const std::string& address) { Record(Words("Navigate", address)); }

void wbrScreen::GoBack() { Record("GoBack"); }

void wbrScreen::GoForward() { Record("GoForward"); }

void wbrScreen::Stop() { Record("Stop page"); }

void wbrScreen::Refresh() { Record("Refresh page"); }

bool wbrScreen::Busy() { return fakes::PageIsBusy; }

std::string wbrScreen::LocationName() { return fakes::PageName; }

std::string wbrScreen::LocationURL() { return fakes::PageAddress; }

void PaintSwatch(std::size_t swatch, std::int32_t colour) {
    std::ostringstream call;
    call << "Swatch " << swatch << ' ' << std::hex << colour;
    Record(call.str());
}

std::optional<std::int32_t> ShowColourChooser(std::int32_t preset) {
    std::ostringstream call;
    call << "ShowColourChooser " << std::hex << preset;
    Record(call.str());
    return fakes::NextColour;
}

FontChoice ShowFontChooser(const FontChoice& preset) {
    Record("ShowFontChooser " + preset.Name + " " + preset.Size);
    return fakes::NextFont.value_or(preset);
}

void ShowFont(const FontChoice& font, bool inItself) {
    Record("ShowFont " + font.Name + " " + font.Size + (inItself ? " in itself" : ""));
}

void SetEscapeText(const std::string& text) { Record(Words("txtEscChar", text)); }

PlayState wavPlayer::State() { return fakes::WaveState; }

void wavPlayer::SetURL(const std::filesystem::path& file) {
    fakes::WaveFile = file;
    Record("wave URL " + file.filename().string());
}

void wavPlayer::SetVolume(std::int32_t percent) {
    Record("wave volume " + std::to_string(percent));
}

void wavPlayer::Play() { Record("wave play"); }

void wavPlayer::Stop() { Record("Stop wave"); }

PlayState midiPlayer::State() { return fakes::MusicState; }

void midiPlayer::SetFileName(const std::filesystem::path& file) {
    fakes::MusicFile = file;
    Record("music FileName " + file.filename().string());
}

void midiPlayer::SetVolume(std::int32_t hundredths) {
    Record("music volume " + std::to_string(hundredths));
}

void midiPlayer::Play() { Record("music play"); }

void midiPlayer::Stop() { Record("Stop music"); }

void SetEnabled(SoundTimer timer, bool enabled) {
    Record(Words(enabled ? "Start" : "Stop",
                 timer == SoundTimer::wavTimer ? "wavTimer" : "midiTimer"));
}

void inet::Execute(std::int32_t transfer, const inet::Request& request) {
    fakes::Transfers[transfer] = {request, std::nullopt, {}, false};
    Record("Execute " + std::to_string(transfer) + " " + request.Address);
}

std::optional<std::string> inet::GetHeader(std::int32_t transfer) {
    const auto found = fakes::Transfers.find(transfer);
    return found == fakes::Transfers.end() ? std::nullopt : found->second.Header;
}

std::optional<std::string> inet::GetChunk(std::int32_t transfer, std::size_t size) {
    const auto found = fakes::Transfers.find(transfer);
    if (found == fakes::Transfers.end())
        return std::nullopt;
    fakes::Transfer& own = found->second;
    if (own.Body.size() < size && !own.Ended)
        return std::nullopt;
    const std::string chunk = own.Body.substr(0, size);
    own.Body.erase(0, size);
    return chunk;
}

void inet::Cancel(std::int32_t transfer) {
    if (fakes::Transfers.erase(transfer) != 0)
        Record("Cancel " + std::to_string(transfer));
}

void OpenDownloadWindow(std::int32_t download, std::int16_t slot, const std::string& fileName) {
    Record("OpenDownloadWindow " + std::to_string(download) + " " + std::to_string(slot) + " " +
           fileName);
}

void SetProgress(std::int32_t download, std::int16_t percent) {
    Record("Progress " + std::to_string(download) + " " + std::to_string(percent));
}

void CloseDownloadWindow(std::int32_t download) {
    Record("CloseDownloadWindow " + std::to_string(download));
}

void ShowWebBox(const std::string& text, bool isError) {
    Record(Words(isError ? "Error box" : "Box", text));
}

void HideWebBox() { Record("HideWebBox"); }

std::uint64_t FreeSpace(const std::filesystem::path& path) {
    fakes::FreeSpaceAsked = path;
    return fakes::FreeSpace;
}

void SaveUserSetting(const std::string& application, const std::string& section,
                     const std::string& key, const std::string& value) {
    fakes::UserSettings[application + "/" + section + "/" + key] = value;
}

std::string GetUserSetting(const std::string& application, const std::string& section,
                           const std::string& key, const std::string& fallback) {
    const auto found = fakes::UserSettings.find(application + "/" + section + "/" + key);
    return found == fakes::UserSettings.end() ? fallback : found->second;
}

void DoEvents() {
    ++fakes::EventRuns;
    if (fakes::OnEvents)
        fakes::OnEvents();
}

std::int32_t CreateKey(const std::string& path, RegistryKey& key) {
    if (fakes::CreateCode != kSuccess)
        return fakes::CreateCode;
    fakes::Registry[path];
    key.Path = path;
    ++fakes::OpenKeys;
    return kSuccess;
}

std::int32_t OpenKey(const std::string& path, RegistryKey& key) {
    if (fakes::OpenCode != kSuccess)
        return fakes::OpenCode;
    if (!fakes::Registry.contains(path))
        return kNotFound;
    key.Path = path;
    ++fakes::OpenKeys;
    return kSuccess;
}

std::int32_t SetStringValue(const RegistryKey& key, const std::string& name,
                            const std::string& data) {
    if (fakes::SetCode == kSuccess)
        fakes::Registry[key.Path][name] = {kStringType, data + '\0'};
    return fakes::SetCode;
}

std::int32_t QueryValue(const RegistryKey& key, const std::string& name, RegistryValue& value) {
    if (fakes::QueryCode != kSuccess)
        return fakes::QueryCode;
    const auto& section = fakes::Registry[key.Path];
    const auto found = section.find(name);
    if (found == section.end())
        return kNotFound;
    value = {found->second.Type, found->second.Data};
    return kSuccess;
}

void CloseKey(RegistryKey& key) {
    if (!key.Path.empty())
        --fakes::OpenKeys;
    key.Path.clear();
}

void DeleteUserSettings(const std::string& application) {
    std::erase_if(fakes::UserSettings, [&application](const auto& setting) {
        return setting.first.starts_with(application + "/");
    });
}

} // namespace mw
