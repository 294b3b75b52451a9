#include "Shows.h"

#include "World.h"

#include <algorithm>
#include <charconv>

namespace world {
namespace {

// A client knows these beginnings with each of 30m to 37m behind them, but for "1;30m".
constexpr std::string_view kBeginnings[] = {"0;", "0;0;", "0;5;", "0;1;", "1;5;", "1;"};
constexpr std::size_t kCellWidth = 11;

constexpr std::string_view kFloodColours[] = {ProseColour, ExitColour,   PeopleColour,
                                              ProseColour, HungerColour, SpeechColour};

struct OptionRow {
    std::uint8_t option;
    bool isOurs; // asked as WILL; else as DO
    std::string_view name;
};

constexpr OptionRow kOptions[] = {
    {1, true, "the world hides what you type (ECHO)"},
    {24, false, "your client tells its terminal (TTYPE)"},
    {31, false, "your client tells its window's size (NAWS)"},
    {90, true, "the world asks for sounds (MSP)"},
};

std::string Cell(std::string_view code) {
    std::string text(code);
    text.resize(std::max(kCellWidth, code.size() + 1), ' ');
    return "\x1b[" + std::string(code) + text;
}

std::string_view WordFor(OptionState state) {
    switch (state) {
    case OptionState::On:
        return "agreed";
    case OptionState::Asked:
        return "asked, no answer yet";
    case OptionState::Refused:
        return "refused";
    case OptionState::Off:
        break;
    }
    return "off";
}

} // namespace

void ShowColours(World&, Player& player, std::string_view) {
    Tell(player, NoticeColour, "Each code in the colour that your client gives it:");
    for (char digit = '0'; digit <= '7'; ++digit) {
        std::string cells;
        for (const std::string_view beginning : kBeginnings)
            cells += Cell(std::string(beginning) + '3' + digit + 'm');
        Tell(player, ProseColour, cells);
    }
    Tell(player, ProseColour, Cell("0m") + Cell("30m"));
    TellProse(player, ProseColour,
              "Any other code is white, 1;30m among them. Black is there, if you select it.");
}

void ShowOptions(World&, Player& player, std::string_view) {
    Tell(player, NoticeColour, "Between your client and the world:");
    for (const OptionRow& row : kOptions) {
        const auto& states = row.isOurs ? player.telnet.ours : player.telnet.theirs;
        Tell(player, ProseColour,
             "  " + std::string(row.name) + ": " + std::string(WordFor(states[row.option])));
    }
    if (!player.telnet.terminal.empty())
        Tell(player, ProseColour, "  Your terminal is a " + player.telnet.terminal + '.');
    if (player.telnet.columns > 0)
        Tell(player, ProseColour,
             "  Your window is " + std::to_string(player.telnet.columns) + " columns wide.");
}

void AskForName(World&, Player& player, std::string_view) {
    Tell(player, NoticeColour, "The porter asks your client for its name.");
    player.probe = ProbeState::Wanted;
}

bool TakeProbeAnswer(Player& player, std::string_view line) {
    if (player.probe != ProbeState::Sent || line != ProbeAnswer)
        return false;
    player.probe = ProbeState::None;
    Tell(player, NoticeColour, "It answers: " + std::string(line) + ". It shows colours, then.");
    return true;
}

void BeginFlood(World&, Player& player, std::string_view kilobytes) {
    int number = 0;
    const char* const end = kilobytes.data() + kilobytes.size();
    const auto [at, error] = std::from_chars(kilobytes.data(), end, number);
    if (error != std::errc{} || at != end || number < 1 || number > MaxFlood) {
        Tell(player, ProseColour,
             R"("flood 100" sends a hundred kilobytes; 1 to )" + std::to_string(MaxFlood) +
                 " can be had.");
        return;
    }
    player.flood = static_cast<std::size_t>(number) * 1024;
}

std::string TakeFlood(const Town& town, Player& player) {
    const std::vector<std::string>& sentences = LinesOf(town, "flood");
    const std::size_t wished = std::min(player.flood, FloodPiece);
    std::string lines;
    for (std::size_t number = player.flood; lines.size() < wished; ++number)
        lines += Line(kFloodColours[number % std::size(kFloodColours)],
                      sentences[number % sentences.size()]);
    player.flood -= std::min(player.flood, lines.size());
    if (player.flood == 0)
        lines += Line(NoticeColour, "The flood is over.");
    return lines;
}

} // namespace world
