// The page view of the browser window, as the plug-in ui/webengine implements it.
//
// It stands in a library of its own that is loaded when the window first opens, so that nobody pays
// for a web engine who doesn't use one. All calls return at once.
#pragma once

#include <functional>

#include <QUrl>
#include <QWidget>

namespace mw {

struct PageView {
    virtual ~PageView() = default;

    virtual QWidget* Widget() = 0; // lives as long as its parent
    virtual void Navigate(const QUrl& address) = 0;
    virtual void GoBack() = 0;
    virtual void GoForward() = 0;
    virtual void Stop() = 0;
    virtual void Refresh() = 0;
    virtual bool Busy() const = 0;
    virtual QString LocationName() const = 0; // the page's title
    virtual QUrl LocationURL() const = 0;

    std::function<void()> NavigateComplete; // a new page has been reached
};

// What the plug-in exports under this name.
using MakePageView = PageView* (*)(QWidget* parent);
inline constexpr const char* kMakePageView = "quillmere_make_page_view";

} // namespace mw
