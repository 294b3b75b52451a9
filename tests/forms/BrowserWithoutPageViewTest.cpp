// The browser window where no page view is installed.
#include "browser/Browser.h"
#include "browser/frmBrowser.h"
#include "config/Environment.h"
#include "forms/FrameTest.h"
#include "forms/OpenedPages.h"
#include "forms/WebServer.h"

namespace mw {
namespace {

using Texts = std::vector<std::string>;

class WithoutAPageView : public forms::FrameTest {
protected:
    static constexpr const char* kNotice =
        "The web page opens in the system's browser: the page view is not installed";

    const Environment NoFile{"QUILLMERE_PAGE_VIEW", "/nowhere/at.all"};
    const forms::MakersSite Site{"http://127.0.0.1:1/site"};
    const forms::OpenedPages System;
};

TEST_F(WithoutAPageView, TheMenuOpensTheSystemsBrowserWithOneNotice) {
    Item("mnuMwWite")->trigger();
    EXPECT_EQ(System.Addresses, Texts{"http://127.0.0.1:1/site"});
    EXPECT_EQ(Notice, kNotice);
    EXPECT_EQ(Panel(2), kNotice);
    EXPECT_EQ(forms::Window<frmBrowser>(), nullptr);
    EXPECT_EQ(forms::VisibleWindows().size(), 1);
    EXPECT_EQ(Closer.Texts, Texts{}) << "a notice is no box";
}

TEST_F(WithoutAPageView, EveryUseOpensThePageAgain) {
    Item("mnuMwWite")->trigger();
    Item("mnuMwWite")->trigger();
    EXPECT_EQ(System.Addresses.size(), 2u);
}

TEST_F(WithoutAPageView, TheRulesFindAnEmptyWindow) {
    frmBrowser_Load();
    cboAdd_KeyPress('\r');
    for (const char* key : {"Back", "Forward", "Stop", "Home", "Refresh"})
        tbrMain_ButtonClick(key);
    timNav_Timer();
    wbrScreen_NavigateComplete();
    EXPECT_EQ(WorkText, "");
    EXPECT_EQ(System.Addresses, Texts{});
}

} // namespace
} // namespace mw
