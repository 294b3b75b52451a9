// The controls of the browser window frmBrowser. Unlike the client's other texts, these are UTF-8:
// pages and addresses come in every script. None of the calls waits or nests.
#pragma once

#include <string>

namespace mw {

// Makes the browser window, if it is not there, and shows it; its load calls frmBrowser_Load
// (browser/Browser.h). Without a page view the system's browser opens StartAddress instead.
void ShowBrowser();

void SetBrowserCaption(const std::string& text);
void SetWorkCaption(const std::string& text); // lblWork
void SetNavTimer(bool enabled);               // timNav; calls timNav_Timer every 250 milliseconds

// The address box with the addresses typed so far.
namespace cboAdd {
std::string Text();
void SetText(const std::string& text);
void AddItem(const std::string& text);
} // namespace cboAdd

// The page view.
namespace wbrScreen {
void Navigate(const std::string& address);
void GoBack();
void GoForward();
void Stop();
void Refresh();
bool Busy();
std::string LocationName();
std::string LocationURL();
} // namespace wbrScreen

} // namespace mw
