#include "net/http/VersionCheck.h"

#include "browser/Browser.h"
#include "config/MRegistry.h"
#include "config/MakerAddresses.h"
#include "ui/Inet.h"
#include "ui/SplashControls.h"
#include "ui/UpdateControls.h"
#include "ui/UserSettings.h"

#include <array>
#include <charconv>

namespace mw {
namespace {

constexpr const char* kPath = "/client/clientver.txt";

void KeepAnswer(bool dontShow) {
    SaveUserSetting(kApplicationName, "Update", "Version", PublishedVersion);
    SaveUserSetting(kApplicationName, "Update", "Check", dontShow ? "0" : "1");
}

void Announce(const std::string& own) {
    const std::string news = "There is a new version of the client available";
    const std::string current = "Current Version " + PublishedVersion;
    const std::string yours = "Your Version " + own;
    SetCaption(SplashLabel::lblUpdateText, news);
    SetCaption(SplashLabel::lblCurVersion, current);
    SetCaption(SplashLabel::lblYourVersion, yours);
    LoadUpdatePrompt();
    SetCaption(UpdateLabel::lblCurVer, news);
    SetCaption(UpdateLabel::lblCurVersion, current);
    SetCaption(UpdateLabel::lblYourVersion, yours);
    ShowUpdatePrompt();
}

} // namespace

// Added in double precision and rounded once: in single precision 0.7.2 would come out below 0.72.
float FoldVersion(const Version& version) {
    return static_cast<float>(version.Major + version.Minor / 10.0 + version.Revision / 100.0);
}

std::optional<float> ParsePublishedVersion(std::string_view body) {
    const std::size_t last = body.find_last_not_of(" \t\r\n\v\f");
    const std::string text = "0" + std::string(body.substr(0, last + 1)); // "" publishes 0
    float number = 0;
    const auto [end, failure] =
        std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
    if (failure != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

std::string DecimalForm(float number) {
    std::array<char, 64> digits; // the greatest has 39, the smallest 45 behind its point
    const auto end = std::to_chars(digits.begin(), digits.end(), number, std::chars_format::fixed);
    return {digits.begin(), end.ptr};
}

void CheckForUpdate(const Version& own) {
    const std::optional<std::string> body = inetVersion::OpenURL(WebRoot() + kPath);
    if (!body)
        return;
    const std::optional<float> published = ParsePublishedVersion(*body);
    if (!published)
        return;
    PublishedVersion = DecimalForm(*published);
    if (*published <= FoldVersion(own))
        return;
    updateAvailable = true;
    Announce(DecimalForm(FoldVersion(own)));
}

void frmUpdate_Load() {
    SetCaption(UpdateLabel::lblYourVersion, DottedVersion(kOwnVersion));
    SetCaption(UpdateLabel::lblCurVersion, PublishedVersion);
}

void cmdNo_Click(bool dontShow) { KeepAnswer(dontShow); }

void cmdYes_Click(bool dontShow) {
    KeepAnswer(dontShow);
    OpenWebSite();
}

void ResetVersionCheck() {
    updateAvailable = false;
    PublishedVersion.clear();
}

} // namespace mw
