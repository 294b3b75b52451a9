#include "Tour.h"

#include "Files.h"

#include <iostream>
#include <stdexcept>
#include <vector>

#include <QDir>
#include <QStringList>

namespace journey {
namespace {

struct Sight {
    QString File; // "01-splash.png"
    QString Caption;
};

struct Chapter {
    QString Title;
    std::vector<Sight> Sights;
    QString Transcript;
};

const QString kFolder = qEnvironmentVariable("QUILLMERE_TOUR");

std::vector<Chapter> Chapters;
bool IsInChapter = false;
QStringList Captions; // of all chapters

constexpr const char* kPage = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8"/>
<meta name="viewport" content="width=device-width, initial-scale=1"/>
<title>Quillmere Mud Client: a tour</title>
<style>
body { margin: 0; background: #f4efe3; color: #2b2a26;
       font: 1.0625rem/1.6 Georgia, "Times New Roman", serif; }
header { background: #1f3a44; color: #f4efe3; border-bottom: 0.375rem solid #b9892f;
         padding: 2.5rem 1.5rem 2rem; text-align: center; }
h1 { margin: 0; font-size: 2.25rem; font-weight: normal; letter-spacing: 0.06em; }
header p { margin: 0.5rem 0 0; font-style: italic; }
main { max-width: 80rem; margin: 0 auto; padding: 0 1.5rem 3rem; }
h2 { margin: 2.5rem 0 1rem; color: #1f3a44; font-size: 1.625rem; font-weight: normal; }
.pictures { display: grid; grid-template-columns: repeat(auto-fill, minmax(min(30rem, 100%), 1fr));
            gap: 2rem 1.5rem; margin-bottom: 1.5rem; }
figure { margin: 0; }
img { display: block; width: 100%; height: auto; border: 1px solid #b9a988; }
figcaption { padding: 0.5rem 0 0; }
summary { cursor: pointer; color: #17586b; }
pre { margin: 0.75rem 0 0; padding: 1rem 1.25rem; overflow-x: auto; background: #fffdf7;
      border-left: 0.25rem solid #b9892f; font: 0.8125rem/1.5 monospace; white-space: pre-wrap; }
</style>
</head>
<body>
<header>
<h1>Quillmere Mud Client</h1>
<p>What the client showed while keys and clicks led it through the demo world</p>
</header>
<main>
%1</main>
</body>
</html>
)";

constexpr const char* kChapter = R"(<section>
<h2>%1</h2>
<div class="pictures">
%2</div>
<details>
<summary>The text of this visit</summary>
<pre>%3</pre>
</details>
</section>
)";

constexpr const char* kFigure = R"(<figure>
<a href="%1"><img src="%1" width="%2" height="%3" alt="The screen: %4"/></a>
<figcaption>%5</figcaption>
</figure>
)";

QString FigureOf(const Sight& sight) {
    const QString name = sight.File.section('-', 1).chopped(4).replace('-', ' ');
    return QString(kFigure).arg(sight.File, QString::number(Display::Width),
                                QString::number(Display::Height), name,
                                sight.Caption.toHtmlEscaped());
}

QString SectionOf(const Chapter& chapter) {
    QString figures;
    for (const Sight& sight : chapter.Sights)
        figures += FigureOf(sight);
    return QString(kChapter).arg(chapter.Title.toHtmlEscaped(), figures,
                                 chapter.Transcript.toHtmlEscaped());
}

} // namespace

void BeginChapter(const QString& title) {
    if (kFolder.isEmpty())
        return;
    Chapters.push_back({title, {}, {}});
    IsInChapter = true;
    std::cout << '\n' << title.toStdString() << std::endl;
}

void ShowInTour(const Display& screen, const QString& name, const QString& caption) {
    if (!IsInChapter || Captions.contains(caption))
        return;
    Captions += caption;
    const QString number = QString::number(Captions.size()).rightJustified(2, '0');
    const QString file = number + '-' + name + ".png";
    screen.LetSettle();
    QDir().mkpath(kFolder);
    screen.Save(kFolder + '/' + file);
    Chapters.back().Sights.push_back({file, caption});
    std::cout << file.toStdString() << ": " << caption.toStdString() << std::endl;
}

void EndChapter(const std::string& transcript) {
    if (!IsInChapter)
        return;
    Chapters.back().Transcript = QString::fromStdString(transcript).trimmed();
    IsInChapter = false;
}

void WriteTour() {
    if (kFolder.isEmpty())
        return;
    if (Captions.isEmpty())
        throw std::runtime_error("No journey has shown anything to the tour");
    QString sections;
    for (const Chapter& chapter : Chapters)
        sections += SectionOf(chapter);
    PutFile(kFolder + "/index.html", QString(kPage).arg(sections).toStdString());
}

} // namespace journey
