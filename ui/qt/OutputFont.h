// The font that the game's text is shown in.
#pragma once

#include <string>

#include <QFont>

namespace mw {

// Of that family, or of another whose letters have one width; size is a text: 1 to 200 points, 10
// for any other.
QFont OutputFont(const std::string& family, const std::string& size);

} // namespace mw
