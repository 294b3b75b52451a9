#include "net/http/WebBoxes.h"

#include "ui/DownloadControls.h"

#include <deque>
#include <utility>

namespace mw {
namespace {

std::deque<WebBox> Boxes; // the one that is shown, and those that wait

void Tell(const WebBox& box) {
    if (box.Answered)
        box.Answered();
}

} // namespace

void QueueWebBox(WebBox box) {
    if (Boxes.size() > kMostWaitingBoxes) {
        Tell(box);
        return;
    }
    Boxes.push_back(std::move(box));
    if (Boxes.size() == 1)
        ShowWebBox(Boxes.front().Text, Boxes.front().IsError);
}

void WebBox_Closed() {
    if (Boxes.empty())
        return;
    const WebBox closed = std::move(Boxes.front());
    Boxes.pop_front();
    if (!Boxes.empty())
        ShowWebBox(Boxes.front().Text, Boxes.front().IsError);
    Tell(closed);
}

void DropWebBoxes() {
    if (!Boxes.empty())
        HideWebBox();
    Boxes.clear();
}

} // namespace mw
