#include "Text.h"

namespace world {
namespace {

constexpr std::string_view kGoAhead = "\xff\xf9"; // RFC 854: IAC GA

bool IsShown(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 32 && byte != 127 && byte != 255;
}

} // namespace

std::string Line(std::string_view colour, std::string_view text) {
    std::string line(colour);
    line += text;
    line += "\r\n";
    return line;
}

std::string Prose(std::string_view colour, std::string_view text, std::size_t width) {
    std::string lines;
    while (text.size() > width) {
        std::size_t blank = text.rfind(' ', width);
        if (blank == std::string_view::npos)
            blank = text.find(' ');
        if (blank == std::string_view::npos)
            break;
        lines += Line(colour, text.substr(0, blank));
        text.remove_prefix(blank + 1);
    }
    return lines + Line(colour, text);
}

std::string Clean(std::string_view typed) {
    std::string clean;
    for (const char c : typed) {
        const bool leadingBlank = c == ' ' && clean.empty();
        if (IsShown(c) && !leadingBlank && clean.size() < MaxSpeech)
            clean += c;
    }
    while (clean.ends_with(' '))
        clean.pop_back();
    return clean;
}

std::string Lower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return lower;
}

std::string Message(std::string_view negotiation, std::string_view lines, std::string_view prompt) {
    std::string message;
    const bool hasText = !lines.empty() || !prompt.empty();
    if (hasText)
        message += "\r\n";
    message += negotiation;
    message += lines;
    if (!prompt.empty()) {
        message += PromptColour;
        message += prompt;
    }
    // Without a prompt this colour is what brings out the line break of the last line.
    if (hasText)
        message += ProseColour;
    if (!prompt.empty())
        message += kGoAhead;
    message += '\r';
    return message;
}

} // namespace world
