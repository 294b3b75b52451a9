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
        const bool secondMark = c == '!' && clean.ends_with('!');
        if (IsShown(c) && !leadingBlank && !secondMark && clean.size() < MaxSpeech)
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

std::string Capital(std::string_view text) {
    std::string capital(text);
    if (!capital.empty() && capital[0] >= 'a' && capital[0] <= 'z')
        capital[0] = static_cast<char>(capital[0] - 'a' + 'A');
    return capital;
}

std::string_view LastWord(std::string_view text) { return text.substr(text.rfind(' ') + 1); }

bool IsEmpty(const Outgoing& outgoing) {
    return outgoing.negotiation.empty() && outgoing.lines.empty() && outgoing.prompt.empty() &&
           outgoing.probe.empty();
}

std::string Message(const Outgoing& outgoing) {
    const bool hasText = !outgoing.lines.empty() || !outgoing.prompt.empty();
    std::string message;
    if (hasText && outgoing.afterPrompt)
        message += "\r\n";
    message += outgoing.negotiation;
    message += outgoing.lines;
    if (!outgoing.prompt.empty()) {
        message += PromptColour;
        message += outgoing.prompt;
    }
    // Without a prompt this colour, or the probe, is what brings out the last line's break.
    if (!outgoing.probe.empty())
        message += outgoing.probe;
    else if (hasText)
        message += ProseColour;
    if (!outgoing.prompt.empty())
        message += kGoAhead;
    message += '\r';
    return message;
}

} // namespace world
