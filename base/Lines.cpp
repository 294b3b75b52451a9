#include "base/Lines.h"

#include "base/Error.h"
#include "ui/Events.h"

namespace mw {

bool AtEnd(const LineReader& reader) { return reader.Next >= reader.Text.size(); }

std::string ReadLine(LineReader& reader) {
    if (AtEnd(reader))
        Raise(InputPastEnd, "ReadLine");
    std::string_view line = reader.Text.substr(reader.Next);
    const std::size_t lineFeed = line.find('\n');
    if (lineFeed == std::string_view::npos) {
        reader.Next = reader.Text.size();
    } else {
        reader.Next += lineFeed + 1;
        line = line.substr(0, lineFeed);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
    }
    DoEvents();
    return std::string(line);
}

void AppendLine(std::string& text, std::string_view line) { text.append(line).append("\r\n"); }

std::string ValueAfterEquals(std::string_view line) {
    // Without a "=" npos + 1 is 0: the whole line.
    return std::string(line.substr(line.find('=') + 1));
}

std::string_view TrimBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

bool ContainsText(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

} // namespace mw
