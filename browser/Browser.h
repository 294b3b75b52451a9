// The browser window: an address box with the addresses typed so far, five buttons, and a label
// that tells when a page is on its way.
//
// frmBrowser shows it; the page view itself is the platform's.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mw {

inline std::string StartAddress;                // where the window begins, and "Home"
inline std::vector<std::string> TypedAddresses; // the address box's list, in order of entry
inline bool working = false;                    // lblWork shows the busy text
inline std::string WorkText;                    // what lblWork shows

// Opens the browser window on the maker's web site.
void OpenWebSite();

// The window has been made: its list begins anew, and it goes to StartAddress.
void frmBrowser_Load();

// An entry of the list was chosen, or Enter pressed: goes to the address in the box. One without a
// scheme is taken for http.
void cboAdd_Click();

// A character was typed into the address box. Enter goes to the address, which is added to the list
// when it is not in it.
void cboAdd_KeyPress(char character);

// "Back", "Forward", "Stop", "Home" or "Refresh"; any other key does nothing.
void tbrMain_ButtonClick(std::string_view key);

// Lets the label grow while a page is on its way. Shows the page's name and address, and stops its
// own timer, when it is there.
void timNav_Timer();

// A new page has been reached: its name is the window's caption.
void wbrScreen_NavigateComplete();

// The state at program start. Used by tests.
void ResetBrowser();

} // namespace mw
