#include "base/Notice.h"

#include "ui/FrameControls.h"

namespace mw {

void ShowNotice(const std::string& text) {
    Notice = text;
    stsBar::SetPanel(stsBar::NoticePanel, text);
}

} // namespace mw
