#include "Toolbar.h"

#include <algorithm>
#include <map>

namespace journey {
namespace {

constexpr int kShortest = 40; // an outline's length in pixels; letters are shorter
constexpr int kLongest = 400; // and lines across the window are longer
constexpr int kDarker = 30;   // than what is around it
constexpr int kBlack = 60;

int Brightness(const Colour& colour) { return std::min({colour.Red, colour.Green, colour.Blue}); }

// Of the colour that most of the row has.
int BackgroundOf(const Picture& screen, int y) {
    std::map<int, int> counts;
    for (int x = 0; x < screen.Width; ++x)
        ++counts[Brightness(ColourAt(screen, x, y))];
    const auto count = [](const auto& entry) { return entry.second; };
    return std::ranges::max_element(counts, {}, count)->first;
}

// Widens the control that stands above the line, or adds a new one.
void AddLine(std::vector<Area>& controls, const Area& line) {
    const auto above = std::ranges::find_if(controls, [&line](const Area& control) {
        return control.Left < line.Right && line.Left < control.Right;
    });
    if (above == controls.end()) {
        controls.push_back(line);
        return;
    }
    above->Left = std::min(above->Left, line.Left);
    above->Right = std::max(above->Right, line.Right);
    above->Bottom = line.Bottom;
}

void AddLinesOfRow(std::vector<Area>& controls, const Picture& screen, int y, int background) {
    for (int x = 0; x < screen.Width;) {
        const Colour colour = ColourAt(screen, x, y);
        const int start = x;
        while (x < screen.Width && ColourAt(screen, x, y) == colour)
            ++x;
        const int length = x - start;
        if (Brightness(colour) < background - kDarker && length >= kShortest && length <= kLongest)
            AddLine(controls, {start, y, x, y + 1});
    }
}

} // namespace

std::vector<Area> FindToolbar(const Picture& screen) {
    std::vector<Area> controls;
    for (int y = 0; y < screen.Height; ++y) {
        const int background = BackgroundOf(screen, y);
        if (background < kBlack)
            break; // the output begins
        AddLinesOfRow(controls, screen, y, background);
    }
    std::ranges::sort(controls, {}, &Area::Left);
    return controls;
}

bool IsUsable(const Picture& screen, const Area& control) {
    constexpr int kOutline = 2;
    const Area inside{control.Left + kOutline, control.Top + kOutline, control.Right - kOutline,
                      control.Bottom - kOutline};
    return CountOf(screen, inside, {0, 0, 0}) > 0;
}

} // namespace journey
