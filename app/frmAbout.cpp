#define SDL_MAIN_HANDLED
#include "app/frmAbout.h"

#include "base/Version.h"

#include <SDL_mixer.h>
#include <curl/curl.h>

#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

namespace mw {
namespace {

QString MixerVersion() {
    const SDL_version* const version = Mix_Linked_Version();
    return QStringLiteral("%1.%2.%3").arg(version->major).arg(version->minor).arg(version->patch);
}

QString AboutText() {
    return frmAbout::tr("<h2>Quillmere Mud Client</h2>"
                        "<p>Version %1</p>"
                        "<p>A client for text-based multi-user dungeon games.</p>"
                        "<p>Free software under the MIT licence, without any warranty.</p>"
                        "<p>It uses Qt %2 (LGPL version 3), libcurl %3 (curl licence) and "
                        "SDL2_mixer %4 (zlib licence).</p>")
        .arg(QString::fromStdString(DottedVersion(kOwnVersion)), qVersion(),
             curl_version_info(CURLVERSION_NOW)->version, MixerVersion());
}

} // namespace

frmAbout::frmAbout(QWidget* frame) : LockedDialog("frmAbout", tr("About"), frame) {
    auto* const text = new QLabel(AboutText());
    text->setObjectName("lblAbout");
    text->setWordWrap(true);
    text->setAlignment(Qt::AlignTop);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
    connect(buttons, &QDialogButtonBox::accepted, this, &QWidget::close);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(20, 12, 20, 12);
    column->addWidget(text, 1);
    column->addWidget(buttons);
    resize(440, 240);
}

} // namespace mw
