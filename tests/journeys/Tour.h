// The tour: a page of pictures from the journeys that tell one, to be read without a network.
//
// Nothing is done unless QUILLMERE_TOUR names a folder. Chapters, pictures and transcripts stand on
// the page in the order in which they come. Chapters share steps, so a caption that has been shown
// is not shown again.
#pragma once

#include "Display.h"

#include <string>

#include <QString>

namespace journey {

void BeginChapter(const QString& title);

// The screen now, as 01-name.png.
void ShowInTour(const Display& screen, const QString& name, const QString& caption);

// With the text that the player saw. Without a chapter nothing happens.
void EndChapter(const std::string& transcript);

// The page index.html. Throws when it can't be written or there is nothing to show.
void WriteTour();

} // namespace journey
