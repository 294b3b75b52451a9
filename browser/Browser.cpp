#include "browser/Browser.h"

#include "config/MakerAddresses.h"
#include "ui/BrowserControls.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <iterator>

namespace mw {
namespace {

constexpr std::size_t kMostDots = 60;

struct Button {
    std::string_view Key;
    void (*Click)();
};

// "name:" in front of anything but a port. RFC 3986, 3.1.
bool HasScheme(const std::string& address) {
    const std::size_t colon = address.find(':');
    if (colon == std::string::npos || colon + 1 == address.size())
        return false;
    const auto isPart = [](unsigned char c) {
        return std::isalnum(c) != 0 || c == '+' || c == '-' || c == '.';
    };
    return std::isdigit(static_cast<unsigned char>(address[colon + 1])) == 0 &&
           std::all_of(address.begin(), address.begin() + static_cast<std::ptrdiff_t>(colon),
                       isPart);
}

std::string WithScheme(const std::string& address) {
    return HasScheme(address) ? address : "http://" + address;
}

void GoHome() { wbrScreen::Navigate(WithScheme(StartAddress)); }

constexpr Button kButtons[] = {
    {"Back", wbrScreen::GoBack},     {"Forward", wbrScreen::GoForward},
    {"Stop", wbrScreen::Stop},       {"Home", GoHome},
    {"Refresh", wbrScreen::Refresh},
};

void ShowWork(const std::string& text) {
    WorkText = text;
    SetWorkCaption(text);
}

void ShowBusy() {
    if (!working) {
        working = true;
        ShowWork("Working..");
    } else if (static_cast<std::size_t>(std::count(WorkText.begin(), WorkText.end(), '.')) <
               kMostDots) {
        ShowWork(WorkText + "..");
    }
}

} // namespace

void OpenWebSite() {
    StartAddress = WebRoot();
    ShowBrowser();
}

void frmBrowser_Load() {
    working = false;
    TypedAddresses.clear(); // the list lives as long as the window
    SetNavTimer(true);
    cboAdd::SetText(StartAddress);
    GoHome();
}

void cboAdd_Click() {
    SetNavTimer(true);
    wbrScreen::Navigate(WithScheme(cboAdd::Text()));
}

void cboAdd_KeyPress(char character) {
    if (character != '\r')
        return;
    const std::string text = cboAdd::Text();
    if (std::find(TypedAddresses.begin(), TypedAddresses.end(), text) == TypedAddresses.end()) {
        TypedAddresses.push_back(text);
        cboAdd::AddItem(text);
    }
    cboAdd_Click();
}

void tbrMain_ButtonClick(std::string_view key) {
    const auto* const button = std::find_if(std::begin(kButtons), std::end(kButtons),
                                            [key](const Button& b) { return b.Key == key; });
    if (button != std::end(kButtons))
        button->Click();
}

void timNav_Timer() {
    if (wbrScreen::Busy())
        return ShowBusy();
    working = false;
    SetNavTimer(false);
    ShowWork(wbrScreen::LocationName());
    cboAdd::SetText(wbrScreen::LocationURL());
}

void wbrScreen_NavigateComplete() { SetBrowserCaption(wbrScreen::LocationName()); }

void ResetBrowser() {
    StartAddress.clear();
    TypedAddresses.clear();
    WorkText.clear();
    working = false;
}

} // namespace mw
