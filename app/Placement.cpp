#include "app/Placement.h"

#include "base/Error.h"
#include "base/Numbers.h"
#include "config/MRegistry.h"
#include "ui/UserSettings.h"

#include <algorithm>
#include <cstdint>

namespace mw {
namespace {

constexpr const char* kSection = "Windows";
constexpr const char* kState = "gWinState";
constexpr std::int64_t kLeastSeen = 64; // pixels each way

std::optional<std::int64_t> NumberIn(const std::string& text) {
    try {
        return ToInt32(text);
    } catch (const Error&) {
        return std::nullopt;
    }
}

// In 64 bits, where no sum of two 32-bit numbers overflows.
struct Span {
    std::int64_t From = 0;
    std::int64_t To = 0;
};

Span Across(const Rectangle& r) { return {r.Left, std::int64_t{r.Left} + r.Width}; }
Span Down(const Rectangle& r) { return {r.Top, std::int64_t{r.Top} + r.Height}; }

bool Meet(const Span& a, const Span& b) {
    return std::min(a.To, b.To) - std::max(a.From, b.From) >= kLeastSeen;
}

std::int32_t NoLonger(std::int64_t length, const std::vector<Rectangle>& screens,
                      Span (*direction)(const Rectangle&)) {
    Span all = direction(screens.front());
    for (const Rectangle& screen : screens) {
        all.From = std::min(all.From, direction(screen).From);
        all.To = std::max(all.To, direction(screen).To);
    }
    return static_cast<std::int32_t>(std::min(length, all.To - all.From));
}

KeptPlacement ReadPlacement() {
    return {SettingAtStart(kSection, "gLeft", ""), SettingAtStart(kSection, "gTop", ""),
            SettingAtStart(kSection, "gWidth", ""), SettingAtStart(kSection, "gHeight", "")};
}

std::string StateText(WindowState state) { return std::to_string(static_cast<int>(state)); }

} // namespace

std::optional<Rectangle> UsablePlacement(const KeptPlacement& kept,
                                         const std::vector<Rectangle>& screens) {
    const auto left = NumberIn(kept.Left);
    const auto top = NumberIn(kept.Top);
    const auto width = NumberIn(kept.Width);
    const auto height = NumberIn(kept.Height);
    if (!left || !top || !width || !height)
        return std::nullopt;
    const Rectangle place{static_cast<std::int32_t>(*left), static_cast<std::int32_t>(*top),
                          NoLonger(*width, screens, Across), NoLonger(*height, screens, Down)};
    const bool seen = std::any_of(screens.begin(), screens.end(), [&](const Rectangle& screen) {
        return Meet(Across(place), Across(screen)) && Meet(Down(place), Down(screen));
    });
    return seen ? std::optional(place) : std::nullopt;
}

Rectangle DefaultPlacement(const Rectangle& screen) {
    return {screen.Left + screen.Width / 10, screen.Top + screen.Height / 10, screen.Width * 4 / 5,
            screen.Height * 4 / 5};
}

void RestorePlacement() {
    const std::vector<Rectangle> screens = Screens();
    const bool maximised =
        GetUserSetting(kApplicationName, kSection, kState, "") == StateText(WindowState::Maximised);
    PlaceFrame(
        UsablePlacement(ReadPlacement(), screens).value_or(DefaultPlacement(screens.front())),
        maximised ? WindowState::Maximised : WindowState::Normal);
}

void KeepPlacement() {
    SaveUserSetting(kApplicationName, kSection, kState, StateText(FrameState()));
    if (FrameState() == WindowState::Minimised)
        return;
    const Rectangle place = FramePlace();
    KeepSetting(kSection, "gTop", std::to_string(place.Top));
    KeepSetting(kSection, "gLeft", std::to_string(place.Left));
    KeepSetting(kSection, "gWidth", std::to_string(place.Width));
    KeepSetting(kSection, "gHeight", std::to_string(place.Height));
}

} // namespace mw
