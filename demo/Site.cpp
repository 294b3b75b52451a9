#include "Site.h"

#include "Sounds.h"

#include <QDir>
#include <QFile>

namespace world {
namespace {

// The home page up to the game's port and from there on.
constexpr std::string_view kHomeBegin = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Quillmere</title>
<style>
body { margin: 0; background: #f4efe3; color: #2b2a26;
       font: 1.125rem/1.6 Georgia, "Times New Roman", serif; }
header { background: #1f3a44; color: #f4efe3; padding: 3.5rem 1.5rem 3rem;
         border-bottom: 0.375rem solid #b9892f; text-align: center; }
h1 { margin: 0; font-size: 2.75rem; font-weight: normal; letter-spacing: 0.2em; }
header p { margin: 0.5rem 0 0; font-style: italic; }
main { max-width: 36rem; margin: 0 auto; padding: 1.5rem; }
h2 { margin: 2rem 0 0.5rem; color: #1f3a44; font-size: 1.375rem; font-weight: normal; }
dl { display: grid; grid-template-columns: max-content auto; gap: 0.25rem 1.5rem;
     margin: 1rem 0; padding: 1rem 1.25rem; background: #fffdf7; border-left: 0.25rem solid #b9892f; }
dt { font-style: italic; }
dd { margin: 0; font-family: monospace; }
a { color: #17586b; }
a:focus-visible { outline: 0.1875rem solid #1f3a44; outline-offset: 0.125rem; }
</style>
</head>
<body>
<header>
<h1>Quillmere</h1>
<p>A small town of ink, fog and watchful geese</p>
</header>
<main>
<p>Welcome, traveller. The gate stands open, the bakehouse is warm, and something brown and
ill-tempered is said to live in the archive cellar.</p>
<h2>How to come in</h2>
<p>Point your game client at this address and say by what name you are known.</p>
<dl>
<dt>Host</dt><dd>127.0.0.1</dd>
<dt>Port</dt><dd>)";

constexpr std::string_view kHomeEnd = R"(</dd>
</dl>
<h2>Once you are in</h2>
<p>The word <code>map</code> shows the town, the numeric keypad walks, and <code>help</code> lists the
rest. The first things to do are small ones: look at the geese, take a loaf from the bakehouse, ring the
bell at the ferry. The rat below the Scribes' Hall can wait until you have eaten.</p>
<h2>The client</h2>
<ul>
<li><a href="/manual/index.html">The manual</a></li>
<li><a href="/client/clientver.txt">The version of the client that is current</a></li>
</ul>
</main>
</body>
</html>
)";

std::string Home(int gamePort) {
    std::string page(kHomeBegin);
    page += std::to_string(gamePort);
    page += kHomeEnd;
    return page;
}

std::string TypeOf(const QString& name) {
    if (name.endsWith(".html"))
        return "text/html; charset=utf-8";
    return name.endsWith(".css") ? "text/css; charset=utf-8" : "image/png";
}

void AddManual(Pages& pages) {
    for (const QFileInfo& info : QDir(":/manual").entryInfoList(QDir::Files)) {
        QFile file(info.filePath());
        if (file.open(QFile::ReadOnly))
            pages[std::string(ManualPath) + info.fileName().toStdString()] = {
                TypeOf(info.fileName()), file.readAll().toStdString()};
    }
}

} // namespace

Pages Site(int gamePort, const std::string& clientVersion) {
    Pages pages = {
        {std::string(HomePath), {"text/html; charset=utf-8", Home(gamePort)}},
        {std::string(VersionPath), {"text/plain; charset=utf-8", clientVersion}},
    };
    AddManual(pages);
    for (const SoundFile& file : SoundFiles()) {
        pages[std::string(SoundPath) + std::string(file.name)] = {std::string(file.type),
                                                                  file.make()};
    }
    return pages;
}

} // namespace world
